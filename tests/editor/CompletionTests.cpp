// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionTests.cpp - the completions at chosen positions: their order and edits.
#include "mathexpr/EditorServices.h"
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "tests/MadeValues.h"
#include "tests/editor/EditorTexts.h"

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

    /// @param text  with "|" at the cursor
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

TEST_F(Completing, OffersNothingBehindAWordAndABlank)
{
    EXPECT_EQ(names(L"a |"), std::set<std::wstring>{});  // "a sin(2)" would be read as "asin(2)"
    EXPECT_EQ(names(L"2+ wi|"), std::set<std::wstring>{L"width"});
}

TEST_F(Completing, DoesNotChangeTheTextAfterTheWord)
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
    EXPECT_TRUE(names(L"asin(|").count(L"pi"));  // pi is outside the domain, other values are not
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
    mathexpr::setVariable(edited.expression, L"floor2floor", number(1));  // not a conversion
    mathexpr::setVariable(edited.expression, L"xWall", number(1));
    EXPECT_EQ(names(L"wal|"), (std::set<std::wstring>{L"outer_Wall", L"innerWall", L"xWall"}));
}

/// The conversions from or to units with these symbols.
std::set<std::wstring> conversionsOf(const std::set<std::wstring>& symbols)
{
    std::set<std::wstring> found;
    mathexpr::VocabularyItem item{};
    for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
    {
        const std::wstring name = item.symbol;
        const std::size_t middle = name.find(L'2');
        const bool isConversion = item.family >= mathexpr::VocabularyFamily::Angle &&
                                  item.family <= mathexpr::VocabularyFamily::Volume && middle != std::wstring::npos;
        if (isConversion && (symbols.count(name.substr(0, middle)) != 0 || symbols.count(name.substr(middle + 1)) != 0))
        {
            found.insert(name);
        }
    }
    return found;
}

TEST_F(Completing, MatchesWhatPeopleCallAUnit)
{
    const std::set<std::wstring> feet = conversionsOf({L"f", L"su", L"sf", L"vf"});
    EXPECT_GT(feet.size(), 40U);
    EXPECT_EQ(names(L"feet|"), feet);  // also of survey, square and cubic feet
    EXPECT_EQ(names(L"FEE|"), feet);
    std::set<std::wstring> foot = feet;
    foot.insert({L"cm2i", L"mile2i"});  // their descriptions mention a foot
    EXPECT_EQ(names(L"foot|"), foot);
    EXPECT_EQ(first(L"feet|"), L"m2f(<2>)");
    EXPECT_TRUE(names(L"ft|").count(L"i2f"));
    EXPECT_EQ(names(L"inches|"), conversionsOf({L"i", L"si", L"vi"}));
    EXPECT_EQ(names(L"meters|"), names(L"metres|"));
    EXPECT_EQ(names(L"acre|"), conversionsOf({L"sa"}));
    EXPECT_EQ(names(L"revolution|"), conversionsOf({L"c"}));
    EXPECT_EQ(names(L"cubic foo|"), conversionsOf({L"vf"}));  // blanks in a token are ignored
    EXPECT_EQ(names(L"feets|"), std::set<std::wstring>{});
    EXPECT_TRUE(names(L"square ro|").count(L"sqrt"));  // also in a description
    mathexpr::setVariable(edited.expression, L"m2i", number(1));
    EXPECT_EQ(items(L"inch|").front().kind, TokenKind::Function);  // variables convert nothing
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
    EXPECT_EQ(items(L"|").back().valueKind == ValueKind::Unknown, false);  // unknown kinds come last
}

TEST_F(Completing, OffersAFunctionOnceWithItsDescription)
{
    CompletionOptions all;
    all.maxCount = 1000;
    std::set<std::wstring> found;
    for (const CompletionItem& item : items(L"|", all))
    {
        EXPECT_TRUE(found.insert(item.name).second) << item.name;
        EXPECT_FALSE(item.kind == TokenKind::Function && item.description.find_first_not_of(L' ') != 0) << item.name;
    }
    EXPECT_EQ(items(L"m2s|").front().description, L"Convert Meters to Survey_feet");
}

TEST_F(Completing, UsesTheHostsNotes)
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
    EXPECT_EQ(items(L"dep|").size(), 1U);  // now a variable, and not proposed twice
    EXPECT_EQ(items(L"dep|").front().kind, TokenKind::HostName);
}

TEST_F(Completing, TakesNamesInTheTextForWhatTheyAre)
{
    EXPECT_TRUE(names(L"dist(corner,|").count(L"origin"));  // unknown kind: may be a point
    EXPECT_FALSE(names(L"dist(corner,|").count(L"width"));
    EXPECT_TRUE(names(L"dist(corner,corner+depth*|").count(L"width"));
    EXPECT_TRUE(names(L"sin(corner+|").count(L"width"));  // or a number
    EXPECT_FALSE(names(L"sin(corner+|").count(L"origin"));
    EXPECT_FALSE(names(L"dist(depth+circular,|").empty());
    const Notes notes;
    CompletionOptions options;
    options.notes = &notes;
    EXPECT_EQ(first(L"dist(corner,or|", options), L"dist(corner,origin<>");
    EXPECT_TRUE(items(L"sin(corner+|", options).empty());
    EXPECT_EQ(first(L"sin(|corner", options), first(L"sin(|"));  // it follows the cursor
    EXPECT_EQ(first(L"sin(circular+wid|", options), L"sin(circular+width<>");
    EXPECT_TRUE(items(L"dist(circular,|", options).empty());
    EXPECT_EQ(first(L"dist(depth,or|", options), L"dist(depth,origin<>");  // which may be a point, too
    EXPECT_EQ(edited.host.lookupCount, 0U);
}

/// A host that changes the object in its callback.
class RestlessNotes final : public mathexpr::IMathExprNameNotes
{
public:
    explicit RestlessNotes(MathExpression& given) : expression(given) {}

    mathexpr::NameNotes getNotes(const wchar_t* name) const override
    {
        mathexpr::removeVariable(expression, L"width");
        for (std::size_t index = 0; index < 100; ++index)
        {
            mathexpr::setVariable(expression, (name + std::to_wstring(index)).c_str(), number(1));
        }
        return {};
    }

private:
    MathExpression& expression;
};

TEST_F(Completing, OffersWhatTheObjectHoldsOnceTheHostHasAnswered)
{
    const RestlessNotes notes(edited.expression);
    CompletionOptions options;
    options.notes = &notes;
    options.maxCount = 1000;
    std::set<std::wstring> offered;
    for (const CompletionItem& item : items(L"|", options))
    {
        offered.insert(item.name);
    }
    EXPECT_FALSE(offered.count(L"width"));
    EXPECT_TRUE(offered.count(L"size"));
    EXPECT_TRUE(offered.count(L"depth99"));
}

class OddNames final : public mathexpr::IMathExprNameSource
{
public:
    const wchar_t* getName(std::uint32_t index) const override
    {
        constexpr const wchar_t* names[] = {L"twice", L"twice", L"", L"pi", L"1", L"t b", L"t[", L"t+", L"t]"};
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

}
