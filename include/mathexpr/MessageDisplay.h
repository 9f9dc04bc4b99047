// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageDisplay.h - replaces the message boxes by a display function of the host.
#pragma once

#include "mathexpr/Export.h"

#include <cstdint>

namespace mathexpr {

/// Shows one message to the user and returns when the user has seen it.
/// @param context  the pointer registered with the function
/// @param id       number of the message, 1 to 19
/// @param text     its text in the user's language, zero-terminated, valid during the call only
using MessageDisplayFunction = void (*)(void* context, std::uint32_t id, const wchar_t* text);

/// A display function and a pointer for it, which the library passes on unchanged.
struct ProcessMessageDisplay
{
    MessageDisplayFunction show = nullptr;  ///< Null: the platform's own message box.
    void* context = nullptr;
};

/// Replaces the message display of the whole process, and returns the previous one. Do not call it while another thread uses
/// the library. Exceptions of the display function propagate out of the call that failed.
MATHEXPR_API ProcessMessageDisplay setMessageDisplay(ProcessMessageDisplay display) noexcept;

}
