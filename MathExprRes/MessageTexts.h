// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageTexts.h - the texts of the messages (1 to 19) and of the hints (from 101) in every language, for platforms
// without string resources.
#pragma once

#include <cstdint>
#include <string_view>

/// The languages of the texts, in the order of the table.
enum class Language
{
    English,
    German,
    French,
    Spanish,
    Italian,
    Portuguese,
    Japanese,
    SimplifiedChinese,
};

/// The text of a message, zero-terminated and valid for the life of the process; null if there is no such number.
const wchar_t* messageText(std::uint32_t id, Language language) noexcept;

/// The language for a locale name such as "de_AT.UTF-8"; English if there are no texts in that language.
Language languageOfLocale(std::string_view locale) noexcept;

/// The user's language, from the first of LC_ALL, LC_MESSAGES and LANG that is set. The process's own locale is
/// ignored, since many hosts never call setlocale.
Language languageOfUser() noexcept;
