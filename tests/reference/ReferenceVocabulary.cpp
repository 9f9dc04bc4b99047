// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceVocabulary.cpp - the combined lists of items, and their look-ups.
#include "ReferenceVocabulary.h"

#include <algorithm>

namespace reference {

const std::vector<Item>& operators()
{
    static const std::vector<Item> list = [] {
        std::vector<Item> made;
        addOperators(made);
        std::stable_sort(made.begin(), made.end(),
                         [](const Item& a, const Item& b) { return a.symbol.size() > b.symbol.size(); });
        return made;
    }();
    return list;
}

const std::vector<Item>& functions()
{
    static const std::vector<Item> list = [] {
        std::vector<Item> made;
        addCoreFunctions(made);
        addConversions(made);
        addGeometry(made);
        return made;
    }();
    return list;
}

std::wstring operatorSymbolAt(const std::wstring& text, std::size_t index)
{
    for (const Item& item : operators())
    {
        if (text.compare(index, item.symbol.size(), item.symbol) == 0)
        {
            return item.symbol;
        }
    }
    return {};
}

const Item* findOperator(const std::wstring& symbol, bool unary)
{
    for (const Item& item : operators())
    {
        if (item.symbol == symbol && item.unary == unary)
        {
            return &item;
        }
    }
    return nullptr;
}

bool isFunction(const std::wstring& name)
{
    const std::vector<Item>& list = functions();
    return std::any_of(list.begin(), list.end(), [&](const Item& item) { return item.symbol == name; });
}

const Item* findOverload(const std::wstring& name, std::uint32_t nbArgs)
{
    const Item* candidate = nullptr;
    for (const Item& item : functions())
    {
        if (item.symbol != name)
        {
            continue;
        }
        if (item.nbArgs == anyNumberOfArguments)
        {
            if (nbArgs > 0 || name == L"point")
            {
                candidate = &item;
            }
        }
        else if (item.nbArgs == nbArgs)
        {
            return &item;
        }
    }
    return candidate;
}

std::optional<double> findConstant(const std::wstring& name)
{
    if (name == L"pi" || name == L"PI")
    {
        return 3.14159265359;
    }
    if (name == L"e" || name == L"E")
    {
        return 2.718281828459045;
    }
    return std::nullopt;
}

bool isNumber(const std::wstring& token)
{
    return token.find_first_not_of(L"0123456789.") == std::wstring::npos &&
           std::count(token.begin(), token.end(), L'.') <= 1;
}

void requireNumber(const VALTYPE& value)
{
    if (value.type != 0)
    {
        Failure failure;
        failure.raised.exID = 15;
        throw failure;
    }
}

std::int32_t toInteger(double value)
{
    if (value > -2147483649.0 && value < 2147483648.0)
    {
        return static_cast<std::int32_t>(value);
    }
    return INT32_MIN;
}
}
