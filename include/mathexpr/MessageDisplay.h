// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageDisplay.h - how an error reaches the user, and how a host replaces the way.
#pragma once

#include "mathexpr/Export.h"

#include <cstdint>

namespace mathexpr {

/// Shows one message to the user and returns when the user has seen it.
/// @param context  as given with the function
/// @param id       number of the message, 1 to 19
/// @param text     its text in the user's language, zero-terminated, valid during the call only
using MessageDisplayFunction = void (*)(void* context, std::uint32_t id, const wchar_t* text);

/// A display function with the host's own pointer, which the library only hands back.
struct ProcessMessageDisplay
{
    MessageDisplayFunction show = nullptr;  ///< Null: the platform's own message box.
    void* context = nullptr;
};

/// Replaces, for the whole process, the way in which messages are shown, and returns what was in force before. Not to
/// be called while another thread uses the library. What the function throws passes out of the call that failed.
MATHEXPR_API ProcessMessageDisplay setMessageDisplay(ProcessMessageDisplay display) noexcept;

}
