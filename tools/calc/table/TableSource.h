// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableSource.h - reads the bytes of a file or of standard input as they arrive.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

class TableSource
{
public:
    /// @param name  of the file, UTF-8; "-" is standard input
    /// @throws std::system_error  if the file cannot be opened
    explicit TableSource(const std::string& name);
    TableSource(const TableSource&) = delete;
    TableSource& operator=(const TableSource&) = delete;
    ~TableSource();

    /// Waits a moment for bytes, so that the caller can do other work meanwhile.
    /// @return whether read would return at once
    bool hasInput();

    /// Waits for bytes and reads at most size of them.
    /// @return the number of bytes; 0 at the end; nothing if reading fails or is interrupted, with errno set
    std::optional<std::size_t> read(char* buffer, std::size_t size);

private:
    int descriptor;
    bool isOwned;
};
