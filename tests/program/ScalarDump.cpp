// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ScalarDump.cpp - identifies a step's kernel by comparing it with all kernels.
#include "tests/program/ScalarDump.h"

#include "MTParserLib/run/MTScalarSteps.h"
#include "MTParserLib/run/ScalingKernels.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t maxOperands = 3;

/// Description of a kernel, and its number of operands in memory.
struct KernelText
{
    bool spills = false;
    std::string before;                 // the operands
    std::vector<std::string> operands;  // "a", "b", "c" for operands in memory
    std::string after;
};

using Kernels = std::map<MTScalarKernel, KernelText>;

std::string ascii(std::wstring_view text)
{
    return std::string(text.begin(), text.end());
}

constexpr std::array<MTOperandForm, nbOperandForms> forms = {MTOperandForm::Memory, MTOperandForm::SpillMemory,
                                                             MTOperandForm::ValueMemory, MTOperandForm::MemoryValue};

std::vector<std::string> operandsOf(MTOperandForm form, std::size_t count)
{
    std::vector<std::string> operands = {"a", "b", "c"};
    operands.resize(count);
    switch (form)
    {
    case MTOperandForm::Memory:
    case MTOperandForm::SpillMemory:
        break;
    case MTOperandForm::ValueMemory:
        operands.insert(operands.begin(), "value");
        operands.pop_back();
        break;
    case MTOperandForm::MemoryValue:
        operands.back() = "value";
        break;
    }
    return operands;
}

struct NamedItem
{
    std::string name;
    std::size_t nbArgs;
    const MTScalarKernels* kernels;
};

std::vector<NamedItem> itemsOf(const MTParserRegistrar& registrar)
{
    std::vector<NamedItem> items;
    for (std::size_t index = 0; index < registrar.getNbOperators(); ++index)
    {
        const MTOperatorDefinition& definition = registrar.getOperatorDefinition(index);
        items.push_back({(definition.unary ? "unary " : "") + ascii(definition.symbol), definition.unary ? 1U : 2U,
                         definition.kernels->scalar});
    }
    for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
    {
        const MTFunctionDefinition& definition = registrar.getFunctionDefinition(index);
        items.push_back({ascii(definition.symbol), std::min<std::size_t>(definition.nbArgs, maxOperands),
                         definition.kernels->scalar});
    }
    items.erase(std::remove_if(items.begin(), items.end(), [](const NamedItem& item) { return !item.kernels; }),
                items.end());
    return items;
}

void addItem(Kernels& kernels, const NamedItem& item)
{
    static constexpr std::array<const char*, nbOperandKinds> ofTwo = {"numbers", "point number", "number point",
                                                                      "points"};
    for (std::size_t kinds = 0; kinds < nbOperandKinds; ++kinds)
    {
        const std::string kindsText = item.nbArgs == 1 ? (kinds == 0 ? "number" : "point") : ofTwo[kinds];
        for (const MTOperandForm form : forms)
        {
            kernels[item.kernels->find(static_cast<MTOperandKinds>(kinds), form)] = {
                form == MTOperandForm::SpillMemory, item.name + " " + kindsText, operandsOf(form, item.nbArgs), ""};
        }
    }
}

void addFused(Kernels& kernels, const NamedItem& first, const NamedItem& second)
{
    if (first.kernels->fusedIndex == MTScalarKernels::notFused ||
        second.kernels->fusedIndex == MTScalarKernels::notFused)
    {
        return;
    }
    for (const MTOperandForm form : forms)
    {
        for (const bool valueFirst : {true, false})
        {
            const MTOperandForm secondForm = valueFirst ? MTOperandForm::ValueMemory : MTOperandForm::MemoryValue;
            kernels[findFusedKernel(first.kernels->fusedIndex, form, second.kernels->fusedIndex, secondForm)] = {
                form == MTOperandForm::SpillMemory, first.name + " numbers", operandsOf(form, 2),
                " then " + second.name + (valueFirst ? " [value, c]" : " [c, value]")};
        }
    }
}

void addScaling(Kernels& kernels, const ConversionFormula& formula, const std::string& name)
{
    for (const MTOperandForm form : {MTOperandForm::Memory, MTOperandForm::SpillMemory, MTOperandForm::ValueMemory})
    {
        kernels[findScalingStep(formula, 0)[static_cast<std::size_t>(form)]] = {
            form == MTOperandForm::SpillMemory, "scale " + name, operandsOf(form, 1), ""};
    }
}

template <std::uint16_t head>
void addChecks(Kernels& kernels, const std::string& kind)
{
    using scalarkernels::checkHeads;
    kernels[checkHeads<head, 1>] = {false, "check " + kind, {"a"}, ""};
    kernels[checkHeads<head, 2>] = {false, "check " + kind, {"a", "b"}, ""};
    kernels[checkHeads<head, 3>] = {false, "check " + kind, {"a", "b", "c"}, ""};
    kernels[checkHeads<head, 4>] = {false, "check " + kind, {"a", "b", "c", "d"}, ""};
    kernels[checkHeads<head, 5>] = {false, "check " + kind, {"a", "b", "c", "d", "e"}, ""};
}

Kernels allKernels(const MTParserRegistrar& registrar)
{
    Kernels kernels;
    const std::vector<NamedItem> items = itemsOf(registrar);
    for (const NamedItem& item : items)
    {
        addItem(kernels, item);
        for (const NamedItem& second : items)
        {
            addFused(kernels, item, second);
        }
    }
    const ConversionFormula x;
    addScaling(kernels, x, "by nothing");
    addScaling(kernels, x * 2.0, "*");
    addScaling(kernels, x / 2.0, "/");
    addScaling(kernels, x * 2.0 * 2.0, "* *");
    addScaling(kernels, x * 2.0 / 2.0, "* /");
    addScaling(kernels, x / 2.0 * 2.0, "/ *");
    addScaling(kernels, x / 2.0 / 2.0, "/ /");
    addChecks<0x000>(kernels, "numbers");
    addChecks<0x001>(kernels, "points");
    addChecks<0x100>(kernels, "flagged numbers");
    addChecks<0x101>(kernels, "flagged points");
    kernels[scalarkernels::clearSlot] = {false, "clear", {}, ""};
    kernels[scalarkernels::runRecord<false>] = {false, "record", {}, ""};
    kernels[scalarkernels::runRecord<true>] = {true, "record", {}, ""};
    kernels[scalarkernels::endWithValue] = {false, "end with value", {}, ""};
    kernels[scalarkernels::endWithRecord] = {false, "end with record", {"a"}, ""};
    kernels[scalarkernels::endWithDouble] = {false, "end with double", {"value"}, ""};
    kernels[scalarkernels::endWithStoredDouble] = {false, "end with double", {"a"}, ""};
    kernels.erase(nullptr);
    return kernels;
}

/// Names for addresses.
class Places
{
public:
    explicit Places(const MTParserProgram& ofProgram) : program(ofProgram) {}

    std::string name(const double* x) const
    {
        if (x == &program.getRoot().x)
        {
            return "root";
        }
        for (std::size_t index = 0; index < program.steps.size(); ++index)
        {
            if (&program.slots[program.steps[index].result].x == x)
            {
                return "slot " + std::to_string(index);
            }
        }
        for (const IMathVariable* variable : program.usedVariables)
        {
            if (&const_cast<IMathVariable*>(variable)->getValuePtr()->x == x)
            {
                return ascii(variable->getSymbol());
            }
        }
        std::ostringstream text;
        text << *x;
        return text.str();
    }

    std::string operand(const MTScalarStep& step, const std::string& operand) const
    {
        const std::array<const double*, 5> addresses = {step.a, step.b, step.c, step.result, step.secondResult};
        return operand.size() == 1 ? name(addresses[static_cast<std::size_t>(operand.front() - 'a')]) : operand;
    }

private:
    const MTParserProgram& program;
};

std::string withOperands(const Places& places, const MTScalarStep& step, const KernelText& text)
{
    std::string line = text.before;
    for (std::size_t index = 0; index < text.operands.size(); ++index)
    {
        line += (index == 0 ? " [" : ", ") + places.operand(step, text.operands[index]);
    }
    line += text.operands.empty() ? "" : "]";
    const std::size_t third = text.after.find('c');
    return line + (third == std::string::npos
                       ? text.after
                       : text.after.substr(0, third) + places.operand(step, "c") + text.after.substr(third + 1));
}

}

std::string dumpScalarCode(const MTParserProgram& program, const MTParserRegistrar& registrar)
{
    const Kernels kernels = allKernels(registrar);
    const Places places(program);
    std::ostringstream dump;
    for (const MTScalarStep& step : program.scalar.getSteps())
    {
        const auto found = kernels.find(step.kernel);
        if (found == kernels.end())
        {
            dump << "unknown kernel\n";
            continue;
        }
        const std::string line = withOperands(places, step, found->second);
        dump << (found->second.spills ? "spill " + places.name(step.spillSlot) + ", " : "") << line;
        const std::string verb = line.substr(0, line.find(' '));
        if (verb == "record")
        {
            dump << ' ' << step.record - program.steps.data() << " -> " << places.name(step.result);
        }
        else if (verb == "clear")
        {
            dump << " -> " << places.name(step.result);
        }
        else if (verb == "scale")
        {
            dump << " -> value";
        }
        else if (verb != "check" && verb != "end")
        {
            const bool isPoint = scalarkernels::recordAt(step.result).type != 0;
            dump << " -> " << (isPoint ? places.name(step.result) : "value");
        }
        dump << '\n';
    }
    return dump.str();
}
