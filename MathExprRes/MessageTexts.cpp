// MessageTexts.cpp - the built-in form of the texts, for platforms without string resources.

#include "MathExprRes/MessageTexts.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

enum class Language
{
    English
};

struct MessageRow
{
    std::uint32_t id;
    Language language;
    const wchar_t* text;
};

constexpr MessageRow messages[] = {
#define MESSAGE(number, language, text) {number, Language::language, L##text},
#include "MathExprRes/Messages.def"
#undef MESSAGE
};

constexpr std::uint32_t lastId = 19;

/// Whether the rows of a language are exactly the numbers 1 to 19, in this order, each with a text.
constexpr bool isComplete(Language language)
{
    std::uint32_t expected = 1;
    for (const MessageRow& row : messages)
    {
        if (row.language == language && (row.id != expected++ || *row.text == L'\0'))
        {
            return false;
        }
    }
    return expected == lastId + 1;
}

static_assert(isComplete(Language::English));

}

const wchar_t* messageText(std::uint32_t id)
{
    const auto* row = std::ranges::find_if(messages, [id](const MessageRow& candidate) {
        return candidate.id == id && candidate.language == Language::English;
    });
    return row == std::end(messages) ? nullptr : row->text;
}
