// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Answer.h - all that is known about one expression once it has been computed; what the reports print.
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

/// An exception that the library has raised: its newest entry, and how many there are. A field that its kind does not
/// have is 0 or empty.
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
    std::optional<Stage> failed;         ///< Where it failed; nothing when all is well.
    std::vector<VALTYPE> values;         ///< The evaluations that succeeded.
    std::vector<ShownMessage> messages;  ///< In order.
    std::optional<RaisedException> exception;
    std::optional<mathexpr::ExpressionDiagnostic> diagnostic;  ///< Where the library failed, and why.
    std::vector<std::string> asked;  ///< The names asked of the host, in order, answered or not.
    std::string trouble;             ///< What went wrong outside the language, such as a text that is not UTF-8.
};
