// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Compiles.h - whether an object accepts a text.
#pragma once

#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <string>

/// An exception counts as a refusal.
inline bool compiles(MathExpression& expression, const std::wstring& text)
{
    try
    {
        return expression.setExpression(text.c_str());
    }
    catch (const mathexpr::ParsingException&)
    {
        return false;
    }
    catch (const mathexpr::DefinitionException&)
    {
        return false;
    }
}
