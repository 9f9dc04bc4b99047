// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// throwing_host.cpp - see throwing_host.h.
#include "tests/c/throwing_host.h"

#include <cstdint>
#include <new>
#include <stdexcept>

// One throws an exception type of the library, the others unknown types.

std::int32_t throwing_lookup(void*, const char*, std::size_t, mathexpr_value*)
{
    throw std::runtime_error("the drawing is closed");
}

std::int32_t throwing_lookup16(void*, const mathexpr_char16*, std::size_t, mathexpr_value*)
{
    throw std::bad_alloc();
}

void throwing_show(void*, std::uint32_t, const char*, std::size_t)
{
    throw 42;
}

const char* throwing_get_name(void*, std::uint32_t)
{
    throw std::runtime_error("the drawing is closed");
}

std::int32_t throwing_get_notes(void*, const char*, std::size_t, mathexpr_name_notes_utf8*)
{
    throw 42;
}
