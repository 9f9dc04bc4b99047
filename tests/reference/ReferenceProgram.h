// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceProgram.h - the records that the reference compiles to, and what its stages throw at each other.
#pragma once

#include "ReferenceEvaluator.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace reference {

/// The messages of one call. Items refuse their arguments through it.
struct Messages
{
    bool shown = true;
    std::vector<std::uint32_t> numbers;

    /// Always false, so that an item can return it.
    bool refuse(std::uint32_t number)
    {
        if (shown)
        {
            numbers.push_back(number);
        }
        return false;
    }
};

/// An error that is shown as message, or raised: when there is no message to show, or when the session is silent.
struct Failure
{
    Raised raised;
    std::uint32_t message = 0;
};

/// The call answers false; the message, if any, has been recorded.
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
    bool constant = true;  // may be folded
    std::function<bool(const std::vector<VALTYPE>& args, VALTYPE& result, Messages& messages)> evaluate;
};

/// One record of the program. Records stay where they are in memory, so that a destination may point into one.
struct Record
{
    VALTYPE value;
    bool constant = false;
    std::vector<VALTYPE> args;
    VALTYPE unconsumed;  // receives the result of a record that no other record consumes
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
