// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Wrapped.h - wraps sentences to the width of a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Wraps a text between words. Every line but the first is indented. A word that is wider than the line gets a line of
/// its own.
/// @param taken  columns of the first line that are already used
std::string wrapped(std::string_view text, std::size_t taken, std::size_t indentation, std::size_t columns);
