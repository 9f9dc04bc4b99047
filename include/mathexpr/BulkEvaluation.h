// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkEvaluation.h - evaluates a compiled expression over arrays: one column per variable, one result per row.
//
//     const mathexpr::BulkColumn columns[] = {{L"x", xs},
//                                             {L"p", points, 3 * sizeof(double), mathexpr::BulkKind::Point}};
//     mathexpr::BulkOutcome outcome;
//     if (mathexpr::evaluateBulk(expression, columns, 2, rowCount, {results}, 0, outcome) && outcome.failedCount == 0)
//         ...  // results[i] is the value with x = xs[i] and p = (points[3*i], points[3*i+1], points[3*i+2])
//
// Rows are independent. A row's result equals, bit for bit, that of evaluate right after setExpression of the same text on the
// same object, with the variables set to the row's values; only the sign and payload of a NaN may differ. Column values have
// flag 0; numbers have y and z 0. A variable without a column has its current value in all rows.
//
// The arrays are not copied, and no memory is allocated in proportion to the number of rows. The call leaves the object as it
// was: its variables, the values that its program keeps from earlier evaluations, its pending assignment, its diagnostic. It
// caches preparations for further calls with columns of the same names and kinds, without references to the host's memory,
// until another text is compiled.
#pragma once

#include "mathexpr/BulkArrays.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstddef>
#include <cstdint>

namespace mathexpr {

/// Reasons for a refused call. The numbers are part of the interface.
enum class BulkError : std::uint32_t
{
    None = 0,
    Busy = 1,               ///< A call on the object waits for the host.
    NoProgram = 2,          ///< There is no compiled expression.
    ColumnsMissing = 3,     ///< The array of columns is null, but columnCount is not 0.
    ColumnName = 4,         ///< A column's name is null or empty.
    ColumnTwice = 5,        ///< Two columns have the same name, ignoring case as the language does.
    ColumnKind = 6,         ///< A column is neither of numbers nor of points.
    ColumnData = 7,         ///< A column's data is null.
    ColumnAlignment = 8,    ///< A column's data or a stride is not a multiple of 8.
    ColumnVariable = 9,     ///< The variable is of a host class, whose value the library must not replace.
    ResultsKind = 10,       ///< The kind of the results is not a BulkKind.
    ResultsData = 11,       ///< The results' data is null.
    ResultsAlignment = 12,  ///< The data or a stride is not a multiple of 8, or status not of 4.
    ResultsOverlap = 13,    ///< Two rows of the results would share memory.
};

/// Outcome of a bulk evaluation.
struct BulkOutcome
{
    BulkError error = BulkError::None;
    std::size_t column = 0;         ///< With a column error: its index; of two with the same name, the later one.
    std::size_t failedCount = 0;    ///< Number of rows without a value.
    std::size_t firstFailed = 0;    ///< Index of the first such row.
    std::uint32_t firstStatus = 0;  ///< Its RowStatus.
};

/// Evaluates all rows. A failed row does not stop the others: its result is NaN (a point of three NaNs, a record with the
/// number NaN), and its status is the reason. For a full diagnostic, set the variables to the row's values and evaluate. Rows
/// show no message and raise no exception. An assignment in the expression is not made; its value is the result.
///
/// @param columns      the values of variables; may be null if there are none
/// @param results      receives the values
/// @param threadCount  number of threads, including the calling one; 0 is 1. The library uses fewer if there are too few rows,
///                     if the system provides fewer, and if the order of rows matters: random numbers are drawn row by row, and
///                     host items are called from the calling thread. The results do not depend on it.
/// @param outcome      receives the outcome, even if false is returned
/// @return true if all rows were evaluated, including failed rows; false if no row was evaluated and no result written
/// @throws std::bad_alloc, before any row is evaluated; and what a host item throws
MATHEXPR_API bool evaluateBulk(MathExpression& expression, const BulkColumn* columns, std::size_t columnCount,
                               std::size_t rowCount, const BulkResults& results, std::uint32_t threadCount,
                               BulkOutcome& outcome);

}
