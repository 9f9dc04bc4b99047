// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Pager.h - long lists on a terminal, a page at a time.
#pragma once

#include <string>

/// Writes the text to standard output. Where that is a terminal with fewer lines, it goes through $PAGER, or else less,
/// or else as it is.
void showPaged(const std::string& text);
