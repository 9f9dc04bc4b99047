// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* calculate_in_c.c - the library in C: names that the host supplies, a variable in a loop, a diagnostic. */
#include <mathexpr.h>

#include <stdio.h>
#include <string.h>

typedef struct drawing
{
    double width;
    double size;
} drawing;

static int32_t look_up(void* context, const char* name, size_t length, mathexpr_value* value)
{
    const drawing* const own = context;
    (void)length;
    if (strcmp(name, "width") == 0)
        value->x = own->width;
    else if (strcmp(name, "gr\u00f6\u00dfe") == 0)
        value->x = own->size;
    else
        return MATHEXPR_LOOKUP_NOT_KNOWN;
    return MATHEXPR_LOOKUP_FOUND;
}

static void print_value(const char* what, const mathexpr_value* value)
{
    char text[MATHEXPR_VALUE_TEXT_CAPACITY];
    if (mathexpr_format_value_utf8(value, MATHEXPR_EXACT_DIGITS, text, sizeof text, NULL) == MATHEXPR_OK)
        printf("%s%s\n", what, text);
}

/* Only these statuses have a diagnostic; with any other status it describes an earlier failure. */
static void print_failure(mathexpr_expression* expression, mathexpr_status status)
{
    mathexpr_diagnostic_utf8 diagnostic = {.size = sizeof diagnostic};
    if ((status == MATHEXPR_PARSING_ERROR || status == MATHEXPR_DEFINITION_ERROR || status == MATHEXPR_REFUSED) &&
        mathexpr_get_diagnostic_utf8(expression, &diagnostic) == MATHEXPR_OK)
    {
        printf("at %u: %s\n", (unsigned)diagnostic.start, diagnostic.text);
        for (size_t index = 0; index < diagnostic.suggestion_count; ++index)
            printf("  perhaps %s\n", diagnostic.suggestions[index]);
    }
    else
        printf("%s\n", mathexpr_status_text(status));
}

int main(int argc, char** argv)
{
    drawing host = {2.5, 4};
    mathexpr_options_utf8 options = {.size = sizeof options};
    options.context = &host;
    options.lookup = look_up;

    mathexpr_expression* expression = NULL;
    mathexpr_status status = mathexpr_create_utf8(&options, &expression);
    if (status != MATHEXPR_OK)
    {
        printf("%s\n", mathexpr_status_text(status));
        return 1;
    }

    mathexpr_value value;
    status = mathexpr_set_expression_utf8(expression, "width*[1,2,0]", MATHEXPR_ZERO_TERMINATED);
    mathexpr_value* width = NULL;
    if (status == MATHEXPR_OK)
        status = mathexpr_get_variable_address_utf8(expression, "width", MATHEXPR_ZERO_TERMINATED, &width);
    for (int step = 0; status == MATHEXPR_OK && step < 3; ++step)
    {
        status = mathexpr_evaluate(expression, &value);
        if (status == MATHEXPR_OK)
            print_value("", &value);
        width->x += 1;
    }
    if (status != MATHEXPR_OK)
        print_failure(expression, status);

    const char* const defaults[] = {"width", "3 * sqare(2)"};
    const int text_count = argc > 1 ? argc - 1 : 2;
    for (int index = 0; index < text_count; ++index)
    {
        const char* const text = argc > 1 ? argv[index + 1] : defaults[index];
        status = mathexpr_evaluate_text_utf8(expression, text, MATHEXPR_ZERO_TERMINATED, &value);
        if (status == MATHEXPR_OK)
            print_value("= ", &value);
        else
            print_failure(expression, status);
    }
    mathexpr_destroy(expression);
    return 0;
}
