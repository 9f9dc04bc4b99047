// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Corrections.h - guesses what a text that does not compile was meant to be, from the habits of other calculators, of
// spreadsheets, and of documents that text is pasted from.
//
//     2pi -> 2*pi    sin 30 -> sin(30)    1e-5 -> 1*10^-5    size+1 -> (size)+1    max(1,5;2) -> max(1.5,2)
//     1,500*2 -> 1.500*2 or 1500*2        1/2pi -> 1/2*pi or 1/(2*pi)
//
// Every rule changes only what the language refuses, so all rules can be applied to the same text. The caller checks
// whether the outcome compiles.
#pragma once

#include "MTParserLib/compile/MTFailure.h"
#include "mathexpr/hints/HintNumbers.h"
#include "mathexpr/hints/KnownNames.h"

#include <string>

namespace mathexpr {

struct Correction
{
    std::wstring text;   ///< Empty if there is no correction.
    std::wstring other;  ///< The second reading of an ambiguous text; otherwise empty.
    Hint::Id reason = Hint::DidYouMean;
    Hint::Id choice = Hint::DidYouMean;  ///< The sentence that mentions both readings.
};

/// @param typed      no longer than what a user types
/// @param failure    in the typed text
/// @param typedSpan  span of the failure
Correction correct(const std::wstring& typed, const MTFailure& failure, MTSpan typedSpan, const KnownNames& names);

}
