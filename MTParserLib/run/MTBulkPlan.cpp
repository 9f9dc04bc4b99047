// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkPlan.cpp - see MTBulkPlan.h.
#include "MTParserLib/run/MTBulkPlan.h"

#include "MTParserLib/run/MTRowProgram.h"
#include "MTParserLib/tiles/MTTileWorker.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {

/// Records are compared by their bits, since items may distinguish -0 from 0.
std::array<std::uint64_t, 4> bitsOf(const VALTYPE& record) noexcept
{
    std::array<std::uint64_t, 4> bits;
    static_assert(sizeof bits == sizeof record);
    std::memcpy(bits.data(), &record, sizeof record);
    return bits;
}

}

MTBulkPlan::MTBulkPlan(const MTParserProgram& source, platform::ArrayView<const MTBoundColumn> given,
                       const MTTileSet* tileSet)
    : program(source), set(tileSet)
{
    for (const MTBoundColumn& column : given)
    {
        columns.push_back({column.variable, column.column.kind});
    }
    for (const VALTYPE* variable : program.inputs)
    {
        if (std::none_of(given.begin(), given.end(),
                         [=](const MTBoundColumn& column) { return column.variable == variable; }))
        {
            uniforms.push_back({variable, *variable});
        }
    }
    if (!program.isConstant() && set != nullptr)
    {
        tiles = MTTileProgram::build(program, given, *set);
    }
    worker = makeWorker(given);
}

bool MTBulkPlan::suits(platform::ArrayView<const MTBoundColumn> given, const MTTileSet* tileSet) const noexcept
{
    return set == tileSet &&
           std::equal(columns.begin(), columns.end(), given.begin(), given.end(),
                      [](const Column& own, const MTBoundColumn& other) {
                          return own.variable == other.variable && own.kind == other.column.kind;
                      }) &&
           std::all_of(uniforms.begin(), uniforms.end(),
                       [](const Uniform& uniform) { return bitsOf(*uniform.variable) == bitsOf(uniform.value); });
}

std::unique_ptr<MTBulkWorker> MTBulkPlan::makeWorker(platform::ArrayView<const MTBoundColumn> given) const
{
    if (tiles)
    {
        return std::make_unique<MTTileWorker>(*tiles, program, given);
    }
    return std::make_unique<MTRowProgram>(program, given);
}
