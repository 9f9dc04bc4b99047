// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EditorTexts.h - the texts that every editor service is tried with, and the host beside them.
#pragma once

#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MathExpression.h"
#include "tests/language/Row.h"

#include <functional>
#include <string>
#include <vector>

/// Answers names, offers them, and counts what it is asked for.
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

    /// Whether a text compiles; what is raised instead does not count.
    bool compiles(const std::wstring& text);

    EditorHost host;
    MathExpression expression;
};

struct TypedText
{
    std::wstring text;
    Bindings host;
    std::string where;  ///< For a failing test.
};

/// The texts of all rows of the language tests.
const std::vector<TypedText>& languageTexts();

/// Calls work with each of them and with each of its beginnings, the empty one included; of a very long text with some.
void forEachBeginning(const std::function<void(const TypedText&)>& work);

/// The texts of the golden programs.
std::vector<std::wstring> goldenTexts();

std::wstring withoutBlanks(const std::wstring& text);
