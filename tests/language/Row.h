// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Row.h - a line of a data file: what to type, and the expected outcome. FORMAT.md describes the format.
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

/// Names and their values. The host knows a name without a value, but writes no value for it.
using Bindings = std::map<std::wstring, std::optional<VALTYPE>>;

enum class Stage
{
    Compile,
    Evaluate,
};

/// The latest entry of an exception, and the number of entries.
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

/// Inclusive bounds on a number.
struct ExpectedRange
{
    double least = 0.0;
    double greatest = 0.0;
};

/// A refusal. With messages, the message is shown and the call returns false; without, the exception is raised, or the
/// call returns false if there is no exception.
struct ExpectedFailure
{
    Stage stage = Stage::Compile;
    std::optional<std::uint32_t> message;
    bool messageAlways = false;  // shown even without messages
    std::optional<ExpectedRecord> record;
    bool raisedAlways = false;  // raised even with messages
};

/// The expected outcome of an evaluation, after variables were changed in place.
struct Outcome
{
    Bindings changes;
    std::variant<ExpectedValue, ExpectedRange, ExpectedFailure> expected;
    std::string source;
};

/// A text to type, or a command between texts.
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
    std::vector<Outcome> written;                    // a single one: the same at every evaluation
    std::optional<std::vector<Outcome>> hidden;      // with hidden operands; absent: there is no such form
    std::optional<std::vector<std::wstring>> asked;  // names looked up in the host; absent: any
};

struct Row
{
    int line = 0;
    std::string source;
    Bindings host;
    std::optional<std::uint32_t> limit;  // on integer literals; only CMathExpr has one
    std::vector<Step> steps;
};

/// A line that is not a row: its position, and what is wrong with it.
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
