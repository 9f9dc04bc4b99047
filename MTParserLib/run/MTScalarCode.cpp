// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTScalarCode.cpp - builds scalar code from a program that has run to completion.
#include "MTParserLib/run/MTScalarCode.h"

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTScalarSteps.h"
#include "MTParserLib/run/ScalingKernels.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace {

/// Programs with more steps are interpreted. Their scalar code would take too much memory; and a compiler that does not
/// optimise, or whose target has no tail jumps, compiles the jumps from step to step as nested calls.
#if defined(__OPTIMIZE__) && (!defined(__wasm__) || defined(__wasm_tail_call__))
constexpr std::size_t mostSteps = 4096;
#else
constexpr std::size_t mostSteps = 128;
#endif

/// Heads that inputs may have: numbers and points, flagged or not.
constexpr std::size_t nbHeads = 4;

/// Operands that are not given read this 0.
constexpr double zero = 0.0;

/// Upper bounds on the steps of scalar code for a program.
struct StepCounts
{
    std::size_t scalar = 0;  // 0 if scalar code cannot run the program
    std::size_t copies = 0;  // of variables
};

StepCounts countSteps(const std::vector<MTProgramStep>& program) noexcept
{
    StepCounts counts;
    for (const MTProgramStep& step : program)
    {
        const ConversionFormula* const formula = step.kernels->formula;
        counts.scalar += formula != nullptr ? countScalingSteps(*formula) : 1;
        counts.copies += step.isCopy() ? 1U : 0U;
        if (isHostItem(*step.kernels) || counts.scalar > mostSteps)
        {
            return {};
        }
    }
    return counts;
}

/// Location of a step's operand.
struct Operand
{
    enum class Place : std::uint8_t
    {
        Memory,
        Value,   // the last number, in the register
        Copied,  // in a variable that has not been copied to the slot yet
    };
    Place place = Place::Memory;
    const double* memory = nullptr;          // x of the slot, or of the variable to be copied to it
    const MTProgramStep* copying = nullptr;  // the step that copies it
};

MTOperandKinds kindsOf(const MTProgramStep& step, const MTFrame& frame) noexcept
{
    const bool secondIsPoint = step.nbArgs > 1 && frame[step.second].type != 0;
    if (frame[step.first].type != 0)
    {
        return secondIsPoint ? MTOperandKinds::Points : MTOperandKinds::PointNumber;
    }
    return secondIsPoint ? MTOperandKinds::NumberPoint : MTOperandKinds::Numbers;
}

/// Whether the slot of a step holds a point from earlier kinds, which its item does not yield for the present kinds.
/// Evaluates the item on a fresh slot to find out.
bool holdsOldPoint(const MTProgramStep& step, const MTFrame& frame)
{
    if (frame[step.result].type == 0)
    {
        return false;
    }
    VALTYPE fresh;
    evaluateWithOnes(step, frame, fresh);
    return fresh.type == 0;
}

/// Whether a step that is not a copy has a kernel, and does not run on records.
bool hasKernel(const MTProgramStep& step, const MTFrame& frame)
{
    if (step.kernels->formula != nullptr)
    {
        return true;
    }
    const MTScalarKernels* const item = step.kernels->scalar;
    if (item == nullptr)
    {
        return false;
    }
    if (!step.kernels->readsInPlace)
    {
        return step.nbArgs <= 3;
    }
    // "&" reads two flagged points as truth values.
    const MTOperandKinds kinds = kindsOf(step, frame);
    const bool areFlagged =
        kinds == MTOperandKinds::Points && frame[step.first].flag != 0 && frame[step.second].flag != 0;
    return item->find(kinds, MTOperandForm::Memory) != nullptr && !areFlagged && !holdsOldPoint(step, frame);
}

/// Converts a program to scalar code, step by step.
class Builder
{
public:
    /// @param runFrame    the frame that the code reads; must outlive it
    /// @param freshSlots  whether every run starts with slots as they were before the first
    Builder(const MTParserProgram& source, const MTFrame& runFrame, bool freshSlots, std::vector<MTScalarStep>& target,
            std::vector<const MTProgramStep*>& copying) noexcept
        : program(source), frame(runFrame), fresh(freshSlots), steps(target), copies(copying)
    {}

    /// @return false if an input is neither a number nor a point as the library makes them
    bool checkInputs()
    {
        return checkThose<0x000>() + checkThose<0x001>() + checkThose<0x100>() + checkThose<0x101>() ==
               program.inputs.size();
    }

    /// @return false if scalar code cannot run the program
    bool addSteps()
    {
        if (countSteps(program.steps).scalar == 0)
        {
            return false;
        }
        for (const MTProgramStep& step : program.steps)
        {
            addItem(step);
        }
        return true;
    }

    /// Appends the last step.
    /// @param withValue, inMemory  its kernel if the root is the last number, and if the root is in memory
    /// @return false if a variable would have to be copied that nothing consumes
    bool finish(MTScalarKernel withValue, MTScalarKernel inMemory)
    {
        const Operand value = takeOperand(program.getRootPlace());
        append(value.place == Operand::Place::Value ? withValue : inMemory, {value.memory});
        return copies.empty();
    }

private:
    /// Addresses of the operands in memory.
    using Memory = std::array<const double*, 3>;

    double* slotAt(MTPlace place) const noexcept { return &frame.slots[place].x; }
    const MTScalarKernels& kernelsOf(const MTProgramStep& step) const noexcept
    {
        const MTScalarKernels& item = *step.kernels->scalar;
        return fresh && item.onFreshSlots != nullptr ? *item.onFreshSlots : item;
    }
    double* resultOf(const MTProgramStep& step) const noexcept { return slotAt(step.result); }
    bool yieldsPoint(const MTProgramStep& step) const noexcept { return frame.slots[step.result].type != 0; }

    void addItem(const MTProgramStep& step)
    {
        if (step.isCopy())
        {
            copies.push_back(&step);
        }
        else if (!hasKernel(step, frame))
        {
            addRecord(step);
        }
        else if (step.kernels->readsInPlace)
        {
            addItemOfTwo(step);
        }
        else
        {
            addItemOfThree(step);
        }
    }

    /// Checks the inputs whose head is head, several per step.
    /// @return their number
    template <std::uint16_t head>
    std::size_t checkThose()
    {
        using scalarkernels::checkHeads;
        static constexpr std::array<MTScalarKernel, scalarkernels::maxChecked> kernels = {
            checkHeads<head, 1>, checkHeads<head, 2>, checkHeads<head, 3>, checkHeads<head, 4>, checkHeads<head, 5>};
        std::size_t nbChecked = 0;
        for (const VALTYPE* input : program.inputs)
        {
            if (scalarkernels::headOf(*input) != head)
            {
                continue;
            }
            const std::size_t place = nbChecked++ % scalarkernels::maxChecked;
            auto* const x = const_cast<double*>(&input->x);
            switch (place)
            {
            case 0:
                append(nullptr, {x});
                break;
            case 1:
                steps.back().b = x;
                break;
            case 2:
                steps.back().c = x;
                break;
            case 3:
                steps.back().result = x;
                break;
            default:
                steps.back().secondResult = x;
                break;
            }
            steps.back().kernel = kernels[place];
        }
        return nbChecked;
    }

    /// The present location of a slot's content.
    Operand takeOperand(MTPlace place) noexcept
    {
        if (place == slotOfValue)
        {
            slotOfValue = noPlace;
            return {Operand::Place::Value, &frame[place].x};
        }
        if (!copies.empty() && copies.back()->result == place)
        {
            const MTProgramStep* const copy = copies.back();
            copies.pop_back();
            return {Operand::Place::Copied, &frame[copy->first].x, copy};
        }
        return {Operand::Place::Memory, &frame[place].x};
    }

    /// Appends an item that runs on records, after steps that copy its operands. It spills the last number if that is
    /// one of them.
    void addRecord(const MTProgramStep& step)
    {
        MTScalarKernel kernel = scalarkernels::runRecord<false>;
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            const Operand operand = takeOperand(step.operand(j));
            if (operand.copying != nullptr)
            {
                appendRecord(scalarkernels::runRecord<false>, *operand.copying);
            }
            else if (operand.place == Operand::Place::Value)
            {
                spillSlot = slotAt(step.operand(j));
                kernel = scalarkernels::runRecord<true>;
            }
        }
        if (fresh)
        {
            append(scalarkernels::clearSlot, {}, resultOf(step));
        }
        appendRecord(kernel, step);
    }

    void addItemOfThree(const MTProgramStep& step)
    {
        Memory memory = {&zero, &zero, &zero};
        std::uint32_t indexOfValue = step.nbArgs;
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            const Operand operand = takeOperand(step.operand(j));
            memory[j] = operand.memory;
            if (operand.place == Operand::Place::Value)
            {
                indexOfValue = j;
                spillSlot = slotAt(step.operand(j));
            }
        }
        const MTOperandForm form = indexOfValue == step.nbArgs ? memoryForm(step)
                                   : indexOfValue == 2         ? MTOperandForm::MemoryValue
                                                               : MTOperandForm::SpillMemory;
        append(kernelsOf(step).find(MTOperandKinds::Numbers, form), memory, resultOf(step));
        addResult(step);
    }

    void addItemOfTwo(const MTProgramStep& step)
    {
        std::array<Operand, 2> operands{};
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            operands[j] = takeOperand(step.operand(j));
        }
        const MTOperandForm form = formOf(step, operands);
        Memory memory{};
        std::size_t nbMemory = 0;
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            if (operands[j].place != Operand::Place::Value)
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
            appendItem(kernelsOf(step), kindsOf(step, frame), form, memory, resultOf(step));
        }
        addResult(step);
    }

    MTOperandForm formOf(const MTProgramStep& step, const std::array<Operand, 2>& operands) noexcept
    {
        if (operands[0].place == Operand::Place::Value)
        {
            return MTOperandForm::ValueMemory;
        }
        return operands[1].place == Operand::Place::Value ? MTOperandForm::MemoryValue : memoryForm(step);
    }

    /// The form of an item with all operands in memory. A number in the register is spilled first, unless its slot holds it
    /// already.
    MTOperandForm memoryForm(const MTProgramStep& step) noexcept
    {
        if (slotOfValue == noPlace || yieldsPoint(step))
        {
            return MTOperandForm::Memory;
        }
        spillSlot = slotAt(slotOfValue);
        slotOfValue = noPlace;
        return valueIsStored ? MTOperandForm::Memory : MTOperandForm::SpillMemory;
    }

    /// A number stays in the register until it is consumed; a point is in its slot.
    void addResult(const MTProgramStep& step) noexcept
    {
        if (!yieldsPoint(step))
        {
            slotOfValue = step.result;
            valueIsStored = step.kernels->scalar != nullptr && kernelsOf(step).readsResult;
        }
    }

    void append(MTScalarKernel kernel, const Memory& memory, double* result = nullptr)
    {
        steps.push_back({kernel, memory[0], {memory[1]}, {memory[2]}, result, nullptr, spillSlot});
        lastIndex = MTScalarKernels::notFused;
    }

    void appendRecord(MTScalarKernel kernel, const MTProgramStep& step)
    {
        append(kernel, {}, resultOf(step));
        steps.back().frame = &frame;
        steps.back().record = &step;
    }

    void appendItem(const MTScalarKernels& item, MTOperandKinds kinds, MTOperandForm form, const Memory& memory,
                    double* result)
    {
        if (kinds != MTOperandKinds::Numbers)
        {
            append(item.find(kinds, form), memory, result);
            return;
        }
        const bool takesValue = form == MTOperandForm::ValueMemory || form == MTOperandForm::MemoryValue;
        if (takesValue && item.fusedIndex != MTScalarKernels::notFused && lastIndex != MTScalarKernels::notFused)
        {
            MTScalarStep& last = steps.back();
            last.kernel = findFusedKernel(lastIndex, lastForm, item.fusedIndex, form);
            last.c = memory[0];
            last.secondResult = result;
            lastIndex = MTScalarKernels::notFused;
            return;
        }
        append(item.find(kinds, form), memory, result);
        lastIndex = item.fusedIndex;
        lastForm = form;
    }

    void appendScaling(const ConversionFormula& formula, MTOperandForm form, const double* operand)
    {
        for (std::size_t j = 0; j < countScalingSteps(formula); ++j)
        {
            const double* const factors = factorsOfStep(formula, j).data();
            const double* const first = form == MTOperandForm::ValueMemory ? factors : operand;
            append(findScalingStep(formula, j)[static_cast<std::size_t>(form)], {first, factors});
            form = MTOperandForm::ValueMemory;
        }
    }

    const MTParserProgram& program;
    const MTFrame& frame;
    const bool fresh;
    std::vector<MTScalarStep>& steps;
    std::vector<const MTProgramStep*>& copies;
    MTPlace slotOfValue = noPlace;  // the slot of the number in the register
    bool valueIsStored = false;     // whether that slot holds it already
    double* spillSlot = nullptr;    // for the next step
    // Fused index of the last step's item, if the step holds one item and that can be fused.
    std::size_t lastIndex = MTScalarKernels::notFused;
    MTOperandForm lastForm{};
};

}

void MTScalarCode::reserve(const MTParserProgram& program)
{
    const StepCounts counts = countSteps(program.steps);
    if (counts.scalar == 0)
    {
        return;
    }
    // One step per item, the checks of the inputs, of which each head has its own, and the end.
    const std::size_t nbInputs = program.inputs.size();
    const std::size_t nbChecks =
        std::min(nbInputs, (nbInputs + nbHeads * (scalarkernels::maxChecked - 1)) / scalarkernels::maxChecked);
    steps.reserve(counts.scalar + nbChecks + 1);
    copies.reserve(counts.copies);
}

bool MTScalarCode::build(const MTParserProgram& program)
{
    steps.clear();
    copies.clear();
    Builder builder(program, program.frame, false, steps, copies);
    return builder.checkInputs() && builder.addSteps() &&
           builder.finish(scalarkernels::endWithValue, scalarkernels::endWithRecord);
}

bool MTScalarCode::buildForDouble(const MTParserProgram& program, const MTFrame& frame)
{
    Builder builder(program, frame, true, steps, copies);
    return builder.addSteps() && builder.finish(scalarkernels::endWithDouble, scalarkernels::endWithStoredDouble);
}

bool MTScalarCode::runsRecords() const noexcept
{
    return std::any_of(steps.begin(), steps.end(), [](const MTScalarStep& step) {
        return step.kernel == scalarkernels::runRecord<false> || step.kernel == scalarkernels::runRecord<true>;
    });
}

void MTScalarCode::findReads(const double* x, std::vector<const double**>& operands)
{
    for (MTScalarStep& step : steps)
    {
        const std::array<const double**, 3> all = {&step.a, &step.b, &step.c};
        std::copy_if(all.begin(), all.end(), std::back_inserter(operands),
                     [x](const double* const* operand) { return *operand == x; });
    }
}

void MTScalarCode::buildConstant(const VALTYPE& value, bool asDouble)
{
    steps.push_back({asDouble ? scalarkernels::endWithStoredDouble : scalarkernels::endWithRecord,
                     &value.x,
                     {nullptr},
                     {nullptr},
                     nullptr,
                     nullptr,
                     nullptr});
}
