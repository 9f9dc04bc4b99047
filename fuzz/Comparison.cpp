// Comparison.cpp - see Comparison.h.
#include "fuzz/Comparison.h"

#include <cstdio>
#include <cstdlib>

namespace {

/// Numbers, points, a name that is refused, and one at which the service throws.
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

/// What the caller's record holds before a call: nothing that an expression yields, so that a write shows.
constexpr VALTYPE untouched{1, 1, 0x5A5A, 0xA5A5A5A5, 12345.678, -9876.5, 0.03125};

}

Comparison::Comparison(bool silent) : library(silent, answer), reference(silent, answer) {}

void Comparison::compare(const reference::Outcome& ofLibrary, const reference::Outcome& ofReference,
                         const std::string& call)
{
    history += call + "  ->  " + reference::describe(ofLibrary) + '\n';
    if (!reference::sameOutcome(ofLibrary, ofReference))
    {
        std::fprintf(stderr, "%sbut the reference: %s\n", history.c_str(), reference::describe(ofReference).c_str());
        std::abort();
    }
}

void Comparison::setExpression(const std::wstring& text)
{
    compare(library.setExpression(text), reference.setExpression(text), "set " + reference::printable(text));
}

void Comparison::evaluate()
{
    // Both sides draw the same random numbers from the process's generator.
    std::srand(1);
    const reference::Outcome ofLibrary = library.evaluate(untouched);
    std::srand(1);
    compare(ofLibrary, reference.evaluate(untouched), "evaluate");
}

void Comparison::dropAssignment()
{
    history += "drop the assignment\n";
    library.dropAssignment();
    reference.dropAssignment();
}

void Comparison::changeVariable(const std::wstring& name, const VALTYPE& value)
{
    reference::Outcome ofLibrary;
    reference::Outcome ofReference;
    ofLibrary.returned = library.changeVariable(name, value);
    ofReference.returned = reference.changeVariable(name, value);
    compare(ofLibrary, ofReference, "change " + reference::printable(name) + " to " + reference::describe(value));
}

void Comparison::expectUsable()
{
    dropAssignment();
    setExpression(L"1+1");
    const reference::Outcome outcome = library.evaluate(untouched);
    if (!outcome.returned || outcome.value.x != 2.0)
    {
        std::fprintf(stderr, "%s1+1  ->  %s\n", history.c_str(), reference::describe(outcome).c_str());
        std::abort();
    }
}
