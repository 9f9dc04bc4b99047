// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostExpressionTests.cpp - expressions: texts, variables and names of the host.
#include <mathexpr.hpp>

#include <gtest/gtest.h>

#include <map>

namespace {

using mathexpr::Expression;
using mathexpr::Options;
using mathexpr::Point;
using mathexpr::Value;

const char* const groesse = "gr\xC3\xB6\xC3\x9F"
                            "e";

TEST(HostExpression, IsComputedInOneCall)
{
    EXPECT_EQ(mathexpr::evaluate("2*width+0.5", {{"width", 2.5}}), 5.5);
    EXPECT_EQ(mathexpr::evaluate("[1,2,0]+[3,4,0]"), Value(Point{4, 6, 0}));
    EXPECT_EQ(mathexpr::number("a*b", {{"a", 2}, {"b", 3}}), 6.0);
    EXPECT_EQ(mathexpr::point("p*2", {{"p", Point{1, 2, 3}}}), (Point{2, 4, 6}));
    EXPECT_THROW(mathexpr::number("[1,2]"), mathexpr::Error);
    EXPECT_THROW(mathexpr::point("1"), mathexpr::Error);
    EXPECT_EQ(mathexpr::tryEvaluate("2*").error().status(), MATHEXPR_PARSING_ERROR);
}

TEST(HostExpression, TakesVariablesFromTheContainersOfTheHost)
{
    const std::map<std::string, double> numbers{{"width", 2.5}, {"height", 4}};
    const std::vector<std::pair<const char*, Point>> points{{"p", {1, 2, 3}}, {"q", {1, 1, 1}}};
    const std::vector<mathexpr::Variable> variables{{"r", 2}, {"p", Point{1, 0, 0}}};
    EXPECT_EQ(mathexpr::number("width*height", numbers), 10.0);
    EXPECT_EQ(mathexpr::point("p+q", points), (Point{2, 3, 4}));
    EXPECT_EQ(Expression("p*r", variables).point(), (Point{2, 0, 0}));
    EXPECT_EQ(mathexpr::tryNumber("1", std::map<std::string, double>{{"2", 1}}).error().item(), "2");
}

TEST(HostExpression, IsCompiledOnceAndEvaluatedOften)
{
    Expression expression("width*height", {{"width", 2}, {"height", 3}});
    EXPECT_EQ(expression.number(), 6.0);
    expression.variables().set("width", 5);
    EXPECT_EQ(expression.evaluate(), 15.0);
    EXPECT_EQ(expression.evaluate("[width,1]"), Value(Point{5, 1, 0}));
    EXPECT_EQ(expression.point().y, 1.0);
    EXPECT_EQ(expression.text(), "[width,1]");
    EXPECT_EQ(expression.usedNames(), std::vector<std::string>{"width"});

    Expression moved = std::move(expression);
    EXPECT_EQ(moved.point().x, 5.0);
    moved = Expression();
    EXPECT_EQ(moved.tryEvaluate().error().status(), MATHEXPR_NO_PROGRAM);
}

TEST(HostExpression, IsClonedWithAllItHas)
{
    Options options;
    options.limits.maxNesting = 3;
    options.resolver = [](std::string_view name) -> std::optional<Value> {
        return name == "k" ? std::optional<Value>(10.0) : std::nullopt;
    };
    Expression expression("k*a", {{"a", 2}}, options);
    Expression clone = expression.clone();
    expression.variables().set("a", 3);
    EXPECT_EQ(clone.number(), 20.0);
    EXPECT_EQ(expression.number(), 30.0);
    EXPECT_EQ(clone.limits().maxNesting, 3u);
    EXPECT_EQ(clone.evaluate("k+1"), 11.0);

    (void)expression.tryCompile("1+");
    EXPECT_EQ(expression.clone().tryEvaluate().error().status(), MATHEXPR_NO_PROGRAM);
}

TEST(HostExpression, HasVariables)
{
    Expression expression;
    auto variables = expression.variables();
    variables.set("Width", 2);
    variables.set("corner", Point{1, 2, 3});
    EXPECT_EQ(variables.get("WIDTH"), Value(2.0));
    EXPECT_EQ(variables.get("depth"), std::nullopt);
    std::map<std::string, Value> found;
    for (const auto& [name, value] : variables)
    {
        found.emplace(name, value);
    }
    EXPECT_EQ(found, (std::map<std::string, Value>{{"Width", 2}, {"corner", Point{1, 2, 3}}}));
    EXPECT_EQ(variables.names(), (std::vector<std::string>{"Width", "corner"}));
    EXPECT_TRUE(variables.remove("width"));
    EXPECT_FALSE(variables.remove("width"));
    EXPECT_EQ(expression.evaluate("area=2*3"), 6.0);
    EXPECT_EQ(variables.get("area"), Value(6.0));
}

TEST(HostExpression, KeepsTheFlagOfAConvertedValue)
{
    Expression expression;
    expression.variables().set("a", expression.evaluate("m2cm(2)"));
    EXPECT_EQ(expression.evaluate("a&m2cm(3)"), 1.0);
}

TEST(HostExpression, ForgetsAnAssignmentThatFailed)
{
    Expression expression;
    EXPECT_FALSE(expression.tryEvaluate("pi=3"));
    EXPECT_EQ(expression.evaluate("1+1"), 2.0);
    EXPECT_EQ(expression.variables().names().size(), 0u);
}

TEST(HostExpression, AsksTheHostForNames)
{
    int asked = 0;
    Options options;
    options.names = {groesse};
    options.resolver = [&asked](std::string_view name) -> std::optional<Value> {
        ++asked;
        return name == groesse ? std::optional<Value>(2.5) : std::nullopt;
    };
    Expression expression(std::string(groesse) + "*2", {}, options);
    EXPECT_EQ(expression.number(), 5.0);
    EXPECT_EQ(expression.number(), 5.0);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(expression.hostNames(), std::vector<std::string>{groesse});
    const auto failed = expression.tryCompile("gr\xC3\xB6\xC3\x9F"
                                              "er*2");
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().suggestions(), std::vector<std::string>{groesse});
    EXPECT_EQ(mathexpr::number("k", {}, Options{[](std::string_view) { return Value(7.0); }, {}, {}, {}}), 7.0);
}

TEST(HostExpression, ShowsMessages)
{
    std::vector<std::pair<std::uint32_t, std::string>> shown;
    Options options;
    options.showMessage = [&shown](std::uint32_t id, std::string_view text) { shown.emplace_back(id, text); };
    EXPECT_FALSE(mathexpr::tryEvaluate("2*(3", {}, options));
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].first, 2u);
    EXPECT_FALSE(shown[0].second.empty());
    // Without a display, not even message 19 is shown.
    EXPECT_FALSE(mathexpr::tryEvaluate("3000000000"));
}

TEST(HostExpression, HasLimits)
{
    Expression expression;
    EXPECT_EQ(expression.limits().maxNesting, 0u);
    expression.setLimits({1000, 200, 3});
    EXPECT_EQ(expression.limits().maxTextLength, 1000u);
    const auto failed = expression.tryEvaluate("1+((((2))))");
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code(), static_cast<std::uint32_t>(MATHEXPR_PARSING_NESTED_TOO_DEEP));
    EXPECT_EQ(failed.error().start(), 5u);
}

}
