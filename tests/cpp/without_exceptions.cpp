// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// without_exceptions.cpp - a host compiled without exceptions and run-time type information. The exit status is the
// number of failed expectations.
#include <mathexpr_editor.hpp>

#include <cstdio>

static int nbFailed = 0;

static void expect(bool holds, const char* what)
{
    if (!holds)
    {
        ++nbFailed;
        std::printf("does not hold: %s\n", what);
    }
}

#define EXPECT(condition) expect(condition, #condition)

int main()
{
    const auto value = mathexpr::tryEvaluate("2*width+0.5", {{"width", 2.5}});
    EXPECT(value && *value == 5.5 && value->text() == "5.5");
    const auto number = mathexpr::tryNumber("[1,2]");
    EXPECT(!number && number.error().status() == MATHEXPR_OTHER_KIND && number.value_or(7.0) == 7.0);
    const auto failed = mathexpr::tryEvaluate("2*(");
    EXPECT(!failed && failed.error().status() == MATHEXPR_PARSING_ERROR && failed.error().start() == 2);

    mathexpr::Options options;
    options.resolver = [](std::string_view name) -> std::optional<mathexpr::Value> {
        return name == "width" ? std::optional<mathexpr::Value>(3.0) : std::nullopt;
    };
    auto expression = mathexpr::Expression::tryCreate("width*height", {{"height", 2.0}}, options);
    EXPECT(expression && expression->tryNumber().value_or(0.0) == 6.0);
    EXPECT(expression && !expression->tryCompile("depth") && !expression->variables().trySet("2", 1.0));

    auto area = mathexpr::Function::tryCreate("a*b", {"a", "b"});
    EXPECT(area && area->tryCall(2.0, 3.0).value_or(0.0) == 6.0 && !area->tryCall(2.0));

    mathexpr::Editor editor(*expression);
    const auto items = editor.tryCompletions("2*heig", 6);
    EXPECT(items && items->size() == 1 && (*items)[0].name == "height");
    EXPECT(!editor.tryTokens("\xFF"));
    return nbFailed;
}
