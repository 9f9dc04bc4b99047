// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* sizes.c - structures of earlier and later versions, and invalid sizes. */
#include "tests/c/sizes.h"

static int shown_count = 0;

static void count(void* context, uint32_t id, const char* text, size_t length)
{
    (void)context;
    (void)id;
    (void)text;
    (void)length;
    ++shown_count;
}

void test_options_of_other_sizes(void)
{
    LATER(mathexpr_options_utf8) later;
    mathexpr_options_utf8 options = {0};
    mathexpr_expression* expression = NULL;
    mathexpr_value value = number(77);

    /* An earlier version: members that it lacks read as 0, whatever the memory contains. */
    memset(&options, 0xEE, sizeof(options));
    options.size = offsetof(mathexpr_options_utf8, flags);
    options.kind = MATHEXPR_EXPRESSION;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "unk+", ZT, &value), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_destroy(expression));

    memset(&later, 0, sizeof(later));
    later.known.size = sizeof(later);
    later.known.flags = MATHEXPR_SHOW_MESSAGES;
    later.known.show_message = count;
    CHECK_OK(mathexpr_create_utf8(&later.known, &expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(shown_count, 1);
    CHECK_OK(mathexpr_destroy(expression));

    expression = NULL;
    later.later = 1; /* something that this version could not do */
    CHECK_STATUS(mathexpr_create_utf8(&later.known, &expression), MATHEXPR_BAD_SIZE);
    CHECK(expression == NULL);
}

void test_read_structures_of_other_sizes(void)
{
    LATER(mathexpr_limits) later;
    mathexpr_limits limits = {0};
    mathexpr_expression* const expression = plain();
    mathexpr_results results = {0};
    double found[2] = {7, 7};

    limits.size = offsetof(mathexpr_limits, max_records);
    limits.max_text_length = 10;
    limits.max_records = 99;
    limits.max_nesting = 99;
    CHECK_OK(mathexpr_set_limits(expression, &limits));
    limits.size = sizeof(limits);
    CHECK_OK(mathexpr_get_limits(expression, &limits));
    CHECK_EQUAL(limits.max_text_length, 10);
    CHECK_EQUAL(limits.max_records, 0);
    CHECK_EQUAL(limits.max_nesting, 0);

    memset(&later, 0, sizeof(later));
    later.known.size = sizeof(later);
    later.known.max_records = 5;
    CHECK_OK(mathexpr_set_limits(expression, &later.known));
    later.known.max_records = 6;
    later.later = 1;
    CHECK_STATUS(mathexpr_set_limits(expression, &later.known), MATHEXPR_BAD_SIZE);
    CHECK_OK(mathexpr_get_limits(expression, &limits));
    CHECK_EQUAL(limits.max_records, 5);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "1+1", ZT));
    memset(&results, 0xEE, sizeof(results));
    results.size = offsetof(mathexpr_results, coordinate_stride);
    results.kind = MATHEXPR_NUMBERS;
    results.data = found;
    results.stride = sizeof(double);
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 2, &results, 1, NULL));
    CHECK_NUMBER(found[1], 2.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_written_structures_of_other_sizes(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value one = number(1);
    mathexpr_results results = {0};
    double found = 7;

    CHECK_WRITTEN(mathexpr_limits, mathexpr_get_limits(expression, asked), max_nesting, asked->max_nesting == 0);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+foo(2)", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_WRITTEN(mathexpr_diagnostic_utf8, mathexpr_get_diagnostic_utf8(expression, asked), text,
                  asked->message == 4 && asked->length == 3 && strcmp(asked->item, "foo") == 0);
    CHECK_WRITTEN(mathexpr_diagnostic_utf16, mathexpr_get_diagnostic_utf16(expression, asked), text,
                  asked->message == 4 && asked->length == 3 && asked->item_length == 3);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &one, NULL));
    CHECK_WRITTEN(mathexpr_names_utf8, mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_DEFINED, asked), name_count,
                  asked->name_count == 1 && strcmp(asked->names[0], "a") == 0);
    CHECK_WRITTEN(mathexpr_names_utf16, mathexpr_get_names_utf16(expression, MATHEXPR_NAMES_DEFINED, asked), name_count,
                  asked->name_count == 1 && asked->names[0][0] == 'a');
    CHECK_WRITTEN(mathexpr_vocabulary_item_utf8, mathexpr_get_vocabulary_item_utf8(0, asked), help,
                  asked->symbol[0] != '\0' && asked->description[0] == '\0');
    CHECK_WRITTEN(mathexpr_vocabulary_item_utf16, mathexpr_get_vocabulary_item_utf16(0, asked), help,
                  asked->symbol[0] != 0 && asked->description[0] == 0);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "a+1", ZT));
    results.size = sizeof(results);
    results.data = &found;
    CHECK_WRITTEN(mathexpr_bulk_outcome, mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 1, &results, 1, asked),
                  column, asked->error == MATHEXPR_BULK_NONE && asked->failed_count == 0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_columns_of_other_sizes(void)
{
    LATER(mathexpr_column_utf8) later[2];
    mathexpr_expression* const expression = plain();
    mathexpr_results results = {0};
    const double xs[] = {1, 2};
    const double ys[] = {10, 20};
    const mathexpr_value one = number(1);
    double found[2] = {7, 7};

    results.size = sizeof(results);
    results.data = found;
    results.stride = sizeof(double);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "x", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "y", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "x+y", ZT));
    memset(later, 0, sizeof(later));
    later[0].known.size = later[1].known.size = sizeof(later[0]);
    later[0].known.name = "x";
    later[1].known.name = "y";
    later[0].known.name_length = later[1].known.name_length = 1;
    later[0].known.data = xs;
    later[1].known.data = ys;
    later[0].known.stride = later[1].known.stride = sizeof(double);
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, &later[0].known, 2, 2, &results, 1, NULL));
    CHECK_NUMBER(found[0], 11.0);
    CHECK_NUMBER(found[1], 22.0);

    found[0] = 7;
    later[1].known.size = sizeof(mathexpr_column_utf8);
    CHECK_STATUS(mathexpr_evaluate_bulk_utf8(expression, &later[0].known, 2, 2, &results, 1, NULL), MATHEXPR_BAD_SIZE);
    later[1].known.size = sizeof(later[0]);
    later[1].later = 1;
    CHECK_STATUS(mathexpr_evaluate_bulk_utf8(expression, &later[0].known, 2, 2, &results, 1, NULL), MATHEXPR_BAD_SIZE);
    CHECK_NUMBER(found[0], 7.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_impossible_sizes(void)
{
    static const uint32_t sizes[] = {0, 1, 3, 13, 8 * 1024, 0xEEEEEEEE, 0xFFFFFFFF};
    mathexpr_expression* const expression = plain();
    mathexpr_expression* other = NULL;
    const mathexpr_value one = number(1);
    mathexpr_options_utf8 options = {0};
    mathexpr_options_utf16 options16 = {0};
    mathexpr_limits limits = {0};
    mathexpr_diagnostic_utf8 diagnostic = {0};
    mathexpr_diagnostic_utf16 diagnostic16 = {0};
    mathexpr_names_utf8 names = {0};
    mathexpr_names_utf16 names16 = {0};
    mathexpr_vocabulary_item_utf8 item = {0};
    mathexpr_vocabulary_item_utf16 item16 = {0};
    mathexpr_name_refusal refusal = {0};
    mathexpr_column_utf8 column = {0};
    mathexpr_column_utf16 column16 = {0};
    mathexpr_results results = {0};
    mathexpr_results good = {0};
    mathexpr_bulk_outcome outcome = {0};
    double found = 7;
    size_t index = 0;

#define REFUSES(call) CHECK_STATUS(call, MATHEXPR_BAD_SIZE)
    good.size = sizeof(good);
    good.data = &found;
    CHECK_OK(mathexpr_set_expression_utf8(expression, "1+1", ZT));
    for (index = 0; index < sizeof(sizes) / sizeof(sizes[0]); ++index)
    {
        options.size = options16.size = limits.size = diagnostic.size = diagnostic16.size = sizes[index];
        names.size = names16.size = item.size = item16.size = refusal.size = sizes[index];
        column.size = column16.size = results.size = outcome.size = sizes[index];
        REFUSES(mathexpr_create_utf8(&options, &other));
        REFUSES(mathexpr_create_utf16(&options16, &other));
        REFUSES(mathexpr_set_limits(expression, &limits));
        REFUSES(mathexpr_get_limits(expression, &limits));
        REFUSES(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
        REFUSES(mathexpr_get_diagnostic_utf16(expression, &diagnostic16));
        REFUSES(mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_USED, &names));
        REFUSES(mathexpr_get_names_utf16(expression, MATHEXPR_NAMES_USED, &names16));
        REFUSES(mathexpr_get_vocabulary_item_utf8(0, &item));
        REFUSES(mathexpr_get_vocabulary_item_utf16(0, &item16));
        REFUSES(mathexpr_set_variable_utf8(expression, "a", ZT, &one, &refusal));
        REFUSES(mathexpr_set_variable_utf16(expression, wide("a"), ZT, &one, &refusal));
        REFUSES(mathexpr_evaluate_bulk_utf8(expression, &column, 1, 1, &good, 1, NULL));
        REFUSES(mathexpr_evaluate_bulk_utf16(expression, &column16, 1, 1, &good, 1, NULL));
        REFUSES(mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 1, &results, 1, NULL));
        REFUSES(mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 1, &good, 1, &outcome));
    }
    CHECK(other == NULL);
    CHECK_NUMBER(found, 7.0);
    names.size = sizeof(names);
    CHECK_OK(mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_DEFINED, &names));
    CHECK_EQUAL(names.name_count, 0);
    CHECK_OK(mathexpr_destroy(expression));
}
