// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTDefinitions.h - the definitions that registrars share: operators, functions, constants and syntax, with their
// look-ups.
//
// The look-ups are inline because the compiler uses them for every token. A definition caches the properties of its item;
// it refers to item and symbol, which owned keeps alive. Definitions are small: the first object of a process pays for
// every page of memory that they touch.
#pragma once

#include "MTParserLib/names/MTNameIndex.h"
#include "MTParserLib/program/MTItemKernels.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "platform/Platform.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The syntax characters of the language.
struct SyntaxCharacters
{
    wchar_t decimalPoint = L'\0';
    wchar_t argumentSeparator = L'\0';
    wchar_t pointOpeningBracket = L'\0';
    wchar_t pointClosingBracket = L'\0';
};

struct MTOperatorDefinition
{
    const IMathOperator* item;
    const MTItemKernels* kernels;
    std::wstring_view symbol;
    std::int32_t precedence;
    bool unary;
    /// The next operator whose symbol begins with the same character; MTNameIndex::notFound after the last.
    std::size_t nextAlike = MTNameIndex::notFound;
};

struct MTFunctionDefinition
{
    const IMathFunction* item;
    const MTItemKernels* kernels;
    std::wstring_view symbol;
    std::uint32_t nbArgs;
    std::size_t nextOverload = MTNameIndex::notFound;  ///< MTNameIndex::notFound after the last.
};

struct MTConstantDefinition
{
    std::wstring name;
    VALTYPE value;
};

inline constexpr std::size_t nbAsciiCharacters = 128;

/// Distinguishes characters that can only be part of a name or number from those that may end one: the first character of
/// an operator's symbol, a bracket, the separator and "=".
class MTPlainCharacters
{
public:
    bool contains(wchar_t character) const noexcept
    {
        const auto code = static_cast<std::size_t>(character);
        return code < nbAsciiCharacters ? plain[code] : plainBeyondAscii;
    }

    /// @return the index of the first character from an index on that is not plain; the text's size if there is none
    std::size_t skip(std::wstring_view text, std::size_t at) const noexcept
    {
        while (at < text.size() && contains(text[at]))
        {
            ++at;
        }
        return at;
    }

    void set(wchar_t character, bool isPlain) noexcept
    {
        const auto code = static_cast<std::size_t>(character);
        (code < nbAsciiCharacters ? plain[code] : plainBeyondAscii) = isPlain;
    }

    MTPlainCharacters() noexcept { plain.fill(true); }

private:
    std::array<bool, nbAsciiCharacters> plain;
    bool plainBeyondAscii = true;  // one flag for all of them
};

/// The operators and functions of the vocabulary, in the order of definition; overloads are linked.
struct MTVocabulary
{
    std::shared_ptr<const void> items;
    std::vector<MTOperatorDefinition> operators;
    std::vector<MTFunctionDefinition> functions;
    MTNameIndex functionIndex;
};

struct MTDefinitions
{
    static constexpr std::size_t notFound = MTNameIndex::notFound;

    std::vector<std::shared_ptr<const void>> owned;  // keeps items and symbols alive
    std::vector<MTOperatorDefinition> operators;     // the longest symbol first
    std::vector<MTFunctionDefinition> functions;
    MTNameIndex functionIndex;  // of first overloads
    std::vector<MTConstantDefinition> constants;
    MTNameIndex constantIndex;
    bool everyNameIsPlain = true;  // of functions and constants
    bool hasHostItems = false;     // of classes that are not the library's
    SyntaxCharacters syntax;
    MTPlainCharacters plainCharacters;
    std::array<std::size_t, nbAsciiCharacters> firstOperator;  // by the ASCII character that its symbol begins with

    MTDefinitions() noexcept { indexCharacters(); }

    /// Inserts an operator before the first one with a shorter symbol; does not update the index.
    void insertOperator(const MTOperatorDefinition& definition);
    /// Call after operators or syntax have changed.
    void indexCharacters() noexcept;

    std::size_t firstOperatorWith(wchar_t character) const noexcept
    {
        const auto code = static_cast<std::size_t>(character);
        return code < firstOperator.size() ? firstOperator[code] : firstOperatorBeyondAscii(character);
    }

    /// The first operator of those with the longest symbol that the text begins with.
    std::size_t findOperatorAt(std::wstring_view text) const noexcept
    {
        if (text.empty())
        {
            return notFound;
        }
        std::size_t index = firstOperatorWith(text.front());
        while (index != notFound && operators[index].symbol.size() != 1 &&
               text.compare(0, operators[index].symbol.size(), operators[index].symbol) != 0)
        {
            index = operators[index].nextAlike;
        }
        return index;
    }

    /// The unary or the binary operator with the same symbol, from index on.
    std::size_t findOperatorFrom(std::size_t index, std::wstring_view symbol, bool unary) const noexcept
    {
        while (index != notFound &&
               !(operators[index].unary == unary && operators[index].symbol.size() == symbol.size() &&
                 (symbol.size() == 1 || operators[index].symbol == symbol)))
        {
            index = operators[index].nextAlike;
        }
        return index;
    }

    std::size_t findFunction(std::wstring_view name) const noexcept
    {
        const std::size_t found = functionIndex.find(
            MTNameIndex::hash(name), [&](std::size_t index) { return functions[index].symbol == name; });
        return found == notFound ? findOtherSpelling(functions, &MTFunctionDefinition::symbol, name) : found;
    }

    std::size_t findConstant(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        const std::size_t found =
            constantIndex.find(hash, [&](std::size_t index) { return constants[index].name == name; });
        return found == notFound ? findOtherSpelling(constants, &MTConstantDefinition::name, name) : found;
    }

private:
    std::size_t firstOperatorBeyondAscii(wchar_t character) const noexcept;

    /// Fallback of the index: searches all names for one that the system considers equal.
    template <class Entry, class Name>
    std::size_t findOtherSpelling(const std::vector<Entry>& entries, Name Entry::*nameOf,
                                  std::wstring_view name) const noexcept
    {
        if (!platform::comparesLinguistically || (everyNameIsPlain && platform::isPlainName(name)))
        {
            return notFound;
        }
        const auto found =  // not covered: only if the system compares linguistically, as Windows does
            std::find_if(entries.begin(), entries.end(),
                         [&](const Entry& entry) { return platform::isSameName(entry.*nameOf, name); });
        return found == entries.end() ? notFound : static_cast<std::size_t>(found - entries.begin());
    }
};
