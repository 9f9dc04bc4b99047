// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableStage.cpp - evaluates rows in runs of one kind. A column of bulk evaluation contains either numbers or points,
// but the results of an earlier stage may change their kind from row to row. Usually all rows are one run.
#include "tools/calc/table/TableStage.h"

#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/Variables.h"
#include "tools/calc/report/PlainReport.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

std::string defineHostNames(Calculator& calculator, const Options& options)
{
    for (const Options::HostName& hostName : options.hostNames)
    {
        const std::string trouble = calculator.defineHostName(hostName);
        if (!trouble.empty())
        {
            return "--set " + hostName.name + ": " + trouble;
        }
    }
    return {};
}

TableStage::TableStage(const Options& given, std::string expression, std::string name)
    : options(&given), compileOptions(withoutEvaluation(given)), compiled(compileOptions), text(std::move(expression)),
      resultName(std::move(name)), results(TableBatch::mostRows), status(TableBatch::mostRows)
{}

Options TableStage::withoutEvaluation(Options given)
{
    given.repeat = 0;
    return given;
}

void TableStage::evaluate(const TableBatch& batch, const std::deque<TableStage>& stages)
{
    for (std::size_t begin = 0; begin < batch.size();)
    {
        const std::size_t end = endOfKind(stages, begin, batch.size());
        evaluateRows(batch, stages, begin, end);
        begin = end;
    }
}

/// The end of the run from begin on in which each stage that is read has results of one kind.
std::size_t TableStage::endOfKind(const std::deque<TableStage>& stages, std::size_t begin, std::size_t end) const
{
    for (const Source& source : sources)
    {
        for (std::size_t row = begin + 1; source.isStage && row < end; ++row)
        {
            const std::vector<VALTYPE>& earlier = stages[source.index].results;
            end = earlier[row].type != earlier[begin].type ? row : end;
        }
    }
    return end;
}

void TableStage::evaluateRows(const TableBatch& batch, const std::deque<TableStage>& stages, std::size_t begin,
                              std::size_t end)
{
    std::vector<mathexpr::BulkColumn> columns;
    for (const Source& source : sources)
    {
        if (source.isStage)
        {
            const VALTYPE& first = stages[source.index].results[begin];
            columns.push_back({source.name.c_str(), &first.x, sizeof(VALTYPE),
                               first.type == 0 ? mathexpr::BulkKind::Number : mathexpr::BulkKind::Point});
            continue;
        }
        const std::size_t width = batch.isOfPoints(source.index) ? 3 : 1;
        columns.push_back({source.name.c_str(), batch.numbers(source.index) + begin * width,
                           static_cast<std::ptrdiff_t>(width * sizeof(double)),
                           width == 3 ? mathexpr::BulkKind::Point : mathexpr::BulkKind::Number});
    }
    mathexpr::BulkResults target{&results[begin], sizeof(VALTYPE), mathexpr::BulkKind::Record};
    target.status = &status[begin];
    mathexpr::BulkOutcome outcome;
    if (!mathexpr::evaluateBulk(compiled.expression(), columns.data(), columns.size(), end - begin, target, 1, outcome))
    {
        throw std::logic_error("the columns were refused");
    }
}

bool TableStage::isRefused(std::size_t row) const
{
    return status[row] != mathexpr::RowStatus::Done;
}

std::string TableStage::refusal(const TableBatch& batch, const std::deque<TableStage>& stages, std::size_t row) const
{
    Calculator alone(*options);
    defineHostNames(alone, *options);
    for (const Source& source : sources)
    {
        const VALTYPE value = source.isStage ? stages[source.index].results[row] : batch.value(row, source.index);
        mathexpr::setVariable(alone.expression(), source.name.c_str(), value);
    }
    return failureText(alone.compute(text));
}
