// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTScalarCode.cpp - builds scalar code from a program, and runs it.
#include "MTParserLib/run/MTScalarCode.h"

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/ScalingKernels.h"

#include <algorithm>
#include <array>

namespace {

/// Programs with more steps than this run themselves. What scalar code takes in memory would no longer be small; and a
/// compiler that is not asked to optimise makes calls of the jumps from step to step, which all wait on the stack.
#if defined(__OPTIMIZE__)
constexpr std::size_t mostSteps = 4096;
#else
constexpr std::size_t mostSteps = 128;
#endif

/// Results that wait at once. Only a program nested deeper than that runs itself.
constexpr std::size_t mostWaiting = 32;

double loadConstant(const MTScalarStep* step, double, double*, bool*)
{
    return *step->a;
}

double end(const MTScalarStep*, double value, double*, bool*)
{
    return value;
}

/// Where the operand of a step stands.
struct Operand
{
    enum class Place : std::uint8_t
    {
        Memory,
        Value,  // the result of the step before
        Stack,
    };
    Place place;
    const double* memory;
};

/// The result of a step that waits for its consumer.
struct WaitingResult
{
    bool onStack;
    const VALTYPE* destination;  // the slot of its consumer
};

/// Turns a program into scalar code, step by step, with the results that wait in an array of fixed size.
class Builder
{
public:
    explicit Builder(std::vector<MTScalarStep>& target) noexcept : steps(target) { waiting[0] = {true, nullptr}; }

    void addItem(const MTProgramStep& step)
    {
        std::array<Operand, 2> operands{};
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            operands[j] = takeOperand(step.operand(j));
        }
        const MTOperandForm form = formOf(operands, step.nbArgs);
        std::array<const double*, 2> memory{};
        std::size_t nbMemory = 0;
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            if (operands[j].place == Operand::Place::Memory)
            {
                memory[nbMemory++] = operands[j].memory;
            }
        }
        if (step.kernels->formula != nullptr)
        {
            appendScaling(*step.kernels->formula, form, memory[0]);
        }
        else
        {
            append(*step.kernels->scalar, form, memory, &step.destination->x);
        }
        if (nbWaiting == mostWaiting)
        {
            overflowed = true;
            return;
        }
        waiting[++nbWaiting] = {false, step.destination};
    }

    /// Ends the code.
    /// @return false when it is of no use, because too many results wait at once or never find a consumer
    bool finish()
    {
        steps.push_back({end, nullptr, nullptr, nullptr, nullptr, nullptr});
        return !overflowed && nbWaiting == 1;
    }

private:
    /// What is written to a slot or what stands there.
    Operand takeOperand(const VALTYPE& value) noexcept
    {
        const WaitingResult& last = waiting[nbWaiting];
        if (last.destination == &value)
        {
            --nbWaiting;
            return {last.onStack ? Operand::Place::Stack : Operand::Place::Value, nullptr};
        }
        return {Operand::Place::Memory, &value.x};
    }

    MTOperandForm formOf(const std::array<Operand, 2>& operands, std::uint32_t nbArgs) noexcept
    {
        const Operand::Place first = operands[0].place;
        const Operand::Place last = operands[nbArgs - 1].place;
        if (first == Operand::Place::Stack)
        {
            return MTOperandForm::StackValue;
        }
        if (first == Operand::Place::Value)
        {
            return MTOperandForm::ValueMemory;
        }
        if (last == Operand::Place::Value)
        {
            return MTOperandForm::MemoryValue;
        }
        // The result in the register is pushed before the new one takes its place; results below it have been pushed.
        WaitingResult& waitingLast = waiting[nbWaiting];
        if (waitingLast.onStack)
        {
            return MTOperandForm::Memory;
        }
        waitingLast.onStack = true;
        return MTOperandForm::PushMemory;
    }

    void append(const MTScalarKernels& item, MTOperandForm form, const std::array<const double*, 2>& memory,
                double* destination)
    {
        const bool takesValue = form == MTOperandForm::ValueMemory || form == MTOperandForm::MemoryValue;
        if (takesValue && item.fusedIndex != MTScalarKernels::notFused && lastIndex != MTScalarKernels::notFused)
        {
            MTScalarStep& last = steps.back();
            last.kernel = findFusedKernel(lastIndex, lastForm, item.fusedIndex, form);
            last.c = memory[0];
            last.secondProduct = destination;
            lastIndex = MTScalarKernels::notFused;
            return;
        }
        steps.push_back(
            {item.kernels[static_cast<std::size_t>(form)], memory[0], memory[1], nullptr, destination, nullptr});
        lastIndex = item.fusedIndex;
        lastForm = form;
    }

    void appendScaling(const ConversionFormula& formula, MTOperandForm form, const double* operand)
    {
        for (std::size_t j = 0; j < countScalingSteps(formula); ++j)
        {
            const MTScalarKernel kernel = findScalingStep(formula, j).scalar.kernels[static_cast<std::size_t>(form)];
            const double* const factors = factorsOfStep(formula, j).data();
            const double* const first = form == MTOperandForm::ValueMemory ? factors : operand;
            steps.push_back({kernel, first, factors, nullptr, nullptr, nullptr});
            form = MTOperandForm::ValueMemory;
        }
        lastIndex = MTScalarKernels::notFused;
    }

    std::vector<MTScalarStep>& steps;
    // waiting[0] is a sentinel, which no operand is and which is never pushed.
    std::array<WaitingResult, 1 + mostWaiting> waiting;
    std::size_t nbWaiting = 0;
    bool overflowed = false;
    // Of the last step, if it holds one item that can be fused.
    std::size_t lastIndex = MTScalarKernels::notFused;
    MTOperandForm lastForm{};
};

}

void MTScalarCode::clear() noexcept
{
    ready = nullptr;
    armed = nullptr;
    variables.clear();
    steps.clear();
    possible = false;
    ran = false;
}

void MTScalarCode::prepare(const MTParserProgram& program, const VALTYPE& root)
{
    if (program.rootIsConstant)
    {
        steps.push_back({loadConstant, &root.x, nullptr, nullptr, nullptr, nullptr});
        ready = steps.data();
        return;
    }
    std::size_t nbSteps = 0;
    for (const MTProgramStep& step : program.steps)
    {
        const ConversionFormula* const formula = step.kernels->formula;
        if (step.kernels->scalar == nullptr && formula == nullptr)
        {
            return;
        }
        nbSteps += formula != nullptr ? countScalingSteps(*formula) : 1;
    }
    if (nbSteps > mostSteps)
    {
        return;
    }
    steps.reserve(nbSteps + 1);
    // Each result on the stack waits for an item of two operands, and the last result never lies there.
    stack.resize(std::max(stack.size(), program.steps.size()));
    possible = true;
}

bool MTScalarCode::getReady(const MTParserProgram& program)
{
    for (const MTProgramStep& step : program.steps)
    {
        const bool takesPoint = step.operand(0).type != 0 || (step.nbArgs > 1 && step.operand(1).type != 0);
        if (takesPoint || step.destination->type != 0)
        {
            return false;
        }
    }
    if (steps.empty())
    {
        build(program);
    }
    ready = possible ? steps.data() : nullptr;
    return possible;
}

void MTScalarCode::build(const MTParserProgram& program)
{
    Builder builder(steps);
    for (const MTProgramStep& step : program.steps)
    {
        builder.addItem(step);
    }
    possible = builder.finish();
}
