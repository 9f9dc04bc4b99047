// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// JsonReport.cpp - the JSON form; its keys and their order are an interface that scripts rely on.

#include "tools/calc/JsonReport.h"

#include "tools/calc/ValueText.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <iostream>

namespace {

using Json = nlohmann::ordered_json;

/// JSON has no numbers that are not finite; those are strings.
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
                       {"asked", answer.asked}};
    // An expression that is not valid UTF-8 is still answered, with the offending bytes replaced.
    std::cout << line.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
}
