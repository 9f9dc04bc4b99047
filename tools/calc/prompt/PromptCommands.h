// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCommands.h - the prompt's commands, such as ":help sin", and their parsing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class PromptCommand
{
    None,  ///< The line is not a command, or a wrong one.
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
    std::string_view name;      ///< Including the colon.
    std::string_view argument;  ///< The command's argument; in brackets if optional.
    std::string_view description;
};

const std::vector<PromptCommandNote>& promptCommands();

/// Whether the line begins with a colon.
bool isCommand(std::string_view line);

struct CommandLine
{
    PromptCommand command = PromptCommand::None;
    std::string argument;  ///< Trimmed.
    std::string trouble;   ///< An error message about the command; empty if there is none.
};

/// @param line  a line for which isCommand is true; commands may be abbreviated as long as they are unique
CommandLine readCommand(std::string_view line);

/// The word at the end of an unfinished command line.
struct CommandWord
{
    PromptCommand command = PromptCommand::None;  ///< The command whose argument the word is; None: the word is the
                                                  ///< command.
    std::string typed;
    bool isArgument = false;
};

CommandWord commandWordAt(std::string_view line);

/// The commands, families and files that the word can be completed to and that the command accepts; files only from the
/// typed folder.
std::vector<std::string> possibleWords(const CommandWord& word);
