// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageTexts.h - the texts of the messages, 1 to 19, and of the hints, from 101, in every language: the table for
// platforms without string resources.
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

/// The text of a message, zero-terminated and valid for the life of the process; null when there is none of that
/// number.
const wchar_t* messageText(std::uint32_t id, Language language) noexcept;

/// The language that a locale name such as "de_AT.UTF-8" asks for; English for every name without texts of its own.
Language languageOfLocale(std::string_view locale) noexcept;

/// The language of the user, as LC_ALL, LC_MESSAGES and LANG tell, the first one that is set. The process's own locale
/// is not looked at: a host that never calls setlocale still has a user.
Language languageOfUser() noexcept;
