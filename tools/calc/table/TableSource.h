// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableSource.h - the bytes of a file or of standard input, as they come.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

class TableSource
{
public:
    /// @param name  of the file, UTF-8; "-" is standard input
    /// @throws std::system_error  where the file cannot be opened
    explicit TableSource(const std::string& name);
    TableSource(const TableSource&) = delete;
    TableSource& operator=(const TableSource&) = delete;
    ~TableSource();

    /// Waits for bytes for a moment, so that the caller can look around meanwhile.
    /// @return whether read has something to return
    bool hasInput();

    /// Waits for bytes and reads some, at most size.
    /// @return how many; 0 at the end; nothing where reading fails or is interrupted, as errno tells
    std::optional<std::size_t> read(char* buffer, std::size_t size);

private:
    int descriptor;
    bool isOwned;
};
