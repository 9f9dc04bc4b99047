// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkArrays.h - input and output arrays of bulk evaluation (see BulkEvaluation.h).
#pragma once

#include <cstddef>
#include <cstdint>

namespace mathexpr {

/// Element type of an array. The numbers are part of the interface.
enum class BulkKind : std::uint32_t
{
    Number = 0,  ///< One double per row.
    Point = 1,   ///< Three doubles per row.
    Record = 2,  ///< One VALTYPE per row, a number or a point; for results only.
};

/// The values of one variable, one per row. Strides are in bytes and multiples of 8; they may be negative. data is aligned to
/// 8 bytes. A stride of 0 repeats the first value.
struct BulkColumn
{
    const wchar_t* name = nullptr;  ///< Zero-terminated. Columns that the expression does not read are ignored.
    const double* data = nullptr;   ///< The first row's number or x; may be null if there are no rows.
    std::ptrdiff_t stride = sizeof(double);  ///< From one row to the next.
    BulkKind kind = BulkKind::Number;
    std::ptrdiff_t coordinateStride = sizeof(double);  ///< Of points: from x to y and from y to z.
};

/// Receives the values. Alignment and strides are as in BulkColumn, but rows must not overlap each other. A result may be
/// written over the number of the same row in a column. If results and columns overlap in any other way, the values of the
/// rows concerned are unspecified.
struct BulkResults
{
    void* data = nullptr;                    ///< The first row's double, x or record.
    std::ptrdiff_t stride = sizeof(double);  ///< From one row to the next.
    BulkKind kind = BulkKind::Number;
    std::ptrdiff_t coordinateStride = sizeof(double);  ///< Of points: from x to y and from y to z.
    std::uint32_t* status = nullptr;                   ///< RowStatus of each row, contiguous; may be null.
};

/// Status of a row: one of these, or the number, 1 to 19, of the message that a diagnostic of the row would have. The numbers
/// are part of the interface.
namespace RowStatus {
enum : std::uint32_t
{
    Done = 0,
    ArgumentsRefused = 3,  ///< An item refused its arguments without its own message, or raised code 15.
    OtherKind = 256,       ///< The value is a point and the results are numbers, or vice versa.
};
}

}
