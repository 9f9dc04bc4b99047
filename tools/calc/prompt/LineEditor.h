// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineEditor.h - lines that can be edited, with history and completion, and the signature of the call at their right.
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
    /// Asked with the line before and after the cursor.
    std::function<Completion(std::string_view, std::string_view)> complete;
    /// Asked with the line before the cursor.
    std::function<std::optional<Signature>(std::string_view)> signature;
};

/// @return nothing where the terminal cannot move its cursor, and on systems without the library
std::unique_ptr<LineReader> makeLineEditor(LineEditorHooks hooks);
