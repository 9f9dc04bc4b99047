// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// messages.cpp - replaces the display of messages, here by a list that the host prints.
#include <mathexpr.hpp>

#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    std::vector<std::string> texts(argv + 1, argv + argc);
    if (texts.empty())
        texts = {"2*3000000000", "2*nothing", "2*50"};

    int shown = 0;
    mathexpr::Options options;
    options.showMessage = [&shown](std::uint32_t id, std::string_view text) {
        ++shown;
        std::cout << id << ": " << text << '\n';
    };
    mathexpr::Expression expression(options);
    expression.variables().set("gr\u00f6\u00dfe", 4);
    for (const std::string& text : texts)
    {
        const int before = shown;
        const mathexpr::Result<mathexpr::Value> value = expression.tryEvaluate(text);
        if (value)
            std::cout << *value << '\n';
        else if (shown == before)  // ill-formed UTF-8 is an error of the host, without a message for the user
            std::cout << value.error().what() << '\n';
    }
    std::cout << shown << " messages\n";
    return 0;
}
