// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SessionTests.cpp - lines at the prompt, typed or loaded.
#include "tools/calc/Calculator.h"
#include "tools/calc/prompt/PromptSession.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Next = PromptSession::Next;

/// Records what is printed during its lifetime.
class Captured
{
public:
    explicit Captured(std::ostream& givenStream) : stream(givenStream), previous(stream.rdbuf(text.rdbuf())) {}
    Captured(const Captured&) = delete;
    Captured& operator=(const Captured&) = delete;
    ~Captured() { stream.rdbuf(previous); }

    std::string take()
    {
        std::string taken = text.str();
        text.str({});
        return taken;
    }

private:
    std::ostringstream text;
    std::ostream& stream;
    std::streambuf* previous;
};

class Session : public testing::Test
{
protected:
    void SetUp() override
    {
        folder = std::filesystem::path(testing::TempDir()) /
                 (std::string("session_") + testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder);
    }

    void TearDown() override { std::filesystem::remove_all(folder); }

    /// Starts a new session.
    void start(const Options& newOptions)
    {
        options = newOptions;
        calculator.emplace(options);
        for (const Options::HostName& name : options.hostNames)
        {
            ASSERT_EQ(calculator->defineHostName(name), "");
        }
        session.emplace(options, *calculator);
    }

    /// Standard output of one line, followed by standard error.
    std::string run(const std::string& line)
    {
        if (!session)
        {
            start({});
        }
        last = session->run(line);
        const std::string printed = out.take();
        return printed + err.take();
    }

    std::string file(const std::string& name, const std::string& content) const
    {
        std::ofstream(folder / name, std::ios::binary) << content;
        return (folder / name).generic_string();
    }

    std::filesystem::path folder;
    Options options;
    std::optional<Calculator> calculator;
    std::optional<PromptSession> session;
    Captured out{std::cout};
    Captured err{std::cerr};
    Next last = Next::GoOn;
};

const std::string unknownName = "A name is not known: check its spelling, or give it a value first, as in a=2.\n";

}

TEST_F(Session, KeepsTheLastValueAsAns)
{
    EXPECT_EQ(run("ans").substr(0, unknownName.size()), unknownName);  // undefined before the first value
    EXPECT_EQ(run("2*3"), "6\n");
    EXPECT_EQ(run("ans+1"), "7\n");
    EXPECT_EQ(run("1/0").substr(0, 9), "The divis");
    EXPECT_EQ(run("ANS"), "7\n");
    EXPECT_EQ(run("[1,2,3]"), "[1,2,3]\n");
    EXPECT_EQ(run("ans*2"), "[2,4,6]\n");
    EXPECT_EQ(run("dist(ans,[2,4,6])"), "0\n");
    EXPECT_EQ(run("ans=5"), "5\n");
    EXPECT_EQ(run("ans"), "5\n");
}

TEST_F(Session, KeepsVariables)
{
    EXPECT_EQ(run(":vars"), "No name has a value yet: width=2.5 gives one.\n");
    EXPECT_EQ(run("a=2*3"), "6\n");
    EXPECT_EQ(run("a^2"), "36\n");
    EXPECT_EQ(run("p=[1,2]"), "[1,2,0]\n");
    EXPECT_EQ(run(":vars"), "a = 6\nans = [1,2,0]\np = [1,2,0]\n");
    EXPECT_EQ(run("pi=3").substr(0, 3), "The");
    EXPECT_EQ(run("a"), "6\n");
}

TEST_F(Session, KnowsTheNamesOfTheHost)
{
    Options withName;
    withName.hostNames.push_back({"width", "2.5"});
    start(withName);
    EXPECT_EQ(run(":vars"), "width = 2.5\n");
    EXPECT_EQ(run("width*2"), "5\n");
    EXPECT_EQ(run(":vars"), "width = 2.5\nans = 5\n");
    EXPECT_EQ(run(":help width"), "width = 2.5\n");
}

TEST_F(Session, HasAnsWithALimitForWholeNumbersAndNoneWhenAllIsForgotten)
{
    Options limited;
    limited.maxInteger = 9;
    start(limited);
    EXPECT_EQ(run("9*9"), "81\n");
    EXPECT_EQ(run("ans+1"), "82\n");
    EXPECT_EQ(run("10").substr(0, 14), "A whole number");

    Options fresh;
    fresh.fresh = true;
    start(fresh);
    EXPECT_EQ(run("a=9"), "9\n");
    EXPECT_EQ(run("ans").substr(0, unknownName.size()), unknownName);
    EXPECT_EQ(run(":vars"), "No name has a value yet: width=2.5 gives one.\n");
}

TEST_F(Session, PrintsJsonOnRequest)
{
    Options json;
    json.json = true;
    start(json);
    EXPECT_EQ(run("1").substr(0, 32), R"({"expression":"1","ok":true,"sta)");
}

TEST_F(Session, PutsACaretUnderTheMistake)
{
    EXPECT_EQ(run("2+foo*3"), unknownName + "  2+foo*3\n    ^^^\n");
    run("1");
    session->setStyle({20, true});
    const std::string shown = run("1+1+1+1+1+1+1+1+foo+1+1+1+1+1");
    EXPECT_NE(shown.find("\x1b[31mA name is not known"), std::string::npos);
    EXPECT_NE(shown.find("  ...+1+1+foo+1+...\n          \x1b[31m^^^\x1b[0m\n"), std::string::npos) << shown;
}

TEST_F(Session, Helps)
{
    const std::string help = run(":help");
    for (const char* command : {":help [NAME]", ":vars", ":list [FAMILY]", ":load FILE", ":quit"})
    {
        EXPECT_NE(help.find(command), std::string::npos) << command;
    }
    const std::string dist = run(":help dist");
    for (const char* part : {"dist(x,y)\n", "Distance between two endpoints", "Family    Geometry",
                             "Example   dist([0,0,0],[3,4,12]) = 13"})
    {
        EXPECT_NE(dist.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(run(":help dist("), dist);
    EXPECT_EQ(run(":help :load"), ":load FILE runs the lines of a file as if typed\n");
    EXPECT_EQ(run(":help +").substr(0, 5), "x + y");
    EXPECT_EQ(run(":help (").substr(0, 26), "mathexpr: no such item: (\n");
    EXPECT_EQ(run(":help dst"), "mathexpr: no such item: dst. Did you mean dist?\n");
}

TEST_F(Session, ListsFamilies)
{
    EXPECT_EQ(run(":list"), "Families: constants, operators, core, geometry, angle, length, area, volume\n");
    EXPECT_EQ(run(":list geometry").substr(0, 16), "Geometry\n  point");
    EXPECT_EQ(run(":list geo"), run(":list geometry"));
    EXPECT_EQ(run(":list colours"),
              "There is no family colours. The families are: constants, operators, core, geometry, "
              "angle, length, area, volume.\n");
    EXPECT_EQ(run(":list a").substr(0, 20), "There is no family a");  // angle or area
}

TEST_F(Session, RunsTheLinesOfAFile)
{
    const std::string name = file("lines.txt", "\xEF\xBB\xBF"
                                               "a=2\r\n\n  \na*foo\n:vars\nans+1");  // the last line has no line end
    EXPECT_EQ(run(":load " + name), "2\na = 2\nans = 2\n3\n" + name + ":4: " + unknownName + "  a*foo\n    ^^^\n");
    EXPECT_EQ(run("a"), "2\n");
}

TEST_F(Session, ComplainsOfAFileThatCannotBeLoaded)
{
    const std::string missing = (folder / "missing").generic_string();
    EXPECT_EQ(run(":load " + missing), missing + ": No such file or directory\n");
    EXPECT_EQ(run(":load " + folder.generic_string()), folder.generic_string() + ": Is a directory\n");
    EXPECT_EQ(run(":load"), ":load needs a FILE.\n");
    EXPECT_EQ(run("1"), "1\n");
}

TEST_F(Session, ReportsTheLineOfAnErrorInAFile)
{
    const std::string inner = file("inner", ":nonsense\n\xFF\n");
    const std::string outer = file("outer", "1\n:load " + inner + "\n:load missing file\n:list x\n2\n");
    EXPECT_EQ(
        run(":load " + outer),
        "1\n2\n" + inner + ":1: There is no command :nonsense. :help lists the commands.\n" + inner +
            ":2: not valid UTF-8, or a zero character in it\n" + outer +
            ":3: missing file: No such file or directory\n" + outer +
            ":4: There is no family x. The families are: constants, operators, core, geometry, angle, length, area, "
            "volume.\n");
}

TEST_F(Session, EndsAFileThatLoadsItself)
{
    const std::string name = (folder / "loop").generic_string();
    file("loop", "1\n:load " + name + "\n");
    std::string ones;
    for (int i = 0; i < 16; ++i)
    {
        ones += "1\n";
    }
    EXPECT_EQ(run(":load " + name), ones + name + ":2: " + name + ": too many files that load files\n");
}

TEST_F(Session, IsLeftByACommandAlsoFromAFile)
{
    run("1");
    EXPECT_EQ(last, Next::GoOn);
    run(":quit");
    EXPECT_EQ(last, Next::Leave);
    EXPECT_EQ(run(":load " + file("quits", "5\n:quit\n6\n")), "5\n");
    EXPECT_EQ(last, Next::Leave);
    EXPECT_EQ(run("  "), "");
    EXPECT_EQ(last, Next::GoOn);
}

TEST_F(Session, SkipsComments)
{
    EXPECT_EQ(run("# width = 3"), "");
    EXPECT_EQ(run("  # more"), "");
    EXPECT_EQ(run("2#3").substr(0, unknownName.size()), unknownName);
}

TEST_F(Session, OffersTheCorrectionOfTheLastLine)
{
    run("2pi");
    EXPECT_EQ(session->correction(), "2*pi");
    run("2*pi");
    EXPECT_EQ(session->correction(), "");
    run("1,500");
    EXPECT_EQ(session->correction(), "");
    run("2\u00D73");
    EXPECT_EQ(session->correction(), "2*3");
    run(":vars");
    EXPECT_EQ(session->correction(), "");
}

TEST_F(Session, ShowsAsManyDigitsAsWanted)
{
    EXPECT_EQ(run("1/3"), "0.333333333333333\n");
    EXPECT_EQ(run(":digits"), "digits 15\n");
    EXPECT_EQ(run(":digits 4"), "");
    EXPECT_EQ(run("1/3"), "0.3333\n");
    EXPECT_EQ(run(":set"), "digits 4\n");
    EXPECT_EQ(run(":set digits=exact"), "");
    EXPECT_EQ(run("1/3"), "0.3333333333333333\n");
    EXPECT_EQ(run(":digits 18"), "Digits are a whole number from 1 to 17, or \"exact\", and not 18.\n");
    EXPECT_EQ(run(":set colour red"), "There is one setting: digits, as in \":set digits 6\".\n");
}

TEST_F(Session, RemembersSettings)
{
    start({});
    session->keepSettingsIn((folder / "state" / "settings").string());
    run(":digits 4");
    start({});
    session->keepSettingsIn((folder / "state" / "settings").string());
    EXPECT_EQ(run("1/3"), "0.3333\n");
    file("broken", "digits=99\nother\n");
    session->keepSettingsIn((folder / "broken").string());
    EXPECT_EQ(run("1/3"), "0.333333333333333\n");
    session->keepSettingsIn((folder / "broken" / "settings").string());
    EXPECT_EQ(run(":digits 5").substr(0, 33), "The settings are not remembered: ");
    EXPECT_EQ(run("1/3"), "0.33333\n");
}

TEST_F(Session, SavesTheLinesThatHadAValue)
{
    const std::string name = (folder / "saved.txt").generic_string();
    for (const char* const line : {"a=2", "a*foo", ":vars", "# note", "b=a*3", "ans+1"})
    {
        run(line);
    }
    EXPECT_EQ(run(":save " + name), "");
    const std::string vars = run(":vars");
    start({});
    EXPECT_EQ(run(":load " + name), "2\n6\n7\n");
    EXPECT_EQ(run(":vars"), vars);
    EXPECT_EQ(run(":save " + name), "");  // it may overwrite its own file
    const std::string other = file("other.txt", "a=1\n");
    EXPECT_EQ(run(":save " + other), other + ": there is a file of that name, which :save has not written\n");
    EXPECT_NE(run(":save " + (folder / "nowhere" / "x").generic_string()), "");
}

TEST_F(Session, FindsUnits)
{
    EXPECT_EQ(run(":find inch").substr(0, 33), "From inch\n  i2m(x)        inch to");
    EXPECT_EQ(run(":help inch"), run(":find inch"));
    EXPECT_EQ(run(":help length"), run(":list length"));
    EXPECT_EQ(run(":help units").substr(0, 18), "Angle conversions\n");
    EXPECT_EQ(run(":find xyzzy"),
              "Nothing is known of xyzzy. :list names the families of the vocabulary, :help units the units.\n");
}

TEST_F(Session, SuggestsWhatToTypeAndTheExpressionForAQuestion)
{
    start({});
    TerminalStyle style;
    style.isTerminal = true;
    session->setStyle(style);
    EXPECT_EQ(run("quit"), "Type :quit, or press Ctrl-D, to leave.\n");
    EXPECT_EQ(run("help"), "Type :help for help.\n");
    run("help=3");
    EXPECT_EQ(run("help"), "3\n");
    EXPECT_EQ(run("3 inch to mm"), unknownName + "  3 inch to mm\n  ^^^^^^^^^^^^\n  i2mm(3) = 76.2\n");
    EXPECT_EQ(run("a=b=4"), "4\nNote: Only b has been given the value: a line makes one assignment.\n");
}
