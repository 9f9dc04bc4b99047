// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostNames.h - the tool's host service: supplies the names given with --set and records what was looked up.
#pragma once

#include "mathexpr/Completion.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"

#include <map>
#include <string>
#include <vector>

class HostNames final : public IMathExprService,
                        public mathexpr::IMathExprNameSource,
                        public mathexpr::IMathExprNameNotes
{
public:
    /// A later value replaces an earlier one.
    void define(const std::wstring& name, const VALTYPE& value);

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;
    const wchar_t* getName(std::uint32_t index) const override;
    mathexpr::NameNotes getNotes(const wchar_t* name) const override;

    /// The value of a defined name; not recorded as a look-up.
    const VALTYPE& valueOf(const std::wstring& name) const;

    /// The names looked up since the last call, in order; UTF-8.
    std::vector<std::string> takeAsked();

private:
    std::map<std::wstring, VALTYPE, std::less<>> values;
    mutable std::vector<std::string> asked;
};
