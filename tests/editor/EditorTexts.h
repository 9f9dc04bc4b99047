// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EditorTexts.h - the texts with which every editor service is tested, and their host.
#pragma once

#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MathExpression.h"
#include "tests/language/Row.h"

#include <functional>
#include <string>
#include <vector>

/// Supplies names, lists them, and counts its calls.
class EditorHost final : public IMathExprService, public mathexpr::IMathExprNameSource
{
public:
    explicit EditorHost(Bindings bindings = {});

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;
    const wchar_t* getName(std::uint32_t index) const override;

    mutable std::size_t lookupCount = 0;

private:
    Bindings known;
    std::vector<std::wstring> names;
};

/// A silent expression object with that host.
class EditedExpression
{
public:
    explicit EditedExpression(Bindings bindings = {});

    /// Whether a text compiles; an exception counts as no.
    bool compiles(const std::wstring& text);

    EditorHost host;
    MathExpression expression;
};

struct TypedText
{
    std::wstring text;
    Bindings host;
    std::string where;  ///< For the message of a failing test.
};

/// The texts of all rows of the language tests.
const std::vector<TypedText>& languageTexts();

/// Calls work with each text and each of its prefixes, including the empty one. Very long texts use only some prefixes.
void forEachBeginning(const std::function<void(const TypedText&)>& work);

/// The texts of the golden programs.
std::vector<std::wstring> goldenTexts();

std::wstring withoutBlanks(const std::wstring& text);
