// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NamedValue.h - a name that has a value.
#pragma once

#include "mathexpr/ValType.h"

#include <string>

struct NamedValue
{
    std::wstring name;
    VALTYPE value;
};
