// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RenameTests.cpp - uses of a name, and renaming that does not change the meaning of a text.
#include "mathexpr/EditorServices.h"
#include "mathexpr/Variables.h"
#include "tests/MadeValues.h"
#include "tests/editor/EditorTexts.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using mathexpr::RenameRefusal;
using mathexpr::Renaming;
using mathexpr::TextSpan;

using Spans = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

Spans references(const wchar_t* text, const wchar_t* name)
{
    const EditedExpression edited;
    Spans found;
    for (const TextSpan& span : mathexpr::findReferences(edited.expression, text, name))
    {
        found.emplace_back(span.start, span.length);
    }
    return found;
}

std::wstring applied(std::wstring text, const std::vector<mathexpr::TextEdit>& edits)
{
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
    {
        text.replace(edit->span.start, edit->span.length, edit->replacement);
    }
    return text;
}

/// The renamed text, or the number of the refusal.
std::wstring renamed(const wchar_t* text, const wchar_t* name, const wchar_t* newName)
{
    const EditedExpression edited;
    const Renaming renaming = mathexpr::renameInText(edited.expression, text, name, newName);
    return renaming.refusal == RenameRefusal::None
               ? applied(text, renaming.edits)
               : std::to_wstring(static_cast<std::uint32_t>(renaming.refusal)) + L" at " +
                     std::to_wstring(renaming.refusedAt.start) + L'+' + std::to_wstring(renaming.refusedAt.length);
}

TEST(References, AreFoundInAnyCase)
{
    EXPECT_EQ(references(L"x=X*2+wi dth+xx+x", L"x"), (Spans{{0, 1}, {2, 1}, {16, 1}}));
    EXPECT_EQ(references(L"wi dth", L"WIDTH"), (Spans{{0, 6}}));
    EXPECT_EQ(references(L"pi+Pi+PI", L"pi"), (Spans{{0, 2}, {3, 2}}));
    EXPECT_EQ(references(L"sin(sin)+sin[1]", L"sin"), (Spans{{4, 3}}));
    EXPECT_EQ(references(L"size+1+siz", L"size"), Spans{});
    EXPECT_EQ(references(L"size+1+siz", L"siz"), (Spans{{0, 3}, {7, 3}}));
    EXPECT_EQ(references(nullptr, nullptr), Spans{});
}

TEST(Rename, ReplacesEveryUse)
{
    EXPECT_EQ(renamed(L"a=X*2+x", L"x", L"width"), L"a=width*2+width");
    EXPECT_EQ(renamed(L"x=1", L"x", L"X"), L"X=1");
    EXPECT_EQ(renamed(L"x+1", L"y", L"2"), L"x+1");
    EXPECT_EQ(renamed(L"pi+1", L"pi", L"tau"), L"pi+1");
    EXPECT_EQ(renamed(L"size+1", L"siz", L"len"), L"lene+1");
    EXPECT_EQ(renamed(L"x+1", L"x", L"sin"), L"sin+1");
}

TEST(Rename, RefusesWhatIsNoName)
{
    for (const wchar_t* name : {L"", L"2", L"pi", L"a b", L" a", L"a+b", L"a.b", L"a,b", L"[", L"a(", L"a=", L"e+"})
    {
        EXPECT_EQ(renamed(L"1+x", L"x", name), L"1 at 0+0") << testing::PrintToString(std::wstring(name));
    }
}

TEST(Rename, RefusesANameThatTheTextUses)
{
    EXPECT_EQ(renamed(L"x+2*Y+y", L"x", L"y"), L"2 at 4+1");
}

TEST(Rename, RefusesWhatWouldBeReadOtherwise)
{
    EXPECT_EQ(renamed(L"2*w + 1", L"w", L"size"), L"3 at 2+1");
    EXPECT_EQ(renamed(L"w*2+w e+1", L"we", L"w"), L"w*2+w e+1");  // has no use of it
    EXPECT_EQ(renamed(L"w-1+w", L"w", L"size"), L"size-1+size");
    EXPECT_EQ(renamed(L"w-1+w+w", L"w", L"size"), L"3 at 4+1");
}

TEST(Rename, KeepsWhatEveryTextMeans)
{
    const MessageRecorder shown;
    std::map<RenameRefusal, std::size_t> counts;
    for (const TypedText& typed : languageTexts())
    {
        EditedExpression edited(typed.host);
        const bool compiles = edited.compiles(typed.text);
        for (const auto& [name, value] : typed.host)
        {
            for (const wchar_t* const newName : {L"renamed", L"size"})
            {
                const Renaming renaming =
                    mathexpr::renameInText(edited.expression, typed.text.c_str(), name.c_str(), newName);
                ++counts[renaming.refusal];
                if (renaming.refusal == RenameRefusal::None && !renaming.edits.empty())
                {
                    Bindings bindings = typed.host;
                    bindings.erase(name);
                    bindings[newName] = value;
                    EditedExpression other(bindings);
                    EXPECT_TRUE(!compiles || other.compiles(applied(typed.text, renaming.edits))) << typed.where;
                }
            }
        }
    }
    EXPECT_GT(counts[RenameRefusal::None], 100U);
    EXPECT_GT(counts[RenameRefusal::ReadOtherwise], 5U);
}

}
