// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// OpenBrackets.cpp - one pass over the text with a stack.
#include "tools/calc/OpenBrackets.h"

#include "tools/calc/Utf8.h"
#include "tools/calc/VocabularyItems.h"

namespace {

std::string operatorCharacters()
{
    std::string characters;
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        characters += item.kind == mathexpr::VocabularyKind::Operator ? toUtf8(item.symbol) : std::string();
    }
    return characters;
}

std::string_view withoutBlanksAtEnd(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// The function whose bracket stands right after the text.
std::string symbolBefore(std::string_view text)
{
    const std::string_view before = withoutBlanksAtEnd(text);
    return std::string(before.substr(beginOfLastName(before)));
}

}

bool isOfName(char unit)
{
    static const std::string others = " ()[],=" + operatorCharacters();
    return others.find(unit) == std::string::npos;
}

std::size_t beginOfLastName(std::string_view text)
{
    std::size_t begin = text.size();
    while (begin > 0 && isOfName(text[begin - 1]))
    {
        --begin;
    }
    return begin;
}

std::vector<OpenBracket> openBrackets(std::string_view text)
{
    std::vector<OpenBracket> open;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        switch (text[at])
        {
        case '(':
            open.push_back({symbolBefore(text.substr(0, at)), false, 0});
            break;
        case '[':
            open.push_back({"point", true, 0});
            break;
        case ')':
        case ']':
            if (!open.empty())
            {
                open.pop_back();
            }
            break;
        case ',':
            if (!open.empty())
            {
                ++open.back().argument;
            }
            break;
        default:
            break;
        }
    }
    return open;
}
