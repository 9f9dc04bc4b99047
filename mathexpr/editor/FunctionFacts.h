// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FunctionFacts.h - parameters and results of the vocabulary's functions, determined by evaluating each once with
// numbers and once with points.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/VocabularyUnits.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mathexpr::editor {

/// An overload that an expression can call. All its parameters have the same kind.
struct FunctionFacts
{
    std::wstring symbol;
    std::wstring help;
    std::wstring description;
    std::uint32_t nbArgs;  // NB_ARGS_UNDEFINED for any number
    std::vector<std::wstring> parameters;
    ValueKind parameterKind;
    ValueKind resultKind;
    Message::Id domain;                   // for an argument outside the domain; None if there is no such message
    std::vector<std::wstring> arguments;  // of a valid call
    std::wstring call;                    // the call with these arguments
    const VocabularyUnit* argumentUnit;   // null if the argument has no unit
    const VocabularyUnit* resultUnit;
};

/// All overloads, in the order of the vocabulary.
const std::vector<FunctionFacts>& allFunctions();

/// The overloads of a function; empty for other names.
std::vector<const FunctionFacts*> overloadsOf(std::wstring_view symbol);

/// Index of the first overload that has this argument, counted from 0; of the last overload if none has.
/// @param overloads  not empty
std::size_t overloadWith(const std::vector<const FunctionFacts*>& overloads, std::uint32_t argument) noexcept;

}
