// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitQuestion.cpp - parses quantities, each a number and a unit, then optionally "to" and a unit.
#include "tools/calc/units/UnitQuestion.h"

#include "tools/calc/text/Utf8.h"
#include "tools/calc/vocabulary/UnitNames.h"
#include "tools/calc/vocabulary/VocabularyItems.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view blanks = " \t";

/// Upper bounds on the length of a text, and on the words in the name of a unit.
constexpr std::size_t maxLength = 200;
constexpr std::size_t maxWords = 2;

struct Quantity
{
    std::string number;  ///< As an expression, such as 6+7/8.
    const UnitName* unit;
};

/// Parses the text from its beginning. Each function consumes what it finds, or nothing.
class Reader
{
public:
    explicit Reader(std::string_view text) : rest(text) { skipBlanks(); }

    bool isAtEnd() const { return rest.empty(); }

    /// A number such as 5, 2.5, 7/8, 6-7/8 and 6 7/8.
    std::optional<std::string> number()
    {
        const std::string whole = decimal();
        if (whole.empty())
        {
            return std::nullopt;
        }
        if (const auto divided = divisor())
        {
            return whole + '/' + *divided;
        }
        const std::string_view behindWhole = rest;
        take("-");
        const std::string numerator = decimal();
        const auto divided = numerator.empty() ? std::nullopt : divisor();
        if (divided)
        {
            return whole + '+' + numerator + '/' + *divided;
        }
        rest = behindWhole;
        return whole;
    }

    /// The unit with the longest name that matches the next words.
    const UnitName* unit()
    {
        for (std::size_t count = maxWords; count != 0; --count)
        {
            const std::string_view name = words(count);
            if (const UnitName* const found = name.empty() ? nullptr : unitCalled(name))
            {
                rest.remove_prefix(name.size());
                skipBlanks();
                return found;
            }
        }
        return nullptr;
    }

    bool take(std::string_view word)
    {
        if (!sameWord(rest.substr(0, word.size()), word))
        {
            return false;
        }
        rest.remove_prefix(word.size());
        skipBlanks();
        return true;
    }

    bool takePreposition()
    {
        constexpr std::array<std::string_view, 6> prepositions = {"to ", "in ", "into ", "as ", "->", "="};
        return std::ranges::any_of(prepositions, [this](std::string_view word) { return take(word); });
    }

private:
    void skipBlanks() { rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size())); }

    std::string decimal()
    {
        std::size_t end = std::min(rest.find_first_not_of(digits), rest.size());
        const bool hasPoint = end != 0 && rest.substr(end).starts_with('.');
        end = hasPoint ? std::min(rest.find_first_not_of(digits, end + 1), rest.size()) : end;
        std::string found(rest.substr(0, end));
        rest.remove_prefix(end);
        skipBlanks();
        return found;
    }

    std::optional<std::string> divisor()
    {
        const std::string_view before = rest;
        std::string found = take("/") ? decimal() : std::string();
        if (found.empty())
        {
            rest = before;
            return std::nullopt;
        }
        return found;
    }

    /// The next words, without blanks after them. A mark such as ' is a word, and ends the word before it.
    std::string_view words(std::size_t count) const
    {
        std::size_t end = 0;
        for (; count != 0; --count)
        {
            const std::size_t begin = std::min(rest.find_first_not_of(blanks, end), rest.size());
            const std::size_t stop = std::min(rest.find_first_of(" \t'\"-=", begin), rest.size());
            const std::size_t marks = std::min(rest.find_first_not_of('\'', begin), rest.size());
            end = stop != begin ? stop : std::min(std::max(marks, begin + 1), rest.size());
        }
        return rest.substr(0, end);
    }

    std::string_view rest;
};

bool isFunction(const std::string& symbol)
{
    return std::ranges::any_of(vocabularyItems(), [&](const mathexpr::VocabularyItem& item) {
        return item.kind == mathexpr::VocabularyKind::Function && toUtf8(item.symbol) == symbol;
    });
}

const UnitName* usualTarget(const UnitName& unit)
{
    switch (unit.family)
    {
    case mathexpr::VocabularyFamily::Angle:
        return unitOfSymbol(unit.symbol == "d" ? "r" : "d");
    case mathexpr::VocabularyFamily::Length:
        return unitOfSymbol(unit.symbol == "mm" ? "i" : "mm");
    case mathexpr::VocabularyFamily::Area:
        return unitOfSymbol(unit.symbol == "sm" ? "sf" : "sm");
    default:
        return unitOfSymbol(unit.symbol == "vm" ? "vf" : "vm");
    }
}

/// Replaces typographic marks of feet and inches by those of the keyboard.
std::string withPlainMarks(std::string text)
{
    struct Mark
    {
        std::string_view written;
        std::string_view plain;
    };
    constexpr std::array<Mark, 4> marks = {{{"\u2032", "'"}, {"\u2019", "'"}, {"\u2033", "\""}, {"\u201D", "\""}}};
    for (const auto& [written, plain] : marks)
    {
        for (std::size_t at = text.find(written); at != std::string::npos; at = text.find(written, at))
        {
            text.replace(at, written.size(), plain);
        }
    }
    return text;
}

}

std::optional<std::string> expressionForUnits(std::string_view text)
{
    if (text.size() > maxLength)
    {
        return std::nullopt;
    }
    const std::string plain = withPlainMarks(std::string(text));
    Reader reader(plain);
    std::vector<Quantity> quantities;
    const UnitName* target = nullptr;
    while (!reader.isAtEnd())
    {
        if (!quantities.empty() && reader.takePreposition())
        {
            target = reader.unit();
            if (target == nullptr || !reader.isAtEnd())
            {
                return std::nullopt;
            }
            break;
        }
        const bool isSigned = quantities.empty() && reader.take("-");
        const auto number = reader.number();
        const UnitName* const unit = number ? reader.unit() : nullptr;
        if (unit == nullptr)
        {
            return std::nullopt;
        }
        quantities.push_back({(isSigned ? "-" : "") + *number, unit});
    }
    if (quantities.empty())
    {
        return std::nullopt;
    }
    target = target == nullptr ? usualTarget(*quantities.front().unit) : target;
    std::string expression;
    bool converts = false;
    for (const Quantity& quantity : quantities)
    {
        expression += expression.empty() ? "" : "+";
        if (quantity.unit == target)
        {
            expression += quantity.number;
            continue;
        }
        const std::string function = quantity.unit->symbol + '2' + target->symbol;
        if (quantity.unit->family != target->family || !isFunction(function))
        {
            return std::nullopt;
        }
        expression += function + '(' + quantity.number + ')';
        converts = true;
    }
    return converts ? std::optional(expression) : std::nullopt;
}
