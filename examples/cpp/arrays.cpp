// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// arrays.cpp - many values at once: a text as a function of numbers, and a text over arrays, in place.
#include <mathexpr.hpp>

#include <iostream>
#include <vector>

struct Pipe
{
    double diameter;
    double logarithm;
};

int main(int argc, char** argv)
{
    const char* const text = argc > 1 ? argv[1] : "ln(d)";
    try
    {
        mathexpr::Function function(text, {"d"}, {{"gr\u00f6\u00dfe", 4}});
        std::cout << "function: " << mathexpr::Value(function(2)).text(6) << '\n';

        std::vector<Pipe> pipes{{1, 0}, {2, 0}, {-3, 0}, {4, 0}};
        std::vector<std::uint32_t> status(pipes.size());
        mathexpr::Expression expression(text, {{"d", 0}, {"gr\u00f6\u00dfe", 4}});
        const mathexpr::RowsOutcome outcome = expression.evaluateArrays(
            {{"d", &pipes[0].diameter, pipes.size(), sizeof(Pipe)}},
            mathexpr::Results(&pipes[0].logarithm, pipes.size(), sizeof(Pipe)).withRowStatus(status.data()));
        for (std::size_t row = 0; row < pipes.size(); ++row)
        {
            std::cout << mathexpr::Value(pipes[row].diameter) << ": ";
            if (status[row] == MATHEXPR_ROW_DONE)
                std::cout << mathexpr::Value(pipes[row].logarithm).text(6) << '\n';
            else
                std::cout << "no value, message " << status[row] << '\n';
        }
        std::cout << outcome.failedCount << " failed\n";
    }
    catch (const mathexpr::Error& error)
    {
        std::cout << error.what() << '\n';
        return 1;
    }
    return 0;
}
