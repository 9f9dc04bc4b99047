// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostNames.cpp - names are compared exactly, including case.

#include "tools/calc/answer/HostNames.h"

#include "tools/calc/text/Utf8.h"

#include <iterator>
#include <string_view>
#include <utility>

void HostNames::define(const std::wstring& name, const VALTYPE& value)
{
    values.insert_or_assign(name, value);
}

bool HostNames::lookupValue(const wchar_t* name, VALTYPE& value) const
{
    const std::wstring_view wanted = name;
    asked.push_back(toUtf8(wanted));
    const auto known = values.find(wanted);
    if (known == values.end())
    {
        return false;
    }
    value = known->second;
    return true;
}

const wchar_t* HostNames::getName(std::uint32_t index) const
{
    return index < values.size() ? std::next(values.begin(), index)->first.c_str() : nullptr;
}

mathexpr::NameNotes HostNames::getNotes(const wchar_t* name) const
{
    return {valueOf(name).type == 1 ? mathexpr::ValueKind::Point : mathexpr::ValueKind::Number, {}, {}};
}

const VALTYPE& HostNames::valueOf(const std::wstring& name) const
{
    return values.at(name);
}

std::vector<std::string> HostNames::takeAsked()
{
    return std::exchange(asked, {});
}
