// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTScalarCode.h - scalar code: a second, faster form of a program, specialised for the kinds of its values.
//
//     x*2+y     check numbers [x, y]
//               * then + [x, 2] [value, y] -> value     value = x * 2, stored in its slot; value = value + y
//               end with value                          the root's record, with value as x, is the result
//
//     p+q*2     check points [p, q]
//               * point number [q, 2] -> slot           slot = q * 2
//               + points [p, slot] -> root              root = p + slot
//               end with record [root]                  the root's record is the result
//
//     (x+1)*(y-2)  check numbers [x, y]
//               + [x, 1] -> value
//               spill slot, - [y, 2] -> value           slot = value; value = y - 2
//               * [slot, value] -> value
//               end with value
//
// A step reads its operands from memory (a variable's own value, a constant's slot, the slot of a result) or from the
// register that holds the last number. A number that has to wait for its consumer is spilled to its slot, and points
// always stand in theirs. A step jumps to the kernel of the next one; two arithmetic items of numbers in a row are
// fused into one step.
//
// The kinds are those that a complete run of the program has left in its slots: later runs change none of them while
// the inputs keep theirs. Scalar code leaves behind what the program itself would leave behind:
//
//   - A later run reads a slot before it writes it only where points meet in a product, whose dot product is added to
//     x, in "&", and in an intersection; and an operator that computes a number leaves the y and z of an earlier point.
//     So points and products are stored. Other numbers are not, unless they have to wait.
//   - An item without a kernel for its operands, and one whose slot still holds the kind of an earlier run, runs as it
//     does in the program, on records: its operands are stored before.
//   - A step that refuses its operands stores nothing, and ends the run for good: what the steps before it have stored
//     is what the program would have stored.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "mathexpr/ValType.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

class MTParserProgram;
struct MTFrame;
struct MTProgramStep;
struct MTScalarStep;

/// What scalar code leaves to whoever runs it.
struct MTScalarOwner
{
    /// An input has another kind than the code is made for; nothing has been done yet.
    /// @return what the run returns
    bool (*changedKinds)(void* self, void* result);
    /// A step refuses its operands.
    /// @param slot  x of the step's result
    /// @return false
    bool (*refused)(void* self, const double* slot, Message::Id refusal);
};

/// Computes one step, and then all that follow.
/// @param value   the last number
/// @param result  what the last step writes to: a record, or a double
/// @return whether there is a result
using MTScalarKernel = bool (*)(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner,
                                void* self);

/// Where the operands of a step stand.
enum class MTOperandForm : std::uint8_t
{
    Memory,       ///< All in memory. No earlier number is left to be used, or the result is a point, which leaves it.
    SpillMemory,  ///< All in memory; the last number is stored in its slot first.
    ValueMemory,  ///< The first, or the only one, is the last number, the second in memory.
    MemoryValue,  ///< The last operand is the last number, the others are in memory.
};
inline constexpr std::size_t nbOperandForms = 4;

/// Of which kinds one or two operands are. The kind of an item's second operand, if it has none, is number.
enum class MTOperandKinds : std::uint8_t
{
    Numbers,
    PointNumber,
    NumberPoint,
    Points,
};
inline constexpr std::size_t nbOperandKinds = 4;

/// The scalar kernels of an item.
struct MTScalarKernels
{
    /// What fusedIndex is for an item that is never fused.
    static constexpr std::size_t notFused = std::numeric_limits<std::size_t>::max();

    /// By kinds and form; null where there is none, and records have to be used.
    std::array<std::array<MTScalarKernel, nbOperandForms>, nbOperandKinds> kernels{};
    std::size_t fusedIndex = notFused;  ///< Among the items of which two in a row become one step.
    bool readsResult = false;           ///< Whether it reads what its slot holds from an earlier run.
    /// Its kernels in code whose runs all begin with fresh slots, if those are others: nothing is left to be read.
    const MTScalarKernels* onFreshSlots = nullptr;

    MTScalarKernel find(MTOperandKinds kinds, MTOperandForm form) const noexcept
    {
        return kernels[static_cast<std::size_t>(kinds)][static_cast<std::size_t>(form)];
    }
};

/// The kernel of two items of numbers in a row, of which the second has the form ValueMemory or MemoryValue.
MTScalarKernel findFusedKernel(std::size_t firstIndex, MTOperandForm firstForm, std::size_t secondIndex,
                               MTOperandForm secondForm) noexcept;

/// One item, or two that are fused, or what scalar code needs in between (MTScalarSteps.h).
struct MTScalarStep
{
    MTScalarKernel kernel;
    const double* a;  ///< x of the operands in memory; y and z of a point follow it.
    union
    {
        const double* b;
        const MTFrame* frame;  ///< Of the step of the program that is run on records.
    };
    union
    {
        const double* c;              ///< The third operand in memory; of two items, the one of the second.
        const MTProgramStep* record;  ///< The step of the program that is run on records.
    };
    double* result;        ///< x of the item's slot.
    double* secondResult;  ///< Of two items, x of the second's slot.
    double* spillSlot;     ///< x of the slot that the last number is stored in first, with SpillMemory.
};

/// The scalar code of one program.
class MTScalarCode
{
public:
    /// Forgets the code and keeps the memory.
    void clear() noexcept { steps.clear(); }

    /// Makes room for the code of a program that has just been compiled, so that building it allocates nothing.
    void reserve(const MTParserProgram& program);

    /// Makes the code of a program that has run to its end. The result is a record.
    /// @return false where scalar code cannot stand for the program
    bool build(const MTParserProgram& program);

    /// Makes the code of steps that yield a number, and whose inputs keep the kinds that they have. The result is a
    /// double, and each run begins with slots as they were before the first.
    /// @param frame  for the steps, in place of the program's own
    bool buildForDouble(const MTParserProgram& program, const MTFrame& frame);

    /// Whether steps of the program are run on records.
    bool runsRecords() const noexcept;

    /// Finds the operands that are read at an address, and adds where the steps say so. No step runs on records.
    void findReads(const double* x, std::vector<const double**>& operands);

    /// Makes code that yields a constant, as a record or a double.
    void buildConstant(const VALTYPE& value, bool asDouble = false);

    const std::vector<MTScalarStep>& getSteps() const noexcept { return steps; }

    static bool run(const MTScalarStep* first, void* result, const MTScalarOwner* owner, void* self)
    {
        return first->kernel(first, 0.0, result, owner, self);
    }

private:
    std::vector<MTScalarStep> steps;
    std::vector<const MTProgramStep*> copies;  // of variables, while they wait for their consumer
};
