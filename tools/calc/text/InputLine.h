// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// InputLine.h - a line of input as an expression: without what editors and other systems put around it.
#pragma once

#include <cstddef>
#include <string_view>

/// The line without a carriage return at its end and, where it is the first, without a byte order mark.
/// @param number  counted from 1
std::string_view expressionOfLine(std::string_view line, std::size_t number);

bool isBlank(std::string_view line);

/// Whether the line is a comment: "#" is the first that stands on it.
bool isComment(std::string_view line);
