// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceOperators.cpp - the 16 operators. Each writes only the fields mentioned; the rest of the result is
// unchanged.
#include "ReferenceVocabulary.h"

#include <cmath>

namespace reference {
namespace {

using Args = std::vector<VALTYPE>;

bool isPoint(const VALTYPE& value)
{
    return value.type != 0;
}

void writePoint(VALTYPE& result, double x, double y, double z)
{
    result.type = 1;
    result.x = x;
    result.y = y;
    result.z = z;
}

bool add(const Args& args, VALTYPE& result, Messages& messages)
{
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    if (isPoint(a) != isPoint(b))
    {
        return messages.refuse(5);
    }
    if (isPoint(a))
    {
        writePoint(result, a.x + b.x, a.y + b.y, a.z + b.z);
    }
    else
    {
        result.x = a.x + b.x;
    }
    return true;
}

bool subtract(const Args& args, VALTYPE& result, Messages& messages)
{
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    if (isPoint(a) != isPoint(b))
    {
        return messages.refuse(5);
    }
    if (isPoint(a))
    {
        writePoint(result, a.x - b.x, a.y - b.y, a.z - b.z);
    }
    else
    {
        result.x = a.x - b.x;
    }
    return true;
}

bool negate(const Args& args, VALTYPE& result, Messages&)
{
    const VALTYPE& a = args[0];
    if (isPoint(a))
    {
        writePoint(result, -a.x, -a.y, -a.z);
    }
    else
    {
        result.x = -a.x;
    }
    return true;
}

bool multiply(const Args& args, VALTYPE& result, Messages&)
{
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    if (isPoint(a) && isPoint(b))
    {
        result.x = result.x + a.x * b.x;
        result.x = result.x + a.y * b.y;
        result.x = result.x + a.z * b.z;
    }
    else if (isPoint(a))
    {
        writePoint(result, a.x * b.x, a.y * b.x, a.z * b.x);
    }
    else if (isPoint(b))
    {
        writePoint(result, a.x * b.x, a.x * b.y, a.x * b.z);
    }
    else
    {
        result.x = a.x * b.x;
    }
    return true;
}

bool divide(const Args& args, VALTYPE& result, Messages& messages)
{
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    if (isPoint(b))
    {
        return messages.refuse(11);
    }
    if (b.x == 0.0)
    {
        return messages.refuse(10);
    }
    if (isPoint(a))
    {
        writePoint(result, a.x / b.x, a.y / b.x, a.z / b.x);
    }
    else
    {
        result.x = a.x / b.x;
    }
    return true;
}

bool power(const Args& args, VALTYPE& result, Messages& messages)
{
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    if (isPoint(a))
    {
        return messages.refuse(13);
    }
    result.x = a.x != 0.0 ? std::pow(a.x, b.x) : 0.0;
    return true;
}

bool remainder(const Args& args, VALTYPE& result, Messages&)
{
    result.x = std::fmod(args[0].x, args[1].x);
    return true;
}

bool greater(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[0].x > args[1].x ? 1.0 : 0.0;
    return true;
}

bool less(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[1].x > args[0].x ? 1.0 : 0.0;
    return true;
}

bool greaterOrEqual(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[0].x >= args[1].x ? 1.0 : 0.0;
    return true;
}

bool lessOrEqual(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[1].x >= args[0].x ? 1.0 : 0.0;
    return true;
}

bool notEqual(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[0].x == args[1].x ? 0.0 : 1.0;
    return true;
}

bool equal(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[0].x == args[1].x ? 1.0 : 0.0;
    return true;
}

// For two unflagged numbers, or for a point and a number, the result is unchanged.
bool logicalAnd(const Args& args, VALTYPE& result, Messages&)
{
    const VALTYPE& a = args[0];
    const VALTYPE& b = args[1];
    if (a.flag != 0 && b.flag != 0)
    {
        result.flag = 1;
        result.x = a.x != 0.0 && b.x != 0.0 ? 1.0 : 0.0;
    }
    else if (isPoint(a) && isPoint(b))
    {
        writePoint(result, a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }
    return true;
}

bool logicalOr(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[0].x == 0.0 && args[1].x == 0.0 ? 0.0 : 1.0;
    return true;
}

bool logicalNot(const Args& args, VALTYPE& result, Messages&)
{
    result.x = args[0].x == 0.0 ? 1.0 : 0.0;
    return true;
}
}

void addOperators(std::vector<Item>& list)
{
    // clang-format off
    //             symbol  operands  precedence  unary  folds
    list.push_back({L"+",  2,        1,          false, true, add});
    list.push_back({L"-",  2,        1,          false, true, subtract});
    list.push_back({L"*",  2,        2,          false, true, multiply});
    list.push_back({L"/",  2,        2,          false, true, divide});
    list.push_back({L"^",  2,        3,          false, true, power});
    list.push_back({L"-",  1,        4,          true,  true, negate});
    list.push_back({L"%",  2,        2,          false, true, remainder});
    list.push_back({L">",  2,        0,          false, true, greater});
    list.push_back({L"<",  2,        0,          false, true, less});
    list.push_back({L">=", 2,        0,          false, true, greaterOrEqual});
    list.push_back({L"<=", 2,        0,          false, true, lessOrEqual});
    list.push_back({L"!=", 2,        0,          false, true, notEqual});
    list.push_back({L"==", 2,        0,          false, true, equal});
    list.push_back({L"&",  2,        0,          false, true, logicalAnd});
    list.push_back({L"|",  2,        0,          false, true, logicalOr});
    list.push_back({L"!",  1,        2,          true,  true, logicalNot});
    // clang-format on
}
}
