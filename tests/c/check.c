// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* check.c - see check.h. The program runs all tests, or the one named by its argument. */
#include "tests/c/check.h"

#include <setjmp.h>
#include <stdio.h>
#include <string.h>

static int failed_count = 0;

/* The target of a skipped test. */
static jmp_buf after_test;

static int failed(const char* file, int line, const char* what)
{
    ++failed_count;
    return printf("%s:%d: %s", file, line, what);
}

void check_true(int holds, const char* what, const char* file, int line)
{
    if (!holds)
    {
        failed(file, line, what);
        printf(" does not hold\n");
    }
}

void check_integer(long long actual, long long expected, const char* what, const char* file, int line)
{
    if (actual != expected)
    {
        failed(file, line, what);
        printf(" is %lld, not %lld\n", actual, expected);
    }
}

void check_status(mathexpr_status actual, mathexpr_status expected, const char* what, const char* file, int line)
{
    if (actual != expected)
    {
        failed(file, line, what);
        printf(" is %d (%s), not %d (%s)\n", (int)actual, mathexpr_status_text(actual), (int)expected,
               mathexpr_status_text(expected));
    }
}

void check_number(double actual, double expected, const char* what, const char* file, int line)
{
    if (memcmp(&actual, &expected, sizeof(actual)) != 0)
    {
        failed(file, line, what);
        printf(" is %.17g, not %.17g\n", actual, expected);
    }
}

void check_text(const char* actual, const char* expected, const char* what, const char* file, int line)
{
    if (actual == NULL || strcmp(actual, expected) != 0)
    {
        failed(file, line, what);
        printf(" is \"%s\", not \"%s\"\n", actual == NULL ? "NULL" : actual, expected);
    }
}

void check_text16(const mathexpr_char16* actual, const char* expected, const char* what, const char* file, int line)
{
    size_t index = 0;
    if (actual == NULL)
    {
        failed(file, line, what);
        printf(" is NULL, not \"%s\"\n", expected);
        return;
    }
    while (actual[index] != 0 && actual[index] == (unsigned char)expected[index])
    {
        ++index;
    }
    if (actual[index] != (unsigned char)expected[index])
    {
        failed(file, line, what);
        printf(" has the unit %#x at %u, and should be \"%s\"\n", (unsigned)actual[index], (unsigned)index, expected);
    }
}

const mathexpr_char16* wide(const char* ascii)
{
    static mathexpr_char16 texts[8][256];
    static unsigned next = 0;
    mathexpr_char16* const text = texts[next++ % 8];
    size_t index = 0;
    for (; ascii[index] != '\0' && index < 255; ++index)
    {
        text[index] = (mathexpr_char16)ascii[index];
    }
    text[index] = 0;
    return text;
}

mathexpr_value number(double x)
{
    mathexpr_value value = {MATHEXPR_NUMBER, 0, 0, 0, 0.0, 0.0, 0.0};
    value.x = x;
    return value;
}

mathexpr_value point(double x, double y, double z)
{
    mathexpr_value value = {MATHEXPR_POINT, 0, 0, 0, 0.0, 0.0, 0.0};
    value.x = x;
    value.y = y;
    value.z = z;
    return value;
}

mathexpr_expression* plain(void)
{
    mathexpr_expression* expression = NULL;
    CHECK_OK(mathexpr_create_utf8(NULL, &expression));
    return expression;
}

void skip(const char* why)
{
    printf("skipped: %s\n", why);
    longjmp(after_test, 1);
}

static const struct
{
    const char* name;
    void (*run)(void);
} cases[] = {
#define TEST_CASE(name) {#name, test_##name},
#include "tests/c/cases.def"
#undef TEST_CASE
};

/* Runs a test; returns whether it passed. Failures have been printed. */
static int passes(size_t index)
{
    const int failed_before = failed_count;
    if (setjmp(after_test) == 0)
    {
        cases[index].run();
    }
    if (failed_count != failed_before)
    {
        printf("FAILED: %s\n", cases[index].name);
    }
    return failed_count == failed_before;
}

int main(int argc, char* argv[])
{
    const size_t count = sizeof(cases) / sizeof(cases[0]);
    size_t run = 0;
    size_t passed = 0;
    size_t index = 0;
    for (index = 0; index < count; ++index)
    {
        if (argc == 1 || strcmp(argv[1], cases[index].name) == 0)
        {
            ++run;
            passed += (size_t)passes(index);
        }
    }
    printf("%lu tests, %lu passed\n", (unsigned long)run, (unsigned long)passed);
    return run > 0 && passed == run ? 0 : 1;
}
