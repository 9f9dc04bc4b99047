// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CommandTests.cpp - parsing of the prompt's commands.
#include "tools/calc/prompt/PromptCommands.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void expectTrouble(const std::string& line, const std::string& trouble)
{
    const CommandLine read = readCommand(line);
    EXPECT_EQ(read.command, PromptCommand::None) << line;
    EXPECT_EQ(read.trouble, trouble);
}

}

TEST(Commands, BeginWithAColon)
{
    EXPECT_TRUE(isCommand(":help"));
    EXPECT_TRUE(isCommand("  :x"));
    EXPECT_FALSE(isCommand("1:2"));
    EXPECT_FALSE(isCommand(""));
}

TEST(Commands, TakeTheirArgumentWithoutTheBlanksAroundIt)
{
    const CommandLine read = readCommand("  :load \t my file.txt  ");
    EXPECT_EQ(read.command, PromptCommand::Load);
    EXPECT_EQ(read.argument, "my file.txt");
    EXPECT_EQ(read.trouble, "");
    EXPECT_EQ(readCommand(":help").command, PromptCommand::Help);
    EXPECT_EQ(readCommand(":list").command, PromptCommand::List);
    EXPECT_EQ(readCommand(":vars").command, PromptCommand::Vars);
    EXPECT_EQ(readCommand(":quit ").command, PromptCommand::Quit);
}

TEST(Commands, MayBeCutShortAsLongAsTheyDiffer)
{
    EXPECT_EQ(readCommand(":q").command, PromptCommand::Quit);
    EXPECT_EQ(readCommand(":h sin").argument, "sin");
    EXPECT_EQ(readCommand(":lo file").command, PromptCommand::Load);
    expectTrouble(":l", ":l may be :list or :load.");
}

TEST(Commands, ComplainWithASuggestion)
{
    expectTrouble(":hlep", "There is no command :hlep. Did you mean :help?");
    expectTrouble(":quti", "There is no command :quti. Did you mean :quit?");
    expectTrouble(":exit", "There is no command :exit. Type :quit, or press Ctrl-D, to leave.");
    expectTrouble(":nonsense x", "There is no command :nonsense. :help lists the commands.");
    expectTrouble(":", "A command is missing after the colon: :help lists the commands.");
    expectTrouble(": help", "A command is missing after the colon: :help lists the commands.");
}

TEST(Commands, ComplainOfAnArgumentTooManyOrTooFew)
{
    expectTrouble(":vars x", ":vars takes nothing after it.");
    expectTrouble(":quit now", ":quit takes nothing after it.");
    expectTrouble(":load", ":load needs a FILE.");
}
