// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionGuaranteeTests.cpp - every completion can be evaluated, and none is missing. Tested with all names after
// short texts, and with some names after each prefix of the language tests' texts.
#include "mathexpr/EditorServices.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "tests/MadeValues.h"
#include "tests/editor/EditorTexts.h"
#include "tests/support/Instrumented.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace {

using mathexpr::CompletionItem;
using mathexpr::TokenKind;

/// The possible endings of a text, which close every open call with a list of numbers or points. Empty if more than
/// three brackets are open.
std::vector<std::wstring> closings(const MathExpression& expression, const std::wstring& text)
{
    std::vector<std::wstring> all{L""};
    const std::vector<mathexpr::TextToken> tokens = mathexpr::getTokens(expression, text.c_str());
    std::size_t depth = 0;
    for (auto token = tokens.rbegin(); token != tokens.rend(); ++token)
    {
        const bool opens = text[token->start] == L'(' || text[token->start] == L'[';
        if (!opens || token->partner != mathexpr::noPartner)
        {
            continue;
        }
        ++depth;
        const bool isCall = std::next(token) != tokens.rend() && std::next(token)->kind == TokenKind::Function;
        std::vector<std::wstring> longer;
        for (const std::wstring& closing : all)
        {
            longer.push_back(closing + L')');
            std::wstring points;
            for (std::size_t missing = 0; missing < 3 && isCall; ++missing)
            {
                points += L",[" + std::to_wstring(missing) + L",1,0]";
                longer.push_back(closing + points + L')');
            }
            if (isCall)
            {
                longer.push_back(closing + L",1)");
            }
        }
        all = std::move(longer);
    }
    return depth > 3 ? std::vector<std::wstring>() : all;
}

/// Whether an item refused a value outside its domain, so that another value may be accepted.
bool failsByValue(const MathExpression& expression)
{
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
    return diagnostic.kind == mathexpr::ExpressionDiagnostic::Kind::None &&
           diagnostic.expected == mathexpr::Expected::InDomain;
}

enum class Verdict
{
    Refused,
    DependsOnValues,  ///< An item refuses one of its values; there may be further errors after it.
    Works,
};

/// Uses a new object, which has no variables of earlier texts.
Verdict verdictOnClosed(const Bindings& known, const std::wstring& text)
{
    EditedExpression edited(known);
    const auto ofFailure = [&] {
        return failsByValue(edited.expression) ? Verdict::DependsOnValues : Verdict::Refused;
    };
    if (!edited.compiles(text))
    {
        return ofFailure();
    }
    if (text.find(L"rand(") != std::wstring::npos)
    {
        return Verdict::DependsOnValues;  // completion draws no random numbers, so it cannot know more
    }
    try
    {
        VALTYPE value;
        return edited.expression.evaluate(value) ? Verdict::Works : ofFailure();
    }
    catch (const mathexpr::ParsingException&)
    {
        return Verdict::Refused;
    }
    catch (const mathexpr::DefinitionException&)
    {
        return Verdict::Refused;
    }
}

/// The texts to insert for each name. For a function, these are calls with numbers and with points.
using Continuations = std::map<std::wstring, std::vector<std::wstring>>;

const Continuations& continuations()
{
    static const Continuations made = [] {
        Continuations all{{L"width", {L"width"}}, {L"origin", {L"origin"}}};
        mathexpr::VocabularyItem item{};
        for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
        {
            if (item.kind == mathexpr::VocabularyKind::Constant)
            {
                all[item.symbol] = {item.symbol};
            }
            else if (item.kind == mathexpr::VocabularyKind::Function && item.nbArgs != 0)
            {
                const std::wstring arguments[][4] = {{L"2", L"3", L"4", L"5"},
                                                     {L"0.5", L"0.25", L"0.1", L"0.2"},
                                                     {L"[0,0,0]", L"[2,2,0]", L"[0,2,0]", L"[2,0,0]"}};
                for (const auto& values : arguments)
                {
                    std::wstring call;
                    for (std::size_t at = 0; at < (item.nbArgs == NB_ARGS_UNDEFINED ? 3 : item.nbArgs); ++at)
                    {
                        call += (at == 0 ? item.symbol + std::wstring(L"(") : L",") + values[at];
                    }
                    all[item.symbol].push_back(call + L')');
                }
            }
        }
        return all;
    }();
    return made;
}

/// Whether the function is a conversion, such as "i2mm". The two hundred conversions differ only in their constants.
bool isConversion(const std::wstring& name)
{
    return name.find(L'2') != std::wstring::npos;
}

/// A text, and an object that knows its variables.
struct Typed
{
    /// @param host  names that the text may use
    Typed(std::wstring given, const Bindings& host) : known(host), text(std::move(given))
    {
        known[L"width"] = number(5);
        known[L"origin"] = point(1, 2, 3);
        for (const auto& [name, value] : known)
        {
            isKnown = isKnown && value && defines(name, *value);
        }
        mathexpr::CompletionOptions all;
        all.maxCount = 100000;
        items = mathexpr::getCompletions(edited.expression, text.c_str(), static_cast<std::uint32_t>(text.size()), all);
    }

    bool defines(const std::wstring& name, const VALTYPE& value)
    {
        try
        {
            return mathexpr::setVariable(edited.expression, name.c_str(), value);
        }
        catch (const mathexpr::DefinitionException&)
        {
            return false;
        }
    }

    bool offers(const std::wstring& name) const
    {
        return std::any_of(items.begin(), items.end(), [&](const CompletionItem& item) { return item.name == name; });
    }

    std::wstring with(const CompletionItem& item) const
    {
        std::wstring completed = text;
        return completed.replace(item.edit.span.start, item.edit.span.length, item.edit.replacement);
    }

    /// The best verdict over all ways to close the text.
    Verdict verdictOn(const std::wstring& continued) const
    {
        Verdict best = Verdict::Refused;
        for (const std::wstring& closing : closings(edited.expression, continued))
        {
            best = std::max(best, verdictOnClosed(known, continued + closing));
        }
        return best;
    }

    /// The verdict if the name replaces the word at the end, which is a prefix of the name.
    Verdict verdictWith(const Continuations::value_type& continuation) const
    {
        const std::wstring before = text.substr(0, text.size() - word().size());
        Verdict best = Verdict::Refused;
        for (const std::wstring& inserted : continuation.second)
        {
            best = std::max(best, verdictOn(before + inserted));
        }
        return best;
    }

    /// The name or number at the end.
    std::wstring word() const
    {
        const std::vector<mathexpr::TextToken> tokens = mathexpr::getTokens(edited.expression, text.c_str());
        const bool endsInWord = !tokens.empty() && (tokens.back().kind <= TokenKind::UnknownName ||
                                                    tokens.back().kind == TokenKind::AssignedName);
        return endsInWord ? text.substr(tokens.back().start) : std::wstring();
    }

    Bindings known;
    EditedExpression edited;
    bool isKnown = true;  // whether all of them are variables of the object
    const std::wstring text;
    std::vector<CompletionItem> items;
};

std::string narrow(const std::wstring& text)
{
    return std::string(text.begin(), text.end());
}

// Every text is tried. Sanitizers take forty times as long, so under them only every 17th text is tried. The number is
// prime, so that the sample follows no pattern of the list.
constexpr std::size_t stride = isInstrumented ? 17 : 1;

TEST(Completions, AreAllThatWorkAfterShortTexts)
{
    const MessageRecorder shown;
    const std::vector<std::wstring> parts{L"1+",    L"-",  L"origin*", L"(", L"[", L"sin(",
                                          L"dist(", L"1,", L"origin,", L")", L"/", L"a="};
    std::vector<std::wstring> texts{L""};
    for (const std::wstring& part : parts)
    {
        texts.push_back(part);
        std::transform(parts.begin(), parts.end(), std::back_inserter(texts),
                       [&](const std::wstring& second) { return part + second; });
    }
    constexpr std::size_t conversionsLeftOut = 29;  // between two tried ones, after texts of two parts
    std::size_t turn = 0;
    std::size_t offered = 0;
    std::size_t refused = 0;
    for (std::size_t index = 0; index < texts.size(); index += stride)
    {
        const std::wstring& text = texts[index];
        Typed typed(text, {});
        const bool isShortest = text.empty() || std::find(parts.begin(), parts.end(), text) != parts.end();
        for (const auto& continuation : continuations())
        {
            if (!isShortest && isConversion(continuation.first) && turn++ % conversionsLeftOut != 0)
            {
                continue;
            }
            const bool isOffered = typed.offers(continuation.first);
            EXPECT_NE(typed.verdictWith(continuation), isOffered ? Verdict::Refused : Verdict::Works)
                << narrow(text) << " and " << narrow(continuation.first);
            ++(isOffered ? offered : refused);
        }
    }
    EXPECT_GT(offered, 3000U / stride);
    EXPECT_GT(refused, 3000U / stride);
}

TEST(Completions, AreCompleteAfterEveryText)
{
    constexpr std::size_t triedAfterEach = 3;
    const MessageRecorder shown;
    std::size_t turn = 0;
    std::size_t next = 0;  // continues after the previous text's candidates
    std::size_t offered = 0;
    std::size_t missing = 0;
    forEachBeginning([&](const TypedText& row) {
        if (turn++ % stride != 0 || row.text.size() > 60)
        {
            return;
        }
        Typed typed(row.text, row.host);
        if (!typed.isKnown)
        {
            return;
        }
        const std::wstring word = withoutBlanks(typed.word());
        for (std::size_t count = 0; count < std::min(triedAfterEach, typed.items.size()); ++count)
        {
            const std::wstring completed = typed.with(typed.items[next++ % typed.items.size()]);
            ++offered;
            EXPECT_NE(typed.verdictOn(completed), Verdict::Refused) << row.where << '\n' << narrow(completed);
        }
        for (std::size_t count = 0; count < triedAfterEach; ++count)
        {
            const auto continuation =
                std::next(continuations().begin(), static_cast<std::ptrdiff_t>(next++ % continuations().size()));
            if (continuation->first.substr(0, word.size()) == word && !typed.offers(continuation->first))
            {
                ++missing;
                EXPECT_NE(typed.verdictWith(*continuation), Verdict::Works)
                    << row.where << '\n'
                    << narrow(row.text) << " and " << narrow(continuation->first);
            }
        }
    });
    EXPECT_GT(offered, 10000U / stride);
    EXPECT_GT(missing, 1000U / stride);
}

}
