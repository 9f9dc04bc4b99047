// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RecordingService.h - a host that knows the names of a list, and records every look-up.
#pragma once

#include "mathexpr/IMathExprService.h"
#include "tests/language/Row.h"

#include <string>
#include <utility>
#include <vector>

class RecordingService final : public IMathExprService
{
public:
    explicit RecordingService(Bindings bindings) : known(std::move(bindings)) {}

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        asked.emplace_back(name);
        const auto found = known.find(name);
        if (found == known.end())
        {
            return false;
        }
        if (found->second)
        {
            value = *found->second;
        }
        everAnswered = true;
        return true;
    }

    /// The names looked up since the last call, in order.
    std::vector<std::wstring> takeAsked() { return std::exchange(asked, {}); }

    bool hasAnswered() const { return everAnswered; }

private:
    Bindings known;
    mutable std::vector<std::wstring> asked;
    mutable bool everAnswered = false;
};
