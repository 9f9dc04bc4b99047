// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* check.h - expectations for the tests of the C interface. A failed check is printed and counted, and the test
 * continues.
 */
#pragma once

#include <mathexpr.h>

#include <stddef.h>

void check_true(int holds, const char* what, const char* file, int line);
void check_integer(long long actual, long long expected, const char* what, const char* file, int line);
void check_status(mathexpr_status actual, mathexpr_status expected, const char* what, const char* file, int line);
void check_number(double actual, double expected, const char* what, const char* file, int line);
void check_text(const char* actual, const char* expected, const char* what, const char* file, int line);
void check_text16(const mathexpr_char16* actual, const char* expected, const char* what, const char* file, int line);

#define CHECK(condition) check_true((condition) != 0, #condition, __FILE__, __LINE__)
#define FAIL(what) check_true(0, what, __FILE__, __LINE__)
#define CHECK_EQUAL(actual, expected)                                                                                  \
    check_integer((long long)(actual), (long long)(expected), #actual, __FILE__, __LINE__)
#define CHECK_STATUS(actual, expected) check_status(actual, expected, #actual, __FILE__, __LINE__)
#define CHECK_OK(actual) CHECK_STATUS(actual, MATHEXPR_OK)
/** Bit for bit. */
#define CHECK_NUMBER(actual, expected) check_number(actual, expected, #actual, __FILE__, __LINE__)
#define CHECK_TEXT(actual, expected) check_text(actual, expected, #actual, __FILE__, __LINE__)
/** Expects UTF-16 that equals the ASCII text. */
#define CHECK_TEXT16(actual, expected) check_text16(actual, expected, #actual, __FILE__, __LINE__)

/** The text ends at its zero. */
#define ZT MATHEXPR_ZERO_TERMINATED

/** An ASCII text in UTF-16, valid until the eighth call after this one. */
const mathexpr_char16* wide(const char* ascii);

mathexpr_value number(double x);
mathexpr_value point(double x, double y, double z);

/** A plain silent expression without callbacks. */
mathexpr_expression* plain(void);

/** Ends a test that does not apply to this build. */
void skip(const char* why);

/* The tests. The compiler refuses a test that is not in the list, because it has no prototype. */
#define TEST_CASE(name) void test_##name(void);
#include "tests/c/cases.def"
#undef TEST_CASE
