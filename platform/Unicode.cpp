// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Unicode.cpp - see Unicode.h. A reader decodes code points from one encoding, a writer encodes them in another.

#include "platform/Unicode.h"

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t illFormed = 0xFFFFFFFF;

constexpr bool isSurrogate(char32_t point) noexcept
{
    return point >= 0xD800 && point <= 0xDFFF;
}

/// Reads a code point; for illFormed, at is unchanged.
char32_t readPoint(std::string_view text, std::size_t& at) noexcept
{
    const auto byteAt = [text](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const unsigned lead = byteAt(at);
    if (lead < 0x80)
    {
        ++at;
        return lead;
    }
    if (lead < 0xC2 || lead > 0xF4)
    {
        return illFormed;
    }
    // The range of the second byte excludes overlong forms, surrogates, and numbers above the last code point.
    const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned greatest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byteAt(at + 1) < least || byteAt(at + 1) > greatest)
    {
        return illFormed;
    }
    const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t point = lead & (0x7FU >> size);
    for (std::size_t index = at + 1; index < at + size; ++index)
    {
        if ((byteAt(index) & 0xC0U) != 0x80)
        {
            return illFormed;
        }
        point = point << 6 | (byteAt(index) & 0x3FU);
    }
    at += size;
    return point;
}

/// The same for 16-bit units of any type.
template <class Unit>
char32_t readPair(std::basic_string_view<Unit> text, std::size_t& at) noexcept
{
    const char32_t first = static_cast<char16_t>(text[at]);
    if (!isSurrogate(first))
    {
        ++at;
        return first;
    }
    const char32_t second = at + 1 < text.size() ? static_cast<char16_t>(text[at + 1]) : U'\0';
    if (first > 0xDBFF || second < 0xDC00 || second > 0xDFFF)
    {
        return illFormed;
    }
    at += 2;
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

char32_t readPoint(std::u16string_view text, std::size_t& at) noexcept
{
    return readPair(text, at);
}

/// Wide text is not checked; it may contain any units.
char32_t readPoint(std::wstring_view text, std::size_t& at) noexcept
{
    char32_t point = illFormed;
    if constexpr (sizeof(wchar_t) == sizeof(char16_t))
    {
        point = readPair(text, at);
        at += point == illFormed ? 1 : 0;
    }
    else
    {
        point = static_cast<char32_t>(text[at++]);
    }
    return point > 0x10FFFF || isSurrogate(point) ? replacement : point;
}

void append(std::string& text, char32_t point)
{
    const auto put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto putContinuation = [put](char32_t bits) { put(0x80 | (bits & 0x3F)); };
    if (point < 0x80)
    {
        put(point);
    }
    else if (point < 0x800)
    {
        put(0xC0 | point >> 6);
        putContinuation(point);
    }
    else if (point < 0x10000)
    {
        put(0xE0 | point >> 12);
        putContinuation(point >> 6);
        putContinuation(point);
    }
    else
    {
        put(0xF0 | point >> 18);
        putContinuation(point >> 12);
        putContinuation(point >> 6);
        putContinuation(point);
    }
}

/// UTF-16, or UTF-32 for wider units.
template <class Unit>
void append(std::basic_string<Unit>& text, char32_t point)
{
    if (sizeof(Unit) > sizeof(char16_t) || point < 0x10000)
    {
        text += static_cast<Unit>(point);
        return;
    }
    text += static_cast<Unit>(0xD800 + ((point - 0x10000) >> 10));
    text += static_cast<Unit>(0xDC00 + ((point - 0x10000) & 0x3FF));
}

template <class View>
std::size_t find(View text) noexcept
{
    for (std::size_t at = 0; at < text.size();)
    {
        if (readPoint(text, at) == illFormed)
        {
            return at;
        }
    }
    return platform::wellFormed;
}

template <class Text, class View>
Text convert(View text)
{
    Text converted;
    converted.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
    {
        append(converted, readPoint(text, at));
    }
    return converted;
}

}

std::size_t platform::findIllFormed(std::string_view text) noexcept
{
    return find(text);
}

std::size_t platform::findIllFormed(std::u16string_view text) noexcept
{
    return find(text);
}

std::wstring platform::toWide(std::string_view text)
{
    return convert<std::wstring>(text);
}

std::wstring platform::toWide(std::u16string_view text)
{
    return convert<std::wstring>(text);
}

std::string platform::toUtf8(std::wstring_view text)
{
    return convert<std::string>(text);
}

std::u16string platform::toUtf16(std::wstring_view text)
{
    return convert<std::u16string>(text);
}
