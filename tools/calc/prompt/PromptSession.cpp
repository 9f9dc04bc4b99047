// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSession.cpp - see PromptSession.h.
#include "tools/calc/prompt/PromptSession.h"

#include "tools/calc/prompt/PromptCommands.h"
#include "tools/calc/report/DiagnosticText.h"
#include "tools/calc/report/JsonReport.h"
#include "tools/calc/report/PlainReport.h"
#include "tools/calc/terminal/Interrupt.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/InputLine.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/text/ValueText.h"
#include "tools/calc/vocabulary/ItemNotes.h"
#include "tools/calc/vocabulary/VocabularyItems.h"
#include "tools/calc/vocabulary/VocabularyReport.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <system_error>

namespace {

/// Bounds the recursion of a file that loads itself.
constexpr std::size_t deepestLoad = 16;

void printCommands()
{
    for (const PromptCommandNote& note : promptCommands())
    {
        const std::string usage = std::string(note.name) + ' ' + std::string(note.argument);
        std::cout << "  " << std::left << std::setw(17) << usage << note.description << '\n';
    }
}

void printHelp()
{
    std::cout << "An expression, such as 2*sin(30) or dist([0,0],[3,4]), prints its value,\n"
                 "which is also the variable ans. width=2.5 defines a variable.\n";
    printCommands();
    std::cout << "Tab completes a name. Up recalls earlier lines; after a line that failed, its\n"
                 "correction. Ctrl-C clears the line. A line that begins with # is a comment.\n";
}

/// The family that a word names or abbreviates.
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

/// Why the file cannot be opened; empty if it can.
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

/// The first line of files written by :save, which :save may overwrite.
constexpr std::string_view savedHead = "# Lines of a session of mathexpr";

/// Whether the file exists and was not written by :save.
bool isSomebodyElses(const std::filesystem::path& path)
{
    std::ifstream stream(path);
    std::string line;
    return stream && (!std::getline(stream, line) || line != savedHead);
}

/// @return why the lines cannot be saved; empty on success
std::string saveLines(const std::string& file, const std::vector<std::string>& lines)
{
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    if (isSomebodyElses(path))
    {
        return "there is a file of that name, which :save has not written";
    }
    errno = 0;
    std::ofstream stream(path, std::ios::binary);
    stream << savedHead << '\n';
    for (const std::string& line : lines)
    {
        stream << line << '\n';
    }
    if (stream.flush())
    {
        return {};
    }
    return errno == 0 ? "cannot be written" : std::generic_category().message(errno);
}

}

PromptSession::PromptSession(const Options& givenOptions, Calculator& givenCalculator)
    : options(givenOptions), calculator(givenCalculator)
{}

void PromptSession::setStyle(const TerminalStyle& newStyle)
{
    style = newStyle;
    style.atPrompt = true;
}

void PromptSession::keepSettingsIn(const std::string& file)
{
    settingsFile = file;
    settings = readSettings(file);
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
    corrected.clear();
    if (isBlank(line) || isComment(line))
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
    case PromptCommand::Find:
        find(command.argument, origin);
        break;
    case PromptCommand::Vars:
        listNames();
        break;
    case PromptCommand::List:
        list(command.argument, origin);
        break;
    case PromptCommand::Load:
        return load(command.argument, origin);
    case PromptCommand::Save:
        save(command.argument, origin);
        break;
    case PromptCommand::Digits:
        setDigits(command.argument, origin);
        break;
    case PromptCommand::Set:
        set(command.argument, origin);
        break;
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
    style.digits = options.digits.value_or(settings.digits);
    const Answer answer = calculator.compute(expression);
    options.json ? reportJson(answer) : reportPlain(answer, origin, style);
    if (!answer.trouble.empty())
    {
        complain(origin, answer.trouble);
    }
    if (!answer.failed)
    {
        calculator.setVariable(L"ans", answer.values.back());
        computed.emplace_back(expression);
    }
    const auto typed = toWide(expression);
    corrected = typed && answer.diagnostic ? correctedText(*typed, *answer.diagnostic) : std::string();
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
        std::cout << displayable(symbol) << " = " << valueText(variable->value, style.digits) << '\n';
        return;
    }
    const FamilyName* const family = familyOf(symbol);
    if (!isItem(symbol) && symbol == "units")
    {
        listUnits();
    }
    else if (!isItem(symbol) && family != nullptr)
    {
        listFamily(family->family);
    }
    else if (isItem(symbol) || !findItems(name))
    {
        describeItems({symbol}, false);  // reports similar names if there is no such item
    }
}

void PromptSession::find(const std::string& words, const std::string& origin) const
{
    if (!findItems(words))
    {
        complain(origin, "Nothing is known of " + displayable(words) +
                             ". :list names the families of the vocabulary, " + ":help units the units.");
    }
}

void PromptSession::save(const std::string& file, const std::string& origin) const
{
    const std::string trouble = saveLines(file, computed);
    if (!trouble.empty())
    {
        complain(origin, displayable(file, 0) + ": " + trouble);
    }
}

void PromptSession::set(const std::string& argument, const std::string& origin)
{
    constexpr std::string_view digits = "digits";
    if (argument.empty() || argument == digits)
    {
        setDigits({}, origin);
        return;
    }
    const std::size_t end = argument.find_first_of(" =\t");
    if (argument.substr(0, end) != digits || end == std::string::npos)
    {
        complain(origin, "There is one setting: digits, as in \":set digits 6\".");
        return;
    }
    setDigits(argument.substr(argument.find_first_not_of(" =\t", end)), origin);
}

void PromptSession::setDigits(const std::string& digits, const std::string& origin)
{
    if (digits.empty())
    {
        std::cout << "digits " << digitsText(options.digits.value_or(settings.digits)) << '\n';
        return;
    }
    const auto chosen = digitsFrom(digits);
    if (!chosen)
    {
        complain(origin, "Digits are a whole number from 1 to 17, or \"exact\", and not " + displayable(digits) + ".");
        return;
    }
    settings.digits = *chosen;
    const std::string trouble = settingsFile.empty() ? std::string() : writeSettings(settingsFile, settings);
    if (!trouble.empty())
    {
        complain(origin, "The settings are not remembered: " + trouble + ".");
    }
}

void PromptSession::listNames() const
{
    const std::vector<NamedValue> known = names();
    for (const NamedValue& named : known)
    {
        std::cout << displayable(toUtf8(named.name)) << " = " << valueText(named.value, style.digits) << '\n';
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
        complain(origin, "There is no family " + displayable(family) + ". The families are: " + familiesText() + ".");
    }
}

PromptSession::Next PromptSession::load(const std::string& file, const std::string& origin)
{
    std::ifstream stream;
    const std::string trouble = loading == deepestLoad ? "too many files that load files" : openToLoad(file, stream);
    if (!trouble.empty())
    {
        complain(origin, displayable(file, 0) + ": " + trouble);
        return Next::GoOn;
    }
    ++loading;
    Next next = Next::GoOn;
    std::string line;
    for (std::size_t number = 1; next == Next::GoOn && std::getline(stream, line); ++number)
    {
        const std::string place = displayable(file, 0) + ':' + std::to_string(number);
        next = run(expressionOfLine(line, number), place);
        if (wasInterrupted())
        {
            complain(place, "interrupted; the lines after this one were not run");
            break;
        }
    }
    if (stream.bad())
    {
        complain(origin, displayable(file, 0) + ": cannot be read to its end");
    }
    --loading;
    return next;
}

void PromptSession::complain(const std::string& origin, const std::string& what) const
{
    std::cout.flush();
    std::cerr << style.failure(origin.empty() ? what : origin + ": " + what) << std::endl;
}
