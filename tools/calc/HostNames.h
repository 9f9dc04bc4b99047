// HostNames.h - the tool's host service: answers the names given with --set and remembers what was asked.
#pragma once

#include "mathexpr/IMathExprService.h"

#include <map>
#include <string>
#include <vector>

class HostNames final : public IMathExprService
{
public:
    /// A later value for a name replaces an earlier one.
    void define(const std::wstring& name, const VALTYPE& value);

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;

    /// The names asked since the last call, in order; UTF-8.
    std::vector<std::string> takeAsked();

private:
    std::map<std::wstring, VALTYPE, std::less<>> values;
    mutable std::vector<std::string> asked;
};
