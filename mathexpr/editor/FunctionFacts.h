// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FunctionFacts.h - what the vocabulary's functions take and give. The functions themselves are asked: each is tried once
// with numbers and with points.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/VocabularyUnits.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mathexpr::editor {

/// One overload that an expression can call. All of its parameters take the same kind.
struct FunctionFacts
{
    std::wstring symbol;
    std::wstring help;
    std::wstring description;
    std::uint32_t nbArgs;  // NB_ARGS_UNDEFINED for any number
    std::vector<std::wstring> parameters;
    ValueKind parameterKind;
    ValueKind resultKind;
    Message::Id domain;                   // of an argument that it is not defined for; None where there is none
    std::vector<std::wstring> arguments;  // of a call that works
    std::wstring call;                    // with these
    const VocabularyUnit* argumentUnit;   // null where it has none
    const VocabularyUnit* resultUnit;
};

/// In the order of the vocabulary.
const std::vector<FunctionFacts>& allFunctions();

/// The overloads of a function; empty for any other name.
std::vector<const FunctionFacts*> overloadsOf(std::wstring_view symbol);

/// The index of the first overload that has an argument, counted from 0; of the last where none has.
/// @param overloads  not empty
std::size_t overloadWith(const std::vector<const FunctionFacts*>& overloads, std::uint32_t argument) noexcept;

}
