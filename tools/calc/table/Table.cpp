// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Table.cpp - resolves headings and expressions once. Then each thread claims one block of rows after another, computes
// it, and writes the results in the order of the blocks. At most one block per thread is in memory.

#include "tools/calc/table/Table.h"

#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/Variables.h"
#include "tools/calc/Calculator.h"
#include "tools/calc/report/PlainReport.h"
#include "tools/calc/table/TableBlocks.h"
#include "tools/calc/table/TableProgress.h"
#include "tools/calc/table/TableReader.h"
#include "tools/calc/table/TableSource.h"
#include "tools/calc/table/TableStage.h"
#include "tools/calc/table/TableWorker.h"
#include "tools/calc/terminal/Interrupt.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/TableFormat.h"
#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// Ends the work with an error message.
struct TableTrouble
{
    std::string text;
};

/// Ends the work at the user's request.
struct TableInterrupted
{
    std::uint64_t nbRows;  // written so far
};

/// The table's name in error messages.
std::string nameOf(const std::string& file)
{
    return file == "-" ? "standard input" : displayable(file, 0);
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

/// The name that an expression such as "a = x*2" assigns to; empty if it is not an assignment.
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

/// A heading of the table, and the name of its column in expressions.
struct Heading
{
    std::string text;
    std::wstring name;    // empty if it cannot be a name
    std::string refusal;  // the reason
};

class TableRun
{
public:
    explicit TableRun(const Options& given)
        : options(given), table(*given.table), name(nameOf(given.table->file)), source(given.table->file),
          blocks(source, wasInterrupted)
    {}
    TableRun(const TableRun&) = delete;
    TableRun& operator=(const TableRun&) = delete;

    /// Each stage has replaced the message display of the one before it, so they are destroyed in reverse order.
    ~TableRun()
    {
        while (!workers.empty())
        {
            workers.pop_back();
        }
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
        addWorkers();
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
        const char separator = table.separator.value_or(guessSeparator(blocks.firstLine()));
        layout.separator = separator;
        blocks.setSeparator(separator);
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
        TableBlock block;
        const TableBlocks::Outcome outcome = blocks.nextRow(block);
        end(outcome);
        if (outcome == TableBlocks::Outcome::End)
        {
            throw TableTrouble{"there are no headings"};
        }
        TableReader reader(block.rows(), block.firstLine(), layout.separator);
        if (reader.next() != TableReader::Outcome::Row)
        {
            throw TableTrouble{"line 1: its quotes are not in order"};
        }
        for (const std::string_view cell : reader.cells())
        {
            headings.push_back({std::string(withoutBlanks(cell)), {}, {}});
        }
        layout.headingCells = headings.size();
        while (headings.size() > 1 && headings.back().text.empty())
        {
            headings.pop_back();
        }
        layout.headings = headings.size();
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

    /// Determines which headings can be names, using a separate object.
    void nameHeadings()
    {
        MathExpression names(true, nullptr);
        for (Heading& heading : headings)
        {
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

    /// Compiles an expression, which may read all headings that can be names and all earlier results.
    bool addStage(const std::string& expression, const std::string& result)
    {
        const Answer compiled = compileStage(stages, expression, result);
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
        stages.back().setSources(sourcesOf(stages.back().calculator().expression()));
        return true;
    }

    Answer compileStage(std::deque<TableStage>& compiledStages, const std::string& expression,
                        const std::string& result) const
    {
        Calculator& calculator = compiledStages.emplace_back(options, expression, result).calculator();
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
        for (std::size_t index = 0; index + 1 < compiledStages.size(); ++index)
        {
            if (const auto earlier = toWide(compiledStages[index].name()); earlier && !earlier->empty())
            {
                mathexpr::setVariable(names, earlier->c_str(), VALTYPE{});
            }
        }
        if (!assignedName(expression).empty())
        {
            defineResult(names, result);
        }
        return calculator.compute(expression);
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

    /// What the names in the compiled expression refer to: the latest result of that name, or a column.
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
                continue;  // a name of the host
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

    /// The column of the batch for a column of the table.
    std::size_t batchColumn(std::size_t heading, const std::wstring& used)
    {
        std::vector<TableColumn>& columns = layout.columns;
        const auto known = std::ranges::find(columns, heading, &TableColumn::index);
        const auto index = static_cast<std::size_t>(known - columns.begin());
        if (known == columns.end())
        {
            columns.push_back({heading, used});
        }
        return index;
    }

    void writeHeading() const
    {
        if (options.json)
        {
            return;
        }
        std::string line = table.append ? headingText : std::string();
        const std::size_t firstResult = table.where ? 1 : 0;
        for (std::size_t index = firstResult; index < stages.size(); ++index)
        {
            line.append(table.append || index != firstResult ? 1 : 0, layout.separator);
            appendCell(line, stages[index].name(), layout.separator);
        }
        writeOutput(line + '\n');
    }

    /// Creates a worker for each thread: the first takes over the compiled stages, the others get copies.
    void addWorkers()
    {
        workers.emplace_back(options, layout, std::move(stages));
        stages.clear();
        for (std::uint32_t count = 1; count < table.threads; ++count)
        {
            std::deque<TableStage> more;
            for (const TableStage& stage : workers.front().stages())
            {
                compileStage(more, stage.expression(), stage.name());
                more.back().setSources(stage.readsFrom());
            }
            workers.emplace_back(options, layout, std::move(more));
        }
    }

    void computeRows()
    {
        std::vector<std::thread> threads;
        threads.reserve(workers.size());
        try
        {
            for (std::size_t index = 1; index < workers.size(); ++index)
            {
                threads.emplace_back([this, index] { work(workers[index]); });
            }
        }
        catch (const std::system_error&)
        {
            // The system starts no more threads; continue with those that run.
        }
        work(workers.front());
        for (std::thread& thread : threads)
        {
            thread.join();
        }
        if (failure)
        {
            std::rethrow_exception(failure);
        }
        if (!stopped)
        {
            end(ending);
        }
    }

    /// Claims and computes blocks, and writes each one when its turn comes.
    void work(TableWorker& worker) noexcept
    {
        TableBlock block;
        while (const std::optional<std::uint64_t> turn = takeBlock(block))
        {
            TableResult result;
            std::exception_ptr caught;
            try
            {
                result = worker.compute(block.rows(), block.firstLine());
            }
            catch (...)
            {
                caught = std::current_exception();
            }
            std::unique_lock lock(outputMutex);
            turnCame.wait(lock, [&] { return *turn == turnsDone; });
            try
            {
                if (caught)
                {
                    std::rethrow_exception(caught);
                }
                write(result);
            }
            catch (...)
            {
                stopWith(std::current_exception());
            }
            ++turnsDone;
            turnCame.notify_all();
        }
    }

    /// @return the block's turn; nothing if no block is left
    std::optional<std::uint64_t> takeBlock(TableBlock& block)
    {
        const std::lock_guard lock(inputMutex);
        if (stopped || ending != TableBlocks::Outcome::Block)
        {
            return std::nullopt;
        }
        try
        {
            ending = blocks.next(block);
        }
        catch (...)
        {
            const std::lock_guard outputLock(outputMutex);
            stopWith(std::current_exception());
            return std::nullopt;
        }
        return ending == TableBlocks::Outcome::Block ? std::optional(turnsTaken++) : std::nullopt;
    }

    /// Stops all threads. The caller holds outputMutex.
    void stopWith(std::exception_ptr caught) noexcept
    {
        failure = failure ? failure : std::move(caught);
        stopped = true;
    }

    /// Throws if the table ended because it is unreadable or the user interrupted.
    void end(TableBlocks::Outcome outcome) const
    {
        if (outcome == TableBlocks::Outcome::Unreadable)
        {
            throw TableTrouble{"line " + std::to_string(blocks.line()) + ": " + blocks.trouble()};
        }
        if (outcome == TableBlocks::Outcome::Interrupted)
        {
            throw TableInterrupted{nbRows};
        }
    }

    /// Writes and reports the rows of a block, unless a broken row has ended the work.
    void write(const TableResult& result)
    {
        if (stopped)
        {
            return;
        }
        nbRows += result.rowCount;
        nbBroken += result.brokenCount;
        if (!result.complaints.empty())
        {
            progress.clear();
            std::cerr << result.complaints;
        }
        writeOutput(result.output);
        progress.show(nbRows);
        stopped = result.isLast;
    }

    static void writeOutput(const std::string& output)
    {
        if (!std::cout.write(output.data(), static_cast<std::streamsize>(output.size())).flush())
        {
            throw TableTrouble{"standard output cannot be written: the result is not complete"};
        }
    }

    const Options& options;
    const Options::Table& table;
    const std::string name;
    TableSource source;
    TableBlocks blocks;
    TableLayout layout;
    std::vector<Heading> headings;
    std::string headingText;
    std::vector<std::wstring> duplicates;
    std::deque<TableStage> stages;  // the one of --where first; moved to the workers later
    std::deque<TableWorker> workers;
    std::size_t nbUnnamed = 0;

    std::mutex inputMutex;  // guards the blocks and the next turn to assign
    std::uint64_t turnsTaken = 0;
    TableBlocks::Outcome ending = TableBlocks::Outcome::Block;

    std::mutex outputMutex;  // guards all output and the turn to write
    std::condition_variable turnCame;
    std::uint64_t turnsDone = 0;
    TableProgress progress;
    std::uint64_t nbRows = 0;
    std::uint64_t nbBroken = 0;
    std::exception_ptr failure;
    std::atomic<bool> stopped = false;
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
