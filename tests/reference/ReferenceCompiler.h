// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceCompiler.h - compiles a text to the reference's program, step by step as the language is defined.
#pragma once

#include "ReferenceProgram.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference {

/// State that a compilation reads and changes, and that exists beyond it.
struct Surroundings
{
    const Host& host;
    std::uint32_t maxInteger;
    std::map<std::wstring, std::unique_ptr<VALTYPE>>& variables;
    std::wstring& assignTarget;
    Messages& messages;
    std::vector<std::wstring>& asked;
};

/// Removes the blanks: U+0020 only.
std::wstring withoutBlanks(const std::wstring& text);

/// Applies the three shorthands: "[" to "point(", "]" to ")", "e+" to "*10^".
std::wstring rewritten(std::wstring text);

/// Name of a variable with the letters A to Z folded.
std::wstring folded(std::wstring name);

/// Throws the failure of a name that cannot be a new variable.
void requireVariableName(const std::wstring& name);

/// Compiles a text without blanks.
/// @throws Failure, Refusal
Program compile(const std::wstring& text, Surroundings& surroundings);
}
