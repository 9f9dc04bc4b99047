// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileDump.cpp - names the kernels that a program takes from a set, and reads its steps when they run.
#include "tests/program/TileDump.h"

#include "MTParserLib/run/MTBulkPlan.h"
#include "MTParserLib/run/MTBulkRun.h"
#include "MTParserLib/tiles/MTTileCode.h"

#include <array>
#include <map>
#include <string_view>
#include <vector>

namespace {

constexpr std::array<const char*, nbTileOperands> operandsTexts = {"value",
                                                                   "number and value",
                                                                   "numbers",
                                                                   "value and uniform",
                                                                   "uniform and value",
                                                                   "number and uniform",
                                                                   "uniform and number",
                                                                   "three numbers",
                                                                   "two numbers and value",
                                                                   "point",
                                                                   "points",
                                                                   "point and number",
                                                                   "point and value",
                                                                   "point and uniform",
                                                                   "number and point",
                                                                   "value and point",
                                                                   "uniform and point"};
constexpr std::array<const char*, 7> controlTexts = {
    "push", "call", "pause", "end", "end with numbers", "end with points", "stop"};

/// The names of all kernels taken so far, and the run that has taken them.
std::map<std::uint8_t, std::string> formulas;
std::map<MTTileKernel, std::string> names;
TileRun seen;

MTTileKernel named(MTTileKernel kernel, const std::string& name)
{
    names[kernel] = name;
    return kernel;
}

MTTileKernel findKernel(std::uint8_t formula, MTTileOperands operands)
{
    return named(baselineTiles.findKernel(formula, operands),
                 formulas.at(formula) + ' ' + operandsTexts.at(static_cast<std::size_t>(operands)));
}

MTTileKernel findJoined(std::uint8_t first, std::uint8_t second)
{
    return named(baselineTiles.findJoined(first, second), formulas.at(first) + ", " + formulas.at(second) + " numbers");
}

MTTileKernel findControl(MTTileControl control)
{
    return named(baselineTiles.findControl(control), controlTexts.at(static_cast<std::size_t>(control)));
}

bool isLast(const MTTileStep& step)
{
    const std::string& name = names.at(step.kernel);
    return name == "stop" || name.substr(0, 3) == "end";
}

std::size_t run(const MTTileStep* first, MTTileContext& context, const std::size_t* distances, std::size_t nbMoved,
                std::size_t nbTiles)
{
    seen.steps.clear();
    for (const MTTileStep* step = first; step == first || !isLast(step[-1]); ++step)
    {
        seen.steps += names.at(step->kernel) + '\n';
    }
    const std::size_t nbComputed = baselineTiles.run(first, context, distances, nbMoved, nbTiles);
    seen.nbTiles += nbComputed;
    return nbComputed;
}

void nameFormula(const MTItemKernels& item, std::wstring_view symbol, const char* prefix)
{
    formulas[item.tileFormula] = prefix + std::string(symbol.begin(), symbol.end());
}

}

TileRun runInTiles(MTParserProgram& program, platform::ArrayView<const MTBoundColumn> columns,
                   const MTParserRegistrar& registrar, std::size_t nbRows)
{
    for (std::size_t index = 0; index < registrar.getNbOperators(); ++index)
    {
        const MTOperatorDefinition& definition = registrar.getOperatorDefinition(index);
        nameFormula(*definition.kernels, definition.symbol, definition.unary ? "unary " : "");
    }
    for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
    {
        const MTFunctionDefinition& definition = registrar.getFunctionDefinition(index);
        nameFormula(*definition.kernels, definition.symbol, "");
    }
    const MTTileSet set{baselineTiles.nbRows, findKernel, findJoined, findControl, run};
    std::vector<VALTYPE> records(nbRows);
    const mathexpr::BulkResults results{records.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record};
    seen = {};
    runInBulk(program, columns, nbRows, results, 1, &set);
    program.bulkPlan.reset();
    return seen;
}
