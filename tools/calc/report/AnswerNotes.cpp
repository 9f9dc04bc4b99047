// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// AnswerNotes.cpp - examines the text as the language reads it: without blanks, and with single "=" as assignments.
#include "tools/calc/report/AnswerNotes.h"

#include "tools/calc/text/Displayable.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

namespace {

std::string withoutBlanks(std::string_view text)
{
    std::string stripped;
    std::ranges::copy_if(text, std::back_inserter(stripped), [](char unit) { return unit != ' '; });
    return stripped;
}

/// The parts before, between and after the assignments.
std::vector<std::string> splitAtAssignments(const std::string& text)
{
    std::vector<std::string> parts(1);
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        const bool isComparison =
            text[at] == '=' && ((at != 0 && std::string_view("<>!").find(text[at - 1]) != std::string_view::npos) ||
                                text.substr(at + 1, 1) == "=");
        if (isComparison && text.substr(at, 2) == "==")
        {
            parts.back() += text[at++];
        }
        else if (text[at] == '=' && !isComparison)
        {
            parts.emplace_back();
            continue;
        }
        parts.back() += text[at];
    }
    return parts;
}

bool isLetter(char unit)
{
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || unit == '_' ||
           static_cast<unsigned char>(unit) >= 0x80;
}

bool calls(const std::string& text, std::string_view function)
{
    const std::size_t at = text.find(std::string(function) + '(');
    return at != std::string::npos && (at == 0 || !isLetter(text[at - 1]));
}

bool isNan(const VALTYPE& value)
{
    return std::isnan(value.x) || (value.type != 0 && (std::isnan(value.y) || std::isnan(value.z)));
}

bool differ(const VALTYPE& one, const VALTYPE& other)
{
    return one.type != other.type || one.x != other.x || one.y != other.y || one.z != other.z;
}

/// Why the value is not a number, if a single operator of the expression can be the reason.
std::string nanNote(const std::string& text)
{
    const bool hasRemainder = text.find('%') != std::string::npos;
    const bool hasPower = text.find('^') != std::string::npos || calls(text, "pow");
    if (hasPower && !hasRemainder)
    {
        return "nan is not a number: a negative number has no power with a fraction for its exponent.";
    }
    return hasRemainder && !hasPower ? "nan is not a number: a division by 0 has no remainder." : std::string();
}

struct Word
{
    std::string_view typed;
    bool asksHelp;
};

constexpr Word words[] = {
    {"help", true}, {"?", true},    {"-h", true},   {"--help", true}, {"quit", false},  {"exit", false},
    {"q", false},   {"bye", false}, {":wq", false}, {":q!", false},   {":exit", false}, {":x", false},
};

}

std::vector<std::string> notesOn(const Answer& answer)
{
    std::vector<std::string> notes;
    const std::string text = withoutBlanks(answer.expression);
    const std::vector<std::string> parts = splitAtAssignments(text);
    if (parts.size() > 1)
    {
        const std::string& name = parts[parts.size() - 2];
        const auto isPlain = [](char unit) { return isLetter(unit) || (unit >= '0' && unit <= '9') || unit == '.'; };
        if (!std::ranges::all_of(name, isPlain))
        {
            notes.push_back("The variable is called \"" + displayable(name) + "\": a line makes one assignment.");
        }
        else if (parts.size() > 2)
        {
            notes.push_back("Only " + displayable(name) + " has been given the value: a line makes one assignment.");
        }
    }
    if (calls(text, "fact"))
    {
        notes.emplace_back("fact does not compute a factorial: it yields 0.");
    }
    const auto changes = [&](const VALTYPE& value) { return differ(value, answer.values.front()); };
    const bool repeats = std::ranges::any_of(answer.values, changes) && !std::ranges::any_of(answer.values, isNan);
    if (repeats && !calls(text, "rand"))
    {
        notes.emplace_back("A product of points that is evaluated again is added to what it was before.");
    }
    if (std::ranges::any_of(answer.values, isNan))
    {
        const std::string note = nanNote(text);
        notes.insert(notes.end(), note.empty() ? 0 : 1, note);
    }
    return notes;
}

std::string wordNote(std::string_view line, bool atPrompt)
{
    const std::string typed = withoutBlanks(line);
    const auto* const word = std::ranges::find(words, typed, &Word::typed);
    if (word == std::end(words))
    {
        return {};
    }
    if (!atPrompt)
    {
        return word->asksHelp ? "mathexpr --help tells more." : std::string();
    }
    return word->asksHelp ? "Type :help for help." : "Type :quit, or press Ctrl-D, to leave.";
}
