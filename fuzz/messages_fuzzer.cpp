// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// messages_fuzzer.cpp - the table of texts, with any number and any locale name.
#include "MathExprRes/MessageTexts.h"
#include "fuzz/FuzzInput.h"

#include <cstdlib>
#include <cwchar>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const std::uint32_t id = input.byte() | (input.below(2) == 1 ? 0xFFFFFF00U : 0U);
    const std::string_view locale(reinterpret_cast<const char*>(data), size);
    const wchar_t* const text = messageText(id, languageOfLocale(locale));
    const bool exists = (id >= 1 && id <= 19) || (id >= 101 && id <= 119);  // messages and hints
    if (exists != (text != nullptr) || (exists && std::wcslen(text) == 0))
    {
        std::abort();
    }
    return 0;
}
