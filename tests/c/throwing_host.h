// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* throwing_host.h - callbacks that throw C++ exceptions and ignore their context. */
#pragma once

#include <mathexpr_editor.h>

#if defined(__cplusplus)
extern "C"
{
#endif

    int32_t throwing_lookup(void* context, const char* name, size_t length, mathexpr_value* value);
    int32_t throwing_lookup16(void* context, const mathexpr_char16* name, size_t length, mathexpr_value* value);
    void throwing_show(void* context, uint32_t id, const char* text, size_t length);
    const char* throwing_get_name(void* context, uint32_t index);
    int32_t throwing_get_notes(void* context, const char* name, size_t length, mathexpr_name_notes_utf8* notes);

#if defined(__cplusplus)
}
#endif
