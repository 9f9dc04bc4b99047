// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Comparison.cpp - see Comparison.h.
#include "fuzz/Comparison.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

/// Answers with numbers and points; refuses one name, and throws for another.
bool answer(const std::wstring& name, VALTYPE& value)
{
    if (name == L"throws")
    {
        throw 1;
    }
    if (name.size() > 2)
    {
        return false;
    }
    const bool isPoint = name.front() == L'p' || name.front() == L'q';
    value =
        VALTYPE{static_cast<std::uint8_t>(isPoint ? 1 : 0), 0, 0, 0, 2.5, isPoint ? -3.0 : 0.0, isPoint ? 0.5 : 0.0};
    return true;
}

/// Content of the caller's record before a call: a value that no expression yields, so that any write is detected.
constexpr VALTYPE untouched{1, 1, 0x5A5A, 0xA5A5A5A5, 12345.678, -9876.5, 0.03125};

}

Comparison::Comparison(bool silent) : library(silent, answer), reference(silent, answer)
{
    history.reserve(16);
    // Selects the C library's smallest generator. It is seeded twice per call, and seeding the default generator takes
    // thousands of steps.
    static char state[8];
    initstate(1, state, sizeof(state));
}

std::string Comparison::describe(const Call& call)
{
    switch (call.kind)
    {
    case Call::Kind::SetExpression:
        return "set " + reference::printable(call.text);
    case Call::Kind::Evaluate:
        return "evaluate";
    case Call::Kind::DropAssignment:
        return "drop the assignment";
    case Call::Kind::ChangeVariable:
        return "change " + reference::printable(call.text) + " to " + reference::describe(call.value);
    }
    return {};
}

void Comparison::compare(Call call, const reference::Outcome& ofReference)
{
    history.push_back(std::move(call));
    if (!reference::sameOutcome(history.back().outcome, ofReference))
    {
        fail(reference::describe(ofReference));
    }
}

void Comparison::fail(const std::string& expected) const
{
    for (const Call& call : history)
    {
        std::fprintf(stderr, "%s  ->  %s\n", describe(call).c_str(), reference::describe(call.outcome).c_str());
    }
    std::fprintf(stderr, "but expected: %s\n", expected.c_str());
    std::abort();
}

void Comparison::setExpression(const std::wstring& text)
{
    compare({Call::Kind::SetExpression, text, {}, library.setExpression(text)}, reference.setExpression(text));
}

void Comparison::evaluate()
{
    // Both sides draw the same random numbers from the process's generator.
    std::srand(1);
    reference::Outcome ofLibrary = library.evaluate(untouched);
    std::srand(1);
    compare({Call::Kind::Evaluate, {}, {}, std::move(ofLibrary)}, reference.evaluate(untouched));
}

void Comparison::dropAssignment()
{
    history.push_back({Call::Kind::DropAssignment, {}, {}, {}});
    library.dropAssignment();
    reference.dropAssignment();
}

void Comparison::changeVariable(const std::wstring& name, const VALTYPE& value)
{
    reference::Outcome ofLibrary;
    reference::Outcome ofReference;
    ofLibrary.returned = library.changeVariable(name, value);
    ofReference.returned = reference.changeVariable(name, value);
    compare({Call::Kind::ChangeVariable, name, value, std::move(ofLibrary)}, ofReference);
}

void Comparison::expectUsable()
{
    dropAssignment();
    setExpression(L"1+1");
    evaluate();
    const reference::Outcome& outcome = history.back().outcome;
    if (!outcome.returned || outcome.value.type != 0 || outcome.value.x != 2.0)
    {
        fail("2");
    }
}
