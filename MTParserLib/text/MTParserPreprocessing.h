// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserPreprocessing.h - rewrites the typed text for the compiler, and maps positions back.
//
// There are two stages. First, all blanks (U+0020 only) are removed. Then the shorthands are rewritten: "[" to
// "point(", "]" to ")" and "e+" to "*10^". All positions in the engine's exceptions refer to the rewritten text.
#pragma once

#include "MTParserLib/text/MTSpan.h"

#include <string>
#include <string_view>

/// Whether rewriting changes a text. Most texts have neither blanks nor shorthands.
bool needsRewriting(std::wstring_view typed) noexcept;

/// Rewrites a text.
/// @param rewritten  receives the result; its old content is discarded, its memory reused
void preprocess(std::wstring_view typed, std::wstring& rewritten);

/// Maps a span of the rewritten text to the typed text. A character of a replacement maps to the whole shorthand;
/// blanks between two characters of the span are included.
/// @param rewritten  a span of the text to which typed is rewritten; not empty
MTSpan typedSpanOf(std::wstring_view typed, MTSpan rewritten) noexcept;
