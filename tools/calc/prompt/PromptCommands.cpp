// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptCommands.cpp - the table of commands, their parsing and completion.
#include "tools/calc/prompt/PromptCommands.h"

#include "tools/calc/report/AnswerNotes.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/vocabulary/VocabularyItems.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <numeric>
#include <optional>
#include <system_error>

namespace {

std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t end = text.find_last_not_of(" \t") + 1;
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

/// The edit distance of two words.
std::size_t distanceBetween(std::string_view left, std::string_view right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char typed : left)
    {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < right.size(); ++j)
        {
            const std::size_t replaced = diagonal + (typed == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

std::vector<PromptCommandNote> commandsBeginningWith(std::string_view word)
{
    std::vector<PromptCommandNote> found;
    std::ranges::copy_if(promptCommands(), std::back_inserter(found),
                         [word](const PromptCommandNote& note) { return note.name.starts_with(word); });
    return found;
}

std::string unknownCommand(std::string_view word)
{
    const auto distance = [word](const PromptCommandNote& note) { return distanceBetween(word, note.name); };
    const auto nearest = std::ranges::min_element(promptCommands(), {}, distance);
    constexpr std::size_t forgiven = 2;
    std::string text = "There is no command " + displayable(word) + ". ";
    const std::string note = wordNote(word, true);
    if (!note.empty())
    {
        return text + note;
    }
    return text + (distance(*nearest) <= forgiven ? "Did you mean " + std::string(nearest->name) + "?"
                                                  : ":help lists the commands.");
}

/// Files and folders whose path begins with the typed text, as typed.
std::vector<std::string> filesBeginningWith(const std::string& typed)
{
    const std::size_t nameBegin = typed.find_last_of('/') + 1;
    const std::string folder = typed.substr(0, nameBegin);
    std::vector<std::string> found;
    std::error_code failure;
    std::filesystem::directory_iterator at(folder.empty() ? "." : folder, failure);
    for (; !failure && at != std::filesystem::directory_iterator(); at.increment(failure))
    {
        const std::string name = at->path().filename().string();
        const bool isHidden = name.starts_with('.') && typed.size() == nameBegin;
        std::error_code unknown;
        const bool isFolder = at->is_directory(unknown);
        if (!isHidden && toWide(name) && (isFolder || at->is_regular_file(unknown)))
        {
            found.push_back(folder + name + (isFolder ? "/" : ""));
        }
    }
    std::ranges::sort(found);
    return found;
}

}

const std::vector<PromptCommandNote>& promptCommands()
{
    // clang-format off
    static const std::vector<PromptCommandNote> commands = {
    //   command                name       argument    description
    //   ---------------------- ---------- ----------- -------------------------------------------------
        {PromptCommand::Help,   ":help",   "[NAME]",   "explains the prompt, a name or a unit"},
        {PromptCommand::Find,   ":find",   "WORDS",    "lists functions for a unit or matching words"},
        {PromptCommand::Vars,   ":vars",   "",         "lists the names that have a value"},
        {PromptCommand::List,   ":list",   "[FAMILY]", "lists a family of the vocabulary, or the families"},
        {PromptCommand::Load,   ":load",   "FILE",     "runs the lines of a file as if typed"},
        {PromptCommand::Save,   ":save",   "FILE",     "writes the lines that have a value, for :load"},
        {PromptCommand::Digits, ":digits", "[N]",      "shows values with N digits, 1 to 17, or \"exact\""},
        {PromptCommand::Set,    ":set",    "[NAME N]", "changes a stored setting, or shows all"},
        {PromptCommand::Quit,   ":quit",   "",         "leaves the prompt, as Ctrl-D does"},
    };
    // clang-format on
    return commands;
}

bool isCommand(std::string_view line)
{
    return withoutBlanks(line).starts_with(':');
}

CommandLine readCommand(std::string_view line)
{
    const std::string_view text = withoutBlanks(line);
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    const std::string_view word = text.substr(0, end);
    CommandLine read;
    read.argument = withoutBlanks(text.substr(end));

    const std::vector<PromptCommandNote> meant = commandsBeginningWith(word);
    if (meant.empty() || word == ":")
    {
        read.trouble =
            word == ":" ? "A command is missing after the colon: :help lists the commands." : unknownCommand(word);
        return read;
    }
    if (meant.size() > 1)
    {
        read.trouble =
            std::string(word) + " may be " + std::string(meant[0].name) + " or " + std::string(meant[1].name) + ".";
        return read;
    }
    const PromptCommandNote& note = meant.front();
    if (note.argument.empty() && !read.argument.empty())
    {
        read.trouble = std::string(note.name) + " takes nothing after it.";
    }
    else if (!note.argument.empty() && note.argument.front() != '[' && read.argument.empty())
    {
        read.trouble = std::string(note.name) + " needs a " + std::string(note.argument) + ".";
    }
    read.command = read.trouble.empty() ? note.command : PromptCommand::None;
    return read;
}

CommandWord commandWordAt(std::string_view line)
{
    const std::string_view text = line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
    const std::size_t end = text.find_first_of(" \t");
    if (end == std::string_view::npos)
    {
        return {PromptCommand::None, std::string(text), false};
    }
    const std::vector<PromptCommandNote> meant = commandsBeginningWith(text.substr(0, end));
    const std::size_t begin = std::min(text.find_first_not_of(" \t", end), text.size());
    return {meant.size() == 1 ? meant.front().command : PromptCommand::None, std::string(text.substr(begin)), true};
}

std::vector<std::string> possibleWords(const CommandWord& word)
{
    std::vector<std::string> words;
    if (!word.isArgument || word.command == PromptCommand::Help)
    {
        std::ranges::transform(promptCommands(), std::back_inserter(words),
                               [](const PromptCommandNote& note) { return std::string(note.name); });
    }
    if (word.command == PromptCommand::List)
    {
        std::ranges::transform(familyNames(), std::back_inserter(words),
                               [](const FamilyName& family) { return std::string(family.name); });
    }
    const bool isFile = word.command == PromptCommand::Load || word.command == PromptCommand::Save;
    return isFile ? filesBeginningWith(word.typed) : words;
}
