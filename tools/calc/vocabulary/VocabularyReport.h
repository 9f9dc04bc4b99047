// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyReport.h - the vocabulary for people and for scripts.
#pragma once

#include "mathexpr/Vocabulary.h"

#include <string>
#include <vector>

/// Prints all items: a line each, by family; or one JSON array in the order in which they are registered.
void listVocabulary(bool json);

/// Prints the items of one family, a line each below the family's title.
void listFamily(mathexpr::VocabularyFamily family);

/// Prints the units that conversions know, with the names that people have for them.
void listUnits();

/// Prints what searchVocabulary finds.
/// @return false where it finds nothing
bool findItems(const std::string& words);

/// Whether the vocabulary has an item of that name.
bool isItem(const std::string& name);

/// Tells all about the items of each name, overloads included, with expressions that are computed meanwhile; as JSON an
/// array a name. Of a name that is none, the nearest ones are told on standard error.
/// @param names  UTF-8
/// @return whether all names are known
bool describeItems(const std::vector<std::string>& names, bool json);
