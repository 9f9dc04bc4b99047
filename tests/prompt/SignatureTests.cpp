// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SignatureTests.cpp - the call at the cursor.
#include "tools/calc/prompt/PromptSignature.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

struct Call
{
    const char* typed;
    const char* shown;  // with the current parameter between < and >; "none" outside calls
};

void PrintTo(const Call& call, std::ostream* out)
{
    *out << call.typed;
}

constexpr Call calls[] = {
    {"sin(", "sin(<x>)"},
    {"1+dist(", "dist(<point x>, point y)"},
    {"dist(p,", "dist(point x, <point y>)"},
    {"ill(a, b, c", "ill(point x, point y, <point z>, point w)"},
    {"m2cm (2", "m2cm(<x>)"},
    // The innermost call counts:
    {"dist([1,2", "[x, <y>, z]"},
    {"dist([1,2],", "dist(point x, <point y>)"},
    {"dist([1,2],point(sin(3),", "point(x, <y>, z)"},
    {"pow((1+2", "pow(<x>, y)"},
    {"pow((1+2),", "pow(x, <y>)"},
    {"pow((1+2],(", "pow(x, <y>)"},
    {"sin(nonsense(1", "sin(<x>)"},
    // and the overload that has the argument:
    {"rand(", "rand(<min>, max)"},
    {"min(1,", "min(x, <y>)"},
    {"min(1,2,", "min(x, y, <z>)"},
    {"min(1,2,3,", "min(v1, v2, v3, <...>)"},
    {"min(1,2,3,4,5,", "min(v1, v2, v3, <...>)"},
    // There may be too many arguments:
    {"sin(1,", "sin(x)<>"},
    {"[1,2,3,", "[x, y, z]<>"},
    // Nothing is called:
    {"", "none"},
    {"sin", "none"},
    {"sin(30)", "none"},
    {"(1+2", "none"},
    {"nonsense(1", "none"},
    {"SIN(", "none"},
    {")", "none"},
    {"2(", "none"},
    {"[1,2]", "none"},
    {"sin(\xFF", "none"},  // ill-formed text
};

class SignatureAt : public testing::TestWithParam<Call>
{};

TEST_P(SignatureAt, NamesTheParametersAndMarksTheCurrentOne)
{
    const MathExpression expression(true, nullptr);
    const auto signature = signatureAt(expression, GetParam().typed);
    EXPECT_EQ(signature ? signature->before + '<' + signature->current + '>' + signature->after : "none",
              GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Typed, SignatureAt, testing::ValuesIn(calls));

}
