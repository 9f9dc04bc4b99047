// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// OpenBrackets.h - which calls and brackets are open at the end of a piece of an expression; what the prompt shows of a
// call and closes before it asks the library about a text, follows from them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct OpenBracket
{
    std::string symbol;  ///< Of the function called, "point" for a square bracket; empty for a bracket without name.
    bool isSquare = false;
    std::size_t argument = 0;  ///< The argument that the end is in, counted from 0.
};

/// The outermost first. As in the language, ")" and "]" close alike, and blanks mean nothing.
/// @param text  UTF-8
std::vector<OpenBracket> openBrackets(std::string_view text);

/// Whether a byte of UTF-8 can stand in a name or a number: all but blanks, brackets, ",", "=" and operators.
bool isOfName(char unit);

/// The begin of the name or number that the text ends in; its size where it ends in none.
std::size_t beginOfLastName(std::string_view text);
