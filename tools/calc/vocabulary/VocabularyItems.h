// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyItems.h - the vocabulary as a list, and the names of its families.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string_view>
#include <vector>

/// In the order of registration.
const std::vector<mathexpr::VocabularyItem>& vocabularyItems();

struct FamilyName
{
    mathexpr::VocabularyFamily family;
    std::string_view name;  ///< A single word.
};

/// In the order of listing.
const std::vector<FamilyName>& familyNames();
