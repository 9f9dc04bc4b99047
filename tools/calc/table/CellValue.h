// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CellValue.h - the value of a cell of a table.
#pragma once

#include "mathexpr/ValType.h"

#include <optional>
#include <string>
#include <string_view>

/// The value of a cell: a number, independent of the locale, or a point such as [1,2,3] or [1,2]; surrounding blanks
/// are ignored. A number out of range is 0 or infinity, as in an expression. Nothing if the cell is neither.
/// @param decimalComma  whether numbers outside points have a decimal comma
std::optional<VALTYPE> cellValue(std::string_view cell, bool decimalComma = false);

/// Why a cell has no value, and how to correct it.
std::string cellComplaint(std::string_view cell, bool decimalComma);
