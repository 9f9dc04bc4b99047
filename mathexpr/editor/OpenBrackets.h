// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// OpenBrackets.h - which calls and brackets are open at a place, and what closes them.
#pragma once

#include "mathexpr/editor/TextReading.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mathexpr::editor {

struct OpenBracket
{
    std::wstring function;       // that is called, "point" for a square bracket; empty for a bracket without a name
    TextSpan name;               // of it in the text, or the square bracket
    std::uint32_t argument = 0;  // the argument that the place is in, counted from 0
};

/// The outermost first.
std::vector<OpenBracket> openBracketsAt(const TextReading& reading, std::uint32_t cursor);

/// The missing arguments of what is open, and the brackets.
std::wstring closingOf(const std::vector<OpenBracket>& open);

}
