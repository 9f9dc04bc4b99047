// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// header_alone.cpp - the headers and their templates compile without any other header.
#include <mathexpr_editor.hpp>

std::size_t useTemplates(const std::vector<mathexpr::Point>& corners, std::vector<double>& lengths)
{
    const auto outcome = mathexpr::tryEvaluateArrays("dist(p,[0,0])", {{"p", corners}}, lengths);
    auto function = mathexpr::Function::tryCreate("x+y", {"x", "y"});
    const auto sum = function ? function->tryCall(1, 2.5) : mathexpr::Result<double>(function.error());
    return outcome && sum ? outcome->failedCount : 1;
}

std::size_t useEditor(mathexpr::Expression& expression, std::string_view text)
{
    mathexpr::Editor editor(expression);
    const auto tokens = editor.tryTokens(text);
    const auto items = editor.tryCompletions(text, text.size());
    return tokens && items ? tokens->size() + items->size() : 0;
}
