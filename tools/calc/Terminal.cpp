// Terminal.cpp - Terminal.h on Windows and on POSIX systems.

#include "tools/calc/Terminal.h"

#if defined(_WIN32)

#include <cstdio>

#include <io.h>

bool standardInputIsTerminal()
{
    return _isatty(_fileno(stdin)) != 0;
}

bool standardErrorIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

#else

#include <unistd.h>

bool standardInputIsTerminal()
{
    return isatty(STDIN_FILENO) == 1;
}

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

#endif
