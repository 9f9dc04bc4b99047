// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBlockProgram.h - a third form of a program whose values are all plain numbers: each step is computed for a whole
// block of rows before the next one.
//
// A step's operands are columns, read where they are if their numbers stand side by side; results of earlier steps, in
// buffers of one block; and numbers that are the same in all rows. A step that has nothing but these is computed while
// the form is built. That a row's items compute no more than x of a plain number is known of the items (their kernels)
// and of the variables before the first row, and holds for every row then; so nothing has to be tested on the way.
//
// A step that refuses a row marks it; later steps compute on with what stands there, which reaches nobody.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTBlockKernels.h"
#include "MTParserLib/run/MTBulkArrays.h"
#include "MTParserLib/run/MTBulkWorker.h"
#include "platform/ArrayView.h"

#include <cstdint>
#include <memory>
#include <vector>

/// The steps, shared by all threads.
class MTBlockProgram
{
public:
    /// @param program  complete, with a root that is not constant; has to stay as it is for the life of this object
    /// @return null where the program has no such form
    static std::unique_ptr<const MTBlockProgram> build(const MTParserProgram& program,
                                                       platform::ArrayView<const MTBoundColumn> columns);

private:
    friend class MTBlockWorker;
    class Builder;

    /// An operand, by its number among the operands of its kind.
    struct Operand
    {
        enum class Place : std::uint8_t
        {
            Column,
            Buffer,
            Uniform,
        };
        Place place;
        std::uint32_t index;
    };

    struct Step
    {
        const MTItemKernels* item;   // null: every row is refused that no earlier step has refused
        std::uint32_t firstOperand;  // among the operands
        std::uint32_t nbOperands;
        std::uint32_t result;    // the buffer that it goes to
        std::uint32_t refusal;   // where every row is refused: the status
        MTBlockCompute scaling;  // of a step of a conversion, else null
        const double* factors;
    };

    std::vector<Step> steps;
    std::vector<Operand> operands;
    std::vector<double> uniforms;
    std::vector<mathexpr::BulkColumn> columns;
    std::size_t nbBuffers = 0;
    std::size_t mostOperands = 0;
    Operand root{};
    std::uint8_t rootFlag = 0;
};

/// Runs them on one thread.
class MTBlockWorker final : public MTBulkWorker
{
public:
    /// @param program  outlives this object
    MTBlockWorker(const MTBlockProgram& program, const mathexpr::BulkResults& results);

    bool evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status) override;

private:
    using Step = MTBlockProgram::Step;
    using Operand = MTBlockProgram::Operand;

    void readColumns(std::size_t firstRow, std::size_t nbRows);
    void run(const Step& step, double* result, std::size_t nbRows, std::uint32_t* status);
    void compute(const Step& step, double* result, std::size_t nbRows, std::uint32_t* status);
    void refuseRows(const Step& step, std::size_t nbRows, std::uint32_t* status);
    void writeRows(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status);
    void writeFailures(std::size_t firstRow, std::size_t nbRows, const std::uint32_t* status);
    const double* valuesOf(Operand operand) const noexcept;
    double* buffer(std::size_t index) noexcept { return buffers.data() + index * blockRows; }

    const MTBlockProgram& program;
    MTBulkWriter writer;
    std::vector<double> buffers;               // of the steps, and then of the columns that have gaps
    std::vector<const double*> columnValues;   // of the rows at hand
    std::vector<MTBlockOperand> manyOperands;  // of a step with more than two
    std::vector<VALTYPE> args;
    bool refused = false;  // any row of the block
};
