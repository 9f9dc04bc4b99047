// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Options.cpp - the command line.
//
// All options are long, and expressions are never passed to the option parser: it would read "-2^2" as a short option
// and "[1,2]" as a list. The arguments are therefore sorted first, using the parser's table of options.

#include "tools/calc/options/Options.h"

#include "tools/calc/options/CompletionScripts.h"
#include "tools/calc/settings/Settings.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/TableFormat.h"
#include "tools/calc/text/Wrapped.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <iterator>
#include <limits>
#include <memory>
#include <string_view>
#include <system_error>

namespace {

constexpr const char* usageLine = "Usage: mathexpr [OPTION]... [--] [EXPRESSION]...";

/// Bounded, because all values of an expression are kept in memory.
constexpr std::uint32_t maxRepeat = 1'000'000;

constexpr std::uint32_t mostThreads = 256;

class HelpFormatter final : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App*, std::string) const override { return std::string(usageLine) + "\n"; }

    /// The option and its description. Omits its conflicts and requirements, which the error messages mention.
    std::string make_option(const CLI::Option* option, bool) const override
    {
        constexpr std::size_t indentation = 26;
        constexpr std::size_t columns = 79;
        std::string line = "  --" + option->get_lnames().front();
        line += option->get_items_expected_max() > 0 ? " " + option->get_type_name() : "";
        if (line.size() + 1 > indentation)
        {
            line += '\n' + std::string(indentation, ' ');
        }
        else
        {
            line.resize(indentation, ' ');
        }
        return line + wrapped(option->get_description(), indentation, indentation, columns) + '\n';
    }
};

/// Parses an option's value: a decimal integer from lowest to highest.
std::uint32_t wholeNumber(const std::string& option, const std::string& text, std::uint32_t lowest,
                          std::uint32_t highest)
{
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [parsedEnd, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || parsedEnd != end || number < lowest || number > highest)
    {
        throw CLI::ValidationError(option, "not a whole number from " + std::to_string(lowest) + " to " +
                                               std::to_string(highest) + ": " + text);
    }
    return number;
}

/// Splits a text such as NAME=EXPRESSION.
Options::HostName hostName(const std::string& option, const std::string& form, const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
    {
        throw CLI::ValidationError(option, "not " + form + ": " + text);
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

/// Whether the argument is an option whose value is the next argument.
bool takesNextArgument(const CLI::App& app, const std::string& argument)
{
    const CLI::Option* option = app.get_option_no_throw(argument);
    return option != nullptr && option->get_items_expected_max() > 0;
}

struct SortedArguments
{
    std::vector<std::string> options;  ///< Each with its value, as --name=value.
    std::vector<std::string> expressions;
};

SortedArguments sortArguments(const CLI::App& app, const std::vector<std::string>& arguments)
{
    SortedArguments sorted;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument)
    {
        if (!argument->starts_with("--"))
        {
            sorted.expressions.push_back(*argument);
        }
        else if (*argument == "--")
        {
            sorted.expressions.insert(sorted.expressions.end(), argument + 1, arguments.end());
            break;
        }
        else if (takesNextArgument(app, *argument) && argument + 1 != arguments.end())
        {
            const std::string& name = *argument;
            sorted.options.push_back(name + "=" + *++argument);
        }
        else
        {
            sorted.options.push_back(*argument);
        }
    }
    return sorted;
}

/// The visible options, for the shells' completion.
std::vector<CompletedOption> completedOptions(const CLI::App& app)
{
    std::vector<CompletedOption> completed;
    for (const CLI::Option* option : app.get_options())
    {
        if (option->get_lnames().empty() || option->get_group().empty())
        {
            continue;
        }
        const bool takesValue = option->get_items_expected_max() > 0;
        completed.push_back({option->get_lnames().front(), option->get_description(),
                             takesValue ? option->get_type_name() : std::string(),
                             option->get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll});
    }
    return completed;
}

}

ExitStatus usageError(const std::string& what)
{
    std::cerr << "mathexpr: " << displayable(what, 0) << '\n' << usageLine << '\n';
    return {statusUsage};
}

std::variant<Options, ExitStatus> readOptions(int argc, const char* const* argv)
{
    Options options;
    CLI::App app("Evaluates expressions: numbers, points, units, names.\n"
                 "Without an EXPRESSION, opens a prompt on a terminal; otherwise reads expressions\n"
                 "from standard input, one per line (UTF-8).\n");
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_help_flag("--help", "Print this text and exit");
    app.set_version_flag("--version", "mathexpr " MATHEXPR_VERSION, "Print the version and exit");
    app.add_flag("--json", options.json, "Print one JSON object per line")->disable_flag_override();
    auto* const silent =
        app.add_flag("--silent", options.silent, "Show no messages; failures are exceptions")->disable_flag_override();
    app.add_flag("--fresh", options.fresh, "Forget all variables after each expression")->disable_flag_override();
    auto* const set =
        app.add_option_function<std::vector<std::string>>(
               "--set",
               [&](const std::vector<std::string>& texts) {
                   std::ranges::transform(texts, std::back_inserter(options.hostNames), [](const std::string& text) {
                       return hostName("--set", "NAME=EXPRESSION", text);
                   });
               },
               "Supply the value of EXPRESSION for NAME, as a host would (repeatable)")
            ->type_name("NAME=EXPRESSION")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option_function<std::string>(
           "--digits",
           [&](const std::string& text) {
               options.digits = digitsFrom(text);
               if (!options.digits)
               {
                   throw CLI::ValidationError("--digits", "neither a whole number from 1 to 17 nor exact: " + text);
               }
           },
           "Print values with N significant digits, 1 to 17 (15), or \"exact\"")
        ->type_name("N");
    app.add_option_function<std::string>(
           "--repeat", [&](const std::string& text) { options.repeat = wholeNumber("--repeat", text, 1, maxRepeat); },
           "Evaluate each expression N times")
        ->type_name("N");
    app.add_option_function<std::string>(
           "--max-integer",
           [&](const std::string& text) {
               options.maxInteger = wholeNumber("--max-integer", text, 0, std::numeric_limits<std::uint32_t>::max());
           },
           "Refuse whole numbers greater than N; not with --set or --silent")
        ->type_name("N")
        ->excludes(set, silent);
    auto* const list = app.add_flag("--list", options.list, "List all constants, operators and functions and exit")
                           ->disable_flag_override()
                           ->excludes(set, silent);
    app.add_option("--describe", options.described, "Explain NAME with computed examples and exit (repeatable)")
        ->type_name("NAME")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->excludes(list, set, silent);
    auto* const find =
        app.add_option("--find", options.wanted, "List the functions for a unit or matching words, and exit")
            ->type_name("WORDS")
            ->excludes(list, set, silent);
    Options::Table table;
    auto* const tableFile = app.add_option("--table", table.file,
                                           "Evaluate the expressions for each row of a CSV table, whose headings "
                                           "are names (-: standard input)")
                                ->type_name("FILE")
                                ->excludes(list, find, "--fresh", "--repeat", "--max-integer", "--describe");
    app.add_flag("--skip-broken", table.skipBroken, "Leave the results of broken rows empty and continue")
        ->disable_flag_override()
        ->needs(tableFile);
    app.add_flag("--append", table.append, "Write each row unchanged, followed by its results")
        ->disable_flag_override()
        ->needs(tableFile);
    app.add_option("--where", table.where, "Omit rows for which EXPRESSION is 0")
        ->type_name("EXPRESSION")
        ->needs(tableFile);
    app.add_option_function<std::vector<std::string>>(
           "--name",
           [&](const std::vector<std::string>& texts) {
               for (const std::string& text : texts)
               {
                   const Options::HostName renamed = hostName("--name", "NAME=HEADING", text);
                   table.names.push_back({renamed.name, renamed.expression});
               }
           },
           "Rename the column HEADING to NAME (repeatable)")
        ->type_name("NAME=HEADING")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->needs(tableFile);
    app.add_option_function<std::string>(
           "--separator",
           [&](const std::string& text) {
               table.separator = separatorFrom(text);
               if (!table.separator)
               {
                   throw CLI::ValidationError("--separator", R"(none of ",", ";" and "tab": )" + text);
               }
           },
           R"(Separate cells by ",", ";" or "tab"; default: guessed from the headings)")
        ->type_name("C")
        ->needs(tableFile);
    app.add_flag("--decimal-comma", table.decimalComma, "Read and write numbers with a decimal comma")
        ->disable_flag_override()
        ->needs(tableFile);
    app.add_option_function<std::string>(
           "--threads",
           [&](const std::string& text) { table.threads = wholeNumber("--threads", text, 1, mostThreads); },
           "Read, compute and write on N threads")
        ->type_name("N")
        ->needs(tableFile);
    std::string completedShell;
    app.add_option("--completion", completedShell,
                   "Print the script that completes options in bash, zsh or fish and exit")
        ->type_name("SHELL");
    app.footer("Failures go to standard error. Exit status: 0 all evaluated,\n"
               "1 an expression failed, 2 an option is wrong, 130 Ctrl-C.");
    constexpr const char* telling = "Instead of evaluating";
    constexpr const char* ofTables = "Tables";
    for (const char* const name : {"--help", "--version", "--list", "--find", "--describe", "--completion"})
    {
        app.get_option(name)->group(telling);
    }
    for (const char* const name :
         {"--table", "--append", "--where", "--name", "--separator", "--decimal-comma", "--skip-broken", "--threads"})
    {
        app.get_option(name)->group(ofTables);
    }

    SortedArguments arguments = sortArguments(app, {argv + 1, argv + argc});
    std::ranges::reverse(arguments.options);  // the parser expects them in reverse order
    try
    {
        app.parse(arguments.options);
    }
    catch (const CLI::Success& request)
    {
        return ExitStatus{app.exit(request)};
    }
    catch (const CLI::ParseError& error)
    {
        return usageError(error.what());
    }
    if (!completedShell.empty())
    {
        if (!arguments.expressions.empty())
        {
            return usageError("--completion computes no expressions");
        }
        const std::string script = completionScript(completedOptions(app), completedShell);
        if (script.empty())
        {
            return usageError("--completion knows bash, zsh and fish: " + completedShell);
        }
        std::cout << script;
        return ExitStatus{statusOk};
    }
    options.expressions = std::move(arguments.expressions);
    const bool onlyTells = options.list || !options.described.empty() || find->count() != 0;
    if (onlyTells && !options.expressions.empty())
    {
        return usageError(std::string(options.list         ? "--list"
                                      : find->count() != 0 ? "--find"
                                                           : "--describe") +
                          " computes no expressions");
    }
    if (tableFile->count() != 0)
    {
        if (options.expressions.empty())
        {
            return usageError("--table computes expressions, and there is none");
        }
        options.table = table;
    }
    return options;
}
