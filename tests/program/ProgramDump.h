// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ProgramDump.h - writes a compiled program as text, one record per line, for comparison with a golden file.
//
//     1 operator + at 1 [#0, 3] -> value
//
// means: record 1 is the operator "+" at position 1; record 0 writes its first argument, its second argument is 3; the
// result goes to its own value. An argument that is read in place has the name of its variable.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/program/MTParserProgram.h"

#include <string>

/// @param registrar  has the program's items
std::string dumpProgram(const MTParserProgram& program, const MTParserRegistrar& registrar);
