// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCommands.h - the prompt's own commands, such as ":help sin": which there are, and what a line means by one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class PromptCommand
{
    None,  ///< The line is no command, or a wrong one.
    Help,
    Find,
    Vars,
    List,
    Load,
    Save,
    Digits,
    Set,
    Quit,
};

struct PromptCommandNote
{
    PromptCommand command;
    std::string_view name;      ///< With the colon.
    std::string_view argument;  ///< What the user puts behind it; in brackets where it may be missing.
    std::string_view description;
};

const std::vector<PromptCommandNote>& promptCommands();

/// Whether the line begins with a colon.
bool isCommand(std::string_view line);

struct CommandLine
{
    PromptCommand command = PromptCommand::None;
    std::string argument;  ///< Without blanks around it.
    std::string trouble;   ///< What is wrong with the command, for the user; empty where nothing is.
};

/// @param line  for which isCommand; a command may be cut short as long as no other begins so
CommandLine readCommand(std::string_view line);

/// The word at the end of an unfinished command line.
struct CommandWord
{
    PromptCommand command = PromptCommand::None;  ///< The command whose argument it is; none: it is the command itself.
    std::string typed;
    bool isArgument = false;
};

CommandWord commandWordAt(std::string_view line);

/// The commands, families and files that the word can become and the command would not refuse; of files, those of the
/// folder that has been typed.
std::vector<std::string> possibleWords(const CommandWord& word);
