// DiagnosticText.cpp - see DiagnosticText.h.
#include "tools/calc/DiagnosticText.h"

#include "mathexpr/IMathFunction.h"
#include "tools/calc/Utf8.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr const char* indent = "  ";

/// So many characters are shown before the failure and from its beginning on.
constexpr std::size_t shownBefore = 40;
constexpr std::size_t shownFrom = 36;

/// Characters, not bytes of UTF-8. Wide and combining ones count as one.
std::size_t columnsOf(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char unit) { return (static_cast<unsigned char>(unit) & 0xC0) != 0x80; }));
}

/// A part of the text that stays on its line.
std::string printable(std::wstring_view text)
{
    std::wstring line(text);
    std::replace_if(
        line.begin(), line.end(), [](wchar_t character) { return character < L' '; }, L' ');
    return toUtf8(line);
}

/// Moves a boundary off the middle of a pair of units.
std::size_t boundary(std::wstring_view text, std::size_t at)
{
    const bool splits = at > 0 && at < text.size() && text[at] >= 0xDC00 && text[at] <= 0xDFFF;
    return splits ? at - 1 : at;
}

std::string excerpt(std::wstring_view text, std::size_t start, std::size_t length)
{
    const std::size_t first = start > shownBefore ? boundary(text, start - shownBefore) : 0;
    const std::size_t end = boundary(text, std::min(text.size(), start + shownFrom));
    const std::size_t markedEnd = std::min(start + length, end);

    const std::string before = (first == 0 ? "" : "...") + printable(text.substr(first, start - first));
    const std::string marked = printable(text.substr(start, markedEnd - start));
    const std::string after = printable(text.substr(markedEnd, end - markedEnd)) + (end == text.size() ? "" : "...");
    return indent + before + marked + after + '\n' + indent + std::string(columnsOf(before), ' ') +
           std::string(columnsOf(marked), '^') + '\n';
}

/// "a, b or c"
std::string alternatives(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index)
    {
        text += index == 0 ? "" : index + 1 == names.size() ? " or " : ", ";
        text += names[index];
    }
    return text;
}

std::string expectedText(std::uint32_t expected)
{
    struct Phrase
    {
        std::uint32_t bit;
        const char* text;
    };
    constexpr Phrase phrases[] = {
        {Expected::Value, "a value"},
        {Expected::Operator, "an operator"},
        {Expected::ClosingBracket, "a closing bracket"},
        {Expected::Separator, "a comma"},
        {Expected::End, "the end"},
    };
    std::vector<std::string> accepted;
    for (const Phrase& phrase : phrases)
    {
        if ((expected & phrase.bit) != 0)
        {
            accepted.emplace_back(phrase.text);
        }
    }
    return accepted.empty() ? std::string() : "Expected " + alternatives(accepted) + '.';
}

std::string countText(const ExpressionDiagnostic& diagnostic)
{
    if ((diagnostic.expected & Expected::OtherCount) == 0)
    {
        return {};
    }
    std::vector<std::string> accepted;
    for (const std::uint32_t count : diagnostic.acceptedNbArgs)
    {
        accepted.push_back(count == NB_ARGS_UNDEFINED ? "any number of" : std::to_string(count));
    }
    const bool isOne = accepted.size() == 1 && accepted.front() == "1";
    return toUtf8(diagnostic.itemName) + " takes " + alternatives(accepted) + (isOne ? " argument" : " arguments") +
           ", not " + std::to_string(diagnostic.nbArgs) + '.';
}

}

std::string diagnosticText(std::wstring_view expression, const ExpressionDiagnostic& diagnostic)
{
    std::string text;
    if (diagnostic.length != 0 && diagnostic.start + diagnostic.length <= expression.size())
    {
        text += excerpt(expression, diagnostic.start, diagnostic.length);
    }
    for (const std::string& sentence :
         {expectedText(diagnostic.expected), countText(diagnostic), suggestionText(diagnostic.suggestions)})
    {
        if (!sentence.empty())
        {
            text += indent + sentence + '\n';
        }
    }
    return text;
}

std::string suggestionText(const std::vector<std::wstring>& names)
{
    std::vector<std::string> narrow;
    std::transform(names.begin(), names.end(), std::back_inserter(narrow),
                   [](const std::wstring& name) { return toUtf8(name); });
    return narrow.empty() ? std::string() : "Did you mean " + alternatives(narrow) + '?';
}
