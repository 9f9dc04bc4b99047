// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitAnswer.h - the line that answers a question about units: the expression that computes it, and its value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Such as "i2mm(3) = 76.2" for "3 inch to mm"; empty where the text asks nothing of the kind.
/// @param digits  of the value
std::string unitAnswer(std::string_view text, std::uint32_t digits);
