// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableBatch.cpp - columns of numbers side by side, as bulk evaluation reads them fastest.

#include "tools/calc/TableBatch.h"

#include "tools/calc/TableReader.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace {

std::optional<double> numberIn(std::string_view text)
{
    text = withoutBlanks(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
    {
        text.remove_prefix(1);
    }
    double number = 0.0;
    const char* const end = text.data() + text.size();
    const auto [parsedEnd, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && parsedEnd == end ? std::optional(number) : std::nullopt;
}

}

std::optional<VALTYPE> cellValue(std::string_view cell)
{
    cell = withoutBlanks(cell);
    VALTYPE value;
    if (!cell.starts_with('['))
    {
        const auto number = numberIn(cell);
        value.x = number.value_or(0.0);
        return number ? std::optional(value) : std::nullopt;
    }
    value.type = 1;
    const std::size_t firstComma = cell.find(',');
    const std::size_t secondComma = cell.find(',', firstComma == std::string_view::npos ? firstComma : firstComma + 1);
    if (secondComma == std::string_view::npos || !cell.ends_with(']'))
    {
        return std::nullopt;
    }
    const std::array<std::optional<double>, 3> coordinates = {
        numberIn(cell.substr(1, firstComma - 1)), numberIn(cell.substr(firstComma + 1, secondComma - firstComma - 1)),
        numberIn(cell.substr(secondComma + 1, cell.size() - secondComma - 2))};
    if (!coordinates[0] || !coordinates[1] || !coordinates[2])
    {
        return std::nullopt;
    }
    value.x = *coordinates[0];
    value.y = *coordinates[1];
    value.z = *coordinates[2];
    return value;
}

TableBatch::TableBatch(std::vector<TableColumn> columns)
    : tableColumns(std::move(columns)), columnValues(tableColumns.size()), results(mostRows), status(mostRows)
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
            // Rows that are broken stand before this one and have no values.
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
    complaints.emplace_back();
}

void TableBatch::addBroken(std::uint64_t line, std::string complaint)
{
    for (Values& column : columnValues)
    {
        column.numbers.insert(column.numbers.end(), column.isPoint ? 3 : 1, 0.0);
    }
    lines.push_back(line);
    complaints.push_back(std::move(complaint));
}

void TableBatch::evaluate(MathExpression& expression, std::uint32_t nbThreads)
{
    std::vector<mathexpr::BulkColumn> columns;
    for (std::size_t j = 0; j < tableColumns.size(); ++j)
    {
        const bool isPoint = columnValues[j].isPoint;
        columns.push_back({tableColumns[j].name.c_str(), columnValues[j].numbers.data(),
                           static_cast<std::ptrdiff_t>((isPoint ? 3 : 1) * sizeof(double)),
                           isPoint ? mathexpr::BulkKind::Point : mathexpr::BulkKind::Number});
    }
    mathexpr::BulkResults target{results.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record};
    target.status = status.data();
    mathexpr::BulkOutcome outcome;
    if (!mathexpr::evaluateBulk(expression, columns.data(), columns.size(), size(), target, nbThreads, outcome))
    {
        throw std::logic_error("the columns were refused");
    }
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
