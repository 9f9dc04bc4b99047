// NamedValue.h - a name that has a value.
#pragma once

#include "mathexpr/ValType.h"

#include <string>

struct NamedValue
{
    std::wstring name;
    VALTYPE value;
};
