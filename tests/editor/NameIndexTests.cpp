// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameIndexTests.cpp - the services find names of an index like those of a list, without enumerating them.
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/Variables.h"
#include "tests/editor/EditorTexts.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using mathexpr::NameNotes;
using mathexpr::ValueKind;

class NameIndex : public testing::Test
{
protected:
    NameIndex() { mathexpr::setNameSource(expression, &names); }

    std::vector<std::wstring> completed(const std::wstring& text,
                                        const mathexpr::CompletionOptions& options = mathexpr::CompletionOptions())
    {
        std::vector<std::wstring> found;
        const auto cursor = static_cast<std::uint32_t>(text.size());
        for (const auto& item : mathexpr::getCompletions(expression, text.c_str(), cursor, options))
        {
            if (item.kind == mathexpr::TokenKind::HostName)
            {
                found.push_back(item.name);
            }
        }
        return found;
    }

    mathexpr::NameIndex names;
    MathExpression expression{true, nullptr};
};

using Names = std::vector<std::wstring>;

TEST_F(NameIndex, FindsNamesByBeginningAndByWord)
{
    names.add(L"Quill_Axis");
    names.add(L"quill_zone");
    names.add(L"innerQuill");
    names.add(L"aquill");
    names.add(L"xWall");
    EXPECT_EQ(completed(L"quill"), (Names{L"quill_zone", L"Quill_Axis", L"innerQuill"}));
    EXPECT_EQ(completed(L"wal"), Names{L"xWall"});
    EXPECT_EQ(completed(L"quill_a"), (Names{L"Quill_Axis"}));
    EXPECT_EQ(completed(L"zon"), (Names{L"quill_zone"}));
    EXPECT_TRUE(completed(L"quilt").empty());
    mathexpr::CompletionOptions all;
    all.maxCount = 1000;
    EXPECT_EQ(completed(L"", all).size(), 5U);
}

TEST_F(NameIndex, ForgetsTheWordsOfANameThatIsRemoved)
{
    for (int i = 0; i < 1000; ++i)  // more than a completion considers
    {
        for (const std::wstring& name : {L"a" + std::to_wstring(i) + L"_quill", L"aWall" + std::to_wstring(i)})
        {
            names.add(name.c_str());
            EXPECT_TRUE(names.remove(name.c_str()));
        }
    }
    names.add(L"z_quill");
    names.add(L"z_wally");
    EXPECT_EQ(completed(L"quill"), Names{L"z_quill"});
    EXPECT_EQ(completed(L"wall"), Names{L"z_wally"});
}

TEST_F(NameIndex, IsUpdatedByName)
{
    names.add(L"quill_a", {ValueKind::Point, L"first", L""});
    names.add(L"quill_a", {ValueKind::Number, L"second", L""});
    const auto items = mathexpr::getCompletions(expression, L"quill", 5);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].valueKind, ValueKind::Number);
    EXPECT_EQ(items[0].description, L"second");
    EXPECT_FALSE(names.remove(L"QUILL_A"));
    EXPECT_TRUE(names.remove(L"quill_a"));
    EXPECT_TRUE(completed(L"quill").empty());
    EXPECT_TRUE(completed(L"a").empty());
    names.add(nullptr);
    names.add(L"");
    EXPECT_FALSE(names.remove(nullptr));
    EXPECT_FALSE(names.remove(L""));
    EXPECT_EQ(names.getName(0), nullptr);
}

TEST_F(NameIndex, SuppliesKindsAndReasons)
{
    names.add(L"quill_p", {ValueKind::Point, L"", L""});
    names.add(L"quill_q");
    names.add(L"quill_r", {ValueKind::Number, L"", L"depends on this field"});
    names.add(L"quill_long", {ValueKind::Number, L"", L""});
    EXPECT_EQ(completed(L"sin(quill"), (Names{L"quill_long", L"quill_r", L"quill_q"}));
    EXPECT_EQ(completed(L"dist(quill_p,quill"), (Names{L"quill_p", L"quill_q"}));
    EXPECT_TRUE(completed(L"sin(quill_p+quill").empty());

    class Notes final : public mathexpr::IMathExprNameNotes
    {
    public:
        NameNotes getNotes(const wchar_t*) const override { return {ValueKind::Point, L"asked for", L""}; }
    };
    const Notes notes;
    mathexpr::CompletionOptions options;
    options.notes = &notes;
    EXPECT_TRUE(completed(L"sin(quill", options).empty());
    EXPECT_EQ(completed(L"quill", options).size(), 4U);
}

TEST_F(NameIndex, YieldsToVariablesAndConstants)
{
    names.add(L"quill");
    names.add(L"pi");
    mathexpr::setVariable(expression, L"Quill", VALTYPE());
    EXPECT_TRUE(completed(L"quill").empty());
    EXPECT_TRUE(completed(L"pi").empty());
}

TEST_F(NameIndex, SuppliesNamesToEveryService)
{
    names.add(L"quill_depth");
    EXPECT_EQ(mathexpr::getTokens(expression, L"quill_depth")[0].kind, mathexpr::TokenKind::HostName);
    EXPECT_EQ(mathexpr::diagnoseText(expression, L"2*quill_depth").state, mathexpr::TypingState::Complete);
    const auto misspelt = mathexpr::diagnoseText(expression, L"2*quill_dpeth+1");
    EXPECT_EQ(misspelt.state, mathexpr::TypingState::Wrong);
    EXPECT_EQ(misspelt.failure.suggestions, Names{L"quill_depth"});
    ASSERT_TRUE(misspelt.failure.fix);
    EXPECT_EQ(misspelt.failure.fix->replacement, L"quill_depth");
}

TEST_F(NameIndex, SuggestsNamesOnBothSides)
{
    for (std::size_t index = 1000; index < 2000; ++index)
    {
        names.add((L"a" + std::to_wstring(index)).c_str());
    }
    names.add(L"quill_angle");
    names.add(L"quill_widhz_and_more");
    names.add(L"quill_width");
    EXPECT_EQ(mathexpr::diagnoseText(expression, L"2*quill_anlge").failure.suggestions, Names{L"quill_angle"});
    EXPECT_EQ(mathexpr::diagnoseText(expression, L"2*quill_widht").failure.suggestions, Names{L"quill_width"});
}

/// Lists one name in addition to an index.
class ListAndIndex final : public mathexpr::IMathExprNameSource
{
public:
    explicit ListAndIndex(const mathexpr::NameIndex& given) : index(given) {}

    const wchar_t* getName(std::uint32_t at) const override { return at == 0 ? L"quill_listed" : nullptr; }
    const mathexpr::NameIndex* getIndex() const override { return &index; }

private:
    const mathexpr::NameIndex& index;
};

TEST_F(NameIndex, OffersEachNameOnce)
{
    names.add(L"quill_listed", {ValueKind::Number, L"", L""});
    names.add(L"quill_recent", {ValueKind::Number, L"", L""});
    const ListAndIndex both(names);
    mathexpr::setNameSource(expression, &both);
    mathexpr::CompletionOptions options;
    options.recent = {L"quill_recent"};
    EXPECT_EQ(completed(L"quill", options), (Names{L"quill_recent", L"quill_listed"}));
}

TEST_F(NameIndex, ConsidersRecentNamesAndThenTheFirst)
{
    for (std::size_t index = 1000; index < 2000; ++index)
    {
        names.add((L"quill_" + std::to_wstring(index)).c_str());
    }
    EXPECT_EQ(completed(L"quill").size(), 200U);
    mathexpr::CompletionOptions options;
    options.recent = {L"quill_1999", L"unknown"};
    const Names found = completed(L"quill", options);
    EXPECT_EQ(found.front(), L"quill_1999");
    EXPECT_EQ(found[1], L"quill_1000");
    options.maxCount = 700;
    EXPECT_EQ(completed(L"quill", options).size(), 700U);

    const auto misspelt = mathexpr::diagnoseText(expression, L"quill_15x0+1");
    EXPECT_EQ(misspelt.failure.suggestions.size(), 3U);
}

TEST_F(NameIndex, ConsidersTheFirst256EvenIfFewerAreRequested)
{
    for (std::size_t index = 1000; index < 1255; ++index)
    {
        names.add((L"quill_" + std::to_wstring(index)).c_str());
    }
    names.add(L"quill_2");  // the shortest name comes first if it is considered
    mathexpr::CompletionOptions options;
    options.maxCount = 1;
    EXPECT_EQ(completed(L"quill", options), Names{L"quill_2"});
    names.add(L"quill_1255");
    EXPECT_EQ(completed(L"quill", options), Names{L"quill_1000"});
}

TEST_F(NameIndex, ComparesAMisspeltNameWith200NeighboursOnEachSide)
{
    const auto suggested = [&] { return mathexpr::diagnoseText(expression, L"qqqqqq").failure.suggestions; };
    for (const std::wstring correct : {L"qqqqqp", L"qqqqqr"})  // in alphabetical order before and after the typed name
    {
        names.add(correct.c_str());
        const std::wstring between = correct == L"qqqqqp" ? L"qqqqqp_" : L"qqqqqq_";
        for (std::size_t index = 1000; index < 1199; ++index)
        {
            names.add((between + std::to_wstring(index)).c_str());
        }
        EXPECT_EQ(suggested(), Names{correct});
        names.add((between + L"1199").c_str());
        EXPECT_EQ(suggested(), Names());
    }
}

TEST_F(NameIndex, TriesBothKindsOfFourNamesOfUnknownKind)
{
    for (const wchar_t* name : {L"quill_a", L"quill_b", L"quill_c", L"quill_d", L"quill_e", L"quill_f"})
    {
        names.add(name);
    }
    EXPECT_EQ(completed(L"dist(quill_a,quill_b)+dist(quill_c,quill_d)+dist([0,0],quill_f"), Names{L"quill_f"});
    EXPECT_EQ(completed(L"dist(quill_a,quill_b)+dist(quill_c,quill_d)+dist(quill_e,quill_f"), Names());
}

}
