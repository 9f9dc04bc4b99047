// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletedPlace.h - the context of a completion: the word at the cursor, its neighbours, the open calls.
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
    std::wstring typed;  // the part before the cursor, without blanks
    wchar_t following;   // the next character after it that is not a blank; 0 at the end
    bool assigns;        // whether it is the target of an assignment
    // Whether a name or number is adjacent, across blanks, so that an inserted name would merge with it.
    bool followsWord;
    bool precedesWord;
    std::wstring closing;  // closes the brackets that are open before it
    ValueKind wanted;      // the kind that the enclosing call requires
};

CompletedPlace completedPlaceAt(const TextReading& reading, std::uint32_t cursor);

}
