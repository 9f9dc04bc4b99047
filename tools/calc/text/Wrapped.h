// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Wrapped.h - sentences on lines of a terminal, broken between words.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The words of a text; every line but the first begins with so many blanks. A word that is wider than the line stands on a
/// line of its own.
/// @param taken  columns of the first line that are taken already
std::string wrapped(std::string_view text, std::size_t taken, std::size_t indentation, std::size_t columns);
