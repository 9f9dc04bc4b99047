// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlainReader.cpp - for terminals that cannot move the cursor, and for builds without a line editor.
#include "tools/calc/prompt/LineReader.h"
#include "tools/calc/terminal/Interrupt.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

namespace {

class PlainReader final : public LineReader
{
public:
    void offer(const std::string&) override {}

    std::optional<std::string> readLine() override
    {
        std::cout << "> " << std::flush;
        std::string line;
        for (;;)
        {
            const int unit = std::getc(stdin);
            if (unit == '\n')
            {
                return line;
            }
            if (unit != EOF)
            {
                line += static_cast<char>(unit);
                continue;
            }
            if (std::ferror(stdin) != 0 && errno == EINTR)
            {
                std::clearerr(stdin);
                if (takeInterrupt())
                {
                    std::cout << "\n> " << std::flush;
                    line.clear();
                }
                continue;
            }
            std::cout << std::endl;
            return line.empty() ? std::nullopt : std::optional(line);
        }
    }
};

}

std::unique_ptr<LineReader> makePlainReader()
{
    return std::make_unique<PlainReader>();
}
