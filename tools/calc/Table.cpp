// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Table.cpp - rows go through in batches, so that memory does not grow with the table.

#include "tools/calc/Table.h"

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
#include "tools/calc/table/DataText.h"

#include <algorithm>
#include <cstdint>
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
        return "it holds \"" + toUtf8(data.conflictItemName) + "\"";
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

/// A point has commas.
void appendValue(std::string& line, const VALTYPE& value, std::uint32_t digits)
{
    const bool isPoint = value.type != 0;
    line += isPoint ? "\"" : "";
    appendData(line, value, digits);
    line += isPoint ? "\"" : "";
}

class TableRun
{
public:
    explicit TableRun(const Options& given)
        : options(given), compileOptions(withoutEvaluation(given)), name(nameOf(given.table->file)),
          source(given.table->file), reader(source, wasInterrupted), calculator(compileOptions)
    {}

    int run()
    {
        defineHostNames(calculator);
        readHeadings();
        if (!compile())
        {
            return statusFailure;
        }
        writeHeading();
        computeRows();
        progress.clear();
        if (nbBroken != 0 && options.table->skipBroken)
        {
            std::cerr << "mathexpr: " << name << ": " << std::to_string(nbBroken) << " of " << std::to_string(nbRows)
                      << " rows are broken and have no result\n";
        }
        return nbBroken != 0 ? statusFailure : statusOk;
    }

private:
    bool compile()
    {
        const Answer compiled = calculator.compute(options.expressions.front());
        if (compiled.failed && !compiled.trouble.empty())
        {
            throw TableTrouble{"the expression is " + compiled.trouble};
        }
        reportPlain(compiled);
        return !compiled.failed;
    }

    void computeRows()
    {
        TableBatch batch(usedColumns());
        std::vector<VALTYPE> values(batch.columns().size());
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
            if (!isBroken)
            {
                batch.add(reader.line(), values);
                continue;
            }
            batch.addBroken(reader.line(), complaint);
            if (!options.table->skipBroken)
            {
                finishBatch(batch);
                return;
            }
        }
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

    static Options withoutEvaluation(Options given)
    {
        given.repeat = 0;
        return given;
    }

    void defineHostNames(Calculator& target) const
    {
        for (const Options::HostName& hostName : options.hostNames)
        {
            const std::string trouble = target.defineHostName(hostName);
            if (!trouble.empty())
            {
                throw TableTrouble{"--set " + hostName.name + ": " + trouble};
            }
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
            const std::string where = "column " + std::to_string(headings.size() + 1);
            const std::string heading(withoutBlanks(cell));
            const auto wide = toWide(heading);
            if (!wide)
            {
                throw TableTrouble{where + ": the heading is not UTF-8"};
            }
            if (const VALTYPE* const earlier = mathexpr::getVariableAddress(calculator.expression(), wide->c_str()))
            {
                const auto first = std::ranges::find_if(headings, [&](const std::wstring& other) {
                    return mathexpr::getVariableAddress(calculator.expression(), other.c_str()) == earlier;
                });
                std::string trouble = where;
                trouble.append(": the heading \"").append(heading).append("\" is that of column ");
                trouble.append(std::to_string(first - headings.begin() + 1)).append(" too");
                throw TableTrouble{trouble};
            }
            define(*wide, where + ": the heading");
            headings.push_back(*wide);
        }
    }

    void define(const std::wstring& variable, const std::string& what)
    {
        try
        {
            mathexpr::setVariable(calculator.expression(), variable.c_str(), VALTYPE{});
        }
        catch (const mathexpr::DefinitionException& exception)
        {
            throw TableTrouble{what + " \"" + toUtf8(variable) +
                               "\" cannot be a name: " + refusalOf(exception.entries.front().data)};
        }
    }

    void writeHeading()
    {
        const std::string assigned = assignedName(options.expressions.front());
        if (!assigned.empty() && !mathexpr::getVariableAddress(calculator.expression(), toWide(assigned)->c_str()))
        {
            define(*toWide(assigned), "the assigned name");
        }
        output = assigned.empty() ? "result" : assigned;
        output += '\n';
    }

    std::vector<TableColumn> usedColumns()
    {
        std::vector<TableColumn> columns;
        for (const std::wstring& used : mathexpr::getUsedNames(calculator.expression()))
        {
            const auto heading = std::ranges::find_if(headings, [&](const std::wstring& other) {
                return mathexpr::getVariableAddress(calculator.expression(), other.c_str()) ==
                       mathexpr::getVariableAddress(calculator.expression(), used.c_str());
            });
            if (heading != headings.end())
            {
                columns.push_back({static_cast<std::size_t>(heading - headings.begin()), *heading});
            }
        }
        return columns;
    }

    /// Reads the cells that the expression uses.
    /// @return what is wrong with the row; empty where nothing is
    std::string readRow(const TableBatch& batch, std::vector<VALTYPE>& values) const
    {
        const auto& cells = reader.cells();
        if (cells.size() != headings.size())
        {
            return "it has " + std::to_string(cells.size()) + (cells.size() == 1 ? " cell" : " cells") +
                   " instead of " + std::to_string(headings.size());
        }
        for (std::size_t j = 0; j < values.size(); ++j)
        {
            const TableColumn& column = batch.columns()[j];
            const auto value = cellValue(cells[column.index]);
            if (!value)
            {
                const std::string cell(cells[column.index].substr(0, 40));
                return toUtf8(column.name) +
                       (cell.empty() ? " is empty" : " is neither a number nor a point: \"" + cell + "\"");
            }
            values[j] = *value;
        }
        return {};
    }

    /// Evaluates the rows of a batch, writes and reports them, and empties it.
    /// @return false where a broken row ends the work
    bool finishBatch(TableBatch& batch)
    {
        bool goesOn = true;
        if (batch.size() != 0)
        {
            batch.evaluate(calculator.expression(), options.table->threads);
        }
        for (std::size_t row = 0; goesOn && row < batch.size(); ++row)
        {
            ++nbRows;
            if (batch.complaint(row).empty() && !batch.isRefused(row))
            {
                appendValue(output, batch.result(row), options.digits.value_or(exactDigits));
                output += '\n';
                continue;
            }
            ++nbBroken;
            reportBroken(batch, row);
            goesOn = options.table->skipBroken;
            output += goesOn ? "\n" : "";
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

    void reportBroken(const TableBatch& batch, std::size_t row)
    {
        progress.clear();
        std::cerr << "mathexpr: " << name << ": line " << std::to_string(batch.line(row)) << ": "
                  << (batch.complaint(row).empty() ? refusal(batch, row) : batch.complaint(row)) << '\n';
    }

    /// Why the expression has no value for a row: what it says when it is computed for this row alone.
    std::string refusal(const TableBatch& batch, std::size_t row) const
    {
        Calculator alone(options);
        defineHostNames(alone);
        for (std::size_t j = 0; j < batch.columns().size(); ++j)
        {
            mathexpr::setVariable(alone.expression(), batch.columns()[j].name.c_str(), batch.value(row, j));
        }
        return failureText(alone.compute(options.expressions.front()));
    }

    const Options& options;
    const Options compileOptions;
    const std::string name;
    TableSource source;
    TableReader reader;
    Calculator calculator;
    std::vector<std::wstring> headings;
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
