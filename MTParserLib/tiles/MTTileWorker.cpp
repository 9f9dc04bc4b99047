// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileWorker.cpp - leads the columns and the results past the tile code.
#include "MTParserLib/tiles/MTTileWorker.h"

#include <algorithm>

namespace {

constexpr std::size_t numbersPerLine = 8;  // of the cache

constexpr std::size_t roundUpToLine(std::size_t count) noexcept
{
    return (count + numbersPerLine - 1) / numbersPerLine * numbersPerLine;
}

bool isPacked(const mathexpr::BulkColumn& column) noexcept
{
    constexpr auto number = static_cast<std::ptrdiff_t>(sizeof(double));
    return column.kind == mathexpr::BulkKind::Number ? column.stride == number
                                                     : column.stride == 3 * number && column.coordinateStride == number;
}

}

MTTileWorker::MTTileWorker(const MTTileProgram& tileProgram, const MTParserProgram& source,
                           platform::ArrayView<const MTBoundColumn> boundColumns, const mathexpr::BulkResults& results)
    : program(tileProgram), rows(source, boundColumns, results), writer(results), tileRows(tileProgram.set.nbRows),
      args(tileProgram.mostArgs)
{
    const std::size_t resultPlace = boundColumns.size();
    columns.reserve(resultPlace);
    std::size_t total = numbersPerLine;
    for (const MTBoundColumn& bound : boundColumns)
    {
        const std::size_t width = program.places[columns.size()].width;
        const bool packed = isPacked(bound.column);
        columns.push_back({bound.column, width, packed, nullptr});
        total += (packed ? tileRows : blockRows) * width;
    }
    const std::size_t resultWidth = program.places[resultPlace].width;
    const std::size_t resultRows = writer.packedValues(0, resultWidth) != nullptr ? tileRows : blockRows;
    total += resultRows * resultWidth;
    for (std::size_t place = resultPlace + 1; place < program.places.size(); ++place)
    {
        total += tileRows * program.places[place].width;
    }
    memory.resize(total);
    const std::size_t misaligned = reinterpret_cast<std::uintptr_t>(memory.data()) / sizeof(double) % numbersPerLine;
    nbAllocated = roundUpToLine(misaligned) - misaligned;

    places.resize(program.places.size());
    moved.reserve(columns.size() + 1);
    for (Column& column : columns)
    {
        column.copy = allocate((column.packed ? tileRows : blockRows) * column.width);
    }
    ownResults = allocate(resultRows * resultWidth);
    for (std::size_t place = resultPlace + 1; place < places.size(); ++place)
    {
        const MTTileProgram::Place& description = program.places[place];
        places[place] = allocate(tileRows * description.width);
        for (std::size_t row = 0; description.uniform && row < tileRows; ++row)
        {
            std::copy_n(&description.value.x, description.width, places[place] + row * description.width);
        }
    }
    for (std::size_t place = 0; place <= resultPlace; ++place)
    {
        moved.push_back({&places[place], tileRows * program.places[place].width});
    }
    context.places = places.data();
    context.nbRows = tileRows;
    context.args = args.data();
}

double* MTTileWorker::allocate(std::size_t count) noexcept
{
    double* const allocated = memory.data() + nbAllocated;
    nbAllocated += count;
    return allocated;
}

bool MTTileWorker::evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    const std::size_t nbRest = nbRows % tileRows;
    const std::size_t nbWhole = nbRows - nbRest;
    const bool wholeDone = evaluateTiles(firstRow, nbWhole / tileRows, status);
    return (nbRest == 0 || evaluateRest(firstRow + nbWhole, nbRest, status + nbWhole)) && wholeDone;
}

bool MTTileWorker::evaluateTiles(std::size_t firstRow, std::size_t nbTiles, std::uint32_t* status)
{
    for (std::size_t j = 0; j < columns.size(); ++j)
    {
        const Column& column = columns[j];
        if (!column.packed)
        {
            copyRows(column, firstRow, nbTiles * tileRows, nbTiles * tileRows);
        }
        places[j] = column.packed ? const_cast<double*>(column.source.data) + firstRow * column.width : column.copy;
    }
    const std::size_t width = program.places[columns.size()].width;
    double* const direct = writer.packedValues(firstRow, width);
    double* const results = direct != nullptr ? direct : ownResults;
    places[columns.size()] = results;
    bool allDone = true;
    for (std::size_t tile = 0; tile < nbTiles;)
    {
        context.refused = false;
        const std::size_t nbDone =
            program.set.run(program.steps.data(), context, moved.data(), moved.size(), nbTiles - tile);
        if (direct == nullptr)
        {
            writeRows(firstRow + tile * tileRows, nbDone * tileRows, results + tile * tileRows * width);
        }
        tile += nbDone;
        if (tile < nbTiles)
        {
            rows.evaluate(firstRow + tile * tileRows, tileRows, status + tile * tileRows);
            allDone = false;
            ++tile;
        }
    }
    return allDone;
}

bool MTTileWorker::evaluateRest(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    for (std::size_t j = 0; j < columns.size(); ++j)
    {
        copyRows(columns[j], firstRow, nbRows, tileRows);
        places[j] = columns[j].copy;
    }
    places[columns.size()] = ownResults;
    context.refused = false;
    if (program.set.run(program.steps.data(), context, nullptr, 0, 1) == 0)
    {
        return rows.evaluate(firstRow, nbRows, status);
    }
    const std::size_t width = program.places[columns.size()].width;
    if (double* const direct = writer.packedValues(firstRow, width))
    {
        std::copy_n(ownResults, nbRows * width, direct);
    }
    else
    {
        writeRows(firstRow, nbRows, ownResults);
    }
    return true;
}

/// The rows after the last are like it.
void MTTileWorker::copyRows(const Column& column, std::size_t firstRow, std::size_t nbRows,
                            std::size_t nbPadded) noexcept
{
    const std::size_t nbPacked = column.packed ? nbRows : 0;
    std::copy_n(column.source.data + firstRow * column.width, nbPacked * column.width, column.copy);
    for (std::size_t row = nbPacked; row < nbPadded; ++row)
    {
        VALTYPE value;
        readRow(column.source, firstRow + std::min(row, nbRows - 1), value);
        std::copy_n(&value.x, column.width, column.copy + row * column.width);
    }
}

void MTTileWorker::writeRows(std::size_t firstRow, std::size_t nbRows, const double* values) const noexcept
{
    const std::size_t width = program.places[columns.size()].width;
    VALTYPE value = program.rootHead;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        std::copy_n(values + row * width, width, &value.x);
        writer.write(firstRow + row, value);
    }
}
