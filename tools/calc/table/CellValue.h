// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CellValue.h - what a cell of a table is worth.
#pragma once

#include "mathexpr/ValType.h"

#include <optional>
#include <string>
#include <string_view>

/// The value of a cell: a number, read the same in every locale, or a point such as [1,2,3] or [1,2]; blanks around them do
/// not count. A number that no double holds is 0 or infinity, as in an expression. Nothing where it is neither.
/// @param decimalComma  whether numbers outside of points have a comma for their decimal mark
std::optional<VALTYPE> cellValue(std::string_view cell, bool decimalComma = false);

/// Why a cell has no value, and what to do about it.
std::string cellComplaint(std::string_view cell, bool decimalComma);
