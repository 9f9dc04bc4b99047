// MTParserEvaluator.h - runs a compiled program.
#pragma once

#include "MTParserLib/MTParserProgram.h"

/// Runs a complete program once. Nothing is allocated. A program whose root is constant is not run at all.
/// @param showMessages  whether an item may tell the user why it refuses
/// @return true with the value in the program's root; false as soon as an item refuses its arguments
/// @throws what an item raises for an argument of the wrong kind
bool runProgram(const MTParserProgram& program, bool showMessages);
