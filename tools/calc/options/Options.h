// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Options.h - the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

struct Options
{
    /// A name that the host supplies, and the expression of its value; both UTF-8.
    struct HostName
    {
        std::string name;
        std::string expression;
    };

    /// A heading of a table, and its name in expressions; both UTF-8.
    struct ColumnName
    {
        std::string name;
        std::string heading;
    };

    /// A table; the expressions are evaluated for each row.
    struct Table
    {
        std::string file;  ///< "-": standard input.
        bool skipBroken = false;
        bool append = false;            ///< Whether each row is written before its results.
        bool decimalComma = false;      ///< In numbers, both read and written.
        std::optional<char> separator;  ///< Absent: guessed from the headings.
        std::optional<std::string> where;
        std::vector<ColumnName> names;
        std::uint32_t threads = 1;
    };

    std::vector<std::string> expressions;  ///< UTF-8, in order; if empty, they are read from standard input.
    std::vector<HostName> hostNames;
    std::optional<Table> table;
    std::uint32_t repeat = 1;                 ///< Number of evaluations per program.
    std::optional<std::uint32_t> maxInteger;  ///< For one-shot calculation; if absent, expression objects are used.
    std::optional<std::uint32_t> digits;      ///< Of values; if absent, usualDigits, or exactDigits for a table.
    std::string wanted;                       ///< Words to search for in the vocabulary, instead of computing.
    bool json = false;
    bool silent = false;
    bool fresh = false;                  ///< Whether every expression gets a new expression object.
    bool list = false;                   ///< Whether to list the vocabulary, instead of computing.
    std::vector<std::string> described;  ///< Items to describe, instead of computing; UTF-8.
};

/// The program has printed help or the version, or has reported an error, and exits with this status.
struct ExitStatus
{
    int status;
};

/// Exit statuses of the program.
inline constexpr int statusOk = 0;
inline constexpr int statusFailure = 1;
inline constexpr int statusUsage = 2;
inline constexpr int statusInterrupted = 130;  ///< The status that shells report after Ctrl-C.

/// Parses the command line. Help and version go to standard output, errors with a usage line to standard error.
std::variant<Options, ExitStatus> readOptions(int argc, const char* const* argv);

/// Reports an error in an option, with a usage line, on standard error.
ExitStatus usageError(const std::string& what);
