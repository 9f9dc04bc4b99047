// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Row.h - one line of a data file: what to type, and what to expect of it. FORMAT.md tells how a row is written.
#pragma once

#include "tests/language/Values.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Names and their values. A name without a value is one that the host knows without writing a value.
using Bindings = std::map<std::wstring, std::optional<VALTYPE>>;

enum class Stage
{
    Compile,
    Evaluate,
};

/// The newest entry of an exception, and how many entries there are.
struct ExpectedRecord
{
    enum class Kind
    {
        Parsing,
        Definition,
    };

    Kind kind = Kind::Parsing;
    std::uint32_t exID = 0;
    std::uint32_t pos = 0;
    std::uint32_t nbArgs = 0;
    std::wstring itemName;
    std::wstring conflictItemName;
    std::size_t entries = 1;

    bool operator==(const ExpectedRecord&) const = default;
};

/// A number anywhere between two bounds, which belong to it.
struct ExpectedRange
{
    double least = 0.0;
    double greatest = 0.0;
};

/// A refusal. With messages on, the message is shown and the answer is false; with messages off, the record is raised,
/// or the answer is false where there is no record.
struct ExpectedFailure
{
    Stage stage = Stage::Compile;
    std::optional<std::uint32_t> message;
    bool messageAlways = false;  // shown with messages off, too
    std::optional<ExpectedRecord> record;
    bool raisedAlways = false;  // raised with messages on, too
};

/// What one evaluation is to give, after variables were changed in place.
struct Outcome
{
    Bindings changes;
    std::variant<ExpectedValue, ExpectedRange, ExpectedFailure> expected;
    std::string source;
};

/// A text to type, or one of the commands that a row may hold between texts.
struct Step
{
    enum class Kind
    {
        Expression,
        DropAssignment,
        Limit,
    };

    Kind kind = Kind::Expression;
    std::wstring text;
    std::uint32_t limit = 0;
    std::vector<Outcome> written;                    // one: the same at every evaluation
    std::optional<std::vector<Outcome>> hidden;      // with operands hidden; none: no such form
    std::optional<std::vector<std::wstring>> asked;  // names that the host is asked for; none: any
};

struct Row
{
    int line = 0;
    std::string source;
    Bindings host;
    std::optional<std::uint32_t> limit;  // of integer literals; only CMathExpr can be given one
    std::vector<Step> steps;
};

/// A line that is not a row: where, and what is wrong with it.
struct RowError
{
    int line = 0;
    std::string what;
};

struct DataFile
{
    std::vector<Row> rows;
    std::vector<RowError> errors;
};

DataFile parseDataFile(std::string_view text);
DataFile readDataFile(const std::filesystem::path& path);
