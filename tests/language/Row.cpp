// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Row.cpp - reads data files. Every line that is not a row is an error, so that a typing error cannot disable a test.
#include "tests/language/Row.h"

#include "tests/ReadNumber.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

using Words = std::vector<std::string_view>;

[[noreturn]] void reject(const std::string& what, std::string_view text)
{
    throw std::runtime_error(what + ": '" + std::string(text) + "'");
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Words split(std::string_view text, std::string_view separator)
{
    Words parts;
    for (;;)
    {
        const std::size_t end = text.find(separator);
        parts.push_back(trimmed(text.substr(0, end)));
        if (end == std::string_view::npos)
        {
            return parts;
        }
        text.remove_prefix(end + separator.size());
    }
}

Words wordsOf(std::string_view text)
{
    Words words;
    for (const std::string_view word : split(text, " "))
    {
        if (!word.empty())
        {
            words.push_back(word);
        }
    }
    return words;
}

template <class Number>
Number parseNumber(std::string_view text)
{
    Number number{};
    const auto [end, error] = readNumber(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
    {
        reject("not a number", text);
    }
    return number;
}

/// ASCII with the escapes \t, \n, \\ and \uXXXX.
std::wstring widen(std::string_view text)
{
    std::wstring wide;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != '\\')
        {
            wide.push_back(static_cast<unsigned char>(text[i]));
            continue;
        }
        const char escape = ++i < text.size() ? text[i] : '\0';
        switch (escape)
        {
        case 't':
            wide.push_back(L'\t');
            break;
        case 'n':
            wide.push_back(L'\n');
            break;
        case '\\':
            wide.push_back(L'\\');
            break;
        case 'u': {
            unsigned code = 0;
            const std::string_view digits = text.substr(i + 1, 4);
            const auto [end, error] = readNumber(digits.data(), digits.data() + digits.size(), code, 16);
            if (digits.size() != 4 || error != std::errc() || end != digits.data() + digits.size())
            {
                reject("bad escape", text);
            }
            wide.push_back(static_cast<wchar_t>(code));
            i += 4;
            break;
        }
        default:
            reject("bad escape", text);
        }
    }
    return wide;
}

/// A typed text, unchanged or in double quotes. The quotes keep blanks at its ends.
std::wstring parseText(std::string_view text)
{
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
    {
        return widen(text.substr(1, text.size() - 2));
    }
    if (text.empty())
    {
        reject("no text", text);
    }
    return widen(text);
}

Bindings parseBindings(std::string_view text)
{
    Bindings bindings;
    for (const std::string_view word : wordsOf(text))
    {
        const std::size_t equals = word.find('=');
        if (equals == std::string_view::npos)
        {
            reject("not NAME=VALUE", word);
        }
        std::optional<VALTYPE> stored;
        if (word.substr(equals + 1) != "unwritten")
        {
            const auto value = parseValue(word.substr(equals + 1));
            if (!value)
            {
                reject("not a value", word);
            }
            stored = value->record;
        }
        bindings[widen(word.substr(0, equals))] = stored;
    }
    return bindings;
}

ExpectedRecord parseRecord(ExpectedRecord::Kind kind, std::string_view code, Words::const_iterator first,
                           Words::const_iterator last)
{
    ExpectedRecord record;
    record.kind = kind;
    record.exID = parseNumber<std::uint32_t>(code);
    for (auto word = first; word != last; ++word)
    {
        const std::size_t equals = word->find('=');
        const std::string_view field = word->substr(0, equals);
        const std::string_view value = equals == std::string_view::npos ? "" : word->substr(equals + 1);
        if (field == "pos")
        {
            record.pos = parseNumber<std::uint32_t>(value);
        }
        else if (field == "nbArgs")
        {
            record.nbArgs = parseNumber<std::uint32_t>(value);
        }
        else if (field == "item")
        {
            record.itemName = widen(value);
        }
        else if (field == "conflict")
        {
            record.conflictItemName = widen(value);
        }
        else if (field == "entries")
        {
            record.entries = parseNumber<std::size_t>(value);
        }
        else
        {
            reject("unknown field", *word);
        }
    }
    return record;
}

ExpectedFailure parseFailure(std::string_view text)
{
    const Words words = wordsOf(text);
    ExpectedFailure failure;
    auto word = words.begin();
    const auto next = [&]() -> std::string_view {
        if (word == words.end())
        {
            reject("incomplete", text);
        }
        return *word++;
    };
    const auto accept = [&](std::string_view wanted) {
        if (word == words.end() || *word != wanted)
        {
            return false;
        }
        ++word;
        return true;
    };
    if (accept("!message"))
    {
        failure.message = parseNumber<std::uint32_t>(next());
        failure.messageAlways = accept("always");
    }
    else if (accept("!exception"))
    {
        failure.raisedAlways = true;
    }
    else if (!accept("!false"))
    {
        reject("unknown outcome", text);
    }
    if (accept("at"))
    {
        if (!accept("evaluate"))
        {
            reject("unknown stage", text);
        }
        failure.stage = Stage::Evaluate;
    }
    if (accept("parsing"))
    {
        const std::string_view code = next();
        failure.record = parseRecord(ExpectedRecord::Kind::Parsing, code, word, words.end());
    }
    else if (accept("definition"))
    {
        const std::string_view code = next();
        failure.record = parseRecord(ExpectedRecord::Kind::Definition, code, word, words.end());
    }
    else if (word != words.end() || failure.raisedAlways)
    {
        reject("unknown outcome", text);
    }
    return failure;
}

Outcome parseOutcome(std::string_view text)
{
    Outcome outcome;
    outcome.source = text;
    if (!text.empty() && text.front() == '{')
    {
        const std::size_t end = text.find('}');
        if (end == std::string_view::npos)
        {
            reject("'{' without '}'", text);
        }
        outcome.changes = parseBindings(text.substr(1, end - 1));
        text = trimmed(text.substr(end + 1));
    }
    if (!text.empty() && text.front() == '!')
    {
        outcome.expected = parseFailure(text);
        return outcome;
    }
    const Words words = wordsOf(text);
    if (words.size() == 3 && words[0] == "in")
    {
        outcome.expected = ExpectedRange{parseNumber<double>(words[1]), parseNumber<double>(words[2])};
        return outcome;
    }
    const auto value = parseValue(text);
    if (!value)
    {
        reject("not a value", text);
    }
    outcome.expected = *value;
    return outcome;
}

std::vector<Outcome> parseOutcomes(std::string_view text)
{
    std::vector<Outcome> outcomes;
    for (const std::string_view part : split(text, " | "))
    {
        outcomes.push_back(parseOutcome(part));
    }
    return outcomes;
}

/// Whether the outcome is the same with hidden operands. A failure is not, because it may contain positions and tokens.
bool survivesHiding(const Outcome& outcome)
{
    const auto* const failure = std::get_if<ExpectedFailure>(&outcome.expected);
    if (failure == nullptr)
    {
        return true;
    }
    if (failure->record)
    {
        return failure->raisedAlways && failure->record->exID == 15;
    }
    return !failure->messageAlways;
}

Step parseStep(std::string_view source)
{
    Step step;
    const Words words = wordsOf(source);
    if (words.size() == 1 && words[0] == "!drop")
    {
        step.kind = Step::Kind::DropAssignment;
        return step;
    }
    if (words.size() == 2 && words[0] == "!limit")
    {
        step.kind = Step::Kind::Limit;
        step.limit = parseNumber<std::uint32_t>(words[1]);
        return step;
    }
    const std::size_t arrow = source.find(" => ");
    if (arrow == std::string_view::npos)
    {
        reject("no ' => '", source);
    }
    step.text = parseText(trimmed(source.substr(0, arrow)));
    std::string_view expectation = source.substr(arrow + 4);
    if (const std::size_t asked = expectation.rfind(" asked "); asked != std::string_view::npos)
    {
        step.asked.emplace();
        for (const std::string_view name : wordsOf(expectation.substr(asked + 7)))
        {
            if (name != "nothing")
            {
                step.asked->push_back(widen(name));
            }
        }
        expectation = expectation.substr(0, asked);
    }
    const Words forms = split(expectation, " ~> ");
    if (forms.size() > 2)
    {
        reject("more than one ' ~> '", source);
    }
    step.written = parseOutcomes(forms[0]);
    if (forms.size() == 2)
    {
        if (forms[1] != "none")
        {
            step.hidden = parseOutcomes(forms[1]);
        }
        return step;
    }
    bool survives = true;
    for (const Outcome& outcome : step.written)
    {
        survives = survives && survivesHiding(outcome);
    }
    if (survives)
    {
        step.hidden = step.written;
    }
    return step;
}

Row parseRow(std::string_view line)
{
    Row row;
    row.source = line;
    for (const std::string_view step : split(line, " ; "))
    {
        row.steps.push_back(parseStep(step));
    }
    return row;
}

}

DataFile parseDataFile(std::string_view text)
{
    DataFile file;
    Bindings host;
    std::optional<std::uint32_t> limit;
    int number = 0;
    for (std::string_view line : split(text, "\n"))
    {
        ++number;
        if (line.empty() || line.front() == '#')
        {
            continue;
        }
        try
        {
            const std::string_view directive = line.substr(0, line.find(' '));
            if (directive == "@host")
            {
                host = parseBindings(line.substr(directive.size()));
            }
            else if (directive == "@limit")
            {
                const std::string_view value = trimmed(line.substr(directive.size()));
                limit = value == "none" ? std::nullopt : std::optional(parseNumber<std::uint32_t>(value));
            }
            else
            {
                Row row = parseRow(line);
                row.line = number;
                row.host = host;
                row.limit = limit;
                file.rows.push_back(std::move(row));
            }
        }
        catch (const std::runtime_error& error)
        {
            file.errors.push_back({number, error.what()});
        }
    }
    return file;
}

DataFile readDataFile(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
    {
        return {{}, {{0, "cannot be read"}}};
    }
    return parseDataFile(std::string(std::istreambuf_iterator<char>(stream), {}));
}
