// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.h - the units that functions convert between, and those of angles.
#pragma once

#include <string_view>

namespace mathexpr::editor {

/// The unit of a function's argument, such as "inch" of "i2mm" and "degree" of "sin"; empty where it has none.
std::wstring_view unitOfArgument(std::wstring_view function) noexcept;

/// The unit of its result.
std::wstring_view unitOfResult(std::wstring_view function) noexcept;

}
