// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostFailureTests.cpp - the contents of errors, and exceptions of the host's callables.
#include <mathexpr.hpp>

#include <gtest/gtest.h>

namespace {

using mathexpr::Error;
using mathexpr::Expression;
using mathexpr::Options;
using mathexpr::Value;

struct HostFailure
{
    int number;
};

Error errorOf(std::string_view text)
{
    const auto result = mathexpr::tryEvaluate(text);
    EXPECT_FALSE(result) << text;
    return result.error();
}

TEST(HostFailure, ReportsPositionAndReason)
{
    const Error error = errorOf("1 + sine(30)");
    EXPECT_EQ(error.status(), MATHEXPR_PARSING_ERROR);
    EXPECT_EQ(error.code(), static_cast<std::uint32_t>(MATHEXPR_PARSING_UNKNOWN_FUNCTION));
    EXPECT_EQ(error.start(), 4u);
    EXPECT_EQ(error.length(), 4u);
    EXPECT_EQ(error.item(), "sine");
    EXPECT_EQ(error.expected() & MATHEXPR_EXPECTED_FUNCTION, static_cast<std::uint32_t>(MATHEXPR_EXPECTED_FUNCTION));
    EXPECT_EQ(error.suggestions(), (std::vector<std::string>{"sin", "sinh"}));
    EXPECT_STREQ(error.what(), "The text before ( is not a function: check its name, or write * to multiply.");
}

TEST(HostFailure, OffersACorrection)
{
    const Error error = errorOf("1+2pi");
    EXPECT_EQ(error.hints(), std::vector<std::string>{"Multiplication is written with *. Did you mean 1+2*pi?"});
    ASSERT_TRUE(error.fix());
    EXPECT_EQ(error.fix()->start, 2u);
    EXPECT_EQ(error.fix()->length, 3u);
    EXPECT_EQ(error.fix()->replacement, "2*pi");
    EXPECT_FALSE(errorOf("1,500").fix());
}

TEST(HostFailure, CountsBytes)
{
    const Error error = errorOf("\xC3\xA4*2");
    EXPECT_EQ(error.start(), 0u);
    EXPECT_EQ(error.length(), 2u);
    EXPECT_EQ(error.item(), "\xC3\xA4");
}

TEST(HostFailure, IsThrownAsItIsAnswered)
{
    try
    {
        (void)mathexpr::evaluate("sin([1,2])");
        FAIL();
    }
    catch (const std::runtime_error& caught)
    {
        const auto& error = dynamic_cast<const Error&>(caught);
        EXPECT_EQ(error.status(), MATHEXPR_PARSING_ERROR);
        EXPECT_EQ(error.length(), 3u);
        EXPECT_STREQ(error.what(), errorOf("sin([1,2])").what());
    }
    EXPECT_EQ(errorOf("1/0").status(), MATHEXPR_REFUSED);
    EXPECT_STRNE(errorOf("1/0").what(), errorOf("ln(-1)").what());
}

TEST(HostFailure, OfIllFormedTextReportsThePosition)
{
    const Error illFormed = errorOf("1+\xFF");
    EXPECT_EQ(illFormed.status(), MATHEXPR_BAD_UTF8);
    EXPECT_EQ(illFormed.start(), 2u);
    EXPECT_EQ(illFormed.length(), 1u);
    EXPECT_STREQ(illFormed.what(), "the text is not well-formed UTF-8");
    const Error zero = errorOf(std::string_view("1\0+", 3));
    EXPECT_EQ(zero.status(), MATHEXPR_ZERO_IN_TEXT);
    EXPECT_EQ(zero.start(), 1u);
}

TEST(HostFailure, IsNeverAnEarlierOne)
{
    Expression expression;
    EXPECT_FALSE(expression.tryEvaluate("2*("));
    EXPECT_STREQ(expression.tryEvaluate("1\xFF").error().what(), "the text is not well-formed UTF-8");
    EXPECT_EQ(expression.text(), "2*(");
    EXPECT_EQ(expression.tryEvaluate().error().status(), MATHEXPR_NO_PROGRAM);
    EXPECT_TRUE(expression.tryEvaluate("1"));
}

TEST(HostFailure, OfANameReportsTheOffendingPart)
{
    Expression expression;
    const auto refused = expression.variables().trySet("a+b", 1);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().status(), MATHEXPR_DEFINITION_ERROR);
    EXPECT_EQ(refused.error().code(), static_cast<std::uint32_t>(MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER));
    EXPECT_EQ(refused.error().start(), 1u);
    EXPECT_EQ(refused.error().length(), 1u);
    EXPECT_EQ(refused.error().item(), "a+b");
    EXPECT_THROW(expression.variables().set("pi", 1), Error);
    EXPECT_THROW(Expression("1", {{"2r", 1}, {"", 1}}), Error);
    EXPECT_EQ(expression.variables().trySet("\xFF", 1).error().status(), MATHEXPR_BAD_UTF8);
}

TEST(HostFailure, OfAResolverPropagatesUnchanged)
{
    Options options;
    options.resolver = [](std::string_view name) -> std::optional<Value> {
        if (name == "boom")
        {
            throw HostFailure{42};
        }
        return 1.0;
    };
    Expression expression("one+1", {}, options);
    for (int i = 0; i < 2; ++i)
    {
        try
        {
            (void)expression.tryCompile("boom");
            FAIL();
        }
        catch (const HostFailure& failure)
        {
            EXPECT_EQ(failure.number, 42);
        }
    }
    EXPECT_EQ(expression.tryEvaluate().error().status(), MATHEXPR_NO_PROGRAM);
    EXPECT_EQ(expression.clone().tryEvaluate().error().status(), MATHEXPR_NO_PROGRAM);
    EXPECT_EQ(expression.evaluate("one*3"), 3.0);
}

TEST(HostFailure, OfAMessageDisplayPropagatesUnchanged)
{
    Options options;
    options.showMessage = [](std::uint32_t id, std::string_view) { throw HostFailure{static_cast<int>(id)}; };
    Expression expression("ln(a)", {{"a", 1}}, options);
    expression.variables().set("a", -1);
    EXPECT_THROW((void)expression.tryEvaluate(), HostFailure);
    expression.variables().set("a", 1);
    EXPECT_EQ(expression.evaluate(), 0.0);
}

TEST(HostFailure, OfACallFromWithinIsBusy)
{
    mathexpr_status within = MATHEXPR_OK;
    Expression* self = nullptr;
    Options options;
    options.resolver = [&](std::string_view) -> std::optional<Value> {
        within = self->tryCompile("1").error().status();
        return 5.0;
    };
    Expression expression(options);
    self = &expression;
    EXPECT_EQ(expression.evaluate("x"), 5.0);
    EXPECT_EQ(within, MATHEXPR_BUSY);
    EXPECT_EQ(expression.text(), "x");
}

TEST(HostFailure, OfAHundredThousandBracketsIsAnError)
{
    EXPECT_EQ(errorOf(std::string(100000, '(')).status(), MATHEXPR_PARSING_ERROR);
    EXPECT_EQ(mathexpr::number(std::string(100000, '(') + "1" + std::string(100000, ')')), 1.0);
}

}
