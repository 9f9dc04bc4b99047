// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HintLanguageTests.cpp - every hint in every language. A message and its hints must be in the same language.
#include "MathExprRes/MessageTexts.h"
#include "mathexpr/hints/HintNumbers.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

namespace Hint = mathexpr::Hint;

namespace {

constexpr const char* locales[] = {"en_US.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8", "es_ES.UTF-8",
                                   "it_IT.UTF-8", "pt_BR.UTF-8", "ja_JP.UTF-8", "zh_CN.UTF-8"};

/// The last hint for a text, and its arguments. A list of two names is one argument.
struct Example
{
    Hint::Id hint;
    const wchar_t* typed;
    std::vector<std::wstring> arguments;
};

// clang-format off
const Example examples[] = {
//   hint                     typed           arguments
//   ------------------------ --------------- -------------------------
    {Hint::ExpectedValue,     L"1+",          {}},
    {Hint::ExpectedInBracket, L"(1",          {}},
    {Hint::ExpectedOutside,   L"1)",          {}},
    {Hint::TakesOne,          L"sin(1,2,3)",  {L"sin", L"1", L"3"}},
    {Hint::TakesSeveral,      L"dist(1)",     {L"dist", L"2", L"1"}},
    {Hint::TakesAny,          L"max()",       {L"max"}},
    {Hint::DidYouMean,        L"Abs(1)",      {L"abs(1)"}},
    {Hint::NeedsNumber,       L"sin([1,2])",  {L"sin"}},
    {Hint::PowerOfTen,        L"e+1",         {L"(e)+1"}},
    {Hint::TwoReadings,       L"1,500",       {L"1.500", L"1500"}},
    {Hint::DecimalPoint,      L"1,5",         {L"1.5"}},
    {Hint::Multiplication,    L"2pi",         {L"2*pi"}},
    {Hint::Exponent,          L"1e5",         {L"1e+5"}},
    {Hint::Percent,           L"15%",         {L"15/100"}},
    {Hint::NameIsConstant,    L"pi=3",        {L"pi"}},
    {Hint::NameIsNumber,      L"2=3",         {L"2"}},
    {Hint::NameHolds,         L"a.b=3",       {L"."}},
};
// clang-format on

/// Sets the user's language, and restores it.
class UserLanguage
{
public:
    explicit UserLanguage(const char* locale)
    {
        const char* const value = std::getenv("LC_ALL");
        before = value == nullptr ? "" : value;
        setenv("LC_ALL", locale, 1);
    }
    UserLanguage(const UserLanguage&) = delete;
    UserLanguage& operator=(const UserLanguage&) = delete;
    ~UserLanguage() { before.empty() ? unsetenv("LC_ALL") : setenv("LC_ALL", before.c_str(), 1); }

private:
    std::string before;
};

std::wstring filled(std::wstring pattern, const std::vector<std::wstring>& arguments)
{
    for (std::size_t index = 0; index < arguments.size(); ++index)
    {
        const std::wstring placeholder = L"{" + std::to_wstring(index) + L"}";
        const std::size_t at = pattern.find(placeholder);
        EXPECT_NE(at, std::wstring::npos) << testing::PrintToString(pattern);
        pattern.replace(at, placeholder.size(), arguments[index]);
    }
    EXPECT_EQ(pattern.find_first_of(L"{}"), std::wstring::npos) << testing::PrintToString(pattern);
    return pattern;
}

TEST(HintLanguages, AreThoseOfTheMessage)
{
    for (std::size_t index = 0; index < std::size(locales); ++index)
    {
        const UserLanguage user(locales[index]);
        const auto language = static_cast<Language>(index);
        for (const Example& example : examples)
        {
            SCOPED_TRACE(testing::PrintToString(std::wstring(example.typed)) + locales[index]);
            Session session(true);
            session.run(example.typed);
            const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
            EXPECT_EQ(diagnostic.text, messageText(diagnostic.message, language));
            ASSERT_FALSE(diagnostic.hints.empty());
            EXPECT_EQ(diagnostic.hints.back(), filled(messageText(example.hint, language), example.arguments));
        }
    }
}

TEST(HintLanguages, JoinNamesAsTheyDo)
{
    const std::vector<std::wstring> lists = {L"min, m2m or m2f",
                                             L"min, m2m oder m2f",
                                             L"min, m2m ou m2f",
                                             L"min, m2m o m2f",
                                             L"min, m2m o m2f",
                                             L"min, m2m ou m2f",
                                             L"min\u3001m2m \u307E\u305F\u306F m2f",
                                             L"min\u3001m2m \u6216 m2f"};
    for (std::size_t index = 0; index < std::size(locales); ++index)
    {
        const UserLanguage user(locales[index]);
        Session session(true);
        session.run(L"m2n(30)");
        const std::vector<std::wstring> hints = session.diagnostic().hints;
        ASSERT_EQ(hints.size(), 1U);
        EXPECT_EQ(hints.front(), filled(messageText(Hint::DidYouMean, static_cast<Language>(index)), {lists[index]}));
    }
}

TEST(HintLanguages, HaveAnExampleForEachSentence)
{
    for (std::uint32_t hint = 101; hint <= 119; ++hint)
    {
        const bool isPartOfList = hint == Hint::ListComma || hint == Hint::ListOr;
        const bool hasExample = std::any_of(std::begin(examples), std::end(examples),
                                            [hint](const Example& example) { return example.hint == hint; });
        EXPECT_NE(isPartOfList, hasExample) << hint;
    }
}

}
