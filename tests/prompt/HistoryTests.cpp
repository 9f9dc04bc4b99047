// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HistoryTests.cpp - the file with the lines of earlier sessions.
#include "tools/calc/prompt/PromptHistory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace {

using Lines = std::vector<std::string>;

class History : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = testing::TempDir() + "history.XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        file = folder + "/state/mathexpr/history";
    }

    void TearDown() override { std::filesystem::remove_all(folder); }

    void write(const std::string& text) const
    {
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    std::string content() const
    {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    }

    static unsigned modeOf(const std::string& name)
    {
        struct stat status = {};
        return stat(name.c_str(), &status) == 0 ? status.st_mode & 0777U : 0U;
    }

    std::string folder;
    std::string file;
};

}

TEST_F(History, IsKeptForItsOwnerAlone)
{
    {
        PromptHistory history(file);
        EXPECT_EQ(history.takeTrouble(), "");
        EXPECT_EQ(history.lines(), Lines());
        history.add("1+2");
        EXPECT_EQ(content(), "1+2\n");  // written at once
        history.add("1+2");             // no consecutive duplicates
        history.add("h\xC3\xB6he=2");
    }
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(folder + "/state/mathexpr"), 0700U);
    EXPECT_EQ(modeOf(folder + "/state"), 0700U);
    PromptHistory again(file);
    EXPECT_EQ(again.lines(), (Lines{"1+2", "h\xC3\xB6he=2"}));
}

TEST_F(History, OfTwoSessionsIsInOneFile)
{
    PromptHistory one(file);
    PromptHistory other(file);
    one.add("1");
    other.add("2");
    one.add("3");
    EXPECT_EQ(content(), "1\n2\n3\n");
}

TEST_F(History, SkipsWhatIsNoText)
{
    write(std::string("1\n\xFF\xFE\nx\0y\n\n2\x1b\n3", 14));
    PromptHistory history(file);
    EXPECT_EQ(history.lines(), (Lines{"1", "3"}));
    history.add("4");  // on a new line, though the last one was incomplete
    EXPECT_EQ(PromptHistory(file).lines(), (Lines{"1", "3", "4"}));
}

TEST_F(History, IsShortenedToTheNewestLines)
{
    std::string text;
    for (int i = 1; i <= 2500; ++i)
    {
        text += std::to_string(i) + '\n';
    }
    write(text);
    PromptHistory history(file);
    ASSERT_EQ(history.lines().size(), 1000U);
    EXPECT_EQ(history.lines().front(), "1501");
    history.add("x");
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(content().substr(0, 5), "1501\n");
    EXPECT_EQ(content().substr(content().size() - 7), "2500\nx\n");
}

TEST_F(History, ThatCannotBeReadOrWrittenGivesOneReason)
{
    std::filesystem::create_directories(file);  // a folder instead of the file
    PromptHistory history(file);
    EXPECT_EQ(history.takeTrouble(), file + ": Is a directory");
    EXPECT_EQ(history.takeTrouble(), "");
    history.add("1");
    EXPECT_EQ(history.takeTrouble(), "");

    PromptHistory nowhere("/dev/null/mathexpr/history");
    EXPECT_EQ(nowhere.takeTrouble(), "/dev/null/mathexpr/history: Not a directory");

    ASSERT_EQ(mkfifo((folder + "/pipe").c_str(), 0600), 0);
    PromptHistory pipe(folder + "/pipe");
    EXPECT_EQ(pipe.takeTrouble(), folder + "/pipe: not a regular file");

    PromptHistory none("");
    EXPECT_EQ(none.takeTrouble(), "neither XDG_STATE_HOME nor HOME names a folder");
}

TEST_F(History, ThatCannotGrowGivesAReason)
{
    PromptHistory full("/dev/full");
    EXPECT_EQ(full.takeTrouble(), "/dev/full: not a regular file");
}

TEST_F(History, DoesNotMakeAHomeThatIsNotThere)
{
    const std::string home = folder + "/missing";
    PromptHistory history(home + "/.local/state/mathexpr/history");
    EXPECT_NE(history.takeTrouble(), "");
    EXPECT_FALSE(std::filesystem::exists(home));
}

TEST_F(History, HasItsUsualPlaceBelowTheUsersFolders)
{
    setenv("HOME", "/home/somebody", 1);
    setenv("XDG_STATE_HOME", "/state", 1);
    EXPECT_EQ(PromptHistory::usualFile(), "/state/mathexpr/history");
    setenv("XDG_STATE_HOME", "relative", 1);  // must be ignored, according to the standard
    EXPECT_EQ(PromptHistory::usualFile(), "/home/somebody/.local/state/mathexpr/history");
    unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(PromptHistory::usualFile(), "/home/somebody/.local/state/mathexpr/history");
    unsetenv("HOME");
    EXPECT_EQ(PromptHistory::usualFile(), "");
}
