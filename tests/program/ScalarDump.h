// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ScalarDump.h - writes the scalar code of a program as text, one step per line, for comparison with a golden file.
//
//     * point number [q, 2] -> slot 0
//
// means: the kernel of "*" for a point and a number; the operands are the variable q and the constant 2; the result, a
// point, is stored in the slot that record 0 of the program writes. "value" is the last number; "spill slot 0," stores
// it first.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/program/MTParserProgram.h"

#include <string>

/// @param registrar  has the program's items
std::string dumpScalarCode(const MTParserProgram& program, const MTParserRegistrar& registrar);
