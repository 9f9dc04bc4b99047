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
// A step reads its operands from memory (a variable's value, a constant's slot, a result's slot) or from the register
// that holds the last number. A number that must wait for its consumer is spilled to its slot; points are always in
// their slots. A step jumps to the kernel of the next one. Two consecutive arithmetic items of numbers are fused into
// one step.
//
// The kinds are those that a complete run of the program left in its slots: they do not change as long as the inputs
// keep their kinds. After a run of scalar code, the slots must serve later runs as if the program itself had run:
//
// - A run reads a slot's previous content only in a product of points (the dot product is added to x), in "&", and in
//   an intersection; and an operator that computes a number keeps the y and z of an earlier point. So points and
//   products are stored. Other numbers are stored only if they have to wait.
// - An item runs on records, as in the program, if it has no kernel for its operands or its slot still holds the kind
//   of an earlier run. It first spills the last number if that is one of its operands.
// - A step that refuses its operands stores nothing and ends the run, so the slots hold what the program would have
//   stored.
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

/// Callbacks of a run of scalar code.
struct MTScalarOwner
{
    /// Called if an input's kind is not the one that the code was built for, before anything is computed.
    /// @return the result of the run
    bool (*changedKinds)(void* self, void* result);
    /// Called when a step refuses its operands.
    /// @param slot  x of the step's result
    /// @return false
    bool (*refused)(void* self, const double* slot, Message::Id refusal);
};

/// Computes one step, and then all steps after it.
/// @param value   the last number
/// @param result  destination of the last step: a record, or a double
/// @return whether there is a result
using MTScalarKernel = bool (*)(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner,
                                void* self);

/// Locations of a step's operands.
enum class MTOperandForm : std::uint8_t
{
    Memory,       ///< All in memory. The last number is not needed any more, or the result is a point, which leaves it
                  ///< in the register.
    SpillMemory,  ///< All in memory; the last number is first spilled to its slot.
    ValueMemory,  ///< The first or only operand is the last number, the second is in memory.
    MemoryValue,  ///< The last operand is the last number, the others are in memory.
};
inline constexpr std::size_t nbOperandForms = 4;

/// Kinds of one or two operands. A missing second operand counts as a number.
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
    /// fusedIndex of an item that cannot be fused.
    static constexpr std::size_t notFused = std::numeric_limits<std::size_t>::max();

    /// By kinds and form; null if there is none and the item must run on records.
    std::array<std::array<MTScalarKernel, nbOperandForms>, nbOperandKinds> kernels{};
    std::size_t fusedIndex = notFused;  ///< Index among the items that are fused in pairs.
    bool readsResult = false;           ///< Whether it reads the previous content of its slot.
    /// Its kernels in code whose runs all start with fresh slots, if they differ.
    const MTScalarKernels* onFreshSlots = nullptr;

    MTScalarKernel find(MTOperandKinds kinds, MTOperandForm form) const noexcept
    {
        return kernels[static_cast<std::size_t>(kinds)][static_cast<std::size_t>(form)];
    }
};

/// The kernel of two consecutive items of numbers; the second has the form ValueMemory or MemoryValue.
MTScalarKernel findFusedKernel(std::size_t firstIndex, MTOperandForm firstForm, std::size_t secondIndex,
                               MTOperandForm secondForm) noexcept;

/// One item, two fused items, or an auxiliary step (MTScalarSteps.h).
struct MTScalarStep
{
    MTScalarKernel kernel;
    const double* a;  ///< x of the operands in memory; for a point, y and z follow it.
    union
    {
        const double* b;
        const MTFrame* frame;  ///< For a step of the program that runs on records.
    };
    union
    {
        const double* c;              ///< The third operand in memory; for two items, the second item's.
        const MTProgramStep* record;  ///< The step of the program to run on records.
    };
    double* result;        ///< x of the item's slot.
    double* secondResult;  ///< For two items: x of the second item's slot.
    double* spillSlot;     ///< With SpillMemory, or of an item on records: x of the slot for the last number.
};

/// The scalar code of one program.
class MTScalarCode
{
public:
    /// Removes the code and keeps the memory.
    void clear() noexcept { steps.clear(); }

    /// Allocates memory for the code of a program that has just been compiled, so that building it allocates nothing.
    void reserve(const MTParserProgram& program);

    /// Builds the code of a program that has run to completion. The result is a record.
    /// @return false if scalar code cannot run the program
    bool build(const MTParserProgram& program);

    /// Builds code for steps that yield a number and whose inputs never change their kinds. The result is a double;
    /// every run starts with slots as they were before the first.
    /// @param frame  replaces the program's frame
    bool buildForDouble(const MTParserProgram& program, const MTFrame& frame);

    /// Whether some steps run on records.
    bool runsRecords() const noexcept;

    /// Finds the operands that are read at an address, and appends the pointers to them. Requires that no step runs on
    /// records.
    void findReads(const double* x, std::vector<const double**>& operands);

    /// Builds code that yields a constant, as a record or a double.
    void buildConstant(const VALTYPE& value, bool asDouble = false);

    const std::vector<MTScalarStep>& getSteps() const noexcept { return steps; }

    static bool run(const MTScalarStep* first, void* result, const MTScalarOwner* owner, void* self)
    {
        return first->kernel(first, 0.0, result, owner, self);
    }

private:
    std::vector<MTScalarStep> steps;
    std::vector<const MTProgramStep*> copies;  // copying steps whose copies have not been consumed yet
};
