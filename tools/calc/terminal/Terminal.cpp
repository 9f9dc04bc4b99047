// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Terminal.cpp - Terminal.h for Windows and for POSIX systems.

#include "tools/calc/terminal/Terminal.h"

namespace {

constexpr std::size_t usualColumns = 80;
constexpr std::size_t usualLines = 24;

}

#if defined(_WIN32)

#include <cstdio>

#include <io.h>
#include <windows.h>

bool standardInputIsTerminal()
{
    return _isatty(_fileno(stdin)) != 0;
}

bool standardOutputIsTerminal()
{
    return _isatty(_fileno(stdout)) != 0;
}

bool standardErrorIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

std::size_t terminalColumns()
{
    CONSOLE_SCREEN_BUFFER_INFO screen;
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &screen) == 0)
    {
        return usualColumns;
    }
    return static_cast<std::size_t>(screen.srWindow.Right - screen.srWindow.Left + 1);
}

std::size_t terminalLines()
{
    return usualLines;  // nothing is paged there
}

#else

#include <sys/ioctl.h>
#include <unistd.h>

bool standardInputIsTerminal()
{
    return isatty(STDIN_FILENO) == 1;
}

bool standardOutputIsTerminal()
{
    return isatty(STDOUT_FILENO) == 1;
}

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

std::size_t terminalColumns()
{
    winsize size = {};
    const bool told = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return told ? size.ws_col : usualColumns;
}

std::size_t terminalLines()
{
    winsize size = {};
    const bool told = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row != 0;
    return told ? size.ws_row : usualLines;
}

#endif
