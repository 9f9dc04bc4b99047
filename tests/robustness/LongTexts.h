// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LongTexts.h - texts of any length, with parts repeated before and after a middle, and their expected outcome.
#pragma once

#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// A shape of texts: head, n times opening, middle, n times closing.
struct LongText
{
    /// A linear function of n.
    struct Line
    {
        double first = 0.0;
        double each = 0.0;

        double at(std::size_t n) const { return first + each * static_cast<double>(n); }
    };

    static constexpr std::uint32_t compiles = 0xFFFFFFFF;

    const char* name;
    const wchar_t* head;
    const wchar_t* opening;
    const wchar_t* middle;
    const wchar_t* closing;
    std::uint32_t code;    // of the failure, or compiles
    Line expected;         // the value for x = 1, or the position of the failure
    bool isPoint = false;  // whether the value is a point
    bool isNamed = false;  // whether the failure names all of the openings

    /// The number of repetitions for a text of about this length; even.
    std::size_t partsOf(std::size_t characters) const;

    std::wstring make(std::size_t parts) const;
};

std::span<const LongText> longTexts();
