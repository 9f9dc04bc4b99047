// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DecimalText.cpp - see DecimalText.h. Some standard libraries have from_chars for integers only, such as LLVM's until
// version 20; the header-only library fast_float stands in for them then.

#include "platform/DecimalText.h"

#include <charconv>
#include <system_error>

#if defined(__cpp_lib_to_chars)

namespace decimal = std;

#else

#include <fast_float/fast_float.h>

namespace decimal = fast_float;

#endif

bool platform::readDecimal(std::string_view text, double& value) noexcept
{
    const auto [end, error] = decimal::from_chars(text.data(), text.data() + text.size(), value);
    return error != std::errc::result_out_of_range;
}
