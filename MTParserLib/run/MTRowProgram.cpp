// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRowProgram.cpp - see MTRowProgram.h.
#include "MTParserLib/run/MTRowProgram.h"

MTRowProgram::MTRowProgram(const MTParserProgram& program, platform::ArrayView<const MTBoundColumn> bound)
    : copy(program)
{
    for (const MTBoundColumn& column : bound)
    {
        columns.push_back({copy.addInput(*column.variable), {}});
    }
}

void MTRowProgram::bind(platform::ArrayView<const MTBoundColumn> bound, const mathexpr::BulkResults& results)
{
    for (std::size_t j = 0; j < bound.size(); ++j)
    {
        columns[j].source = bound[j].column;
    }
    writer = MTBulkWriter(results);
}

bool MTRowProgram::evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    bool allDone = true;
    for (std::size_t j = 0; j < nbRows; ++j)
    {
        status[j] = evaluateRow(firstRow + j);
        if (status[j] != mathexpr::RowStatus::Done)
        {
            writer.writeFailure(firstRow + j);
            allDone = false;
        }
    }
    return allDone;
}

std::uint32_t MTRowProgram::evaluateRow(std::size_t row)
{
    copy.refresh();
    for (const Column& column : columns)
    {
        if (column.variable != nullptr)
        {
            readRow(column.source, row, *column.variable);
        }
    }
    const std::uint32_t status = copy.run();
    if (status == mathexpr::RowStatus::Done && !writer.write(row, copy.getRoot()))
    {
        return mathexpr::RowStatus::OtherKind;
    }
    return status;
}
