// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Compiles.h - whether an object takes a text, where the reason does not matter.
#pragma once

#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <string>

/// What is raised in place of an answer counts as a refusal.
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
