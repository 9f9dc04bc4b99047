// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageSource.h - loads message texts: on Windows from the string resources of the resource library
// (StartUpWindows.cpp), elsewhere from the built-in table (BuiltInMessages.cpp).
#pragma once

#include <cstdint>
#include <string>

/// The text of a message in the user's language; empty if there is none.
std::wstring loadMessage(std::uint32_t id);
