// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// expression_fuzzer.cpp - one text, compiled and evaluated in both modes, with its variables changed in between.
#include "fuzz/Comparison.h"
#include "fuzz/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const VALTYPE changed = input.value();
    const std::wstring text = input.text();
    for (const bool silent : {false, true})
    {
        Comparison comparison(silent);
        comparison.setExpression(text);
        comparison.evaluate();
        comparison.evaluate();
        comparison.changeVariable(L"x", changed);
        comparison.evaluate();
        comparison.changeVariable(L"x", VALTYPE{});
        comparison.evaluate();
        comparison.expectUsable();
    }
    return 0;
}
