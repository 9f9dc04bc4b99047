// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSignature.h - the signature of the function call at the cursor.
#pragma once

#include "mathexpr/MathExpression.h"

#include <optional>
#include <string>
#include <string_view>

/// A signature such as "dist(point x, point y)", in three pieces; all UTF-8.
struct Signature
{
    std::string before;
    std::string current;  ///< The parameter at the cursor; empty if there are too many arguments.
    std::string after;
};

/// The signature of the innermost open call; nothing outside of calls, or if the function is unknown.
/// @param text  from the beginning of the line to the cursor
std::optional<Signature> signatureAt(const MathExpression& expression, std::string_view text);
