// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SystemLanguageTests.cpp - the texts in the user's language, as selected by Windows.

#include "MathExprRes/MessageTexts.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/MessageDisplay.h"
#include "tests/windows/TelltaleExpressions.h"

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

namespace {

/// Sets the thread's user-interface language. Windows uses the user-interface language, Wine the thread's locale.
class ThreadLanguage
{
public:
    explicit ThreadLanguage(LANGID language) : locale(GetThreadLocale()), userInterface(GetThreadUILanguage())
    {
        SetThreadUILanguage(language);
        SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
    }
    ThreadLanguage(const ThreadLanguage&) = delete;
    ThreadLanguage& operator=(const ThreadLanguage&) = delete;
    ~ThreadLanguage()
    {
        SetThreadLocale(locale);
        SetThreadUILanguage(userInterface);
    }

private:
    LCID locale;
    LANGID userInterface;
};

struct Shown
{
    std::uint32_t id = 0;
    std::wstring text;
};

/// The message for an expression.
Shown shownFor(const wchar_t* expression)
{
    Shown shown;
    const mathexpr::ProcessMessageDisplay before =
        mathexpr::setMessageDisplay({[](void* context, std::uint32_t id, const wchar_t* text) {
                                         *static_cast<Shown*>(context) = {id, text};
                                     },
                                     &shown});
    CMathExpr calculator;
    VALTYPE result;
    calculator.Calculate(expression, result, 2147483647);
    mathexpr::setMessageDisplay(before);
    return shown;
}

struct LanguageCase
{
    LANGID id;
    Language language;
};

// clang-format off
constexpr LanguageCase languageCases[] = {
    {0x0409, Language::English},
    {0x0809, Language::English},            // United Kingdom
    {0x0407, Language::German},
    {0x040C, Language::French},
    {0x0C0A, Language::Spanish},
    {0x0410, Language::Italian},
    {0x0416, Language::Portuguese},         // Brazil
    {0x0816, Language::Portuguese},         // Portugal
    {0x0411, Language::Japanese},
    {0x0804, Language::SimplifiedChinese},
    {0x0404, Language::English},            // traditional Chinese
    {0x041D, Language::English},            // Swedish, without texts
};
// clang-format on

TEST(Languages, FollowTheThreadsUserInterface)
{
    for (const auto& [id, language] : languageCases)
    {
        SCOPED_TRACE(id);
        const ThreadLanguage threadLanguage(id);
        for (const auto& [message, expression] : telltaleExpressions)
        {
            const Shown shown = shownFor(expression);
            EXPECT_EQ(shown.id, message);
            EXPECT_EQ(shown.text, messageText(message, language));
        }
    }
}

TEST(Languages, DifferInEveryText)
{
    for (std::uint32_t message = 1; message <= 19; ++message)
    {
        std::set<std::wstring> texts;
        for (int language = 0; language <= static_cast<int>(Language::SimplifiedChinese); ++language)
        {
            texts.insert(messageText(message, static_cast<Language>(language)));
        }
        EXPECT_EQ(texts.size(), 8U) << message;
    }
}

}
