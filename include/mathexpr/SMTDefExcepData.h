// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SMTDefExcepData.h - the data of a failed definition.
#pragma once

#include "mathexpr/MTExceptions.h"

/// Reasons for a refused definition. The numbers are part of the interface.
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

/// Data of a definition exception.
struct MATHEXPR_EXCEPTION SMTDefExcepData
{
    std::uint32_t exID = 0;         ///< One of mathexpr::DefinitionError.
    std::wstring itemName;          ///< The symbol or name to be defined, or the first of two conflicting characters.
    std::wstring conflictItemName;  ///< What it conflicts with; may be empty.
};

namespace mathexpr {

using DefinitionException = MTExceptions<SMTDefExcepData>;

}
