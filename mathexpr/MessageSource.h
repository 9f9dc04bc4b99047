// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageSource.h - where the texts of the messages come from: on Windows the string resources of the resource library
// (StartUpWindows.cpp), elsewhere the built-in table (BuiltInMessages.cpp).
#pragma once

#include <cstdint>
#include <string>

/// The text of a message in the user's language; empty when there is none.
std::wstring loadMessage(std::uint32_t id);
