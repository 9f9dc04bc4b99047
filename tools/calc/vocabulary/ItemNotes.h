// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ItemNotes.h - what a reader wants to know about an item of the vocabulary beyond its own strings: units, domain and
// expressions that show it. Only what cannot be computed is written down; what the expressions yield is not.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string>
#include <string_view>
#include <vector>

struct ItemNotes
{
    std::string units;                  ///< Of the arguments and the result; empty where there are none.
    std::string domain;                 ///< What the item accepts.
    std::vector<std::string> examples;  ///< Expressions that work; all texts are UTF-8.
    std::vector<std::string> refused;   ///< Expressions that the item refuses, one for each message that it shows.
    std::vector<std::string> points;    ///< The item with points among its arguments.
};

ItemNotes notesOf(const mathexpr::VocabularyItem& item);

/// "Length conversions" and the like.
std::string_view familyTitle(mathexpr::VocabularyFamily family);
