// ProgramDump.h - writes a compiled program as text, a record a line, for comparison with a golden file.
//
//     1 operator + at 1 [#0, 3] -> value
//
// reads: record 1 is the operator "+" at position 1; its first argument is written by record 0, its second is 3; its
// result goes to its own value.
#pragma once

#include "MTParserLib/MTParserProgram.h"

#include <string>

std::string dumpProgram(const MTParserProgram& program);
