// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// variables.cpp - compiles once and evaluates repeatedly with different values of the variables.
#include <mathexpr.hpp>

#include <iostream>

int main(int argc, char** argv)
{
    try
    {
        mathexpr::Expression expression;
        mathexpr::Variables variables = expression.variables();
        variables.set("width", 0);
        variables.set("height", 2.5);
        variables.set("gr\u00f6\u00dfe", 4);
        expression.compile(argc > 1 ? argv[1] : "width*height+1");

        for (const std::string& name : expression.usedNames())
            std::cout << "reads " << name << '\n';
        for (const double width : {1, 2, 3, 4})
        {
            variables.set("width", width);
            std::cout << mathexpr::Value(width) << " -> " << expression.evaluate() << '\n';
        }
    }
    catch (const mathexpr::Error& error)
    {
        std::cout << error.what() << '\n';
        return 1;
    }
    return 0;
}
