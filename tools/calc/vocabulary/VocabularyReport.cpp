// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyReport.cpp - prints the exported vocabulary and evaluates the notes' expressions.
#include "tools/calc/vocabulary/VocabularyReport.h"

#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Vocabulary.h"
#include "tools/calc/terminal/Pager.h"
#include "tools/calc/terminal/Terminal.h"
#include "tools/calc/text/DisplayWidth.h"
#include "tools/calc/text/Displayable.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/text/ValueText.h"
#include "tools/calc/text/Wrapped.h"
#include "tools/calc/vocabulary/ItemNotes.h"
#include "tools/calc/vocabulary/UnitNames.h"
#include "tools/calc/vocabulary/VocabularyItems.h"
#include "tools/calc/vocabulary/VocabularySearch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>
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

/// The item as a person would write it.
std::string headOf(const mathexpr::VocabularyItem& item)
{
    return item.kind == mathexpr::VocabularyKind::Constant ? toUtf8(item.symbol) : toUtf8(item.help);
}

std::string tailOf(const mathexpr::VocabularyItem& item)
{
    return item.kind == mathexpr::VocabularyKind::Constant ? numberText(item.value) : toUtf8(item.description);
}

/// An expression and its outcome, described in the same way for both modes of the library.
struct Computed
{
    std::string expression;
    std::string outcome;  ///< The value, "message 10" or "exception 15".
    std::string reason;   ///< Why it fails, in the user's language; empty on success.
};

/// @param digits  of the value
Computed compute(const std::string& expression, std::uint32_t digits)
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
        // The diagnostic has more details.
    }
    if (done)
    {
        computed.outcome = valueText(value, digits);
        return computed;
    }
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(object);
    if (diagnostic.code == mathexpr::ParsingError::ArgumentKind &&
        diagnostic.kind == mathexpr::ExpressionDiagnostic::Kind::Parsing)
    {
        computed.outcome = "exception 15";
        computed.reason = toUtf8(diagnostic.hints.front());
    }
    else
    {
        computed.outcome = "message " + std::to_string(diagnostic.message);
        computed.reason = toUtf8(diagnostic.text);
    }
    return computed;
}

std::vector<Computed> computeAll(const std::vector<std::string>& expressions, std::uint32_t digits)
{
    std::vector<Computed> computed;
    std::transform(expressions.begin(), expressions.end(), std::back_inserter(computed),
                   [digits](const std::string& expression) { return compute(expression, digits); });
    return computed;
}

Json computedJson(const std::vector<std::string>& expressions)
{
    Json list = Json::array();
    for (const Computed& computed : computeAll(expressions, exactDigits))
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
    for (const Computed& computed : computeAll(expressions, usualDigits))
    {
        printLine(title, computed.expression + (computed.reason.empty() ? " = " + computed.outcome : ""));
        printLine("", computed.reason);
    }
}

void printDescription(const mathexpr::VocabularyItem& item)
{
    const ItemNotes notes = notesOf(item);
    std::cout << headOf(item) << '\n';
    if (conversionOf(item))
    {
        printLine("", notes.units);
        printLine("Described", tailOf(item));
    }
    else
    {
        printLine("", tailOf(item));
    }
    printLine("Family", std::string(familyTitle(item.family)));
    if (item.kind == mathexpr::VocabularyKind::Operator)
    {
        printLine("Binds", std::to_string(item.precedence) + " (0 loosest, 4 tightest)");
    }
    printLine("Units", conversionOf(item) ? std::string() : notes.units);
    printLine("Accepts", notes.domain);
    printComputed("Example", notes.examples);
    printComputed("Refusal", notes.refused);
    printComputed("Points", notes.points);
}

/// Up to three names that share the longest prefix with a name, in the order of the vocabulary.
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

/// The names that the library suggests if an expression contains this unknown name.
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

/// "a, b or c"
std::string alternatives(const std::vector<std::wstring>& names)
{
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index)
    {
        text += index == 0 ? "" : index + 1 == names.size() ? " or " : ", ";
        text += toUtf8(names[index]);
    }
    return text;
}

void complain(const std::string& name)
{
    const auto wide = toWide(name);
    if (!wide)
    {
        std::cerr << "mathexpr: --describe: not valid UTF-8\n";
        return;
    }
    const std::vector<std::wstring> near = nearestNames(*wide);
    std::cerr << "mathexpr: no such item: " << displayable(name);
    if (!near.empty())
    {
        std::cerr << ". Did you mean " << alternatives(near) << '?';
    }
    std::cerr << '\n';
}

/// The terminal's width; in a pipe, lines are not wrapped.
std::size_t lineWidth()
{
    return standardOutputIsTerminal() ? terminalColumns() : std::string::npos;
}

/// A line of a list: columns followed by a text, whose further lines are indented below it. On a narrow terminal the
/// whole text is below the columns.
std::string listLine(const std::string& columns, std::string_view text)
{
    constexpr std::size_t least = 20;  // for the text
    constexpr std::size_t indentation = 6;
    const std::size_t width = lineWidth();
    const std::size_t taken = displayWidth(columns);
    if (taken + least > width)
    {
        return columns.substr(0, columns.find_last_not_of(' ') + 1) + '\n' + std::string(indentation, ' ') +
               wrapped(text, indentation, indentation, width) + '\n';
    }
    return columns + wrapped(text, taken, taken, width) + '\n';
}

/// Items as lines of a list. A conversion's units precede its description, because some descriptions are fixed and name
/// other units.
std::string listLines(const std::vector<mathexpr::VocabularyItem>& items)
{
    std::size_t unitsWidth = 0;
    bool isMixed = false;
    for (const mathexpr::VocabularyItem& item : items)
    {
        const auto conversion = conversionOf(item);
        unitsWidth = std::max(unitsWidth, conversion ? conversionText(*conversion).size() : 0);
        isMixed = isMixed || !conversion;
    }
    std::string lines;
    for (const mathexpr::VocabularyItem& item : items)
    {
        const auto conversion = conversionOf(item);
        std::ostringstream columns;
        columns << "  " << std::left << std::setw(isMixed ? 18 : 12) << headOf(item) << "  ";
        if (conversion)
        {
            columns << std::setw(isMixed ? 0 : static_cast<int>(unitsWidth)) << conversionText(*conversion) << "  ";
        }
        const std::string tail = tailOf(item);
        lines +=
            listLine(columns.str(), std::string_view(tail).substr(std::min(tail.find_first_not_of(' '), tail.size())));
    }
    return lines;
}

std::string familyList(mathexpr::VocabularyFamily family)
{
    std::vector<mathexpr::VocabularyItem> items;
    std::ranges::copy_if(vocabularyItems(), std::back_inserter(items),
                         [family](const mathexpr::VocabularyItem& item) { return item.family == family; });
    return std::string(familyTitle(family)) + '\n' + listLines(items);
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
    std::string list;
    for (const FamilyName& family : familyNames())
    {
        list += (list.empty() ? "" : "\n") + familyList(family.family);
    }
    showPaged(list);
}

void listFamily(mathexpr::VocabularyFamily family)
{
    showPaged(familyList(family));
}

void listUnits()
{
    std::string list;
    for (const UnitName& unit : unitNames())
    {
        const bool isFirst = &unit == &unitNames().front() || (&unit - 1)->family != unit.family;
        list += isFirst ? (list.empty() ? "" : "\n") + std::string(familyTitle(unit.family)) + '\n' : "";
        std::ostringstream columns;
        columns << "  " << std::left << std::setw(6) << unit.symbol << std::setw(20) << unit.singular;
        std::string others;
        for (const std::string& other : unit.others)
        {
            others += (others.empty() ? "" : ", ") + other;
        }
        list += listLine(columns.str(), others);
    }
    showPaged(list);
}

bool findItems(const std::string& words)
{
    std::string list;
    for (const FoundGroup& group : searchVocabulary(words))
    {
        list += (list.empty() ? "" : "\n") + group.title + '\n' + listLines(group.items);
    }
    showPaged(list);
    return !list.empty();
}

bool isItem(const std::string& name)
{
    return std::ranges::any_of(vocabularyItems(),
                               [&](const mathexpr::VocabularyItem& item) { return toUtf8(item.symbol) == name; });
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
