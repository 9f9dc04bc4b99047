// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SignatureTests.cpp - the call at the cursor.
#include "tools/calc/PromptSignature.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// With the current parameter between < and >.
std::string shown(const std::string& text)
{
    const auto signature = signatureAt(text);
    return signature ? signature->before + '<' + signature->current + '>' + signature->after : "none";
}

}

TEST(Signature, NamesTheParametersAndMarksTheCurrentOne)
{
    EXPECT_EQ(shown("sin("), "sin(<x>)");
    EXPECT_EQ(shown("1+dist("), "dist(<point x>, point y)");
    EXPECT_EQ(shown("dist(p,"), "dist(point x, <point y>)");
    EXPECT_EQ(shown("ill(a, b, c"), "ill(point x, point y, <point z>, point w)");
    EXPECT_EQ(shown("m2cm (2"), "m2cm(<x>)");
}

TEST(Signature, IsThatOfTheInnermostCall)
{
    EXPECT_EQ(shown("dist([1,2"), "[x, <y>, z]");
    EXPECT_EQ(shown("dist([1,2],"), "dist(point x, <point y>)");
    EXPECT_EQ(shown("dist([1,2],point(sin(3),"), "point(x, <y>, z)");
    EXPECT_EQ(shown("pow((1+2"), "pow(<x>, y)");
    EXPECT_EQ(shown("pow((1+2),"), "pow(x, <y>)");
    EXPECT_EQ(shown("pow((1+2],("), "pow(x, <y>)");
}

TEST(Signature, IsThatOfTheOverloadThatHasTheArgument)
{
    EXPECT_EQ(shown("rand("), "rand(<min>, max)");
    EXPECT_EQ(shown("min(1,"), "min(x, <y>)");
    EXPECT_EQ(shown("min(1,2,"), "min(x, y, <z>)");
    EXPECT_EQ(shown("min(1,2,3,"), "min(v1, v2, v3, <...>)");
    EXPECT_EQ(shown("min(1,2,3,4,5,"), "min(v1, v2, v3, <...>)");
}

TEST(Signature, MarksNothingWhereThereAreTooManyArguments)
{
    EXPECT_EQ(shown("sin(1,"), "sin(x)<>");
    EXPECT_EQ(shown("[1,2,3,"), "[x, y, z]<>");
}

TEST(Signature, IsNotThereOutsideOfCalls)
{
    for (const char* text : {"", "sin", "sin(30)", "(1+2", "nonsense(1", "SIN(", ")", "2(", "[1,2]"})
    {
        EXPECT_EQ(shown(text), "none") << text;
    }
}
