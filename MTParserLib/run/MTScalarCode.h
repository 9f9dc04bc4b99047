// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTScalarCode.h - scalar code: a second, faster form of a program whose values are all plain numbers.
//
//     x*2+y     check   x and y are numbers
//               mul-add x, 2, y     value = x * 2, stored in the slot of the product; value = value + y
//               end                 return value
//
// A step reads its operands from memory (a variable's own value, a constant's slot), from the register that holds the
// result of the step before, or from a stack of results that wait. It jumps to the kernel of the next step. Two
// arithmetic items in a row are fused into one step.
//
// Scalar code leaves behind what the program itself would leave behind:
//
//   - The program runs itself first, and sets types and flags of all slots. Scalar code takes over while every variable
//     and every slot is a number: then no item writes anything but x, and otherwise only what its slot holds already.
//   - A later run reads x of a slot before it writes it only where points meet in a product: their dot product is added
//     to it. So a product is stored in its slot, and nothing else is. The other items that read their result
//     (factorial, "&", a point of many numbers, an intersection) have no scalar code, nor has a program with one.
//   - A step that refuses its arguments ends the run before it stores anything, and the program runs instead: it comes
//     to the same refusal, with its message.
#pragma once

#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

class MTParserProgram;
struct MTScalarStep;

/// Computes one step, and then all that follow.
/// @param value    the result of the step before
/// @param top      above the last result on the stack of those that wait for their turn
/// @param refused  set where an item refuses its operands; the value returned means nothing then
/// @return the value of the whole program
using MTScalarKernel = double (*)(const MTScalarStep* step, double value, double* top, bool* refused);

/// Where the operands of a step stand. Results that wait for their turn lie on a stack.
enum class MTOperandForm : std::uint8_t
{
    Memory,       ///< All in memory, and no earlier result is left to be used.
    PushMemory,   ///< All in memory; the result of the step before goes onto the stack.
    ValueMemory,  ///< The first, or the only one, is the result of the step before, the second in memory.
    MemoryValue,  ///< The first is in memory, the second is the result of the step before.
    StackValue,   ///< The first is on top of the stack, the second is the result of the step before.
};
inline constexpr std::size_t nbOperandForms = 5;

/// What the vocabulary tells about an item that computes a number from one or two numbers.
struct MTScalarKernels
{
    /// What MTScalarKernels::fusedIndex says of an item that is never fused.
    static constexpr std::size_t notFused = std::numeric_limits<std::size_t>::max();

    MTScalarKernel kernels[nbOperandForms];  ///< By form; null for a form that the item does not have.
    std::size_t fusedIndex;                  ///< Among the items of which two in a row become one step.
};

/// The kernel of two items in a row, of which the second has the form ValueMemory or MemoryValue.
MTScalarKernel findFusedKernel(std::size_t firstIndex, MTOperandForm firstForm, std::size_t secondIndex,
                               MTOperandForm secondForm) noexcept;

/// One item, or two that are fused, or the end.
struct MTScalarStep
{
    MTScalarKernel kernel;
    const double* a;  ///< The operands in memory of the item, or of the first of two.
    const double* b;
    const double* c;        ///< The operand in memory of the second of two.
    double* product;        ///< Where the item stores a product.
    double* secondProduct;  ///< Where the second of two stores a product.
};

/// The scalar code of one program.
class MTScalarCode
{
public:
    MTScalarCode() noexcept { clear(); }

    /// Forgets the code and keeps the memory.
    void clear() noexcept;

    /// Makes room for the code of a program, so that building it while the program is evaluated allocates nothing.
    /// Until this is called for a program, it has no scalar code.
    /// @param root  where the value of the program stands after a run, or already where it is constant
    void prepare(const MTParserProgram& program, const VALTYPE& root);

    /// Adds a variable that the program reads in place. Each is added once, in the order of their first use.
    void addVariable(const VALTYPE& value) { variables.push_back(&value); }

    /// Call before the program itself runs: slots may hold points afterwards, even on failure.
    void programRuns() noexcept { ready = nullptr; }

    /// Call when it has run to its end.
    void programRan() noexcept { ran = true; }

    /// Whether the code may run in place of the program, as far as the slots are concerned.
    bool isReady(const MTParserProgram& program)
    {
        return ready != nullptr || (possible && ran && variablesAreNumbers() && getReady(program));
    }

    /// Runs the code in place of the program, if that is ready and all variables are numbers.
    /// @param value  receives x of the program's root, whose other fields stand there
    /// @return false, with a meaningless value, where the program has to run itself
    bool run(double& value) noexcept { return runFrom(ready, value); }

    /// Arms the fast path; requires an idle program and no recorded failure.
    void armFastPath() noexcept { armed = ready; }
    void disarmFastPath() noexcept { armed = nullptr; }

    /// As run, but only while the fast path is armed.
    bool runFastPath(double& value) noexcept { return runFrom(armed, value); }

private:
    bool runFrom(const MTScalarStep* first, double& value) noexcept
    {
        if (first == nullptr || !variablesAreNumbers())
        {
            return false;
        }
        bool refused = false;
        value = first->kernel(first, 0.0, stack.data(), &refused);
        return !refused;
    }

    bool variablesAreNumbers() const noexcept
    {
        // Without a way out in between: most programs have few variables, and all of them are numbers.
        unsigned kinds = 0;
        for (const VALTYPE* variable : variables)
        {
            kinds |= variable->type;
        }
        return kinds == 0;
    }
    bool getReady(const MTParserProgram& program);
    void build(const MTParserProgram& program);

    const MTScalarStep* ready;  // the first step, while all slots are numbers
    const MTScalarStep* armed;  // the same, while the fast path is armed
    std::vector<const VALTYPE*> variables;
    std::vector<double> stack;
    std::vector<MTScalarStep> steps;
    bool possible;  // every item of the program has number kernels
    bool ran;       // the program itself has run to its end
};
