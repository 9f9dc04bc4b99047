// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// OpenBrackets.h - the calls and brackets that are open at a position, and the text that closes them.
#pragma once

#include "mathexpr/editor/TextReading.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mathexpr::editor {

struct OpenBracket
{
    std::wstring function;       // the called function, "point" for "["; empty for other brackets
    TextSpan name;               // span of its name, or of the square bracket
    std::uint32_t argument = 0;  // index of the argument at the position, from 0
};

/// The open brackets, the outermost first.
std::vector<OpenBracket> openBracketsAt(const TextReading& reading, std::uint32_t cursor);

/// The missing arguments of open calls, and the closing brackets.
std::wstring closingOf(const std::vector<OpenBracket>& open);

}
