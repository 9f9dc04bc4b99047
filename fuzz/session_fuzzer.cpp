// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// session_fuzzer.cpp - arbitrary calls on one object, or on calculators that are copies of each other.
#include "fuzz/Comparison.h"
#include "fuzz/FuzzInput.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

/// Copies share variables and program, so any of them behaves like the reference's single session. Only a refused
/// assignment stays pending in the copy that made it.
void playCalculators(FuzzInput& input)
{
    constexpr std::size_t mostCopies = 5;
    constexpr VALTYPE untouched{1, 1, 0x5A5A, 0xA5A5A5A5, 12345.678, -9876.5, 0.03125};
    constexpr std::array<std::uint32_t, 4> limits{2147483647, 0, 5, 4294967295};
    reference::EngineCalculator library;
    reference::Session reference(false);
    while (!input.isAtEnd())
    {
        const std::uint32_t what = input.below(8);
        const std::size_t asked = input.byte() % library.nbCopies();
        if (what == 0 && library.nbCopies() < mostCopies)
        {
            library.copy(asked);
        }
        else if (what == 1 && library.nbCopies() > 1)
        {
            library.destroy(asked);
        }
        else if (what == 2)
        {
            library.assign(asked, input.byte() % library.nbCopies());
        }
        else
        {
            const std::wstring text = input.text();
            const std::uint32_t limit = limits[what % limits.size()];
            std::srand(1);
            const reference::Outcome ofLibrary = library.calculate(text, untouched, limit, asked);
            std::srand(1);
            const reference::Outcome ofReference = reference.calculate(text, untouched, limit);
            if (!reference::sameOutcome(ofLibrary, ofReference))
            {
                std::fprintf(stderr, "calculate %s by copy %zu  ->  %s\nbut expected: %s\n",
                             reference::printable(text).c_str(), asked, reference::describe(ofLibrary).c_str(),
                             reference::describe(ofReference).c_str());
                std::abort();
            }
            library.dropAssignment(asked);
            reference.dropAssignment();
        }
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array<const wchar_t*, 5> names{L"x", L"y", L"p", L"q", L"a"};
    constexpr std::uint8_t firstOfCalculators = 192;
    FuzzInput input(data, size);
    const std::uint8_t kind = input.byte();
    if (kind >= firstOfCalculators)
    {
        playCalculators(input);
        return 0;
    }
    Comparison comparison(kind % 2 == 1);
    while (!input.isAtEnd())
    {
        switch (input.below(6))
        {
        case 0:
        case 1:
            comparison.setExpression(input.text());
            break;
        case 2:
        case 3:
            comparison.evaluate();
            break;
        case 4: {
            const wchar_t* name = names[input.below(names.size())];
            comparison.changeVariable(name, input.value());
            break;
        }
        default:
            comparison.dropAssignment();
            break;
        }
    }
    comparison.expectUsable();
    return 0;
}
