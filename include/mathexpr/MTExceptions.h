// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTExceptions.h - the exceptions of the library: a list of entries, the newest first.
//
// There are two kinds. MTExceptions<SMTDefExcepData> is thrown for a failed definition. MTExceptions<SMTParsingExcepData> is
// thrown for an expression that does not compile and for an argument of the wrong kind. They are thrown by value. A layer that
// catches one can add an entry and rethrow it: the last entry is where the failure began, entry 0 the latest place that it
// passed.
#pragma once

#include "mathexpr/Export.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A failure: where it was raised, where it passed, and a record of its cause.
template <class Data>
class MATHEXPR_EXCEPTION MTExceptions
{
public:
    struct Entry
    {
        std::uint32_t line;      ///< Source line that raised or rethrew the exception.
        std::uint32_t reserved;  ///< 0 in all exceptions that the library raises.
        std::wstring file;       ///< Source file, such as "MTParserLib/MTParserCompiler".
        Data data;               ///< The cause.
    };

    MTExceptions(std::uint32_t line, std::uint32_t reserved, const std::wstring& file, const Data& data)
    {
        addEntry(line, reserved, file, data);
    }

    /// Inserts an entry before all others.
    void addEntry(std::uint32_t line, std::uint32_t reserved, const std::wstring& file, const Data& data)
    {
        entries.insert(entries.begin(), Entry{line, reserved, file, data});
    }

    std::vector<Entry> entries;  ///< Never empty; entry 0 is the newest.
};
