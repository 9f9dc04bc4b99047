// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.h - units of conversions, and of angle arguments.
#pragma once

#include "mathexpr/VocabularyUnits.h"

#include <string_view>

namespace mathexpr::editor {

/// The unit of a function's argument, such as the inch for "i2mm" and the degree for "sin"; null if it has none.
const VocabularyUnit* unitOfArgument(std::wstring_view function) noexcept;

/// The unit of a function's result; null if it has none.
const VocabularyUnit* unitOfResult(std::wstring_view function) noexcept;

/// The singular, such as "inch"; empty for null.
std::wstring_view nameOf(const VocabularyUnit* unit) noexcept;

/// Whether one of the unit's names, or a word in one, begins with the typed word; see NameMatch.h.
bool isMeant(const VocabularyUnit& unit, std::wstring_view typed) noexcept;

}
