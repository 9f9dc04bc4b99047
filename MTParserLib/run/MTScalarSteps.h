// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTScalarSteps.h - the auxiliary kernels of scalar code: they check inputs, move values and return results.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/program/MTValueCopy.h"
#include "MTParserLib/run/MTScalarCode.h"

#include <cstddef>
#include <cstdint>

/// Returns the result of a call of the same type, by a jump. Optimising compilers make it a jump anyway, except clang in a
/// function for WebAssembly with several exits.
#if defined(__wasm_tail_call__)
#define MATHEXPR_JUMP [[clang::musttail]] return
#else
#define MATHEXPR_JUMP return
#endif

namespace scalarkernels {

/// Runs the next step.
inline bool runNext(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    ++step;
    MATHEXPR_JUMP step->kernel(step, value, result, owner, self);
}

/// The record that contains x.
inline const VALTYPE& recordAt(const double* x) noexcept
{
    return *reinterpret_cast<const VALTYPE*>(reinterpret_cast<const unsigned char*>(x) - offsetof(VALTYPE, x));
}

/// Type and flag of a record, as one number.
inline std::uint16_t headOf(const VALTYPE& value) noexcept
{
    return static_cast<std::uint16_t>(value.type | value.flag << 8);
}

/// Number of inputs that one step checks.
inline constexpr std::size_t maxChecked = 5;

/// Whether the first inputs of a step have this head.
template <std::uint16_t head, std::size_t count>
bool haveHead(const MTScalarStep& step) noexcept
{
    return headOf(recordAt(step.a)) == head && (count < 2 || headOf(recordAt(step.b)) == head) &&
           (count < 3 || headOf(recordAt(step.c)) == head) && (count < 4 || headOf(recordAt(step.result)) == head) &&
           (count < 5 || headOf(recordAt(step.secondResult)) == head);
}

/// Ends the run before anything is computed, unless the inputs are plain numbers or points.
template <std::uint16_t head, std::size_t count>
bool checkHeads(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    if (!haveHead<head, count>(*step))
    {
        return owner->changedKinds(self, result);
    }
    MATHEXPR_JUMP runNext(step, value, result, owner, self);
}

/// Resets the coordinates of a slot to their state before the first run.
inline bool clearSlot(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    step->result[0] = step->result[1] = step->result[2] = 0.0;
    MATHEXPR_JUMP runNext(step, value, result, owner, self);
}

/// Runs a step of the program on records. If the last number is one of its operands, stores it in its slot first.
template <bool spills>
bool runRecord(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    if constexpr (spills)
    {
        *step->spillSlot = value;
    }
    const Message::Id refusal = step->record->evaluate(*step->frame, false);
    if (refusal != Message::None)
    {
        return owner->refused(self, step->result, refusal);
    }
    MATHEXPR_JUMP runNext(step, value, result, owner, self);
}

/// Returns the root's record, with the last number as x.
inline bool endWithValue(const MTScalarStep* step, double value, void* result, const MTScalarOwner*, void*)
{
    copyWithX(*static_cast<VALTYPE*>(result), recordAt(step->a), value);
    return true;
}

/// Returns a record.
inline bool endWithRecord(const MTScalarStep* step, double, void* result, const MTScalarOwner*, void*)
{
    copyWithCoordinates(*static_cast<VALTYPE*>(result), recordAt(step->a));
    return true;
}

/// Returns the last number, as a double.
inline bool endWithDouble(const MTScalarStep*, double value, void* result, const MTScalarOwner*, void*)
{
    *static_cast<double*>(result) = value;
    return true;
}

/// Returns a number in memory, as a double.
inline bool endWithStoredDouble(const MTScalarStep* step, double, void* result, const MTScalarOwner*, void*)
{
    *static_cast<double*>(result) = *step->a;
    return true;
}

}
