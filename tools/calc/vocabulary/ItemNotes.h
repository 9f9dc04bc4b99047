// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ItemNotes.h - notes on an item of the vocabulary beyond its own strings: units, domain and example expressions.
// Values of the examples are computed, not stored.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string>
#include <string_view>
#include <vector>

struct ItemNotes
{
    std::string units;                  ///< Of the arguments and the result; empty if there are none.
    std::string domain;                 ///< Accepted arguments.
    std::vector<std::string> examples;  ///< Valid expressions; all texts are UTF-8.
    std::vector<std::string> refused;   ///< Expressions that the item refuses, one per message.
    std::vector<std::string> points;    ///< Uses of the item with points.
};

ItemNotes notesOf(const mathexpr::VocabularyItem& item);

/// The title, such as "Length conversions".
std::string_view familyTitle(mathexpr::VocabularyFamily family);
