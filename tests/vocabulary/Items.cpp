// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Items.cpp - see Items.h.
#include "Items.h"

#include "mathexpr/SMTParsingExcepData.h"
#include "tests/support/MessageRecorder.h"

#include <cmath>
#include <cstring>
#include <iomanip>
#include <ostream>

namespace {

bool sameCoordinate(double left, double right)
{
    return bitsOf(left) == bitsOf(right) || (std::isnan(left) && std::isnan(right));
}

testing::AssertionResult differs(const char* what, const VALTYPE& actual, const VALTYPE& expected)
{
    return testing::AssertionFailure() << what << ": " << testing::PrintToString(actual) << " instead of "
                                       << testing::PrintToString(expected);
}

}

double opaque(double value)
{
    const volatile double hidden = value;
    return hidden;
}

VALTYPE converted(double x)
{
    return number(x, 1);
}

VALTYPE stale()
{
    VALTYPE value;
    value.type = 0x5A;
    value.flag = 0x5B;
    value.reserved = 0x5C5D;
    value.padding = 0x5E5F6061;
    value.x = 1234.5678;
    value.y = -8765.4321;
    value.z = 0.0123456789;
    return value;
}

VALTYPE withX(double x)
{
    VALTYPE value = stale();
    value.x = x;
    return value;
}

VALTYPE withNumber(double x)
{
    VALTYPE value = withX(x);
    value.type = 0;
    return value;
}

VALTYPE withConverted(double x)
{
    VALTYPE value = withNumber(x);
    value.flag = 1;
    value.reserved = 0;
    return value;
}

VALTYPE withPoint(double x, double y, double z)
{
    VALTYPE value = withX(x);
    value.type = 1;
    value.y = y;
    value.z = z;
    return value;
}

bool sameRecord(const VALTYPE& left, const VALTYPE& right)
{
    return std::memcmp(&left, &right, offsetof(VALTYPE, x)) == 0 && sameCoordinate(left.x, right.x) &&
           sameCoordinate(left.y, right.y) && sameCoordinate(left.z, right.z);
}

void PrintTo(const VALTYPE& value, std::ostream* out)
{
    *out << "{type " << int{value.type} << ", flag " << int{value.flag} << ", reserved " << value.reserved
         << ", padding " << value.padding << std::setprecision(17) << ", x " << value.x << ", y " << value.y << ", z "
         << value.z << "}";
}

testing::AssertionResult yields(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args,
                                const VALTYPE& expected, const VALTYPE& onEntry)
{
    for (const bool showMessages : {true, false})
    {
        VALTYPE result = onEntry;
        MessageRecorder messages;
        if (!item.evaluate(static_cast<std::uint32_t>(args.size()), args.data(), result, showMessages))
        {
            return testing::AssertionFailure() << "the arguments are refused";
        }
        if (!messages.take().empty())
        {
            return testing::AssertionFailure() << "a message is shown";
        }
        if (!sameRecord(result, expected))
        {
            return differs("the result", result, expected);
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult refuses(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args,
                                 std::uint32_t message)
{
    for (const bool showMessages : {true, false})
    {
        VALTYPE result = stale();
        MessageRecorder messages;
        if (item.evaluate(static_cast<std::uint32_t>(args.size()), args.data(), result, showMessages))
        {
            return testing::AssertionFailure() << "the arguments are accepted: " << testing::PrintToString(result);
        }
        const std::vector<std::uint32_t> expected(showMessages ? 1 : 0, message);
        if (const std::vector<std::uint32_t> shown = messages.take(); shown != expected)
        {
            return testing::AssertionFailure()
                   << "shows " << testing::PrintToString(shown) << " instead of " << testing::PrintToString(expected);
        }
        if (!sameRecord(result, stale()))
        {
            return differs("a refusal writes", result, stale());
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult raises(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args,
                                std::uint32_t line)
{
    for (const bool showMessages : {true, false})
    {
        VALTYPE result = stale();
        MessageRecorder messages;
        try
        {
            item.evaluate(static_cast<std::uint32_t>(args.size()), args.data(), result, showMessages);
            return testing::AssertionFailure() << "raises no exception";
        }
        catch (const mathexpr::ParsingException& exception)
        {
            if (exception.entries.size() != 1)
            {
                return testing::AssertionFailure() << exception.entries.size() << " entries";
            }
            const mathexpr::ParsingException::Entry& entry = exception.entries.front();
            if (entry.line != line || entry.reserved != 0 || entry.file != L"MTParserLib/MTParserDefFuncs")
            {
                return testing::AssertionFailure()
                       << "raised at line " << entry.line << " of " << narrow(entry.file) << ", reserved "
                       << entry.reserved << ", instead of at line " << line;
            }
            const SMTParsingExcepData& data = entry.data;
            if (data.exID != 15 || data.pos != 0 || !data.itemName.empty() || data.nbArgs != 0 || data.reserved != 0 ||
                !data.reservedName.empty())
            {
                return testing::AssertionFailure() << "code " << data.exID << ", or a field beside the code is set";
            }
        }
        if (!messages.take().empty())
        {
            return testing::AssertionFailure() << "a message is shown";
        }
        if (!sameRecord(result, stale()))
        {
            return differs("an exception leaves", result, stale());
        }
    }
    return testing::AssertionSuccess();
}

std::uint32_t raisedLine(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args)
{
    try
    {
        VALTYPE result;
        item.evaluate(static_cast<std::uint32_t>(args.size()), args.data(), result, false);
        return 0;
    }
    catch (const mathexpr::ParsingException& exception)
    {
        return exception.entries.front().line;
    }
}

const IMathOperator& RegisteredVocabulary::getOperator(const VocabularyEntry& entry) const
{
    return registrar.getOperator(registrar.findOperator(entry.symbol, entry.isUnary));
}

const IMathFunction& RegisteredVocabulary::getFunction(const std::wstring& symbol, std::uint32_t nbArgs) const
{
    return registrar.getFunction(registrar.findFunctionOverload(symbol, nbArgs));
}

std::string narrow(const std::wstring& text)
{
    std::string result;
    for (const wchar_t character : text)
    {
        result += static_cast<char>(character);
    }
    return result;
}
