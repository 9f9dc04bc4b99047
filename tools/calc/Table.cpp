// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Table.cpp - rows go through in batches, so that memory does not grow with the table. A batch passes one stage after the
// other, a stage for each expression.

#include "tools/calc/Table.h"

#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/Variables.h"
#include "tools/calc/Calculator.h"
#include "tools/calc/Interrupt.h"
#include "tools/calc/PlainReport.h"
#include "tools/calc/TableBatch.h"
#include "tools/calc/TableProgress.h"
#include "tools/calc/TableReader.h"
#include "tools/calc/TableSource.h"
#include "tools/calc/Utf8.h"
#include "tools/calc/table/CellValue.h"
#include "tools/calc/table/DataText.h"
#include "tools/calc/table/TableFormat.h"
#include "tools/calc/table/TableStage.h"
#include "tools/calc/text/Displayable.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

namespace {

/// Ends the work with a complaint.
struct TableTrouble
{
    std::string text;
};

/// Ends the work because the user has asked for it.
struct TableInterrupted
{
    std::uint64_t nbRows;  // that are written
};

/// The table's name in complaints.
std::string nameOf(const std::string& file)
{
    return file == "-" ? "standard input" : file;
}

/// Why a name cannot be a variable.
std::string refusalOf(const SMTDefExcepData& data)
{
    switch (data.exID)
    {
    case mathexpr::DefinitionError::VariableNameEmpty:
        return "it is empty";
    case mathexpr::DefinitionError::VariableNameIsNumber:
        return "it is a number";
    case mathexpr::DefinitionError::VariableNameIsConstant:
        return "it is a constant of the language";
    default:
        return "it holds \"" + displayable(toUtf8(data.conflictItemName)) + "\"";
    }
}

/// The name that an expression such as "a = x*2" assigns to; empty where it is no assignment.
std::string assignedName(std::string_view expression)
{
    const std::size_t equals = expression.find('=');
    if (equals == std::string_view::npos || expression.substr(equals).starts_with("=="))
    {
        return {};
    }
    std::string name;
    for (const char c : expression.substr(0, equals))
    {
        if (c != ' ')
        {
            name += c;
        }
    }
    return name.find_first_of("<>!()[],") == std::string::npos ? name : std::string{};
}

using Json = nlohmann::ordered_json;

std::string cellsText(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " cell" : " cells");
}

/// A heading of the table, and the name by which expressions read its column.
struct Heading
{
    std::string text;
    std::wstring name;    // empty where it cannot be one
    std::string refusal;  // why
};

class TableRun
{
public:
    explicit TableRun(const Options& given)
        : options(given), table(*given.table), name(nameOf(given.table->file)), source(given.table->file),
          reader(source, wasInterrupted)
    {}
    TableRun(const TableRun&) = delete;
    TableRun& operator=(const TableRun&) = delete;

    /// Each stage has put itself in the place of the one before it for messages, which has to be undone in turn.
    ~TableRun()
    {
        while (!stages.empty())
        {
            stages.pop_back();
        }
    }

    int run()
    {
        chooseSeparator();
        readHeadings();
        if ((table.where && !addStage(*table.where, {})) ||
            !std::ranges::all_of(options.expressions, [this](const std::string& text) { return addResult(text); }))
        {
            return statusFailure;
        }
        writeHeading();
        computeRows();
        progress.clear();
        if (nbBroken != 0 && table.skipBroken)
        {
            std::cerr << "mathexpr: " << name << ": " << std::to_string(nbBroken) << " of " << std::to_string(nbRows)
                      << " rows are broken and have no result\n";
        }
        return nbBroken != 0 ? statusFailure : statusOk;
    }

private:
    void chooseSeparator()
    {
        separator = table.separator.value_or(guessSeparator(reader.firstLine()));
        reader.setSeparator(separator);
        if (!table.separator && separator != ',')
        {
            std::cerr << "mathexpr: " << name << ": cells are taken to be separated by " << separatorName(separator)
                      << ", which --separator can change\n";
        }
        if (table.decimalComma && separator == ',')
        {
            throw TableTrouble{"--decimal-comma needs another separator than the comma: --separator ';'"};
        }
    }

    void readHeadings()
    {
        const TableReader::Outcome outcome = reader.next();
        end(outcome);
        if (outcome != TableReader::Outcome::Row)
        {
            throw TableTrouble{outcome == TableReader::Outcome::End ? "there are no headings"
                                                                    : "line 1: its quotes are not in order"};
        }
        for (const std::string_view cell : reader.cells())
        {
            headings.push_back({std::string(withoutBlanks(cell)), {}, {}});
        }
        headingCells = headings.size();
        while (headings.size() > 1 && headings.back().text.empty())
        {
            headings.pop_back();
        }
        headingText = reader.rowText();
        for (const auto& [renamed, heading] : table.names)
        {
            if (std::ranges::find(headings, heading, &Heading::text) == headings.end())
            {
                throw TableTrouble{"--name " + displayable(renamed) + ": there is no heading \"" +
                                   displayable(heading) + "\""};
            }
        }
        nameHeadings();
    }

    /// Finds out which headings can be names, on an object of its own.
    void nameHeadings()
    {
        MathExpression names(true, nullptr);
        for (std::size_t index = 0; index < headings.size(); ++index)
        {
            Heading& heading = headings[index];
            const auto alias = std::ranges::find(table.names, heading.text, &Options::ColumnName::heading);
            const auto wide = toWide(alias == table.names.end() ? heading.text : alias->name);
            if (!wide)
            {
                heading.refusal = "it is not UTF-8";
                continue;
            }
            try
            {
                if (mathexpr::getVariableAddress(names, wide->c_str()) != nullptr)
                {
                    heading.refusal = "it is that of column " + std::to_string(columnNamed(*wide, names) + 1) + " too";
                    duplicates.push_back(*wide);
                    continue;
                }
                mathexpr::setVariable(names, wide->c_str(), VALTYPE{});
                heading.name = *wide;
            }
            catch (const mathexpr::DefinitionException& exception)
            {
                heading.refusal = "it cannot be a name, since " + refusalOf(exception.entries.front().data);
            }
            if (alias != table.names.end() && heading.name.empty())
            {
                throw TableTrouble{"--name " + displayable(alias->name) + ": " + heading.refusal};
            }
        }
    }

    std::size_t columnNamed(const std::wstring& wanted, MathExpression& names) const
    {
        const auto isNamed = [&](const Heading& heading) {
            return !heading.name.empty() && mathexpr::getVariableAddress(names, heading.name.c_str()) ==
                                                mathexpr::getVariableAddress(names, wanted.c_str());
        };
        return static_cast<std::size_t>(std::ranges::find_if(headings, isNamed) - headings.begin());
    }

    bool addResult(const std::string& expression)
    {
        std::string result = assignedName(expression);
        if (result.empty())
        {
            result = nbUnnamed == 0 ? "result" : "result" + std::to_string(nbUnnamed + 1);
            ++nbUnnamed;
        }
        return addStage(expression, result);
    }

    /// Compiles an expression, which may read all headings that can be names, and all results before it.
    bool addStage(const std::string& expression, const std::string& result)
    {
        TableStage& stage = stages.emplace_back(options, expression, result);
        Calculator& calculator = stage.calculator();
        const std::string trouble = defineHostNames(calculator, options);
        if (!trouble.empty())
        {
            throw TableTrouble{trouble};
        }
        MathExpression& names = calculator.expression();
        for (const Heading& heading : headings)
        {
            if (!heading.name.empty())
            {
                mathexpr::setVariable(names, heading.name.c_str(), VALTYPE{});
            }
        }
        for (std::size_t index = 0; index + 1 < stages.size(); ++index)
        {
            if (const auto earlier = toWide(stages[index].name()); earlier && !earlier->empty())
            {
                mathexpr::setVariable(names, earlier->c_str(), VALTYPE{});
            }
        }
        if (!assignedName(expression).empty())
        {
            defineResult(names, result);
        }
        const Answer compiled = calculator.compute(expression);
        if (compiled.failed)
        {
            if (!compiled.trouble.empty())
            {
                throw TableTrouble{"the expression is " + compiled.trouble};
            }
            reportPlain(compiled);
            tellUnusableHeadings();
            return false;
        }
        stage.setSources(sourcesOf(names));
        return true;
    }

    static void defineResult(MathExpression& names, const std::string& result)
    {
        const auto wide = toWide(result);
        try
        {
            if (wide && mathexpr::getVariableAddress(names, wide->c_str()) == nullptr)
            {
                mathexpr::setVariable(names, wide->c_str(), VALTYPE{});
                mathexpr::removeVariable(names, wide->c_str());
            }
        }
        catch (const mathexpr::DefinitionException& exception)
        {
            throw TableTrouble{"the assigned name \"" + displayable(result) +
                               "\" cannot be a name: " + refusalOf(exception.entries.front().data)};
        }
    }

    void tellUnusableHeadings() const
    {
        constexpr std::size_t most = 3;
        std::size_t count = 0;
        for (std::size_t index = 0; index < headings.size() && count < most; ++index)
        {
            if (!headings[index].refusal.empty())
            {
                ++count;
                std::cerr << "mathexpr: " << name << ": the heading \"" << displayable(headings[index].text)
                          << "\" of column " << std::to_string(index + 1) << " is not read: " << headings[index].refusal
                          << "; --name 'w=HEADING' gives it another\n";
            }
        }
    }

    /// What the names that the compiled expression reads stand for: the latest result of that name, or a column.
    std::vector<TableStage::Source> sourcesOf(MathExpression& names)
    {
        std::vector<TableStage::Source> sources;
        for (const std::wstring& used : mathexpr::getUsedNames(names))
        {
            const VALTYPE* const address = mathexpr::getVariableAddress(names, used.c_str());
            const auto isMeant = [&](const std::wstring& other) {
                return !other.empty() && mathexpr::getVariableAddress(names, other.c_str()) == address;
            };
            std::size_t earlier = stages.size() - 1;
            while (earlier != 0 && !isMeant(toWide(stages[earlier - 1].name()).value_or(L"")))
            {
                --earlier;
            }
            if (earlier != 0)
            {
                sources.push_back({used, earlier - 1, true});
                continue;
            }
            const std::size_t heading = columnNamed(used, names);
            if (heading == headings.size())
            {
                continue;  // a name of the host's
            }
            if (std::ranges::any_of(duplicates, isMeant))
            {
                const auto later = std::ranges::find_if(headings, [&](const Heading& other) {
                    return !other.refusal.empty() && isMeant(toWide(other.text).value_or(L""));
                });
                throw TableTrouble{"column " + std::to_string(later - headings.begin() + 1) + ": the heading \"" +
                                   displayable(later->text) + "\" is that of column " + std::to_string(heading + 1) +
                                   " too"};
            }
            sources.push_back({used, batchColumn(heading, used), false});
        }
        return sources;
    }

    /// The column of the batch that holds a column of the table.
    std::size_t batchColumn(std::size_t heading, const std::wstring& used)
    {
        const auto known = std::ranges::find(columns, heading, &TableColumn::index);
        const auto index = static_cast<std::size_t>(known - columns.begin());
        if (known == columns.end())
        {
            columns.push_back({heading, used});
        }
        return index;
    }

    void writeHeading()
    {
        if (options.json)
        {
            return;
        }
        output = table.append ? headingText : std::string();
        for (std::size_t index = firstResult(); index < stages.size(); ++index)
        {
            beginCell(index);
            appendCell(output, stages[index].name(), separator);
        }
        output += '\n';
    }

    std::size_t firstResult() const { return table.where ? 1 : 0; }

    void beginCell(std::size_t stage)
    {
        if (table.append || stage != firstResult())
        {
            output += separator;
        }
    }

    void computeRows()
    {
        TableBatch batch(columns);
        std::vector<VALTYPE> values(columns.size());
        for (;;)
        {
            const TableReader::Outcome outcome = reader.next();
            const bool isRow = outcome == TableReader::Outcome::Row || outcome == TableReader::Outcome::Malformed;
            if (!isRow)
            {
                if (finishBatch(batch))
                {
                    end(outcome);
                }
                return;
            }
            if (isBlankRow())
            {
                continue;
            }
            const std::string complaint =
                outcome == TableReader::Outcome::Row ? readRow(batch, values) : "its quotes are not in order";
            const bool isBroken = !complaint.empty();
            if ((!isBroken && !batch.takes(values)) || batch.isFull())
            {
                if (!finishBatch(batch))
                {
                    return;
                }
            }
            isBroken ? batch.addBroken(reader.line(), complaint) : batch.add(reader.line(), values);
            if (table.append)
            {
                batch.keepText(textOfRow());
            }
            if (isBroken && !table.skipBroken)
            {
                finishBatch(batch);
                return;
            }
        }
    }

    bool isBlankRow() const { return withoutBlanks(reader.rowText()).empty(); }

    /// The row as it stands, with as many cells as the headings have.
    std::string textOfRow() const
    {
        std::string text(reader.rowText());
        const std::size_t count = reader.cells().size();
        for (std::size_t extra = headingCells; extra < count && text.ends_with(separator); ++extra)
        {
            text.pop_back();
        }
        text.append(count < headingCells ? headingCells - count : 0, separator);
        return text;
    }

    /// After the last row that could be read.
    void end(TableReader::Outcome outcome)
    {
        if (outcome == TableReader::Outcome::Unreadable)
        {
            throw TableTrouble{"line " + std::to_string(reader.line()) + ": " + reader.trouble()};
        }
        if (outcome == TableReader::Outcome::Interrupted)
        {
            throw TableInterrupted{nbRows};
        }
    }

    /// Reads the cells that the expressions use.
    /// @return what is wrong with the row; empty where nothing is
    std::string readRow(const TableBatch& batch, std::vector<VALTYPE>& values) const
    {
        const auto& cells = reader.cells();
        const auto isEmpty = [](std::string_view cell) { return withoutBlanks(cell).empty(); };
        if (cells.size() < headings.size() ||
            !std::all_of(cells.begin() + static_cast<std::ptrdiff_t>(headings.size()), cells.end(), isEmpty))
        {
            return "it has " + cellsText(cells.size()) + " instead of " + std::to_string(headings.size());
        }
        for (std::size_t j = 0; j < values.size(); ++j)
        {
            const TableColumn& column = batch.columns()[j];
            const auto value = cellValue(cells[column.index], table.decimalComma);
            if (!value)
            {
                return displayable(toUtf8(column.name)) + ' ' + cellComplaint(cells[column.index], table.decimalComma);
            }
            values[j] = *value;
        }
        return {};
    }

    /// Evaluates the rows of a batch, writes and reports them, and empties it.
    /// @return false where a broken row ends the work
    bool finishBatch(TableBatch& batch)
    {
        for (TableStage& stage : stages)
        {
            stage.evaluate(batch, stages, table.threads);
        }
        bool goesOn = true;
        for (std::size_t row = 0; goesOn && row < batch.size(); ++row)
        {
            ++nbRows;
            const std::string complaint = complaintOf(batch, row);
            if (complaint.empty())
            {
                if (isKept(row))
                {
                    writeRow(batch, row);
                }
                continue;
            }
            ++nbBroken;
            progress.clear();
            std::cerr << "mathexpr: " << name << ": line " << std::to_string(batch.line(row)) << ": " << complaint
                      << '\n';
            goesOn = table.skipBroken;
            if (goesOn)
            {
                writeBrokenRow(batch, row);
            }
        }
        batch.clear();
        if (!std::cout.write(output.data(), static_cast<std::streamsize>(output.size())).flush())
        {
            throw TableTrouble{"standard output cannot be written: the result is not complete"};
        }
        output.clear();
        progress.show(nbRows);
        return goesOn;
    }

    bool isKept(std::size_t row) const { return !table.where || stages.front().result(row).x != 0.0; }

    /// Why a row has no results; empty where it has, and where it is left out.
    std::string complaintOf(const TableBatch& batch, std::size_t row) const
    {
        if (!batch.complaint(row).empty())
        {
            return batch.complaint(row);
        }
        for (const TableStage& stage : stages)
        {
            if (stage.isRefused(row))
            {
                return stage.refusal(batch, stages, row);
            }
            if (!isKept(row))
            {
                break;
            }
        }
        return {};
    }

    void writeRow(const TableBatch& batch, std::size_t row)
    {
        if (options.json)
        {
            Json line = Json::object();
            for (std::size_t index = firstResult(); index < stages.size(); ++index)
            {
                line[stages[index].name()] = dataJson(stages[index].result(row));
            }
            writeJson(line, batch, row);
            return;
        }
        output += table.append ? batch.text(row) : std::string_view();
        for (std::size_t index = firstResult(); index < stages.size(); ++index)
        {
            beginCell(index);
            appendValue(stages[index].result(row));
        }
        output += '\n';
    }

    void writeBrokenRow(const TableBatch& batch, std::size_t row)
    {
        if (options.json)
        {
            Json line = Json::object();
            for (std::size_t index = firstResult(); index < stages.size(); ++index)
            {
                line[stages[index].name()] = nullptr;
            }
            writeJson(line, batch, row);
            return;
        }
        output += table.append ? batch.text(row) : std::string_view();
        for (std::size_t index = firstResult(); index < stages.size(); ++index)
        {
            beginCell(index);
        }
        output += '\n';
    }

    void writeJson(const Json& results, const TableBatch& batch, std::size_t row)
    {
        const Json line = {{"line", batch.line(row)}, {"results", results}};
        output += line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
    }

    static Json dataJson(const VALTYPE& value)
    {
        const auto number = [](double coordinate) {
            return std::isfinite(coordinate) ? Json(coordinate) : Json(numberText(coordinate));
        };
        return value.type == 0 ? number(value.x) : Json::array({number(value.x), number(value.y), number(value.z)});
    }

    void appendValue(const VALTYPE& value)
    {
        std::string text;
        appendData(text, value, options.digits.value_or(exactDigits));
        if (table.decimalComma && value.type == 0)
        {
            std::ranges::replace(text, '.', ',');
        }
        appendCell(output, text, separator);
    }

    const Options& options;
    const Options::Table& table;
    const std::string name;
    TableSource source;
    TableReader reader;
    char separator = ',';
    std::vector<Heading> headings;
    std::size_t headingCells = 0;
    std::string headingText;
    std::vector<std::wstring> duplicates;
    std::vector<TableColumn> columns;
    std::deque<TableStage> stages;  // the one of --where first
    std::size_t nbUnnamed = 0;
    std::string output;
    TableProgress progress;
    std::uint64_t nbRows = 0;
    std::uint64_t nbBroken = 0;
};

}

int computeTable(const Options& options)
{
    noteInterrupts();
    failOnClosedPipes();
    try
    {
        return TableRun(options).run();
    }
    catch (const TableInterrupted& interrupted)
    {
        std::cerr << "mathexpr: interrupted: the result is not complete, it ends after "
                  << std::to_string(interrupted.nbRows) << " rows\n";
        return statusInterrupted;
    }
    catch (const std::system_error& error)
    {
        std::cerr << "mathexpr: " << nameOf(options.table->file) << ": cannot be opened: " << error.code().message()
                  << '\n';
        return statusFailure;
    }
    catch (const TableTrouble& trouble)
    {
        std::cerr << "mathexpr: " << nameOf(options.table->file) << ": " << trouble.text << '\n';
        return statusFailure;
    }
}
