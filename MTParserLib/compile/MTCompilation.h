// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTCompilation.h - the outcome of a compilation: a program or a failure.
#pragma once

#include "MTParserLib/compile/MTFailure.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/text/MTSpan.h"

#include <string>
#include <string_view>

struct MTCompilation
{
    MTCompilation() = default;
    MTCompilation(const MTCompilation&) = delete;  // text would refer to the original
    MTCompilation& operator=(const MTCompilation&) = delete;

    std::wstring typedText;      ///< The text compiled last, as typed; empty if it exceeded the length limit.
    std::wstring rewrittenText;  ///< The rewritten text, if it differs.
    std::wstring_view text;      ///< The one of the two that is compiled; all positions refer to it.
    MTSpan assignSpan;           ///< The span in text of the name that is assigned to.
    MTParserProgram program;
    MTFailure failure{};  ///< Failure of the compilation, or of the program's last run.
};
