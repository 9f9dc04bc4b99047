// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hints.cpp - selects the sentences and fills them in. A correction is used only if it compiles in a separate compiler,
// which knows the same names, does not call the host and shows nothing.
#include "mathexpr/hints/Hints.h"

#include "mathexpr/IMathFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/MessageSource.h"
#include "mathexpr/ThreadMessageDisplay.h"
#include "mathexpr/hints/Corrections.h"
#include "mathexpr/hints/TextPieces.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mathexpr {
namespace {

/// Maximum length of a text to correct. Users do not type longer texts.
constexpr std::size_t maxCorrected = 1000;

/// Maximum length of a correction that is quoted in full. Of longer ones, only the changed part is quoted.
constexpr std::size_t maxQuoted = 60;

/// Replaces the placeholders of a sentence.
std::wstring sentence(Hint::Id hint, std::initializer_list<std::wstring_view> arguments)
{
    const std::wstring pattern = loadMessage(hint);
    std::wstring filled;
    for (std::size_t at = 0; at < pattern.size(); ++at)
    {
        if (pattern[at] != L'{')
        {
            filled += pattern[at];
            continue;
        }
        filled += arguments.begin()[pattern[at + 1] - L'0'];
        at += 2;
    }
    return filled;
}

/// "a, b or c"
std::wstring alternatives(const std::vector<std::wstring>& words)
{
    std::wstring text;
    for (std::size_t index = 0; index < words.size(); ++index)
    {
        if (index != 0)
        {
            text += loadMessage(index + 1 == words.size() ? Hint::ListOr : Hint::ListComma);
        }
        text += words[index];
    }
    return text;
}

bool compiles(const std::wstring& text, const MTParser& parser, const KnownNames& names)
{
    const ProcessMessageDisplay nowhere{[](void*, std::uint32_t, const wchar_t*) {}, nullptr};
    const ThreadMessageDisplay muffled(&nowhere);
    MathExpression::MemVariableFactory factory;
    MTParserRegistrar registrar(&names.registrar());
    registrar.setVariableFactory(&factory, true);
    MTCompilation compilation;
    MTParserCompiler trial(registrar, compilation, true, &names);
    trial.setMaxInteger(parser.getMaxInteger());
    std::wstring assigned;
    try
    {
        return trial.compile(text.c_str(), parser.getLimits(), assigned);
    }
    catch (const ParsingException&)  // some failures raise it even if messages are shown
    {
        return false;
    }
}

/// The part in which two texts differ, extended to whole words.
ExpressionFix differenceOf(std::wstring_view typed, std::wstring_view corrected)
{
    const auto [typedAt, correctedAt] = std::mismatch(typed.begin(), typed.end(), corrected.begin(), corrected.end());
    auto begin = static_cast<std::size_t>(typedAt - typed.begin());
    while (begin != 0 && !endsWord(typed[begin - 1]))
    {
        --begin;
    }
    std::size_t tail = 0;  // length of the common ending
    while (tail < std::min(typed.size(), corrected.size()) - begin &&
           typed[typed.size() - 1 - tail] == corrected[corrected.size() - 1 - tail])
    {
        ++tail;
    }
    while (tail != 0 && !endsWord(typed[typed.size() - tail]))
    {
        --tail;
    }
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(typed.size() - tail - begin),
            std::wstring(corrected.substr(begin, corrected.size() - tail - begin))};
}

/// The quotation of a corrected text in a sentence.
std::wstring quoted(const std::wstring& corrected, const ExpressionFix& fix)
{
    return corrected.size() <= maxQuoted ? corrected : fix.replacement;
}

/// Writes at most two sentences: what would be accepted, and what may be meant.
class HintWriter
{
public:
    HintWriter(ExpressionDiagnostic& given, const MTParser& failed, const KnownNames& known)
        : diagnostic(given), parser(failed), names(known), typed(failed.getTypedText())
    {}

    void write()
    {
        addArguments();
        if (diagnostic.kind == ExpressionDiagnostic::Kind::Definition)
        {
            addRefusedName();
        }
        const bool mayBeCorrected = diagnostic.kind != ExpressionDiagnostic::Kind::None &&
                                    (diagnostic.expected & (Expected::Number | Expected::Less)) == 0;
        if (!mayBeCorrected || typed.size() > maxCorrected || !addCorrection())
        {
            addExpected();
            addSuggestions();
        }
    }

private:
    void add(Hint::Id hint, std::initializer_list<std::wstring_view> arguments = {})
    {
        diagnostic.hints.push_back(sentence(hint, arguments));
    }

    /// What the function concerned accepts.
    void addArguments()
    {
        const std::wstring_view callee = nameOfEmptyCall();
        if (!callee.empty())
        {
            addCounts(callee, names.argumentCounts(callee), 0);
        }
        else if ((diagnostic.expected & Expected::OtherCount) != 0)
        {
            addCounts(diagnostic.itemName, diagnostic.acceptedArgCounts, diagnostic.nbArgs);
        }
        else if (diagnostic.expected == Expected::Number && diagnostic.code == ParsingError::ArgumentKind)
        {
            add(Hint::NeedsNumber, {diagnostic.itemName});
        }
    }

    /// What would be accepted at the failure.
    void addExpected()
    {
        if (!diagnostic.hints.empty())
        {
            return;
        }
        if ((diagnostic.expected & Expected::Value) != 0)
        {
            add(Hint::ExpectedValue);
        }
        else if ((diagnostic.expected & Expected::ClosingBracket) != 0)
        {
            add(Hint::ExpectedInBracket);
        }
        else if ((diagnostic.expected & Expected::End) != 0)
        {
            add(Hint::ExpectedOutside);
        }
    }

    /// The function in "rand()"; empty if the failure is not an empty call.
    std::wstring_view nameOfEmptyCall() const
    {
        if (diagnostic.code != ParsingError::ArgumentEmpty || diagnostic.itemName != L"()")
        {
            return {};
        }
        const std::wstring_view before = std::wstring_view(typed).substr(0, diagnostic.start);
        const std::wstring_view untilName = before.substr(0, before.find_last_not_of(L' ') + 1);
        const auto begin = std::find_if(untilName.rbegin(), untilName.rend(), endsWord);
        const std::wstring_view name = untilName.substr(static_cast<std::size_t>(untilName.rend() - begin));
        return names.isFunction(name) ? name : std::wstring_view();
    }

    /// Overloads without arguments are ignored, since a call without arguments is not an expression.
    void addCounts(std::wstring_view function, const std::vector<std::uint32_t>& accepted, std::uint32_t given)
    {
        if (std::find(accepted.begin(), accepted.end(), NB_ARGS_UNDEFINED) != accepted.end())
        {
            add(Hint::TakesAny, {function});
            return;
        }
        for (const std::uint32_t count : accepted)
        {
            if (count != 0)
            {
                add(count == 1 ? Hint::TakesOne : Hint::TakesSeveral,
                    {function, std::to_wstring(count), std::to_wstring(given)});
            }
        }
    }

    void addRefusedName()
    {
        switch (diagnostic.code)
        {
        case DefinitionError::VariableNameIsNumber:
            add(Hint::NameIsNumber, {diagnostic.itemName});
            break;
        case DefinitionError::VariableNameIsConstant:
            add(Hint::NameIsConstant, {diagnostic.itemName});
            break;
        default:
            add(Hint::NameHolds, {diagnostic.conflictItemName});
            break;
        }
    }

    bool addCorrection()
    {
        const MTSpan span{diagnostic.start, std::size_t{diagnostic.start} + diagnostic.length};
        const Correction correction = correct(typed, parser.getFailure(), span, names);
        if (!correction.text.empty() && compiles(correction.text, parser, names))
        {
            if (!correction.other.empty() && compiles(correction.other, parser, names))
            {
                addChoice(correction);
            }
            else
            {
                addFix(correction.text, correction.reason);
            }
            return true;
        }
        return addNearestName() || addUnknownBeforePlus();
    }

    void addFix(const std::wstring& corrected, Hint::Id reason)
    {
        diagnostic.fix = differenceOf(typed, corrected);
        add(reason, {quoted(corrected, *diagnostic.fix)});
    }

    void addChoice(const Correction& correction)
    {
        const std::wstring text = quoted(correction.text, differenceOf(typed, correction.text));
        const std::wstring other = quoted(correction.other, differenceOf(typed, correction.other));
        if (correction.choice == Hint::TwoReadings)
        {
            add(Hint::TwoReadings, {text, other});
        }
        else
        {
            add(Hint::DidYouMean, {alternatives({text, other})});
        }
    }

    /// The only name that may be meant.
    bool addNearestName()
    {
        if (diagnostic.suggestions.size() != 1)
        {
            return false;
        }
        std::wstring corrected = typed;
        corrected.replace(diagnostic.start, diagnostic.length, diagnostic.suggestions.front());
        if (!compiles(corrected, parser, names))
        {
            return false;
        }
        diagnostic.fix = ExpressionFix{diagnostic.start, diagnostic.length, diagnostic.suggestions.front()};
        add(Hint::DidYouMean, {diagnostic.suggestions.front()});
        return true;
    }

    /// Mentions a name that only the host's service may know, with a final "e" before "+". It is not corrected, since
    /// the final "e" of an unknown name is part of the operator "e+".
    bool addUnknownBeforePlus()
    {
        const std::size_t end = std::size_t{diagnostic.start} + diagnostic.length;
        if (diagnostic.message != Message::UnknownName ||
            piecesOf(std::wstring_view(typed).substr(end)).front().text != L"e")
        {
            return false;
        }
        add(Hint::PowerOfTen, {L'(' + diagnostic.itemName + L"e)+"});
        return true;
    }

    /// For a function name without brackets, describes its arguments instead of repeating the name.
    void addSuggestions()
    {
        if (diagnostic.message == Message::UnknownName && names.isFunction(diagnostic.itemName))
        {
            addCounts(diagnostic.itemName, names.argumentCounts(diagnostic.itemName), 0);
        }
        else if (!diagnostic.suggestions.empty())
        {
            add(Hint::DidYouMean, {alternatives(diagnostic.suggestions)});
        }
    }

    ExpressionDiagnostic& diagnostic;
    const MTParser& parser;
    const KnownNames& names;
    const std::wstring& typed;
};

}

void addHints(ExpressionDiagnostic& diagnostic, const MTParser& parser, const KnownNames& names)
{
    HintWriter(diagnostic, parser, names).write();
}

}
