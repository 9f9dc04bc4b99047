// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionGenerator.cpp - a small grammar, a list of unusual texts, mutations, and scripts composed of them.
#include "ExpressionGenerator.h"

#include "ReferenceVocabulary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace reference {
namespace {

using Texts = std::vector<std::wstring>;

const Texts literals = {L"0",          L"1",     L"2",          L"3",          L"4",          L"5",           L"7",
                        L"10",         L"12",    L"30",         L"45",         L"90",         L"100",         L"180",
                        L"0.5",        L"2.5",   L".25",        L"3.",         L"0.1",        L"1.75",        L"0.001",
                        L"999999.999", L"00012", L"2147483647", L"2147483648", L"4294967296", L"2147483648.0"};

const Texts oddLiterals = {L".",
                           L"1.5e3",
                           L"1.5e-3",
                           L"1E+5",
                           L"2pi",
                           L"1.2.3",
                           L"1e+",
                           L"0.0000000000000000000000001",
                           L"123456789012345678901234567890.",
                           L"9007199254740993.0",
                           L"17976931348623157000000000000000.5"};

// Known to every host. v0 to v9 have values that depend on the script.
const Texts numberNames = {L"x", L"y", L"zero", L"v0", L"v1", L"v2", L"v3", L"v4", L"fx", L"fzero", L"odd"};
const Texts pointNames = {L"p", L"q", L"origin", L"v5", L"v6", L"v7", L"v8", L"v9", L"fp"};
const Texts specialNames = {L"nan", L"inf", L"ninf", L"mzero", L"huge", L"tiny", L"np", L"blank"};
const Texts oddNames = {L"unk",  L"X",      L"P", L"a.b",  L"..", L"throws", L"Pi",
                        L"cube", L"e",      L"E", L"pi",   L"PI", L"sin",    L"point",
                        L"ee",   L"\u00e9", L"A", L"m2cm", L"1a", L"a\tb",   L"\u00c9"};
const Texts targets = {L"a",  L"b",   L"c",  L"A",  L"x", L"X",   L"p", L"v0",
                       L"v5", L"sin", L"pI", L"pi", L"1", L"a.b", L"",  L"."};

const Texts binaryNumberOperators = {L"+",  L"-",  L"*",  L"/", L"^", L"%", L">", L"<", L">=",
                                     L"<=", L"!=", L"==", L"&", L"|", L"+", L"-", L"*", L"/"};

const Texts oddities = {L"unk)(1)",
                        L"1+unk=2",
                        L"1/0+unk",
                        L"1/0)",
                        L"1/0",
                        L"1/0*",
                        L"1/0,)",
                        L"2()",
                        L"foo()",
                        L"sin()",
                        L"sqrt((1,0))",
                        L"min(1,(2+3,4))",
                        L"sin(1,2)+unk",
                        L"[1](2)",
                        L"[1][2]",
                        L"[]",
                        L"!=",
                        L"*",
                        L"2^!3",
                        L"1+!3",
                        L"!2*3",
                        L"min((1),(,2))",
                        L"sin(2)+(3,4)",
                        L"-(1,2)",
                        L"x+(y,2)",
                        L"1e+-2",
                        L"(1)x=+2",
                        L"=5",
                        L"(1/zero,2)",
                        L"(1/zero,y)",
                        L"cube+1",
                        L"1E+5",
                        L"X=9",
                        L"pI=3",
                        L"sin=3",
                        L"sin+sin(30)",
                        L"..",
                        L"1.5e+3",
                        L"-2147483648",
                        L"x=x*p",
                        L"-m2cm(2)&m2cm(3)",
                        L"round(0.49999999999999994)",
                        L"exp10(x)",
                        L"2*!3",
                        L"1+2*!3",
                        L"sin((1))",
                        L"(1+2,3)",
                        L"2*(1,2)",
                        L"(1,2)",
                        L"a=b=2",
                        L"pi=3",
                        L"(x+1,y)",
                        L"--1",
                        L"-2^2",
                        L"2^-2",
                        L"2--2",
                        L"2-3-4",
                        L"!!0",
                        L"-!-x",
                        L"(x,y,p,3)",
                        L"((((1))))",
                        L"sin(((x)))",
                        L"min(x,(y),((2)),3)",
                        L"max(1,[7,0,0])",
                        L"1,2",
                        L"(1)(2)",
                        L"x=",
                        L"=",
                        L"",
                        L"e",
                        L"e+1",
                        L"2*e+1",
                        L"rand(0,1)",
                        L"rand()",
                        L"point()",
                        L"[1,2,3,4]",
                        L"point(,1)",
                        L"sin(,1)",
                        L"min(,,)",
                        L"(,x)",
                        L"x(1)",
                        L"2(3)",
                        L"sin 30",
                        L"sin",
                        L"f2f(x)+f2f(3)",
                        L"ill(p,q,[x,y],[1,2])",
                        L"0^-1",
                        L"5%0",
                        L"(-8)^(1/3)",
                        L"3==3==1",
                        L"1<2<3",
                        L"1|0&1",
                        L"fact(x)",
                        L"q*p+p*q",
                        L"(p&q)*p",
                        L"-p",
                        L"!p",
                        L"p^2",
                        L"2^p",
                        L"p/x",
                        L"x/p",
                        L"p+x",
                        L"p==q",
                        L"p>x"};

const Texts soupTokens = {L"+",    L"-",    L"*",       L"/",     L"^",     L"%",     L">",    L"<",   L">=",
                          L"<=",   L"!=",   L"==",      L"&",     L"|",     L"!",     L"(",    L"(",   L"(",
                          L")",    L")",    L")",       L",",     L",",     L"[",     L"]",    L"=",   L"e+",
                          L"sin(", L"min(", L"point(",  L"rand(", L"dist(", L"x",     L"p",    L"1",   L"2",
                          L"0",    L"x",    L"y",       L" ",     L".",     L"unk",   L"e",    L"3.5", L"sin",
                          L"(1)",  L"(x)",  L"[1,2,3]", L"\t",    L"pi",    L"m2cm(", L"sum(", L"a="};

const std::wstring mutationCharacters = L"+-*/^%<>=!&|()[],.e 01239xyp\u00e9";

// Concatenates parts. Elements of a braced list are evaluated from left to right. The order of the operands of "+" is
// unspecified, so with "+" the texts would depend on the compiler.
std::wstring joined(std::initializer_list<std::wstring> parts)
{
    std::wstring text;
    for (const std::wstring& part : parts)
    {
        text += part;
    }
    return text;
}

bool isNameCharacter(wchar_t ch)
{
    return std::wstring(L"+-*/^%<>=!&|()[], ").find(ch) == std::wstring::npos;
}

bool isNumberCharacter(wchar_t ch)
{
    return (ch >= L'0' && ch <= L'9') || ch == L'.';
}

VALTYPE numberValue(double x, std::uint8_t flag = 0)
{
    VALTYPE value;
    value.flag = flag;
    value.x = x;
    return value;
}

VALTYPE pointValue(double x, double y, double z, std::uint8_t flag = 0)
{
    VALTYPE value = numberValue(x, flag);
    value.type = 1;
    value.y = y;
    value.z = z;
    return value;
}

std::map<std::wstring, VALTYPE> commonNames()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    VALTYPE odd = pointValue(6.5, 7.0, 8.0);  // a number with stale coordinates
    odd.type = 0;
    return {{L"x", numberValue(2.5)},
            {L"y", numberValue(-3.0)},
            {L"zero", numberValue(0.0)},
            {L"p", pointValue(1.0, 2.0, 3.0)},
            {L"q", pointValue(4.0, 5.0, 6.0)},
            {L"origin", pointValue(0.0, 0.0, 0.0)},
            {L"fx", numberValue(7.0, 1)},
            {L"fzero", numberValue(0.0, 1)},
            {L"fp", pointValue(-1.0, 0.5, 2.0, 1)},
            {L"odd", odd},
            {L"nan", numberValue(nan)},
            {L"inf", numberValue(infinity)},
            {L"ninf", numberValue(-infinity)},
            {L"mzero", numberValue(-0.0)},
            {L"huge", numberValue(1.7e308)},
            {L"tiny", numberValue(5e-324)},
            {L"np", pointValue(nan, infinity, -0.0)},
            {L"blank", numberValue(0.0)},
            {L"1E", numberValue(17.0)},
            {L"a.b", numberValue(1.0)},
            {L"..", numberValue(1.0)}};
}
}

std::wstring ExpressionGenerator::any()
{
    const std::size_t kind = random.below(100);
    if (kind < 45)
    {
        return assigned(wellFormed());
    }
    if (kind < 70)
    {
        return mutated(assigned(wellFormed()));
    }
    if (kind < 85)
    {
        return soup();
    }
    if (kind < 90)
    {
        return random.pick(oddities);
    }
    return mutated(random.pick(oddities));
}

std::wstring ExpressionGenerator::wellFormed()
{
    if (random.below(300) == 0)
    {
        return longText();
    }
    const std::size_t depth = random.chance(4) ? 7 : 1 + random.below(4);
    return operand(depth, random.chance(35));
}

// Many consecutive terms, or many nested levels of one kind.
std::wstring ExpressionGenerator::longText()
{
    static const Texts openings = {L"(", L"-", L"!", L"sqr(", L"abs(", L"-(", L"sum(1,", L"(,"};
    const std::size_t count = 20 + random.below(100);
    std::wstring text;
    if (random.chance(50))
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            text += joined({number(0), random.pick(binaryNumberOperators)});
        }
        return text + number(0);
    }
    const std::wstring opening = random.pick(openings);
    for (std::size_t i = 0; i < count; ++i)
    {
        text += opening;
    }
    text += number(0);
    return opening.find(L'(') == std::wstring::npos ? text : text + std::wstring(count, L')');
}

std::wstring ExpressionGenerator::operand(std::size_t depth, bool wantsPoint)
{
    const bool mistaken = random.chance(3);
    std::wstring text = wantsPoint != mistaken ? point(depth) : number(depth);
    if (random.chance(5))
    {
        text.insert(random.below(text.size() + 1), L" ");
    }
    return text;
}

std::wstring ExpressionGenerator::literal()
{
    if (random.chance(4))
    {
        return random.pick(oddLiterals);
    }
    if (random.chance(8))
    {
        return joined({random.pick(literals), L"e+", random.chance(30) ? L"-" : L"", std::to_wstring(random.below(5))});
    }
    return random.chance(50) ? std::to_wstring(random.below(10)) : random.pick(literals);
}

std::wstring ExpressionGenerator::name(bool wantsPoint)
{
    const std::size_t kind = random.below(100);
    if (kind < 3)
    {
        return random.pick(oddNames);
    }
    if (kind < 9)
    {
        return random.pick(specialNames);
    }
    if (kind < 18)
    {
        return random.pick(targets);
    }
    return random.pick(wantsPoint ? pointNames : numberNames);
}

std::wstring ExpressionGenerator::number(std::size_t depth)
{
    if (depth == 0)
    {
        return random.chance(55) ? literal() : name(false);
    }
    const std::size_t kind = random.below(100);
    if (kind < 10)
    {
        return number(0);
    }
    if (kind < 45)
    {
        return joined({operand(depth - 1, false), random.pick(binaryNumberOperators), operand(depth - 1, false)});
    }
    if (kind < 55)
    {
        return joined({random.chance(70) ? L"-" : L"!", operand(depth - 1, false)});
    }
    if (kind < 63)
    {
        return L"(" + operand(depth - 1, false) + L")";
    }
    if (kind < 66)
    {
        return brackets(depth);
    }
    if (kind < 72)
    {
        return joined({operand(depth - 1, true), random.chance(80) ? L"*" : L"==", operand(depth - 1, true)});
    }
    if (kind < 76)
    {
        return joined({random.chance(50) ? L"abs(" : L"dist(origin,", operand(depth - 1, true), L")"});
    }
    return numberCall(depth);
}

// Brackets that contain more than one value: extra arguments, leading separators, nesting.
std::wstring ExpressionGenerator::brackets(std::size_t depth)
{
    std::wstring text = random.chance(20) ? L"(," : L"(";
    const std::size_t count = 1 + random.below(3);
    for (std::size_t i = 0; i < count; ++i)
    {
        const bool wantsPoint = random.chance(20);
        text += (i == 0 ? L"" : L",") + operand(depth - 1, wantsPoint);
    }
    text += L")";
    return random.chance(40) ? L"(" + text + L")" : text;
}

std::wstring ExpressionGenerator::call(const std::wstring& function, std::size_t nbArgs, std::size_t depth,
                                       bool wantsPoints)
{
    std::wstring text = function + L"(";
    const std::size_t count = random.chance(3) ? random.below(5) : nbArgs;
    for (std::size_t i = 0; i < count; ++i)
    {
        text += (i == 0 ? L"" : L",") + operand(depth - 1, wantsPoints);
    }
    return text + L")";
}

std::wstring ExpressionGenerator::numberCall(std::size_t depth)
{
    if (random.chance(8))
    {
        return call(L"dist", 2, depth, true);
    }
    const Item* item = &random.pick(functions());
    if (random.chance(40))
    {
        // The core functions, first in the list, are chosen as often as the many conversions.
        item = &functions()[random.below(34)];
    }
    const bool any = item->nbArgs == anyNumberOfArguments;
    return call(item->symbol, any ? 1 + random.below(5) : item->nbArgs, depth, false);
}

std::wstring ExpressionGenerator::point(std::size_t depth)
{
    if (depth == 0)
    {
        if (random.chance(50))
        {
            return name(true);
        }
        return joined({L"[", std::to_wstring(random.below(5)), L",", std::to_wstring(random.below(5)), L",",
                       std::to_wstring(random.below(5)), L"]"});
    }
    const std::size_t kind = random.below(100);
    if (kind < 10)
    {
        return point(0);
    }
    if (kind < 25)
    {
        std::wstring text = L"[" + operand(depth - 1, false);
        const std::size_t count = random.chance(80) ? 2 : random.below(4);
        for (std::size_t i = 0; i < count; ++i)
        {
            text += L"," + operand(depth - 1, false);
        }
        return text + L"]";
    }
    if (kind < 45)
    {
        static const Texts operators = {L"+", L"-", L"&"};
        return joined({operand(depth - 1, true), random.pick(operators), operand(depth - 1, true)});
    }
    if (kind < 60)
    {
        if (random.chance(50))
        {
            return joined({operand(depth - 1, true), random.chance(50) ? L"*" : L"/", operand(depth - 1, false)});
        }
        return joined({operand(depth - 1, false), L"*", operand(depth - 1, true)});
    }
    if (kind < 66)
    {
        return L"-" + operand(depth - 1, true);
    }
    if (kind < 72)
    {
        return L"(" + operand(depth - 1, true) + L")";
    }
    return pointCall(depth);
}

std::wstring ExpressionGenerator::pointCall(std::size_t depth)
{
    static const Texts twoPoints = {L"vec", L"vec1", L"nor"};
    const std::size_t kind = random.below(100);
    if (kind < 50)
    {
        return call(random.pick(twoPoints), 2, depth, true);
    }
    return kind < 85 ? call(L"ill", 4, depth, true) : call(L"point", 1 + random.below(4), depth, false);
}

std::wstring ExpressionGenerator::assigned(const std::wstring& text)
{
    if (!random.chance(18))
    {
        return text;
    }
    return joined({random.pick(targets), L"=", text});
}

std::wstring ExpressionGenerator::soup()
{
    std::wstring text;
    const std::size_t count = 1 + random.below(12);
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::size_t kind = random.below(10);
        text += kind == 0 ? literal() : kind == 1 ? name(random.chance(30)) : random.pick(soupTokens);
    }
    return text;
}

std::wstring ExpressionGenerator::mutated(std::wstring text)
{
    const std::size_t edits = 1 + random.below(3);
    for (std::size_t i = 0; i < edits; ++i)
    {
        const std::size_t at = random.below(text.size() + 1);
        const bool inside = at < text.size();
        switch (random.below(5))
        {
        case 0:
            text.erase(at, 1 + random.below(2));
            break;
        case 1:
            text.insert(at, 1, random.pick(mutationCharacters));
            break;
        case 2:
            if (inside)
            {
                text[at] = random.pick(mutationCharacters);
            }
            break;
        case 3:
            if (inside)
            {
                std::swap(text[at], text[random.below(text.size())]);
            }
            break;
        default: {
            const std::size_t from = random.below(text.size() + 1);
            text.insert(at, text.substr(from, 1 + random.below(6)));
            break;
        }
        }
    }
    return text;
}

double ExpressionGenerator::special()
{
    static const std::array<double, 16> values = {0.0,
                                                  -0.0,
                                                  std::numeric_limits<double>::quiet_NaN(),
                                                  std::numeric_limits<double>::infinity(),
                                                  -std::numeric_limits<double>::infinity(),
                                                  1.7976931348623157e308,
                                                  5e-324,
                                                  2147483647.0,
                                                  -2147483648.0,
                                                  2147483647.5,
                                                  -2147483648.5,
                                                  0.49999999999999994,
                                                  1e-11,
                                                  -1e-11,
                                                  1e30,
                                                  3.14159265359};
    return random.pick(values);
}

VALTYPE ExpressionGenerator::value()
{
    const auto coordinate = [this] {
        const std::size_t kind = random.below(100);
        if (kind < 12)
        {
            return special();
        }
        const double whole = static_cast<double>(random.below(13)) - 6.0;
        return kind < 75 ? whole : whole + static_cast<double>(random.below(1000000)) / 999983.0;
    };
    VALTYPE made = pointValue(coordinate(), 0.0, 0.0);
    made.flag = random.chance(25) ? 1 : 0;
    if (random.chance(50))
    {
        made.type = 0;
    }
    if (made.type == 1 || random.chance(10))
    {
        made.y = coordinate();
        made.z = coordinate();
    }
    return made;
}

Script makeScript(std::uint64_t seed, std::size_t nbExpressions)
{
    Random random(seed);
    ExpressionGenerator generator(random);
    Script script;
    script.seed = seed;
    script.known = commonNames();
    for (wchar_t digit = L'0'; digit <= L'9'; ++digit)
    {
        VALTYPE value = generator.value();
        if (random.chance(80))
        {
            value.type = digit < L'5' ? 0 : 1;
        }
        script.known[std::wstring(L"v") + digit] = value;
    }

    const auto changeSomeVariables = [&] {
        const std::size_t count = 1 + random.below(6);
        for (std::size_t i = 0; i < count; ++i)
        {
            const std::size_t list = random.below(3);
            const Texts& names = list == 0 ? numberNames : list == 1 ? pointNames : targets;
            script.steps.push_back({Step::Kind::ChangeVariable, random.pick(names), generator.value()});
        }
    };
    for (std::size_t i = 0; i < nbExpressions; ++i)
    {
        script.steps.push_back({Step::Kind::SetExpression, generator.any(), {}});
        script.steps.push_back({Step::Kind::Evaluate, {}, {}});
        const std::size_t repetitions = random.below(3);
        const bool changing = random.chance(60);
        for (std::size_t repetition = 0; repetition < repetitions; ++repetition)
        {
            if (changing)
            {
                changeSomeVariables();
            }
            script.steps.push_back({Step::Kind::Evaluate, {}, {}});
        }
        if (random.chance(30))
        {
            script.steps.push_back({Step::Kind::DropAssignment, {}, {}});
        }
    }
    return script;
}

Script withHiddenNumbers(Script script)
{
    for (Step& step : script.steps)
    {
        if (step.kind != Step::Kind::SetExpression)
        {
            continue;
        }
        std::wstring hidden;
        const std::wstring& text = step.text;
        std::size_t i = 0;
        while (i < text.size())
        {
            std::size_t end = i;
            while (end < text.size() && isNumberCharacter(text[end]))
            {
                ++end;
            }
            const bool begins = i == 0 || !isNameCharacter(text[i - 1]);
            const bool ends = end == text.size() || !isNameCharacter(text[end]) || text.compare(end, 2, L"e+") == 0;
            if (end > i && begins && ends)
            {
                std::wstring name = L"h" + text.substr(i, end - i);
                std::replace(name.begin(), name.end(), L'.', L'_');
                hidden += name;
            }
            else
            {
                end = std::max(end, i + 1);
                hidden += text.substr(i, end - i);
            }
            i = end;
        }
        step.text = hidden;
    }
    return script;
}

bool hiddenNumber(const std::wstring& name, VALTYPE& value)
{
    if (name.size() < 2 || name[0] != L'h' || name.find_first_not_of(L"0123456789_", 1) != std::wstring::npos)
    {
        return false;
    }
    double fraction = 0.0;
    double scale = 1.0;
    for (const wchar_t ch : name.substr(1))
    {
        if (ch == L'_')
        {
            fraction = 10.0;
            continue;
        }
        const double digit = static_cast<double>(ch - L'0');
        value.x = value.x * 10.0 + digit;
        scale *= fraction == 0.0 ? 1.0 : 10.0;
    }
    value.x /= scale;
    return true;
}
}
