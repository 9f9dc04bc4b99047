// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Corrections.h - what a text that does not compile may have been meant to be, from the habits of other calculators, of
// spreadsheets and of documents that it was pasted from.
//
//     2pi -> 2*pi    sin 30 -> sin(30)    1e-5 -> 1*10^-5    size+1 -> (size)+1    max(1,5;2) -> max(1.5,2)
//     1,500*2 -> 1.500*2 or 1500*2        1/2pi -> 1/2*pi or 1/(2*pi)
//
// Every rule changes only what the language refuses, so that all of them can run over one text. Whether the outcome
// compiles is for the caller to see.
#pragma once

#include "MTParserLib/compile/MTFailure.h"
#include "mathexpr/hints/HintNumbers.h"
#include "mathexpr/hints/KnownNames.h"

#include <string>

namespace mathexpr {

struct Correction
{
    std::wstring text;   ///< Empty where nothing is to be corrected.
    std::wstring other;  ///< A second reading, which the text leaves open; else empty.
    Hint::Id reason = Hint::DidYouMean;
    Hint::Id choice = Hint::DidYouMean;  ///< The sentence that names both readings.
};

/// @param typed     not longer than a user types
/// @param failure   in the typed text
/// @param typedSpan where the failure stands in it
Correction correct(const std::wstring& typed, const MTFailure& failure, MTSpan typedSpan, const KnownNames& names);

}
