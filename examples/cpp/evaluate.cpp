// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// evaluate.cpp - computes numbers and points, and distinguishes them.
#include <mathexpr.hpp>

#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    std::vector<std::string> texts(argv + 1, argv + argc);
    if (texts.empty())
        texts = {"2*(3+4)", "sqrt(2)", "[1,2,0]+[3,4,0]", "m2cm(2)", "10^20"};

    int status = 0;
    for (const std::string& text : texts)
    {
        try
        {
            const mathexpr::Value value = mathexpr::evaluate(text, {{"gr\u00f6\u00dfe", 4}});
            std::cout << (value.isNumber() ? "number " : "point ") << value << '\n';
        }
        catch (const mathexpr::Error& error)
        {
            std::cout << error.what() << '\n';
            status = 1;
        }
    }
    return status;
}
