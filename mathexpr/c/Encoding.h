// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Encoding.h - the differences between the entry points in UTF-8 and in UTF-16: the code unit, the conversions, and the
// structures that contain text.
//
// All other code is written once, as templates over Utf8 and Utf16.
#pragma once

#include "platform/Unicode.h"

#include <mathexpr_editor.h>

#include <cstddef>
#include <string>
#include <string_view>

struct Utf8
{
    using Unit = char;
    using Text = std::string;
    using Options = mathexpr_options_utf8;
    using Diagnostic = mathexpr_diagnostic_utf8;
    using Names = mathexpr_names_utf8;
    using Item = mathexpr_vocabulary_item_utf8;
    using Column = mathexpr_column_utf8;
    using MadeText = mathexpr_text_utf8;
    using Edit = mathexpr_edit_utf8;
    using Renaming = mathexpr_renaming_utf8;
    using Overload = mathexpr_overload_utf8;
    using Signature = mathexpr_signature_utf8;
    using Hover = mathexpr_hover_utf8;
    using NameNotes = mathexpr_name_notes_utf8;
    using GetNameNotes = mathexpr_get_name_notes_utf8;
    using CompletionOptions = mathexpr_completion_options_utf8;
    using Completion = mathexpr_completion_utf8;
    using Completions = mathexpr_completions_utf8;

    static constexpr mathexpr_status illFormed = MATHEXPR_BAD_UTF8;
    static Text encode(std::wstring_view text) { return platform::toUtf8(text); }
};

struct Utf16
{
    using Unit = mathexpr_char16;
    using Text = std::u16string;
    using Options = mathexpr_options_utf16;
    using Diagnostic = mathexpr_diagnostic_utf16;
    using Names = mathexpr_names_utf16;
    using Item = mathexpr_vocabulary_item_utf16;
    using Column = mathexpr_column_utf16;
    using MadeText = mathexpr_text_utf16;
    using Edit = mathexpr_edit_utf16;
    using Renaming = mathexpr_renaming_utf16;
    using Overload = mathexpr_overload_utf16;
    using Signature = mathexpr_signature_utf16;
    using Hover = mathexpr_hover_utf16;
    using NameNotes = mathexpr_name_notes_utf16;
    using GetNameNotes = mathexpr_get_name_notes_utf16;
    using CompletionOptions = mathexpr_completion_options_utf16;
    using Completion = mathexpr_completion_utf16;
    using Completions = mathexpr_completions_utf16;

    static constexpr mathexpr_status illFormed = MATHEXPR_BAD_UTF16;
    static Text encode(std::wstring_view text) { return platform::toUtf16(text); }
};

/// Checks a text.
/// @param view    receives the text if the result is MATHEXPR_OK
/// @param offset  receives the index of the offending unit, if there is one
template <class Encoding>
mathexpr_status inspect(const typename Encoding::Unit* text, std::size_t length,
                        std::basic_string_view<typename Encoding::Unit>& view, std::size_t& offset) noexcept
{
    using View = std::basic_string_view<typename Encoding::Unit>;
    if (text == nullptr)
    {
        return length == 0 ? MATHEXPR_OK : MATHEXPR_NULL_ARGUMENT;
    }
    const View given = length == MATHEXPR_ZERO_TERMINATED ? View(text) : View(text, length);
    const std::size_t zero = given.find(typename Encoding::Unit{});
    const std::size_t illFormed = platform::findIllFormed(given.substr(0, zero));
    if (illFormed != platform::wellFormed)
    {
        offset = illFormed;
        return Encoding::illFormed;
    }
    if (zero != View::npos)
    {
        offset = zero;
        return MATHEXPR_ZERO_IN_TEXT;
    }
    view = given;
    return MATHEXPR_OK;
}

/// Converts a text for the library.
/// @param wide  written if the result is MATHEXPR_OK
/// @throws std::bad_alloc
template <class Encoding>
mathexpr_status takeText(const typename Encoding::Unit* text, std::size_t length, std::wstring& wide)
{
    std::basic_string_view<typename Encoding::Unit> view;
    std::size_t offset = 0;
    const mathexpr_status status = inspect<Encoding>(text, length, view, offset);
    if (status == MATHEXPR_OK)
    {
        wide = platform::toWide(view);
    }
    return status;
}
