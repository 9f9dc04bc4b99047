// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBatch.cpp - contiguous columns of numbers, which bulk evaluation reads fastest.

#include "tools/calc/table/TableBatch.h"

#include <utility>

TableBatch::TableBatch(std::vector<TableColumn> columns)
    : tableColumns(std::move(columns)), columnValues(tableColumns.size())
{}

void TableBatch::clear()
{
    for (Values& column : columnValues)
    {
        column.numbers.clear();
    }
    kindsAreKnown = false;
    lines.clear();
    complaints.clear();
    rowTexts.clear();
    textEnds.clear();
}

bool TableBatch::takes(const std::vector<VALTYPE>& values) const
{
    for (std::size_t j = 0; kindsAreKnown && j < values.size(); ++j)
    {
        if (columnValues[j].isPoint != (values[j].type != 0))
        {
            return false;
        }
    }
    return true;
}

void TableBatch::add(std::uint64_t line, const std::vector<VALTYPE>& values)
{
    for (std::size_t j = 0; j < values.size(); ++j)
    {
        Values& column = columnValues[j];
        if (!kindsAreKnown)
        {
            // All rows before this one are broken and have no values.
            column.isPoint = values[j].type != 0;
            column.numbers.assign(size() * (column.isPoint ? 3 : 1), 0.0);
        }
        column.numbers.push_back(values[j].x);
        if (column.isPoint)
        {
            column.numbers.push_back(values[j].y);
            column.numbers.push_back(values[j].z);
        }
    }
    kindsAreKnown = true;
    lines.push_back(line);
}

void TableBatch::addBroken(std::uint64_t line, std::string complaint)
{
    for (Values& column : columnValues)
    {
        column.numbers.insert(column.numbers.end(), column.isPoint ? 3 : 1, 0.0);
    }
    complaints.emplace(size(), std::move(complaint));
    lines.push_back(line);
}

void TableBatch::keepText(std::string_view text)
{
    rowTexts += text;
    textEnds.push_back(rowTexts.size());
}

std::string_view TableBatch::text(std::size_t row) const
{
    const std::size_t begin = row == 0 ? 0 : textEnds[row - 1];
    return std::string_view(rowTexts).substr(begin, textEnds[row] - begin);
}

VALTYPE TableBatch::value(std::size_t row, std::size_t column) const
{
    const Values& values = columnValues[column];
    VALTYPE value;
    const double* const x = values.numbers.data() + row * (values.isPoint ? 3 : 1);
    value.type = values.isPoint ? 1 : 0;
    value.x = x[0];
    value.y = values.isPoint ? x[1] : 0.0;
    value.z = values.isPoint ? x[2] : 0.0;
    return value;
}
