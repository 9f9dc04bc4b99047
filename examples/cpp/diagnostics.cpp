// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// diagnostics.cpp - shows errors as compilers do: the line, a caret, the message, suggestions.
#include <mathexpr.hpp>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

// Number of characters that begin in a piece of UTF-8.
std::size_t characters(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](unsigned char byte) { return (byte & 0xC0) != 0x80; }));
}

void show(std::string_view text, const mathexpr::Error& error)
{
    if (error.status() != MATHEXPR_BAD_UTF8)  // no terminal could show ill-formed text
    {
        const std::size_t length = characters(text.substr(error.start(), error.length()));
        std::cout << text << '\n'
                  << std::string(characters(text.substr(0, error.start())), ' ') << '^'
                  << std::string(std::max<std::size_t>(length, 1) - 1, '~') << '\n';
    }
    std::cout << error.what() << '\n';
    for (const std::string& name : error.suggestions())
        std::cout << "  perhaps " << name << '\n';
}

int main(int argc, char** argv)
{
    std::vector<std::string> texts(argv + 1, argv + argc);
    if (texts.empty())
        texts = {"2 * cosh2(1)", "1 + (2*3", "sin(30, 2)", "ln(-1)", "2*gr\u00f6sse"};

    mathexpr::Expression expression;
    expression.variables().set("gr\u00f6\u00dfe", 4);
    for (const std::string& text : texts)
    {
        // This form does not throw.
        const mathexpr::Result<mathexpr::Value> value = expression.tryEvaluate(text);
        if (value)
            std::cout << *value << '\n';
        else
            show(text, value.error());
    }
    return 0;
}
