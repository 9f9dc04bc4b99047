// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionTests.cpp - what is offered compiles, and nothing that would is left out.
#include "mathexpr/EditorServices.h"
#include "mathexpr/Limits.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "tests/MadeValues.h"
#include "tests/editor/EditorTexts.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using mathexpr::CompletionItem;
using mathexpr::CompletionOptions;
using mathexpr::TokenKind;
using mathexpr::ValueKind;

class Notes final : public mathexpr::IMathExprNameNotes
{
public:
    mathexpr::NameNotes getNotes(const wchar_t* name) const override
    {
        const std::wstring_view wanted = name;
        if (wanted == L"corner")
        {
            return {ValueKind::Point, L"corner of the inch plate", {}};
        }
        if (wanted == L"depth")
        {
            return {ValueKind::Either, {}, {}};
        }
        if (wanted == L"circular")
        {
            return {ValueKind::Number, {}, L"depends on this one"};
        }
        return {};
    }
};

class Completing : public testing::Test
{
public:
    Completing()
        : edited({{L"depth", number(7)}, {L"corner", point(1, 1, 1)}, {L"circular", number(1)}, {L"a.b", number(1)}})
    {
        mathexpr::setVariable(edited.expression, L"width", number(5));
        mathexpr::setVariable(edited.expression, L"size", number(6));
        mathexpr::setVariable(edited.expression, L"origin", point(1, 2, 3));
    }

    /// @param text  with "|" where the cursor is
    std::vector<CompletionItem> items(std::wstring text, const CompletionOptions& options = {}) const
    {
        const std::size_t cursor = text.find(L'|');
        text.erase(cursor, 1);
        return mathexpr::getCompletions(edited.expression, text.c_str(), static_cast<std::uint32_t>(cursor), options);
    }

    std::set<std::wstring> names(const std::wstring& text) const
    {
        CompletionOptions all;
        all.maxCount = 1000;
        std::set<std::wstring> found;
        for (const CompletionItem& item : items(text, all))
        {
            found.insert(item.name);
        }
        return found;
    }

    /// The text after the first completion, with its selection in angle brackets.
    std::wstring first(std::wstring text, const CompletionOptions& options = {}) const
    {
        const std::vector<CompletionItem> found = items(text, options);
        if (found.empty())
        {
            return {};
        }
        text.erase(text.find(L'|'), 1);
        const CompletionItem& item = found.front();
        text.replace(item.edit.span.start, item.edit.span.length, item.edit.replacement);
        text.insert(item.selection.start + item.selection.length, L">");
        return text.insert(item.selection.start, L"<");
    }

    EditedExpression edited;
};

TEST_F(Completing, ReplacesTheWordAtTheCursor)
{
    EXPECT_EQ(first(L"2*wi|"), L"2*width<>");
    EXPECT_EQ(first(L"2*wi|xyz+1"), L"2*width<>+1");
    EXPECT_EQ(first(L"2* w i|"), L"2* width<>");
    EXPECT_EQ(first(L"a = wid|"), L"a = width<>");
    EXPECT_EQ(first(L"1+|origin"), L"1+" + items(L"1+|origin").front().edit.replacement + L"<>");
    EXPECT_EQ(first(L"sqr|"), L"sqr(<2>)");
    EXPECT_EQ(first(L"dis|"), L"dist(<[0,0,0],[2,2,0]>)");
    EXPECT_EQ(items(L"wi|").front().value->x, 5.0);
    EXPECT_EQ(items(L"wi|").front().kind, TokenKind::Variable);
    EXPECT_EQ(items(L"dis|").front().description, L"Distance between two endpoints");
}

TEST_F(Completing, LeavesWhatFollowsAlone)
{
    EXPECT_EQ(first(L"sqr|(4)"), L"sqr<>(4)");
    EXPECT_EQ(first(L"sq|x(4)"), L"sqr<>(4)");
    EXPECT_EQ(first(L"ab| [1,2]"), L"abs(<> [1,2]");
    EXPECT_EQ(names(L"wid| (4)"), std::set<std::wstring>{});
    EXPECT_EQ(names(L"siz|+1"), std::set<std::wstring>{});  // "size+" would be read as "siz*10^"
    EXPECT_EQ(first(L"siz|-1"), L"size<>-1");
    EXPECT_EQ(first(L"wid|=3"), L"width<>=3");
    EXPECT_EQ(names(L"p|=3"), std::set<std::wstring>{});
}

TEST_F(Completing, OffersWhatIsAcceptedThere)
{
    EXPECT_EQ(names(L"1 |"), std::set<std::wstring>{});
    EXPECT_EQ(names(L"width |"), std::set<std::wstring>{});
    EXPECT_EQ(names(L"(1)|"), std::set<std::wstring>{});
    EXPECT_EQ(names(L"1+)+|"), std::set<std::wstring>{});
    EXPECT_TRUE(names(L"dist(|").count(L"origin"));
    EXPECT_FALSE(names(L"dist(|").count(L"width"));
    EXPECT_TRUE(names(L"dist(|").count(L"vec"));
    EXPECT_FALSE(names(L"dist(|").count(L"sin"));
    EXPECT_TRUE(names(L"sin(|").count(L"width"));
    EXPECT_FALSE(names(L"sin(|").count(L"origin"));
    EXPECT_TRUE(names(L"asin(|").count(L"pi"));  // not defined for pi, but for other values
    EXPECT_TRUE(names(L"|").count(L"sin"));
    EXPECT_TRUE(names(L"|").count(L"depth"));
    EXPECT_FALSE(names(L"|").count(L"a.b"));
    EXPECT_FALSE(names(L"pi=|").count(L"width"));
    EXPECT_EQ(names(L"|xyzzy(1)").count(L"width"), 0U);
    EXPECT_EQ(edited.host.lookupCount, 0U);
}

TEST_F(Completing, MatchesBeginningsThenWordsThenUnits)
{
    EXPECT_EQ(first(L"inch|"), L"m2i(<2>)");
    EXPECT_TRUE(names(L"inch|").count(L"i2mm"));
    EXPECT_TRUE(names(L"mm|").count(L"i2mm"));
    EXPECT_FALSE(names(L"mm|").count(L"i2cm"));
    EXPECT_TRUE(names(L"cosine|").count(L"cosh"));
    EXPECT_EQ(first(L"WI|"), L"width<>");
    EXPECT_EQ(first(L"s|"), L"sin(<2>)");
    EXPECT_EQ(first(L"siz|"), L"size<>");
    EXPECT_EQ(first(L"(siz|"), L"(size<>");
    mathexpr::setVariable(edited.expression, L"outer_Wall", number(1));
    mathexpr::setVariable(edited.expression, L"innerWall", number(1));
    mathexpr::setVariable(edited.expression, L"floor2floor", number(1));  // no conversion
    EXPECT_EQ(names(L"wal|"), (std::set<std::wstring>{L"outer_Wall", L"innerWall"}));
}

TEST_F(Completing, OrdersByKindUseAndLength)
{
    const std::vector<CompletionItem> all = items(L"dist(|");
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.front().valueKind, ValueKind::Point);
    CompletionOptions recent;
    recent.recent = {L"sqrt", L"width"};
    EXPECT_EQ(items(L"|", recent)[0].name, L"sqrt");
    EXPECT_EQ(items(L"|", recent)[1].name, L"width");
    EXPECT_EQ(items(L"sqr|", recent)[0].name, L"sqrt");
    EXPECT_EQ(items(L"sqr|")[0].name, L"sqr");
    EXPECT_EQ(items(L"|").size(), 200U);
    EXPECT_EQ(items(L"|").back().valueKind == ValueKind::Unknown, false);  // those of unknown kind come last
}

TEST_F(Completing, KnowsWhatTheHostSaysOfItsNames)
{
    EXPECT_EQ(items(L"dep|").front().kind, TokenKind::HostName);
    EXPECT_EQ(items(L"dep|").front().valueKind, ValueKind::Unknown);
    const Notes notes;
    CompletionOptions options;
    options.notes = &notes;
    EXPECT_EQ(items(L"corn|", options).front().valueKind, ValueKind::Point);
    EXPECT_EQ(items(L"corn|", options).front().description, L"corner of the inch plate");
    EXPECT_TRUE(items(L"sin(corn|", options).empty());
    EXPECT_EQ(items(L"dep|", options).front().valueKind, ValueKind::Either);
    EXPECT_EQ(items(L"plat|", options).front().name, L"corner");
    EXPECT_EQ(items(L"circ|", options).back().unavailable, L"depends on this one");
    EXPECT_EQ(items(L"circ|", options).back().name, L"circular");
    EXPECT_TRUE(edited.compiles(L"depth"));
    EXPECT_EQ(items(L"dep|").size(), 1U);  // a variable now, and not offered twice
    EXPECT_EQ(items(L"dep|").front().kind, TokenKind::HostName);
}

class OddNames final : public mathexpr::IMathExprNameSource
{
public:
    const wchar_t* getName(std::uint32_t index) const override
    {
        constexpr const wchar_t* names[] = {L"twice", L"twice", L"", L"pi", L"1", L"t b", L"t[", L"t+"};
        return index < std::size(names) ? names[index] : nullptr;
    }
};

TEST_F(Completing, OffersOnlyNamesThatATextCanHold)
{
    const OddNames odd;
    mathexpr::setNameSource(edited.expression, &odd);
    const std::vector<CompletionItem> offered = items(L"tw|");
    EXPECT_EQ(std::count_if(offered.begin(), offered.end(),
                            [](const CompletionItem& item) { return item.kind == TokenKind::HostName; }),
              1);
    EXPECT_EQ(items(L"pi|").front().kind, TokenKind::Constant);
    EXPECT_FALSE(names(L"|").count(L""));
    EXPECT_FALSE(names(L"|").count(L"1"));
    EXPECT_FALSE(names(L"|").count(L"t b"));
    EXPECT_FALSE(names(L"|").count(L"t["));
    EXPECT_FALSE(names(L"|").count(L"t+"));
}

TEST_F(Completing, PutsACallAroundTheWordBehind)
{
    for (const CompletionItem& item : items(L"1+| origin*2"))
    {
        EXPECT_EQ(item.edit.replacement, item.name + L'(');
        EXPECT_EQ(item.selection.length, 0U);
    }
    EXPECT_TRUE(names(L"1+| origin*2").count(L"sin"));
}

TEST_F(Completing, KeepsTheLimits)
{
    mathexpr::setLimits(edited.expression, {6, 0, 0});
    EXPECT_EQ(names(L"2*wi|"), std::set<std::wstring>{});
    EXPECT_EQ(names(L"2*si|"), std::set<std::wstring>{L"size"});
    EXPECT_EQ(names(L"2*si|xxxxxxxx"), std::set<std::wstring>{});
    mathexpr::setLimits(edited.expression, {10, 0, 0});
    EXPECT_EQ(names(L"2*m2m|"), (std::set<std::wstring>{L"m2m", L"m2mm"}));  // "2*m2mile(2)" has eleven characters
    mathexpr::setLimits(edited.expression, {0, 3, 0});
    EXPECT_EQ(names(L"1+wid|"), std::set<std::wstring>{L"width"});
    EXPECT_EQ(names(L"1+2+wid|"), std::set<std::wstring>{});
    EXPECT_EQ(names(L"1+si|"), (std::set<std::wstring>{L"size"}));  // a call has two records
}

/// What a text can be closed with: each call that is open with an argument list of numbers or of points. Nothing where
/// more than three brackets are open.
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

enum class Acceptance
{
    Refused,
    Compiles,
    Evaluates,
};

/// Whether the text compiles, or would with other values, once it is closed.
Acceptance acceptanceOf(EditedExpression& edited, const std::wstring& text)
{
    Acceptance best = Acceptance::Refused;
    for (const std::wstring& closing : closings(edited.expression, text))
    {
        const auto depends = [&] {
            const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(edited.expression);
            return diagnostic.kind == mathexpr::ExpressionDiagnostic::Kind::None &&
                   diagnostic.expected == mathexpr::Expected::InDomain;
        };
        VALTYPE value;
        if (!edited.compiles(text + closing))
        {
            best = depends() ? std::max(best, Acceptance::Compiles) : best;
            continue;
        }
        best = std::max(best, Acceptance::Compiles);
        mathexpr::dropAssignment(edited.expression);
        try
        {
            if (edited.expression.evaluate(value) || depends())
            {
                return Acceptance::Evaluates;
            }
        }
        catch (const mathexpr::ParsingException&)
        {
            continue;
        }
    }
    return best;
}

TEST(Completions, CompileAfterEveryText)
{
    const MessageRecorder shown;
    std::size_t count = 0;
    std::size_t number = 0;
    forEachBeginning([&](const TypedText& typed) {
        if (typed.text.size() > 60 || ++number % 5 != 0)
        {
            return;
        }
        EditedExpression edited(typed.host);
        CompletionOptions options;
        options.maxCount = 12;
        const auto cursor = static_cast<std::uint32_t>(typed.text.size());
        for (const CompletionItem& item :
             mathexpr::getCompletions(edited.expression, typed.text.c_str(), cursor, options))
        {
            std::wstring text = typed.text;
            text.replace(item.edit.span.start, item.edit.span.length, item.edit.replacement);
            ++count;
            EditedExpression other(typed.host);
            EXPECT_NE(acceptanceOf(other, text), Acceptance::Refused) << typed.where << '\n'
                                                                      << std::string(text.begin(), text.end());
        }
    });
    EXPECT_GT(count, 5000U);
}

TEST_F(Completing, LeavesNothingOutThatCompiles)
{
    const MessageRecorder shown;
    edited.host.lookupCount = 0;
    std::vector<std::wstring> texts{L""};
    const std::vector<std::wstring> parts{L"1+",    L"-",  L"origin*", L"(", L"[", L"sin(",
                                          L"dist(", L"1,", L"origin,", L")", L"/", L"a="};
    for (const std::wstring& part : parts)
    {
        texts.push_back(part);
        for (const std::wstring& second : parts)
        {
            texts.push_back(part + second);
        }
    }
    std::size_t count = 0;
    for (const std::wstring& text : texts)
    {
        const std::set<std::wstring> offered = names(text + L'|');
        std::vector<std::pair<std::wstring, std::wstring>> candidates{
            {L"width", L"width"}, {L"origin", L"origin"}, {L"pi", L"pi"}};
        for (const wchar_t* call :
             {L"sin(30)", L"min(1,2)", L"vec([0,0,0],[1,2,3])", L"sum(1,2,3)", L"i2mm(1)", L"point(1,2,3)"})
        {
            const std::wstring whole = call;
            candidates.emplace_back(whole.substr(0, whole.find(L'(')), whole);
        }
        for (const auto& [name, inserted] : candidates)
        {
            const Acceptance acceptance = acceptanceOf(edited, text + inserted);
            count += offered.count(name);
            if (acceptance == Acceptance::Evaluates)
            {
                EXPECT_TRUE(offered.count(name))
                    << std::string(text.begin(), text.end()) << " and " << std::string(name.begin(), name.end());
            }
            else
            {
                EXPECT_FALSE(offered.count(name))
                    << std::string(text.begin(), text.end()) << " but not " << std::string(name.begin(), name.end());
            }
        }
    }
    EXPECT_GT(count, 300U);
}

}
