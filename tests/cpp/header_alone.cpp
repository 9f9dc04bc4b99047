// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// header_alone.cpp - the header compiles by itself, and the templates in it, too.
#include <mathexpr.hpp>

std::size_t useTemplates(const std::vector<mathexpr::Point>& corners, std::vector<double>& lengths)
{
    const auto outcome = mathexpr::tryEvaluateArrays("dist(p,[0,0])", {{"p", corners}}, lengths);
    auto function = mathexpr::Function::tryCreate("x+y", {"x", "y"});
    const auto sum = function ? function->tryCall(1, 2.5) : mathexpr::Result<double>(function.error());
    return outcome && sum ? outcome->failedCount : 1;
}
