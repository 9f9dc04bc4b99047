// Interrupt.cpp - Interrupt.h on Windows and on POSIX systems.

#include "tools/calc/Interrupt.h"

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

#if defined(_WIN32)

void noteInterrupts()
{
    std::signal(SIGINT, noteInterrupt);
}

void failOnClosedPipes() {}

#else

void noteInterrupts()
{
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
}

void failOnClosedPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

#endif
