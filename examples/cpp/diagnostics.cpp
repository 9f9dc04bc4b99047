// diagnostics.cpp - shows where a text is wrong, as compilers do: the line, a caret, the sentence, what may be meant.
#include "mathexpr/Diagnostics.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <algorithm>
#include <iostream>
#include <string>

// A silent object shows nothing to the user; its failures are exceptions, or false.
bool evaluate(MathExpression& expression, const std::wstring& text, VALTYPE& value)
{
    try
    {
        return expression.setExpression(text.c_str()) && expression.evaluate(value);
    }
    catch (const ParsingException&)
    {
        return false;
    }
    catch (const DefinitionException&)
    {
        return false;
    }
}

int main()
{
    MathExpression expression(true, nullptr);
    for (const std::wstring text : {L"2 * cosh2(1)", L"1 + (2*3", L"sin(30, 2)", L"ln(-1)"})
    {
        VALTYPE value;
        if (evaluate(expression, text, value))
            continue;
        const ExpressionDiagnostic diagnostic = ExpressionDiagnostics(expression).get();
        std::wcout << text << L'\n' << std::wstring(diagnostic.start, L' ') << L'^'
                   << std::wstring(std::max(diagnostic.length, 1U) - 1, L'~') << L'\n' << diagnostic.text << L'\n';
        for (const std::wstring& name : diagnostic.suggestions)
            std::wcout << L"  perhaps " << name << L'\n';
    }
    return 0;
}
