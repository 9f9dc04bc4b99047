// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyItems.h - the vocabulary as a list, and its families as a user names them.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string_view>
#include <vector>

/// In the order in which the items are registered.
const std::vector<mathexpr::VocabularyItem>& vocabularyItems();

struct FamilyName
{
    mathexpr::VocabularyFamily family;
    std::string_view name;  ///< One word.
};

/// In the order in which they are listed.
const std::vector<FamilyName>& familyNames();
