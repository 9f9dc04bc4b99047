// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSession.cpp - see PromptSession.h.
#include "tools/calc/PromptSession.h"

#include "tools/calc/InputLine.h"
#include "tools/calc/Interrupt.h"
#include "tools/calc/ItemNotes.h"
#include "tools/calc/JsonReport.h"
#include "tools/calc/PlainReport.h"
#include "tools/calc/PromptCommands.h"
#include "tools/calc/Utf8.h"
#include "tools/calc/ValueText.h"
#include "tools/calc/VocabularyItems.h"
#include "tools/calc/VocabularyReport.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <system_error>

namespace {

/// A file that loads itself would never end.
constexpr std::size_t deepestLoad = 16;

void printCommands()
{
    for (const PromptCommandNote& note : promptCommands())
    {
        const std::string usage = std::string(note.name) + ' ' + std::string(note.argument);
        std::cout << "  " << std::left << std::setw(15) << usage << note.description << '\n';
    }
}

void printHelp()
{
    std::cout << "An expression, such as 2*sin(30) or dist([0,0],[3,4]), prints its value,\n"
                 "which the name ans keeps. width=2.5 gives a name a value.\n";
    printCommands();
    std::cout << "Tab completes a name, Up brings earlier lines back,\n"
                 "Ctrl-C drops the line.\n";
}

/// The family that a word names, or begins to name.
const FamilyName* familyOf(const std::string& word)
{
    const auto& families = familyNames();
    const auto begins = [&](const FamilyName& family) { return family.name.starts_with(word); };
    const auto found = std::ranges::find_if(families, begins);
    return found == families.end() || std::ranges::count_if(families, begins) != 1 ? nullptr : &*found;
}

std::string familiesText()
{
    std::string text;
    for (const FamilyName& family : familyNames())
    {
        text += (text.empty() ? "" : ", ") + std::string(family.name);
    }
    return text;
}

/// Why the file cannot be opened; empty where it can.
std::string openToLoad(const std::string& file, std::ifstream& stream)
{
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    std::error_code failure;
    if (std::filesystem::is_directory(path, failure))
    {
        return std::generic_category().message(EISDIR);
    }
    errno = 0;
    stream.open(path, std::ios::binary);
    if (stream)
    {
        return {};
    }
    return errno == 0 ? "cannot be opened" : std::generic_category().message(errno);
}

}

PromptSession::PromptSession(const Options& givenOptions, Calculator& givenCalculator)
    : options(givenOptions), calculator(givenCalculator)
{}

void PromptSession::setStyle(const TerminalStyle& newStyle)
{
    style = newStyle;
}

PromptSession::Next PromptSession::run(std::string_view line)
{
    return run(line, {});
}

std::vector<NamedValue> PromptSession::names() const
{
    return calculator.namedValues();
}

PromptSession::Next PromptSession::run(std::string_view line, const std::string& origin)
{
    if (isBlank(line))
    {
        return Next::GoOn;
    }
    if (!isCommand(line))
    {
        compute(line, origin);
        return Next::GoOn;
    }
    const CommandLine command = readCommand(line);
    switch (command.command)
    {
    case PromptCommand::Help:
        help(command.argument);
        break;
    case PromptCommand::Vars:
        listNames();
        break;
    case PromptCommand::List:
        list(command.argument, origin);
        break;
    case PromptCommand::Load:
        return load(command.argument, origin);
    case PromptCommand::Quit:
        return Next::Leave;
    case PromptCommand::None:
        complain(origin, command.trouble);
        break;
    }
    std::cout.flush();
    return Next::GoOn;
}

void PromptSession::compute(std::string_view expression, const std::string& origin)
{
    const Answer answer = calculator.compute(expression);
    options.json ? reportJson(answer) : reportPlain(answer, origin, style);
    if (!answer.trouble.empty())
    {
        complain(origin, answer.trouble);
    }
    if (!answer.failed)
    {
        calculator.setVariable(L"ans", answer.values.back());
    }
}

void PromptSession::help(const std::string& name) const
{
    if (name.empty())
    {
        printHelp();
        return;
    }
    const auto isMeant = [&](const PromptCommandNote& note) { return note.name == name; };
    const auto command = std::ranges::find_if(promptCommands(), isMeant);
    if (command != promptCommands().end())
    {
        std::cout << command->name << ' ' << command->argument << (command->argument.empty() ? "" : " ")
                  << command->description << '\n';
        return;
    }
    const std::string symbol = name.substr(0, name.size() > 1 ? name.find('(') : std::string::npos);
    const auto isNamed = [&](const NamedValue& named) { return toUtf8(named.name) == symbol; };
    const std::vector<NamedValue> known = names();
    const auto variable = std::ranges::find_if(known, isNamed);
    if (variable != known.end())
    {
        std::cout << symbol << " = " << valueText(variable->value) << '\n';
        return;
    }
    describeItems({symbol}, false);
}

void PromptSession::listNames() const
{
    const std::vector<NamedValue> known = names();
    for (const NamedValue& named : known)
    {
        std::cout << toUtf8(named.name) << " = " << valueText(named.value) << '\n';
    }
    if (known.empty())
    {
        std::cout << "No name has a value yet: width=2.5 gives one.\n";
    }
}

void PromptSession::list(const std::string& family, const std::string& origin) const
{
    if (family.empty())
    {
        std::cout << "Families: " << familiesText() << '\n';
    }
    else if (const FamilyName* const found = familyOf(family))
    {
        listFamily(found->family);
    }
    else
    {
        complain(origin, "There is no family " + family + ". The families are: " + familiesText() + ".");
    }
}

PromptSession::Next PromptSession::load(const std::string& file, const std::string& origin)
{
    std::ifstream stream;
    const std::string trouble = loading == deepestLoad ? "too many files that load files" : openToLoad(file, stream);
    if (!trouble.empty())
    {
        complain(origin, file + ": " + trouble);
        return Next::GoOn;
    }
    ++loading;
    Next next = Next::GoOn;
    std::string line;
    for (std::size_t number = 1; next == Next::GoOn && std::getline(stream, line); ++number)
    {
        const std::string place = file + ':' + std::to_string(number);
        next = run(expressionOfLine(line, number), place);
        if (wasInterrupted())
        {
            complain(place, "interrupted; the lines after this one were not run");
            break;
        }
    }
    if (stream.bad())
    {
        complain(origin, file + ": cannot be read to its end");
    }
    --loading;
    return next;
}

void PromptSession::complain(const std::string& origin, const std::string& what) const
{
    std::cout.flush();
    std::cerr << style.failure(origin.empty() ? what : origin + ": " + what) << std::endl;
}
