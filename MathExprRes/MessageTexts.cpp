// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageTexts.cpp - the built-in table of texts, and the selection of a language.

#include "MathExprRes/MessageTexts.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>

namespace {

constexpr std::size_t nbLanguages = 8;

struct MessageRow
{
    std::uint32_t id;
    const wchar_t* texts[nbLanguages];
};

constexpr MessageRow messages[] = {
#define MESSAGE(number, en, de, fr, es, it, pt, ja, zh)                                                                \
    {number, {L##en, L##de, L##fr, L##es, L##it, L##pt, L##ja, L##zh}},
#include "MathExprRes/Messages.table"
#undef MESSAGE
};

/// Whether the rows are exactly the messages 1 to 19 and the hints 101 to 119, in this order, with a text in every
/// language.
constexpr bool tableIsComplete()
{
    std::uint32_t expected = 1;
    for (const MessageRow& row : messages)
    {
        expected = expected == 20 ? 101 : expected;
        if (row.id != expected++)
        {
            return false;
        }
        for (const wchar_t* text : row.texts)
        {
            if (*text == L'\0')
            {
                return false;
            }
        }
    }
    return expected == 120;
}

static_assert(tableIsComplete());

struct LanguageCode
{
    std::string_view code;
    Language language;
};

constexpr LanguageCode languageCodes[] = {
    {"en", Language::English},  {"de", Language::German},
    {"fr", Language::French},   {"es", Language::Spanish},
    {"it", Language::Italian},  {"pt", Language::Portuguese},
    {"ja", Language::Japanese}, {"zh", Language::SimplifiedChinese},
};

static_assert(std::size(languageCodes) == nbLanguages);

/// Whether a locale of the Chinese language uses traditional characters.
bool isTraditionalChinese(std::string_view locale) noexcept
{
    constexpr std::string_view beginnings[] = {"zh_TW", "zh_HK", "zh_MO", "zh_Hant"};
    return std::any_of(std::begin(beginnings), std::end(beginnings), [locale](std::string_view beginning) {
        return locale.substr(0, beginning.size()) == beginning;
    });
}

}

const wchar_t* messageText(std::uint32_t id, Language language) noexcept
{
    const auto* row = std::find_if(std::begin(messages), std::end(messages),
                                   [id](const MessageRow& candidate) { return candidate.id == id; });
    return row == std::end(messages) ? nullptr : row->texts[static_cast<std::size_t>(language)];
}

Language languageOfLocale(std::string_view locale) noexcept
{
    const std::string_view code = locale.substr(0, locale.find_first_of("_.@"));
    const auto* known = std::find_if(std::begin(languageCodes), std::end(languageCodes),
                                     [code](const LanguageCode& candidate) { return candidate.code == code; });
    return known == std::end(languageCodes) || isTraditionalChinese(locale) ? Language::English : known->language;
}

Language languageOfUser() noexcept
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): safe unless the host changes its environment at the same time
        const char* locale = std::getenv(variable);
        if (locale != nullptr && *locale != '\0')
        {
            return languageOfLocale(locale);
        }
    }
    return Language::English;
}
