// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineEditorWindows.cpp - there is no line editor; the console's own does.
#include "tools/calc/prompt/LineEditor.h"

// NOLINTNEXTLINE(performance-unnecessary-value-param): elsewhere the line editor keeps them
std::unique_ptr<LineReader> makeLineEditor(LineEditorHooks)
{
    return nullptr;
}
