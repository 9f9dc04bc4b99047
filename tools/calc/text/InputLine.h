// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// InputLine.h - extracts the expression from a line of input, without what editors and other systems add.
#pragma once

#include <cstddef>
#include <string_view>

/// The line without a final carriage return and, if it is the first, without a byte order mark.
/// @param number  of the line, from 1
std::string_view expressionOfLine(std::string_view line, std::size_t number);

bool isBlank(std::string_view line);

/// Whether the line is a comment: its first non-blank character is "#".
bool isComment(std::string_view line);
