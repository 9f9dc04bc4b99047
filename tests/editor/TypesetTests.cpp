// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetTests.cpp - the output for chosen texts (typeset.txt), and properties of all output: XML that parses, balanced
// braces, and MathML that reads back to the same program.
#include "mathexpr/EditorServices.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "platform/Unicode.h"
#include "tests/editor/EditorTexts.h"
#include "tests/program/ProgramDump.h"
#include "tests/support/MessageRecorder.h"

#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using mathexpr::Notation;

std::wstring latexOf(const wchar_t* text)
{
    const EditedExpression edited;
    return mathexpr::typesetText(edited.expression, text, Notation::Latex);
}

std::wstring mathMlOf(const MathExpression& expression, const std::wstring& text)
{
    return mathexpr::typesetText(expression, text.c_str(), Notation::MathMl);
}

/// Removes the outermost element.
std::wstring bodyOf(const std::wstring& mathMl)
{
    const std::wstring begin = L"<math xmlns=\"http://www.w3.org/1998/Math/MathML\">";
    const std::wstring end = L"</math>";
    EXPECT_EQ(mathMl.substr(0, begin.size()), begin);
    EXPECT_EQ(mathMl.substr(mathMl.size() - end.size()), end);
    return mathMl.substr(begin.size(), mathMl.size() - begin.size() - end.size());
}

bool isVerbatim(const std::wstring& mathMl)
{
    return mathMl.find(L"<mtext mathvariant") != std::wstring::npos;
}

TEST(Typeset, SetsTheGoldenTexts)
{
    const EditedExpression edited;
    std::ifstream golden(TYPESET_GOLDEN);
    std::size_t count = 0;
    for (std::string line; std::getline(golden, line);)
    {
        if (line.empty() || line.front() == '#')
        {
            continue;
        }
        ++count;
        const std::wstring text = platform::toWide(line);
        const std::string set[] = {
            "    " + platform::toUtf8(mathexpr::typesetText(edited.expression, text.c_str(), Notation::Latex)),
            "    " + platform::toUtf8(bodyOf(mathMlOf(edited.expression, text)))};
        for (const std::string& expected : set)
        {
            std::getline(golden, line);
            EXPECT_EQ(expected, line);
        }
    }
    EXPECT_GT(count, 60U);
}

TEST(Typeset, SetsEveryOperator)
{
    const EditedExpression edited;
    mathexpr::VocabularyItem item;
    std::size_t count = 0;
    for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
    {
        if (item.kind == mathexpr::VocabularyKind::Operator)
        {
            ++count;
            const std::wstring text = (item.unary ? L"" : L"a") + std::wstring(item.symbol) + L"b";
            EXPECT_FALSE(isVerbatim(mathMlOf(edited.expression, text))) << item.symbol;
        }
    }
    EXPECT_EQ(count, 16U);
}

TEST(Typeset, TakesWhatIsNoCharacter)
{
    const EditedExpression edited;
    EXPECT_EQ(bodyOf(mathMlOf(edited.expression, L"a\x01"
                                                 L"b")),
              L"<mi>a\uFFFDb</mi>");
    EXPECT_EQ(latexOf(L"a\uFFFE+\xD800"), L"\\mathit{a\uFFFD} + \uFFFD");
    EXPECT_EQ(latexOf(nullptr), L"\\mathtt{}");
}

TEST(Typeset, SetsATextBeyondTheLimitVerbatim)
{
    EditedExpression edited;
    mathexpr::setLimits(edited.expression, {3, 0, 0});
    EXPECT_EQ(mathexpr::typesetText(edited.expression, L"1+2", Notation::Latex), L"1 + 2");
    EXPECT_EQ(mathexpr::typesetText(edited.expression, L"1+22", Notation::Latex), L"\\mathtt{1+22}");
}

TEST(Typeset, TakesVariablesAndNamesOfTheHost)
{
    EditedExpression edited({{L"p_1", VALTYPE()}});
    mathexpr::setVariable(edited.expression, L"width", VALTYPE());
    EXPECT_EQ(mathexpr::typesetText(edited.expression, L"width*p_1", Notation::Latex), L"\\mathit{width} \\cdot p_{1}");
}

TEST(Typeset, TakesAnyDepth)
{
    constexpr std::size_t depth = 200000;
    const EditedExpression edited;
    const std::wstring minuses(depth, L'-');
    EXPECT_GT(mathMlOf(edited.expression, minuses + L'1').size(), depth);
    std::wstring calls;
    for (std::size_t index = 0; index < depth; ++index)
    {
        calls += L"sqrt(";
    }
    EXPECT_FALSE(isVerbatim(mathMlOf(edited.expression, calls + L'1' + std::wstring(depth, L')'))));
}

// ----- reading back --------------------------------------------------------

struct Element
{
    std::wstring tag;
    std::wstring text;
    std::vector<Element> children;
};

/// Parses XML: elements, attributes, the five entities. Ill-formed XML fails the test.
class XmlReader
{
public:
    explicit XmlReader(const std::wstring& given) : xml(given) {}

    Element read()
    {
        Element root = readElement();
        EXPECT_EQ(at, xml.size());
        return root;
    }

private:
    Element readElement()
    {
        Element element;
        expect(L'<');
        const std::size_t tagEnd = xml.find_first_of(L" >", at);
        element.tag = xml.substr(at, tagEnd - at);
        at = xml.find(L'>', at) + 1;
        while (isSound && at < xml.size() && xml.compare(at, 2, L"</") != 0)
        {
            if (xml[at] == L'<')
            {
                element.children.push_back(readElement());
            }
            else
            {
                element.text += readCharacter();
            }
        }
        const std::wstring end = L"</" + element.tag + L'>';
        isSound = isSound && xml.compare(at, end.size(), end) == 0;
        EXPECT_TRUE(isSound) << "at " << at;
        at += end.size();
        return element;
    }

    wchar_t readCharacter()
    {
        static const std::map<std::wstring, wchar_t> entities{
            {L"&amp;", L'&'}, {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&quot;", L'"'}, {L"&apos;", L'\''}};
        if (xml[at] == L'&')
        {
            const std::size_t end = xml.find(L';', at);
            const auto entity = entities.find(xml.substr(at, end + 1 - at));
            isSound = isSound && entity != entities.end();
            EXPECT_TRUE(isSound) << "at " << at;
            at = end + 1;
            return isSound ? entity->second : L'\0';
        }
        isSound = isSound && xml[at] >= 0x20 && xml[at] != L'>';
        EXPECT_TRUE(isSound) << "at " << at;
        return xml[at++];
    }

    void expect(wchar_t character)
    {
        isSound = isSound && at < xml.size() && xml[at] == character;
        EXPECT_TRUE(isSound) << "at " << at;
        ++at;
    }

    const std::wstring& xml;
    std::size_t at = 0;
    bool isSound = true;
};

std::wstring expressionOf(const Element& element);

std::wstring joined(const std::vector<Element>& elements)
{
    std::wstring text;
    for (const Element& element : elements)
    {
        text += expressionOf(element);
    }
    return text;
}

std::wstring operatorOf(const std::wstring& sign)
{
    static const std::map<std::wstring, std::wstring> signs{{L"\u22C5", L"*"}, {L"\u2265", L">="}, {L"\u2264", L"<="},
                                                            {L"=", L"=="},     {L"\u2260", L"!="}, {L"\u2227", L"&"},
                                                            {L"\u2228", L"|"}, {L"\u00AC", L"!"},  {L"mod", L"%"},
                                                            {L"\u2061", L""},  {L":=", L"="}};
    const auto found = signs.find(sign);
    return found == signs.end() ? sign : found->second;
}

std::wstring nameOf(const Element& element)
{
    if (element.tag != L"msub")
    {
        return element.text;
    }
    std::wstring name = element.children[0].text;
    for (const Element& index : element.children[1].children)
    {
        name += index.tag == L"mo" ? L"" : L'_' + index.text;
    }
    return name;
}

std::wstring rowOf(const std::vector<Element>& parts)
{
    static const std::map<std::wstring, std::wstring> fences{
        {L"|", L"abs"}, {L"\u2308", L"ceil"}, {L"\u230A", L"floor"}, {L"(", L""}};
    static const std::map<std::wstring, std::wstring> functions{
        {L"arcsin", L"asin"}, {L"arccos", L"acos"}, {L"arctan", L"atan"}};
    const Element& first = parts.front();
    const auto fence = fences.find(first.text);
    if (first.tag == L"mo" && fence != fences.end())
    {
        const std::vector<Element> inside(parts.begin() + 1, parts.end() - 1);
        return (inside.front().tag == L"mtable" ? L"point" : fence->second) + L'(' + joined(inside) + L')';
    }
    if (parts.size() == 3 && parts[1].text == L"\u2061")
    {
        const std::wstring name = first.tag == L"msub" ? first.children[0].text : first.text;
        const auto own = functions.find(name);
        return (own == functions.end() ? name : own->second) + expressionOf(parts[2]);
    }
    if (parts.size() == 3 && parts[1].text == L":=")
    {
        return nameOf(first) + L'=' + expressionOf(parts[2]);
    }
    return L'(' + joined(parts) + L')';
}

/// The text of an element, with brackets around everything.
std::wstring expressionOf(const Element& element)
{
    const auto part = [&](std::size_t index) { return L'(' + expressionOf(element.children[index]) + L')'; };
    if (element.tag == L"mo")
    {
        return operatorOf(element.text);
    }
    if (element.tag == L"mi")
    {
        return element.text == L"\u03C0" ? L"(pi)" : L'(' + element.text + L')';
    }
    if (element.tag == L"msub")
    {
        return L'(' + nameOf(element) + L')';
    }
    if (element.tag == L"mfrac" || element.tag == L"msup")
    {
        return L'(' + part(0) + (element.tag == L"mfrac" ? L'/' : L'^') + part(1) + L')';
    }
    if (element.tag == L"msqrt")
    {
        return L"sqrt" + part(0);
    }
    if (element.tag == L"mrow")
    {
        return rowOf(element.children);
    }
    if (element.tag == L"mtable")
    {
        std::wstring rows;
        for (const Element& row : element.children)
        {
            rows += (rows.empty() ? L"" : L",") + joined(row.children[0].children);
        }
        return rows;
    }
    return element.text + joined(element.children);  // math, mn
}

std::string programOf(MathExpression& expression)
{
    MTParser& parser = mathexpr::EngineAccess::parserOf(expression);
    return std::regex_replace(dumpProgram(parser.getProgram(), parser.getRegistrar()), std::regex(" at [0-9]+"), "");
}

TEST(Typeset, ReadsBackToTheSameProgram)
{
    const MessageRecorder shown;  // message 19 is shown even in silent mode
    std::size_t count = 0;
    for (const TypedText& typed : languageTexts())
    {
        EditedExpression edited(typed.host);
        const std::wstring mathMl = mathMlOf(edited.expression, typed.text);
        const bool isRead = typed.text.size() < 1000 && mathMl.find(L"<mtext") == std::wstring::npos &&
                            mathMl.find(L'\uFFFD') == std::wstring::npos;
        if (isRead && edited.compiles(typed.text))
        {
            ++count;
            const std::string program = programOf(edited.expression);
            const std::wstring text = expressionOf(XmlReader(mathMl).read());
            EXPECT_TRUE(edited.compiles(text)) << typed.where << platform::toUtf8(L": " + typed.text + L" is " + text);
            EXPECT_EQ(programOf(edited.expression), program)
                << typed.where << platform::toUtf8(L": " + typed.text + L" is " + text);
        }
    }
    EXPECT_GT(count, 500U);
}

bool isNested(const std::wstring& latex)
{
    std::size_t depth = 0;
    for (std::size_t at = 0; at < latex.size(); ++at)
    {
        if (latex[at] == L'\\')
        {
            ++at;  // an escaped brace does not count
        }
        else if (latex[at] == L'{')
        {
            ++depth;
        }
        else if (latex[at] == L'}' && depth-- == 0)
        {
            return false;
        }
    }
    return depth == 0;
}

/// Whether a comma is in brackets that do not belong to a call, as in "(1,2)". Such texts have no notation.
bool hasStrayComma(const MathExpression& expression, const std::wstring& text)
{
    std::vector<bool> isCall;
    bool followsFunction = false;
    for (const mathexpr::TextToken& token : mathexpr::getTokens(expression, text.c_str()))
    {
        const wchar_t character = text[token.start];
        const bool isBracket =
            token.kind == mathexpr::TokenKind::Bracket || token.kind == mathexpr::TokenKind::Shorthand;
        if (isBracket && (character == L'(' || character == L'['))
        {
            isCall.push_back(followsFunction || character == L'[');
        }
        else if (isBracket && character != L'e' && !isCall.empty())
        {
            isCall.pop_back();
        }
        else if (token.kind == mathexpr::TokenKind::Separator && !isCall.empty() && !isCall.back())
        {
            return true;
        }
        followsFunction = token.kind == mathexpr::TokenKind::Function ||
                          (followsFunction && token.kind == mathexpr::TokenKind::Blank);
    }
    return false;
}

/// Whether an assignment has no name, as in "=5", or does not begin the text, as in "(1)x=2".
bool assignsOddly(const MathExpression& expression, const std::wstring& text)
{
    using mathexpr::TokenKind;
    bool isBeginning = true;
    TokenKind before = TokenKind::Blank;
    for (const mathexpr::TextToken& token : mathexpr::getTokens(expression, text.c_str()))
    {
        const bool assigns = token.kind == TokenKind::AssignedName || token.kind == TokenKind::AssignmentSign;
        if (assigns && (!isBeginning || (token.kind == TokenKind::AssignmentSign && before != TokenKind::AssignedName)))
        {
            return true;
        }
        isBeginning = isBeginning && (assigns || token.kind == TokenKind::Blank);
        before = token.kind == TokenKind::Blank ? before : token.kind;
    }
    return false;
}

TEST(Typeset, IsWellFormedForEveryText)
{
    const MessageRecorder shown;
    forEachBeginning([&](const TypedText& typed) {
        EditedExpression edited(typed.host);
        EXPECT_TRUE(isNested(mathexpr::typesetText(edited.expression, typed.text.c_str(), Notation::Latex)))
            << typed.where;
        const std::wstring mathMl = mathMlOf(edited.expression, typed.text);
        if (typed.text.size() < 1000)
        {
            XmlReader(mathMl).read();
        }
        if (edited.compiles(typed.text))
        {
            const bool isOdd =
                hasStrayComma(edited.expression, typed.text) || assignsOddly(edited.expression, typed.text);
            EXPECT_EQ(isVerbatim(mathMl), isOdd) << typed.where << platform::toUtf8(L": " + typed.text);
        }
    });
}

}
