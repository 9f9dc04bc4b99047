// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitAnswer.h - answers a question about units: the expression that computes it, and its value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// For example "i2mm(3) = 76.2" for "3 inch to mm"; empty if the text is not such a question.
/// @param digits  of the value
std::string unitAnswer(std::string_view text, std::uint32_t digits);
