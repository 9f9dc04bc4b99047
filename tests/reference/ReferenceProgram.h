// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceProgram.h - the records of the reference's programs, and the exceptions of its stages.
#pragma once

#include "ReferenceEvaluator.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace reference {

/// The messages of one call. Items use it to refuse their arguments.
struct Messages
{
    bool shown = true;
    std::vector<std::uint32_t> numbers;

    /// Always returns false, so that an item can return the result of this call.
    bool refuse(std::uint32_t number)
    {
        if (shown)
        {
            numbers.push_back(number);
        }
        return false;
    }
};

/// An error that is shown as a message, or raised if it has no message or the session is silent.
struct Failure
{
    Raised raised;
    std::uint32_t message = 0;
};

/// The call returns false; its message, if any, has been recorded.
struct Refusal
{};

inline constexpr std::uint32_t anyNumberOfArguments = 0xFFFFFFFF;

/// An operator or a function.
struct Item
{

    std::wstring symbol;
    std::uint32_t nbArgs = 0;
    std::int32_t precedence = 0;
    bool unary = false;
    bool constant = true;  // whether it may be folded
    std::function<bool(const std::vector<VALTYPE>& args, VALTYPE& result, Messages& messages)> evaluate;
};

/// A record of the program. Records do not move in memory, since destinations point into them.
struct Record
{
    VALTYPE value;
    bool constant = false;
    std::vector<VALTYPE> args;
    VALTYPE unconsumed;  // receives the result if no other record consumes it
    VALTYPE* destination = &unconsumed;
    bool visited = false;
    std::uint32_t position = 0;
    bool placeholder = false;
    bool function = false;
    const Item* item = nullptr;         // null for values
    const VALTYPE* variable = nullptr;  // set for a variable
};

using Program = std::vector<std::unique_ptr<Record>>;
}
