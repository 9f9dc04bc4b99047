// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkEvaluation.cpp - implements bulk evaluation of mathexpr.h.
#include "mathexpr/BulkEvaluation.h"

#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"

#include <vector>

namespace {

/// Converts the columns to the library's structure.
template <class Encoding>
class Columns
{
public:
    /// @return false if a column's size is invalid, or differs from the first one's
    bool take(const typename Encoding::Column* columns, std::size_t nbColumns)
    {
        names.reserve(nbColumns);
        const auto* bytes = reinterpret_cast<const unsigned char*>(columns);
        for (std::size_t index = 0; index < nbColumns; ++index)
        {
            const auto* const given = reinterpret_cast<const typename Encoding::Column*>(bytes);
            typename Encoding::Column column{};
            if (sizeOf(given) != sizeOf(columns) || !readStructure(given, column))
            {
                return false;
            }
            // An ill-formed name is treated like an empty one.
            std::wstring& name = names.emplace_back();
            takeText<Encoding>(column.name, column.name_length, name);
            own.push_back({name.c_str(), column.data, column.stride, static_cast<mathexpr::BulkKind>(column.kind),
                           column.coordinate_stride});
            bytes += sizeOf(columns);
        }
        return true;
    }

    const mathexpr::BulkColumn* data() const noexcept { return own.data(); }

private:
    std::vector<mathexpr::BulkColumn> own;
    std::vector<std::wstring> names;
};

mathexpr_status statusOf(mathexpr::BulkError error) noexcept
{
    switch (error)
    {
    case mathexpr::BulkError::None:
        return MATHEXPR_OK;
    case mathexpr::BulkError::Busy:
        return MATHEXPR_BUSY;
    case mathexpr::BulkError::NoProgram:
        return MATHEXPR_NO_PROGRAM;
    default:
        return MATHEXPR_BULK_REFUSED;
    }
}

/// Writes the outcome and returns the status.
mathexpr_status answer(const mathexpr::BulkOutcome& own, mathexpr_bulk_outcome* outcome) noexcept
{
    if (outcome != nullptr)
    {
        mathexpr_bulk_outcome known{};
        known.error = static_cast<std::uint32_t>(own.error);
        known.column = own.column;
        known.failed_count = own.failedCount;
        known.first_failed = own.firstFailed;
        known.first_status = own.firstStatus;
        writeStructure(known, outcome);
    }
    return statusOf(own.error);
}

template <class Encoding>
mathexpr_status evaluate(mathexpr_expression* handle, const typename Encoding::Column* columns, std::size_t nbColumns,
                         std::size_t nbRows, const mathexpr_results* results, std::uint32_t nbThreads,
                         mathexpr_bulk_outcome* outcome) noexcept
{
    return readExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (results == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        mathexpr_results known{};
        Columns<Encoding> taken;
        if ((outcome != nullptr && !hasPlausibleSize(outcome)) || !readStructure(results, known) ||
            (columns != nullptr && !taken.take(columns, nbColumns)))
        {
            return MATHEXPR_BAD_SIZE;
        }
        mathexpr::BulkOutcome own;
        if (expression.host->isCalled || expression.host->isAskedForNames)
        {
            own.error = mathexpr::BulkError::Busy;
            return answer(own, outcome);
        }
        const Mark called(expression.host->isCalled);
        const mathexpr::BulkResults ownResults{known.data, known.stride, static_cast<mathexpr::BulkKind>(known.kind),
                                               known.coordinate_stride, known.row_status};
        mathexpr::evaluateBulk(expression.object(), columns == nullptr ? nullptr : taken.data(), nbColumns, nbRows,
                               ownResults, nbThreads, own);
        return answer(own, outcome);
    });
}

}

mathexpr_status mathexpr_evaluate_bulk_utf8(mathexpr_expression* expression, const mathexpr_column_utf8* columns,
                                            size_t column_count, size_t row_count, const mathexpr_results* results,
                                            uint32_t thread_count, mathexpr_bulk_outcome* outcome) noexcept
{
    return evaluate<Utf8>(expression, columns, column_count, row_count, results, thread_count, outcome);
}

mathexpr_status mathexpr_evaluate_bulk_utf16(mathexpr_expression* expression, const mathexpr_column_utf16* columns,
                                             size_t column_count, size_t row_count, const mathexpr_results* results,
                                             uint32_t thread_count, mathexpr_bulk_outcome* outcome) noexcept
{
    return evaluate<Utf16>(expression, columns, column_count, row_count, results, thread_count, outcome);
}
