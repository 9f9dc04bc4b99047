// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Interrupt.cpp - Interrupt.h for Windows and for POSIX systems.

#include "tools/calc/terminal/Interrupt.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t interrupted = 0;

void noteInterrupt(int)
{
    interrupted = 1;
}

}

bool wasInterrupted()
{
    return interrupted != 0;
}

bool takeInterrupt()
{
    const bool taken = interrupted != 0;
    interrupted = 0;
    return taken;
}

#if defined(_WIN32)

void noteInterrupts()
{
    std::signal(SIGINT, noteInterrupt);
}

void noteEveryInterrupt() {}

void failOnClosedPipes() {}

#else

namespace {

void noteInterruptsWith(int flags)
{
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = flags;
    sigaction(SIGINT, &action, nullptr);
}

}

void noteInterrupts()
{
    noteInterruptsWith(static_cast<int>(SA_RESETHAND));
}

void noteEveryInterrupt()
{
    noteInterruptsWith(0);
}

void failOnClosedPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

#endif
