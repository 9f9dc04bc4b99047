// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HintTests.cpp - the hints below a message, and corrections. Every correction is applied; the corrected text must
// compile and have the expected value.
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <iterator>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace {

using Hints = std::vector<std::wstring>;

class Offered final : public mathexpr::IMathExprNameSource
{
public:
    const wchar_t* getName(std::uint32_t index) const override { return index == 0 ? L"rate" : nullptr; }
};

/// A session with the variables size = 3, width = 2, x = 5, 3e1 = 9, 3;d = 11 and d~~1 = 13. Its host offers the name
/// rate.
struct HintSession : Session
{
    HintSession() : Session(true)
    {
        mathexpr::setVariable(expression, L"size", number(3));
        mathexpr::setVariable(expression, L"width", number(2));
        mathexpr::setVariable(expression, L"x", number(5));
        mathexpr::setVariable(expression, L"3e1", number(9));
        mathexpr::setVariable(expression, L"3;d", number(11));
        mathexpr::setVariable(expression, L"d~~1", number(13));
        host.names[L"rate"] = number(8);
        mathexpr::setNameSource(expression, &offered);
    }

    Offered offered;
};

std::wstring applied(std::wstring text, const mathexpr::ExpressionFix& fix)
{
    return text.replace(fix.start, fix.length, fix.replacement);
}

struct Corrected
{
    const wchar_t* typed;
    const wchar_t* corrected;
    double value;
};

void PrintTo(const Corrected& row, std::ostream* out)
{
    *out << testing::PrintToString(std::wstring(row.typed));
}

// clang-format off
const Corrected corrections[] = {
//   typed                            corrected                 value
//   -------------------------------- ------------------------- ------
    {L"size+1",                       L"(size)+1",              4},
    {L"size +1",                      L"(size) +1",             4},
    {L"2*rate+1",                     L"2*(rate)+1",            17},
    {L"(size+1)*2",                   L"((size)+1)*2",          8},
    {L"e+1",                          L"(e)+1",                 3.718281828459045},
    {L"2*e + 1",                      L"2*(e) + 1",             6.43656365691809},

    {L"2\u00D73",                     L"2*3",                   6},
    {L"2\u00B73\u22C54\u22175\u2022x", L"2*3*4*5*x",            600},
    {L"7\u22122",                     L"7-2",                   5},
    {L"7\u20132\u20141\u20101\u20111", L"7-2-1-1-1",            2},
    {L"8\u00F72\u22152\u20442",       L"8/2/2/2",               1},
    {L"\u03C0",                       L"pi",                    3.14159265359},
    {L"2\u03C0",                      L"2*pi",                  6.28318530718},
    {L"2\u03C0x\u00B2+\u03C0(2)",      L"2*pi*x^2+pi*(2)",       163.36281798668},
    {L"1/2\u03C0",                    L"1/2*pi",                1.570796326795},
    {L"90\u00B0/2",                   L"90/2",                  45},
    {L"3\u00B2",                      L"3^2",                   9},
    {L"x\u00B3",                      L"x^3",                   125},
    {L"(1+1)\u2074",                  L"(1+1)^4",               16},
    {L"10\u207B\u00B2",               L"10^-2",                 0.01},
    {L"-3\u00B2",                     L"-(3^2)",                -9},
    {L"2*-3\u00B2",                   L"2*-(3^2)",              -18},
    {L"2* -3\u00B2",                  L"2* -(3^2)",             -18},
    {L"20 - 3\u00B2",                 L"20 - 3^2",              11},
    {L"(1)-3\u00B2",                  L"(1)-3^2",               -8},
    {L"-(3)\u00B2+0*abs([1,0])-2\u00B2", L"-((3)^2)+0*abs([1,0])-2^2", -13},
    {L"-abs((3))\u00B2-(1)\u00B2",      L"-(abs((3))^2)-(1)^2",   -10},
    {L"x\u00B2(2)+x\u00B2x",            L"x^2*(2)+x^2*x",         175},
    {L"\u221A16",                     L"sqrt(16)",              4},
    {L"\u221A 16+\u221Ax",            L"sqrt (16)+sqrt(x)",     6.23606797749979},
    {L"\u221A(9)",                    L"sqrt(9)",               3},
    {L"2\u221A16+x\u221A\u221A16",     L"2*sqrt(16)+x*sqrt(sqrt(16))", 18},
    {L"cos(\u221A\u03C0)*0",           L"cos(sqrt(pi))*0",       0},
    {L"\u221A1,5",                    L"sqrt(1.5)",             1.224744871391589},
    {L"2\u221A1'000,5",               L"2*sqrt(1000.5)",        63.26136261573884},
    {L"(3<>2)+(1<>1)",                L"(3!=2)+(1!=1)",         1},
    {L"2**3",                         L"2^3",                   8},
    {L"\u00BD*x+4*\u00BD",            L"0.5*x+4*0.5",           4.5},
    {L"6\u215E+\u00BC+\u00BE",        L"6.875+0.25+0.75",       7.875},
    {L"1\u215B+1\u215C+1\u215D",      L"1.125+1.375+1.625",     4.125},
    {L"\uFF12\uFF0B\uFF08\uFF13\uFF09", L"2+(3)",               5},
    {L"(3\uFF01=2)+1",                L"(3!=2)+1",              2},
    {L"2*d\uFF5E\uFF5E1",                 L"2*d~~1",                 26},
    {L"1\t+\u00A02\u20091\u202F+\u30003", L"1 + 2 1 + 3",       25},
    {L"3\u22652",                     L"3>=2",                  1},
    {L"(3\u22642)+(1\u22602)",        L"(3<=2)+(1!=2)",         1},

    {L"1,5",                          L"1.5",                   1.5},
    {L"1,5*2+0,25",                   L"1.5*2+0.25",            3.25},
    {L"(1+2)*2,5",                    L"(1+2)*2.5",             7.5},
    {L"0,125+1",                      L"0.125+1",               1.125},
    {L"1'000+1",                      L"1000+1",                1001},
    {L"123'456*2",                    L"123456*2",              246912},
    {L"1\u2019000'000",               L"1000000",               1000000},
    {L"1.000,50",                     L"1000.50",               1000.5},
    {L"1,000,000.5",                  L"1000000.5",             1000000.5},
    {L"1,000,000*2",                  L"1000000*2",             2000000},
    {L"1.000.000*2",                  L"1000000*2",             2000000},
    {L"12'345.5+2'000",               L"12345.5+2000",          14345.5},
    {L"ln(1,0)",                      L"ln(1.0)",               0},
    {L"2\u00D71,5",                   L"2*1.5",                 3},
    {L"1\u00A0000,5",                 L"1 000.5",               1000.5},
    {L"\uFF11\uFF0C\uFF15*x",         L"1.5*x",                 7.5},
    {L"1,5pi",                        L"1.5*pi",                4.712388980385},
    {L"max(1;2)",                     L"max(1,2)",              2},
    {L"max(1,5;0,25;1)*2",            L"max(1.5,0.25,1)*2",     3},
    {L"abs([3;4])",                   L"abs([3,4])",            5},
    {L"max(3;d,2;3)",                 L"max(3;d,2,3)",          11},
    {L"1,5+2.",                       L"1.5+2.",                3.5},
    {L"1,5*2.+1",                     L"1.5*2.+1",              4},

    {L"2pi",                          L"2*pi",                  6.28318530718},
    {L"9pi",                          L"9*pi",                  28.27433388231},
    {L"2 pi",                         L"2* pi",                 6.28318530718},
    {L"2.5x+1",                       L"2.5*x+1",               13.5},
    {L"2rate",                        L"2*rate",                16},
    {L"2abs(-3)",                     L"2*abs(-3)",             6},
    {L"x abs(-3)",                    L"x* abs(-3)",            15},
    {L"2(3)",                         L"2*(3)",                 6},
    {L"2x(3)",                        L"2*x*(3)",               30},
    {L"2x abs(4)",                    L"2*x* abs(4)",           40},
    {L"(1+2)4",                       L"(1+2)*4",               12},
    {L"x(3)",                         L"x*(3)",                 15},
    {L"(1+2)(3)",                     L"(1+2)*(3)",             9},
    {L"(1+2)x",                       L"(1+2)*x",               15},
    {L"abs([3,4](2))",                L"abs([3,4]*(2))",        10},

    {L"abs 30",                       L"abs(30)",               30},
    {L"abs x+1",                      L"abs(x)+1",              6},
    {L"abs30+1",                      L"abs(30)+1",             31},
    {L"sqr 2.5",                      L"sqr(2.5)",              6.25},
    {L"sin 30",                       L"sin(30)",               0.50000000000002986},
    {L"sin 30+sin 60",                L"sin(30)+sin(60)",       1.366025403784503},
    {L"2 sin -30",                    L"2* sin(-30)",           -1.0000000000000597},
    {L"ln x*0",                       L"ln(x)*0",               0},
    {L"sqr 2x",                       L"sqr(2*x)",              100},
    {L"3 sqr 2 x*4",                  L"3* sqr(2* x)*4",        1200},
    {L"abs -2x",                      L"abs(-2*x)",             10},
    {L"sqr 2pi",                      L"sqr(2*pi)",             39.47841760436263},
    {L"Sqr 2x",                       L"sqr(2*x)",              100},
    {L"sqr 2x(3)",                    L"sqr(2*x)*(3)",          300},
    {L"sqr 2 abs(3)",                 L"sqr(2)* abs(3)",        12},
    {L"sqr x x",                      L"sqr(x)* x",             125},
    {L"Sin 30",                       L"sin(30)",               0.50000000000002986},
    {L"ABS30",                        L"abs(30)",               30},
    {L"LN X*0",                       L"ln(X)*0",               0},

    {L"1e5",                          L"1e+5",                  100000},
    {L"1.5E3*2",                      L"1.5e+3*2",              3000},
    {L"1E+5",                         L"1e+5",                  100000},
    {L"2.5e-1",                       L"2.5*10^-1",             0.25},
    {L"1/2e-1",                       L"1/(2*10^-1)",           5},
    {L"2e1^2",                        L"(2e+1)^2",              400},
    {L"3-2e-1",                       L"3-2*10^-1",             2.8},
    {L"3e1*2e1",                      L"3e1*2e+1",              180},

    {L"Abs(-30)",                     L"abs(-30)",              30},
    {L"Sin(30)",                      L"sin(30)",               0.50000000000002986},
    {L"PI()",                         L"PI",                    3.14159265359},
    {L"Pi()*2",                       L"pi*2",                  6.28318530718},
    {L"E()*2",                        L"E*2",                   5.43656365691809},
    {L"2*Pi",                         L"2*pi",                  6.28318530718},
    {L"SUM(1,2,3)",                   L"sum(1,2,3)",            6},

    {L"=2pi",                         L"=2*pi",                 6.28318530718},
    {L"200*15%",                      L"200*15/100",            30},
    {L"15%+1",                        L"15/100+1",              1.15},
    {L"(15%)*2",                      L"(15/100)*2",            0.3},
    {L"7%4+15%",                      L"7%4+15/100",            3.15},
    {L"3/15%",                        L"3/(15/100)",            20},

    {L"widht*2",                      L"width*2",               4},
    {L"a=2pi",                        L"a=2*pi",                6.28318530718},
};
// clang-format on

class Corrections : public testing::TestWithParam<Corrected>
{};

TEST_P(Corrections, CompileAndMeanWhatTheySay)
{
    const auto& [typed, corrected, value] = GetParam();
    HintSession session;
    EXPECT_FALSE(session.run(typed).evaluated);
    mathexpr::dropAssignment(session.expression);
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    ASSERT_TRUE(diagnostic.fix.has_value());
    EXPECT_EQ(applied(typed, *diagnostic.fix), corrected);
    ASSERT_FALSE(diagnostic.hints.empty());
    EXPECT_NE(diagnostic.hints.back().find(diagnostic.fix->replacement), std::wstring::npos)
        << testing::PrintToString(diagnostic.hints);
    const Outcome outcome = session.run(corrected);
    ASSERT_TRUE(outcome.evaluated);
    EXPECT_DOUBLE_EQ(outcome.value.x, value);
}

INSTANTIATE_TEST_SUITE_P(Typed, Corrections, testing::ValuesIn(corrections));

struct Hinted
{
    const wchar_t* typed;
    Hints hints;
};

void PrintTo(const Hinted& row, std::ostream* out)
{
    *out << testing::PrintToString(std::wstring(row.typed));
}

const Hinted hinted[] = {
    {L"", {L"Expected a value."}},
    {L"1+", {L"Expected a value."}},
    {L"(1", {L"Expected an operator, a closing bracket or a comma."}},
    {L"1)", {L"Expected an operator or the end."}},
    {L"sin(1,2,3)", {L"sin takes 1 argument, not 3."}},
    {L"dist([1,2])", {L"dist takes 2 arguments, not 1."}},
    {L"rand(1)", {L"rand takes 2 arguments, not 1."}},
    {L"rand()", {L"rand takes 2 arguments, not 0."}},
    {L"2*rand ()", {L"rand takes 2 arguments, not 0."}},
    {L"max()", {L"max takes 1 argument or more."}},
    {L"[]", {L"Expected a value."}},
    {L"()", {L"Expected a value."}},
    {L"sin((),1)", {L"Expected a value."}},
    {L"sin(1,)", {L"Expected a value."}},
    {L"sin([1,2])", {L"sin needs a number, not a point."}},
    {L"1/0", {}},
    {L"pi=3", {L"pi is a constant: assign to another name."}},
    {L"2=3", {L"2 is a number: assign to a name."}},
    {L"a.b=3", {L"A name cannot hold .: choose another one."}},
    {L"sine(30)", {L"Did you mean sin or sinh?"}},
    {L"m2n(30)", {L"Did you mean min, m2m or m2f?"}},
    {L"nowhere", {}},
    {L"nowhere(1)", {}},
    {L"nothing()", {}},
    {L"sin nowhere", {}},
    {L"fact", {L"fact takes 1 argument, not 0."}},
    {L"dist+1", {L"dist takes 2 arguments, not 0."}},
    {L"nothing%", {}},
    {L"nowhere+1", {L"e+ means a power of ten. After a name that ends in e, write (nowhere)+"}},
    {L"sie+1", {L"e+ means a power of ten. After a name that ends in e, write (sie)+"}},
    {L"nowher e  + 1", {L"e+ means a power of ten. After a name that ends in e, write (nowhere)+"}},
    {L"nowher*2", {}},
    {L"1,500*2", {L"Did you mean 1.500*2 or 1500*2? The decimal mark is a point, and thousands have no mark."}},
    {L"sin(1,500)",
     {L"sin takes 1 argument, not 2.",
      L"Did you mean sin(1.500) or sin(1500)? The decimal mark is a point, and thousands have no mark."}},
    {L"1,500*round(3,5e9)", {L"Expected an operator or the end."}},
    {L"1,2,3", {L"Expected an operator or the end."}},
    {L"2,x", {L"Expected an operator or the end."}},
    {L"2+sin=3", {L"Expected an operator or the end."}},
    {L"1,00,5", {L"Expected an operator or the end."}},
    {L"1234,500,600", {L"Expected an operator or the end."}},
    {L"1,5+1.000'000,5", {L"Expected an operator or the end."}},
    {L"1,5+10.00,5", {L"Expected an operator or the end."}},
    {L"1'00", {}},
    {L"1.0'000,5", {}},
    {L"1,5", {L"The decimal mark is a point, and thousands have no mark. Did you mean 1.5?"}},
    {L"1'000", {L"The decimal mark is a point, and thousands have no mark. Did you mean 1000?"}},
    {L"max(1,500;2)",
     {L"Did you mean max(1.500,2) or max(1500,2)? The decimal mark is a point, and thousands have no mark."}},
    {L"2pi", {L"Multiplication is written with *. Did you mean 2*pi?"}},
    {L"1/2pi", {L"Did you mean 1/2*pi or 1/(2*pi)?"}},
    {L"6/2(1+2)", {L"Did you mean 6/2*(1+2) or 6/(2*(1+2))?"}},
    {L"2+6/2x(3)^2*5", {L"Did you mean 2+6/2*x*(3)^2*5 or 2+6/(2*x*(3)^2)*5?"}},
    {L"2^3 x", {L"Did you mean 2^3* x or 2^(3* x)?"}},
    {L"abs(7%2pi)", {L"Did you mean abs(7%2*pi) or abs(7%(2*pi))?"}},
    {L"1/(2pi)", {L"Multiplication is written with *. Did you mean 1/(2*pi)?"}},
    {L"1/2x^-2", {L"Multiplication is written with *. Did you mean 1/2*x^-2?"}},
    {L"1/2(", {}},
    {L"1e-5", {L"A power of ten is written as e+ or as *10^. Did you mean 1*10^-5?"}},
    {L"15%", {L"% is the remainder of a division. Did you mean 15/100?"}},
    {L"size+1", {L"e+ means a power of ten. After a name that ends in e, write (size)+1"}},
    {L"2pi+1e5", {L"Did you mean 2*pi+1e+5?"}},
    {L"2pi*size+1", {L"e+ means a power of ten. After a name that ends in e, write 2*pi*(size)+1"}},
    {L"1e5+size+1", {L"e+ means a power of ten. After a name that ends in e, write 1e+5+(size)+1"}},
    {L"==2", {L"Expected a value."}},
    {L"1e-x", {L"Multiplication is written with *. Did you mean 1*e-x?"}},
    {L"1e-", {}},
    {L"1x5e", {}},
    {L"1e5z", {}},
    {L"1.5.5", {}},
    {L".e-5", {}},
    {L"2pi/0", {L"Did you mean pi or PI?"}},  // the correction does not compile either
    {L"2pi*3000000000", {L"Did you mean pi or PI?"}},
    {L"2pi+sin([1,2])", {L"Did you mean pi or PI?"}},
    {L"\u221A", {}},
    {L"\u00B2", {}},
    {L"1)\u00B2", {L"Expected an operator or the end."}},
    {L"\uFFE5", {}},
    {L">2", {L"Expected a value."}},
};

class HintsOf : public testing::TestWithParam<Hinted>
{};

TEST_P(HintsOf, AreSentences)
{
    HintSession session;
    session.run(GetParam().typed);
    EXPECT_EQ(session.diagnostic().hints, GetParam().hints);
}

INSTANTIATE_TEST_SUITE_P(Typed, HintsOf, testing::ValuesIn(hinted));

TEST(Hints, AreNoneWhereNothingHasFailed)
{
    HintSession session;
    EXPECT_TRUE(session.run(L"2*pi").evaluated);
    EXPECT_EQ(session.diagnostic().hints, Hints{});
    EXPECT_FALSE(session.diagnostic().fix);
}

TEST(Hints, ShowNoMessageAndAskNoHost)
{
    HintSession session;
    session.run(L"2147483648x");
    session.shown.ids.clear();
    session.host.asked.clear();
    EXPECT_FALSE(session.diagnostic().fix);  // the number is too large
    EXPECT_EQ(session.shown.ids, std::vector<std::uint32_t>{});
    EXPECT_EQ(session.host.asked, std::vector<std::wstring>{});
}

TEST(Hints, KeepTheExpressionsLimits)
{
    HintSession session;
    mathexpr::ExpressionLimits limits;
    limits.maxTextLength = 6;
    mathexpr::setLimits(session.expression, limits);
    session.run(L"2pi+10");
    EXPECT_FALSE(session.diagnostic().fix);
    session.run(L"2pi+1");
    EXPECT_TRUE(session.diagnostic().fix);
    session.run(L"2pi+100");
    EXPECT_EQ(session.diagnostic().hints, Hints{});
}

TEST(Hints, CountAReadingOnlyIfItCompiles)
{
    MessageRecorder shown;
    CMathExpr calculator;
    VALTYPE result;
    calculator.Calculate(L"1,500", result, 1000);
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(mathexpr::expressionOf(calculator));
    EXPECT_EQ(diagnostic.hints, Hints{L"The decimal mark is a point, and thousands have no mark. Did you mean 1.500?"});
    ASSERT_TRUE(diagnostic.fix);
    EXPECT_EQ(diagnostic.fix->replacement, L"1.500");
}

TEST(Hints, QuoteOnlyWhatChangesOfALongText)
{
    HintSession session;
    std::wstring sum;
    for (int term = 0; term < 28; ++term)
    {
        sum += L"+1";
    }
    session.run((L"2pi" + sum).c_str());
    EXPECT_EQ(session.diagnostic().hints, Hints{L"Multiplication is written with *. Did you mean 2*pi" + sum + L"?"});
    session.run((L"22pi" + sum).c_str());
    EXPECT_EQ(session.diagnostic().hints, Hints{L"Multiplication is written with *. Did you mean 22*pi?"});
}

/// Offers a name that cannot be used in an expression.
class Unusable final : public mathexpr::IMathExprNameSource
{
public:
    const wchar_t* getName(std::uint32_t index) const override { return index == 0 ? L"a.b" : nullptr; }
};

TEST(Hints, UseNoNameThatCannotBeDefined)
{
    Session session(true);
    const Unusable unusable;
    mathexpr::setNameSource(session.expression, &unusable);
    session.run(L"2a.b");
    EXPECT_FALSE(session.diagnostic().fix);
    EXPECT_EQ(session.shown.ids, std::vector<std::uint32_t>{});
}

TEST(Hints, KeepAVariableThatIsNamedLikeACall)
{
    HintSession session;
    mathexpr::setVariable(session.expression, L"sqr5", number(1));
    session.run(L"2sqr5");
    EXPECT_EQ(session.diagnostic().hints, Hints{L"Multiplication is written with *. Did you mean 2*sqr5?"});
}

TEST(Hints, AskForTheHostsNamesOnlyWhereTheyMatter)
{
    struct Counted final : mathexpr::IMathExprNameSource
    {
        mutable int calls = 0;
        const wchar_t* getName(std::uint32_t index) const override
        {
            ++calls;
            return index < 2 ? L"rate" : nullptr;
        }
    } names;
    Session session(true);
    mathexpr::setNameSource(session.expression, &names);
    session.run(L"ln(0-1)");
    EXPECT_NE(session.diagnostic().message, 0U);
    EXPECT_EQ(names.calls, 0);
    session.run(L"2rate");
    EXPECT_TRUE(session.diagnostic().fix);
    EXPECT_EQ(names.calls, 3);
}

TEST(Hints, OfferOnlyWhatCompiles)
{
    constexpr const wchar_t* pieces[] = {L"2",      L"30",     L"1,5",    L"1,500", L".",   L"'",  L"pi", L"Pi",
                                         L"sin",    L"Sin",    L"size",   L"rate",  L"x",   L"e",  L"E",  L"+",
                                         L"-",      L"*",      L"/",      L"^",     L"%",   L"(",  L")",  L"[",
                                         L"]",      L",",      L" ",      L"=",     L"()",  L"**", L"5e", L"\u00B2",
                                         L"\u221A", L"\u00BD", L"\u00D7", L"max",   L"dist"};
    std::mt19937 random(1);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    int fixCount = 0;
    for (int row = 0; row < 5000; ++row)
    {
        std::wstring text;
        for (std::size_t length = 1 + below(6); length != 0; --length)
        {
            text += pieces[below(std::size(pieces))];
        }
        HintSession session;
        SCOPED_TRACE(testing::PrintToString(text));
        session.run(text.c_str());
        const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
        if (!diagnostic.fix)
        {
            continue;
        }
        ++fixCount;
        const std::wstring corrected = applied(text, *diagnostic.fix);
        EXPECT_TRUE(session.run(corrected.c_str()).compiled) << testing::PrintToString(corrected);
    }
    EXPECT_GT(fixCount, 100);
}

TEST(Hints, QuoteTheDifferenceOfALongText)
{
    HintSession session;
    const std::wstring tail = L"*(" + std::wstring(70, L'1') + L".5)";
    session.run((L"1+2pi" + tail).c_str());
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    EXPECT_EQ(diagnostic.hints, Hints{L"Multiplication is written with *. Did you mean 2*pi?"});
    ASSERT_TRUE(diagnostic.fix);
    EXPECT_EQ(diagnostic.fix->start, 2U);
    EXPECT_EQ(diagnostic.fix->length, 3U);
    EXPECT_EQ(diagnostic.fix->replacement, L"2*pi");
}

TEST(Hints, CorrectNoExponentWithoutANumber)
{
    HintSession session;
    for (const wchar_t* const text : {L"e5", L"2*(e5)", L"(2)e5"})
    {
        session.run(text);
        EXPECT_FALSE(session.diagnostic().fix.has_value()) << text;
    }
}

TEST(Hints, CorrectNoTextThatNobodyTyped)
{
    HintSession session;
    session.run((L"2pi+" + std::wstring(994, L'1') + L".5").c_str());
    EXPECT_TRUE(session.diagnostic().fix.has_value());
    session.run((L"2pi+" + std::wstring(995, L'1') + L".5").c_str());
    EXPECT_FALSE(session.diagnostic().fix.has_value());
    EXPECT_EQ(session.diagnostic().hints, Hints{L"Did you mean pi or PI?"});
}

}
