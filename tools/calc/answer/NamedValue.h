// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NamedValue.h - a name and its value.
#pragma once

#include "mathexpr/ValType.h"

#include <string>

struct NamedValue
{
    std::wstring name;
    VALTYPE value;
};
