// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkArrays.h - the arrays that bulk evaluation reads and writes (see BulkEvaluation.h).
#pragma once

#include <cstddef>
#include <cstdint>

namespace mathexpr {

/// What an array holds. The numbers are part of the interface.
enum class BulkKind : std::uint32_t
{
    Number = 0,  ///< A double a row.
    Point = 1,   ///< Three doubles a row.
    Record = 2,  ///< A VALTYPE a row, number or point; for results only.
};

/// The values of one variable. Distances are in bytes, may be negative, and are multiples of 8; data is aligned to 8.
/// A distance of 0 repeats one value.
struct BulkColumn
{
    const wchar_t* name = nullptr;  ///< Zero-terminated. A name that the expression does not read does no harm.
    const double* data = nullptr;   ///< The first row's number or x; may be null where there are no rows.
    std::ptrdiff_t stride = sizeof(double);  ///< From one row to the next.
    BulkKind kind = BulkKind::Number;
    std::ptrdiff_t coordinateStride = sizeof(double);  ///< Of points: from x to y and from y to z.
};

/// Where the values go. Alignment and distances as in BulkColumn, but no two rows may share memory. A value may go
/// where a column holds the same row's number; where results and columns overlap in any other way, what is computed
/// from the overlapped rows is unspecified.
struct BulkResults
{
    void* data = nullptr;                    ///< The first row's double, x or record.
    std::ptrdiff_t stride = sizeof(double);  ///< From one row to the next.
    BulkKind kind = BulkKind::Number;
    std::ptrdiff_t coordinateStride = sizeof(double);  ///< Of points: from x to y and from y to z.
    std::uint32_t* status = nullptr;                   ///< For each row its RowStatus, without gaps; may be null.
};

/// How a row went: 0, one of these, or the number of the message, 1 to 19, that a diagnostic of the row would have. The
/// numbers are part of the interface.
namespace RowStatus {
enum : std::uint32_t
{
    Done = 0,
    ArgumentsRefused = 3,  ///< An item refused its arguments without a message of its own, or raised code 15.
    OtherKind = 256,       ///< The value is a point and the results take numbers, or the other way round.
};
}

}
