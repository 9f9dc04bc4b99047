// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ThreadTests.cpp - sixteen threads use the library with separate objects. No thread observes another, and
// ThreadSanitizer finds no data race.
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EditorServices.h"
#include "mathexpr/Limits.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int nbThreads = 16;
constexpr int nbTimes = 20;

thread_local int nbShown = 0;

void countHere(void*, std::uint32_t, const wchar_t* text)
{
    nbShown += text != nullptr && *text != L'\0' ? 1 : 0;
}

/// Computes, fails and starts again, depending on the thread's number.
class Worker
{
public:
    explicit Worker(int number) : own(number) {}

    /// @return number of wrong results
    int work()
    {
        evaluate();
        fail();
        showMessages();
        calculate();
        limit();
        evaluateRows();
        return nbWrong;
    }

private:
    void expect(bool holds) { nbWrong += holds ? 0 : 1; }

    void evaluate()
    {
        const AnsweringHost host({{L"width", number(own)}, {L"corner", point(own, 1.0, 2.0)}});
        MathExpression expression(true, &host);
        VALTYPE value;
        expect(expression.setExpression(L"area=width*width+sin(30)+[0,1,0]*corner") && expression.evaluate(value));
        expect(std::abs(value.x - (own * own + 1.5)) < 1e-12);
        expect(expression.setExpression(L"area/25") && expression.evaluate(value));
        expect(std::abs(value.x - (own * own + 1.5) / 25.0) < 1e-12);
        expect(mathexpr::setVariable(expression, L"area", number(100.0)) && expression.evaluate(value) &&
               value.x == 4.0);
        expect(mathexpr::removeVariable(expression, L"area") && !expression.evaluate(value));
    }

    void fail()
    {
        MathExpression expression(true, nullptr);
        for (const wchar_t* const text : {L"1+", L"(1", L"1)", L"sine(3)", L"sin()", L"unknown", L""})
        {
            try
            {
                expression.setExpression(text);
                expect(false);
            }
            catch (const mathexpr::ParsingException& exception)
            {
                expect(!exception.entries.empty());
            }
            expect(mathexpr::hasFailed(expression));
        }
        try
        {
            expression.setExpression(L"sinn(30)");
            expect(false);
        }
        catch (const mathexpr::ParsingException&)
        {
            const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
            expect(!diagnostic.suggestions.empty() && diagnostic.suggestions.front() == L"sin");
        }
    }

    void showMessages()
    {
        MathExpression expression(false, nullptr);
        VALTYPE value;
        nbShown = 0;
        expect(!expression.setExpression(L"1+"));
        expect(nbShown == 1);
        expect(!expression.setExpression(L"1/0") && nbShown == 2);
        expect(expression.setExpression(L"pi=3") && !expression.evaluate(value) && nbShown == 3);
        mathexpr::dropAssignment(expression);
        expect(expression.setExpression(L"1+1") && expression.evaluate(value) && value.x == 2.0);
    }

    void calculate()
    {
        CMathExpr first;
        VALTYPE value;
        expect(first.Calculate((L"a=" + std::to_wstring(own)).c_str(), value, 2147483647) && value.x == own);
        CMathExpr second(first);
        expect(second.Calculate(L"a+1", value, 2147483647) && value.x == own + 1);
    }

    void limit()
    {
        MathExpression expression(true, nullptr);
        mathexpr::ExpressionLimits limits;
        limits.maxNesting = 3;
        expect(mathexpr::setLimits(expression, limits));
        expect(expression.setExpression(L"(((1)))"));
        EXPECT_THROW(expression.setExpression(L"((((1))))"), mathexpr::ParsingException);
        mathexpr::VocabularyItem item;
        for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
        {
            expect(item.symbol != nullptr);
        }
    }

    void evaluateRows()
    {
        constexpr std::size_t nbRows = 20000;
        std::vector<double> xs(nbRows);
        std::vector<double> results(nbRows);
        for (std::size_t row = 0; row < nbRows; ++row)
        {
            xs[row] = static_cast<double>(row) + own;
        }
        MathExpression expression(true, nullptr);
        mathexpr::setVariable(expression, L"x", number(0.0));
        expect(expression.setExpression(L"2*x+1"));
        const mathexpr::BulkColumn column{L"x", xs.data()};
        mathexpr::BulkOutcome outcome;
        expect(mathexpr::evaluateBulk(expression, &column, 1, nbRows, {results.data()}, 2, outcome) &&
               outcome.failedCount == 0);
        expect(results.front() == 2.0 * own + 1.0 && results.back() == 2.0 * xs.back() + 1.0);

        // Row by row on each thread, since there are points.
        expect(expression.setExpression(L"[x,1,2]*[2,1,0]"));
        expect(mathexpr::evaluateBulk(expression, &column, 1, nbRows, {results.data()}, 2, outcome) &&
               outcome.failedCount == 0);
        expect(results.front() == 2.0 * own + 1.0 && results.back() == 2.0 * xs.back() + 1.0);
    }

    int own;
    int nbWrong = 0;
};

TEST(Threads, WorkOnObjectsOfTheirOwn)
{
    const mathexpr::ProcessMessageDisplay previous = mathexpr::setMessageDisplay({countHere, nullptr});
    std::atomic<int> nbWrong = 0;
    std::vector<std::thread> threads;
    for (int number = 1; number <= nbThreads; ++number)
    {
        threads.emplace_back([&nbWrong, number] {
            for (int time = 0; time < nbTimes; ++time)
            {
                nbWrong += Worker(number).work();
            }
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    mathexpr::setMessageDisplay(previous);
    EXPECT_EQ(nbWrong, 0);
}

/// The first thread creates the data that the process shares.
TEST(Threads, EditSeparateTexts)
{
    std::atomic<int> nbWrong = 0;
    std::vector<std::thread> threads;
    for (int number = 1; number <= nbThreads; ++number)
    {
        threads.emplace_back([&nbWrong] {
            const MathExpression expression(true, nullptr);
            for (int time = 0; time < 20; ++time)
            {
                const bool isRight =
                    mathexpr::getTokens(expression, L"1+sin(30").size() == 5 &&
                    mathexpr::getCompletions(expression, L"2*sqr", 5).size() == 2 &&
                    mathexpr::getSignature(expression, L"sin(", 4).unit == L"degree" &&
                    mathexpr::diagnoseText(expression, L"1+").state == mathexpr::TypingState::Unfinished;
                nbWrong += isRight ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(nbWrong, 0);
}

}
