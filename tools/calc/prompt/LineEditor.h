// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineEditor.h - a line editor with history, completion, and the signature of the current call at the right.
#pragma once

#include "tools/calc/prompt/LineReader.h"
#include "tools/calc/prompt/PromptCompletion.h"
#include "tools/calc/prompt/PromptSignature.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

struct LineEditorHooks
{
    /// Called with the text before and after the cursor.
    std::function<Completion(std::string_view, std::string_view)> complete;
    /// Called with the text before the cursor.
    std::function<std::optional<Signature>(std::string_view)> signature;
};

/// @return null if the terminal cannot move its cursor, and on systems without libedit
std::unique_ptr<LineReader> makeLineEditor(LineEditorHooks hooks);
