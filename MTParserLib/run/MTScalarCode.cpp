// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTScalarCode.cpp - builds scalar code from a program that has run to its end.
#include "MTParserLib/run/MTScalarCode.h"

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/MTScalarSteps.h"
#include "MTParserLib/run/ScalingKernels.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace {

/// Programs with more steps than this run themselves. What scalar code takes in memory would no longer be small; and a
/// compiler that is not asked to optimise, or whose target knows no such jumps, makes calls of the jumps from step to step,
/// which all wait on the stack.
#if defined(__OPTIMIZE__) && !defined(__wasm__)
constexpr std::size_t mostSteps = 4096;
#else
constexpr std::size_t mostSteps = 128;
#endif

/// Where an operand that is not given reads 0.
constexpr double zero = 0.0;

/// Steps that compute the items of a program, without those that move operands; 0 where it has to run itself.
std::size_t countComputations(const std::vector<MTProgramStep>& program) noexcept
{
    std::size_t count = 0;
    for (const MTProgramStep& step : program)
    {
        const ConversionFormula* const formula = step.kernels->formula;
        count += formula != nullptr ? countScalingSteps(*formula) : 1;
        if (isHostItem(*step.kernels) || count > mostSteps)
        {
            return 0;
        }
    }
    return count;
}

/// Where the operand of a step stands.
struct Operand
{
    enum class Place : std::uint8_t
    {
        Memory,
        Value,   // the last number
        Copied,  // in a variable that has not been copied to the slot yet
    };
    Place place = Place::Memory;
    const double* memory = nullptr;          // x of the slot, or of the variable that is to be copied to it
    const MTProgramStep* copying = nullptr;  // the step that does that
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

/// Whether the slot of a step holds a point that its item does not make of these kinds: one is left of earlier kinds.
/// The item is asked what it makes of a fresh slot.
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

/// Whether a step that is no copy runs by a kernel, and not on records.
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
    // "&" takes two flagged points for truth values.
    const MTOperandKinds kinds = kindsOf(step, frame);
    const bool areFlagged =
        kinds == MTOperandKinds::Points && frame[step.first].flag != 0 && frame[step.second].flag != 0;
    return item->find(kinds, MTOperandForm::Memory) != nullptr && !areFlagged && !holdsOldPoint(step, frame);
}

/// Turns a program into scalar code, step by step.
class Builder
{
public:
    /// @param runFrame    that the code is for; outlives it
    /// @param freshSlots  whether each run begins with slots as they were before the first
    Builder(const MTParserProgram& source, const MTFrame& runFrame, bool freshSlots, std::vector<MTScalarStep>& target,
            std::vector<const MTProgramStep*>& copying) noexcept
        : program(source), frame(runFrame), fresh(freshSlots), steps(target), copies(copying)
    {}

    /// @return false where one of the inputs is neither a number nor a point, as far as the library makes them
    bool checkInputs()
    {
        return checkThose<0x000>() + checkThose<0x001>() + checkThose<0x100>() + checkThose<0x101>() ==
               program.inputs.size();
    }

    /// @return false where it has to run itself
    bool addSteps()
    {
        if (countComputations(program.steps) == 0)
        {
            return false;
        }
        for (const MTProgramStep& step : program.steps)
        {
            addItem(step);
        }
        return true;
    }

    /// Ends the code.
    /// @param withValue, inMemory  the last kernels where the root is the last number, and where it stands in memory
    /// @return false where a variable would have to be copied that nothing consumes
    bool finish(MTScalarKernel withValue, MTScalarKernel inMemory)
    {
        const Operand value = takeOperand(program.getRootPlace());
        append(value.place == Operand::Place::Value ? withValue : inMemory, {value.memory});
        return copies.empty();
    }

private:
    /// The addresses of the operands in memory.
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

    /// Checks the inputs that have a head, some with each step.
    /// @return how many these are
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

    /// What is written to a slot or what stands there.
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

    /// An item on records, to which its operands are brought.
    void addRecord(const MTProgramStep& step)
    {
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            const Operand operand = takeOperand(step.operand(j));
            if (operand.copying != nullptr)
            {
                appendRecord(*operand.copying);
            }
            else
            {
                store(operand);
            }
        }
        if (fresh)
        {
            append(scalarkernels::clearSlot, {}, resultOf(step));
        }
        appendRecord(step);
    }

    void addItemOfThree(const MTProgramStep& step)
    {
        Memory memory = {&zero, &zero, &zero};
        bool takesValue = false;
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            const Operand operand = takeOperand(step.operand(j));
            memory[j] = operand.memory;
            if (j == 2 && operand.place == Operand::Place::Value)
            {
                takesValue = true;
            }
            else
            {
                store(operand);
            }
        }
        const MTOperandForm form = takesValue ? MTOperandForm::MemoryValue : memoryForm(step);
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

    /// Of an item whose operands are all in memory. A number that waits in the register is spilled before a new one takes
    /// its place, unless its slot holds it already.
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

    /// A number waits in the register for its consumer; a point stands in its slot.
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

    void appendRecord(const MTProgramStep& step)
    {
        append(scalarkernels::runRecord, {}, resultOf(step));
        steps.back().frame = &frame;
        steps.back().record = &step;
    }

    /// Brings the last number to its slot.
    void store(const Operand& operand)
    {
        if (operand.place == Operand::Place::Value)
        {
            append(scalarkernels::storeValue, {}, const_cast<double*>(operand.memory));
        }
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
    MTPlace slotOfValue = noPlace;  // of the last number, while it waits in the register
    bool valueIsStored = false;     // in that slot
    double* spillSlot = nullptr;    // of the next step
    // Of the last step, if it holds one item that can be fused.
    std::size_t lastIndex = MTScalarKernels::notFused;
    MTOperandForm lastForm{};
};

}

void MTScalarCode::reserve(const MTParserProgram& program)
{
    const std::size_t nbComputations = countComputations(program.steps);
    if (nbComputations == 0)
    {
        return;
    }
    // A step for each item, one that moves its result, the checks of inputs of some kinds, and the end.
    const std::size_t nbChecks = program.inputs.size() / scalarkernels::maxChecked + 4;
    steps.reserve(nbComputations + program.steps.size() + nbChecks + 1);
    copies.reserve(program.steps.size());
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
    return std::any_of(steps.begin(), steps.end(),
                       [](const MTScalarStep& step) { return step.kernel == scalarkernels::runRecord; });
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
