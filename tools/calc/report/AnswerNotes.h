// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// AnswerNotes.h - what a value does not show by itself, although it surprises: said on a terminal, below the value.
#pragma once

#include "tools/calc/answer/Answer.h"

#include <string>
#include <vector>

/// Sentences about an answer that did not fail; mostly none.
std::vector<std::string> notesOn(const Answer& answer);

/// What to type instead of a word of other programs, such as "quit"; empty for everything else.
/// @param atPrompt  whether the prompt's commands can be typed
std::string wordNote(std::string_view line, bool atPrompt);
