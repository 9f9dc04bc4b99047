// MTNumberCode.cpp - builds number code from a program, and runs it.
#include "MTParserLib/MTNumberCode.h"

#include "MTParserLib/MTParserProgram.h"

#include <algorithm>
#include <array>

namespace {

/// Programs with more steps than this run themselves: what number code takes in memory would no longer be small.
constexpr std::size_t mostSteps = 4096;

/// Operands that wait at once. Only a program nested deeper than that runs itself.
constexpr std::size_t mostOperands = 128;

/// The result of a step, or a variable, that waits for its consumer.
struct Operand
{
    enum class Place : std::uint8_t
    {
        Memory,
        Value,
        Stack,
    };
    Place place;
    const double* memory;        // where it stands in memory
    const VALTYPE* destination;  // the slot of its consumer
};

/// Turns a program into number code, step by step, with the operands that wait on a stack of fixed size.
class Builder
{
public:
    explicit Builder(std::vector<MTNumberStep>& target) noexcept : steps(target) {}

    void addVariable(const VALTYPE& value, const VALTYPE* destination) noexcept
    {
        wait({Operand::Place::Memory, &value.x, destination});
    }

    void addItem(const MTProgramStep& step)
    {
        std::array<Operand, 2> operands{};
        for (std::uint32_t j = step.nbArgs; j-- > 0;)
        {
            operands[j] = takeOperand(step.args[j]);
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
        append(*step.numbers, form, memory, &step.destination->x);
        wait({Operand::Place::Value, nullptr, step.destination});
    }

    /// Whether the one thing left is the result of the last step.
    bool isDone() const noexcept { return !overflowed && nbWaiting == 1 && waiting[0].place == Operand::Place::Value; }

private:
    void wait(Operand operand) noexcept
    {
        if (nbWaiting == waiting.size())
        {
            overflowed = true;
            return;
        }
        waiting[nbWaiting++] = operand;
    }

    /// What is written to a slot: what waits for it, or the constant that stands there.
    Operand takeOperand(const VALTYPE& slot) noexcept
    {
        if (nbWaiting > 0 && waiting[nbWaiting - 1].destination == &slot)
        {
            return waiting[--nbWaiting];
        }
        return {Operand::Place::Memory, &slot.x, nullptr};
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
        // A result that still waits has to make way for the new one.
        const auto end = waiting.begin() + static_cast<std::ptrdiff_t>(nbWaiting);
        const auto value = std::find_if(waiting.begin(), end,
                                        [](const Operand& operand) { return operand.place == Operand::Place::Value; });
        if (value == end)
        {
            return MTOperandForm::Memory;
        }
        value->place = Operand::Place::Stack;
        return MTOperandForm::PushMemory;
    }

    void append(const MTNumberKernels& item, MTOperandForm form, const std::array<const double*, 2>& memory,
                double* destination)
    {
        const bool takesValue = form == MTOperandForm::ValueMemory || form == MTOperandForm::MemoryValue;
        if (takesValue && item.fusedIndex != MTNumberKernels::notFused && lastIndex != MTNumberKernels::notFused)
        {
            MTNumberStep& last = steps.back();
            last.kernel = findFusedKernel(lastIndex, lastForm, item.fusedIndex, form);
            last.c = memory[0];
            last.secondProduct = destination;
            lastIndex = MTNumberKernels::notFused;
            return;
        }
        steps.push_back(
            {item.kernels[static_cast<std::size_t>(form)], memory[0], memory[1], nullptr, destination, nullptr});
        lastIndex = item.fusedIndex;
        lastForm = form;
    }

    std::vector<MTNumberStep>& steps;
    std::array<Operand, mostOperands> waiting;
    std::size_t nbWaiting = 0;
    bool overflowed = false;
    // Of the last step, if it holds one item that can be fused.
    std::size_t lastIndex = MTNumberKernels::notFused;
    MTOperandForm lastForm{};
};

}

void MTNumberCode::clear() noexcept
{
    steps.clear();
    variables.clear();
    possible = false;
    ran = false;
    settled = false;
}

void MTNumberCode::prepare(const MTParserProgram& program)
{
    const auto isInPlace = [](const MTProgramStep& step) { return step.isVariableInPlace(); };
    const auto hasNumbers = [&](const MTProgramStep& step) { return isInPlace(step) || step.numbers != nullptr; };
    if (program.rootIsConstant || program.steps.size() > mostSteps ||
        !std::all_of(program.steps.begin(), program.steps.end(), hasNumbers))
    {
        return;
    }
    const auto nbVariables =
        static_cast<std::size_t>(std::count_if(program.steps.begin(), program.steps.end(), isInPlace));
    const std::size_t nbItems = program.steps.size() - nbVariables;
    steps.reserve(nbItems);
    variables.reserve(nbVariables);
    // Each result on the stack waits for an item of two operands, and the last result never lies there.
    stack.resize(std::max(stack.size(), nbItems));
    possible = true;
}

bool MTNumberCode::run(const MTParserProgram& program)
{
    if (!possible || !ran)
    {
        return false;
    }
    if (steps.empty())
    {
        build(program);
        if (!possible)
        {
            return false;
        }
    }
    if (!variablesAreNumbers() || !(settled || slotsAreNumbers(program)))
    {
        return false;
    }
    settled = true;

    MTNumberRun state{steps.data() + steps.size(), stack.data()};
    double value = 0.0;
    for (const MTNumberStep* step = steps.data(); step != state.end; ++step)
    {
        value = step->kernel(*step, value, state);
    }
    if (state.refused)
    {
        return false;
    }
    program.root->x = value;
    return true;
}

bool MTNumberCode::variablesAreNumbers() const noexcept
{
    return std::all_of(variables.begin(), variables.end(), [](const VALTYPE* value) { return value->type == 0; });
}

bool MTNumberCode::slotsAreNumbers(const MTParserProgram& program) const noexcept
{
    const auto isNumber = [](const VALTYPE& slot) { return slot.type == 0; };
    return std::all_of(program.steps.begin(), program.steps.end(), [&](const MTProgramStep& step) {
        return isNumber(*step.destination) && std::all_of(step.args, step.args + step.nbArgs, isNumber);
    });
}

void MTNumberCode::build(const MTParserProgram& program)
{
    Builder builder(steps);
    for (const MTProgramStep& step : program.steps)
    {
        if (step.isVariableInPlace())
        {
            variables.push_back(step.args);
            builder.addVariable(*step.args, step.destination);
        }
        else
        {
            builder.addItem(step);
        }
    }
    possible = builder.isDone();
}
