// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserDefFuncs.h - the vocabulary: the constants, operators and functions that every new expression object knows.
//
// The classes are in vocabulary/, one header per family. MTParserDefFuncs.cpp holds the one list of them, in the order
// in which they are registered. To add a function, write its class and add it to that list.
#pragma once

#include "mathexpr/Vocabulary.h"
#include "platform/ArrayView.h"

#include <cstdint>

class MTParserRegistrar;
struct MTItemKernels;

/// A named constant. The string is zero-terminated and lives as long as the process.
struct VocabularyConstant
{
    const wchar_t* symbol;
    double value;
};

/// One operator or function. The strings are zero-terminated and live as long as the process.
struct VocabularyEntry
{
    mathexpr::VocabularyFamily family;
    const wchar_t* className;
    const wchar_t* symbol;
    const wchar_t* help;
    const wchar_t* description;
    std::uint32_t nbArgs;     ///< Number of arguments or operands; NB_ARGS_UNDEFINED for any number.
    std::int32_t precedence;  ///< 0 for a function.
    bool isOperator;
    bool isUnary;
    bool isConstant;  ///< The result of the item's isConstant().
    const MTItemKernels* kernels;
};

/// The constants, in the order in which they are defined.
platform::ArrayView<const VocabularyConstant> getConstants() noexcept;

/// Defines the constants. Exceptions of the registrar propagate.
void registerConstants(MTParserRegistrar& registrar);

/// All operators and then all functions, in the order in which they are registered.
platform::ArrayView<const VocabularyEntry> getVocabulary() noexcept;

/// Defines the operators and functions in a registrar that has none.
/// @throws std::bad_alloc, with nothing defined
void registerVocabulary(MTParserRegistrar& registrar);
