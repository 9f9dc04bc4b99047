// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserPreprocessing.h - from the text that a user typed to the text that the compiler reads, and back.
//
// Two stages: every blank (U+0020 and nothing else) is removed; then the shorthands are rewritten, "[" to "point(", "]"
// to ")" and "e+" to "*10^". All positions that the engine reports in exceptions count in the rewritten text.
#pragma once

#include "MTParserLib/text/MTSpan.h"

#include <string>
#include <string_view>

/// Rewrites a text.
/// @param rewritten  receives the result; what it held is lost, its memory is used again
void preprocess(std::wstring_view typed, std::wstring& rewritten);

/// Where a stretch of the rewritten text was typed. A character that a shorthand was rewritten to stands for the whole
/// shorthand, and blanks count where they stand between two characters of the stretch.
/// @param rewritten  in the text to which typed is rewritten; not empty
MTSpan typedSpanOf(std::wstring_view typed, MTSpan rewritten) noexcept;
