// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SMTParsingExcepData.h - the data of a failed compilation.
#pragma once

#include "mathexpr/MTExceptions.h"

/// Reasons why a text does not compile, or an argument is refused. The numbers are part of the interface.
namespace mathexpr::ParsingError {
enum : std::uint32_t
{
    OperatorMisplaced = 0,         ///< An operator where it has no such form (unary, binary), or ")" before "(".
    OperandMissing = 3,            ///< An operator at the end, or before ")" or a separator.
    ClosingWithoutOpening = 4,     ///< ")" without "(".
    SeparatorOutsideBrackets = 5,  ///< An argument separator outside brackets.
    BracketNotClosed = 6,          ///< "(" that is never closed.
    NoOverload = 7,                ///< No overload of the function takes that many arguments.
    NoExpression = 8,              ///< Nothing to compile.
    ValueAfterValue = 9,           ///< A value right after a value.
    UnknownFunction = 10,          ///< A name before "(" that is not a function.
    UnknownName = 11,              ///< A name that nothing defines.
    ArgumentEmpty = 12,            ///< "()", an empty argument, or "=" while something waits for an operand.
    ArgumentKind = 15,             ///< A point where a function needs a number.
    Structure = 16,                ///< An operand is missing where the program needs one.
    TextTooLong = 17,              ///< The text is longer than the host allows.
    TooManyRecords = 18,           ///< More values, operators and calls than the host allows.
    NestedTooDeep = 19,            ///< Deeper nesting than the host allows.
};
}

/// Data of a parsing exception.
struct MATHEXPR_EXCEPTION SMTParsingExcepData
{
    std::uint32_t exID = 0;    ///< One of mathexpr::ParsingError.
    std::uint32_t pos = 0;     ///< Position in the rewritten text, or 0 if unknown. For a token or a function, and with
                               ///< code 0, it counts from 1; for a bracket, a separator or an operator, from 0.
                               ///< With codes 17 to 19 it counts from 0 in the text as typed.
    std::wstring itemName;     ///< The token, symbol or expression concerned; may be empty.
    std::uint32_t nbArgs = 0;  ///< With code 7: number of arguments in the call.
    std::uint32_t reserved = 0;  ///< Never set.
    std::wstring reservedName;   ///< Never set.
};

namespace mathexpr {

using ParsingException = MTExceptions<SMTParsingExcepData>;

}
