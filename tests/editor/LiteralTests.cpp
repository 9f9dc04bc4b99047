// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LiteralTests.cpp - literal numbers and points.
#include "mathexpr/EditorServices.h"
#include "tests/editor/EditorTexts.h"
#include "tests/language/Values.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> literals(const wchar_t* text)
{
    const EditedExpression edited;
    std::vector<std::string> found;
    for (const mathexpr::TextLiteral& literal : mathexpr::getLiterals(edited.expression, text))
    {
        found.push_back(std::to_string(literal.span.start) + '+' + std::to_string(literal.span.length) + ' ' +
                        describe(literal.value));
    }
    return found;
}

std::string at(std::size_t start, std::size_t length, double x)
{
    VALTYPE value;
    value.x = x;
    return std::to_string(start) + '+' + std::to_string(length) + ' ' + describe(value);
}

std::string at(std::size_t start, std::size_t length, double x, double y, double z)
{
    VALTYPE value;
    value.type = 1;
    value.x = x;
    value.y = y;
    value.z = z;
    return std::to_string(start) + '+' + std::to_string(length) + ' ' + describe(value);
}

using Found = std::vector<std::string>;

TEST(Literals, AreNumbersWithTheirSigns)
{
    EXPECT_EQ(literals(L"1 0*-2.5-3"), (Found{at(0, 3, 10), at(4, 4, -2.5), at(9, 1, 3)}));
    EXPECT_EQ(literals(L"- 2^-3"), (Found{at(0, 3, -2), at(4, 2, -3)}));
    EXPECT_EQ(literals(L"a=-1+x2+pi"), (Found{at(2, 2, -1)}));
    EXPECT_EQ(literals(L"1.5e+3"), (Found{at(0, 3, 1.5), at(5, 1, 3)}));
    EXPECT_EQ(literals(nullptr), Found{});
}

TEST(Literals, ArePointsWithTheirCoordinates)
{
    EXPECT_EQ(literals(L"p+[1,-2, 3 ]"), (Found{at(2, 10, 1, -2, 3), at(3, 1, 1), at(5, 2, -2), at(9, 1, 3)}));
    EXPECT_EQ(literals(L"point(1)"), (Found{at(0, 8, 1, 0, 0), at(6, 1, 1)}));
    EXPECT_EQ(literals(L"[2e+3,2*10^-3]"),
              (Found{at(0, 14, 2000, 2e-3, 0), at(1, 1, 2), at(4, 1, 3), at(6, 1, 2), at(8, 2, 10), at(11, 2, -3)}));
    EXPECT_EQ(literals(L"[2*10^3,1]"),
              (Found{at(0, 10, 2000, 1, 0), at(1, 1, 2), at(3, 2, 10), at(6, 1, 3), at(8, 1, 1)}));
    // If a coordinate is not a number, the scan must not restart at the beginning of the text.
    EXPECT_EQ(literals(L"*10^2,3,[x,1]"), (Found{at(1, 2, 10), at(4, 1, 2), at(6, 1, 3), at(11, 1, 1)}));
    EXPECT_EQ(literals(L"e+2,3,[x,1]"), (Found{at(2, 1, 2), at(4, 1, 3), at(9, 1, 1)}));
    EXPECT_EQ(literals(L",[x,1]"), Found{at(4, 1, 1)});
    EXPECT_EQ(literals(L"5,[x,1]"), (Found{at(0, 1, 5), at(5, 1, 1)}));
}

TEST(Literals, AreNoPointsThatAreComputed)
{
    EXPECT_EQ(literals(L"[x,2]"), (Found{at(3, 1, 2)}));
    EXPECT_EQ(literals(L"[1+2]"), (Found{at(1, 1, 1), at(3, 1, 2)}));
    EXPECT_EQ(literals(L"[1*2]"), (Found{at(1, 1, 1), at(3, 1, 2)}));
    EXPECT_EQ(literals(L"[1*10]"), (Found{at(1, 1, 1), at(3, 2, 10)}));
    EXPECT_EQ(literals(L"[1*10^x]"), (Found{at(1, 1, 1), at(3, 2, 10)}));
    EXPECT_EQ(literals(L"[1e+x]"), (Found{at(1, 1, 1)}));
    EXPECT_EQ(literals(L"[1,2,3,4]"), (Found{at(1, 1, 1), at(3, 1, 2), at(5, 1, 3), at(7, 1, 4)}));
    EXPECT_EQ(literals(L"[1,2"), (Found{at(1, 1, 1), at(3, 1, 2)}));
    EXPECT_EQ(literals(L"[-"), Found{});
    EXPECT_EQ(literals(L"[1*"), Found{at(1, 1, 1)});
    EXPECT_EQ(literals(L"[-]+[]"), Found{});
    EXPECT_EQ(literals(L"point"), Found{});
    EXPECT_EQ(literals(L"[2147483648]"), Found{at(1, 10, 2147483648.0)});  // no text accepts it
}

TEST(Literals, HaveTheValueOfTheirText)
{
    const MessageRecorder shown;
    std::size_t count = 0;
    forEachBeginning([&](const TypedText& typed) {
        EditedExpression edited;
        for (const mathexpr::TextLiteral& literal : mathexpr::getLiterals(edited.expression, typed.text.c_str()))
        {
            VALTYPE value;
            if (edited.compiles(typed.text.substr(literal.span.start, literal.span.length)))
            {
                ++count;
                ASSERT_TRUE(edited.expression.evaluate(value));
                EXPECT_EQ(describe(value), describe(literal.value)) << typed.where;
            }
        }
    });
    EXPECT_GT(count, 9000U);
    EXPECT_TRUE(shown.ids.empty() || shown.ids.front() == 19);
}

}
