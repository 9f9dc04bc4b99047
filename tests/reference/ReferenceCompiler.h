// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceCompiler.h - turns a text into the reference's program, step by step as the language is described.
#pragma once

#include "ReferenceProgram.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference {

/// What a compilation reads and changes outside itself.
struct Surroundings
{
    const Host& host;
    std::uint32_t maxInteger;
    std::map<std::wstring, std::unique_ptr<VALTYPE>>& variables;
    std::wstring& assignTarget;
    Messages& messages;
    std::vector<std::wstring>& asked;
};

/// Removes the blanks: U+0020 and nothing else.
std::wstring withoutBlanks(const std::wstring& text);

/// Applies the three shorthands: "[" to "point(", "]" to ")", "e+" to "*10^".
std::wstring rewritten(std::wstring text);

/// Name of a variable with the letters A to Z folded.
std::wstring folded(std::wstring name);

/// Raises the failure of a name that cannot be a new variable.
void requireVariableName(const std::wstring& name);

/// Compiles a text from which the blanks are removed.
/// @throws Failure, Refusal
Program compile(const std::wstring& text, Surroundings& surroundings);
}
