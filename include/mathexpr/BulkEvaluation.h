// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkEvaluation.h - evaluates one compiled expression over arrays: columns of values in, one result a row out.
//
//     const mathexpr::BulkColumn columns[] = {{L"x", xs},
//                                             {L"p", points, 3 * sizeof(double), mathexpr::BulkKind::Point}};
//     mathexpr::BulkOutcome outcome;
//     if (mathexpr::evaluateBulk(expression, columns, 2, rowCount, {results}, 0, outcome) && outcome.failedCount == 0)
//         ...  // results[i] is the value with x = xs[i] and p = (points[3*i], points[3*i+1], points[3*i+2])
//
// A row's result is bit for bit what evaluate gives after setExpression of the same text on the same object, with the
// variables set to the row's values: nothing of one row is left for the next. Only the sign and the payload of a NaN
// may differ. Numbers and points of a column have flag 0, and numbers have y and z 0. A variable without a column has
// in all rows the value that it has in the object.
//
// The arrays are read and written where they are, whatever their strides, and nothing is allocated in proportion to the
// number of rows. Afterwards the object is what it was before: its variables, what its program holds from earlier
// evaluations, its pending assignment, its diagnostic. Beside its program it keeps what the next call with columns of the
// same names and kinds would make again, and nothing of the host's, until another text is compiled.
#pragma once

#include "mathexpr/BulkArrays.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstddef>
#include <cstdint>

namespace mathexpr {

/// Why nothing was evaluated. The numbers are part of the interface.
enum class BulkError : std::uint32_t
{
    None = 0,
    Busy = 1,             ///< A call on the object waits for the host.
    NoProgram = 2,        ///< There is no compiled expression.
    ColumnsMissing = 3,   ///< The array of columns is null, and there should be some.
    ColumnName = 4,       ///< A column's name is null or empty.
    ColumnTwice = 5,      ///< Two columns have the same name, as the language compares names of variables.
    ColumnKind = 6,       ///< A column is neither of numbers nor of points.
    ColumnData = 7,       ///< A column's data is null.
    ColumnAlignment = 8,  ///< A column's data or a distance in it is no multiple of 8.
    ColumnVariable = 9,   ///< The variable is one of the host's own class, whose value is not the library's to replace.
    ResultsKind = 10,     ///< The kind of the results is none of BulkKind.
    ResultsData = 11,     ///< The results' data is null.
    ResultsAlignment = 12,  ///< Their data or a distance is no multiple of 8, or status none of 4.
    ResultsOverlap = 13,    ///< Two rows of the results would share memory.
};

/// Outcome of a bulk evaluation.
struct BulkOutcome
{
    BulkError error = BulkError::None;
    std::size_t column = 0;         ///< With an error about a column: its index; of two with one name the later one.
    std::size_t failedCount = 0;    ///< How many rows have no value.
    std::size_t firstFailed = 0;    ///< The first of them.
    std::uint32_t firstStatus = 0;  ///< Its RowStatus.
};

/// Evaluates all rows. A row that fails does not stop the others: its result is NaN (a point of three NaN, a record
/// that is the number NaN) and its status tells why. A host that wants to know more sets the variables to the row's
/// values and evaluates. No message is shown and no exception raised for a row. An assignment in the expression is not
/// carried out; the value is the result.
///
/// @param columns    for the variables to set; may be null where there are none
/// @param results    where the values go
/// @param threadCount  how many threads compute, this one among them; 0 and 1: this one alone. Fewer do where there are
///                   too few rows, where the system gives no more, and where the order of the rows shows: an expression
///                   with random numbers draws them row by row, and items of the host are called from this thread. The
///                   results do not depend on it.
/// @param outcome    receives what came of it, also when false is returned
/// @return true when all rows were evaluated, whether or not they failed; false when nothing was, and the results are
///         untouched
/// @throws std::bad_alloc, before any row is evaluated; and what an item of the host throws
MATHEXPR_API bool evaluateBulk(MathExpression& expression, const BulkColumn* columns, std::size_t columnCount,
                               std::size_t rowCount, const BulkResults& results, std::uint32_t threadCount,
                               BulkOutcome& outcome);

}
