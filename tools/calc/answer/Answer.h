// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Answer.h - the outcome of an expression, input of the reports.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/ValType.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A message that the library has shown.
struct ShownMessage
{
    std::uint32_t id;
    std::string text;
};

/// An exception of the library: its newest entry, and the number of entries. Fields that do not apply are 0 or empty.
struct RaisedException
{
    enum class Kind
    {
        Parsing,
        Definition
    };

    Kind kind;
    std::uint32_t exID;
    std::uint32_t pos;
    std::string itemName;
    std::uint32_t nbArgs;
    std::string conflictItemName;
    std::string file;
    std::uint32_t line;
    std::size_t entries;
};

struct Answer
{
    enum class Stage
    {
        Compile,
        Evaluate
    };

    std::string expression;              ///< As given; all texts here are UTF-8.
    std::optional<Stage> failed;         ///< The stage that failed; absent on success.
    std::vector<VALTYPE> values;         ///< One per successful evaluation.
    std::vector<ShownMessage> messages;  ///< In the order shown.
    std::optional<RaisedException> exception;
    std::optional<mathexpr::ExpressionDiagnostic> diagnostic;  ///< The library's diagnostic, if it failed.
    std::vector<std::string> asked;  ///< Names looked up in the host, in order, whether found or not.
    std::string trouble;             ///< An error outside the language, such as ill-formed UTF-8.
};
