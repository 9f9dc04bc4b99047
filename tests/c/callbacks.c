// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* callbacks.c - host callbacks: their arguments, their valid results, and the outcome of invalid results. */
#include "tests/c/check.h"
#include "tests/c/throwing_host.h"

#include <string.h>

/* A host that supplies one value for every name, and records the look-ups. */
struct host
{
    int32_t answer;
    mathexpr_value value;
    int asked_count;
    char last[32];
};

static int32_t lookup(void* context, const char* name, size_t length, mathexpr_value* value)
{
    struct host* const host = (struct host*)context;
    ++host->asked_count;
    CHECK_EQUAL(strlen(name), length);
    CHECK_EQUAL(value->type, MATHEXPR_NUMBER);
    CHECK_NUMBER(value->x, 0.0);
    if (length < sizeof(host->last))
    {
        memcpy(host->last, name, length + 1);
    }
    *value = host->value;
    return host->answer;
}

static int32_t lookup16(void* context, const mathexpr_char16* name, size_t length, mathexpr_value* value)
{
    struct host* const host = (struct host*)context;
    ++host->asked_count;
    CHECK_EQUAL(name[length], 0);
    CHECK_EQUAL(length, 3);
    CHECK_EQUAL(name[0], 0xD83D);
    CHECK_EQUAL(name[1], 0xDE00);
    CHECK_EQUAL(name[2], 'x');
    *value = host->value;
    return host->answer;
}

static mathexpr_expression* asking(struct host* host)
{
    mathexpr_options_utf8 options = {0};
    mathexpr_expression* expression = NULL;
    options.size = sizeof(options);
    options.context = host;
    options.lookup = lookup;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    return expression;
}

void test_lookup(void)
{
    struct host host = {MATHEXPR_LOOKUP_FOUND, {0, 0, 0, 0, 0, 0, 0}, 0, ""};
    mathexpr_expression* const expression = asking(&host);
    mathexpr_value value = number(77);

    host.value = number(2.5);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "Width\xC3\xA4*2", ZT, &value));
    CHECK_NUMBER(value.x, 5.0);
    CHECK_TEXT(host.last, "Width\xC3\xA4");
    CHECK_EQUAL(host.asked_count, 1);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "width\xC3\xA4+1", ZT, &value));
    CHECK_NUMBER(value.x, 3.5);
    CHECK_EQUAL(host.asked_count, 1);

    host.value = point(1, 2, 3);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "corner*2", ZT, &value));
    CHECK_EQUAL(value.type, MATHEXPR_POINT);
    CHECK_NUMBER(value.z, 6.0);

    /* The host knows this name, but a variable cannot have it. */
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "1+a.b", ZT, &value), MATHEXPR_DEFINITION_ERROR);
    CHECK_TEXT(host.last, "a.b");
    host.answer = MATHEXPR_LOOKUP_NOT_KNOWN;
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "unk", ZT, &value), MATHEXPR_PARSING_ERROR);
    CHECK_TEXT(host.last, "unk");
    CHECK_NUMBER(value.z, 6.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_lookup_utf16(void)
{
    static const mathexpr_char16 text[] = {'2', '*', 0xD83D, 0xDE00, 'x', 0};
    struct host host = {MATHEXPR_LOOKUP_FOUND, {0, 0, 0, 0, 4.0, 0, 0}, 0, ""};
    mathexpr_options_utf16 options = {0};
    mathexpr_expression* expression = NULL;
    mathexpr_value value = number(77);

    options.size = sizeof(options);
    options.context = &host;
    options.lookup = lookup16;
    CHECK_OK(mathexpr_create_utf16(&options, &expression));
    CHECK_OK(mathexpr_evaluate_text_utf16(expression, text, ZT, &value));
    CHECK_NUMBER(value.x, 8.0);
    CHECK_EQUAL(host.asked_count, 1);
    CHECK_OK(mathexpr_remove_variable_utf16(expression, text + 2, ZT));
    /* The encoding of the text does not matter. */
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "3*\xF0\x9F\x98\x80x", ZT, &value));
    CHECK_NUMBER(value.x, 12.0);
    CHECK_EQUAL(host.asked_count, 2);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_refused_lookup(void)
{
    struct host host = {MATHEXPR_LOOKUP_REFUSED, {0, 0, 0, 0, 1.0, 0, 0}, 0, ""};
    mathexpr_expression* const expression = asking(&host);
    mathexpr_value value = number(77);
    int32_t failed = 1;

    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a+b", ZT), MATHEXPR_HOST_CALLBACK_REFUSED);
    CHECK_EQUAL(host.asked_count, 1);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);

    host.answer = 3;
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a", ZT), MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    host.answer = -1;
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a", ZT), MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    host.answer = MATHEXPR_LOOKUP_FOUND;
    host.value.type = 2;
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a", ZT), MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    host.value.type = MATHEXPR_NUMBER;
    host.value.flag = 255;
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a", ZT), MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "a", ZT, &value), MATHEXPR_NOT_FOUND);

    /* The value is ignored if the name is not known. */
    host.answer = MATHEXPR_LOOKUP_NOT_KNOWN;
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a", ZT), MATHEXPR_PARSING_ERROR);
    host.answer = MATHEXPR_LOOKUP_FOUND;
    host.value.flag = 0;
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "a+b", ZT, &value));
    CHECK_NUMBER(value.x, 2.0);
    CHECK_OK(mathexpr_destroy(expression));
}

/* The messages shown to a user. */
struct screen
{
    mathexpr_expression* expression;
    int message_count;
    uint32_t last_id;
    char last[256];
};

static void show(void* context, uint32_t id, const char* text, size_t length)
{
    struct screen* const screen = (struct screen*)context;
    mathexpr_diagnostic_utf8 diagnostic = {0};
    ++screen->message_count;
    screen->last_id = id;
    CHECK_EQUAL(strlen(text), length);
    if (length < sizeof(screen->last))
    {
        memcpy(screen->last, text, length + 1);
    }
    /* The diagnostic may be requested here, but may be incomplete. */
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_get_diagnostic_utf8(screen->expression, &diagnostic));
}

/* The diagnostic agrees with the message. */
static void check_told(const struct screen* screen, size_t start)
{
    mathexpr_diagnostic_utf8 diagnostic = {0};
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_get_diagnostic_utf8(screen->expression, &diagnostic));
    CHECK_EQUAL(diagnostic.message, screen->last_id);
    CHECK_TEXT(diagnostic.text, screen->last);
    CHECK_EQUAL(diagnostic.start, start);
}

void test_messages(void)
{
    struct screen screen = {NULL, 0, 0, ""};
    mathexpr_options_utf8 options = {0};
    mathexpr_value value = number(77);
    const mathexpr_value zero = number(0);

    options.size = sizeof(options);
    options.flags = MATHEXPR_SHOW_MESSAGES;
    options.context = &screen;
    options.show_message = show;
    CHECK_OK(mathexpr_create_utf8(&options, &screen.expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(screen.expression, "1+unk", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(screen.message_count, 1);
    CHECK_EQUAL(screen.last_id, 1);
    check_told(&screen, 2);
    CHECK_OK(mathexpr_set_variable_utf8(screen.expression, "zero", ZT, &zero, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(screen.expression, "1/zero", ZT));
    CHECK_EQUAL(screen.message_count, 1);
    CHECK_STATUS(mathexpr_evaluate(screen.expression, &value), MATHEXPR_REFUSED);
    CHECK_EQUAL(screen.message_count, 2);
    CHECK_EQUAL(screen.last_id, 10);
    check_told(&screen, 1);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(screen.expression, "pi=1", ZT, &value), MATHEXPR_DEFINITION_ERROR);
    CHECK_EQUAL(screen.message_count, 3);
    CHECK_EQUAL(screen.last_id, 3);
    check_told(&screen, 0);
    CHECK_OK(mathexpr_destroy(screen.expression));

    /* Without the flag, only message 19 is shown. */
    options.flags = 0;
    screen.message_count = 0;
    CHECK_OK(mathexpr_create_utf8(&options, &screen.expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(screen.expression, "1+unk", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(screen.message_count, 0);
    CHECK_OK(mathexpr_destroy(screen.expression));
}

static void show16(void* context, uint32_t id, const mathexpr_char16* text, size_t length)
{
    struct screen* const screen = (struct screen*)context;
    ++screen->message_count;
    screen->last_id = id;
    CHECK(length > 0);
    CHECK_EQUAL(text[length], 0);
}

void test_messages_utf16(void)
{
    struct screen screen = {NULL, 0, 0, ""};
    mathexpr_options_utf16 options = {0};

    options.size = sizeof(options);
    options.flags = MATHEXPR_SHOW_MESSAGES;
    options.context = &screen;
    options.show_message = show16;
    CHECK_OK(mathexpr_create_utf16(&options, &screen.expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(screen.expression, "(1", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(screen.message_count, 1);
    CHECK_EQUAL(screen.last_id, 2);
    CHECK_OK(mathexpr_destroy(screen.expression));
}

static const char* const* offered = NULL;

static const char* get_name(void* context, uint32_t index)
{
    (void)context;
    return offered[index];
}

static const mathexpr_char16* get_name16(void* context, uint32_t index)
{
    CHECK_EQUAL(*(int*)context, 5);
    return index == 0 ? wide("width") : NULL;
}

void test_offered_names(void)
{
    static const char* const good[] = {"height", "wid\xC3\xB6h", NULL};
    static const char* const bad[] = {"height", "wi\xC3", NULL};
    mathexpr_options_utf8 options = {0};
    mathexpr_options_utf16 options16 = {0};
    mathexpr_expression* expression = NULL;
    mathexpr_diagnostic_utf8 diagnostic = {0};
    int five = 5;

    options.size = sizeof(options);
    options.get_name = get_name;
    diagnostic.size = sizeof(diagnostic);
    offered = good;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "2*width", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.suggestion_count, 1);
    CHECK_TEXT(diagnostic.suggestions[0], "wid\xC3\xB6h");
    offered = bad;
    diagnostic.message = 77;
    CHECK_STATUS(mathexpr_get_diagnostic_utf8(expression, &diagnostic), MATHEXPR_HOST_CALLBACK_BAD_ANSWER);
    CHECK_EQUAL(diagnostic.message, 77);
    offered = good;
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.suggestion_count, 1);
    CHECK_OK(mathexpr_destroy(expression));

    options16.size = sizeof(options16);
    options16.get_name = get_name16;
    options16.context = &five;
    CHECK_OK(mathexpr_create_utf16(&options16, &expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "2*widht", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK(diagnostic.suggestion_count >= 1);
    CHECK_TEXT(diagnostic.suggestions[0], "width");
    CHECK_OK(mathexpr_destroy(expression));
}

void test_exceptions(void)
{
    mathexpr_options_utf8 options = {0};
    mathexpr_options_utf16 options16 = {0};
    mathexpr_expression* expression = NULL;
    mathexpr_diagnostic_utf8 diagnostic = {0};
    mathexpr_value value = number(77);
    int32_t failed = 1;
    int time = 0;

    options.size = sizeof(options);
    options.lookup = throwing_lookup;
    options.get_name = throwing_get_name;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    for (time = 0; time < 3; ++time)
    {
        CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+[2,width]", ZT), MATHEXPR_HOST_CALLBACK_THREW);
        CHECK_OK(mathexpr_has_failed(expression, &failed));
        CHECK_EQUAL(failed, 0);
        CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
        CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "width", ZT, &value), MATHEXPR_HOST_CALLBACK_THREW);
        CHECK_NUMBER(value.x, 77.0);
        CHECK_OK(mathexpr_evaluate_text_utf8(expression, "a=2*3", ZT, &value));
        CHECK_NUMBER(value.x, 6.0);
        value = number(77);
    }
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "foo(1)+", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_destroy(expression));

    options.lookup = NULL;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "width", ZT), MATHEXPR_PARSING_ERROR);
    diagnostic.size = sizeof(diagnostic);
    CHECK_STATUS(mathexpr_get_diagnostic_utf8(expression, &diagnostic), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_EQUAL(diagnostic.message, 0);
    CHECK_STATUS(mathexpr_get_diagnostic_utf8(expression, &diagnostic), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 1);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "1+1", ZT, &value));
    CHECK_OK(mathexpr_destroy(expression));

    /* A std::bad_alloc of the library is distinguished from one that a callback throws. */
    options16.size = sizeof(options16);
    options16.lookup = throwing_lookup16;
    CHECK_OK(mathexpr_create_utf16(&options16, &expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "width", ZT), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_OK(mathexpr_destroy(expression));

    options.kind = MATHEXPR_CALCULATOR;
    options.get_name = NULL;
    options.show_message = throwing_show;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1+", ZT, 10, &value), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "sqrt(0)", ZT, 10, &value), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_OK(mathexpr_calculate_utf8(expression, "x=0", ZT, 10, &value));
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1/x", ZT, 10, &value), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_OK(mathexpr_calculate_utf8(expression, "x+4", ZT, 10, &value));
    CHECK_NUMBER(value.x, 4.0);
    CHECK_OK(mathexpr_destroy(expression));

    options.kind = MATHEXPR_EXPRESSION;
    options.flags = MATHEXPR_SHOW_MESSAGES;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+", ZT), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "pi=3", ZT, &value), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_OK(mathexpr_drop_assignment(expression));
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "2+2", ZT, &value));
    CHECK_OK(mathexpr_destroy(expression));
}

/* Calls that a callback may make on its expression, and calls that are refused. */
static int meddled_count = 0;

static void meddle(mathexpr_expression* expression)
{
    const mathexpr_value nine = number(9);
    mathexpr_value value = number(77);
    mathexpr_limits limits = {sizeof(limits), 1, 1, 1};
    mathexpr_names_utf8 names = {sizeof(names), 0, NULL, 0};
    mathexpr_expression* copy = NULL;
    mathexpr_value* address = NULL;
    mathexpr_results results = {0};
    mathexpr_bulk_outcome outcome = {0};
    double result = 77;
    int32_t failed = 77;

    ++meddled_count;
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1", ZT), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_set_expression_utf16(expression, wide("1"), ZT), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "1", ZT, &value), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1", ZT, 1, &value), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_drop_assignment(expression), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_set_variable_utf8(expression, "a", ZT, &nine, NULL), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_remove_variable_utf8(expression, "a", ZT), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_set_limits(expression, &limits), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_copy(expression, &copy), MATHEXPR_BUSY);
    CHECK_STATUS(mathexpr_destroy(expression), MATHEXPR_BUSY);
    results.size = sizeof(results);
    results.data = &result;
    results.stride = sizeof(result);
    outcome.size = sizeof(outcome);
    CHECK_STATUS(mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 1, &results, 1, &outcome), MATHEXPR_BUSY);
    CHECK_EQUAL(outcome.error, MATHEXPR_BULK_BUSY);
    CHECK_NUMBER(result, 77.0);
    CHECK_NUMBER(value.x, 77.0);

    CHECK_OK(mathexpr_get_variable_utf8(expression, "a", ZT, &value));
    CHECK_NUMBER(value.x, 4.0);
    CHECK_OK(mathexpr_get_variable_address_utf8(expression, "a", ZT, &address));
    CHECK_OK(mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_DEFINED, &names));
    CHECK(names.name_count >= 1);
    CHECK_OK(mathexpr_get_limits(expression, &limits));
    CHECK_EQUAL(limits.max_records, 0);
    CHECK_OK(mathexpr_has_failed(expression, &failed));
}

static int32_t meddling_lookup(void* context, const char* name, size_t length, mathexpr_value* value)
{
    (void)name;
    (void)length;
    meddle(*(mathexpr_expression**)context);
    *value = number(1);
    return MATHEXPR_LOOKUP_FOUND;
}

static void meddling_show(void* context, uint32_t id, const char* text, size_t length)
{
    (void)id;
    (void)text;
    (void)length;
    meddle(*(mathexpr_expression**)context);
}

static const char* meddling_get_name(void* context, uint32_t index)
{
    mathexpr_diagnostic_utf8 diagnostic = {0};
    (void)index;
    diagnostic.size = sizeof(diagnostic);
    meddle(*(mathexpr_expression**)context);
    CHECK_STATUS(mathexpr_get_diagnostic_utf8(*(mathexpr_expression**)context, &diagnostic), MATHEXPR_BUSY);
    return NULL;
}

void test_calls_from_within(void)
{
    mathexpr_options_utf8 options = {0};
    mathexpr_expression* expression = NULL;
    mathexpr_expression* copy = NULL;
    mathexpr_expression* asked = NULL;
    mathexpr_diagnostic_utf8 diagnostic = {0};
    const mathexpr_value four = number(4);
    mathexpr_value value = number(77);

    options.size = sizeof(options);
    options.flags = MATHEXPR_SHOW_MESSAGES;
    options.context = &expression;
    options.lookup = meddling_lookup;
    options.show_message = meddling_show;
    options.get_name = meddling_get_name;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &four, NULL));
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "a+unk", ZT, &value));
    CHECK_NUMBER(value.x, 5.0);
    CHECK_EQUAL(meddled_count, 1);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "a+", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(meddled_count, 2);
    CHECK_OK(mathexpr_destroy(expression));

    options.lookup = NULL;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &four, NULL));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+unk", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(meddled_count, 3);
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(meddled_count, 4);
    CHECK_OK(mathexpr_destroy(expression));

    options.kind = MATHEXPR_CALCULATOR;
    options.context = &asked;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &four, NULL));
    CHECK_OK(mathexpr_copy(expression, &copy));
    asked = copy; /* a copy is as busy as its source */
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1+unk", ZT, 10, &value), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(meddled_count, 5);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(meddled_count, 6);
    CHECK_OK(mathexpr_destroy(copy));
    CHECK_OK(mathexpr_destroy(expression));
}

static int32_t lookup_elsewhere(void* context, const char* name, size_t length, mathexpr_value* value)
{
    (void)name;
    (void)length;
    /* Another expression may be used; its messages go to its own display. */
    CHECK_STATUS(mathexpr_set_expression_utf8((mathexpr_expression*)context, "(1", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_evaluate_text_utf8((mathexpr_expression*)context, "20+1", ZT, value));
    return MATHEXPR_LOOKUP_FOUND;
}

void test_nested_messages(void)
{
    struct screen inner = {NULL, 0, 0, ""};
    mathexpr_options_utf8 options = {0};
    mathexpr_expression* outer = NULL;
    mathexpr_value value = number(77);

    options.size = sizeof(options);
    options.flags = MATHEXPR_SHOW_MESSAGES;
    options.context = &inner;
    options.show_message = show;
    CHECK_OK(mathexpr_create_utf8(&options, &inner.expression));
    options.context = inner.expression;
    options.lookup = lookup_elsewhere;
    options.show_message = throwing_show;
    CHECK_OK(mathexpr_create_utf8(&options, &outer));
    CHECK_OK(mathexpr_evaluate_text_utf8(outer, "width*2", ZT, &value));
    CHECK_NUMBER(value.x, 42.0);
    CHECK_EQUAL(inner.message_count, 1);
    CHECK_EQUAL(inner.last_id, 2);
    CHECK_STATUS(mathexpr_set_expression_utf8(outer, "(1", ZT), MATHEXPR_HOST_CALLBACK_THREW);
    CHECK_EQUAL(inner.message_count, 1);
    CHECK_OK(mathexpr_destroy(outer));
    CHECK_OK(mathexpr_destroy(inner.expression));
}
