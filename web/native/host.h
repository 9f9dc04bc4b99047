// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// host.h - the functions that the module imports from JavaScript. The context is the number of the calling expression.
// They do not throw: JavaScript stores an exception of the host, and rethrows it after the library's call has returned.
#pragma once

#include "mathexpr_editor.h"

#define MATHEXPR_WEB_IMPORT(name) __attribute__((import_module("host"), import_name(name)))

extern "C"
{

    MATHEXPR_WEB_IMPORT("lookup")
    int32_t hostLookup(void* context, const mathexpr_char16* name, size_t length, mathexpr_value* value);

    MATHEXPR_WEB_IMPORT("getName")
    const mathexpr_char16* hostGetName(void* context, uint32_t index);

    MATHEXPR_WEB_IMPORT("getNotes")
    int32_t hostGetNotes(void* context, const mathexpr_char16* name, size_t length, mathexpr_name_notes_utf16* notes);
}
