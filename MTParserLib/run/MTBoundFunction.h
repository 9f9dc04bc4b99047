// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBoundFunction.h - a program as a function of numbers, which are given by position.
//
//     a-2*b     a 1, b 2     -3
//
// The kinds of all values are settled when the function is made, so that a call looks at nothing but the numbers. Its
// scalar code reads them in the caller's array, when it is called with one array again and again, and else in variables
// that they are copied to:
//
//     call with array 1     copied
//     call with array 1     the operands are redirected to array 1
//     call with array 1     runs
//     call with array 2     the operands are redirected to the variables; copied
//     call with array 3     copied
#pragma once

#include "MTParserLib/program/MTProgramCopy.h"
#include "MTParserLib/run/MTScalarCode.h"
#include "platform/ArrayView.h"
#include "platform/FloatingPointGuard.h"

#include <vector>

class MTBoundFunction
{
public:
    /// @param program    complete; it and its variables have to stay as they are for the life of the function
    /// @param arguments  values of variables, by position
    MTBoundFunction(const MTParserProgram& program, platform::ArrayView<const VALTYPE* const> arguments);
    MTBoundFunction(const MTBoundFunction&) = delete;
    MTBoundFunction& operator=(const MTBoundFunction&) = delete;

    std::size_t getArgumentCount() const noexcept { return arguments.size(); }
    bool yieldsPoint() const noexcept { return copy.getRoot().type != 0; }

    /// Computes what a fresh program would, whatever was called before. Nothing is allocated, nobody is called.
    /// @param given  as many as there are arguments
    /// @return false where an item refuses its operands
    bool call(const double* given, double& result) noexcept
    {
        return given == bound && platform::computesAsTheLibrary() ? runCode(result) : callInFull(given, result);
    }

private:
    /// An operand that the code reads from the caller's arguments.
    struct Read
    {
        const double** operand;
        std::size_t argument;
    };

    bool runCode(double& result)
    {
        static constexpr MTScalarOwner owner{nullptr, [](void*, const double*, Message::Id) { return false; }};
        return MTScalarCode::run(first, &result, &owner, nullptr);
    }
    void findReads();
    void bind(const double* given) noexcept;
    void setArguments(const double* given) noexcept;
    bool callInFull(const double* given, double& result) noexcept;

    MTProgramCopy copy;
    std::vector<double*> arguments;  // x of the inputs
    MTScalarCode code;
    const MTScalarStep* first = nullptr;  // of the code; null where it cannot stand for the program
    bool copiesArguments = false;         // to the copy's variables, in each call: steps run on records
    std::vector<Read> reads;              // where that is not so
    double unread = 0.0;                  // in place of an argument that no step reads
    const double* bound = &unread;        // the caller's array that they read; this address where they read the copy's
    const double* last = nullptr;         // the array of the last call that was not bound
};
