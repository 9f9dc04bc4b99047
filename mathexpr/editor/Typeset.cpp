// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Typeset.cpp - expands the forms of the tree's nodes from the root down. Pending pieces are on an explicit stack, so
// that deep nesting does not lead to deep recursion.
#include "mathexpr/Typeset.h"

#include "MTParserLib/names/MTNameIndex.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/TypesetTree.h"
#include "platform/Unicode.h"

#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <string_view>
#include <utility>

namespace mathexpr {
namespace editor {
namespace {

struct Escape
{
    wchar_t character;
    std::array<const wchar_t*, 2> texts;  // by Notation; null if the character needs no escape
};

// clang-format off
constexpr Escape escapes[] = {
    {L' ',  {L"\\ ",            L"\u00A0"}},
    {L'#',  {L"\\#",            nullptr}},
    {L'$',  {L"\\$",            nullptr}},
    {L'%',  {L"\\%",            nullptr}},
    {L'&',  {L"\\&",            L"&amp;"}},
    {L'<',  {nullptr,           L"&lt;"}},
    {L'>',  {nullptr,           L"&gt;"}},
    {L'"',  {nullptr,           L"&quot;"}},
    {L'\'', {L"{'}",            L"&apos;"}},
    {L'\\', {L"{\\backslash}",  nullptr}},
    {L'^',  {L"{\\wedge}",      nullptr}},
    {L'_',  {L"\\_",            nullptr}},
    {L'{',  {L"\\{",            nullptr}},
    {L'}',  {L"\\}",            nullptr}},
    {L'~',  {L"{\\sim}",        nullptr}},
};
// clang-format on

/// Whether neither TeX nor XML accepts the character.
bool isNoCharacter(wchar_t character)
{
    const auto code = static_cast<std::uint32_t>(character);
    return code < 0x20 || (code & 0xFFFE) == 0xFFFE;
}

class Typesetter
{
public:
    Typesetter(const TypesetTree& givenTree, Notation wanted) : tree(givenTree), notation(wanted) {}

    std::wstring set()
    {
        pieces.push_back(node(tree.nodes.size() - 1));
        while (!pieces.empty())
        {
            const Piece piece = pieces.back();
            pieces.pop_back();
            if (piece.node == nullptr)
            {
                made += piece.literal;
            }
            else
            {
                set(*piece.node);
            }
        }
        return std::move(made);
    }

private:
    /// Literal text, or a node.
    struct Piece
    {
        std::wstring_view literal;
        const TypesetNode* node;
    };

    bool isLatex() const { return notation == Notation::Latex; }

    static Piece literal(std::wstring_view text) { return {text, nullptr}; }
    Piece node(std::size_t index) const { return {{}, &tree.nodes[index]}; }

    void set(const TypesetNode& node)
    {
        switch (node.kind)
        {
        case TypesetNode::Kind::Number:
            setElement(L"", L"mn", node.text);
            break;
        case TypesetNode::Kind::Constant:
            setConstant(foldCase(node.text.front()) == L'p');
            break;
        case TypesetNode::Kind::Name:
            setName(node.text);
            break;
        case TypesetNode::Kind::Words:
            escape(node.text);
            break;
        default:
            fillIn(node);
            break;
        }
    }

    /// Pushes the pieces of a form, the last one first.
    void fillIn(const TypesetNode& node)
    {
        const std::size_t first = pieces.size();
        std::wstring_view rest = node.form->in(notation);
        for (std::size_t at = rest.find(L'@'); at != std::wstring_view::npos; at = rest.find(L'@'))
        {
            pieces.push_back(literal(rest.substr(0, at)));
            addPlace(node, rest[at + 1]);
            rest.remove_prefix(at + 2);
        }
        pieces.push_back(literal(rest));
        std::reverse(pieces.begin() + static_cast<std::ptrdiff_t>(first), pieces.end());
    }

    void addPlace(const TypesetNode& parent, wchar_t place)
    {
        switch (place)
        {
        case L'n':
            escapedNames.push_back(escaped(parent.text));
            pieces.push_back(literal(escapedNames.back()));
            break;
        case L'*':
            addParts(parent, L"", isLatex() ? L", " : L"<mo>,</mo>", L"");
            break;
        case L':':
            addParts(parent, isLatex() ? L"" : L"<mtr><mtd>", isLatex() ? L" \\\\ " : L"</mtd></mtr><mtr><mtd>",
                     isLatex() ? L"" : L"</mtd></mtr>");
            break;
        default:
            addPart(parent, static_cast<std::size_t>(place - L'0'));
            break;
        }
    }

    void addParts(const TypesetNode& parent, const wchar_t* before, const wchar_t* between, const wchar_t* behind)
    {
        pieces.push_back(literal(before));
        for (std::size_t index = 0; index < parent.parts.size(); ++index)
        {
            pieces.push_back(literal(index == 0 ? L"" : between));
            pieces.push_back(node(parent.parts[index]));
        }
        pieces.push_back(literal(behind));
    }

    void addPart(const TypesetNode& parent, std::size_t index)
    {
        const Piece part = node(parent.parts[index]);
        const bool isConstruct = part.node->kind == TypesetNode::Kind::Construct;
        const bool isBracketed = isConstruct && part.node->form->grip < parent.form->least[index];
        const std::wstring_view brackets = typesetBrackets.in(notation);
        const std::size_t middle = isBracketed ? brackets.find(L'@') : 0;
        pieces.push_back(literal(brackets.substr(0, middle)));
        pieces.push_back(part);
        pieces.push_back(literal(isBracketed ? brackets.substr(middle + 2) : std::wstring_view()));
    }

    /// @param command  LaTeX command for the text; may be empty
    /// @param element  MathML element
    void setElement(const wchar_t* command, const wchar_t* element, std::wstring_view text)
    {
        const bool isPlain = isLatex() && *command == L'\0';
        if (!isPlain)
        {
            made += isLatex() ? command : std::wstring(L"<") + element + L'>';
        }
        escape(text);
        if (!isPlain)
        {
            made += isLatex() ? L"}" : std::wstring(L"</") + element + L'>';
        }
    }

    void setConstant(bool isPi)
    {
        if (isLatex())
        {
            made += isPi ? L"\\pi" : L"\\mathrm{e}";
        }
        else
        {
            made += isPi ? L"<mi>\u03C0</mi>" : L"<mi mathvariant=\"normal\">e</mi>";
        }
    }

    /// Sets the parts after each "_" as indices, unless one of them is empty.
    void setName(std::wstring_view name)
    {
        const std::size_t underscore = name.find(L'_');
        const bool isPlain = underscore == std::wstring_view::npos || name.front() == L'_' || name.back() == L'_' ||
                             name.find(L"__") != std::wstring_view::npos;
        if (isPlain)
        {
            setWord(name, L"\\mathit{");
            return;
        }
        made += isLatex() ? L"" : L"<msub>";
        setWord(name.substr(0, underscore), L"\\mathit{");
        made += isLatex() ? L"_{" : L"<mrow>";
        setIndices(name.substr(underscore + 1));
        made += isLatex() ? L"}" : L"</mrow></msub>";
    }

    void setIndices(std::wstring_view indices)
    {
        for (std::size_t at = indices.find(L'_'); at != std::wstring_view::npos; at = indices.find(L'_'))
        {
            setIndex(indices.substr(0, at));
            made += isLatex() ? L"," : L"<mo>,</mo>";
            indices.remove_prefix(at + 1);
        }
        setIndex(indices);
    }

    void setIndex(std::wstring_view index)
    {
        const bool isNumber = std::all_of(index.begin(), index.end(),
                                          [](wchar_t character) { return character >= L'0' && character <= L'9'; });
        if (isNumber)
        {
            setElement(L"", L"mn", index);
        }
        else
        {
            setWord(index, L"\\mathrm{");
        }
    }

    /// @param command  for a word of several letters
    void setWord(std::wstring_view word, const wchar_t* command)
    {
        setElement(word.size() == 1 ? L"" : command, L"mi", word);
    }

    void escape(std::wstring_view text) { made += escaped(text); }

    std::wstring escaped(std::wstring_view text) const
    {
        std::wstring safe;
        for (const wchar_t character : text)
        {
            const auto* const own = std::find_if(std::begin(escapes), std::end(escapes),
                                                 [=](const Escape& each) { return each.character == character; });
            const wchar_t* const replacement =
                own == std::end(escapes) ? nullptr : own->texts[static_cast<std::size_t>(notation)];
            if (replacement != nullptr)
            {
                safe += replacement;
            }
            else
            {
                safe += isNoCharacter(character) ? L'\uFFFD' : character;
            }
        }
        return safe;
    }

    const TypesetTree& tree;
    const Notation notation;
    std::vector<Piece> pieces;
    std::deque<std::wstring> escapedNames;  // owns names that pieces refer to
    std::wstring made;
};

}
}

std::wstring typesetText(const MathExpression& expression, const wchar_t* text, Notation notation)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        // The conversions drop what is not a character: lone surrogates and numbers above the last code point.
        const std::wstring typed = platform::toWide(platform::toUtf8(editor::viewOf(text)));
        const editor::TextReading reading(expression, typed);
        const editor::TypesetTree tree =
            editor::readTypesetTree(reading, EngineAccess::parserOf(expression).getRegistrar());
        return editor::Typesetter(tree, notation).set();
    });
}

}
