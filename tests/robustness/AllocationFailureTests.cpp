// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// AllocationFailureTests.cpp - memory runs out at every allocation of every operation, once or permanently.
//
// Each operation is repeated with its first allocation failing, then its second, and so on until no allocation fails.
// After each attempt nothing has leaked, and the same object computes 1+1.
#include "MTParserLib/run/MTBulkRun.h"
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/Limits.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/support/FailingMemory.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using memory::Failing;

/// Answers without allocating: names that begin with "n" are numbers, with "p" points; no other name is known.
class ThriftyHost final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        value = name[0] == L'p' ? point(1, 2, 3) : number(2.5);
        return name[0] == L'n' || name[0] == L'p';
    }
};

class NameSource final : public mathexpr::IMathExprNameSource
{
public:
    const wchar_t* getName(std::uint32_t index) const override { return index == 0 ? L"north" : nullptr; }
};

const ThriftyHost host;

/// The objects of an operation.
struct Subject
{
    explicit Subject(bool silent) : expression(silent, &host) {}

    MathExpression expression;
    CMathExpr calculator;
};

/// An operation, and its preparations, which always have enough memory.
struct Operation
{
    std::string name;
    std::function<void(Subject&)> prepare;
    /// Returns a value, if there is one to compare.
    std::function<std::optional<VALTYPE>(Subject&)> run;
};

/// Prints an operation for GoogleTest.
void PrintTo(const Operation& operation, std::ostream* out)
{
    *out << operation.name;
}

/// The outcome of an operation.
struct Outcome
{
    std::optional<VALTYPE> value;
    bool outOfMemory = false;
    bool raised = false;
};

Outcome outcomeOf(const Operation& operation, Subject& subject)
{
    Outcome outcome;
    try
    {
        // Not assigned directly: with g++ 12, a value remained when the operation threw.
        const std::optional<VALTYPE> value = operation.run(subject);
        outcome.value = value;
    }
    catch (const std::bad_alloc&)
    {
        outcome.outOfMemory = true;
    }
    catch (const mathexpr::ParsingException&)
    {
        outcome.raised = true;
    }
    catch (const mathexpr::DefinitionException&)
    {
        outcome.raised = true;
    }
    return outcome;
}

bool sameBytes(const VALTYPE& left, const VALTYPE& right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

void expectUsable(Subject& subject)
{
    VALTYPE value;
    mathexpr::dropAssignment(subject.expression);
    mathexpr::setLimits(subject.expression, {});
    ASSERT_TRUE(subject.expression.setExpression(L"1+1") && subject.expression.evaluate(value));
    EXPECT_EQ(value.x, 2.0);
    mathexpr::dropAssignment(mathexpr::expressionOf(subject.calculator));
    ASSERT_TRUE(subject.calculator.Calculate(L"1+1", value, 1000));
    EXPECT_EQ(value.x, 2.0);
}

/// Runs the operation with enough memory. This also creates the data that the process keeps.
Outcome rehearse(const Operation& operation, bool silent)
{
    Subject subject(silent);
    operation.prepare(subject);
    return outcomeOf(operation, subject);
}

void sweep(const Operation& operation, bool silent, Failing failing)
{
    const Outcome rehearsed = rehearse(operation, silent);
    EXPECT_FALSE(rehearsed.outOfMemory);
    for (std::size_t n = 1;; ++n)
    {
        SCOPED_TRACE("allocation " + std::to_string(n));
        const std::size_t aliveBefore = memory::aliveCount();
        bool felt = false;
        {
            Subject subject(silent);
            operation.prepare(subject);
            Outcome outcome;
            {
                const memory::Shortage shortage(n, failing);
                outcome = outcomeOf(operation, subject);
                felt = shortage.wasFelt();
            }
            // A shortage is reported, or has no effect.
            if (!outcome.outOfMemory)
            {
                EXPECT_EQ(outcome.raised, rehearsed.raised);
                ASSERT_EQ(outcome.value.has_value(), rehearsed.value.has_value());
                EXPECT_TRUE(!outcome.value || sameBytes(*outcome.value, *rehearsed.value));
            }
            EXPECT_TRUE(felt || !outcome.outOfMemory);
            expectUsable(subject);
        }
        EXPECT_EQ(memory::aliveCount(), aliveBefore);
        if (!felt || testing::Test::HasFailure())
        {
            // An operation that allocates nothing would prove nothing.
            EXPECT_GT(n, 1U);
            return;
        }
    }
}

void nothing(Subject&) {}

std::optional<VALTYPE> valueOf(MathExpression& expression)
{
    VALTYPE value;
    return expression.evaluate(value) ? std::optional(value) : std::nullopt;
}

/// Compiles and evaluates a text.
Operation computing(const std::wstring& text)
{
    return {"computing " + std::string(text.begin(), text.end()), nothing, [text](Subject& subject) {
                return subject.expression.setExpression(text.c_str()) ? valueOf(subject.expression) : std::nullopt;
            }};
}

/// Evaluates a text that has been compiled.
Operation evaluating(const std::wstring& text)
{
    return {"evaluating " + std::string(text.begin(), text.end()),
            [text](Subject& subject) { ASSERT_TRUE(subject.expression.setExpression(text.c_str())); },
            [](Subject& subject) { return valueOf(subject.expression); }};
}

/// Lets a text fail with enough memory, then requests the diagnostic.
Operation diagnosing(const std::wstring& text)
{
    return {"diagnosing " + std::string(text.begin(), text.end()),
            [text](Subject& subject) {
                static const NameSource names;
                mathexpr::setNameSource(subject.expression, &names);
                outcomeOf(computing(text), subject);
                ASSERT_TRUE(mathexpr::hasFailed(subject.expression));
            },
            [](Subject& subject) {
                const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(subject.expression);
                return std::optional(number(static_cast<double>(diagnostic.message)));
            }};
}

/// Works with the variables of a compiled width*height.
Operation withVariables(const std::string& name, std::function<double(MathExpression&)> work)
{
    return {name,
            [](Subject& subject) {
                mathexpr::setVariable(subject.expression, L"width", number(2));
                mathexpr::setVariable(subject.expression, L"height", number(3));
                ASSERT_TRUE(subject.expression.setExpression(L"width*height+n1"));
            },
            [work](Subject& subject) { return std::optional(number(work(subject.expression))); }};
}

std::wstring typeset(const MathExpression& expression, const std::wstring& text)
{
    return mathexpr::typesetText(expression, text.c_str(), mathexpr::Notation::Latex) +
           mathexpr::typesetText(expression, text.c_str(), mathexpr::Notation::MathMl);
}

/// Calls every editor service for a text.
Operation editing(const std::wstring& text)
{
    return {"editing " + std::string(text.begin(), text.end()),
            [](Subject& subject) {
                static const NameSource names;
                mathexpr::setNameSource(subject.expression, &names);
                mathexpr::setVariable(subject.expression, L"width", number(2));
            },
            [text](Subject& subject) {
                const MathExpression& expression = subject.expression;
                const auto end = static_cast<std::uint32_t>(text.size());
                const std::size_t sum = mathexpr::getTokens(expression, text.c_str()).size() +
                                        mathexpr::formatText(expression, text.c_str()).size() +
                                        mathexpr::findReferences(expression, text.c_str(), L"n1").size() +
                                        mathexpr::renameInText(expression, text.c_str(), L"n1", L"n2").edits.size() +
                                        typeset(expression, text).size() +
                                        mathexpr::getLiterals(expression, text.c_str()).size() +
                                        mathexpr::getFixes(expression, text.c_str()).size() +
                                        mathexpr::getSignature(expression, text.c_str(), end).overloads.size() +
                                        mathexpr::getHover(expression, text.c_str(), 2).name.size() +
                                        mathexpr::getCompletions(expression, text.c_str(), end).size();
                return std::optional(number(static_cast<double>(sum)));
            }};
}

/// Builds a name index and completes with it.
Operation indexing()
{
    return {"indexing", [](Subject&) {},
            [](Subject& subject) {
                mathexpr::NameIndex names;
                names.add(L"outerWall_depth", {mathexpr::ValueKind::Number, L"depth", L""});
                names.add(L"n1");
                names.remove(L"n1");
                mathexpr::setNameSource(subject.expression, &names);
                const std::size_t count = mathexpr::getCompletions(subject.expression, L"wall", 4).size();
                mathexpr::setNameSource(subject.expression, nullptr);
                return std::optional(number(static_cast<double>(count)));
            }};
}

Operation inBulk(const std::wstring& text, std::uint32_t nbThreads, std::size_t nbRows = 4096)
{
    return {"bulk on " + std::to_string(nbThreads) + ": " + std::string(text.begin(), text.end()),
            [text](Subject& subject) { ASSERT_TRUE(subject.expression.setExpression(text.c_str())); },
            [nbThreads, nbRows](Subject& subject) {
                static const std::array<double, 4096> column{};
                static std::array<double, 4096> results;
                const mathexpr::BulkColumn columns[] = {{L"n", column.data()}};
                mathexpr::BulkOutcome outcome;
                const bool done = mathexpr::evaluateBulk(subject.expression, columns, 1, nbRows, {results.data()},
                                                         nbThreads, outcome);
                return done ? std::optional(number(results[nbRows - 1])) : std::nullopt;
            }};
}

/// A bulk evaluation with gaps after one with packed arrays: it needs more memory to copy rows.
Operation inBulkAgain(const std::wstring& text)
{
    Operation operation = inBulk(text, 1, 100);
    operation.name += ", again";
    operation.prepare = [first = operation](Subject& subject) {
        first.prepare(subject);
        ASSERT_TRUE(first.run(subject));
    };
    operation.run = [](Subject& subject) {
        static const std::array<double, 200> column{};
        static std::array<double, 100> results;
        const mathexpr::BulkColumn columns[] = {{L"n", column.data(), 2 * sizeof(double)}};
        mathexpr::BulkOutcome outcome;
        return mathexpr::evaluateBulk(subject.expression, columns, 1, 100, {results.data()}, 1, outcome)
                   ? std::optional(number(results[99]))
                   : std::nullopt;
    };
    return operation;
}

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> all = [] {
        std::vector<Operation> list;
        const wchar_t* const texts[] = {
            L"1+2*3",
            L"sin(30)*n1+sqrt(n2)",
            L"[1,n1,0]+[3,4,n2]*2",
            L"dist(p1,p2)/2+max(1,n1,n2,4)",
            L"m2f(3.5)+12345678901234567890.5+1.5e+3",
            L"a=2*n1",
            L"a_rather_long_name_of_a_variable=1",
            L"n_a_rather_long_name_that_the_host_answers*2",
            L"((((((((((((((((((((((((((((((((n1))))))))))))))))))))))))))))))))",
            L"n1+n2+n3+n4+n5+n6+n7+n8+n9+n10+n11+n12+n13+n14+n15+n16+n17+n18+n19",
            // Errors of every kind.
            L"unknown+1",
            L"unknown(1)",
            L"sin(1,2)",
            L"1+",
            L"(1",
            L"1)",
            L"1 2+",
            L"sin()",
            L"(1)(2)",
            L"1+a=2",
            L"pi=3",
            L"",
            L"1/0",
            L"n1/(n1-n1)",
            L"sqrt(0-n1)",
            L"sin(p1)",
            L"sin([1,2,3])",
            L"p1+n1",
            L"99999999999",
        };
        for (const wchar_t* text : texts)
        {
            list.push_back(computing(text));
        }
        list.push_back(evaluating(L"a=n1"));
        list.push_back(evaluating(L"a_rather_long_name_of_a_variable=p1"));
        for (const wchar_t* text :
             {L"unknwon+1", L"orth*2", L"pj(1)", L"sin(1,2)", L"[1,2", L"pi=3", L"n1/(n1-n1)", L"sin(p1)"})
        {
            list.push_back(diagnosing(text));
        }
        list.push_back(withVariables("set anew", [](MathExpression& expression) {
            return mathexpr::setVariable(expression, L"a_rather_long_name_of_a_variable", number(4)) ? 1.0 : 0.0;
        }));
        list.push_back(withVariables("refuse", [](MathExpression& expression) {
            return mathexpr::setVariable(expression, L"no name+", number(4)) ? 1.0 : 0.0;
        }));
        list.push_back(withVariables("names", [](MathExpression& expression) {
            return static_cast<double>(mathexpr::getVariableNames(expression).size() +
                                       mathexpr::getUsedNames(expression).size() +
                                       mathexpr::getHostNames(expression).size());
        }));
        list.push_back(inBulk(L"n*2+sin(n)", 1));
        list.push_back(inBulk(L"n*2+sin(n)", 4));
        list.push_back(inBulk(L"dist(p1,[n,n,n])+max(n,1,2,3)", 4));
        list.push_back(inBulk(L"sin([n,n,n])", 1, 2));
        list.push_back(inBulkAgain(L"n*2+sin(n)"));
        for (const wchar_t* text :
             {L"2*orth+sqrt(n1)", L"dist([1,2,0],wi", L"1+2pi", L"a_rather_long_name_of_a_variable=1"})
        {
            list.push_back(editing(text));
        }
        list.push_back(indexing());
        list.push_back({"construct", nothing, [](Subject&) {
                            const MathExpression another(false, &host);
                            return std::optional<VALTYPE>();
                        }});
        list.push_back({"copy and go on apart", nothing, [](Subject& subject) {
                            VALTYPE value;
                            subject.calculator.Calculate(L"a=5", value, 1000);
                            CMathExpr copy = subject.calculator;
                            CMathExpr assigned;
                            assigned = copy;
                            return assigned.Calculate(L"a+unknown_to_all", value, 1000) ? std::optional(value)
                                                                                        : std::nullopt;
                        }});
        list.push_back({"copy with a refused assignment", nothing, [](Subject& subject) {
                            VALTYPE value;
                            subject.calculator.Calculate(L"12345678901234567890=5", value, 1000);
                            CMathExpr copy = subject.calculator;
                            mathexpr::dropAssignment(mathexpr::expressionOf(copy));
                            return copy.Calculate(L"2*3", value, 1000) ? std::optional(value) : std::nullopt;
                        }});
        list.push_back({"calculate", nothing, [](Subject& subject) {
                            VALTYPE value;
                            return subject.calculator.Calculate(L"[1,2,3]*dist([1,2,3],[4,5,6])", value, 1000)
                                       ? std::optional(value)
                                       : std::nullopt;
                        }});
        list.push_back({"within limits", nothing, [](Subject& subject) {
                            mathexpr::setLimits(subject.expression, {100, 100, 100});
                            return subject.expression.setExpression(L"(n1+(n2*(3-n4)))") ? valueOf(subject.expression)
                                                                                         : std::nullopt;
                        }});
        list.push_back({"beyond limits", nothing, [](Subject& subject) {
                            mathexpr::setLimits(subject.expression, {100, 2, 100});
                            return subject.expression.setExpression(L"(n1+(n2*(3-n4)))") ? valueOf(subject.expression)
                                                                                         : std::nullopt;
                        }});
        return list;
    }();
    return all;
}

/// Suppresses the messages.
class Shortages : public testing::TestWithParam<Operation>
{
protected:
    void SetUp() override
    {
        before = mathexpr::setMessageDisplay({[](void*, std::uint32_t, const wchar_t*) {}, nullptr});
    }
    void TearDown() override { mathexpr::setMessageDisplay(before); }

    mathexpr::ProcessMessageDisplay before;
};

TEST_P(Shortages, AreReportedOrHarmless)
{
    const Operation& operation = GetParam();
    for (const bool silent : {false, true})
    {
        for (const Failing failing : {Failing::Once, Failing::FromThenOn})
        {
            SCOPED_TRACE(operation.name + (silent ? ", silent" : ", with messages") +
                         (failing == Failing::Once ? ", once" : ", from then on"));
            sweep(operation, silent, failing);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Every, Shortages, testing::ValuesIn(operations()));

/// Number of allocations of a bulk evaluation.
std::size_t nbMadeInBulk(std::size_t nbRows, std::uint32_t nbThreads)
{
    const AnsweringHost answering({{L"n", number(1)}});
    MathExpression expression(true, &answering);
    EXPECT_TRUE(expression.setExpression(L"abs(n*2)"));
    const std::vector<double> column(nbRows);
    std::vector<double> results(nbRows);
    const mathexpr::BulkColumn columns[] = {{L"n", column.data()}};
    mathexpr::BulkOutcome outcome;
    const std::size_t before = memory::madeCount();
    EXPECT_TRUE(mathexpr::evaluateBulk(expression, columns, 1, nbRows, {results.data()}, nbThreads, outcome));
    return memory::madeCount() - before;
}

// Every thread allocates memory when it starts, and for its results.
TEST(BulkMemory, IsTakenForAsManyThreadsAsHavePortionsToDo)
{
    const auto takeAlike = [](std::size_t nbRows, std::uint32_t first, std::uint32_t second) {
        return nbMadeInBulk(nbRows, first) == nbMadeInBulk(nbRows, second);
    };
    nbMadeInBulk(1, 1);  // the first one creates what the process then keeps
    EXPECT_TRUE(takeAlike(1, 1, 4));
    EXPECT_TRUE(takeAlike(portionRows, 1, 4));
    EXPECT_FALSE(takeAlike(portionRows + 1, 1, 2));
    EXPECT_TRUE(takeAlike(portionRows + 1, 2, 3));
    EXPECT_TRUE(takeAlike(2 * portionRows, 2, 3));
    EXPECT_FALSE(takeAlike(2 * portionRows + 1, 1, 2));
    EXPECT_FALSE(takeAlike(2 * portionRows + 1, 2, 3));
    EXPECT_TRUE(takeAlike(2 * portionRows + 1, 3, 300));

    // The second thread allocates as much as the third, plus a little that all threads share.
    const std::size_t alone = nbMadeInBulk(3 * portionRows, 1);
    const std::size_t two = nbMadeInBulk(3 * portionRows, 2);
    EXPECT_LT(two - alone, 2 * (nbMadeInBulk(3 * portionRows, 3) - two));
}

// A call reuses the preparations of the previous one, unless a variable without a column has changed.
TEST(BulkMemory, IsTakenOnceForCallsThatAreAlike)
{
    MathExpression expression(true, &host);
    mathexpr::setVariable(expression, L"m", number(2));
    ASSERT_TRUE(expression.setExpression(L"n*m"));
    const std::array<double, 3> column = {1.0, 2.0, 3.0};
    std::array<double, 3> results{};
    const auto nbMade = [&] {
        const mathexpr::BulkColumn columns[] = {{L"n", column.data()}};
        mathexpr::BulkOutcome outcome;
        const std::size_t before = memory::madeCount();
        EXPECT_TRUE(mathexpr::evaluateBulk(expression, columns, 1, 3, {results.data()}, 1, outcome));
        return memory::madeCount() - before;
    };
    nbMade();
    const std::size_t again = nbMade();
    EXPECT_EQ(nbMade(), again);
    mathexpr::setVariable(expression, L"m", number(5));
    EXPECT_GT(nbMade(), again);
    EXPECT_EQ(results, (std::array{5.0, 10.0, 15.0}));
}

// Starting a thread allocates memory. If a thread cannot start, the others compute its rows.
TEST(BulkMemory, MayBeTooShortForSomeThreadsAndLeavesOutNoRow)
{
    constexpr std::size_t nbRows = 8 * portionRows;
    const std::vector<double> column(nbRows, 3.0);
    MathExpression expression(true, &host);
    ASSERT_TRUE(expression.setExpression(L"n*2"));
    std::size_t nbDone = 0;
    for (std::size_t n = 1; nbDone < 3; ++n)
    {
        std::vector<double> results(nbRows);
        const mathexpr::BulkColumn columns[] = {{L"n", column.data()}};
        mathexpr::BulkOutcome outcome;
        try
        {
            const memory::Shortage shortage(n, Failing::FromThenOn);
            mathexpr::evaluateBulk(expression, columns, 1, nbRows, {results.data()}, 3, outcome);
            ++nbDone;
        }
        catch (const std::bad_alloc&)
        {
            continue;
        }
        EXPECT_EQ(std::count(results.begin(), results.end(), 6.0), nbRows) << "allocation " << n;
    }
}

// At the end of an object's first compilation, the program is moved to memory of its exact size. Some C++ libraries
// keep the old memory if this allocation fails. The last allocation is for scalar code.
TEST(CompilationShortages, LeaveNothingToEvaluate)
{
    for (const bool isFirst : {true, false})
    {
        for (const wchar_t* text : {L"1+2*3", L"n1*n2+n1", L"[1,n1,0]+[3,4,n2]*2"})
        {
            MathExpression complete(true, &host);
            ASSERT_TRUE(complete.setExpression(text));
            const std::optional<VALTYPE> value = valueOf(complete);
            ASSERT_TRUE(value.has_value());
            bool felt = true;
            for (std::size_t n = 1; felt; ++n)
            {
                SCOPED_TRACE(n);
                MathExpression expression(true, &host);
                ASSERT_TRUE(isFirst || expression.setExpression(L"5"));
                bool compiled = false;
                try
                {
                    const memory::Shortage shortage(n, Failing::Once);
                    compiled = expression.setExpression(text);
                    felt = shortage.wasFelt();
                }
                catch (const std::bad_alloc&)
                {}
                const std::optional<VALTYPE> got = valueOf(expression);
                ASSERT_EQ(got.has_value(), compiled);
                ASSERT_TRUE(!compiled || sameBytes(*got, *value));
            }
        }
    }
}

}
