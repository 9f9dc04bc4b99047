// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BoundaryTests.cpp - the C interface converts every exception to a status.
#include "mathexpr/c/Boundary.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

template <class Thrown>
mathexpr_status statusOf(Thrown thrown)
{
    return atBoundary([&]() -> mathexpr_status { throw thrown; });
}

TEST(Boundary, TurnsWhateverIsThrownIntoAStatus)
{
    EXPECT_EQ(atBoundary([] { return MATHEXPR_OK; }), MATHEXPR_OK);
    EXPECT_EQ(atBoundary([] { return MATHEXPR_BUSY; }), MATHEXPR_BUSY);
    EXPECT_EQ(statusOf(std::bad_alloc()), MATHEXPR_OUT_OF_MEMORY);
    EXPECT_EQ(statusOf(HostCallbackFailure{MATHEXPR_HOST_CALLBACK_THREW}), MATHEXPR_HOST_CALLBACK_THREW);
    EXPECT_EQ(statusOf(std::length_error("too long")), MATHEXPR_INTERNAL_ERROR);
    EXPECT_EQ(statusOf(7), MATHEXPR_INTERNAL_ERROR);
}

}
