// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// editor_fuzzer.cpp - one editor service, chosen by the input, for one text, cursor and name. The result must be
// consistent with the text and with compiling it. All inputs use the same objects, which must not change.
#include "MTParserLib/names/MTNameIndex.h"
#include "fuzz/FuzzInput.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/Variables.h"
#include "tests/support/Compiles.h"
#include "tests/support/MessageRecorder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

/// Knows some names, and lists them or has an index of them. Names that begin with "p" are points.
class Host final : public IMathExprService, public mathexpr::IMathExprNameSource
{
public:
    explicit Host(bool givesIndex) : index(givesIndex ? std::make_unique<mathexpr::NameIndex>() : nullptr) {}

    /// Replaces the known names.
    void know(const std::vector<std::wstring>& others)
    {
        if (others == names)
        {
            return;
        }
        for (const std::wstring& name : std::exchange(names, others))
        {
            require(index == nullptr || index->remove(name.c_str()));
        }
        for (const std::wstring& name : names)
        {
            if (index != nullptr)
            {
                const bool isPoint = name[0] == L'p';
                index->add(name.c_str(),
                           {isPoint ? mathexpr::ValueKind::Point : mathexpr::ValueKind::Number, L"number", L""});
            }
        }
    }

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        value.type = name[0] == L'p' ? 1 : 0;
        return std::find(names.begin(), names.end(), name) != names.end();
    }

    const wchar_t* getName(std::uint32_t position) const override
    {
        return index == nullptr && position < names.size() ? names[position].c_str() : nullptr;
    }

    const mathexpr::NameIndex* getIndex() const override { return index.get(); }

private:
    std::vector<std::wstring> names;
    const std::unique_ptr<mathexpr::NameIndex> index;
};

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

/// The arguments of a service, made from an input.
struct Question
{
    std::uint32_t cursor;
    mathexpr::HostQuestions questions;
    std::wstring text;
    std::wstring name;
};

void checkTokens(const MathExpression& expression, const Question& asked)
{
    std::size_t end = 0;
    for (const mathexpr::TextToken& token : mathexpr::getTokens(expression, asked.text.c_str()))
    {
        require(token.start == end && token.length != 0);
        end += token.length;
    }
    require(end == asked.text.size());
}

void checkFormat(const MathExpression& expression, const Question& asked)
{
    const std::wstring formatted = mathexpr::formatText(expression, asked.text.c_str());
    require(withoutBlanks(formatted) == withoutBlanks(asked.text));
    require(mathexpr::formatText(expression, formatted.c_str()) == formatted);
}

void checkLiterals(const MathExpression& expression, const Question& asked)
{
    for (const mathexpr::TextLiteral& literal : mathexpr::getLiterals(expression, asked.text.c_str()))
    {
        require(isWithin(literal.span, asked.text));
    }
}

void checkTypesetting(const MathExpression& expression, const Question& asked)
{
    require(isNested(mathexpr::typesetText(expression, asked.text.c_str(), mathexpr::Notation::Latex)));
    require(hasPairedTags(mathexpr::typesetText(expression, asked.text.c_str(), mathexpr::Notation::MathMl)));
}

/// Finding and renaming must agree, and the renamed text must contain the new name at every position of the old name.
void checkRenaming(const MathExpression& expression, const std::wstring& text, const std::wstring& name)
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

void checkRenamingOfX(const MathExpression& expression, const Question& asked)
{
    checkRenaming(expression, asked.text, L"x");
}

void checkRenamingOfTheName(const MathExpression& expression, const Question& asked)
{
    checkRenaming(expression, asked.text, asked.name);
}

void checkHover(const MathExpression& expression, const Question& asked)
{
    const mathexpr::HoverInfo hover = mathexpr::getHover(expression, asked.text.c_str(), asked.cursor, asked.questions);
    require(isWithin(hover.span, asked.text) && isWithin(hover.valueSpan, asked.text));
}

void checkSignature(const MathExpression& expression, const Question& asked)
{
    const mathexpr::CallSignature signature = mathexpr::getSignature(expression, asked.text.c_str(), asked.cursor);
    require(isWithin(signature.name, asked.text) && signature.function.empty() == signature.overloads.empty());
}

void checkCompletions(const MathExpression& expression, const Question& asked)
{
    for (const mathexpr::CompletionItem& item : mathexpr::getCompletions(expression, asked.text.c_str(), asked.cursor))
    {
        require(isWithin(item.edit.span, asked.text));
        const std::size_t length = asked.text.size() - item.edit.span.length + item.edit.replacement.size();
        require(item.selection.start <= length && item.selection.length <= length - item.selection.start);
    }
}

void checkFixes(const MathExpression& expression, const Question& asked)
{
    for (const mathexpr::TextFix& fix : mathexpr::getFixes(expression, asked.text.c_str()))
    {
        require(isWithin(fix.edit.span, asked.text) && !fix.title.empty());
        std::wstring fixed = asked.text;
        fixed.replace(fix.edit.span.start, fix.edit.span.length, fix.edit.replacement);
        require(mathexpr::diagnoseText(expression, fixed.c_str()).state == mathexpr::TypingState::Complete);
    }
}

constexpr std::array checks{
    checkTokens, checkFormat,    checkLiterals,    checkTypesetting, checkRenamingOfX, checkRenamingOfTheName,
    checkHover,  checkSignature, checkCompletions, checkFixes};

/// An object that all inputs use, and its host.
class Subject
{
public:
    explicit Subject(bool givesIndex) : host(givesIndex), expression(makeExpression()) {}
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;

    /// @param service  index of a check; the last one is the diagnosis
    void check(std::size_t service, const Question& asked)
    {
        const MessageRecorder shown;
        tellNames(asked.name);
        if (service < checks.size())
        {
            checks[service](*expression, asked);
        }
        else
        {
            checkDiagnostic(asked);
        }
        require(shown.ids.empty() && !mathexpr::hasFailed(*expression));
        require(mathexpr::getVariableNames(*expression) == std::vector<std::wstring>{variable});
    }

private:
    static constexpr const wchar_t* variable = L"width";

    std::unique_ptr<MathExpression> makeExpression() const
    {
        auto made = std::make_unique<MathExpression>(true, &host);
        mathexpr::setNameSource(*made, &host);
        mathexpr::setVariable(*made, variable, VALTYPE());
        return made;
    }

    void tellNames(const std::wstring& name)
    {
        std::vector<std::wstring> names{L"x", L"size", L"p", L"a.b", L"1"};
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
        {
            names.push_back(name);
        }
        host.know(names);
    }

    /// The diagnosis while typing must equal the diagnostic of compiling.
    void checkDiagnostic(const Question& asked) const
    {
        const mathexpr::TypingDiagnostic diagnostic =
            mathexpr::diagnoseText(*expression, asked.text.c_str(), asked.questions);
        const std::unique_ptr<MathExpression> fresh = makeExpression();
        const MessageRecorder compiling;  // which shows a message about an integer that is too large
        require(compiles(*fresh, asked.text) == (diagnostic.state == mathexpr::TypingState::Complete));
        require(mathexpr::getDiagnostic(*fresh).code == diagnostic.failure.code);
    }

    Host host;
    const std::unique_ptr<MathExpression> expression;
};

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t serviceCount = checks.size() + 1;
    static std::array<Subject, 2> subjects{Subject(false), Subject(true)};
    FuzzInput input(data, size);
    const std::size_t chosen = input.byte();
    Question asked{};
    asked.cursor = input.byte();
    asked.questions = static_cast<mathexpr::HostQuestions>(input.below(2));
    asked.text = input.text();
    asked.name = input.name();
    subjects[chosen / serviceCount % subjects.size()].check(chosen % serviceCount, asked);
    return 0;
}
