// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyListTests.cpp - the vocabulary from a host's view.
#include "mathexpr/IMathFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/VocabularyUnits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

std::vector<mathexpr::VocabularyItem> allItems()
{
    std::vector<mathexpr::VocabularyItem> items;
    mathexpr::VocabularyItem item;
    for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
    {
        items.push_back(item);
    }
    return items;
}

TEST(VocabularyList, HoldsConstantsThenOperatorsThenFunctions)
{
    const std::vector<mathexpr::VocabularyItem> items = allItems();
    ASSERT_EQ(items.size(), 4U + 16U + 257U);
    for (std::size_t index = 0; index < items.size(); ++index)
    {
        const mathexpr::VocabularyKind expected = index < 4    ? mathexpr::VocabularyKind::Constant
                                                  : index < 20 ? mathexpr::VocabularyKind::Operator
                                                               : mathexpr::VocabularyKind::Function;
        EXPECT_EQ(items[index].kind, expected) << index;
    }
}

/// The unit with that symbol; null if there is none.
const mathexpr::VocabularyUnit* unitOf(const std::wstring& symbol)
{
    const auto* const found = std::find_if(std::begin(mathexpr::vocabularyUnits), std::end(mathexpr::vocabularyUnits),
                                           [&](const mathexpr::VocabularyUnit& unit) { return unit.symbol == symbol; });
    return found == std::end(mathexpr::vocabularyUnits) ? nullptr : found;
}

TEST(VocabularyList, NamesTheUnitsOfEachConversion)
{
    std::set<std::wstring> converted;
    for (const mathexpr::VocabularyItem& item : allItems())
    {
        const std::wstring symbol = item.symbol;
        const std::size_t middle = symbol.find(L'2');
        if (item.family < mathexpr::VocabularyFamily::Angle || item.family > mathexpr::VocabularyFamily::Volume)
        {
            continue;
        }
        for (const std::wstring& half : {symbol.substr(0, middle), symbol.substr(middle + 1)})
        {
            ASSERT_NE(unitOf(half), nullptr) << testing::PrintToString(symbol);
            EXPECT_EQ(unitOf(half)->family, item.family) << testing::PrintToString(symbol);
            converted.insert(half);
        }
    }
    EXPECT_EQ(converted.size(), std::size(mathexpr::vocabularyUnits));
}

TEST(VocabularyList, EndsWithoutTouchingTheRecord)
{
    mathexpr::VocabularyItem item{};
    item.nbArgs = 77;
    EXPECT_FALSE(mathexpr::getVocabularyItem(277, item));
    EXPECT_FALSE(mathexpr::getVocabularyItem(0xFFFFFFFF, item));
    EXPECT_EQ(item.nbArgs, 77U);
}

TEST(VocabularyList, ListsTheConstants)
{
    const std::vector<mathexpr::VocabularyItem> items = allItems();
    const std::vector<std::pair<std::wstring, double>> expected{
        {L"pi", 3.14159265359}, {L"PI", 3.14159265359}, {L"e", 2.718281828459045}, {L"E", 2.718281828459045}};
    for (std::size_t index = 0; index < expected.size(); ++index)
    {
        EXPECT_EQ(items[index].symbol, expected[index].first);
        EXPECT_EQ(items[index].value, expected[index].second);
        EXPECT_EQ(items[index].family, mathexpr::VocabularyFamily::Constants);
        EXPECT_TRUE(items[index].constant);
        EXPECT_EQ(items[index].className, std::wstring());
        EXPECT_EQ(items[index].help, std::wstring());
        EXPECT_EQ(items[index].description, std::wstring());
        EXPECT_EQ(items[index].nbArgs, 0U);
        EXPECT_EQ(items[index].precedence, 0);
        EXPECT_FALSE(items[index].unary);
    }
    for (std::size_t index = expected.size(); index < items.size(); ++index)
    {
        EXPECT_EQ(items[index].value, 0.0) << index;
    }
}

TEST(VocabularyList, ListsOperatorsAndFunctions)
{
    std::map<std::wstring, mathexpr::VocabularyItem> items;
    for (const mathexpr::VocabularyItem& item : allItems())
    {
        items[item.className] = item;
    }
    const mathexpr::VocabularyItem& minus = items.at(L"UnaryMinusOp");
    EXPECT_EQ(minus.symbol, std::wstring(L"-"));
    EXPECT_TRUE(minus.unary);
    EXPECT_EQ(minus.nbArgs, 1U);
    const mathexpr::VocabularyItem& power = items.at(L"ExpOp");
    EXPECT_EQ(power.symbol, std::wstring(L"^"));
    EXPECT_FALSE(power.unary);
    EXPECT_EQ(power.nbArgs, 2U);
    EXPECT_GT(power.precedence, items.at(L"AddOp").precedence);
    const mathexpr::VocabularyItem& sine = items.at(L"SinFct");
    EXPECT_EQ(sine.symbol, std::wstring(L"sin"));
    EXPECT_EQ(sine.help, std::wstring(L"sin(x)"));
    EXPECT_EQ(sine.description, std::wstring(L"Sine"));
    EXPECT_EQ(sine.precedence, 0);
    EXPECT_FALSE(sine.unary);
    EXPECT_EQ(sine.family, mathexpr::VocabularyFamily::CoreMath);
    EXPECT_TRUE(sine.constant);
    EXPECT_FALSE(items.at(L"RandFct").constant);
    EXPECT_EQ(items.at(L"MaxUndefFct").nbArgs, NB_ARGS_UNDEFINED);
    EXPECT_EQ(items.at(L"M2cmFct").family, mathexpr::VocabularyFamily::Length);
    EXPECT_EQ(items.at(L"dist").family, mathexpr::VocabularyFamily::Geometry);
}

/// Supplies a number for every name.
class AnyNumber final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t*, VALTYPE& value) const override
    {
        value.x = 0.5;
        return true;
    }
};

// Except "rand()": empty brackets are always refused.
TEST(VocabularyList, HoldsNothingThatAnExpressionCannotSay)
{
    const AnyNumber host;
    MathExpression expression(true, &host);
    for (const mathexpr::VocabularyItem& item : allItems())
    {
        std::wstring text = item.symbol;
        if (item.kind == mathexpr::VocabularyKind::Operator)
        {
            text = item.unary ? text + L"x" : L"x" + text + L"x";
        }
        else if (item.kind == mathexpr::VocabularyKind::Function && item.nbArgs == 0)
        {
            EXPECT_THROW(expression.setExpression((text + L"()").c_str()), mathexpr::ParsingException);
            continue;
        }
        else if (item.kind == mathexpr::VocabularyKind::Function)
        {
            text += L"(x";
            const std::uint32_t nbArgs = item.nbArgs == NB_ARGS_UNDEFINED ? 5 : item.nbArgs;
            for (std::uint32_t j = 1; j < nbArgs; ++j)
            {
                text += L",x";
            }
            text += L")";
        }
        EXPECT_NO_THROW(EXPECT_TRUE(expression.setExpression(text.c_str()))) << std::string(text.begin(), text.end());
    }
}

}
