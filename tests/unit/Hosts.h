// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hosts.h - host services for tests.
#pragma once

#include "mathexpr/IMathExprService.h"
#include "tests/MadeValues.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

/// Knows the names of a list.
class AnsweringHost final : public IMathExprService
{
public:
    explicit AnsweringHost(std::map<std::wstring, VALTYPE> values) : known(std::move(values)) {}

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        const auto found = known.find(name);
        if (found == known.end())
        {
            return false;
        }
        value = found->second;
        return true;
    }

private:
    std::map<std::wstring, VALTYPE> known;
};

/// Calls a function of the test.
class CallingHost final : public IMathExprService
{
public:
    std::function<bool(const wchar_t* name, VALTYPE& value)> lookup;

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override { return lookup(name, value); }
};
