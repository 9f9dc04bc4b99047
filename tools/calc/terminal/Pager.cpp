// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Pager.cpp - see Pager.h.
#include "tools/calc/terminal/Pager.h"

#include "tools/calc/terminal/Interrupt.h"
#include "tools/calc/terminal/Terminal.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace {

#if !defined(_WIN32)

/// @return whether the text has been shown
bool showIn(const char* pager, const std::string& text)
{
    // For colours and short texts. The user's own LESS variable takes precedence.
    setenv("LESS", "FRX", 0);                     // NOLINT(concurrency-mt-unsafe): the prompt has one thread
    failOnClosedPipes();                          // the user may quit the pager early
    std::FILE* const stream = popen(pager, "w");  // NOLINT(cert-env33-c): the user's own command
    if (stream == nullptr)
    {
        return false;
    }
    std::fwrite(text.data(), 1, text.size(), stream);
    constexpr int notFound = 127;  // exit status of a shell
    const int status = pclose(stream);
    return !WIFEXITED(status) || WEXITSTATUS(status) != notFound;
}

bool showInPager(const std::string& text)
{
    const char* const wanted = std::getenv("PAGER");  // NOLINT(concurrency-mt-unsafe): nothing changes it
    return (wanted != nullptr && *wanted != '\0' && showIn(wanted, text)) || showIn("less 2>/dev/null", text);
}

#else

bool showInPager(const std::string&)
{
    return false;
}

#endif

}

void showPaged(const std::string& text)
{
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n'));
    std::cout.flush();
    if (!standardInputIsTerminal() || !standardOutputIsTerminal() || lines < terminalLines() || !showInPager(text))
    {
        std::cout << text;
    }
}
