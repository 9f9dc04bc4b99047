// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTCompilation.h - what the compiler makes of a text: the program, or the failure.
#pragma once

#include "MTParserLib/compile/MTFailure.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/text/MTSpan.h"

#include <string>

struct MTCompilation
{
    std::wstring typedText;  ///< The text compiled last, as typed; empty where it was too long to be looked at.
    std::wstring text;       ///< Rewritten; all positions count in it.
    MTSpan assignSpan;       ///< In it, the name that it assigns to.
    MTParserProgram program;
    MTFailure failure;  ///< Of the compilation, or of the program's last run.
};
