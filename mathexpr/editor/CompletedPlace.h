// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletedPlace.h - what completion has to know of the place in a text where it is asked for.
#pragma once

#include "mathexpr/TypingHelp.h"
#include "mathexpr/editor/TextReading.h"

#include <cstdint>
#include <string>

namespace mathexpr::editor {

struct CompletedPlace
{
    std::wstring before;
    TextSpan replaced;   // the word at the cursor
    std::wstring typed;  // of it before the cursor, without blanks
    wchar_t following;   // the next character behind it that is no blank; 0 at the end
    bool assigns;        // whether it is assigned to
    // Whether a name or number stands before or behind it, across blanks: what is inserted would become a part of it.
    bool followsWord;
    bool precedesWord;
    std::wstring closing;  // of what is open before it
    ValueKind wanted;      // by the call around it
};

CompletedPlace completedPlaceAt(const TextReading& reading, std::uint32_t cursor);

}
