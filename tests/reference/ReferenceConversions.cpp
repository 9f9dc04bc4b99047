// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceConversions.cpp - the unit conversions, computed by a small interpreter from formula texts, one double
// operation after the other.
#include "ReferenceVocabulary.h"

#include "ConversionFormulas.h"

#include <charconv>
#include <map>
#include <set>
#include <sstream>

namespace reference {
namespace {

struct Step
{
    std::string operation;
    double number;
};

struct Formula
{
    bool copied = false;
    std::uint8_t flag = 1;
    std::vector<Step> steps;
};

double toNumber(const std::string& digits)
{
    double value = 0.0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

Formula parse(const std::string& text)
{
    std::istringstream words(text);
    Formula formula;
    std::string word;
    words >> word;
    formula.copied = word == "copied";
    while (words >> word)
    {
        std::string operand;
        words >> operand;
        if (word == "flag")
        {
            formula.flag = 0;
        }
        else
        {
            formula.steps.push_back({word, toNumber(operand)});
        }
    }
    return formula;
}

bool convert(const Formula& formula, const VALTYPE& arg, VALTYPE& result)
{
    requireNumber(arg);
    if (formula.copied)
    {
        result = arg;
        return true;
    }
    double x = arg.x;
    for (const Step& step : formula.steps)
    {
        x = step.operation == "*" ? x * step.number : x / step.number;
    }
    result.type = 0;
    result.flag = formula.flag;
    result.reserved = 0;
    result.x = x;
    return true;
}

void addConversion(std::vector<Item>& list, const std::string& symbol, const std::string& text)
{
    list.push_back({std::wstring(symbol.begin(), symbol.end()), 1, 0, false, true,
                    [formula = parse(text)](const std::vector<VALTYPE>& args, VALTYPE& result, Messages&) {
                        return convert(formula, args[0], result);
                    }});
}

std::set<std::string> restOf(std::istringstream& words)
{
    std::set<std::string> rest;
    std::string word;
    while (words >> word)
    {
        rest.insert(word);
    }
    return rest;
}
}

void addConversions(std::vector<Item>& list)
{
    std::map<std::string, std::string> factors;
    std::set<std::string> copiedAngles;
    std::set<std::string> otherFunctions;
    std::istringstream lines(conversionFormulas);
    for (std::string line; std::getline(lines, line);)
    {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "factor")
        {
            std::string unit;
            words >> unit >> factors[unit];
        }
        else if (word == "copied-angles")
        {
            copiedAngles = restOf(words);
        }
        else if (word == "no-conversions")
        {
            otherFunctions = restOf(words);
        }
        else if (const std::size_t formula = line.find(" = "); formula != std::string::npos && word != "#")
        {
            addConversion(list, word, line.substr(formula + 3));
        }
    }
    for (const auto& [from, factor] : factors)
    {
        for (const auto& [to, divisor] : factors)
        {
            const std::string symbol = from + "2" + to;
            if (otherFunctions.count(symbol) == 0)
            {
                addConversion(list, symbol,
                              copiedAngles.count(symbol) != 0 ? "copied" : "x * " + factor + " / " + divisor);
            }
        }
    }
}
}
