// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTBulkArrays.h - reads rows of columns and writes rows of results, with any strides.
#pragma once

#include "mathexpr/BulkArrays.h"
#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstring>
#include <limits>

/// A column and its variable.
struct MTBoundColumn
{
    const VALTYPE* variable;  ///< The address from which the program reads.
    mathexpr::BulkColumn column;
};

inline double readNumber(const double* data, std::ptrdiff_t offset) noexcept
{
    const void* const place = reinterpret_cast<const char*>(data) + offset;
    return *static_cast<const double*>(place);
}

/// Byte offset of a row from the first row.
inline std::ptrdiff_t offsetOf(std::size_t row, std::ptrdiff_t stride) noexcept
{
    return static_cast<std::ptrdiff_t>(row) * stride;
}

/// Copies the value of a row to a variable. The record must hold a value of the same column, or be all zero.
inline void readRow(const mathexpr::BulkColumn& column, std::size_t row, VALTYPE& variable) noexcept
{
    const std::ptrdiff_t offset = offsetOf(row, column.stride);
    variable.x = readNumber(column.data, offset);
    if (column.kind == mathexpr::BulkKind::Point)
    {
        variable.type = 1;
        variable.y = readNumber(column.data, offset + column.coordinateStride);
        variable.z = readNumber(column.data, offset + 2 * column.coordinateStride);
    }
}

/// Writes the rows of results.
class MTBulkWriter
{
public:
    MTBulkWriter() noexcept = default;
    explicit MTBulkWriter(const mathexpr::BulkResults& target) noexcept : results(target) {}

    /// Whether the results accept points, or numbers.
    bool takes(bool isPoint) const noexcept
    {
        return results.kind == mathexpr::BulkKind::Record || isPoint == (results.kind == mathexpr::BulkKind::Point);
    }

    /// Whether the rows are contiguous, as numbers (width 1) or points (3).
    bool isPacked(std::size_t width) const noexcept
    {
        constexpr auto number = static_cast<std::ptrdiff_t>(sizeof(double));
        return width == 1 ? results.kind == mathexpr::BulkKind::Number && results.stride == number
                          : results.kind == mathexpr::BulkKind::Point && results.stride == 3 * number &&
                                results.coordinateStride == number;
    }

    /// The address of a row if the rows are packed; otherwise null.
    double* packedValues(std::size_t row, std::size_t width) const noexcept
    {
        return isPacked(width) ? static_cast<double*>(results.data) + row * width : nullptr;
    }

    /// @return false, with nothing written, if the results do not accept the value's kind
    bool write(std::size_t row, const VALTYPE& value) const noexcept
    {
        const bool isPoint = value.type != 0;
        switch (results.kind)
        {
        case mathexpr::BulkKind::Number:
            if (isPoint)
            {
                return false;
            }
            writeNumber(row, 0, value.x);
            return true;
        case mathexpr::BulkKind::Point:
            if (!isPoint)
            {
                return false;
            }
            writeNumber(row, 0, value.x);
            writeNumber(row, results.coordinateStride, value.y);
            writeNumber(row, 2 * results.coordinateStride, value.z);
            return true;
        default:
            std::memcpy(addressOf(row, 0), &value, sizeof(value));
            return true;
        }
    }

    void writeFailure(std::size_t row) const noexcept
    {
        VALTYPE nothing;
        nothing.type = results.kind == mathexpr::BulkKind::Point ? 1 : 0;
        nothing.x = nothing.y = nothing.z = std::numeric_limits<double>::quiet_NaN();
        if (results.kind == mathexpr::BulkKind::Record)
        {
            nothing.y = nothing.z = 0.0;
        }
        write(row, nothing);
    }

private:
    void* addressOf(std::size_t row, std::ptrdiff_t offset) const noexcept
    {
        return static_cast<char*>(results.data) + offsetOf(row, results.stride) + offset;
    }
    void writeNumber(std::size_t row, std::ptrdiff_t offset, double number) const noexcept
    {
        *static_cast<double*>(addressOf(row, offset)) = number;
    }

    mathexpr::BulkResults results;
};
