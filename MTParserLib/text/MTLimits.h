// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTLimits.h - upper bounds on a text, checked before it is compiled. mathexpr/Limits.h defines what each of them
// counts.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/compile/MTCompileErrors.h"
#include "MTParserLib/text/MTSpan.h"

#include <cstdint>
#include <string>
#include <vector>

/// 0 is no limit.
struct MTLimits
{
    std::uint32_t textLength = 0;
    std::uint32_t records = 0;
    std::uint32_t nesting = 0;

    bool areNone() const noexcept { return (textLength | records | nesting) == 0; }
};

/// A limit that a text exceeds, and the span of the typed text that exceeds it.
struct MTLimitExcess
{
    const MTCompileError* error;  ///< Null if no limit is exceeded.
    MTSpan span;
};

/// Memory that is reused from text to text.
struct MTLimitScratch
{
    std::wstring stripped;                  // the text without blanks
    std::vector<std::uint32_t> nbPrefixes;  // number of pending prefix operators, for each open bracket and for the
                                            // text
};

/// Stops at the first excess.
/// @param typed  zero-terminated
MTLimitExcess findLimitExcess(const wchar_t* typed, const MTLimits& limits, const MTParserRegistrar& registrar,
                              MTLimitScratch& scratch);
