// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// main.cpp - mathexpr, the command-line calculator: computes expressions from its arguments or from standard input.

#include "tools/calc/Calculator.h"
#include "tools/calc/options/Options.h"
#include "tools/calc/prompt/Prompt.h"
#include "tools/calc/report/JsonReport.h"
#include "tools/calc/report/PlainReport.h"
#include "tools/calc/table/Table.h"
#include "tools/calc/terminal/Terminal.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/InputLine.h"
#include "tools/calc/vocabulary/VocabularyReport.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>

namespace {

/// Computes expressions, and reports each answer at once.
class Session
{
public:
    explicit Session(const Options& givenOptions, Calculator& givenCalculator)
        : calculator(givenCalculator), json(givenOptions.json)
    {
        style.isTerminal = standardErrorIsTerminal();
        style.digits = givenOptions.digits.value_or(usualDigits);
    }

    /// @param origin  location of the expression, for error messages about the text itself
    void compute(std::string_view expression, const std::string& origin)
    {
        const Answer answer = calculator.compute(expression);
        json ? reportJson(answer) : reportPlain(answer, {}, style);
        if (answer.failed)
        {
            failed = true;
        }
        if (!answer.trouble.empty())
        {
            std::cerr << "mathexpr: " << origin << ": " << answer.trouble << '\n';
        }
    }

    bool hasFailed() const { return failed; }

private:
    Calculator& calculator;
    TerminalStyle style;
    bool json;
    bool failed = false;
};

void computeLines(Session& session)
{
    // As in a shell, the prompt goes to standard error, so that standard output contains only answers.
    const bool prompting = standardInputIsTerminal();
    const auto readLine = [prompting](std::string& line) {
        if (prompting)
        {
            std::cerr << "> " << std::flush;
        }
        return static_cast<bool>(std::getline(std::cin, line));
    };
    std::string line;
    std::size_t number = 0;
    while (readLine(line))
    {
        ++number;
        const std::string_view expression = expressionOfLine(line, number);
        if (!isBlank(expression) && !isComment(expression))
        {
            session.compute(expression, "line " + std::to_string(number));
        }
    }
    if (prompting)
    {
        std::cerr << '\n';
    }
}

int finish(int status)
{
    if (!std::cout.flush())
    {
        std::cerr << "mathexpr: standard output cannot be written\n";
        return statusFailure;
    }
    return status;
}

int run(const Options& options)
{
    if (options.list)
    {
        listVocabulary(options.json);
        return finish(statusOk);
    }
    if (!options.described.empty())
    {
        return finish(describeItems(options.described, options.json) ? statusOk : statusFailure);
    }
    if (!options.wanted.empty())
    {
        const bool found = findItems(options.wanted);
        if (!found)
        {
            std::cerr << "mathexpr: nothing is known of " << displayable(options.wanted) << '\n';
        }
        return finish(found ? statusOk : statusFailure);
    }
    if (options.table)
    {
        return computeTable(options);
    }
    Calculator calculator(options);
    for (const Options::HostName& hostName : options.hostNames)
    {
        const std::string trouble = calculator.defineHostName(hostName);
        if (!trouble.empty())
        {
            return usageError("--set " + hostName.name + ": " + trouble).status;
        }
    }
    Session session(options, calculator);
    if (options.expressions.empty() && standardInputIsTerminal() && standardOutputIsTerminal())
    {
        runPrompt(options, calculator);
        return finish(statusOk);
    }
    if (options.expressions.empty())
    {
        computeLines(session);
    }
    for (std::size_t i = 0; i < options.expressions.size(); ++i)
    {
        session.compute(options.expressions[i], "expression " + std::to_string(i + 1));
    }
    return finish(session.hasFailed() ? statusFailure : statusOk);
}

}

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    try
    {
        const auto options = readOptions(argc, argv);
        if (const auto* exit = std::get_if<ExitStatus>(&options))
        {
            return exit->status;
        }
        return run(std::get<Options>(options));
    }
    catch (const std::exception& failure)
    {
        std::cerr << "mathexpr: " << displayable(failure.what(), 0) << '\n';
        return statusFailure;
    }
}
