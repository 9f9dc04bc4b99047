// session_fuzzer.cpp - any sequence of calls on one object.
#include "fuzz/Comparison.h"
#include "fuzz/FuzzInput.h"

#include <array>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array<const wchar_t*, 5> names{L"x", L"y", L"p", L"q", L"a"};
    FuzzInput input(data, size);
    Comparison comparison(input.below(2) == 1);
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
