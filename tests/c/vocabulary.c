// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* vocabulary.c - lists the vocabulary in both encodings. */
#include "tests/c/check.h"

#include <string.h>

void test_vocabulary(void)
{
    mathexpr_vocabulary_item_utf8 item = {0};
    mathexpr_vocabulary_item_utf16 wider = {0};
    uint32_t counts[3] = {0, 0, 0};
    uint32_t index = 0;
    int found_pi = 0;
    int found_sin = 0;
    int found_rand = 0;
    int found_minus = 0;

    item.size = sizeof(item);
    wider.size = sizeof(wider);
    for (index = 0; mathexpr_get_vocabulary_item_utf8(index, &item) == MATHEXPR_OK; ++index)
    {
        CHECK_OK(mathexpr_get_vocabulary_item_utf16(index, &wider));
        CHECK(item.kind <= MATHEXPR_ITEM_FUNCTION);
        CHECK(item.family <= MATHEXPR_FAMILY_CONSTANTS);
        CHECK(item.unary <= 1 && item.constant <= 1 && item.reserved == 0);
        ++counts[item.kind <= MATHEXPR_ITEM_FUNCTION ? item.kind : 0];
        CHECK_EQUAL(wider.kind, item.kind);
        CHECK_EQUAL(wider.family, item.family);
        CHECK_EQUAL(wider.arg_count, item.arg_count);
        CHECK_EQUAL(wider.precedence, item.precedence);
        CHECK_EQUAL(wider.unary, item.unary);
        CHECK_EQUAL(wider.constant, item.constant);
        CHECK_NUMBER(wider.value, item.value);
        CHECK(item.symbol[0] != '\0' && wider.symbol[0] != 0);
        if (strcmp(item.symbol, "pi") == 0)
        {
            found_pi = 1;
            CHECK_EQUAL(item.kind, MATHEXPR_ITEM_CONSTANT);
            CHECK_EQUAL(item.family, MATHEXPR_FAMILY_CONSTANTS);
            CHECK(item.value > 3.14 && item.value < 3.15);
            CHECK_TEXT(item.help, "");
            CHECK_TEXT16(wider.symbol, "pi");
        }
        if (strcmp(item.symbol, "sin") == 0)
        {
            found_sin = 1;
            CHECK_EQUAL(item.kind, MATHEXPR_ITEM_FUNCTION);
            CHECK_EQUAL(item.family, MATHEXPR_FAMILY_CORE_MATH);
            CHECK_EQUAL(item.arg_count, 1);
            CHECK_TEXT(item.help, "sin(x)");
            CHECK_TEXT16(wider.help, "sin(x)");
            CHECK_TEXT16(wider.description, item.description);
            CHECK_EQUAL(item.constant, 1);
        }
        if (strcmp(item.symbol, "rand") == 0)
        {
            found_rand = 1;
            CHECK_EQUAL(item.constant, 0);
        }
        if (strcmp(item.symbol, "-") == 0)
        {
            ++found_minus;
            CHECK_EQUAL(item.kind, MATHEXPR_ITEM_OPERATOR);
            CHECK_EQUAL(item.arg_count, item.unary ? 1 : 2);
        }
    }
    CHECK_STATUS(mathexpr_get_vocabulary_item_utf8(index, &item), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_get_vocabulary_item_utf16(index, &wider), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_get_vocabulary_item_utf8(0xFFFFFFFF, &item), MATHEXPR_NOT_FOUND);
    CHECK(found_pi && found_sin && found_rand);
    CHECK_EQUAL(found_minus, 2);
    CHECK(counts[MATHEXPR_ITEM_CONSTANT] > 0);
    CHECK_EQUAL(counts[MATHEXPR_ITEM_OPERATOR], 16);
    CHECK_EQUAL(counts[MATHEXPR_ITEM_FUNCTION], 257);
    /* With an invalid index, the item is unchanged. */
    CHECK_EQUAL(item.kind, MATHEXPR_ITEM_FUNCTION);
}
