// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// powers.cpp - a host in C++ whose values show which pow is used: MinGW's own is inexact for powers of ten.
#include "mathexpr.hpp"

#include <iostream>

int main()
{
    const double powers[] = {0.1, 0.01, 0.001, 0.0001, 0.00001, 0.000001, 0.0000001, 0.00000001};
    int exponent = 0;
    for (const double power : powers)
    {
        const std::string text = "10^(0-" + std::to_string(++exponent) + ")";
        if (mathexpr::number(text) != power)
        {
            std::cout << text << " is not the double nearest to it\n";
            return 1;
        }
    }
    return 0;
}
