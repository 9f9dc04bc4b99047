// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTDefinitions.h - what registrars may share: operators, functions, constants and syntax, with their look-ups.
//
// The look-ups are inline, since the compiler asks them for every token. A definition of an item is what the item
// answered when it was defined; it refers to item and symbol, which live as long as what all definitions own. Definitions
// are small, since the first object of a process pays for each page of memory that they begin.
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
    /// The next one whose symbol begins with the same character; MTNameIndex::notFound after the last.
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

/// Tells the characters that can only be part of a name or number from those that may end one: the first of an
/// operator's symbol, a bracket, the separator and "=".
class MTPlainCharacters
{
public:
    bool contains(wchar_t character) const noexcept
    {
        const auto code = static_cast<std::size_t>(character);
        return code < ascii ? plain[code] : plainBeyondAscii;
    }

    void set(wchar_t character, bool isPlain) noexcept
    {
        const auto code = static_cast<std::size_t>(character);
        (code < ascii ? plain[code] : plainBeyondAscii) = isPlain;
    }

    MTPlainCharacters() noexcept { plain.fill(true); }

private:
    static constexpr std::size_t ascii = 128;
    std::array<bool, ascii> plain;
    bool plainBeyondAscii = true;  // for all of them together
};

/// The operators and functions of the vocabulary, each in the order of its definition; overloads are linked.
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
    MTNameIndex functionIndex;  // the first overload
    std::vector<MTConstantDefinition> constants;
    MTNameIndex constantIndex;
    bool everyNameIsPlain = true;  // of functions and constants
    bool hasHostItems = false;     // operators or functions that are known by their interface only
    SyntaxCharacters syntax;
    MTPlainCharacters plainCharacters;
    std::array<std::size_t, 128> firstOperator;  // whose symbol begins with an ASCII character

    MTDefinitions() noexcept { indexCharacters(); }

    /// Adds an operator before the first one with a shorter symbol; not indexed yet.
    void insertOperator(const MTOperatorDefinition& definition);
    /// To be called when operators or syntax have changed.
    void indexCharacters() noexcept;

    std::size_t firstOperatorWith(wchar_t character) const noexcept
    {
        const auto code = static_cast<std::size_t>(character);
        return code < firstOperator.size() ? firstOperator[code] : firstOperatorBeyondAscii(character);
    }

    /// The first operator, of those with the longest symbol, whose symbol the text begins with.
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

    /// The unary or the binary operator among an operator and those after it, with the same symbol.
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

    /// Looks among all names, where the index knows none that is spelt alike, for one that the system takes for the same.
    template <class Entry, class Name>
    std::size_t findOtherSpelling(const std::vector<Entry>& entries, Name Entry::*nameOf,
                                  std::wstring_view name) const noexcept
    {
        if (!platform::comparesLinguistically || (everyNameIsPlain && platform::isPlainName(name)))
        {
            return notFound;
        }
        const auto found =  // not covered: only where the system compares linguistically, which is Windows
            std::find_if(entries.begin(), entries.end(),
                         [&](const Entry& entry) { return platform::isSameName(entry.*nameOf, name); });
        return found == entries.end() ? notFound : static_cast<std::size_t>(found - entries.begin());
    }
};
