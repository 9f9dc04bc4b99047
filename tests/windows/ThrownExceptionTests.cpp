// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThrownExceptionTests.cpp - exceptions that cross the library's boundary are caught by type, and counted correctly on
// both sides.
//
// Compiled twice: with a run-time library inside this program, and with the compiler's run-time DLLs.

#include "mathexpr/CMathExpr.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include "tests/windows/LoadedLibrary.h"
#include "tests/windows/Paths.h"

#include <exception>
#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

namespace {

class Exceptions : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(std::uncaught_exceptions(), 0); }
    void TearDown() override { EXPECT_EQ(std::uncaught_exceptions(), 0); }
};

/// A host that runs an action for every name.
template <class Action>
class Service : public IMathExprService
{
public:
    explicit Service(Action given) : action(given) {}
    bool lookupValue(const wchar_t*, VALTYPE& value) const override
    {
        action();
        value.x = 2;
        return true;
    }

private:
    Action action;
};

TEST_F(Exceptions, AreCaughtByTypeWhileCompiling)
{
    MathExpression expression(true, nullptr);
    for (int i = 0; i < 100000; ++i)
    {
        try
        {
            expression.setExpression(L"1+unknown");
            FAIL() << "nothing was raised";
        }
        catch (const mathexpr::DefinitionException&)
        {
            FAIL() << "caught by the wrong type";
        }
        catch (const mathexpr::ParsingException& exception)
        {
            ASSERT_EQ(exception.entries.front().data.itemName, L"unknown");
            ASSERT_EQ(exception.entries.front().data.pos, 3U);
        }
        ASSERT_EQ(std::uncaught_exceptions(), 0);
    }
}

TEST_F(Exceptions, AreCaughtByTypeWhileEvaluating)
{
    MathExpression expression(false, nullptr);
    CMathExpr calculator;
    VALTYPE result;
    ASSERT_TRUE(expression.setExpression(L"a=[1,2,3]") && expression.evaluate(result));
    ASSERT_TRUE(expression.setExpression(L"sin(a)"));
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_THROW(expression.evaluate(result), mathexpr::ParsingException);
        ASSERT_EQ(std::uncaught_exceptions(), 0);
        ASSERT_THROW(calculator.Calculate(L"sin([1,2,3])", result, 2147483647), mathexpr::ParsingException);
        ASSERT_EQ(std::uncaught_exceptions(), 0);
    }
}

/// Records what a host's scope guards observe.
struct ScopeGuard
{
    int& seen;
    ~ScopeGuard() { seen = std::uncaught_exceptions(); }
};

TEST_F(Exceptions, AreCountedWhileInFlight)
{
    MathExpression expression(true, nullptr);
    int seen = -1;
    try
    {
        const ScopeGuard guard{seen};
        expression.setExpression(L"1+");
    }
    catch (const mathexpr::ParsingException&)
    {}
    EXPECT_EQ(seen, 1);
    {
        const ScopeGuard guard{seen};
        expression.setExpression(L"1+1");
    }
    EXPECT_EQ(seen, 0);
}

/// Its destructor uses the library during the stack unwinding of a library exception.
struct UsesTheLibrary
{
    MathExpression& expression;
    bool& caught;
    ~UsesTheLibrary()
    {
        try
        {
            expression.setExpression(L"unknown");
        }
        catch (const mathexpr::ParsingException&)
        {
            caught = true;
        }
    }
};

TEST_F(Exceptions, MayBeRaisedWhileAnotherIsInFlight)
{
    MathExpression expression(true, nullptr);
    MathExpression another(true, nullptr);
    bool innerCaught = false;
    bool outerCaught = false;
    try
    {
        const UsesTheLibrary user{another, innerCaught};
        expression.setExpression(L"1+");
    }
    catch (const mathexpr::ParsingException&)
    {
        outerCaught = true;
        EXPECT_EQ(std::uncaught_exceptions(), 0);
    }
    EXPECT_TRUE(innerCaught);
    EXPECT_TRUE(outerCaught);
}

TEST_F(Exceptions, OfTheHostsServicePassThrough)
{
    const Service service([] { throw std::runtime_error("the host's own"); });
    for (const bool silent : {false, true})
    {
        MathExpression expression(silent, &service);
        for (int i = 0; i < 1000; ++i)
        {
            ASSERT_THROW(expression.setExpression(L"1+name"), std::runtime_error);
            ASSERT_EQ(std::uncaught_exceptions(), 0);
        }
    }
}

TEST_F(Exceptions, OfTheHostsServiceThatEndInTheLibraryAreSettled)
{
    const Service service([] {
        throw mathexpr::DefinitionException(1, 0, L"host",
                                            SMTDefExcepData{mathexpr::DefinitionError::VariableNameIsNumber, L"x", {}});
    });
    // With messages, the exception becomes a message; in silent mode it is rethrown with an entry of the library.
    static int messages;
    messages = 0;
    const mathexpr::ProcessMessageDisplay before =
        mathexpr::setMessageDisplay({[](void*, std::uint32_t, const wchar_t*) { ++messages; }, nullptr});
    MathExpression loud(false, &service);
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_FALSE(loud.setExpression(L"1+name"));
        ASSERT_EQ(std::uncaught_exceptions(), 0);
    }
    mathexpr::setMessageDisplay(before);
    EXPECT_EQ(messages, 1000);
    MathExpression silent(true, &service);
    for (int i = 0; i < 1000; ++i)
    {
        try
        {
            silent.setExpression(L"1+name");
            FAIL() << "nothing was raised";
        }
        catch (const mathexpr::DefinitionException& exception)
        {
            ASSERT_EQ(exception.entries.size(), 2U);
        }
        ASSERT_EQ(std::uncaught_exceptions(), 0);
    }
}

TEST_F(Exceptions, MayBeCaughtInsideTheHostsService)
{
    MathExpression inner(true, nullptr);
    const Service service([&inner] { ASSERT_THROW(inner.setExpression(L"1+"), mathexpr::ParsingException); });
    MathExpression outer(true, &service);
    for (int i = 0; i < 1000; ++i)
    {
        outer.setExpression((L"1+name" + std::to_wstring(i)).c_str());
        ASSERT_EQ(std::uncaught_exceptions(), 0);
    }
    ASSERT_THROW(outer.setExpression(L"1+other+"), mathexpr::ParsingException);
}

TEST_F(Exceptions, AreCountedRightlyByAHostThatLoadsAtRunTime)
{
    const LoadedLibrary library(programFolder() + L"mathexpr.dll");
    ASSERT_TRUE(library);
    VALTYPE result;
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_THROW(library.calculate(L"sin([1,2,3])", result), mathexpr::ParsingException);
        ASSERT_EQ(std::uncaught_exceptions(), 0);
    }
}

}
