// MTCompileErrors.h - every way in which a text may fail to compile: the code of the exception and the message.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cstdint>

/// What a failure is called in an exception, and which message tells the user instead.
struct MTCompileError
{
    std::uint32_t exID;
    Message::Id message;
};

// clang-format off
namespace CompileError {
//                             error                     exception                                message
// ---------------------------------------------------------------------------------------------------------------------
inline constexpr MTCompileError operatorMisplaced        {ParsingError::OperatorMisplaced,        Message::InvalidExpression};
inline constexpr MTCompileError operandMissing           {ParsingError::OperandMissing,           Message::InvalidExpression};
inline constexpr MTCompileError closingWithoutOpening    {ParsingError::ClosingWithoutOpening,    Message::InvalidExpression};
inline constexpr MTCompileError separatorOutsideBrackets {ParsingError::SeparatorOutsideBrackets, Message::InvalidExpression};
inline constexpr MTCompileError bracketNotClosed         {ParsingError::BracketNotClosed,         Message::BracketNotClosed};
inline constexpr MTCompileError noOverload               {ParsingError::NoOverload,               Message::InvalidExpression};
inline constexpr MTCompileError noExpression             {ParsingError::NoExpression,             Message::InvalidExpression};
inline constexpr MTCompileError valueAfterValue          {ParsingError::ValueAfterValue,          Message::InvalidExpression};
inline constexpr MTCompileError unknownFunction          {ParsingError::UnknownFunction,          Message::UnknownFunction};
inline constexpr MTCompileError unknownName              {ParsingError::UnknownName,              Message::UnknownName};
inline constexpr MTCompileError argumentEmpty            {ParsingError::ArgumentEmpty,            Message::InvalidExpression};
inline constexpr MTCompileError assignmentMisplaced      {ParsingError::ArgumentEmpty,            Message::InvalidExpression};
inline constexpr MTCompileError programBroken            {ParsingError::Structure,                Message::InvalidExpression};
}
// clang-format on
