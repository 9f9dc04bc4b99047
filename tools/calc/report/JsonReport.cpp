// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// JsonReport.cpp - the JSON form. Scripts depend on its keys and their order.

#include "tools/calc/report/JsonReport.h"

#include "tools/calc/report/DiagnosticText.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/text/ValueText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <iterator>
#include <utility>

namespace {

using Json = nlohmann::ordered_json;

/// JSON has no infinities and NaN; they are strings.
Json numberJson(double number)
{
    return std::isfinite(number) ? Json(number) : Json(numberText(number));
}

Json valueJson(const VALTYPE& value)
{
    return {{"type", value.type == 0 ? "number" : "point"},
            {"flag", value.flag},
            {"x", numberJson(value.x)},
            {"y", numberJson(value.y)},
            {"z", numberJson(value.z)},
            {"bits", {bitsText(value.x), bitsText(value.y), bitsText(value.z)}}};
}

Json stageJson(const std::optional<Answer::Stage>& stage)
{
    if (!stage)
    {
        return nullptr;
    }
    return *stage == Answer::Stage::Compile ? "compile" : "evaluate";
}

Json exceptionJson(const std::optional<RaisedException>& exception)
{
    if (!exception)
    {
        return nullptr;
    }
    return {{"kind", exception->kind == RaisedException::Kind::Parsing ? "parsing" : "definition"},
            {"exID", exception->exID},
            {"pos", exception->pos},
            {"itemName", exception->itemName},
            {"nbArgs", exception->nbArgs},
            {"conflictItemName", exception->conflictItemName},
            {"file", exception->file},
            {"line", exception->line},
            {"entries", exception->entries}};
}

/// Length of the text before a position, in code points and in bytes of UTF-8.
struct Extent
{
    std::size_t characters;
    std::size_t bytes;
};

Extent extentOf(std::wstring_view text)
{
    const std::string utf8 = toUtf8(text);
    const auto begins = [](char unit) { return (static_cast<unsigned char>(unit) & 0xC0) != 0x80; };
    return {static_cast<std::size_t>(std::ranges::count_if(utf8, begins)), utf8.size()};
}

Json spanJson(std::wstring_view text, std::size_t start, std::size_t length)
{
    const Extent before = extentOf(text.substr(0, std::min(start, text.size())));
    const Extent inside = extentOf(text.substr(std::min(start, text.size()), length));
    return {{"characters", {{"start", before.characters}, {"length", inside.characters}}},
            {"bytes", {{"start", before.bytes}, {"length", inside.bytes}}}};
}

Json expectedJson(std::uint32_t expected)
{
    struct Name
    {
        std::uint32_t bit;
        const char* text;
    };
    constexpr Name names[] = {
        {mathexpr::Expected::Value, "value"},
        {mathexpr::Expected::Operator, "operator"},
        {mathexpr::Expected::ClosingBracket, "closing bracket"},
        {mathexpr::Expected::Separator, "comma"},
        {mathexpr::Expected::End, "end"},
        {mathexpr::Expected::Function, "function"},
        {mathexpr::Expected::KnownName, "known name"},
        {mathexpr::Expected::NewName, "new name"},
        {mathexpr::Expected::OtherCount, "other count"},
        {mathexpr::Expected::Number, "number"},
        {mathexpr::Expected::Point, "point"},
        {mathexpr::Expected::SameKind, "same kind"},
        {mathexpr::Expected::InDomain, "in domain"},
        {mathexpr::Expected::SmallerNumber, "smaller number"},
        {mathexpr::Expected::Less, "less"},
    };
    Json list = Json::array();
    for (const Name& name : names)
    {
        if ((expected & name.bit) != 0)
        {
            list.push_back(name.text);
        }
    }
    return list;
}

Json textsJson(const std::vector<std::wstring>& texts)
{
    Json list = Json::array();
    std::ranges::transform(texts, std::back_inserter(list), [](const std::wstring& text) { return toUtf8(text); });
    return list;
}

/// Why a text was not passed to the library: its first ill-formed byte.
Json troubleJson(const Answer& answer)
{
    const std::size_t at = lengthOfText(answer.expression);
    return {{"message", 0},
            {"text", answer.trouble},
            {"span", {{"bytes", {{"start", at}, {"length", at < answer.expression.size() ? 1 : 0}}}}},
            {"expected", Json::array()},
            {"suggestions", Json::array()},
            {"hints", Json::array()},
            {"fix", nullptr}};
}

Json diagnosticJson(const Answer& answer)
{
    if (!answer.failed)
    {
        return nullptr;
    }
    const auto typed = toWide(answer.expression);
    if (!typed || !answer.diagnostic)
    {
        return troubleJson(answer);
    }
    const mathexpr::ExpressionDiagnostic& diagnostic = *answer.diagnostic;
    Json fix;
    if (diagnostic.fix)
    {
        fix = {{"span", spanJson(*typed, diagnostic.fix->start, diagnostic.fix->length)},
               {"replacement", toUtf8(diagnostic.fix->replacement)},
               {"text", correctedText(*typed, diagnostic)}};
    }
    return {{"message", diagnostic.message},
            {"text", toUtf8(diagnostic.text)},
            {"span", spanJson(*typed, diagnostic.start, diagnostic.length)},
            {"expected", expectedJson(diagnostic.expected)},
            {"suggestions", textsJson(diagnostic.suggestions)},
            {"hints", textsJson(diagnostic.hints)},
            {"fix", std::move(fix)}};
}

}

void reportJson(const Answer& answer)
{
    Json values = Json::array();
    for (const VALTYPE& value : answer.values)
    {
        values.push_back(valueJson(value));
    }
    Json messages = Json::array();
    for (const ShownMessage& message : answer.messages)
    {
        messages.push_back({{"id", message.id}, {"text", message.text}});
    }
    const Json line = {{"expression", answer.expression},
                       {"ok", !answer.failed},
                       {"stage", stageJson(answer.failed)},
                       {"values", std::move(values)},
                       {"messages", std::move(messages)},
                       {"exception", exceptionJson(answer.exception)},
                       {"asked", answer.asked},
                       {"diagnostic", diagnosticJson(answer)}};
    // An expression in ill-formed UTF-8 is reported as well, with the offending bytes replaced.
    std::cout << line.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
}
