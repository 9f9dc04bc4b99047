// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBlockKernels.h - what the vocabulary tells about an item that computes a number from numbers: how to compute it for
// a whole block of rows.
#pragma once

#include "mathexpr/ValType.h"
#include "platform/ArrayView.h"

#include <array>
#include <cstddef>

/// An operand for a block of rows: a value for each row, or one for all of them.
struct MTBlockOperand
{
    const double* values;
    bool uniform;
};

/// Which of one or two operands are uniform. Both never are: such an item is computed once for all rows.
enum class MTBlockForm : std::size_t
{
    NoneUniform,
    FirstUniform,
    SecondUniform,
};
inline constexpr std::size_t nbBlockForms = 3;

/// Computes an item of one or two operands. The result may stand where an operand stands.
using MTBlockCompute = void (*)(const double* a, const double* b, double* result, std::size_t nbRows);

/// Whether an item of one or two operands refuses them in any row.
using MTBlockOutside = bool (*)(const double* a, const double* b, std::size_t nbRows);

/// Computes an item of more operands.
/// @param args  as many records as there are operands, all zero but for x
using MTBlockComputeMany = void (*)(platform::ArrayView<const MTBlockOperand> operands, VALTYPE* args, double* result,
                                    std::size_t nbRows);

/// All of one item: either the first two, by form, or the last.
struct MTBlockKernels
{
    std::array<MTBlockCompute, nbBlockForms> compute;  ///< Null for a form that the item does not have.
    std::array<MTBlockOutside, nbBlockForms> outside;  ///< Null where the item refuses no numbers.
    MTBlockComputeMany computeMany;
};
