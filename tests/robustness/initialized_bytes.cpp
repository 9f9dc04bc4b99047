// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// initialized_bytes.cpp - reads every byte of every value that the library returns, for all operators and functions.
//
// Run it under Memcheck, which reports branches that depend on uninitialised bytes. With --forget, it leaves one byte
// of a record uninitialised, to show that this is detected. The exit status is 1 if an item yielded no value.
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "tests/unit/Hosts.h"

#include <mathexpr.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t mostArguments = 4;
volatile std::size_t nbZeros = 0;

/// Makes the program's branches depend on each byte.
void readBytes(const void* data, std::size_t size)
{
    const auto* const bytes = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < size; ++i)
    {
        if (bytes[i] == 0)
        {
            nbZeros = nbZeros + 1;
        }
    }
}

/// Uninitialised memory in place of a caller's record.
template <class Record>
class Unwritten
{
public:
    Record& get() { return *reinterpret_cast<Record*>(memory.get()); }
    void read() { readBytes(memory.get(), sizeof(Record)); }

private:
    std::unique_ptr<unsigned char[]> memory{new unsigned char[sizeof(Record)]};
};

bool compile(MathExpression& expression, const std::wstring& text)
{
    try
    {
        return expression.setExpression(text.c_str());
    }
    catch (const mathexpr::ParsingException&)
    {
        return false;
    }
}

bool evaluate(MathExpression& expression, VALTYPE& value)
{
    try
    {
        return expression.evaluate(value);
    }
    catch (const mathexpr::ParsingException&)
    {
        return false;
    }
}

/// Reads the value of a text through every function that returns values.
/// @return whether the text has a value
bool readValuesOf(const std::wstring& text)
{
    const AnsweringHost host({{L"x", number(0.5)},
                              {L"y", number(0.75)},
                              {L"z", number(0.25)},
                              {L"t", number(2.0)},
                              {L"p", point(1.0, 2.0, 3.0)},
                              {L"q", point(4.0, 6.0, 8.0)},
                              {L"r", point(2.0, -1.0, 5.0)},
                              {L"s", point(0.0, 3.0, 1.0)}});
    MathExpression expression(true, &host);
    if (!compile(expression, L"kept=" + text))
    {
        return false;
    }
    Unwritten<VALTYPE> first;
    Unwritten<VALTYPE> second;
    if (!evaluate(expression, first.get()) || !evaluate(expression, second.get()))
    {
        return false;
    }
    first.read();
    second.read();

    Unwritten<VALTYPE> kept;
    if (!mathexpr::getVariable(expression, L"kept", kept.get()))
    {
        return false;
    }
    kept.read();
    readBytes(mathexpr::getVariableAddress(expression, L"kept"), sizeof(VALTYPE));
    for (const std::wstring& name : mathexpr::getVariableNames(expression))
    {
        readBytes(mathexpr::getVariableAddress(expression, name.c_str()), sizeof(VALTYPE));
    }

    Unwritten<std::array<VALTYPE, 3>> rows;
    mathexpr::BulkOutcome outcome;
    if (!mathexpr::evaluateBulk(expression, nullptr, 0, 3,
                                {rows.get().data(), sizeof(VALTYPE), mathexpr::BulkKind::Record}, 0, outcome))
    {
        return false;
    }
    rows.read();
    return outcome.failedCount == 0;
}

/// An argument: a number or a point, as a literal or a variable, with different values at each position.
const wchar_t* argument(std::size_t place, bool isPoint, bool isVariable)
{
    static constexpr std::array<const wchar_t*, mostArguments> numbers{L"0.5", L"0.75", L"0.25", L"2"};
    static constexpr std::array<const wchar_t*, mostArguments> points{L"[1,2,3]", L"[4,6,8]", L"[2,-1,5]", L"[0,3,1]"};
    static constexpr std::array<const wchar_t*, mostArguments> namesOfNumbers{L"x", L"y", L"z", L"t"};
    static constexpr std::array<const wchar_t*, mostArguments> namesOfPoints{L"p", L"q", L"r", L"s"};
    return isPoint ? (isVariable ? namesOfPoints[place] : points[place])
                   : (isVariable ? namesOfNumbers[place] : numbers[place]);
}

std::wstring textOf(const mathexpr::VocabularyItem& item, std::size_t nbArgs, std::size_t pointMask, bool isVariable)
{
    const bool isOperator = item.kind == mathexpr::VocabularyKind::Operator;
    std::wstring text = isOperator && !item.unary ? L"" : item.symbol;
    text += L'(';
    for (std::size_t place = 0; place < nbArgs; ++place)
    {
        text += place == 0 ? L"" : isOperator ? item.symbol : L",";
        text += argument(place, (pointMask >> place & 1) != 0, isVariable);
    }
    return text + L')';
}

/// @return whether the item yielded a value for some kind of arguments
bool readValuesOf(const mathexpr::VocabularyItem& item)
{
    if (item.kind == mathexpr::VocabularyKind::Constant)
    {
        return readValuesOf(item.symbol);
    }
    const bool any = item.nbArgs == NB_ARGS_UNDEFINED;
    bool succeeded = false;
    for (std::size_t nbArgs = any ? 1 : item.nbArgs; nbArgs <= (any ? mostArguments : item.nbArgs); ++nbArgs)
    {
        for (std::size_t pointMask = 0; pointMask < std::size_t{1} << nbArgs; ++pointMask)
        {
            for (const bool isVariable : {false, true})
            {
                succeeded = readValuesOf(textOf(item, nbArgs, pointMask, isVariable)) || succeeded;
            }
        }
    }
    return succeeded;
}

bool readValuesOfCalculator()
{
    CMathExpr calculator;
    Unwritten<VALTYPE> value;
    const bool succeeded = calculator.Calculate(L"a=[1,2,3]+[1,1,1]", value.get(), 2147483647);
    value.read();
    const CMathExpr copy(calculator);
    CMathExpr assigned;
    assigned = copy;
    Unwritten<VALTYPE> second;
    const bool succeededAgain = assigned.Calculate(L"a*2", second.get(), 2147483647);
    second.read();
    return succeeded && succeededAgain;
}

bool readValuesOfCInterface()
{
    mathexpr_expression* expression = nullptr;
    Unwritten<mathexpr_value> value;
    bool succeeded = mathexpr_create_utf8(nullptr, &expression) == MATHEXPR_OK;
    for (const char* const text : {"1+2", "[1,2,3]*2", "a=dist([1,2,3],[4,5,6])", "a"})
    {
        Unwritten<mathexpr_value> result;
        succeeded =
            mathexpr_evaluate_text_utf8(expression, text, MATHEXPR_ZERO_TERMINATED, &result.get()) == MATHEXPR_OK &&
            succeeded;
        result.read();
    }
    succeeded =
        mathexpr_get_variable_utf8(expression, "a", MATHEXPR_ZERO_TERMINATED, &value.get()) == MATHEXPR_OK && succeeded;
    value.read();
    mathexpr_destroy(expression);
    return succeeded;
}

}

int main(int count, char** arguments)
{
    if (count > 1 && std::string_view(arguments[1]) == "--forget")
    {
        Unwritten<VALTYPE> record;
        record.get().type = 1;
        record.read();
        return 0;
    }
    mathexpr::setMessageDisplay({[](void*, std::uint32_t, const wchar_t*) {}, nullptr});
    std::size_t nbItems = 0;
    std::size_t nbWithoutValue = 0;
    mathexpr::VocabularyItem item;
    for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
    {
        if (item.kind == mathexpr::VocabularyKind::Function && item.nbArgs == 0)
        {
            continue;  // no text can contain it: empty brackets are refused
        }
        ++nbItems;
        if (!readValuesOf(item))
        {
            ++nbWithoutValue;
            std::printf("no value of %ls with %u arguments\n", item.symbol, item.nbArgs);
        }
    }
    const bool others = readValuesOfCalculator() && readValuesOfCInterface();
    std::printf("%zu items, %zu of them without a value\n", nbItems, nbWithoutValue);
    return nbWithoutValue == 0 && others ? 0 : 1;
}
