// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// runner_tests.cpp - tests of the runner: it must detect every kind of difference, and refuse lines that are not rows.
#include "tests/language/Hiding.h"
#include "tests/language/Runner.h"

#include <gtest/gtest.h>

namespace {

RowReport run(const std::string& text)
{
    const DataFile data = parseDataFile(text);
    EXPECT_TRUE(data.errors.empty()) << text;
    EXPECT_EQ(data.rows.size(), 1u) << text;
    return data.rows.empty() ? RowReport{} : runRow(data.rows.front());
}

std::size_t nbFailures(const std::string& text)
{
    return run(text).failures.size();
}

TEST(Runner, DrivesARowThroughEveryPath)
{
    // As written and hidden, each with and without messages, on a new and a used object; and two with CMathExpr.
    EXPECT_EQ(run("2+3 => 5").nbPaths, 4u + 4u + 2u);
    EXPECT_EQ(run("[1,2,3]*2 => [2,4,6]").nbPaths, 4u + 4u + 4u + 2u);
    EXPECT_EQ(run("@host x=1\nx => 1").nbPaths, 4u);
    EXPECT_EQ(run("@limit 5\n5 => 5").nbPaths, 2u);
    EXPECT_EQ(run("2+ => !message 3 parsing 3 pos=1").nbPaths, 4u + 2u);
}

TEST(Runner, NoticesEveryDifferenceOnEveryPath)
{
    const char* const wrong[] = {
        "2+3 => 6",
        "2+3 => [5,0,0]",
        "2+3 => 5/flag",
        "2+3 => number[5,0,1]",
        "0 => -0",
        "2+3 => nan",
        "2+3 => in 6 7",
        "2+3 => !message 3 parsing 3 pos=1",
        "1/0 => 1",
        "1/0 => !exception parsing 15",
        "sin([1,2,3]) => !message 3",
        "sin([1,2,3]) => !exception parsing 16",
        "2;3 => 23",
    };
    for (const char* const row : wrong)
    {
        const RowReport report = run(row);
        EXPECT_EQ(report.failures.size(), report.nbPaths) << row;
    }
}

TEST(Runner, NoticesTheMessageWhereThereIsOne)
{
    // Half of the paths, except CMathExpr's, are silent.
    EXPECT_EQ(nbFailures("1/0 => !message 10"), 0u);
    EXPECT_EQ(nbFailures("1/0 => !message 11"), 6u);
    EXPECT_EQ(nbFailures("1/0 => !false"), 6u);
    EXPECT_EQ(nbFailures("1/0 => !message 10 always"), 2u);
}

TEST(Runner, NoticesEveryFieldOfAnException)
{
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 parsing 7 pos=3 item=sin nbArgs=2"), 0u);
    // The fields are visible if the object is silent, the message if it is not.
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 parsing 8 pos=3 item=sin nbArgs=2"), 2u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 parsing 7 pos=2 item=sin nbArgs=2"), 2u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 parsing 7 pos=3 item=cos nbArgs=2"), 2u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 parsing 7 pos=3 item=sin nbArgs=1"), 2u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 parsing 7 pos=3 item=sin nbArgs=2 entries=2"), 2u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 ~> none"), 2u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 4 parsing 7 pos=3 item=sin nbArgs=2"), 4u);
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 always parsing 7 pos=3 item=sin nbArgs=2"), 2u);
    // Only at the right stage; CMathExpr has a single stage.
    EXPECT_EQ(nbFailures("1+sin(1,2) => !message 3 at evaluate parsing 7 pos=3 item=sin nbArgs=2"), 4u);
}

TEST(Runner, ChecksTheNamesLookedUpInTheHost)
{
    EXPECT_EQ(nbFailures("@host x=1\nx+x => 2 asked x"), 0u);
    EXPECT_EQ(nbFailures("@host x=1\nx+x => 2 asked x x"), 4u);
    EXPECT_EQ(nbFailures("@host x=1\nx+x => 2 asked nothing"), 4u);
    EXPECT_EQ(nbFailures("@host x=1\nx+x => 2 asked X"), 4u);
}

TEST(Runner, NoticesTheSecondEvaluationAndTheSecondStep)
{
    EXPECT_EQ(nbFailures("@host x=1\nx => 1 | {x=2} 2"), 0u);
    EXPECT_EQ(nbFailures("@host x=1\nx => 1 | {x=2} 1"), 4u);
    EXPECT_EQ(nbFailures("a=4 => 4 ; a*a => 17"), run("a=4 => 4 ; a*a => 17").nbPaths);
    EXPECT_EQ(nbFailures("@host x=2 p=[1,2,3]\nx=x*p => [2,4,6]"), 4u);
}

TEST(Runner, NoticesTheLimit)
{
    EXPECT_EQ(nbFailures("@limit 5\n6 => !message 19 always"), 0u);
    EXPECT_EQ(nbFailures("@limit 5\n6 => 6"), 2u);
    EXPECT_EQ(nbFailures("!limit 5 ; 6 => !message 19 always ; !limit 6 ; 6 => 6"), 0u);
}

TEST(Runner, ComparesBits)
{
    EXPECT_EQ(nbFailures("0.1+0.2 => 0.30000000000000004"), 0u);
    EXPECT_GT(nbFailures("0.1+0.2 => 0.3"), 0u);
    EXPECT_EQ(nbFailures("pi => 0x400921fb54442eea"), 0u);
    EXPECT_GT(nbFailures("pi => 0x400921fb54442eeb"), 0u);
}

TEST(DataFiles, RefuseWhatIsNotARow)
{
    const char* const wrong[] = {
        "2+3",
        "2+3 => ",
        "2+3 => five",
        "2+3 => [1,2]",
        "2+3 => !message",
        " => 5",
        "2 => 0x12",
        "2 => 2 ~> 2 ~> 2",
        "2 => !messages 3",
        "2 => !message 3 loudly",
        "@host x",
        "@host x=y",
        "@limit many",
        "@unknown 3",
        "2\\x => 3",
        "2 => {x=1 2",
        "2 => !exception",
        "2 => !message 3 at compile",
        "2 => !message 3 parsing 9 poss=1",
    };
    for (const char* const line : wrong)
    {
        EXPECT_FALSE(parseDataFile(line).errors.empty()) << line;
    }
    EXPECT_FALSE(readDataFile("no such file").errors.empty());
}

TEST(Hiding, DoesNotChangeNamesCallsAndAssignments)
{
    const auto hidden = [](const wchar_t* text, Hidden what) {
        Bindings host;
        return hideOperands(text, what, host);
    };
    EXPECT_EQ(hidden(L"2 + 3.5*pi", Hidden::Numbers), L"hidden0+hidden1*pi");
    EXPECT_EQ(hidden(L"sin(30)", Hidden::Numbers), L"sin(hidden0)");
    EXPECT_EQ(hidden(L"a=2", Hidden::Numbers), L"a=hidden0");
    EXPECT_EQ(hidden(L"5=5", Hidden::Numbers), L"5=hidden0");
    EXPECT_EQ(hidden(L"5==5", Hidden::Numbers), L"hidden0==hidden1");
    EXPECT_EQ(hidden(L"1e+2", Hidden::Numbers), L"1e+hidden0");
    EXPECT_EQ(hidden(L"1.2.3+x2", Hidden::Numbers), L"1.2.3+x2");
    EXPECT_EQ(hidden(L"vec1([1,2,3],p)", Hidden::Numbers), L"vec1([hidden0,hidden1,hidden2],p)");
    EXPECT_EQ(hidden(L"vec1([1,-2,3],p)", Hidden::Points), L"vec1(hidden0,p)");
    EXPECT_EQ(hidden(L"[1,2]+[x,2,3]+3", Hidden::Points), L"[1,2]+[x,2,3]+3");
    EXPECT_EQ(hidden(L"[1,2,3]e+2", Hidden::Points), L"[1,2,3]e+2");

    Bindings host;
    hideOperands(L"[1,-2,.5]", Hidden::Points, host);
    EXPECT_TRUE(matches(*parseValue("[1,-2,0.5]"), *host.at(L"hidden0")));
}

}
