// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyReport.cpp - walks the exported vocabulary and computes the expressions of the notes.
#include "tools/calc/VocabularyReport.h"

#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Vocabulary.h"
#include "tools/calc/DiagnosticText.h"
#include "tools/calc/ItemNotes.h"
#include "tools/calc/Utf8.h"
#include "tools/calc/ValueText.h"
#include "tools/calc/VocabularyItems.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <string_view>

namespace {

using Json = nlohmann::ordered_json;

const char* kindName(mathexpr::VocabularyKind kind)
{
    switch (kind)
    {
    case mathexpr::VocabularyKind::Constant:
        return "constant";
    case mathexpr::VocabularyKind::Operator:
        return "operator";
    default:
        return "function";
    }
}

Json itemJson(const mathexpr::VocabularyItem& item)
{
    if (item.kind == mathexpr::VocabularyKind::Constant)
    {
        return {{"kind", kindName(item.kind)},
                {"class", nullptr},
                {"symbol", toUtf8(item.symbol)},
                {"help", toUtf8(item.help)},
                {"description", toUtf8(item.description)},
                {"nbArgs", nullptr},
                {"precedence", nullptr},
                {"unary", item.unary},
                {"constant", item.constant},
                {"value", {bitsText(item.value), bitsText(0.0), bitsText(0.0)}}};
    }
    const bool isOperator = item.kind == mathexpr::VocabularyKind::Operator;
    return {{"kind", kindName(item.kind)},
            {"class", toUtf8(item.className)},
            {"symbol", toUtf8(item.symbol)},
            {"help", toUtf8(item.help)},
            {"description", toUtf8(item.description)},
            {"nbArgs", item.nbArgs == NB_ARGS_UNDEFINED ? Json("any") : Json(item.nbArgs)},
            {"precedence", isOperator ? Json(item.precedence) : Json(nullptr)},
            {"unary", item.unary},
            {"constant", item.constant}};
}

/// How a person would name the item.
std::string headOf(const mathexpr::VocabularyItem& item)
{
    return item.kind == mathexpr::VocabularyKind::Constant ? toUtf8(item.symbol) : toUtf8(item.help);
}

std::string tailOf(const mathexpr::VocabularyItem& item)
{
    return item.kind == mathexpr::VocabularyKind::Constant ? numberText(item.value) : toUtf8(item.description);
}

/// An expression and what comes of it, in words that hold in both modes of the library.
struct Computed
{
    std::string expression;
    std::string outcome;  ///< The value, "message 10" or "exception 15".
    std::string reason;   ///< Why it fails; empty where it does not.
};

Computed compute(const std::string& expression)
{
    Computed computed{expression, {}, {}};
    MathExpression object(true, nullptr);
    VALTYPE value;
    bool done = false;
    try
    {
        const auto text = toWide(expression);
        done = text && object.setExpression(text->c_str()) && object.evaluate(value);
    }
    catch (const mathexpr::ParsingException&)
    {
        // The diagnostic tells more.
    }
    if (done)
    {
        computed.outcome = valueText(value);
        return computed;
    }
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(object);
    if (diagnostic.code == mathexpr::ParsingError::ArgumentKind &&
        diagnostic.kind == mathexpr::ExpressionDiagnostic::Kind::Parsing)
    {
        computed.outcome = "exception 15";
        computed.reason = "A number is needed instead of a point.";
    }
    else
    {
        computed.outcome = "message " + std::to_string(diagnostic.message);
        computed.reason = toUtf8(diagnostic.text);
    }
    return computed;
}

std::vector<Computed> computeAll(const std::vector<std::string>& expressions)
{
    std::vector<Computed> computed;
    std::transform(expressions.begin(), expressions.end(), std::back_inserter(computed), compute);
    return computed;
}

Json computedJson(const std::vector<std::string>& expressions)
{
    Json list = Json::array();
    for (const Computed& computed : computeAll(expressions))
    {
        list.push_back({{"expression", computed.expression}, {"outcome", computed.outcome}});
    }
    return list;
}

Json descriptionJson(const mathexpr::VocabularyItem& item)
{
    const ItemNotes notes = notesOf(item);
    Json json = itemJson(item);
    json["family"] = familyTitle(item.family);
    json["units"] = notes.units;
    json["domain"] = notes.domain;
    json["examples"] = computedJson(notes.examples);
    json["refused"] = computedJson(notes.refused);
    json["points"] = computedJson(notes.points);
    return json;
}

void printLine(std::string_view title, const std::string& text)
{
    if (!text.empty())
    {
        std::cout << "  " << std::left << std::setw(10) << title << text << '\n';
    }
}

void printComputed(std::string_view title, const std::vector<std::string>& expressions)
{
    for (const Computed& computed : computeAll(expressions))
    {
        printLine(title, computed.expression + (computed.reason.empty()
                                                    ? " = " + computed.outcome
                                                    : " is refused (" + computed.outcome + "): " + computed.reason));
    }
}

void printDescription(const mathexpr::VocabularyItem& item)
{
    const ItemNotes notes = notesOf(item);
    std::cout << headOf(item) << '\n';
    printLine("", tailOf(item));
    printLine("Family", std::string(familyTitle(item.family)));
    if (item.kind == mathexpr::VocabularyKind::Operator)
    {
        printLine("Binds", std::to_string(item.precedence) + " (0 loosest, 4 tightest)");
    }
    printLine("Units", notes.units);
    printLine("Accepts", notes.domain);
    printComputed("Example", notes.examples);
    printComputed("Refusal", notes.refused);
    printComputed("Points", notes.points);
}

/// Up to three names that have the most characters at the beginning in common with a name, in the order of the
/// vocabulary.
std::vector<std::wstring> namesThatBeginAlike(const std::wstring& name)
{
    std::vector<std::wstring> alike;
    std::size_t most = 1;
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        const std::wstring_view symbol = item.symbol;
        const auto differing = std::mismatch(name.begin(), name.end(), symbol.begin(), symbol.end()).first;
        const auto common = static_cast<std::size_t>(differing - name.begin());
        if (common > most)
        {
            alike.clear();
            most = common;
        }
        const bool isNew = std::find(alike.begin(), alike.end(), symbol) == alike.end();
        if (common == most && alike.size() < 3 && isNew)
        {
            alike.emplace_back(symbol);
        }
    }
    return alike;
}

/// The names that a misspelt one may mean, as the library suggests them for an unknown name in an expression.
std::vector<std::wstring> nearestNames(const std::wstring& name)
{
    MathExpression object(true, nullptr);
    try
    {
        object.setExpression(name.c_str());
    }
    catch (const mathexpr::ParsingException&)
    {
        const std::vector<std::wstring> near = mathexpr::getDiagnostic(object).suggestions;
        return near.empty() ? namesThatBeginAlike(name) : near;
    }
    return {};
}

void complain(const std::string& name)
{
    const auto wide = toWide(name);
    if (!wide)
    {
        std::cerr << "mathexpr: --describe: not valid UTF-8\n";
        return;
    }
    const std::string suggestion = suggestionText(nearestNames(*wide));
    std::cerr << "mathexpr: no such item: " << name << (suggestion.empty() ? "" : ". ") << suggestion << '\n';
}

}

void listVocabulary(bool json)
{
    const std::vector<mathexpr::VocabularyItem>& items = vocabularyItems();
    if (json)
    {
        Json list = Json::array();
        std::transform(items.begin(), items.end(), std::back_inserter(list), itemJson);
        std::cout << list.dump() << '\n';
        return;
    }
    for (const FamilyName& family : familyNames())
    {
        std::cout << (family.family == familyNames().front().family ? "" : "\n");
        listFamily(family.family);
    }
}

void listFamily(mathexpr::VocabularyFamily family)
{
    std::cout << familyTitle(family) << '\n';
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        if (item.family == family)
        {
            std::cout << "  " << std::left << std::setw(18) << headOf(item) << "  " << tailOf(item) << '\n';
        }
    }
}

bool describeItems(const std::vector<std::string>& names, bool json)
{
    const std::vector<mathexpr::VocabularyItem>& items = vocabularyItems();
    bool allKnown = true;
    for (std::size_t index = 0; index < names.size(); ++index)
    {
        std::vector<mathexpr::VocabularyItem> found;
        std::copy_if(items.begin(), items.end(), std::back_inserter(found),
                     [&](const mathexpr::VocabularyItem& item) { return toUtf8(item.symbol) == names[index]; });
        if (json)
        {
            Json list = Json::array();
            std::transform(found.begin(), found.end(), std::back_inserter(list), descriptionJson);
            std::cout << list.dump() << '\n';
        }
        else
        {
            for (const mathexpr::VocabularyItem& item : found)
            {
                std::cout << (index == 0 && &item == &found.front() ? "" : "\n");
                printDescription(item);
            }
        }
        std::cout.flush();
        if (found.empty())
        {
            complain(names[index]);
            allKnown = false;
        }
    }
    return allKnown;
}
