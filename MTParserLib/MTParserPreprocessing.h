// MTParserPreprocessing.h - from the text that a user typed to the text that the compiler reads.
//
// Two stages: every blank (U+0020 and nothing else) is removed; then the shorthands are rewritten, "[" to "point(", "]"
// to
// ")" and "e+" to "*10^". All positions that the engine reports count in the rewritten text.
#pragma once

#include <string>

/// Rewrites a text.
/// @param text       zero-terminated; null is an empty text
/// @param rewritten  receives the result; what it held is lost, its memory is used again
void preprocess(const wchar_t* text, std::wstring& rewritten);
