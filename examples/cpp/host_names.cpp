// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// host_names.cpp - supplies values for names from the host's own data, here the dimensions of a drawing.
#include <mathexpr.hpp>

#include <iostream>
#include <map>
#include <string>

int main(int argc, char** argv)
{
    std::map<std::string, mathexpr::Value, std::less<>> dimensions{
        {"length", 12}, {"corner", mathexpr::Point{1, 2, 3}}, {"gr\u00f6\u00dfe", 4}};

    mathexpr::Options options;
    options.resolver = [&dimensions](std::string_view name) -> std::optional<mathexpr::Value> {
        const auto found = dimensions.find(name);
        return found == dimensions.end() ? std::nullopt : std::optional(found->second);
    };
    for (const auto& dimension : dimensions)
        options.names.push_back(dimension.first);  // for suggestions

    try
    {
        mathexpr::Expression expression(argc > 1 ? argv[1] : "corner*length+[0.5,0,0]", {}, options);
        std::cout << expression.evaluate() << '\n';

        // The host is asked once per name. To change a dimension, set the variable, or remove it so that the host is
        // asked again.
        dimensions["length"] = 10;
        expression.variables().set("length", dimensions["length"]);
        std::cout << expression.evaluate() << '\n';
    }
    catch (const mathexpr::Error& error)
    {
        std::cout << error.what() << '\n';
        return 1;
    }
    return 0;
}
