// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineEditorWindows.cpp - no line editor: Windows' console edits lines itself.
#include "tools/calc/prompt/LineEditor.h"

// NOLINTNEXTLINE(performance-unnecessary-value-param): other systems store the hooks
std::unique_ptr<LineReader> makeLineEditor(LineEditorHooks)
{
    return nullptr;
}
