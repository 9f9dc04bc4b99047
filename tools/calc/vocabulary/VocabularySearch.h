// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularySearch.h - finds items of the vocabulary by symbols, by all names of units, and by words of notes and
// descriptions.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string>
#include <string_view>
#include <vector>

struct FoundGroup
{
    std::string title;
    std::vector<mathexpr::VocabularyItem> items;
};

/// The best first. A unit alone finds two groups: conversions from it and conversions to it. An item must match all
/// words. Empty if nothing is found.
/// @param words  UTF-8
std::vector<FoundGroup> searchVocabulary(std::string_view words);
