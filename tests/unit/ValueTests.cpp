// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueTests.cpp - the value record that crosses the exported interface.
#include "mathexpr/ValType.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

namespace {

TEST(Value, HasTheLayoutOfTheInterface)
{
    EXPECT_EQ(sizeof(VALTYPE), 32u);
    EXPECT_EQ(offsetof(VALTYPE, type), 0u);
    EXPECT_EQ(sizeof(VALTYPE::type), 1u);
    EXPECT_EQ(offsetof(VALTYPE, flag), 1u);
    EXPECT_EQ(sizeof(VALTYPE::flag), 1u);
    EXPECT_EQ(offsetof(VALTYPE, reserved), 2u);
    EXPECT_EQ(sizeof(VALTYPE::reserved), 2u);
    EXPECT_EQ(offsetof(VALTYPE, x), 8u);
    EXPECT_EQ(offsetof(VALTYPE, y), 16u);
    EXPECT_EQ(offsetof(VALTYPE, z), 24u);
    EXPECT_TRUE((std::is_same_v<decltype(VALTYPE::x), double> && std::numeric_limits<double>::is_iec559));
    EXPECT_TRUE(std::is_unsigned_v<decltype(VALTYPE::type)> && std::is_unsigned_v<decltype(VALTYPE::flag)>);
}

TEST(Value, IsAllZeroWhenFresh)
{
    const VALTYPE fresh{};
    const unsigned char zero[sizeof(VALTYPE)] = {};
    EXPECT_EQ(std::memcmp(&fresh, zero, sizeof(VALTYPE)), 0);
}

TEST(Value, IsCopiedWhole)
{
    VALTYPE number;
    number.x = 1.0;
    number.y = 2.0;
    number.z = 3.0;
    number.flag = 1;
    VALTYPE copy;
    copy = number;
    EXPECT_EQ(std::memcmp(&copy, &number, sizeof(VALTYPE)), 0);
}

}
