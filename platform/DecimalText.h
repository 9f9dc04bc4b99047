// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DecimalText.h - reads numbers as the standard library's from_chars does: rounded to nearest, whatever the locale.
#pragma once

#include <string_view>

namespace platform {

/// @param text  digits, with a point among them or not
/// @return false, with a meaningless value, where the number is too large for a double or too small
bool readDecimal(std::string_view text, double& value) noexcept;

}
