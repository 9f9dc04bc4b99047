// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CallExample.h - calls that work, taken from the notes of the vocabulary: they tell which arguments a function takes.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct CallExample
{
    const mathexpr::VocabularyItem* item;
    std::string text;                    ///< Such as "dist([0,0,0],[3,4,12])"; UTF-8.
    std::vector<std::string> arguments;  ///< Those of the text.
};

/// The overloads of a function that can be called from an expression, in the order of the vocabulary.
std::vector<CallExample> callExamples(std::string_view symbol);

/// The overload for a call that has come to an argument, counted from 0: the first one that has it.
std::optional<CallExample> callExample(std::string_view symbol, std::size_t argument);
