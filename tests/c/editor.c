// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* editor.c - the editor services: positions in the units of each encoding, results and their lifetime, refusals. */
#include "tests/c/answers.h"
#include "tests/c/check.h"
#include "tests/c/throwing_host.h"

#include <mathexpr_editor.h>
#include <stddef.h>
#include <string.h>

/* Lengths in UTF-8 bytes and UTF-16 units: 2 and 1; 4 and 2. */
#define UMLAUT "\xC3\xA4"
#define SMILE "\xF0\x9F\x98\x80"

void test_editor_tokens(void)
{
    static const mathexpr_char16 text16[] = {'(', 0xE4, '*', 0xD83D, 0xDE00, ' ', '+', '1', 0};
    mathexpr_expression* const expression = plain();
    mathexpr_tokens tokens = {sizeof(tokens), 77, NULL, 0};

    CHECK_OK(mathexpr_get_tokens_utf8(expression, "(" UMLAUT "*" SMILE " +1)", ZT, &tokens));
    CHECK_EQUAL(tokens.reserved, 0);
    CHECK_EQUAL(tokens.token_count, 8);
    CHECK_EQUAL(tokens.tokens[0].kind, MATHEXPR_TOKEN_BRACKET);
    CHECK_EQUAL(tokens.tokens[0].partner, 7);
    CHECK_EQUAL(tokens.tokens[1].kind, MATHEXPR_TOKEN_UNKNOWN_NAME);
    CHECK_EQUAL(tokens.tokens[1].start, 1);
    CHECK_EQUAL(tokens.tokens[1].length, 2);
    CHECK_EQUAL(tokens.tokens[1].depth, 1);
    CHECK(tokens.tokens[1].partner == MATHEXPR_NO_PARTNER);
    CHECK_EQUAL(tokens.tokens[3].start, 4);
    CHECK_EQUAL(tokens.tokens[3].length, 4);
    CHECK_EQUAL(tokens.tokens[4].kind, MATHEXPR_TOKEN_BLANK);
    CHECK_EQUAL(tokens.tokens[7].start, 11);

    CHECK_OK(mathexpr_get_tokens_utf16(expression, text16, ZT, &tokens));
    CHECK_EQUAL(tokens.token_count, 7);
    CHECK_EQUAL(tokens.tokens[1].length, 1);
    CHECK_EQUAL(tokens.tokens[3].start, 3);
    CHECK_EQUAL(tokens.tokens[3].length, 2);
    CHECK_EQUAL(tokens.tokens[6].start, 7);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_edits(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_text_utf8 text = {sizeof(text), 77, NULL, 0};
    mathexpr_text_utf16 text16 = {sizeof(text16), 77, NULL, 0};
    mathexpr_spans spans = {sizeof(spans), 77, NULL, 0};
    mathexpr_renaming_utf8 renaming;
    mathexpr_renaming_utf16 renaming16;
    mathexpr_literals literals = {sizeof(literals), 77, NULL, 0};

    CHECK_OK(mathexpr_format_text_utf8(expression, UMLAUT "=1*-2", ZT, &text));
    CHECK_TEXT(text.text, UMLAUT " = 1 * -2");
    CHECK_EQUAL(text.text_length, 11);
    CHECK_EQUAL(text.reserved, 0);
    CHECK_OK(mathexpr_format_text_utf16(expression, wide("1+2"), ZT, &text16));
    CHECK_TEXT16(text16.text, "1 + 2");
    CHECK_EQUAL(text16.text_length, 5);
    CHECK_TEXT(text.text, UMLAUT " = 1 * -2"); /* of the other encoding */

    CHECK_OK(mathexpr_find_references_utf8(expression, UMLAUT "+x*X", ZT, "xy", 1, &spans));
    CHECK_EQUAL(spans.reserved, 0);
    CHECK_EQUAL(spans.span_count, 2);
    CHECK_EQUAL(spans.spans[0].start, 3);
    CHECK_EQUAL(spans.spans[0].length, 1);
    CHECK_EQUAL(spans.spans[1].start, 5);
    CHECK_OK(mathexpr_find_references_utf16(expression, wide("1+x"), ZT, wide("x"), ZT, &spans));
    CHECK_EQUAL(spans.span_count, 1);
    CHECK_EQUAL(spans.spans[0].start, 2);

    memset(&renaming, 0xEE, sizeof(renaming));
    renaming.size = sizeof(renaming);
    CHECK_OK(mathexpr_rename_in_text_utf8(expression, UMLAUT "+x*X", ZT, "x", ZT, "a" SMILE, ZT, &renaming));
    CHECK_EQUAL(renaming.refusal, MATHEXPR_RENAME_DONE);
    CHECK_EQUAL(renaming.edit_count, 2);
    CHECK_EQUAL(renaming.edits[1].start, 5);
    CHECK_EQUAL(renaming.edits[1].length, 1);
    CHECK_TEXT(renaming.edits[1].replacement, "a" SMILE);
    CHECK_EQUAL(renaming.edits[1].replacement_length, 5);
    CHECK_OK(mathexpr_rename_in_text_utf8(expression, UMLAUT "+x+1", ZT, "x", ZT, "size", ZT, &renaming));
    CHECK_EQUAL(renaming.refusal, MATHEXPR_RENAME_READ_OTHERWISE);
    CHECK_EQUAL(renaming.refused_at.start, 3);
    CHECK_EQUAL(renaming.refused_at.length, 1);
    CHECK_EQUAL(renaming.edit_count, 0);
    memset(&renaming16, 0xEE, sizeof(renaming16));
    renaming16.size = sizeof(renaming16);
    CHECK_OK(mathexpr_rename_in_text_utf16(expression, wide("x"), ZT, wide("x"), ZT, wide("2"), ZT, &renaming16));
    CHECK_EQUAL(renaming16.refusal, MATHEXPR_RENAME_NOT_A_NAME);

    CHECK_OK(mathexpr_get_literals_utf8(expression, UMLAUT "+[1,2]", ZT, &literals));
    CHECK_EQUAL(literals.reserved, 0);
    CHECK_EQUAL(literals.literal_count, 3);
    CHECK_EQUAL(literals.literals[0].start, 3);
    CHECK_EQUAL(literals.literals[0].length, 5);
    CHECK_EQUAL(literals.literals[0].value.type, MATHEXPR_POINT);
    CHECK_NUMBER(literals.literals[0].value.y, 2.0);
    CHECK_NUMBER(literals.literals[2].value.x, 2.0);
    CHECK_OK(mathexpr_get_literals_utf16(expression, wide("-5"), ZT, &literals));
    CHECK_NUMBER(literals.literals[0].value.x, -5.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_typesetting(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_text_utf8 formatted = {sizeof(formatted), 77, NULL, 0};
    mathexpr_text_utf8 typeset = {sizeof(typeset), 77, NULL, 0};
    mathexpr_text_utf16 typeset16 = {sizeof(typeset16), 77, NULL, 0};

    CHECK_OK(mathexpr_format_text_utf8(expression, "1/2", ZT, &formatted));
    CHECK_OK(mathexpr_typeset_text_utf8(expression, UMLAUT "/2", ZT, MATHEXPR_NOTATION_LATEX, &typeset));
    CHECK_EQUAL(typeset.reserved, 0);
    CHECK_TEXT(typeset.text, "\\frac{" UMLAUT "}{2}");
    CHECK_EQUAL(typeset.text_length, 12);
    CHECK_TEXT(formatted.text, "1 / 2"); /* of another function */
    CHECK_OK(mathexpr_typeset_text_utf16(expression, wide("2^x"), ZT, MATHEXPR_NOTATION_MATHML, &typeset16));
    CHECK_TEXT16(typeset16.text, "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">"
                                 "<msup><mn>2</mn><mi>x</mi></msup></math>");
    CHECK_STATUS(mathexpr_typeset_text_utf8(expression, "1", ZT, 2, &typeset), MATHEXPR_BAD_OPTION);
    CHECK_STATUS(mathexpr_typeset_text_utf16(NULL, wide("1"), ZT, 0, &typeset16), MATHEXPR_NULL_ARGUMENT);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_help(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_diagnostic_utf8 diagnostic;
    mathexpr_diagnostic_utf16 diagnostic16;
    mathexpr_signature_utf8 signature;
    mathexpr_signature_utf16 signature16;
    mathexpr_hover_utf8 hover;
    mathexpr_hover_utf16 hover16;
    mathexpr_value value = number(77);
    uint32_t state = 77;
    int32_t failed = 77;

    memset(&diagnostic, 0xEE, sizeof(diagnostic));
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_diagnose_text_utf8(expression, "1+" UMLAUT "*2", ZT, 0, &state, &diagnostic));
    CHECK_EQUAL(state, MATHEXPR_TYPING_WRONG);
    CHECK_EQUAL(diagnostic.code, MATHEXPR_PARSING_UNKNOWN_NAME);
    CHECK_EQUAL(diagnostic.start, 2);
    CHECK_EQUAL(diagnostic.length, 2);
    CHECK_TEXT(diagnostic.item, UMLAUT);
    memset(&diagnostic16, 0xEE, sizeof(diagnostic16));
    diagnostic16.size = sizeof(diagnostic16);
    CHECK_OK(mathexpr_diagnose_text_utf16(expression, wide("1+"), ZT, MATHEXPR_MAY_ASK_HOST, &state, &diagnostic16));
    CHECK_EQUAL(state, MATHEXPR_TYPING_UNFINISHED);
    CHECK_OK(mathexpr_diagnose_text_utf8(expression, "1", ZT, 0, &state, &diagnostic));
    CHECK_EQUAL(state, MATHEXPR_TYPING_COMPLETE);
    CHECK_EQUAL(diagnostic.message, 0);
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);

    memset(&signature, 0xEE, sizeof(signature));
    signature.size = sizeof(signature);
    CHECK_OK(mathexpr_get_signature_utf8(expression, UMLAUT "+min(" UMLAUT ",2", ZT, 10, &signature));
    CHECK_TEXT(signature.function, "min");
    CHECK_EQUAL(signature.name.start, 3);
    CHECK_EQUAL(signature.argument, 1);
    CHECK_EQUAL(signature.overload_count, 3);
    CHECK_EQUAL(signature.active_overload, 0);
    CHECK_EQUAL(signature.wanted, MATHEXPR_VALUE_NUMBER);
    CHECK_TEXT(signature.unit, "");
    CHECK_TEXT(signature.overloads[1].help, "min(x,y,z)");
    CHECK_TEXT(signature.overloads[1].description, "Return smaller of three values");
    CHECK_EQUAL(signature.overloads[1].parameter_count, 3);
    CHECK_TEXT(signature.overloads[1].parameters[2], "z");
    CHECK_EQUAL(signature.overloads[1].parameter_kind, MATHEXPR_VALUE_NUMBER);
    CHECK_EQUAL(signature.overloads[1].reserved, 0);
    /* A cursor inside a character means its start. */
    CHECK_OK(mathexpr_get_signature_utf8(expression, "min(" UMLAUT ",2", ZT, 5, &signature));
    CHECK_EQUAL(signature.argument, 0);
    memset(&signature16, 0xEE, sizeof(signature16));
    signature16.size = sizeof(signature16);
    CHECK_OK(mathexpr_get_signature_utf16(expression, wide("sin("), ZT, 99, &signature16));
    CHECK_TEXT16(signature16.unit, "degree");
    CHECK_OK(mathexpr_get_signature_utf16(expression, wide("sin("), ZT, 0, &signature16));
    CHECK_TEXT16(signature16.unit, "");

    memset(&hover, 0xEE, sizeof(hover));
    hover.size = sizeof(hover);
    CHECK_OK(mathexpr_get_hover_utf8(expression, "2*sqrt(16)", ZT, 4, 0, &hover));
    CHECK_EQUAL(hover.kind, MATHEXPR_TOKEN_FUNCTION);
    CHECK_EQUAL(hover.span.start, 2);
    CHECK_EQUAL(hover.span.length, 4);
    CHECK_TEXT(hover.name, "sqrt");
    CHECK_TEXT(hover.help, "sqrt(x)");
    CHECK_TEXT(hover.description, "Square root");
    CHECK(hover.domain[0] != 0);
    CHECK_TEXT(hover.unit, "");
    CHECK_TEXT(hover.example, "sqrt(2)");
    CHECK_EQUAL(hover.has_example_value, 1);
    CHECK_EQUAL(hover.has_value, 1);
    CHECK_NUMBER(hover.value.x, 4.0);
    CHECK_EQUAL(hover.value_span.start, 2);
    CHECK_EQUAL(hover.value_span.length, 8);
    memset(&hover16, 0xEE, sizeof(hover16));
    hover16.size = sizeof(hover16);
    CHECK_OK(mathexpr_get_hover_utf16(expression, wide("1+x"), ZT, 1, MATHEXPR_MAY_ASK_HOST, &hover16));
    CHECK_TEXT16(hover16.help, "x + y");
    CHECK_EQUAL(hover16.has_value, 0);
    CHECK_EQUAL(hover16.has_example_value, 0);
    CHECK_NUMBER(hover16.value.x, 0.0);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_completion(void)
{
    static const char* const recent[] = {"sqrt"};
    static const char* const bad[] = {"x", "\xFF", "y"};
    static const mathexpr_char16 text16[] = {0xD83D, 0xDE00, '=', 'w', 0};
    mathexpr_expression* const expression = plain();
    mathexpr_completion_options_utf8 options = {sizeof(options), 1, recent, 1, NULL, NULL};
    mathexpr_completions_utf8 completions = {sizeof(completions), 77, NULL, 0};
    mathexpr_completions_utf16 completions16 = {sizeof(completions16), 77, NULL, 0};
    const mathexpr_value five = number(5);

    CHECK_OK(mathexpr_set_variable_utf8(expression, "w" UMLAUT, ZT, &five, NULL));
    CHECK_OK(mathexpr_get_completions_utf8(expression, UMLAUT "=sq", ZT, 5, &options, &completions));
    CHECK_EQUAL(completions.item_count, 1);
    CHECK_EQUAL(completions.items[0].kind, MATHEXPR_TOKEN_FUNCTION);
    CHECK_EQUAL(completions.items[0].value_kind, MATHEXPR_VALUE_NUMBER);
    CHECK_TEXT(completions.items[0].name, "sqrt");
    CHECK_TEXT(completions.items[0].description, "Square root");
    CHECK_TEXT(completions.items[0].edit.replacement, "sqrt(2)");
    CHECK_EQUAL(completions.items[0].edit.replacement_length, 7);
    CHECK_EQUAL(completions.items[0].edit.start, 3);
    CHECK_EQUAL(completions.items[0].edit.length, 2);
    CHECK_EQUAL(completions.items[0].selection.start, 8);
    CHECK_EQUAL(completions.items[0].selection.length, 1);
    CHECK_EQUAL(completions.items[0].has_value, 0);
    CHECK_OK(mathexpr_get_completions_utf8(expression, "w", ZT, 1, NULL, &completions));
    CHECK_EQUAL(completions.item_count, 1);
    CHECK_TEXT(completions.items[0].name, "w" UMLAUT);
    CHECK_EQUAL(completions.items[0].selection.start, 3);
    CHECK_EQUAL(completions.items[0].has_value, 1);
    CHECK_NUMBER(completions.items[0].value.x, 5.0);
    CHECK_EQUAL(completions.reserved, 0);
    CHECK_OK(mathexpr_get_completions_utf16(expression, text16, ZT, 4, NULL, &completions16));
    CHECK_EQUAL(completions16.item_count, 1);
    CHECK_EQUAL(completions16.items[0].edit.start, 3);
    CHECK_EQUAL(completions16.items[0].selection.start, 5);
    CHECK_EQUAL(completions16.reserved, 0);
    /* A cursor between the two units of a character counts as before it. */
    CHECK_OK(mathexpr_get_completions_utf16(expression, text16, ZT, 1, NULL, &completions16));
    CHECK(completions16.item_count > 0);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "wz", ZT, &five, NULL));
    CHECK_OK(mathexpr_get_completions_utf8(expression, "w" UMLAUT, ZT, 3, NULL, &completions));
    CHECK_EQUAL(completions.item_count, 1);
    CHECK_OK(mathexpr_get_completions_utf8(expression, "w" UMLAUT, ZT, 2, NULL, &completions));
    CHECK_EQUAL(completions.item_count, 2);

    /* The same inside the first character: the completions are those before it, not those after it. */
    CHECK_OK(mathexpr_get_completions_utf8(expression, UMLAUT, ZT, 2, NULL, &completions));
    CHECK_EQUAL(completions.item_count, 0);
    CHECK_OK(mathexpr_get_completions_utf8(expression, UMLAUT, ZT, 1, NULL, &completions));
    CHECK(completions.item_count > 0);

    options.recent = NULL;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "w", ZT, 1, &options, &completions), MATHEXPR_NULL_ARGUMENT);
    options.recent = bad;
    options.recent_count = 3;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "w", ZT, 1, &options, &completions), MATHEXPR_BAD_UTF8);
    options.size = 0;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "w", ZT, 1, &options, &completions), MATHEXPR_BAD_SIZE);
    CHECK_OK(mathexpr_destroy(expression));
}

/* A host that offers three names, with notes on two of them. */
static const char* offer_three(void* context, uint32_t index)
{
    static const char* const names[] = {"depth_unknown", "depth_point", "depth_cyclic"};
    (void)context;
    return index < 3 ? names[index] : NULL;
}

static int32_t tell(void* context, const char* name, size_t length, mathexpr_name_notes_utf8* notes)
{
    CHECK_EQUAL(length, strlen(name));
    CHECK_EQUAL(notes->size, sizeof(*notes));
    CHECK_EQUAL(notes->value_kind, MATHEXPR_VALUE_UNKNOWN);
    CHECK(notes->description == NULL && notes->unavailable == NULL);
    if (strcmp(name, "depth_unknown") == 0)
    {
        notes->description = "ignored";
        return *(const int32_t*)context;
    }
    notes->value_kind = strcmp(name, "depth_point") == 0 ? MATHEXPR_VALUE_POINT : MATHEXPR_VALUE_NUMBER;
    notes->description = "of the hole " UMLAUT;
    notes->unavailable = strcmp(name, "depth_cyclic") == 0 ? "depends on this field" : NULL;
    return MATHEXPR_LOOKUP_FOUND;
}

static int32_t tell_badly(void* context, const char* name, size_t length, mathexpr_name_notes_utf8* notes)
{
    (void)name;
    (void)length;
    *notes = *(const mathexpr_name_notes_utf8*)context;
    return MATHEXPR_LOOKUP_FOUND;
}

static int32_t tell16(void* context, const mathexpr_char16* name, size_t length, mathexpr_name_notes_utf16* notes)
{
    (void)context;
    CHECK_EQUAL(name[length], 0);
    notes->value_kind = MATHEXPR_VALUE_EITHER;
    notes->unavailable = wide("not here");
    return MATHEXPR_LOOKUP_FOUND;
}

void test_editor_name_notes(void)
{
    mathexpr_options_utf8 creation = {0};
    int32_t answer = MATHEXPR_LOOKUP_NOT_KNOWN;
    mathexpr_completion_options_utf8 options = {sizeof(options), 0, NULL, 0, &answer, tell};
    mathexpr_completion_options_utf16 options16 = {sizeof(options16), 0, NULL, 0, NULL, tell16};
    mathexpr_completions_utf8 completions = {sizeof(completions), 0, NULL, 0};
    mathexpr_completions_utf16 completions16 = {sizeof(completions16), 0, NULL, 0};
    mathexpr_name_notes_utf8 bad = {sizeof(bad), MATHEXPR_VALUE_EITHER + 1, NULL, NULL};
    mathexpr_expression* expression = NULL;

    creation.size = sizeof(creation);
    creation.get_name = offer_three;
    CHECK_OK(mathexpr_create_utf8(&creation, &expression));
    CHECK_OK(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions));
    CHECK_EQUAL(completions.item_count, 3);
    CHECK_TEXT(completions.items[0].name, "depth_point");
    CHECK_EQUAL(completions.items[0].value_kind, MATHEXPR_VALUE_POINT);
    CHECK_TEXT(completions.items[0].description, "of the hole " UMLAUT);
    CHECK_TEXT(completions.items[0].unavailable, "");
    CHECK_TEXT(completions.items[1].name, "depth_cyclic");
    CHECK_TEXT(completions.items[1].unavailable, "depends on this field");
    CHECK_TEXT(completions.items[2].name, "depth_unknown");
    CHECK_EQUAL(completions.items[2].value_kind, MATHEXPR_VALUE_UNKNOWN);
    CHECK_TEXT(completions.items[2].description, "");
    /* Where a number is required, names of points are not proposed. */
    CHECK_OK(mathexpr_get_completions_utf8(expression, "sin(depth", ZT, 9, &options, &completions));
    CHECK_EQUAL(completions.item_count, 2);
    CHECK_TEXT(completions.items[0].name, "depth_cyclic");

    CHECK_OK(mathexpr_get_completions_utf16(expression, wide("depth"), ZT, 5, &options16, &completions16));
    CHECK_EQUAL(completions16.item_count, 3);
    CHECK_TEXT16(completions16.items[0].unavailable, "not here");

    answer = MATHEXPR_LOOKUP_REFUSED;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions),
                 MATHEXPR_HOST_CALLBACK_REFUSED);
    answer = 77;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions),
                 MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    options.get_notes = tell_badly;
    options.context = &bad;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions),
                 MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    bad.value_kind = MATHEXPR_VALUE_NUMBER;
    bad.description = "\xFF";
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions),
                 MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    bad.description = NULL;
    bad.unavailable = "\xFF";
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions),
                 MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    options.get_notes = throwing_get_notes;
    CHECK_STATUS(mathexpr_get_completions_utf8(expression, "depth", ZT, 5, &options, &completions),
                 MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_name_index(void)
{
    static const mathexpr_char16 umlaut16[] = {'d', 0xE4, 0};
    mathexpr_name_index* index = NULL;
    mathexpr_expression* expression = plain();
    mathexpr_name_notes_utf8 notes = {sizeof(notes), MATHEXPR_VALUE_POINT, "of the hole", NULL};
    mathexpr_name_notes_utf16 notes16 = {sizeof(notes16), MATHEXPR_VALUE_NUMBER, NULL, NULL};
    mathexpr_tokens tokens = {sizeof(tokens), 0, NULL, 0};
    mathexpr_completions_utf8 completions = {sizeof(completions), 0, NULL, 0};

    CHECK_STATUS(mathexpr_create_name_index(NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_OK(mathexpr_create_name_index(&index));
    CHECK_OK(mathexpr_add_indexed_name_utf8(index, "d_axis", ZT, &notes));
    notes16.unavailable = wide("not here");
    CHECK_OK(mathexpr_add_indexed_name_utf16(index, umlaut16, ZT, &notes16));
    CHECK_OK(mathexpr_add_indexed_name_utf8(index, "d", ZT, NULL));
    CHECK_OK(mathexpr_set_name_index(expression, index));

    CHECK_OK(mathexpr_get_tokens_utf8(expression, "d_axis+unknown", ZT, &tokens));
    CHECK_EQUAL(tokens.tokens[0].kind, MATHEXPR_TOKEN_HOST_NAME);
    CHECK_EQUAL(tokens.tokens[2].kind, MATHEXPR_TOKEN_UNKNOWN_NAME);
    CHECK_OK(mathexpr_remove_indexed_name_utf8(index, "d", ZT));
    CHECK_STATUS(mathexpr_remove_indexed_name_utf16(index, wide("d"), ZT), MATHEXPR_NOT_FOUND);
    CHECK_OK(mathexpr_get_tokens_utf8(expression, "d", ZT, &tokens));
    CHECK_EQUAL(tokens.tokens[0].kind, MATHEXPR_TOKEN_UNKNOWN_NAME);

    CHECK_STATUS(mathexpr_add_indexed_name_utf8(NULL, "d", ZT, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_add_indexed_name_utf8(index, NULL, 1, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_add_indexed_name_utf8(index, "\xFF", ZT, &notes), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_remove_indexed_name_utf8(index, "a\0b", 3), MATHEXPR_ZERO_IN_TEXT);
    notes.value_kind = MATHEXPR_VALUE_EITHER + 1;
    CHECK_STATUS(mathexpr_add_indexed_name_utf8(index, "d", ZT, &notes), MATHEXPR_BAD_OPTION);
    notes.size = 3;
    CHECK_STATUS(mathexpr_add_indexed_name_utf8(index, "d", ZT, &notes), MATHEXPR_BAD_SIZE);
    /* In an earlier version, notes had no texts: these members are not read. */
    notes.size = offsetof(mathexpr_name_notes_utf8, description);
    notes.value_kind = MATHEXPR_VALUE_NUMBER;
    notes.description = "\xFF";
    CHECK_OK(mathexpr_add_indexed_name_utf8(index, "d_early", ZT, &notes));

    CHECK_OK(mathexpr_destroy_name_index(index));
    CHECK_OK(mathexpr_destroy_name_index(NULL));
    CHECK_OK(mathexpr_get_completions_utf8(expression, "d_", ZT, 2, NULL, &completions));
    CHECK_EQUAL(completions.item_count, 2);
    CHECK_TEXT(completions.items[0].name, "d_axis");
    CHECK_TEXT(completions.items[0].description, "of the hole");
    CHECK_TEXT(completions.items[1].name, "d_early");
    CHECK_OK(mathexpr_get_completions_utf8(expression, "d" UMLAUT, ZT, 3, NULL, &completions));
    CHECK_EQUAL(completions.item_count, 1);
    CHECK_TEXT(completions.items[0].unavailable, "not here");
    if (mathexpr_checks_handles())
    {
        CHECK_STATUS(mathexpr_set_name_index(expression, index), MATHEXPR_STALE_HANDLE);
        CHECK_STATUS(mathexpr_add_indexed_name_utf8(index, "d", ZT, NULL), MATHEXPR_STALE_HANDLE);
    }
    CHECK_OK(mathexpr_set_name_index(expression, NULL));
    CHECK_OK(mathexpr_get_tokens_utf8(expression, "d_axis", ZT, &tokens));
    CHECK_EQUAL(tokens.tokens[0].kind, MATHEXPR_TOKEN_UNKNOWN_NAME);
    CHECK_STATUS(mathexpr_set_name_index(NULL, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_editor_empty_answers(void)
{
    mathexpr_expression* const expression = plain();
    struct answers answers;

    prepare_answers(&answers);
    CHECK_OK(mathexpr_get_tokens_utf8(expression, NULL, 0, &answers.tokens));
    CHECK(answers.tokens.tokens == NULL && answers.tokens.token_count == 0);
    CHECK_OK(mathexpr_find_references_utf8(expression, "", 0, "", 0, &answers.spans));
    CHECK(answers.spans.spans == NULL && answers.spans.span_count == 0);
    CHECK_OK(mathexpr_get_literals_utf8(expression, "x", ZT, &answers.literals));
    CHECK(answers.literals.literals == NULL && answers.literals.literal_count == 0);
    CHECK_OK(mathexpr_get_completions_utf8(expression, "1 ", ZT, 2, NULL, &answers.completions));
    CHECK(answers.completions.items == NULL && answers.completions.item_count == 0);
    CHECK_OK(mathexpr_get_signature_utf8(expression, "1", ZT, 1, &answers.signature));
    CHECK(answers.signature.overloads == NULL && answers.signature.overload_count == 0);
    CHECK_TEXT(answers.signature.function, "");
    CHECK_OK(mathexpr_get_hover_utf8(expression, " ", ZT, 0, 0, &answers.hover));
    CHECK_EQUAL(answers.hover.span.length, 0);
    CHECK_TEXT(answers.hover.name, "");
    CHECK_OK(mathexpr_format_text_utf8(expression, " ", ZT, &answers.text));
    CHECK_TEXT(answers.text.text, "");
    CHECK_OK(mathexpr_destroy(expression));
}

/* Every function refuses invalid arguments before it writes anything. */
void test_editor_refuses(void)
{
    mathexpr_expression* const expression = plain();
    struct answers answers;
    struct answers untouched;
    uint32_t state = 77;

    prepare_answers(&answers);

    CHECK_STATUS(mathexpr_get_tokens_utf8(NULL, "", 0, &answers.tokens), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_tokens_utf16(expression, wide(""), 0, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_tokens_utf8(expression, NULL, 1, &answers.tokens), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_tokens_utf8(expression, "\xFF", 1, &answers.tokens), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_get_tokens_utf8(expression, "a\0b", 3, &answers.tokens), MATHEXPR_ZERO_IN_TEXT);
    CHECK_STATUS(mathexpr_format_text_utf8(expression, "", 0, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_format_text_utf16(NULL, wide(""), 0, &answers.text16), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_find_references_utf8(expression, "x", ZT, NULL, 1, &answers.spans), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_find_references_utf16(expression, wide("x"), ZT, wide("x"), ZT, NULL),
                 MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_rename_in_text_utf8(expression, "x", ZT, "\xFF", ZT, "y", ZT, &answers.renaming),
                 MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_rename_in_text_utf8(expression, "x", ZT, "x", ZT, "\xFF", ZT, &answers.renaming),
                 MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_rename_in_text_utf16(NULL, wide("x"), ZT, wide("x"), ZT, wide("y"), ZT, &answers.renaming16),
                 MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_literals_utf8(NULL, "", 0, &answers.literals), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_literals_utf16(expression, wide(""), 0, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_diagnose_text_utf8(expression, "", 0, 0, NULL, &answers.diagnostic), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_diagnose_text_utf8(expression, "", 0, 2, &state, &answers.diagnostic), MATHEXPR_BAD_OPTION);
    CHECK_STATUS(mathexpr_diagnose_text_utf16(NULL, wide(""), 0, 0, &state, &answers.diagnostic16),
                 MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_signature_utf8(NULL, "", 0, 0, &answers.signature), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_signature_utf16(NULL, wide(""), 0, 0, &answers.signature16), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_hover_utf8(expression, "", 0, 0, 2, &answers.hover), MATHEXPR_BAD_OPTION);
    CHECK_STATUS(mathexpr_get_hover_utf16(NULL, wide(""), 0, 0, 0, &answers.hover16), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_completions_utf8(NULL, "", 0, 0, NULL, &answers.completions), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_get_completions_utf16(expression, wide(""), 0, 0, NULL, NULL), MATHEXPR_NULL_ARGUMENT);
    prepare_answers(&untouched);
    CHECK_EQUAL(memcmp(&answers, &untouched, sizeof(answers)), 0);
    CHECK_EQUAL(state, 77);
    CHECK_OK(mathexpr_destroy(expression));
    if (mathexpr_checks_handles())
    {
        CHECK_STATUS(mathexpr_get_tokens_utf8(expression, "", 0, &answers.tokens), MATHEXPR_STALE_HANDLE);
    }
}

/* A host that offers "depth" with the value 7, and calls the library in its callbacks. */
struct editing_host
{
    mathexpr_expression* expression;
    int asked_count;
    int lookup_count;
};

static const char* offer(void* context, uint32_t index)
{
    struct editing_host* const host = (struct editing_host*)context;
    mathexpr_tokens tokens = {sizeof(tokens), 0, NULL, 0};
    ++host->asked_count;
    CHECK_STATUS(mathexpr_get_tokens_utf8(host->expression, "x", ZT, &tokens), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_set_expression_utf8(host->expression, "1", ZT), MATHEXPR_BUSY);
    return index == 0 ? "depth" : NULL;
}

static int32_t answer(void* context, const char* name, size_t length, mathexpr_value* value)
{
    struct editing_host* const host = (struct editing_host*)context;
    (void)length;
    ++host->lookup_count;
    *value = number(7);
    return strcmp(name, "refused") == 0 ? MATHEXPR_LOOKUP_REFUSED
           : strcmp(name, "depth") == 0 ? MATHEXPR_LOOKUP_FOUND
                                        : MATHEXPR_LOOKUP_NOT_KNOWN;
}

void test_editor_host(void)
{
    struct editing_host host = {NULL, 0, 0};
    mathexpr_options_utf8 options = {0};
    mathexpr_hover_utf8 hover = {0};
    mathexpr_tokens tokens = {sizeof(tokens), 0, NULL, 0};
    mathexpr_names_utf8 names = {sizeof(names), 0, NULL, 0};

    options.size = sizeof(options);
    options.context = &host;
    options.lookup = answer;
    options.get_name = offer;
    CHECK_OK(mathexpr_create_utf8(&options, &host.expression));
    CHECK_OK(mathexpr_get_tokens_utf8(host.expression, "depth", ZT, &tokens));
    CHECK_EQUAL(tokens.tokens[0].kind, MATHEXPR_TOKEN_HOST_NAME);
    CHECK_EQUAL(host.asked_count, 2);
    hover.size = sizeof(hover);
    CHECK_OK(mathexpr_get_hover_utf8(host.expression, "depth", ZT, 0, 0, &hover));
    CHECK_EQUAL(hover.has_value, 0);
    CHECK_EQUAL(host.lookup_count, 0);
    CHECK_OK(mathexpr_get_hover_utf8(host.expression, "depth", ZT, 0, MATHEXPR_MAY_ASK_HOST, &hover));
    CHECK_NUMBER(hover.value.x, 7.0);
    CHECK_EQUAL(host.lookup_count, 1);
    CHECK_STATUS(mathexpr_get_hover_utf8(host.expression, "(refused)", ZT, 0, MATHEXPR_MAY_ASK_HOST, &hover),
                 MATHEXPR_HOST_CALLBACK_REFUSED);
    CHECK_OK(mathexpr_get_names_utf8(host.expression, MATHEXPR_NAMES_DEFINED, &names));
    CHECK_EQUAL(names.name_count, 0);
    CHECK_OK(mathexpr_destroy(host.expression));
}
