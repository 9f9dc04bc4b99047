// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTCompileErrors.h - the list of compile errors: exception code, message, and what would have been accepted instead.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cstdint>

/// A compile error: the exception's code, the message for the user, and the accepted alternatives.
struct MTCompileError
{
    std::uint32_t exID;
    Message::Id message;
    std::uint32_t expected;  ///< Bits of Expected, or continuation.
};

namespace CompileError {

namespace Expected = mathexpr::Expected;
namespace ParsingError = mathexpr::ParsingError;

/// What may follow a value: an operator, and whatever ends the argument or the text, depending on the open brackets.
inline constexpr std::uint32_t continuation = 0x80000000;

inline constexpr std::uint32_t anyInBracket = Expected::Operator | Expected::ClosingBracket | Expected::Separator;
inline constexpr std::uint32_t anyOutside = Expected::Operator | Expected::End;

// clang-format off
//                             error                     exception                                message                     expected
// ------------------------------------------------------------------------------------------------------------------------------------
inline constexpr MTCompileError bracketAfterBracket      {ParsingError::OperatorMisplaced,        Message::InvalidExpression, continuation};
inline constexpr MTCompileError operatorWithoutLeft      {ParsingError::OperatorMisplaced,        Message::InvalidExpression, Expected::Value};
inline constexpr MTCompileError operatorNotBinary        {ParsingError::OperatorMisplaced,        Message::InvalidExpression, continuation};
inline constexpr MTCompileError operandMissing           {ParsingError::OperandMissing,           Message::InvalidExpression, Expected::Value};
inline constexpr MTCompileError closingWithoutOpening    {ParsingError::ClosingWithoutOpening,    Message::InvalidExpression, anyOutside};
inline constexpr MTCompileError separatorOutsideBrackets {ParsingError::SeparatorOutsideBrackets, Message::InvalidExpression, anyOutside};
inline constexpr MTCompileError bracketNotClosed         {ParsingError::BracketNotClosed,         Message::BracketNotClosed,  anyInBracket};
inline constexpr MTCompileError noOverload               {ParsingError::NoOverload,               Message::InvalidExpression, Expected::OtherCount};
inline constexpr MTCompileError noExpression             {ParsingError::NoExpression,             Message::InvalidExpression, Expected::Value};
inline constexpr MTCompileError valueAfterValue          {ParsingError::ValueAfterValue,          Message::InvalidExpression, continuation};
inline constexpr MTCompileError unknownFunction          {ParsingError::UnknownFunction,          Message::UnknownFunction,   Expected::Function};
inline constexpr MTCompileError unknownName              {ParsingError::UnknownName,              Message::UnknownName,       Expected::KnownName};
inline constexpr MTCompileError argumentEmpty            {ParsingError::ArgumentEmpty,            Message::InvalidExpression, Expected::Value};
inline constexpr MTCompileError assignmentAfterValue     {ParsingError::ArgumentEmpty,            Message::InvalidExpression, continuation};
inline constexpr MTCompileError assignmentForValue       {ParsingError::ArgumentEmpty,            Message::InvalidExpression, Expected::Value};
inline constexpr MTCompileError programBroken            {ParsingError::Structure,                Message::InvalidExpression, Expected::Value};
inline constexpr MTCompileError textTooLong              {ParsingError::TextTooLong,              Message::InvalidExpression, Expected::Less};
inline constexpr MTCompileError tooManyRecords           {ParsingError::TooManyRecords,           Message::InvalidExpression, Expected::Less};
inline constexpr MTCompileError nestedTooDeep            {ParsingError::NestedTooDeep,            Message::InvalidExpression, Expected::Less};
// clang-format on

}

/// What an item that refuses its arguments would have accepted: bits of Expected; 0 for all other messages.
constexpr std::uint32_t expectedInsteadOf(Message::Id refusal) noexcept
{
    switch (refusal)
    {
    case Message::NumberWithPoint:
        return mathexpr::Expected::SameKind;
    case Message::DivisionByPoint:
    case Message::PowerOfPoint:
        return mathexpr::Expected::Number;
    case Message::DistNeedsPoints:
    case Message::NorNeedsPoints:
    case Message::VecNeedsPoints:
    case Message::Vec1NeedsPoints:
    case Message::IllNeedsPoints:
        return mathexpr::Expected::Point;
    case Message::ArcDomain:
    case Message::RoundDomain:
    case Message::LnDomain:
    case Message::LogDomain:
    case Message::DivisionByZero:
    case Message::SqrtDomain:
        return mathexpr::Expected::InDomain;
    default:
        return 0;
    }
}
