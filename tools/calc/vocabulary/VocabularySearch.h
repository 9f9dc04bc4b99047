// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularySearch.h - finds items of the vocabulary by what people call things: symbols, units in all their spellings, and
// words of the notes and descriptions.
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

/// The best first. A unit by itself finds two groups, what comes from it and what goes to it. Several words find what has to
/// do with all of them. Empty where nothing is found.
/// @param words  UTF-8
std::vector<FoundGroup> searchVocabulary(std::string_view words);
