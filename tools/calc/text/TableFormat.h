// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableFormat.h - the format of a table: separators and quotes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Guesses the separator from the headings: the comma, semicolon or tab that occurs most outside quotes; a comma if
/// there is none.
char guessSeparator(std::string_view headings);

/// The separator of the option's value ",", ";" or "tab".
std::optional<char> separatorFrom(std::string_view text);
/// The separator's name for messages.
std::string separatorName(char separator);

/// Appends a cell in the format of RFC 4180: in quotes if necessary.
void appendCell(std::string& row, std::string_view cell, char separator);
