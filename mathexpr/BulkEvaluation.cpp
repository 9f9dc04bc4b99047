// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkEvaluation.cpp - checks the arrays, binds columns to variables, and calls the engine.
#include "mathexpr/BulkEvaluation.h"

#include "MTParserLib/names/MTNameIndex.h"
#include "MTParserLib/run/MTBulkRun.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace mathexpr {
namespace {

constexpr std::size_t alignment = sizeof(double);

bool isAligned(const void* data, std::size_t to) noexcept
{
    return reinterpret_cast<std::uintptr_t>(data) % to == 0;
}

bool isAligned(std::ptrdiff_t distance) noexcept
{
    return distance % static_cast<std::ptrdiff_t>(alignment) == 0;
}

BulkError checkColumn(const BulkColumn& column, std::size_t rowCount) noexcept
{
    if (column.name == nullptr || *column.name == L'\0')
    {
        return BulkError::ColumnName;
    }
    if (column.kind != BulkKind::Number && column.kind != BulkKind::Point)
    {
        return BulkError::ColumnKind;
    }
    if (column.data == nullptr && rowCount != 0)
    {
        return BulkError::ColumnData;
    }
    const bool aligned = isAligned(column.data, alignment) && isAligned(column.stride) &&
                         (column.kind != BulkKind::Point || isAligned(column.coordinateStride));
    return aligned ? BulkError::None : BulkError::ColumnAlignment;
}

std::size_t magnitude(std::ptrdiff_t distance) noexcept
{
    const auto bits = static_cast<std::size_t>(distance);
    return distance < 0 ? 0 - bits : bits;
}

/// Whether rows of points share memory. Valid layouts: points one after another, or one array per coordinate.
bool pointsOverlap(std::size_t rowCount, std::size_t stride, std::size_t coordinateStride) noexcept
{
    if (coordinateStride < alignment || (rowCount > 1 && stride < alignment))
    {
        return true;
    }
    const bool rowsApart = rowCount == 1 || (stride - alignment) / 2 >= coordinateStride;
    return !rowsApart && (coordinateStride - alignment) / stride < rowCount - 1;
}

BulkError checkResults(const BulkResults& results, std::size_t rowCount) noexcept
{
    if (results.kind != BulkKind::Number && results.kind != BulkKind::Point && results.kind != BulkKind::Record)
    {
        return BulkError::ResultsKind;
    }
    if (rowCount == 0)
    {
        return BulkError::None;
    }
    if (results.data == nullptr)
    {
        return BulkError::ResultsData;
    }
    const bool isPoint = results.kind == BulkKind::Point;
    if (!isAligned(results.data, alignment) || !isAligned(results.stride) ||
        (isPoint && !isAligned(results.coordinateStride)) || !isAligned(results.status, alignof(std::uint32_t)))
    {
        return BulkError::ResultsAlignment;
    }
    const std::size_t stride = magnitude(results.stride);
    const std::size_t size = results.kind == BulkKind::Record ? sizeof(VALTYPE) : sizeof(double);
    const bool shared =
        isPoint ? pointsOverlap(rowCount, stride, magnitude(results.coordinateStride)) : rowCount > 1 && stride < size;
    return shared ? BulkError::ResultsOverlap : BulkError::None;
}

/// Index of the first column with the name of an earlier column; columnCount if all names differ.
std::size_t findColumnTwice(const BulkColumn* columns, std::size_t columnCount)
{
    MTNameIndex names;
    for (std::size_t index = 0; index < columnCount; ++index)
    {
        const std::wstring_view name = columns[index].name;
        const std::uint32_t hash = MTNameIndex::hash(name);
        const auto isName = [&](std::size_t other) { return sameIgnoringCase(columns[other].name, name); };
        if (names.find(hash, isName) != MTNameIndex::notFound)
        {
            return index;
        }
        names.reserveOneMore(index);
        names.insert(hash, index);
    }
    return columnCount;
}

/// Checks the columns, and finds the variables of those that the program reads.
class ColumnBinder
{
public:
    explicit ColumnBinder(MTParser& parser) noexcept
        : registrar(parser.getRegistrar()), used(parser.getProgram().usedVariables)
    {}

    BulkError bind(const BulkColumn* columns, std::size_t columnCount, std::size_t rowCount, std::size_t& failed)
    {
        if (columns == nullptr && columnCount != 0)
        {
            return BulkError::ColumnsMissing;
        }
        for (failed = 0; failed < columnCount; ++failed)
        {
            const BulkError error = checkColumn(columns[failed], rowCount);
            if (error != BulkError::None)
            {
                return error;
            }
        }
        failed = findColumnTwice(columns, columnCount);
        if (failed != columnCount)
        {
            return BulkError::ColumnTwice;
        }
        for (failed = 0; failed < columnCount; ++failed)
        {
            if (!bind(columns[failed]))
            {
                return BulkError::ColumnVariable;
            }
        }
        failed = 0;
        return BulkError::None;
    }

    const std::vector<MTBoundColumn>& bound() const noexcept { return boundColumns; }

private:
    bool bind(const BulkColumn& column)
    {
        const MTVariableDefinition* const variable = registrar.findVariableDefinition(column.name);
        if (variable == nullptr || std::find(used.begin(), used.end(), variable->item.get()) == used.end())
        {
            return true;
        }
        if (variable->valueInPlace != nullptr)
        {
            boundColumns.push_back({variable->valueInPlace, column});
        }
        return variable->valueInPlace != nullptr;
    }

    const MTParserRegistrar& registrar;
    const std::vector<const IMathVariable*>& used;
    std::vector<MTBoundColumn> boundColumns;
};

}

bool evaluateBulk(MathExpression& expression, const BulkColumn* columns, std::size_t columnCount, std::size_t rowCount,
                  const BulkResults& results, std::uint32_t threadCount, BulkOutcome& outcome)
{
    outcome = BulkOutcome{};
    MTParser& parser = EngineAccess::parserOf(expression);
    MTParserProgram& program = parser.getProgram();
    const MTReentryGuard guard(program);
    if (!guard.hasEntered())
    {
        outcome.error = BulkError::Busy;
        return false;
    }
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        ColumnBinder binder(parser);
        outcome.error =
            program.isComplete() ? binder.bind(columns, columnCount, rowCount, outcome.column) : BulkError::NoProgram;
        if (outcome.error == BulkError::None)
        {
            outcome.error = checkResults(results, rowCount);
        }
        if (outcome.error != BulkError::None)
        {
            return false;
        }
        const MTBulkTally tally = runInBulk(program, binder.bound(), rowCount, results, threadCount);
        outcome.failedCount = tally.nbFailed;
        if (tally.nbFailed != 0)
        {
            outcome.firstFailed = tally.firstFailed;
            outcome.firstStatus = tally.firstStatus;
        }
        return true;
    });
}

}
