// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NoteTests.cpp - notes below values, words of other programs, and safe display of text.
#include "tools/calc/report/AnswerNotes.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/Wrapped.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using Notes = std::vector<std::string>;

Notes notes(const std::string& expression, const std::vector<double>& numbers = {4})
{
    Answer answer;
    answer.expression = expression;
    for (const double number : numbers)
    {
        VALTYPE value;
        value.x = number;
        answer.values.push_back(value);
    }
    return notesOn(answer);
}

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Notes, MentionAssignments)
{
    EXPECT_EQ(notes("a=4"), Notes{});
    EXPECT_EQ(notes("a==4"), Notes{});
    EXPECT_EQ(notes("a=b>=4"), Notes{});
    EXPECT_EQ(notes("a = b != 4"), Notes{});
    EXPECT_EQ(notes("\u00F6_1=4"), Notes{});
    EXPECT_EQ(notes("a=b=4"), Notes{"Only b has been given the value: a line makes one assignment."});
    EXPECT_EQ(notes("c=3; d=4"), Notes{"The variable is called \"3;d\": a line makes one assignment."});
    EXPECT_EQ(notes("a\"=4"), Notes{"The variable is called \"a\"\": a line makes one assignment."});
}

TEST(Notes, ExplainSurprisingValues)
{
    EXPECT_EQ(notes("fact(5)"), Notes{"fact does not compute a factorial: it yields 0."});
    EXPECT_EQ(notes("artefact(5)"), Notes{});
    EXPECT_EQ(notes("p*q", {32, 64}),
              Notes{"A product of points that is evaluated again is added to what it was before."});
    EXPECT_EQ(notes("p*q", {32, 32}), Notes{});
    EXPECT_EQ(notes("rand(1,2)", {1, 2}), Notes{});
}

TEST(Notes, ExplainWhyThereIsNoNumber)
{
    const Notes power{"nan is not a number: a negative number has no power with a fraction for its exponent."};
    EXPECT_EQ(notes("(-8)^(1/3)", {nan}), power);
    EXPECT_EQ(notes("pow(-8,0.5)", {nan}), power);
    EXPECT_EQ(notes("5%0", {nan}), Notes{"nan is not a number: a division by 0 has no remainder."});
    EXPECT_EQ(notes("5%0^2", {nan}), Notes{});
    EXPECT_EQ(notes("a", {nan}), Notes{});
}

TEST(Words, OfOtherProgramsSayWhatToType)
{
    for (const char* const word : {"help", "?", " -h ", "--help"})
    {
        EXPECT_EQ(wordNote(word, true), "Type :help for help.");
        EXPECT_EQ(wordNote(word, false), "mathexpr --help tells more.");
    }
    for (const char* const word : {"quit", "exit", ":wq"})
    {
        EXPECT_EQ(wordNote(word, true), "Type :quit, or press Ctrl-D, to leave.");
        EXPECT_EQ(wordNote(word, false), "");
    }
    EXPECT_EQ(wordNote("helpless", true), "");
}

TEST(Displayable, ShowsNothingThatATerminalObeys)
{
    EXPECT_EQ(displayable("a\u00E4\u4E2D\U0001F600"), "a\u00E4\u4E2D\U0001F600");
    EXPECT_EQ(displayable("\x1B[31m\a\t\x7F"), "\\x1B[31m\\x07\\x09\\x7F");
    EXPECT_EQ(displayable("\xC2\x9B\u202Eabc\u2066\u200F\u2028"), "\\x9B\\u202Eabc\\u2066\\u200F\\u2028");
    EXPECT_EQ(displayable("a\xFF\xC3(\xE4\xB8"), "a\\xFF\\xC3(\\xE4\\xB8");
    EXPECT_EQ(displayable(std::string("a\0b", 3)), "a\\x00b");
}

TEST(Displayable, CutsBetweenCharacters)
{
    EXPECT_EQ(displayable("\u00E4\u00E4\u00E4", 2), "\u00E4\u00E4...");
    EXPECT_EQ(displayable("\u00E4\u00E4", 2), "\u00E4\u00E4");
    EXPECT_EQ(displayable(std::string(100, 'a')).size(), 63U);
    EXPECT_EQ(displayable(std::string(100, 'a'), 0).size(), 100U);
}

TEST(Wrapped, BreaksLinesBetweenWords)
{
    EXPECT_EQ(wrapped("one two three", 0, 0, 80), "one two three");
    EXPECT_EQ(wrapped("one two three", 0, 2, 7), "one two\n  three");
    EXPECT_EQ(wrapped("one two three", 1, 2, 7), "one\n  two\n  three");
    EXPECT_EQ(wrapped("incomprehensible word", 0, 1, 5), "incomprehensible\n word");
    EXPECT_EQ(wrapped("\u4E2D\u4E2D \u4E2D", 0, 0, 5), "\u4E2D\u4E2D\n\u4E2D");
    EXPECT_EQ(wrapped("", 0, 4, 5), "");
}

}
