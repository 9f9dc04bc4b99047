// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// linked_host.cpp - a host that is linked with the library, and supplies names of its drawing.
//
//     linked_host EXPRESSION

#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cstdio>
#include <string>

namespace {

/// A drawing with one length and one point.
class Drawing : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        const std::wstring asked = name;
        if (asked == L"width")
        {
            value.x = 2.5;
            return true;
        }
        if (asked == L"corner")
        {
            value.type = 1;
            value.x = 1;
            value.y = 2;
            value.z = 3;
            return true;
        }
        return false;
    }
};

}

int wmain(int count, wchar_t** arguments)
{
    if (count != 2)
    {
        std::printf("linked_host EXPRESSION\n");
        return 2;
    }
    const Drawing drawing;
    MathExpression expression(false, &drawing);  // errors are shown in message boxes
    VALTYPE result;
    try
    {
        if (!expression.setExpression(arguments[1]) || !expression.evaluate(result))
        {
            return 1;
        }
    }
    catch (const mathexpr::ParsingException& exception)
    {
        std::printf("not computed: code %u\n", exception.entries.front().data.exID);
        return 1;
    }
    if (result.type == 0)
    {
        std::printf("%.17g\n", result.x);
    }
    else
    {
        std::printf("[%.17g,%.17g,%.17g]\n", result.x, result.y, result.z);
    }
    return 0;
}
