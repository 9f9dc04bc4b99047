// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTSpan.h - a span of a text.
#pragma once

#include <cstddef>

struct MTSpan
{
    std::size_t begin = 0;
    std::size_t end = 0;  ///< One past the last character.

    bool isEmpty() const noexcept { return begin == end; }
};
