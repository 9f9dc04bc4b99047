// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileWorker.cpp - feeds columns and results to the tile code.
#include "MTParserLib/tiles/MTTileWorker.h"

#include <algorithm>

namespace {

constexpr std::size_t numbersPerLine = 8;  // of a cache line

bool isPacked(const mathexpr::BulkColumn& column) noexcept
{
    constexpr auto number = static_cast<std::ptrdiff_t>(sizeof(double));
    return column.kind == mathexpr::BulkKind::Number ? column.stride == number
                                                     : column.stride == 3 * number && column.coordinateStride == number;
}

}

MTTileWorker::MTTileWorker(const MTTileProgram& tileProgram, const MTParserProgram& source,
                           platform::ArrayView<const MTBoundColumn> boundColumns)
    : program(tileProgram), rows(source, boundColumns), tileRows(tileProgram.set.nbRows), args(tileProgram.mostArgs + 1)
{
    const std::size_t resultPlace = boundColumns.size();
    std::size_t total = 0;
    for (std::size_t place = resultPlace + 1; place < program.places.size(); ++place)
    {
        total += tileRows * program.places[place].width;
    }
    buffers.reserve(total);
    places.resize(program.places.size());
    for (std::size_t place = resultPlace + 1; place < places.size(); ++place)
    {
        const MTTileProgram::Place& description = program.places[place];
        places[place] = buffers.allocate(tileRows * description.width);
        for (std::size_t row = 0; description.uniform && row < tileRows; ++row)
        {
            std::copy_n(&description.value.x, description.width, places[place] + row * description.width);
        }
    }
    for (std::size_t place = 0; place <= resultPlace; ++place)
    {
        distances.push_back(tileRows * program.places[place].width);
    }
    columns.resize(resultPlace);
    context.places = places.data();
    context.nbRows = tileRows;
    context.args = args.data();
}

void MTTileWorker::bind(platform::ArrayView<const MTBoundColumn> bound, const mathexpr::BulkResults& results)
{
    rows.bind(bound, results);
    writer = MTBulkWriter(results);
    resultsFit = writer.takes(program.rootHead.type != 0);
    const std::size_t width = program.places[columns.size()].width;
    const std::size_t resultNumbers = movedRows(writer.isPacked(width)) * width;
    std::size_t total = resultNumbers;
    for (std::size_t j = 0; j < columns.size(); ++j)
    {
        columns[j] = {bound[j].column, program.places[j].width, isPacked(bound[j].column), nullptr};
        total += movedRows(columns[j].packed) * columns[j].width;
    }
    copies.reserve(total);
    for (Column& column : columns)
    {
        column.copy = copies.allocate(movedRows(column.packed) * column.width);
    }
    ownResults = copies.allocate(resultNumbers);
}

/// Considers aligned columns only: they may be read several times, and unaligned results cost nothing extra.
std::size_t MTTileWorker::getLeadRows() const noexcept
{
    const std::size_t vectorSize = tileRows / vectorsPerTile * sizeof(double);
    const auto countAligned = [&](std::size_t row) {
        return std::count_if(columns.begin(), columns.end(), [=](const Column& column) {
            const double* const first = column.source.data + row * column.width;
            return column.packed && reinterpret_cast<std::uintptr_t>(first) % vectorSize == 0;
        });
    };
    std::size_t best = 0;
    for (std::size_t row = 1; row < numbersPerLine; ++row)
    {
        best = countAligned(row) > countAligned(best) ? row : best;
    }
    return best;
}

void MTTileWorker::Memory::reserve(std::size_t count)
{
    numbers.resize(std::max(numbers.size(), count + numbersPerLine));
    const std::size_t misaligned = reinterpret_cast<std::uintptr_t>(numbers.data()) / sizeof(double) % numbersPerLine;
    nbAllocated = (numbersPerLine - misaligned) % numbersPerLine;
}

double* MTTileWorker::Memory::allocate(std::size_t count) noexcept
{
    double* const allocated = numbers.data() + nbAllocated;
    nbAllocated += count;
    return allocated;
}

bool MTTileWorker::evaluate(std::size_t firstRow, std::size_t nbRows, std::uint32_t* status)
{
    if (!resultsFit)
    {
        return rows.evaluate(firstRow, nbRows, status);
    }
    const std::size_t nbRest = nbRows % tileRows;
    const std::size_t nbWhole = nbRows - nbRest;
    const bool wholeDone = nbWhole == 0 || evaluateTiles(firstRow, nbWhole / tileRows, status);
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
            program.set.run(program.steps.data(), context, distances.data(), distances.size(), nbTiles - tile);
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

/// Pads with copies of the last row.
void MTTileWorker::copyRows(const Column& column, std::size_t firstRow, std::size_t nbRows,
                            std::size_t nbPadded) noexcept
{
    const std::size_t nbPacked = column.packed ? nbRows : 0;
    std::copy_n(column.source.data + firstRow * column.width, nbPacked * column.width, column.copy);
    for (std::size_t row = nbPacked; row < nbRows; ++row)
    {
        VALTYPE value;
        readRow(column.source, firstRow + row, value);
        std::copy_n(&value.x, column.width, column.copy + row * column.width);
    }
    double* const padding = column.copy + nbRows * column.width;
    double* const end = column.copy + nbPadded * column.width;
    if (column.width == 1)
    {
        std::fill(padding, end, padding[-1]);
    }
    else
    {
        for (double* point = padding; point != end; point += 3)
        {
            std::copy_n(padding - 3, 3, point);
        }
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
