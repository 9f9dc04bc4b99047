// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// AnswerNotes.h - notes on surprising values, shown on a terminal below the value.
#pragma once

#include "tools/calc/answer/Answer.h"

#include <string>
#include <vector>

/// Notes on an answer that did not fail; usually none.
std::vector<std::string> notesOn(const Answer& answer);

/// What to type instead of a command of other programs, such as "quit"; empty for all other lines.
/// @param atPrompt  whether prompt commands are available
std::string wordNote(std::string_view line, bool atPrompt);
