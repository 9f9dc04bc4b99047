// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlatformPosix.cpp - Platform.h for Linux and other POSIX systems.

#include "platform/Platform.h"
#include "platform/Unicode.h"

#include <cerrno>
#include <string>

#include <unistd.h>

namespace {

// Uses the descriptors directly, since the host's streams may be in any state, such as wide orientation.

void writeToStandardError(std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t written = write(STDERR_FILENO, bytes.data(), bytes.size());
        if (written > 0)
        {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        else if (errno != EINTR)
        {
            return;
        }
    }
}

void waitForEnter()
{
    char c = '\0';
    ssize_t count = 0;
    do
    {
        count = read(STDIN_FILENO, &c, 1);
    } while ((count == 1 && c != '\n') || (count < 0 && errno == EINTR));
}

}

bool platform::isSameName(std::wstring_view left, std::wstring_view right) noexcept
{
    return left == right;
}

void platform::showMessageBox(const wchar_t* text)
{
    const bool userIsPresent = isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1;
    writeToStandardError(toUtf8(text) + (userIsPresent ? " [Enter]" : "\n"));
    if (userIsPresent)
    {
        waitForEnter();
    }
}
