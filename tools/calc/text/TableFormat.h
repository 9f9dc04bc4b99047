// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableFormat.h - how a table is written: what stands between its cells.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The separator that the line of headings shows: the comma, semicolon or tabulator that occurs most outside of quotes; a
/// comma where none does.
char guessSeparator(std::string_view headings);

/// ",", ";" or "tab".
std::optional<char> separatorFrom(std::string_view text);
/// For people.
std::string separatorName(char separator);

/// A cell as RFC 4180 has it: in quotes where it has to be.
void appendCell(std::string& row, std::string_view cell, char separator);
