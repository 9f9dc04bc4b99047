// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// References.cpp - finds the uses of a name and renames them. The renamed text is read again, to check that every renamed
// use is a use of the new name.
#include "MTParserLib/names/MTNameIndex.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/editor/TextReading.h"

#include <algorithm>
#include <iterator>

namespace mathexpr {
namespace editor {
namespace {

/// Whether a bracket follows the token, which makes it a call, whatever its name.
bool isCalled(const TextReading& reading, const TextToken& token)
{
    const std::size_t next = reading.typed().find_first_not_of(L' ', endOf(token));
    return next != std::wstring_view::npos && (reading.typed()[next] == L'(' || reading.typed()[next] == L'[');
}

bool isUse(const TextReading& reading, const TextToken& token, std::wstring_view name)
{
    if (token.kind == TokenKind::Constant)
    {
        return reading.textOf(token) == name;
    }
    return isRenamable(token) && !isCalled(reading, token) && sameIgnoringCase(reading.textOf(token), name);
}

std::vector<TextToken> usesOf(const TextReading& reading, std::wstring_view name)
{
    std::vector<TextToken> uses;
    std::copy_if(reading.tokens().begin(), reading.tokens().end(), std::back_inserter(uses),
                 [&](const TextToken& token) { return isUse(reading, token, name); });
    return uses;
}

/// Whether an expression can use the name and an object can define it.
bool canBeVariable(const MathExpression& expression, std::wstring_view name)
{
    const TextReading alone(expression, name);
    return alone.tokens().size() == 1 && isRenamable(alone.tokens().front()) &&
           name.find(alone.names().registrar().getSyntax().decimalPoint) == std::wstring_view::npos &&
           name.find(L' ') == std::wstring_view::npos;
}

/// The text with every use replaced, and the new positions of the uses.
struct RenamedText
{
    std::wstring text;
    std::vector<std::size_t> starts;
};

RenamedText renamed(const TextReading& reading, const std::vector<TextToken>& uses, std::wstring_view newName)
{
    RenamedText result;
    std::size_t end = 0;
    for (const TextToken& use : uses)
    {
        result.text += reading.typed().substr(end, use.start - end);
        result.starts.push_back(result.text.size());
        result.text += newName;
        end = endOf(use);
    }
    result.text += reading.typed().substr(end);
    return result;
}

/// Index of the first use whose new name is not read as a use of that name; the number of uses if there is none.
std::size_t firstReadOtherwise(const MathExpression& expression, const RenamedText& text, std::wstring_view newName)
{
    const TextReading reading(expression, text.text);
    std::size_t index = 0;
    for (const TextToken& token : reading.tokens())
    {
        if (index != text.starts.size() && text.starts[index] < endOf(token))
        {
            if (!isUse(reading, token, newName))
            {
                return index;
            }
            ++index;
        }
    }
    return index;
}

Renaming renaming(const MathExpression& expression, const TextReading& reading, std::wstring_view name,
                  std::wstring_view newName)
{
    Renaming result;
    std::vector<TextToken> uses;
    if (reading.names().registrar().findConstant(name) == MTParserRegistrar::notFound)
    {
        uses = usesOf(reading, name);
    }
    if (uses.empty())
    {
        return result;
    }
    if (!canBeVariable(expression, newName))
    {
        result.refusal = RenameRefusal::NotAName;
        return result;
    }
    const std::vector<TextToken> taken = usesOf(reading, newName);
    if (!sameIgnoringCase(name, newName) && !taken.empty())
    {
        result.refusal = RenameRefusal::NameTaken;
        result.refusedAt = spanOf(taken.front());
        return result;
    }
    const std::size_t changed = firstReadOtherwise(expression, renamed(reading, uses, newName), newName);
    if (changed != uses.size())
    {
        result.refusal = RenameRefusal::ReadOtherwise;
        result.refusedAt = spanOf(uses[changed]);
        return result;
    }
    for (const TextToken& use : uses)
    {
        result.edits.push_back({spanOf(use), std::wstring(newName)});
    }
    return result;
}

}
}

std::vector<TextSpan> findReferences(const MathExpression& expression, const wchar_t* text, const wchar_t* name)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        const std::vector<TextToken> uses = editor::usesOf(reading, editor::viewOf(name));
        std::vector<TextSpan> spans;
        std::transform(uses.begin(), uses.end(), std::back_inserter(spans), editor::spanOf);
        return spans;
    });
}

Renaming renameInText(const MathExpression& expression, const wchar_t* text, const wchar_t* name,
                      const wchar_t* newName)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        return editor::renaming(expression, reading, editor::viewOf(name), editor::viewOf(newName));
    });
}

}
