// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitNames.h - the units that functions convert between, and those of angles.
#pragma once

#include "mathexpr/VocabularyUnits.h"

#include <string_view>

namespace mathexpr::editor {

/// The unit of a function's argument, such as the inch of "i2mm" and the degree of "sin"; null where it has none.
const VocabularyUnit* unitOfArgument(std::wstring_view function) noexcept;

/// The unit of its result.
const VocabularyUnit* unitOfResult(std::wstring_view function) noexcept;

/// Such as "inch"; empty for null.
std::wstring_view nameOf(const VocabularyUnit* unit) noexcept;

/// Whether one of the names that people give a unit begins so, or a word in it does; see NameMatch.h.
bool isMeant(const VocabularyUnit& unit, std::wstring_view typed) noexcept;

}
