// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInMessages.cpp - MessageSource.h for platforms without string resources. It loads nothing, so start-up cannot
// fail.

#include "mathexpr/MessageSource.h"

#include "MathExprRes/MessageTexts.h"

std::wstring loadMessage(std::uint32_t id)
{
    const wchar_t* text = messageText(id, languageOfUser());
    return text == nullptr ? std::wstring() : std::wstring(text);
}
