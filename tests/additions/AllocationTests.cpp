// AllocationTests.cpp - what is kept for a host that may ask later costs no memory while nothing fails.
//
// The global operator new is this program's, for the shared library too, and counts its calls.
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

namespace {

std::size_t nbAllocations = 0;

}

void* operator new(std::size_t size)
{
    ++nbAllocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
    {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

TEST(Allocations, AreMadeByTheFirstCompilationOnly)
{
    for (const std::uint32_t limit : {0U, 1000U})
    {
        Session session(true);
        ASSERT_TRUE(setLimits(session.expression, {limit, limit, limit}));
        ExpressionVariables variables(session.expression);
        variables.set(L"width", number(2));
        variables.set(L"height", number(3));
        const std::wstring text = L"[width, height, 1.5e+3] * (sin(30) - -width) + [1, 2, 3]";

        const std::size_t atFirst = nbAllocations;
        ASSERT_TRUE(session.expression.setExpression(text.c_str()));
        EXPECT_GT(nbAllocations, atFirst);
        const std::size_t before = nbAllocations;
        for (int i = 0; i < 10; ++i)
        {
            ASSERT_TRUE(session.expression.setExpression(text.c_str()));
            VALTYPE value;
            ASSERT_TRUE(session.expression.evaluate(value));
        }
        EXPECT_EQ(nbAllocations, before) << "limit " << limit;
    }
}

}
