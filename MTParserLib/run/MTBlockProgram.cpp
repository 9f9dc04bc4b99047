// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBlockProgram.cpp - builds the block form of a program, and runs it.
#include "MTParserLib/run/MTBlockProgram.h"

#include "MTParserLib/run/ScalingKernels.h"

#include <algorithm>
#include <unordered_map>

namespace {

/// Results that wait at once: more would take more memory than a thread is to have, and more than the cache holds.
constexpr std::size_t mostBuffers = 256;

std::uint32_t indexOfLast(std::size_t size) noexcept
{
    return static_cast<std::uint32_t>(size - 1);
}

/// Evaluates an item by itself, with plain numbers.
/// @return the status of such a row
std::uint32_t evaluateItem(const MTItemKernels& item, platform::ArrayView<const VALTYPE> args, VALTYPE& result)
{
    return item.evaluate(
        {&item, nullptr, args.data(), args.data() + 1, &result, static_cast<std::uint32_t>(args.size()), 0}, false);
}

}

class MTBlockProgram::Builder
{
public:
    Builder(const MTParserProgram& source, platform::ArrayView<const MTBoundColumn> bound) : program(source)
    {
        for (const MTBoundColumn& column : bound)
        {
            target->columns.push_back(column.column);
            places[column.variable] = Operand{Operand::Place::Column, indexOfLast(target->columns.size())};
            numbersOnly = numbersOnly && column.column.kind == mathexpr::BulkKind::Number;
        }
    }

    std::unique_ptr<const MTBlockProgram> build()
    {
        const bool built = numbersOnly && std::all_of(program.steps.begin(), program.steps.end(),
                                                      [this](const MTProgramStep& step) { return add(step); });
        if (!built || nbBuffersUsed > mostBuffers || !endsWithItem())
        {
            return nullptr;
        }
        target->root = take(*program.root);
        target->rootFlag = flagOf(program.steps.back());
        target->nbBuffers = nbBuffersUsed;
        return std::move(target);
    }

private:
    /// Whether the value is an item's, and not a copy of a variable, which has a flag and coordinates of its own. The
    /// last step is the root's, and a program whose value is not known has one.
    bool endsWithItem() const noexcept { return program.steps.back().nbArgs != 0; }

    bool add(const MTProgramStep& step)
    {
        if (step.nbArgs == 0)
        {
            return addCopy(step);
        }
        if (step.kernels->blocks == nullptr && step.kernels->formula == nullptr)
        {
            return false;
        }
        const std::size_t firstOperand = target->operands.size();
        bool allUniform = true;
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            if (!isNumber(step.operand(j)))
            {
                return false;
            }
            const Operand operand = take(step.operand(j));
            allUniform = allUniform && operand.place == Operand::Place::Uniform;
            target->operands.push_back(operand);
        }
        if (allUniform)
        {
            addUniform(step, firstOperand);
            return true;
        }
        // Taken before those of the operands are given back, so that an item never writes where it reads.
        const std::uint32_t result = takeBuffer();
        for (const Operand& operand : platform::ArrayView(target->operands).subspan(firstOperand))
        {
            if (operand.place == Operand::Place::Buffer)
            {
                freeBuffers.push_back(operand.index);
            }
        }
        if (step.kernels->formula != nullptr)
        {
            addScaling(step, static_cast<std::uint32_t>(firstOperand), result);
        }
        else
        {
            target->steps.push_back({step.kernels, static_cast<std::uint32_t>(firstOperand), step.nbArgs, result,
                                     mathexpr::RowStatus::Done, nullptr, nullptr});
            target->mostOperands = std::max<std::size_t>(target->mostOperands, step.nbArgs);
        }
        places[step.destination] = Operand{Operand::Place::Buffer, result};
        return true;
    }

    /// All steps but the first scale what is in the buffer of the result.
    void addScaling(const MTProgramStep& step, std::uint32_t operand, std::uint32_t result)
    {
        const ConversionFormula& formula = *step.kernels->formula;
        for (std::size_t j = 0; j < countScalingSteps(formula); ++j)
        {
            target->steps.push_back({step.kernels, operand, 1, result, mathexpr::RowStatus::Done,
                                     findScalingStep(formula, j).blocks, factorsOfStep(formula, j).data()});
            target->operands.push_back({Operand::Place::Buffer, result});
            operand = indexOfLast(target->operands.size());
        }
    }

    /// A variable that is copied to its consumer is read in its own place here.
    bool addCopy(const MTProgramStep& step)
    {
        if (step.first == nullptr || !isNumber(*step.first))
        {
            return false;
        }
        places[step.destination] = take(*step.first);
        return true;
    }

    /// Computes a step whose operands are the same in all rows.
    void addUniform(const MTProgramStep& step, std::size_t firstOperand)
    {
        args.assign(step.nbArgs, VALTYPE{});
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            args[j].x = target->uniforms[target->operands[firstOperand + j].index];
        }
        target->operands.resize(firstOperand);
        VALTYPE result;
        const std::uint32_t status = evaluateItem(*step.kernels, args, result);
        if (status != mathexpr::RowStatus::Done)
        {
            target->steps.push_back({nullptr, 0, 0, 0, status, nullptr, nullptr});
        }
        places[step.destination] = addNumber(result.x);
    }

    /// Whether what stands in a place is a number in every row. Results of steps are.
    bool isNumber(const VALTYPE& place) const { return places.count(&place) != 0 || place.type == 0; }

    /// What stands in a place: a column, a result, or else what is the same in all rows.
    Operand take(const VALTYPE& place)
    {
        const auto known = places.find(&place);
        return known != places.end() ? known->second : addNumber(place.x);
    }

    Operand addNumber(double number)
    {
        target->uniforms.push_back(number);
        return {Operand::Place::Uniform, indexOfLast(target->uniforms.size())};
    }

    std::uint32_t takeBuffer()
    {
        if (freeBuffers.empty())
        {
            return static_cast<std::uint32_t>(nbBuffersUsed++);
        }
        const std::uint32_t buffer = freeBuffers.back();
        freeBuffers.pop_back();
        return buffer;
    }

    /// The second flag of a result depends on the item alone while it meets plain numbers. None refuses 1.
    std::uint8_t flagOf(const MTProgramStep& step)
    {
        VALTYPE one;
        one.x = 1.0;
        args.assign(step.nbArgs, one);
        VALTYPE result;
        evaluateItem(*step.kernels, args, result);
        return result.flag;
    }

    const MTParserProgram& program;
    std::unique_ptr<MTBlockProgram> target = std::make_unique<MTBlockProgram>();
    bool numbersOnly = true;
    std::unordered_map<const VALTYPE*, Operand> places;  // of the columns and of the results
    std::vector<std::uint32_t> freeBuffers;
    std::size_t nbBuffersUsed = 0;
    std::vector<VALTYPE> args;
};

std::unique_ptr<const MTBlockProgram> MTBlockProgram::build(const MTParserProgram& program,
                                                            platform::ArrayView<const MTBoundColumn> columns)
{
    return Builder(program, columns).build();
}

MTBlockWorker::MTBlockWorker(const MTBlockProgram& blockProgram, const mathexpr::BulkResults& results)
    : program(blockProgram), writer(results),
      buffers((blockProgram.nbBuffers + blockProgram.columns.size()) * blockRows),
      columnValues(blockProgram.columns.size()), manyOperands(blockProgram.mostOperands),
      args(blockProgram.mostOperands)
{}

bool MTBlockWorker::evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    readColumns(firstRow, nbRows);
    refused = false;
    // The value goes to the host's array right away where its numbers stand side by side.
    const bool isComputed = program.root.place == Operand::Place::Buffer;
    double* const direct = isComputed ? writer.contiguousNumbers(firstRow) : nullptr;
    for (const Step& step : program.steps)
    {
        const bool isLast = &step == &program.steps.back();
        run(step, isLast && direct != nullptr ? direct : buffer(step.result), nbRows, status);
    }
    if (direct == nullptr)
    {
        writeRows(firstRow, nbRows, status);
    }
    else if (refused)
    {
        writeFailures(firstRow, nbRows, status);
    }
    return !refused;
}

void MTBlockWorker::readColumns(std::size_t firstRow, std::size_t nbRows)
{
    for (std::size_t index = 0; index < columnValues.size(); ++index)
    {
        const mathexpr::BulkColumn& column = program.columns[index];
        if (column.stride == static_cast<std::ptrdiff_t>(sizeof(double)))
        {
            columnValues[index] = column.data + firstRow;
            continue;
        }
        double* const values = buffer(program.nbBuffers + index);
        std::ptrdiff_t offset = offsetOf(firstRow, column.stride);
        for (std::size_t row = 0; row < nbRows; ++row, offset += column.stride)
        {
            values[row] = readNumber(column.data, offset);
        }
        columnValues[index] = values;
    }
}

const double* MTBlockWorker::valuesOf(Operand operand) const noexcept
{
    switch (operand.place)
    {
    case Operand::Place::Column:
        return columnValues[operand.index];
    case Operand::Place::Buffer:
        return buffers.data() + operand.index * blockRows;
    default:
        return &program.uniforms[operand.index];
    }
}

void MTBlockWorker::run(const Step& step, double* result, std::size_t nbRows, std::uint32_t* status)
{
    if (step.item == nullptr)
    {
        std::replace(status, status + nbRows, static_cast<std::uint32_t>(mathexpr::RowStatus::Done), step.refusal);
        refused = true;
        return;
    }
    if (step.scaling != nullptr)
    {
        step.scaling(valuesOf(program.operands[step.firstOperand]), step.factors, result, nbRows);
        return;
    }
    if (step.item->blocks->computeMany == nullptr)
    {
        compute(step, result, nbRows, status);
        return;
    }
    for (std::uint32_t j = 0; j < step.nbOperands; ++j)
    {
        const Operand operand = program.operands[step.firstOperand + j];
        manyOperands[j] = {valuesOf(operand), operand.place == Operand::Place::Uniform};
    }
    step.item->blocks->computeMany(platform::ArrayView(manyOperands).first(step.nbOperands), args.data(), result,
                                   nbRows);
}

void MTBlockWorker::compute(const Step& step, double* result, std::size_t nbRows, std::uint32_t* status)
{
    const Operand first = program.operands[step.firstOperand];
    const Operand second = program.operands[step.firstOperand + step.nbOperands - 1];
    const auto form = static_cast<std::size_t>(first.place == Operand::Place::Uniform    ? MTBlockForm::FirstUniform
                                               : second.place == Operand::Place::Uniform ? MTBlockForm::SecondUniform
                                                                                         : MTBlockForm::NoneUniform);
    const double* const a = valuesOf(first);
    const double* const b = valuesOf(second);
    const MTBlockOutside outside = step.item->blocks->outside[form];
    if (outside != nullptr && outside(a, b, nbRows))
    {
        refuseRows(step, nbRows, status);
    }
    step.item->blocks->compute[form](a, b, result, nbRows);
}

void MTBlockWorker::refuseRows(const Step& step, std::size_t nbRows, std::uint32_t* status)
{
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        if (status[row] != mathexpr::RowStatus::Done)
        {
            continue;
        }
        for (std::uint32_t j = 0; j < step.nbOperands; ++j)
        {
            const Operand operand = program.operands[step.firstOperand + j];
            args[j].x = valuesOf(operand)[operand.place == Operand::Place::Uniform ? 0 : row];
        }
        VALTYPE unused;
        status[row] = evaluateItem(*step.item, platform::ArrayView(args).first(step.nbOperands), unused);
        refused = refused || status[row] != mathexpr::RowStatus::Done;
    }
}

void MTBlockWorker::writeRows(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    const double* const values = valuesOf(program.root);
    const bool isUniform = program.root.place == Operand::Place::Uniform;
    VALTYPE value;
    value.flag = program.rootFlag;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        value.x = values[isUniform ? 0 : row];
        if (status[row] == mathexpr::RowStatus::Done && !writer.write(firstRow + row, value))
        {
            status[row] = mathexpr::RowStatus::OtherKind;
            refused = true;
        }
    }
    if (refused)
    {
        writeFailures(firstRow, nbRows, status);
    }
}

void MTBlockWorker::writeFailures(std::size_t firstRow, std::size_t nbRows, const std::uint32_t* status)
{
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        if (status[row] != mathexpr::RowStatus::Done)
        {
            writer.writeFailure(firstRow + row);
        }
    }
}
