// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SMTDefExcepData.h - what could not be defined, and what stood in its way.
#pragma once

#include "mathexpr/MTExceptions.h"

/// Codes of a refused definition. The numbers are part of the interface.
namespace mathexpr::DefinitionError {
enum : std::uint32_t
{
    SeparatorIsDecimalPoint = 0,
    SeparatorIsPointBracket = 1,
    DecimalPointIsPointBracket = 2,
    OperatorAlreadyDefined = 3,
    OperatorSymbolEmpty = 4,
    OperatorContainsSyntaxCharacter = 5,
    OperatorPrecedenceTooHigh = 6,
    FunctionAlreadyDefined = 7,
    FunctionSymbolEmpty = 8,
    FunctionContainsSyntaxCharacter = 9,
    FunctionContainsOperatorSymbol = 10,
    VariableAlreadyDefined = 11,
    VariableNameEmpty = 12,
    VariableNameIsNumber = 13,
    VariableNameIsConstant = 14,
    VariableContainsSyntaxCharacter = 15,
    VariableNotDefined = 16,
    ConstantAlreadyDefined = 17,
    ConstantNameEmpty = 18,
    ConstantNameIsNumber = 19,
    ConstantContainsSyntaxCharacter = 20,
    ConstantContainsOperatorSymbol = 21,
    ConstantNameIsVariable = 22,
};
}

/// The record of an exception of the definition kind.
struct MATHEXPR_EXCEPTION SMTDefExcepData
{
    std::uint32_t exID = 0;         ///< One of mathexpr::DefinitionError.
    std::wstring itemName;          ///< The symbol or name being defined, or the first of two characters in conflict.
    std::wstring conflictItemName;  ///< What it collides with; empty where there is nothing.
};

namespace mathexpr {

using DefinitionException = MTExceptions<SMTDefExcepData>;

}
