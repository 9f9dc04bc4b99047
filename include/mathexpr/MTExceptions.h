// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTExceptions.h - how a failure travels: a list of entries, the newest first.
//
// Two kinds exist: MTExceptions<SMTDefExcepData> for something that could not be defined, and
// MTExceptions<SMTParsingExcepData> for an expression that could not be compiled or an argument of the wrong kind. They
// are thrown and caught by value. A layer that catches one may add an entry of its own and throw it on, so that entry 0
// says where the failure passed last and the last entry where it began.
#pragma once

#include "mathexpr/Export.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A failure with where it was raised, where it passed, and a record that tells what was wrong.
template <class Data>
class MATHEXPR_EXCEPTION MTExceptions
{
public:
    struct Entry
    {
        std::uint32_t line;      ///< Source line that raised the exception or passed it on.
        std::uint32_t reserved;  ///< 0 wherever the library raises an exception.
        std::wstring file;       ///< Source file, such as "MTParserLib/MTParserCompiler".
        Data data;               ///< What was wrong.
    };

    MTExceptions(std::uint32_t line, std::uint32_t reserved, const std::wstring& file, const Data& data)
    {
        addEntry(line, reserved, file, data);
    }

    /// Puts a new entry in front of the others.
    void addEntry(std::uint32_t line, std::uint32_t reserved, const std::wstring& file, const Data& data)
    {
        entries.insert(entries.begin(), Entry{line, reserved, file, data});
    }

    std::vector<Entry> entries;  ///< Never empty; entry 0 is the newest.
};
