// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.h - how a value is written for people.
#pragma once

#include "mathexpr/ValType.h"

#include <string>

/// The shortest text that reads back to the same double, in any locale; "-0", "nan", "inf" and "-inf" where they apply.
std::string numberText(double number);

/// The 16 hexadecimal digits of a double, the most significant first.
std::string bitsText(double number);

/// A number as such, a point as [x,y,z].
std::string valueText(const VALTYPE& value);
