// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableWorker.cpp - computes the rows of a block in batches. Each batch passes through all stages in order.
#include "tools/calc/table/TableWorker.h"

#include "tools/calc/table/CellValue.h"
#include "tools/calc/table/DataText.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/TableFormat.h"
#include "tools/calc/text/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

namespace {

using Json = nlohmann::ordered_json;

/// Guards the message display, which belongs to the whole process.
std::mutex messages;

std::string cellsText(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " cell" : " cells");
}

Json numberJson(double number)
{
    return std::isfinite(number) ? Json(number) : Json(numberText(number));
}

Json dataJson(const VALTYPE& value)
{
    return value.type == 0 ? numberJson(value.x)
                           : Json::array({numberJson(value.x), numberJson(value.y), numberJson(value.z)});
}

}

TableWorker::TableWorker(const Options& givenOptions, const TableLayout& givenLayout, std::deque<TableStage> stages)
    : options(givenOptions), layout(givenLayout), tableStages(std::move(stages)), batch(givenLayout.columns),
      values(givenLayout.columns.size())
{}

TableWorker::~TableWorker()
{
    while (!tableStages.empty())
    {
        tableStages.pop_back();
    }
}

TableResult TableWorker::compute(std::string_view rows, std::uint64_t firstLine)
{
    TableResult result;
    TableReader reader(rows, firstLine, layout.separator);
    for (TableReader::Outcome outcome = reader.next(); outcome != TableReader::Outcome::End; outcome = reader.next())
    {
        if (withoutBlanks(reader.rowText()).empty())
        {
            continue;
        }
        const std::string complaint =
            outcome == TableReader::Outcome::Row ? readRow(reader.cells()) : "its quotes are not in order";
        const bool isBroken = !complaint.empty();
        if ((!isBroken && !batch.takes(values)) || batch.isFull())
        {
            finishBatch(result);
            if (result.isLast)
            {
                return result;
            }
        }
        isBroken ? batch.addBroken(reader.line(), complaint) : batch.add(reader.line(), values);
        if (options.table->append)
        {
            batch.keepText(textOfRow(reader));
        }
        if (isBroken && !options.table->skipBroken)
        {
            break;
        }
    }
    finishBatch(result);
    return result;
}

/// The row's text, with separators removed or added at its end, so that it has as many cells as the headings.
std::string TableWorker::textOfRow(const TableReader& reader) const
{
    std::string text(reader.rowText());
    const std::size_t count = reader.cells().size();
    for (std::size_t extra = layout.headingCells; extra < count && text.ends_with(layout.separator); ++extra)
    {
        text.pop_back();
    }
    text.append(count < layout.headingCells ? layout.headingCells - count : 0, layout.separator);
    return text;
}

/// Reads the cells that the expressions use.
/// @return what is wrong with the row; empty if nothing is
std::string TableWorker::readRow(const std::vector<std::string_view>& cells)
{
    const auto isEmpty = [](std::string_view cell) { return withoutBlanks(cell).empty(); };
    if (cells.size() < layout.headings ||
        !std::all_of(cells.begin() + static_cast<std::ptrdiff_t>(layout.headings), cells.end(), isEmpty))
    {
        return "it has " + cellsText(cells.size()) + " instead of " + std::to_string(layout.headings);
    }
    for (std::size_t j = 0; j < values.size(); ++j)
    {
        const TableColumn& column = layout.columns[j];
        const auto value = cellValue(cells[column.index], options.table->decimalComma);
        if (!value)
        {
            return displayable(toUtf8(column.name)) + ' ' +
                   cellComplaint(cells[column.index], options.table->decimalComma);
        }
        values[j] = *value;
    }
    return {};
}

/// Evaluates the rows of the batch, writes their results, and empties it.
void TableWorker::finishBatch(TableResult& result)
{
    for (TableStage& stage : tableStages)
    {
        stage.evaluate(batch, tableStages);
    }
    for (std::size_t row = 0; !result.isLast && row < batch.size(); ++row)
    {
        ++result.rowCount;
        const std::string complaint = complaintOf(row);
        const bool isBroken = !complaint.empty();
        if (isBroken)
        {
            ++result.brokenCount;
            const std::string place = options.table->file + ':' + std::to_string(batch.line(row));
            result.complaints += "mathexpr: " + displayable(place, 0) + ": " + complaint + '\n';
            result.isLast = !options.table->skipBroken;
        }
        if (!result.isLast && (isBroken || isKept(row)))
        {
            options.json ? writeJson(result.output, row, isBroken) : writeRow(result.output, row, isBroken);
        }
    }
    batch.clear();
}

bool TableWorker::isKept(std::size_t row) const
{
    return !options.table->where || tableStages.front().result(row).x != 0.0;
}

/// Why a row has no results; empty if it has some or is left out.
std::string TableWorker::complaintOf(std::size_t row) const
{
    if (batch.isBroken(row))
    {
        return batch.complaint(row);
    }
    for (const TableStage& stage : tableStages)
    {
        if (stage.isRefused(row))
        {
            const std::lock_guard lock(messages);
            return stage.refusal(batch, tableStages, row);
        }
        if (!isKept(row))
        {
            break;
        }
    }
    return {};
}

void TableWorker::writeRow(std::string& output, std::size_t row, bool isBroken) const
{
    output += options.table->append ? batch.text(row) : std::string_view();
    for (std::size_t index = firstResult(); index < tableStages.size(); ++index)
    {
        output.append(options.table->append || index != firstResult() ? 1 : 0, layout.separator);
        if (!isBroken)
        {
            writeValue(output, tableStages[index].result(row));
        }
    }
    output += '\n';
}

void TableWorker::writeJson(std::string& output, std::size_t row, bool isBroken) const
{
    Json results = Json::object();
    for (std::size_t index = firstResult(); index < tableStages.size(); ++index)
    {
        results[tableStages[index].name()] = isBroken ? Json() : dataJson(tableStages[index].result(row));
    }
    const Json line = {{"line", batch.line(row)}, {"results", results}};
    output += line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

/// A number needs no quotes: it contains no separator.
void TableWorker::writeValue(std::string& output, const VALTYPE& value) const
{
    const std::uint32_t digits = options.digits.value_or(exactDigits);
    if (value.type == 0)
    {
        const auto begin = static_cast<std::ptrdiff_t>(output.size());
        appendData(output, value, digits);
        if (options.table->decimalComma)
        {
            std::replace(output.begin() + begin, output.end(), '.', ',');
        }
        return;
    }
    std::string point;
    appendData(point, value, digits);
    appendCell(output, point, layout.separator);
}
