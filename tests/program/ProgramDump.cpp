// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ProgramDump.cpp - names each slot by the record that writes it, or by the constant in it.
#include "tests/program/ProgramDump.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>

namespace {

std::string number(double value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::string(text.data(), end);
}

std::string valueText(const VALTYPE& value)
{
    std::string text = number(value.x);
    if (value.type == 1)
    {
        text = "[" + text + "," + number(value.y) + "," + number(value.z) + "]";
    }
    return value.flag == 1 ? text + " flagged" : text;
}

std::string ascii(const std::wstring& text)
{
    return std::string(text.begin(), text.end());
}

/// Finds an item among the definitions by its address, since WebAssembly is compiled without run-time types.
std::string itemText(const IMathExprItemEvaluator* item, const MTParserRegistrar& registrar)
{
    for (std::size_t index = 0; index < registrar.getNbOperators(); ++index)
    {
        if (const MTOperatorDefinition& definition = registrar.getOperatorDefinition(index); definition.item == item)
        {
            return (definition.unary ? "unary " : "operator ") + ascii(definition.item->getSymbol());
        }
    }
    for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
    {
        if (const IMathFunction& function = registrar.getFunction(index); &function == item)
        {
            return "function " + ascii(function.getHelpString());
        }
    }
    for (std::size_t index = 0; index < registrar.getNbVariables(); ++index)
    {
        if (const MTVariableDefinition& definition = registrar.getVariableDefinition(index);
            definition.item.get() == item)
        {
            return "variable " + ascii(definition.item->getSymbol());
        }
    }
    return "unknown item";
}

}

std::string dumpProgram(const MTParserProgram& program, const MTParserRegistrar& registrar)
{
    std::ostringstream dump;
    if (program.isConstant())
    {
        dump << "constant " << valueText(program.getRoot()) << '\n';
    }
    const auto& steps = program.steps;
    const auto writerOf = [&](MTPlace place) {
        const auto writes = [place](const MTProgramStep& step) { return step.result == place; };
        return static_cast<std::size_t>(std::find_if(steps.begin(), steps.end(), writes) - steps.begin());
    };
    const auto isConsumed = [&](MTPlace place) {
        return std::any_of(steps.begin(), steps.end(), [place](const MTProgramStep& step) {
            bool found = false;
            for (std::uint32_t j = 0; j < step.nbArgs; ++j)
            {
                found = found || step.operand(j) == place;
            }
            return found;
        });
    };
    const auto operandText = [&](MTPlace place) {
        const std::size_t writer = writerOf(place);
        const VALTYPE* const operand = &program.frame[place];
        if (writer < steps.size())
        {
            return "#" + std::to_string(writer);
        }
        const auto holdsOperand = [operand](const IMathVariable* variable) {
            return const_cast<IMathVariable*>(variable)->getValuePtr() == operand;
        };
        const auto variable = std::find_if(program.usedVariables.begin(), program.usedVariables.end(), holdsOperand);
        return variable == program.usedVariables.end() ? valueText(*operand) : ascii((*variable)->getSymbol());
    };
    for (std::size_t index = 0; index < steps.size(); ++index)
    {
        const MTProgramStep& step = steps[index];
        dump << index << ' ' << itemText(step.item, registrar) << " at " << step.position;
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            dump << (j == 0 ? " [" : ", ") << operandText(step.operand(j));
        }
        dump << (step.nbArgs > 0 ? "]" : "");
        if (step.result == program.getRootPlace())
        {
            dump << " -> root";
        }
        else if (!isConsumed(step.result))
        {
            dump << " -> nowhere";
        }
        dump << '\n';
    }
    return dump.str();
}
