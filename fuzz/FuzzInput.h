// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FuzzInput.h - converts a fuzzer's bytes to decisions and texts.
#pragma once

#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) noexcept : bytes(data, size) {}

    bool isAtEnd() const noexcept { return at == bytes.size(); }

    /// The next byte; 0 at the end.
    std::uint8_t byte() noexcept { return isAtEnd() ? std::uint8_t{0} : bytes[at++]; }

    /// A number less than bound.
    std::uint32_t below(std::uint32_t bound) noexcept { return byte() % bound; }

    /// A text up to the next zero byte. A byte below 128 is that character; a higher one is a piece of the language, so
    /// that the fuzzer can insert long names in one step.
    std::wstring text();

    /// Characters of all kinds up to the next zero byte, for names and symbols.
    std::wstring name();

    /// A number or a point; includes values at which functions change their behaviour.
    VALTYPE value() noexcept;

private:
    std::span<const std::uint8_t> bytes;
    std::size_t at = 0;
};
