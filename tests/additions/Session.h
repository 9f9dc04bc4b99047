// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Session.h - an expression object under test, with a host that knows a few names, and a record of all effects.
#pragma once

#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "tests/MadeValues.h"
#include "tests/support/MessageRecorder.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

class Host final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;

    std::map<std::wstring, VALTYPE> names;
    mutable std::vector<std::wstring> asked;
};

/// The outcome of a text.
struct Outcome
{
    bool compiled = false;
    bool evaluated = false;
    std::optional<SMTParsingExcepData> parsing;
    std::optional<SMTDefExcepData> definition;
    std::vector<std::uint32_t> messages;
    std::vector<std::wstring> messageTexts;
    VALTYPE value;
};

class Session
{
public:
    explicit Session(bool silent);

    Outcome run(const wchar_t* text);
    mathexpr::ExpressionDiagnostic diagnostic() { return mathexpr::getDiagnostic(expression); }

    Host host;
    MessageRecorder shown;
    MathExpression expression;
};
