// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* answers.h - one structure of each type that the editor services fill. */
#pragma once

#include <mathexpr_editor.h>

struct answers
{
    mathexpr_tokens tokens;
    mathexpr_text_utf8 text;
    mathexpr_text_utf16 text16;
    mathexpr_spans spans;
    mathexpr_renaming_utf8 renaming;
    mathexpr_renaming_utf16 renaming16;
    mathexpr_literals literals;
    mathexpr_diagnostic_utf8 diagnostic;
    mathexpr_diagnostic_utf16 diagnostic16;
    mathexpr_signature_utf8 signature;
    mathexpr_signature_utf16 signature16;
    mathexpr_hover_utf8 hover;
    mathexpr_hover_utf16 hover16;
    mathexpr_completions_utf8 completions;
    mathexpr_completions_utf16 completions16;
};

/** Sets the size of each, and fills the rest with bytes of 0xEE. */
void prepare_answers(struct answers* answers);

/** Sets all sizes. */
void set_sizes(struct answers* answers, uint32_t size);
