// Comparison.h - plays calls on the library and on the reference, and stops the process where a host could tell them
// apart.
#pragma once

#include "tests/reference/EngineSession.h"
#include "tests/reference/ReferenceEvaluator.h"

#include <string>

class Comparison
{
public:
    explicit Comparison(bool silent);

    void setExpression(const std::wstring& text);
    void evaluate();
    void dropAssignment();
    void changeVariable(const std::wstring& name, const VALTYPE& value);

    /// Whatever happened: its assignment dropped, the object computes 1+1.
    void expectUsable();

private:
    void compare(const reference::Outcome& ofLibrary, const reference::Outcome& ofReference, const std::string& call);

    std::string history;
    reference::EngineSession library;
    reference::Session reference;
};
