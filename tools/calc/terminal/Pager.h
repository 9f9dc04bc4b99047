// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Pager.h - shows long lists on a terminal page by page.
#pragma once

#include <string>

/// Writes the text to standard output. If that is a terminal with too few lines, the text goes through $PAGER,
/// otherwise through less, otherwise directly.
void showPaged(const std::string& text);
