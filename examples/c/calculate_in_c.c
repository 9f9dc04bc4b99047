/* calculate_in_c.c - the same library from C: names that the host answers, a variable in a loop, a diagnostic. */
#include <mathexpr.h>

#include <stdio.h>
#include <string.h>

typedef struct drawing
{
    double width;
} drawing;

static int32_t look_up(void* context, const char* name, size_t length, mathexpr_value* value)
{
    (void)length;
    if (strcmp(name, "width") != 0)
        return MATHEXPR_LOOKUP_NOT_KNOWN;
    value->x = ((const drawing*)context)->width;
    return MATHEXPR_LOOKUP_FOUND;
}

static void print_diagnostic(mathexpr_expression* expression, const char* text)
{
    mathexpr_diagnostic_utf8 diagnostic = {.size = sizeof diagnostic};
    if (mathexpr_get_diagnostic_utf8(expression, &diagnostic) != MATHEXPR_OK)
        return;
    printf("%s\n%*s^\n%s\n", text, (int)diagnostic.start, "", diagnostic.text);
    for (size_t index = 0; index < diagnostic.nb_suggestions; ++index)
        printf("  perhaps %s\n", diagnostic.suggestions[index]);
}

int main(void)
{
    drawing host = {2.5};
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
        status = mathexpr_get_address_utf8(expression, "width", MATHEXPR_ZERO_TERMINATED, &width);
    for (int step = 0; status == MATHEXPR_OK && step < 3; ++step)
    {
        status = mathexpr_evaluate(expression, &value);
        printf("width %g: [%g,%g,%g]\n", width->x, value.x, value.y, value.z);
        width->x += 1;
    }

    static const char wrong[] = "3 * sqare(2)";
    if (status == MATHEXPR_OK &&
        mathexpr_evaluate_text_utf8(expression, wrong, MATHEXPR_ZERO_TERMINATED, &value) == MATHEXPR_PARSING_ERROR)
        print_diagnostic(expression, wrong);

    mathexpr_destroy(expression);
    return status == MATHEXPR_OK ? 0 : 1;
}
