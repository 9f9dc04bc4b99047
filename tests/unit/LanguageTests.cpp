// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LanguageTests.cpp - selection of the language by environment variables.

#include "MathExprRes/MessageTexts.h"

#include "mathexpr/CMathExpr.h"
#include "mathexpr/MessageDisplay.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace {

/// The variables, in the order of their priority. Their values are restored at the end.
class Environment : public testing::Test
{
protected:
    Environment()
    {
        for (int index = 0; index < 3; ++index)
        {
            const char* value = std::getenv(names[index]);
            before[index] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
        }
        set(nullptr, nullptr, nullptr);
    }
    ~Environment() override
    {
        const auto text = [](const std::optional<std::string>& value) { return value ? value->c_str() : nullptr; };
        set(text(before[0]), text(before[1]), text(before[2]));
    }

    static void set(const char* all, const char* messages, const char* language)
    {
        const char* const values[] = {all, messages, language};
        for (int index = 0; index < 3; ++index)
        {
            if (values[index] == nullptr)
            {
                unsetenv(names[index]);
            }
            else
            {
                setenv(names[index], values[index], 1);
            }
        }
    }

private:
    static constexpr const char* names[] = {"LC_ALL", "LC_MESSAGES", "LANG"};
    std::optional<std::string> before[3];
};

struct LocaleCase
{
    const char* locale;
    Language language;
};

// clang-format off
constexpr LocaleCase localeCases[] = {
    {"en_US.UTF-8",       Language::English},
    {"de_DE.UTF-8",       Language::German},
    {"de",                Language::German},
    {"de_CH",             Language::German},
    {"de.UTF-8",          Language::German},
    {"de_DE@euro",        Language::German},
    {"fr_CA.ISO-8859-1",  Language::French},
    {"es_MX.UTF-8",       Language::Spanish},
    {"it_IT.UTF-8",       Language::Italian},
    {"pt_BR.UTF-8",       Language::Portuguese},
    {"pt_PT.UTF-8",       Language::Portuguese},
    {"ja_JP.eucJP",       Language::Japanese},
    {"zh_CN.GB18030",     Language::SimplifiedChinese},
    {"zh_SG.UTF-8",       Language::SimplifiedChinese},
    {"zh_TW.UTF-8",       Language::English},            // has traditional characters
    {"zh_HK.UTF-8",       Language::English},
    {"sv_SE.UTF-8",       Language::English},            // no such texts
    {"den",               Language::English},            // not German, despite its beginning
    {"DE_DE",             Language::English},            // locale names are in lower case
    {"C",                 Language::English},
    {"C.UTF-8",           Language::English},
    {"POSIX",             Language::English},
};
// clang-format on

TEST_F(Environment, NamesALanguageInEachVariable)
{
    for (const auto& [locale, language] : localeCases)
    {
        SCOPED_TRACE(locale);
        set(locale, nullptr, nullptr);
        EXPECT_EQ(languageOfUser(), language);
        set(nullptr, locale, nullptr);
        EXPECT_EQ(languageOfUser(), language);
        set(nullptr, nullptr, locale);
        EXPECT_EQ(languageOfUser(), language);
    }
}

TEST_F(Environment, SelectsEnglishByDefault)
{
    EXPECT_EQ(languageOfUser(), Language::English);
    set("", "", "");
    EXPECT_EQ(languageOfUser(), Language::English);
}

TEST_F(Environment, IsReadInTheUsualOrder)
{
    set("fr_FR", "it_IT", "de_DE");
    EXPECT_EQ(languageOfUser(), Language::French);
    set(nullptr, "it_IT", "de_DE");
    EXPECT_EQ(languageOfUser(), Language::Italian);
    set(nullptr, nullptr, "de_DE");
    EXPECT_EQ(languageOfUser(), Language::German);
    set("ja_JP", nullptr, "de_DE");
    EXPECT_EQ(languageOfUser(), Language::Japanese);
}

TEST_F(Environment, CountsAnEmptyVariableAsUnset)
{
    set("", "it_IT", "de_DE");
    EXPECT_EQ(languageOfUser(), Language::Italian);
    set("", "", "de_DE");
    EXPECT_EQ(languageOfUser(), Language::German);
}

TEST_F(Environment, DecidesWithALanguageThatHasNoTexts)
{
    set("C", "it_IT", "de_DE");
    EXPECT_EQ(languageOfUser(), Language::English);
    set(nullptr, "sv_SE", "de_DE");
    EXPECT_EQ(languageOfUser(), Language::English);
}

TEST_F(Environment, ChoosesWhatTheLibraryShows)
{
    std::wstring shown;
    const mathexpr::ProcessMessageDisplay before = mathexpr::setMessageDisplay(
        {[](void* context, std::uint32_t, const wchar_t* text) { *static_cast<std::wstring*>(context) = text; },
         &shown});
    for (const auto& [locale, language] : localeCases)
    {
        SCOPED_TRACE(locale);
        set(nullptr, nullptr, locale);
        CMathExpr calculator;
        VALTYPE result;
        EXPECT_FALSE(calculator.Calculate(L"1/0", result, 2147483647));
        EXPECT_EQ(shown, messageText(10, language));
    }
    mathexpr::setMessageDisplay(before);
}

TEST(Languages, HaveDifferentTextsOfOneLine)
{
    for (std::uint32_t message = 1; message <= 19; ++message)
    {
        for (int index = 0; index <= static_cast<int>(Language::SimplifiedChinese); ++index)
        {
            const std::wstring text = messageText(message, static_cast<Language>(index));
            EXPECT_EQ(text.find_first_of(L"\n\r\t"), std::wstring::npos) << message << ' ' << index;
            EXPECT_FALSE(text.empty());
            for (int other = 0; other < index; ++other)
            {
                EXPECT_NE(text, messageText(message, static_cast<Language>(other))) << message << ' ' << index;
            }
        }
    }
}

}
