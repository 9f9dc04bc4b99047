// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CInterfaceEngines.h - this library's other interfaces as engines: mathexpr_evaluate, and a bound function with
// positional arguments.
#pragma once

#include "benchmarks/Formulas.h"
#include "mathexpr.h"

#include <array>
#include <stdexcept>
#include <string>

/// An expression in which the formulas' variables are defined.
class CExpression
{
public:
    CExpression()
    {
        check(mathexpr_create_utf8(nullptr, &handle));
        for (const Component& component : components)
        {
            const bool isPoint = component.name.size() > 1;
            mathexpr_value value{};
            value.type = isPoint ? MATHEXPR_POINT : MATHEXPR_NUMBER;
            check(mathexpr_set_variable_utf8(handle, &component.variable, 1, &value, nullptr));
        }
    }
    CExpression(const CExpression&) = delete;
    CExpression& operator=(const CExpression&) = delete;
    ~CExpression() { mathexpr_destroy(handle); }

    mathexpr_expression* get() const noexcept { return handle; }

    static void check(mathexpr_status status)
    {
        if (status != MATHEXPR_OK)
        {
            throw std::runtime_error("refused");
        }
    }

private:
    mathexpr_expression* handle = nullptr;
};

class CInterfaceEngine
{
public:
    using Slot = double;
    static constexpr const char* name = "C interface";

    double* slot(const Component& component)
    {
        mathexpr_value* record = nullptr;
        CExpression::check(mathexpr_get_variable_address_utf8(expression.get(), &component.variable, 1, &record));
        const char coordinate = component.name.size() > 1 ? component.name.back() : 'x';
        return coordinate == 'y' ? &record->y : coordinate == 'z' ? &record->z : &record->x;
    }

    void prepare(const Formula& formula)
    {
        CExpression::check(
            mathexpr_set_expression_utf8(expression.get(), formula.text.c_str(), MATHEXPR_ZERO_TERMINATED));
    }

    double number()
    {
        mathexpr_evaluate(expression.get(), &value);
        return value.x;
    }

    const mathexpr_value& point()
    {
        mathexpr_evaluate(expression.get(), &value);
        return value;
    }

private:
    CExpression expression;
    mathexpr_value value{};
};

class BoundFunctionEngine
{
public:
    using Slot = double;
    static constexpr const char* name = "bound function";

    BoundFunctionEngine() = default;
    BoundFunctionEngine(const BoundFunctionEngine&) = delete;
    BoundFunctionEngine& operator=(const BoundFunctionEngine&) = delete;
    ~BoundFunctionEngine() { mathexpr_destroy_function(function); }

    /// The arguments are the formula's variables, in the order in which their slots are requested.
    double* slot(const Component& component)
    {
        names[nbArguments] = component.name.data();
        return &arguments[nbArguments++];
    }

    void prepare(const Formula& formula)
    {
        if (formula.hasPoints())
        {
            throw std::runtime_error("takes points");
        }
        const CExpression expression;
        CExpression::check(mathexpr_create_function_utf8(
            expression.get(), formula.text.c_str(), MATHEXPR_ZERO_TERMINATED, names.data(), nbArguments, &function));
    }

    double number()
    {
        double value = 0.0;
        mathexpr_call_function(function, arguments.data(), &value);
        return value;
    }

    /// Never called: the value of a function is a number.
    Point point() const { return {}; }

private:
    mathexpr_function* function = nullptr;
    std::array<double, nbComponents> arguments{};
    std::array<const char*, nbComponents> names{};
    std::size_t nbArguments = 0;
};
