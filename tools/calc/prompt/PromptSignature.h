// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSignature.h - the function that is being called where the cursor stands, with its parameters.
#pragma once

#include "mathexpr/MathExpression.h"

#include <optional>
#include <string>
#include <string_view>

/// Such as "dist(point x, point y)", in three pieces; all of them UTF-8.
struct Signature
{
    std::string before;
    std::string current;  ///< The parameter that the cursor is in; empty where there are too many arguments.
    std::string after;
};

/// The innermost call that is open; nothing outside of calls, and where no such function can be called.
/// @param text  from the begin of the line to the cursor
std::optional<Signature> signatureAt(const MathExpression& expression, std::string_view text);
