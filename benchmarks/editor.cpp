// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// editor.cpp - time of each editor service for texts of 100 and of 1,000 characters, with 600 names of the host, and
// with 100,000 names in an index. Prints one line per service: its name, the length, microseconds (median of many
// calls), upper bound. Fails if a bound is exceeded: a keystroke must be handled before the next one.
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/Variables.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr std::size_t nameCount = 600;
constexpr std::size_t indexedCount = 100000;
constexpr std::size_t callCount = 201;

struct Length
{
    std::size_t characters;
    double bound;  // in microseconds
};

constexpr Length lengths[] = {{100, 1000.0}, {1000, 5000.0}};

class Names final : public mathexpr::IMathExprNameSource
{
public:
    Names()
    {
        for (std::size_t index = 0; index < nameCount; ++index)
        {
            names.push_back(L"parameter_" + std::to_wstring(index));
        }
    }

    const wchar_t* getName(std::uint32_t index) const override
    {
        return index < names.size() ? names[index].c_str() : nullptr;
    }

private:
    std::vector<std::wstring> names;
};

/// A sum in a call that ends in the middle of a name.
std::wstring textOf(std::size_t characters)
{
    const std::wstring tail = L"+dist([0,0,0],[1,2,width*2])+max(1,wid";
    std::wstring text = L"parameter_17";
    while (text.size() + tail.size() < characters)
    {
        text += L"+sin(30)*(width-2.5)";
    }
    return text + tail;
}

double medianOf(const std::function<void()>& call)
{
    std::vector<double> times;
    for (std::size_t index = 0; index < callCount; ++index)
    {
        const auto begin = std::chrono::steady_clock::now();
        call();
        times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count());
    }
    std::nth_element(times.begin(), times.begin() + callCount / 2, times.end());
    return times[callCount / 2];
}

/// @return whether all services are within their bounds
bool measure(const char* heading, const mathexpr::IMathExprNameSource& names)
{
    std::printf("%s\n", heading);
    MathExpression expression(true, nullptr);
    mathexpr::setNameSource(expression, &names);
    VALTYPE width;
    width.x = 5;
    mathexpr::setVariable(expression, L"width", width);

    bool isWithin = true;
    for (const Length& length : lengths)
    {
        const std::wstring text = textOf(length.characters);
        const std::wstring empty = text.substr(0, text.size() - 3);
        const auto end = static_cast<std::uint32_t>(text.size());
        const struct
        {
            const char* service;
            std::function<void()> call;
        } services[] = {
            {"tokens", [&] { mathexpr::getTokens(expression, text.c_str()); }},
            {"format", [&] { mathexpr::formatText(expression, text.c_str()); }},
            {"typesetting", [&] { mathexpr::typesetText(expression, text.c_str(), mathexpr::Notation::MathMl); }},
            {"references", [&] { mathexpr::findReferences(expression, text.c_str(), L"width"); }},
            {"rename", [&] { mathexpr::renameInText(expression, text.c_str(), L"width", L"breadth"); }},
            {"literals", [&] { mathexpr::getLiterals(expression, text.c_str()); }},
            {"diagnostic", [&] { mathexpr::diagnoseText(expression, text.c_str()); }},
            {"signature", [&] { mathexpr::getSignature(expression, text.c_str(), end); }},
            {"hover", [&] { mathexpr::getHover(expression, text.c_str(), end - 4); }},
            {"completion of a name", [&] { mathexpr::getCompletions(expression, text.c_str(), end); }},
            {"completion of an indexed name",
             [&] { mathexpr::getCompletions(expression, (empty + L"par").c_str(), end); }},
            {"completion of nothing", [&] { mathexpr::getCompletions(expression, empty.c_str(), end - 3); }},
        };
        for (const auto& service : services)
        {
            service.call();  // creates what the process then keeps
            const double median = medianOf(service.call);
            isWithin = isWithin && median <= length.bound;
            std::printf("%-30s %5zu characters %9.1f us of %.0f\n", service.service, text.size(), median, length.bound);
        }
    }
    return isWithin;
}

}

int main()
{
    const Names names;
    mathexpr::NameIndex index;
    for (std::size_t each = 0; each < indexedCount; ++each)
    {
        index.add((L"parameter_" + std::to_wstring(each)).c_str(), {mathexpr::ValueKind::Number, L"", L""});
    }
    const bool isListWithin = measure("600 names in a list", names);
    return measure("100,000 names in an index", index) && isListWithin ? 0 : 1;
}
