// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptProbe.h - asks the library whether it would refuse an expression, so that the prompt need not know the language
// a second time.
#pragma once

#include "tools/calc/MessageRecorder.h"
#include "tools/calc/NamedValue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class Verdict
{
    Accepted,
    Undefined,  ///< A value that an item is not defined for, such as a divisor of 0; another value might do.
    Refused,
};

/// Tries expressions beside the session, whose variables stay as they are. What the library says meanwhile is not shown.
class PromptProbe
{
public:
    /// @param names       what has a value in the session
    /// @param maxInteger  the limit of one-shot calculation; absent: expression objects
    PromptProbe(std::vector<NamedValue> names, std::optional<std::uint32_t> maxInteger);

    /// @param expression  UTF-8
    Verdict judge(const std::string& expression) const;

private:
    MessageRecorder muffled;
    std::vector<NamedValue> names;
    std::optional<std::uint32_t> maxInteger;
};
