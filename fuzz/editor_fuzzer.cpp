// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// editor_fuzzer.cpp - all editor services for one text, cursor and name. The results must be consistent with the text
// and with compiling it, and the object must not change.
#include "MTParserLib/names/MTNameIndex.h"
#include "fuzz/FuzzInput.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/Variables.h"
#include "tests/support/Compiles.h"
#include "tests/support/MessageRecorder.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class Host final : public IMathExprService, public mathexpr::IMathExprNameSource
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        value.type = name[0] == L'p' ? 1 : 0;
        return std::any_of(std::begin(names), std::end(names),
                           [name](const wchar_t* each) { return each == std::wstring_view(name); });
    }

    const wchar_t* getName(std::uint32_t index) const override
    {
        return index < std::size(names) ? names[index] : nullptr;
    }

private:
    static constexpr const wchar_t* names[] = {L"x", L"size", L"p", L"a.b", L"1"};
};

void require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

std::wstring withoutBlanks(std::wstring text)
{
    text.erase(std::remove(text.begin(), text.end(), L' '), text.end());
    return text;
}

bool isWithin(const mathexpr::TextSpan& span, const std::wstring& text)
{
    return span.start <= text.size() && span.length <= text.size() - span.start;
}

/// Whether the braces of LaTeX are balanced.
bool isNested(const std::wstring& latex)
{
    std::size_t depth = 0;
    for (std::size_t at = 0; at < latex.size(); ++at)
    {
        switch (latex[at])
        {
        case L'\\':
            ++at;  // an escaped brace does not count
            break;
        case L'{':
            ++depth;
            break;
        case L'}':
            require(depth != 0);
            --depth;
            break;
        default:
            break;
        }
    }
    return depth == 0;
}

/// Whether the elements of MathML are properly nested.
bool hasPairedTags(const std::wstring& mathml)
{
    std::vector<std::wstring> open;
    for (std::size_t at = mathml.find(L'<'); at != std::wstring::npos; at = mathml.find(L'<', at + 1))
    {
        const std::size_t end = mathml.find_first_of(L" >", at);
        const bool closes = mathml[at + 1] == L'/';
        const std::wstring name = mathml.substr(at + (closes ? 2 : 1), end - at - (closes ? 2 : 1));
        require(end != std::wstring::npos && (!closes || (!open.empty() && open.back() == name)));
        if (closes)
        {
            open.pop_back();
        }
        else
        {
            open.push_back(name);
        }
    }
    return open.empty();
}

void checkText(const MathExpression& expression, const std::wstring& text)
{
    std::size_t end = 0;
    for (const mathexpr::TextToken& token : mathexpr::getTokens(expression, text.c_str()))
    {
        require(token.start == end && token.length != 0);
        end += token.length;
    }
    require(end == text.size());
    const std::wstring formatted = mathexpr::formatText(expression, text.c_str());
    require(withoutBlanks(formatted) == withoutBlanks(text));
    require(mathexpr::formatText(expression, formatted.c_str()) == formatted);
    for (const mathexpr::TextLiteral& literal : mathexpr::getLiterals(expression, text.c_str()))
    {
        require(isWithin(literal.span, text));
    }
    require(isNested(mathexpr::typesetText(expression, text.c_str(), mathexpr::Notation::Latex)));
    require(hasPairedTags(mathexpr::typesetText(expression, text.c_str(), mathexpr::Notation::MathMl)));
}

/// Finding and renaming agree, and the renamed text contains the new name at the position of the old one.
void checkName(const MathExpression& expression, const std::wstring& text, const std::wstring& name)
{
    const std::vector<mathexpr::TextSpan> uses = mathexpr::findReferences(expression, text.c_str(), name.c_str());
    std::size_t end = 0;
    for (const mathexpr::TextSpan& use : uses)
    {
        require(isWithin(use, text) && use.start >= end && use.length != 0);
        end = std::size_t{use.start} + use.length;
        const std::wstring used = withoutBlanks(text.substr(use.start, use.length));
        require(sameIgnoringCase(used, name));
    }
    for (const wchar_t* const newName : {L"size", L"renamed"})
    {
        const mathexpr::Renaming renaming = mathexpr::renameInText(expression, text.c_str(), name.c_str(), newName);
        require(renaming.refusal == mathexpr::RenameRefusal::None || renaming.edits.empty());
        require(renaming.edits.size() <= uses.size());
        std::wstring renamed = text;
        for (std::size_t left = renaming.edits.size(); left != 0; --left)
        {
            const mathexpr::TextEdit& edit = renaming.edits[left - 1];
            require(isWithin(edit.span, text));
            renamed.replace(edit.span.start, edit.span.length, edit.replacement);
        }
        require(mathexpr::findReferences(expression, renamed.c_str(), newName).size() >= renaming.edits.size());
    }
}

void checkCursor(const MathExpression& expression, const std::wstring& text, std::uint32_t cursor,
                 mathexpr::HostQuestions questions)
{
    const mathexpr::HoverInfo hover = mathexpr::getHover(expression, text.c_str(), cursor, questions);
    require(isWithin(hover.span, text) && isWithin(hover.valueSpan, text));
    const mathexpr::CallSignature signature = mathexpr::getSignature(expression, text.c_str(), cursor);
    require(isWithin(signature.name, text) && signature.function.empty() == signature.overloads.empty());
    for (const mathexpr::CompletionItem& item : mathexpr::getCompletions(expression, text.c_str(), cursor))
    {
        require(isWithin(item.edit.span, text));
        std::wstring completed = text;
        completed.replace(item.edit.span.start, item.edit.span.length, item.edit.replacement);
        require(isWithin(item.selection, completed));
    }
}

/// An index gives the same results as a list of names.
void checkIndex(const std::wstring& text, std::uint32_t cursor, const std::wstring& name)
{
    mathexpr::NameIndex index;
    index.add(name.c_str(), {mathexpr::ValueKind::Number, L"number", L""});
    index.add(L"innerWall_depth");
    MathExpression expression(true, nullptr);
    mathexpr::setNameSource(expression, &index);
    checkText(expression, text);
    checkCursor(expression, text, cursor, mathexpr::HostQuestions::Forbidden);
    mathexpr::diagnoseText(expression, text.c_str());
    require(index.remove(name.c_str()) == !name.empty());
    require(!index.remove(name.c_str()));
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Host host;
    FuzzInput input(data, size);
    const std::uint32_t cursor = input.byte();
    const auto questions = static_cast<mathexpr::HostQuestions>(input.below(2));
    const std::wstring text = input.text();
    const std::wstring name = input.name();

    const MessageRecorder shown;
    MathExpression expression(true, &host);
    mathexpr::setNameSource(expression, &host);
    mathexpr::setVariable(expression, L"width", VALTYPE());
    checkText(expression, text);
    checkCursor(expression, text, cursor, questions);
    checkName(expression, text, L"x");
    checkName(expression, text, name);
    checkIndex(text, cursor, name);
    const mathexpr::TypingDiagnostic diagnostic = mathexpr::diagnoseText(expression, text.c_str(), questions);
    for (const mathexpr::TextFix& fix : mathexpr::getFixes(expression, text.c_str()))
    {
        require(isWithin(fix.edit.span, text) && !fix.title.empty());
        std::wstring fixed = text;
        fixed.replace(fix.edit.span.start, fix.edit.span.length, fix.edit.replacement);
        require(mathexpr::diagnoseText(expression, fixed.c_str()).state == mathexpr::TypingState::Complete);
    }

    require(shown.ids.empty() && !mathexpr::hasFailed(expression));
    require(mathexpr::getVariableNames(expression).size() == 1);
    require(compiles(expression, text) == (diagnostic.state == mathexpr::TypingState::Complete));
    require(mathexpr::getDiagnostic(expression).code == diagnostic.failure.code);
    return 0;
}
