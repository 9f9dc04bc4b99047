// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Options.h - what the command line asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

struct Options
{
    /// A name that the host answers, and the expression that gives its value; both UTF-8.
    struct HostName
    {
        std::string name;
        std::string expression;
    };

    /// A heading of a table, and the name that expressions have for it; both UTF-8.
    struct ColumnName
    {
        std::string name;
        std::string heading;
    };

    /// A table to compute the expressions over.
    struct Table
    {
        std::string file;  ///< "-": standard input.
        bool skipBroken = false;
        bool append = false;            ///< Writes each row before its results.
        bool decimalComma = false;      ///< In numbers, read and written.
        std::optional<char> separator;  ///< Absent: what the headings show.
        std::optional<std::string> where;
        std::vector<ColumnName> names;
        std::uint32_t threads = 1;
    };

    std::vector<std::string> expressions;  ///< UTF-8, in order; none: they come from standard input.
    std::vector<HostName> hostNames;
    std::optional<Table> table;
    std::uint32_t repeat = 1;                 ///< How often each program is evaluated.
    std::optional<std::uint32_t> maxInteger;  ///< The limit of one-shot calculation; absent: expression objects.
    std::optional<std::uint32_t> digits;      ///< Of values; absent: the usual number, and all of a table's.
    std::string wanted;                       ///< Words to search the vocabulary for instead of computing.
    bool json = false;
    bool silent = false;
    bool fresh = false;                  ///< A new expression object for every expression.
    bool list = false;                   ///< Lists the vocabulary instead of computing.
    std::vector<std::string> described;  ///< Items to tell about instead of computing; UTF-8.
};

/// The program has done what was asked (help, version) or has complained, and is to end with this status.
struct ExitStatus
{
    int status;
};

/// Exit statuses of the program.
inline constexpr int statusOk = 0;
inline constexpr int statusFailure = 1;
inline constexpr int statusUsage = 2;
inline constexpr int statusInterrupted = 130;  ///< As a shell has it of a program that Ctrl-C has ended.

/// Reads the command line. Help and version go to standard output, complaints with a usage line to standard error.
std::variant<Options, ExitStatus> readOptions(int argc, const char* const* argv);

/// Complains about an option: what is wrong and a usage line, on standard error.
ExitStatus usageError(const std::string& what);
