// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBoundFunction.h - a program as a function of numbers with positional arguments.
//
//     a-2*b     a 1, b 2     -3
//
// The kinds of all values are determined when the function is created, so a call reads only the numbers. Scalar code
// reads them in the caller's array if successive calls pass the same array, otherwise in variables to which they are
// copied:
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
    /// @param program    complete; it and its variables must not change during the life of the function
    /// @param arguments  values of variables, by position
    MTBoundFunction(const MTParserProgram& program, platform::ArrayView<const VALTYPE* const> arguments);
    MTBoundFunction(const MTBoundFunction&) = delete;
    MTBoundFunction& operator=(const MTBoundFunction&) = delete;

    std::size_t getArgumentCount() const noexcept { return arguments.size(); }
    bool yieldsPoint() const noexcept { return copy.getRoot().type != 0; }

    /// Computes what a fresh program would, independent of earlier calls. Allocates nothing and calls no code of the
    /// host.
    /// @param given  as many numbers as there are arguments
    /// @return false if an item refuses its operands
    bool call(const double* given, double& result) noexcept
    {
        return given == bound && platform::computesAsTheLibrary() ? runCode(result) : callInFull(given, result);
    }

private:
    /// An operand that the code reads from the arguments.
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
    const MTScalarStep* first = nullptr;  // of the code; null if scalar code cannot run the program
    bool copiesArguments = false;         // in each call, because some steps run on records
    std::vector<Read> reads;              // if it is false
    double unread = 0.0;                  // target of arguments that no step reads
    const double* bound = &unread;        // the array that the operands point at; &unread if they point at the copy's
                                          // variables
    const double* last = nullptr;         // the array of the last call, if it was not bound
};
