// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* editor_sizes.c - structures of the editor services with the sizes of earlier and later versions. */
#include "tests/c/answers.h"
#include "tests/c/sizes.h"

void test_editor_answers_of_other_sizes(void)
{
    mathexpr_expression* const expression = plain();
    uint32_t state = 77;

    CHECK_WRITTEN(mathexpr_tokens, mathexpr_get_tokens_utf8(expression, "1+x", ZT, asked), token_count,
                  asked->token_count == 3 && asked->tokens[2].start == 2);
    CHECK_WRITTEN(mathexpr_tokens, mathexpr_get_tokens_utf16(expression, wide("1+x"), ZT, asked), token_count,
                  asked->token_count == 3 && asked->tokens[2].start == 2);
    CHECK_WRITTEN(mathexpr_text_utf8, mathexpr_format_text_utf8(expression, "1+x", ZT, asked), text_length,
                  asked->text_length == 5 && strcmp(asked->text, "1 + x") == 0);
    CHECK_WRITTEN(mathexpr_text_utf16, mathexpr_format_text_utf16(expression, wide("1+x"), ZT, asked), text_length,
                  asked->text_length == 5 && asked->text[4] == 'x');
    CHECK_WRITTEN(mathexpr_text_utf8, mathexpr_typeset_text_utf8(expression, "x", ZT, 0, asked), text_length,
                  asked->text_length == 1 && strcmp(asked->text, "x") == 0);
    CHECK_WRITTEN(mathexpr_text_utf16, mathexpr_typeset_text_utf16(expression, wide("x"), ZT, 0, asked), text_length,
                  asked->text_length == 1 && asked->text[0] == 'x');
    CHECK_WRITTEN(mathexpr_spans, mathexpr_find_references_utf8(expression, "1+x", ZT, "x", ZT, asked), span_count,
                  asked->span_count == 1 && asked->spans[0].start == 2);
    CHECK_WRITTEN(mathexpr_spans, mathexpr_find_references_utf16(expression, wide("1+x"), ZT, wide("x"), ZT, asked),
                  span_count, asked->span_count == 1 && asked->spans[0].start == 2);
    CHECK_WRITTEN(mathexpr_renaming_utf8, mathexpr_rename_in_text_utf8(expression, "1+x", ZT, "x", ZT, "y", ZT, asked),
                  edit_count, asked->edit_count == 1 && strcmp(asked->edits[0].replacement, "y") == 0);
    CHECK_WRITTEN(mathexpr_renaming_utf16,
                  mathexpr_rename_in_text_utf16(expression, wide("1+x"), ZT, wide("x"), ZT, wide("y"), ZT, asked),
                  edit_count, asked->edit_count == 1 && asked->edits[0].replacement[0] == 'y');
    CHECK_WRITTEN(mathexpr_literals, mathexpr_get_literals_utf8(expression, "1+x", ZT, asked), literal_count,
                  asked->literal_count == 1 && asked->literals[0].value.x == 1);
    CHECK_WRITTEN(mathexpr_literals, mathexpr_get_literals_utf16(expression, wide("1+x"), ZT, asked), literal_count,
                  asked->literal_count == 1 && asked->literals[0].value.x == 1);
    CHECK_WRITTEN(mathexpr_diagnostic_utf8, mathexpr_diagnose_text_utf8(expression, "1+x", ZT, 0, &state, asked), text,
                  asked->code == MATHEXPR_PARSING_UNKNOWN_NAME && strcmp(asked->item, "x") == 0);
    CHECK_WRITTEN(mathexpr_diagnostic_utf16,
                  mathexpr_diagnose_text_utf16(expression, wide("1+x"), ZT, 0, &state, asked), text,
                  asked->code == MATHEXPR_PARSING_UNKNOWN_NAME && asked->item[0] == 'x');
    CHECK_WRITTEN(mathexpr_signature_utf8, mathexpr_get_signature_utf8(expression, "sin(", ZT, 4, asked),
                  active_overload, asked->wanted == MATHEXPR_VALUE_NUMBER && strcmp(asked->function, "sin") == 0);
    CHECK_WRITTEN(mathexpr_signature_utf16, mathexpr_get_signature_utf16(expression, wide("sin("), ZT, 4, asked),
                  active_overload, asked->wanted == MATHEXPR_VALUE_NUMBER && asked->function[0] == 's');
    CHECK_WRITTEN(mathexpr_hover_utf8, mathexpr_get_hover_utf8(expression, "12", ZT, 0, 0, asked), value_span,
                  asked->value_span.length == 2 && asked->value.x == 12);
    CHECK_WRITTEN(mathexpr_hover_utf16, mathexpr_get_hover_utf16(expression, wide("12"), ZT, 0, 0, asked), value_span,
                  asked->value_span.length == 2 && asked->value.x == 12);
    CHECK_WRITTEN(mathexpr_completions_utf8, mathexpr_get_completions_utf8(expression, "sqr", ZT, 3, NULL, asked),
                  item_count, asked->item_count == 2 && strcmp(asked->items[0].name, "sqr") == 0);
    CHECK_WRITTEN(mathexpr_completions_utf16,
                  mathexpr_get_completions_utf16(expression, wide("sqr"), ZT, 3, NULL, asked), item_count,
                  asked->item_count == 2 && asked->items[0].name[0] == 's');
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_options_of_other_sizes(void)
{
    LATER(mathexpr_completion_options_utf8) later;
    LATER(mathexpr_name_notes_utf16) later_notes;
    mathexpr_expression* const expression = plain();
    mathexpr_completion_options_utf16 options = {0};
    mathexpr_completions_utf8 completions = {sizeof(completions), 0, NULL, 0};
    mathexpr_completions_utf16 completions16 = {sizeof(completions16), 0, NULL, 0};
    mathexpr_name_index* index = NULL;

    /* An earlier version's options had no member recent: it is not read. */
    memset(&options, 0xEE, sizeof(options));
    options.size = offsetof(mathexpr_completion_options_utf16, recent);
    options.max_count = 1;
    CHECK_OK(mathexpr_get_completions_utf16(expression, wide("sqr"), ZT, 3, &options, &completions16));
    CHECK_EQUAL(completions16.item_count, 1);

    memset(&later, 0, sizeof(later));
    later.known.size = sizeof(later);
    later.known.max_count = 1;
    CHECK_OK(mathexpr_get_completions_utf8(expression, "sqr", ZT, 3, &later.known, &completions));
    CHECK_EQUAL(completions.item_count, 1);
    later.later = 1; /* something that this version could not do */
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "sqr", ZT, 3, &later.known, &completions),
                 MATHEXPR_BAD_SIZE);

    CHECK_OK(mathexpr_create_name_index(&index));
    memset(&later_notes, 0, sizeof(later_notes));
    later_notes.known.size = sizeof(later_notes);
    CHECK_OK(mathexpr_add_indexed_name_utf16(index, wide("d"), ZT, &later_notes.known));
    later_notes.later = 1;
    CHECK_STATUS(mathexpr_add_indexed_name_utf16(index, wide("d"), ZT, &later_notes.known), MATHEXPR_BAD_SIZE);
    CHECK_OK(mathexpr_destroy_name_index(index));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_impossible_sizes(void)
{
    static const uint32_t sizes[] = {0, 1, 3, 13, 8 * 1024, 0xEEEEEEEE, 0xFFFFFFFF};
    mathexpr_expression* const expression = plain();
    struct answers answers;
    struct answers good;
    mathexpr_completion_options_utf8 options = {0};
    mathexpr_completion_options_utf16 options16 = {0};
    mathexpr_name_notes_utf8 notes = {0};
    mathexpr_name_notes_utf16 notes16 = {0};
    mathexpr_name_index* names = NULL;
    uint32_t state = 77;
    size_t index = 0;

#define REFUSES(call) CHECK_STATUS(call, MATHEXPR_BAD_SIZE)
    prepare_answers(&answers);
    prepare_answers(&good);
    CHECK_OK(mathexpr_create_name_index(&names));
    for (index = 0; index < sizeof(sizes) / sizeof(sizes[0]); ++index)
    {
        set_sizes(&answers, sizes[index]);
        options.size = options16.size = notes.size = notes16.size = sizes[index];
        REFUSES(mathexpr_get_tokens_utf8(expression, "x", ZT, &answers.tokens));
        REFUSES(mathexpr_get_tokens_utf16(expression, wide("x"), ZT, &answers.tokens));
        REFUSES(mathexpr_format_text_utf8(expression, "x", ZT, &answers.text));
        REFUSES(mathexpr_format_text_utf16(expression, wide("x"), ZT, &answers.text16));
        REFUSES(mathexpr_typeset_text_utf8(expression, "x", ZT, 0, &answers.text));
        REFUSES(mathexpr_typeset_text_utf16(expression, wide("x"), ZT, 0, &answers.text16));
        REFUSES(mathexpr_find_references_utf8(expression, "x", ZT, "x", ZT, &answers.spans));
        REFUSES(mathexpr_find_references_utf16(expression, wide("x"), ZT, wide("x"), ZT, &answers.spans));
        REFUSES(mathexpr_rename_in_text_utf8(expression, "x", ZT, "x", ZT, "y", ZT, &answers.renaming));
        REFUSES(mathexpr_rename_in_text_utf16(expression, wide("x"), ZT, wide("x"), ZT, wide("y"), ZT,
                                              &answers.renaming16));
        REFUSES(mathexpr_get_literals_utf8(expression, "1", ZT, &answers.literals));
        REFUSES(mathexpr_get_literals_utf16(expression, wide("1"), ZT, &answers.literals));
        REFUSES(mathexpr_diagnose_text_utf8(expression, "x", ZT, 0, &state, &answers.diagnostic));
        REFUSES(mathexpr_diagnose_text_utf16(expression, wide("x"), ZT, 0, &state, &answers.diagnostic16));
        REFUSES(mathexpr_get_signature_utf8(expression, "sin(", ZT, 4, &answers.signature));
        REFUSES(mathexpr_get_signature_utf16(expression, wide("sin("), ZT, 4, &answers.signature16));
        REFUSES(mathexpr_get_hover_utf8(expression, "x", ZT, 0, 0, &answers.hover));
        REFUSES(mathexpr_get_hover_utf16(expression, wide("x"), ZT, 0, 0, &answers.hover16));
        REFUSES(mathexpr_get_completions_utf8(expression, "x", ZT, 1, NULL, &answers.completions));
        REFUSES(mathexpr_get_completions_utf16(expression, wide("x"), ZT, 1, NULL, &answers.completions16));
        REFUSES(mathexpr_get_completions_utf8(expression, "x", ZT, 1, &options, &good.completions));
        REFUSES(mathexpr_get_completions_utf16(expression, wide("x"), ZT, 1, &options16, &good.completions16));
        REFUSES(mathexpr_add_indexed_name_utf8(names, "d", ZT, &notes));
        REFUSES(mathexpr_add_indexed_name_utf16(names, wide("d"), ZT, &notes16));
    }
    CHECK_EQUAL(state, 77);
    prepare_answers(&answers);
    CHECK_EQUAL(memcmp(&answers, &good, sizeof(answers)), 0);
    CHECK_STATUS(mathexpr_remove_indexed_name_utf8(names, "d", ZT), MATHEXPR_NOT_FOUND);
    CHECK_OK(mathexpr_destroy_name_index(names));
    CHECK_OK(mathexpr_destroy(expression));
}
