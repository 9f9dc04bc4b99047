// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableSource.cpp - TableSource.h for Windows and for POSIX systems. Streams are not used, because they wait until
// their buffer is full.

#include "tools/calc/table/TableSource.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#if defined(_WIN32)

#include "tools/calc/text/Utf8.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

namespace {

int openToRead(const std::string& name)
{
    return _wopen(toWide(name).value_or(std::wstring()).c_str(), _O_RDONLY | _O_BINARY);
}

int standardInput()
{
    _setmode(_fileno(stdin), _O_BINARY);
    return _fileno(stdin);
}

int readBytes(int descriptor, char* buffer, std::size_t size)
{
    constexpr std::size_t most = std::size_t{1} << 30;
    return _read(descriptor, buffer, static_cast<unsigned>(std::min(size, most)));
}

void closeAgain(int descriptor)
{
    _close(descriptor);
}

bool waitForInput(int)
{
    return true;  // read waits
}

}

#else

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

int openToRead(const std::string& name)
{
    return open(name.c_str(), O_RDONLY | O_CLOEXEC);
}

int standardInput()
{
    return STDIN_FILENO;
}

ssize_t readBytes(int descriptor, char* buffer, std::size_t size)
{
    return read(descriptor, buffer, size);
}

void closeAgain(int descriptor)
{
    close(descriptor);
}

bool waitForInput(int descriptor)
{
    constexpr int moment = 100;  // milliseconds
    pollfd waited{descriptor, POLLIN, 0};
    return poll(&waited, 1, moment) != 0;  // read reports failures
}

}

#endif

TableSource::TableSource(const std::string& name)
    : descriptor(name == "-" ? standardInput() : openToRead(name)), isOwned(name != "-")
{
    if (descriptor < 0)
    {
        throw std::system_error(errno, std::generic_category());
    }
}

TableSource::~TableSource()
{
    if (isOwned)
    {
        closeAgain(descriptor);
    }
}

bool TableSource::hasInput()
{
    return waitForInput(descriptor);
}

std::optional<std::size_t> TableSource::read(char* buffer, std::size_t size)
{
    const auto count = readBytes(descriptor, buffer, size);
    return count < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(count));
}
