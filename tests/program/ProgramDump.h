// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ProgramDump.h - writes a compiled program as text, a record a line, for comparison with a golden file.
//
//     1 operator + at 1 [#0, 3] -> value
//
// reads: record 1 is the operator "+" at position 1; its first argument is written by record 0, its second is 3; its
// result goes to its own value. An argument that is read where a variable keeps its value bears the variable's name.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "mathexpr/IMathVariable.h"

#include <string>
#include <vector>

std::string dumpProgram(const MTParserProgram& program);
