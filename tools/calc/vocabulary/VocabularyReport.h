// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyReport.h - prints the vocabulary for people and for scripts.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string>
#include <vector>

/// Prints all items: one per line, by family; or one JSON array in the order of registration.
void listVocabulary(bool json);

/// Prints the items of one family, one per line, below the family's title.
void listFamily(mathexpr::VocabularyFamily family);

/// Prints the units of the conversions, with their common names.
void listUnits();

/// Prints the results of searchVocabulary.
/// @return false if there are none
bool findItems(const std::string& words);

/// Whether the vocabulary has an item of that name.
bool isItem(const std::string& name);

/// Describes the items of each name, including overloads, and computes their examples; as JSON, one array per name. For
/// an unknown name, similar ones are printed on standard error.
/// @param names  UTF-8
/// @return whether all names are known
bool describeItems(const std::vector<std::string>& names, bool json);
