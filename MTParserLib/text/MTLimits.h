// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTLimits.h - bounds on a text, counted before anything of it is compiled. What each counts is said in
// mathexpr/Limits.h.
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
};

/// A limit that a text breaks, and the stretch of the typed text that breaks it.
struct MTLimitExcess
{
    const MTCompileError* error;  ///< Null where every limit is kept.
    MTSpan span;
};

/// Memory that is used again from text to text.
struct MTLimitScratch
{
    std::wstring stripped;                  // the text without its blanks
    std::vector<std::uint32_t> nbPrefixes;  // of each open bracket and of the text: operators that wait for an operand
};

/// Reads no further than to the first excess.
/// @param typed  zero-terminated
MTLimitExcess findLimitExcess(const wchar_t* typed, const MTLimits& limits, const MTParserRegistrar& registrar,
                              MTLimitScratch& scratch);
