// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnicodeTests.cpp - conversions between encodings, for every code point.
#include "platform/Unicode.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using platform::findIllFormed;
using platform::toUtf16;
using platform::toUtf8;
using platform::toWide;
using platform::wellFormed;

std::wstring wideOf(char32_t point)
{
    if (sizeof(wchar_t) == 4 || point < 0x10000)
    {
        return {static_cast<wchar_t>(point)};
    }
    return {static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10)),
            static_cast<wchar_t>(0xDC00 + ((point - 0x10000) & 0x3FF))};
}

std::size_t utf8Size(char32_t point)
{
    return point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
}

TEST(Unicode, EveryCodePointRoundTrips)
{
    for (char32_t point = 0; point <= 0x10FFFF; ++point)
    {
        if (point >= 0xD800 && point <= 0xDFFF)
        {
            continue;
        }
        const auto number = static_cast<unsigned>(point);
        const std::wstring wide = wideOf(point);
        const std::string narrow = toUtf8(wide);
        const std::u16string middle = toUtf16(wide);
        ASSERT_EQ(narrow.size(), utf8Size(point)) << number;
        ASSERT_EQ(middle.size(), point < 0x10000 ? 1U : 2U) << number;
        ASSERT_EQ(findIllFormed(narrow), wellFormed) << number;
        ASSERT_EQ(findIllFormed(middle), wellFormed) << number;
        ASSERT_EQ(toWide(narrow), wide) << number;
        ASSERT_EQ(toWide(middle), wide) << number;
        for (std::size_t size = 1; size < narrow.size(); ++size)
        {
            ASSERT_EQ(findIllFormed(narrow.substr(0, size)), 0U) << number;
            ASSERT_EQ(findIllFormed("a" + narrow.substr(size)), 1U) << number;
        }
    }
}

TEST(Unicode, KnownFormsAreWritten)
{
    EXPECT_EQ(toUtf8(L"a\u00e4\u20ac"), "a\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(toUtf8(wideOf(0x1F600)), "\xF0\x9F\x98\x80");
    EXPECT_EQ(toUtf16(wideOf(0x1F600)), u"\xD83D\xDE00");
    EXPECT_EQ(toWide(std::string_view("\xF0\x9F\x98\x80")), wideOf(0x1F600));
    EXPECT_EQ(toWide(std::u16string_view(u"\xD83D\xDE00z")), wideOf(0x1F600) + L"z");
}

TEST(Unicode, ZerosAreCharacters)
{
    EXPECT_EQ(toWide(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(toUtf8(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(findIllFormed(std::string_view("a\0b", 3)), wellFormed);
}

TEST(Unicode, WideTextThatIsNoTextIsReplaced)
{
    EXPECT_EQ(toUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
    EXPECT_EQ(toUtf16(std::wstring(1, static_cast<wchar_t>(0xDC00)) + L"a"), u"\xFFFD\x61");
    if constexpr (sizeof(wchar_t) == 4)
    {
        EXPECT_EQ(toUtf16(std::wstring(1, static_cast<wchar_t>(0x110000))), u"\xFFFD");
    }
}

TEST(Unicode, EverySurrogateAloneIsFound)
{
    for (char32_t unit = 0xD800; unit <= 0xDFFF; ++unit)
    {
        const std::u16string lone(1, static_cast<char16_t>(unit));
        ASSERT_EQ(findIllFormed(u"ab" + lone), 2U);
        ASSERT_EQ(findIllFormed(u"a" + lone + u"b"), 1U);
    }
}

}
