// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VocabularyTests.cpp - names, strings, counts and order of the whole vocabulary, and the lines of its exceptions.
//
// The classes contain their strings in full. These tests contain the same strings again, those of the conversions as
// rules with exceptions, to detect typing errors in either place.
#include "Items.h"

#include "MTParserLib/vocabulary/Conversions.h"
#include "MTParserLib/vocabulary/CoreMath.h"
#include "MTParserLib/vocabulary/Geometry.h"
#include "MTParserLib/vocabulary/Operators.h"

#include <map>
#include <set>

namespace {

constexpr std::uint32_t any = 0xFFFFFFFF;

struct ExpectedOperator
{
    std::wstring className, symbol, help, description;
    std::uint32_t nbOperands;
    std::int32_t precedence;
};

struct ExpectedFunction
{
    std::wstring className, symbol, help, description;
    std::uint32_t nbArgs = 1;
};

// clang-format off
const std::vector<ExpectedOperator> expectedOperators{
//   class                  symbol help       description                                                              operands, precedence
    {L"AddOp",              L"+",  L"x + y",  L"Addition operator",                                                      2, 1},
    {L"MinusOp",            L"-",  L"x - y",  L"Minus operator",                                                         2, 1},
    {L"MultOp",             L"*",  L"x * y",  L"Multiplication operator",                                                2, 2},
    {L"DivOp",              L"/",  L"x / y",  L"Division operator",                                                      2, 2},
    {L"ExpOp",              L"^",  L"x ^ y",  L"Calculates x raised to the power of y",                                  2, 3},
    {L"UnaryMinusOp",       L"-",  L"-x",     L"Unary minus operator",                                                   1, 4},
    {L"ModuloOp",           L"%",  L"x % y",  L"Modulo; find remainder of the division of x by y",                       2, 2},
    {L"GreaterThanOp",      L">",  L"x > y",  L"Greater than logical operator.  Return 1 if true, 0 if false.",          2, 0},
    {L"LesserThanOp",       L"<",  L"x < y",  L"Lesser than logical operator.  Return 1 if true, 0 if false.",           2, 0},
    {L"GreaterEqualThanOp", L">=", L"x >= y", L"Greater than or equal logical operator.  Return 1 if true, 0 if false.", 2, 0},
    {L"LesserEqualThanOp",  L"<=", L"x <= y", L"Lesser than or equal logical operator.  Return 1 if true, 0 if false.",  2, 0},
    {L"NotEqualOp",         L"!=", L"x != y", L"Not equal logical operator.  Return 1 if true, 0 if false.",             2, 0},
    {L"EqualOp",            L"==", L"x == y", L"Equal logical operator.  Return 1 if true, 0 if false.",                 2, 0},
    {L"AndOp",              L"&",  L"x & y",  L"And logical operator.  Return 1 if true, 0 if false.",                   2, 0},
    {L"OrOp",               L"|",  L"x | y",  L"Or logical operator.  Return 1 if true, 0 if false.",                    2, 0},
    {L"NotOp",              L"!",  L"!x",     L"Not logical operator. Return 1 if x is 0, else return 1",                1, 2},
};

/// The functions before the conversions, and those after them, in the order of registration.
const std::vector<ExpectedFunction> firstFunctions{
    {L"SinFct",        L"sin",   L"sin(x)",            L"Sine",                                                1},
    {L"ArcSinFct",     L"asin",  L"asin(x)",           L"Arcsine",                                             1},
    {L"SinhFct",       L"sinh",  L"sinh(x)",           L"Hyperbolic sine",                                     1},
    {L"CosFct",        L"cos",   L"cos(x)",            L"Cosine",                                              1},
    {L"ArcCosFct",     L"acos",  L"acos(x)",           L"Arccosine",                                           1},
    {L"CoshFct",       L"cosh",  L"cosh(x)",           L"Hyperbolic cosine",                                   1},
    {L"TanFct",        L"tan",   L"tan(x)",            L"Tangent",                                             1},
    {L"ArcTanFct",     L"atan",  L"atan(x)",           L"Arctangent",                                          1},
    {L"TanhFct",       L"tanh",  L"tanh(x)",           L"Hyperbolic tangent",                                  1},
    {L"SqrtFct",       L"sqrt",  L"sqrt(x)",           L"Square root",                                         1},
    {L"MinFct",        L"min",   L"min(x,y)",          L"Return smaller of two values",                        2},
    {L"Min3Fct",       L"min",   L"min(x,y,z)",        L"Return smaller of three values",                      3},
    {L"MinUndefFct",   L"min",   L"min(v1,v2,v3,...)", L"Return smaller of a set of values",                   any},
    {L"MaxFct",        L"max",   L"max(x,y)",          L"Return larger of two values",                         2},
    {L"Max3Fct",       L"max",   L"max(x,y,z)",        L"Return larger of three values",                       3},
    {L"MaxUndefFct",   L"max",   L"max(v1,v2,v3,...)", L"Return larger of a set of values",                    any},
    {L"AbsFct",        L"abs",   L"abs(x)",            L"Absolute value",                                      1},
    {L"RandFct",       L"rand",  L"rand()",            L"Random value between 0 and 1",                        0},
    {L"RandMinMaxFct", L"rand",  L"rand(min, max)",    L"Random value between min and max",                    2},
    {L"CeilFct",       L"ceil",  L"ceil(x)",           L"Ceiling",                                             1},
    {L"FloorFct",      L"floor", L"floor(x)",          L"Floor",                                               1},
    {L"LogFct",        L"ln",    L"ln(x)",             L"Natural logarithm",                                   1},
    {L"Log10Fct",      L"log",   L"log(x)",            L"Base-10 logarithm",                                   1},
    {L"AvgFct",        L"avg",   L"avg(v1,v2,v3,...)", L"Return the average of a set of values",               any},
    {L"SumFct",        L"sum",   L"sum(v1,v2,v3,...)", L"Return the sum of a set of values",                   any},
    {L"FactorialFct",  L"fact",  L"fact(x)",           L"Return the factorial of x: x*(x-1)*(x-2)*...(x-x+1)", 1},
    {L"SqrFct",        L"sqr",   L"sqr(x)",            L"Square",                                              1},
    {L"ExpFct",        L"exp",   L"exp(x)",            L"Calculates e raised to the power of x",               1},
    {L"Exp10Fct",      L"exp10", L"exp10(x)",          L"Calculates 10 raised to the power of x",              1},
    {L"RoundFct",      L"round", L"round(x)",          L"Round",                                               1},
    {L"TruncFct",      L"trunc", L"trunc(x)",          L"Truncate",                                            1},
    {L"R2dFct",        L"r2d",   L"r2d(x)",            L"Convert Radians To Degrees",                          1},
    {L"D2rFct",        L"d2r",   L"d2r(x)",            L"Convert Degrees To Radians",                          1},
    {L"Point",         L"point", L"point",             L"Convert Number To Point",                             any},
};
const std::vector<ExpectedFunction> lastFunctions{
    {L"dist",   L"dist", L"dist(x,y)",    L"Distance between two endpoints",                      2},
    {L"nor",    L"nor",  L"nor(x,y)",     L"Unit vector in the XY plane normao to two endpoints", 2},
    {L"vec",    L"vec",  L"vec(x,y)",     L"Vector from two endpoints",                           2},
    {L"vec1",   L"vec1", L"vec1(x,y)",    L"Unit vector from two endpoints",                      2},
    {L"ill",    L"ill",  L"ill(x,y,z,w)", L"Intersection of two lines defined by four endpoints", 4},
    {L"PowFct", L"pow",  L"pow(x,y)",     L"the y power of x",                                    2},
};
// clang-format on

using Words = std::map<std::wstring, std::wstring>;

/// A family of conversions: its units, in the order of registration.
struct Family
{
    std::vector<std::pair<std::wstring, std::vector<std::wstring>>> targetsBySource;
    std::wstring (*describe)(const std::wstring& source, const std::wstring& target);
    bool smallClassNames = false;
};

std::wstring describeAngle(const std::wstring& source, const std::wstring& target)
{
    const Words singular{
        {L"d", L"Degrees"}, {L"r", L"Radians"}, {L"c", L"Circles"}, {L"g", L"Grads"}, {L"q", L"Quadrants"}};
    const Words irregular{{L"d2c", L"Circle"}, {L"d2g", L"grads"}, {L"d2q", L"quadrant"}, {L"r2c", L"Circle"}};
    const auto exception = irregular.find(source + L"2" + target);
    return L"Convert " + singular.at(source) + L" To " +
           (exception != irregular.end() ? exception->second : singular.at(target));
}

std::wstring describeLength(const std::wstring& source, const std::wstring& target)
{
    if (target == L"su")
    {
        const Words plural{{L"m", L"Meters"},       {L"cm", L"Centimeters"}, {L"f", L"Feet"},
                           {L"i", L"Inchs"},        {L"km", L"Kilometers"},  {L"mile", L"Miles"},
                           {L"mm", L"Millimeters"}, {L"su", L"Survey_feet"}, {L"y", L"Yard"}};
        return L" Convert " + plural.at(source) + L" to Survey_feet";
    }
    if (target == L"i")
    {
        return source == L"cm" || source == L"mile" ? L"Convert Centimeter To Foot" : L"Convert Meter To inch";
    }
    const Words names{{L"m", L"Meter"},       {L"cm", L"Centimeter"},  {L"f", L"Foot"},
                      {L"i", L"Inch"},        {L"km", L"Kilometer"},   {L"mile", L"Mile"},
                      {L"mm", L"Millimeter"}, {L"su", L"Survey_foot"}, {L"y", L"Yard"}};
    std::wstring name = names.at(target);
    if (source == L"m" && target == L"m")
    {
        name = L"meter";
    }
    if (source == L"mm" && target == L"km")
    {
        name = L"Kilemeter";
    }
    return L"Convert " + names.at(source) + L" To " + name;
}

std::wstring describeArea(const std::wstring& source, const std::wstring& target)
{
    const Words names{{L"sa", L"acre"},       {L"scm", L"centimeter"}, {L"sf", L"foot"},        {L"si", L"inch"},
                      {L"skm", L"kilometer"}, {L"sm", L"meter"},       {L"smm", L"millimeter"}, {L"sy", L"yard"}};
    const std::wstring from = L"Convert Area from ";
    if (target == L"sa")
    {
        if (source == L"sa")
        {
            return from + L"acre To acre";
        }
        return source == L"scm" ? from + L"cenitmeter to acre" : L" " + from + names.at(source) + L" to acre";
    }
    if (target == L"smm" && source != L"sa" && source != L"smm" && source != L"sy")
    {
        return from + names.at(source) + L" to mm";
    }
    return from + names.at(source) + L" to " + names.at(target);
}

std::wstring describeVolume(const std::wstring& source, const std::wstring& target)
{
    const Words names{{L"vcm", L"centimeter"}, {L"vf", L"foot"},        {L"vi", L"inch"}, {L"vkm", L"kilometer"},
                      {L"vm", L"meter"},       {L"vmm", L"millimeter"}, {L"vy", L"yard"}};
    return L"Convert Volume from " + names.at(source) + L" to " + names.at(target);
}

const std::vector<std::wstring> lengths{L"m", L"cm", L"f", L"i", L"km", L"mile", L"mm", L"y", L"su"};
const std::vector<std::wstring> areas{L"sa", L"scm", L"sf", L"skm", L"sm", L"smm", L"si", L"sy"};
const std::vector<std::wstring> volumes{L"vcm", L"vf", L"vi", L"vkm", L"vm", L"vmm", L"vy"};

const std::vector<Family> families{
    {{{L"d", {L"c", L"g", L"q", L"d"}},
      {L"r", {L"c", L"g", L"q", L"r"}},
      {L"c", {L"d", L"g", L"q", L"c", L"r"}},
      {L"g", {L"c", L"d", L"g", L"q", L"r"}},
      {L"q", {L"c", L"d", L"g", L"q", L"r"}}},
     describeAngle},
    {{{L"m", {L"m", L"mile", L"km", L"cm", L"f", L"i", L"mm", L"y", L"su"}},
      {L"cm", lengths},
      {L"f", lengths},
      {L"i", lengths},
      {L"km", lengths},
      {L"mile", lengths},
      {L"mm", lengths},
      {L"su", lengths},
      {L"y", lengths}},
     describeLength},
    {{{L"skm", areas},
      {L"smm", areas},
      {L"sy", areas},
      {L"sa", areas},
      {L"scm", areas},
      {L"sf", areas},
      {L"sm", areas},
      {L"si", areas}},
     describeArea},
    {{{L"vcm", volumes},
      {L"vf", volumes},
      {L"vi", volumes},
      {L"vkm", volumes},
      {L"vm", volumes},
      {L"vmm", volumes},
      {L"vy", volumes}},
     describeVolume,
     true},
};

std::vector<ExpectedFunction> expectedConversions()
{
    std::vector<ExpectedFunction> conversions;
    for (const Family& family : families)
    {
        for (const auto& [source, targets] : family.targetsBySource)
        {
            for (const std::wstring& target : targets)
            {
                const std::wstring symbol = source + L"2" + target;
                std::wstring className = symbol + L"Fct";
                if (!family.smallClassNames)
                {
                    className[0] = static_cast<wchar_t>(className[0] - L'a' + L'A');
                }
                conversions.push_back({className, symbol, symbol == L"sa2si" ? symbol : symbol + L"(x)",
                                       family.describe(source, target)});
            }
        }
    }
    return conversions;
}

std::vector<ExpectedFunction> expectedFunctions()
{
    std::vector<ExpectedFunction> functions = firstFunctions;
    for (const std::vector<ExpectedFunction>& more : {expectedConversions(), lastFunctions})
    {
        functions.insert(functions.end(), more.begin(), more.end());
    }
    return functions;
}

platform::ArrayView<const VocabularyEntry> operators()
{
    return getVocabulary().first(16);
}

platform::ArrayView<const VocabularyEntry> functions()
{
    return getVocabulary().subspan(16);
}

bool isRandom(const VocabularyEntry& entry)
{
    return std::wstring(entry.symbol) == L"rand";
}

TEST(Vocabulary, Counts)
{
    std::map<mathexpr::VocabularyFamily, int> counts;
    for (const VocabularyEntry& entry : getVocabulary())
    {
        ++counts[entry.family];
    }
    const std::map<mathexpr::VocabularyFamily, int> expected{
        {mathexpr::VocabularyFamily::Operators, 16}, {mathexpr::VocabularyFamily::CoreMath, 34},
        {mathexpr::VocabularyFamily::Angle, 23},     {mathexpr::VocabularyFamily::Length, 81},
        {mathexpr::VocabularyFamily::Area, 64},      {mathexpr::VocabularyFamily::Volume, 49},
        {mathexpr::VocabularyFamily::Geometry, 6},
    };
    EXPECT_EQ(counts, expected);
    const RegisteredVocabulary registered;
    EXPECT_EQ(registered.get().getNbOperators(), 16U);
    EXPECT_EQ(registered.get().getNbFunctions(), 257U);
}

TEST(Vocabulary, OperatorsInTheirOrder)
{
    ASSERT_EQ(operators().size(), expectedOperators.size());
    for (std::size_t i = 0; i < expectedOperators.size(); ++i)
    {
        const VocabularyEntry& entry = operators()[i];
        const ExpectedOperator& expected = expectedOperators[i];
        SCOPED_TRACE(narrow(expected.className));
        EXPECT_TRUE(entry.isOperator);
        EXPECT_EQ(entry.className, expected.className);
        EXPECT_EQ(entry.symbol, expected.symbol);
        EXPECT_EQ(entry.help, expected.help);
        EXPECT_EQ(entry.description, expected.description);
        EXPECT_EQ(entry.nbArgs, expected.nbOperands);
        EXPECT_EQ(entry.precedence, expected.precedence);
        EXPECT_EQ(entry.isUnary, expected.nbOperands == 1);
        EXPECT_TRUE(entry.isConstant);
    }
}

TEST(Vocabulary, OperatorsAnswerAsListed)
{
    const RegisteredVocabulary registered;
    for (const VocabularyEntry& entry : operators())
    {
        SCOPED_TRACE(narrow(entry.className));
        const IMathOperator& item = registered.getOperator(entry);
        EXPECT_EQ(item.getSymbol(), entry.symbol);
        EXPECT_EQ(item.getHelpString(), entry.help);
        EXPECT_EQ(item.getDescription(), entry.description);
        EXPECT_EQ(item.getPrecedence(), entry.precedence);
        EXPECT_EQ(item.isUnaryOp(), entry.isUnary);
        EXPECT_TRUE(item.isConstant());
    }
}

TEST(Vocabulary, FunctionsInTheirOrder)
{
    const std::vector<ExpectedFunction> expectations = expectedFunctions();
    ASSERT_EQ(functions().size(), expectations.size());
    for (std::size_t i = 0; i < expectations.size(); ++i)
    {
        const VocabularyEntry& entry = functions()[i];
        const ExpectedFunction& expected = expectations[i];
        SCOPED_TRACE(narrow(expected.className));
        EXPECT_FALSE(entry.isOperator);
        EXPECT_EQ(entry.className, expected.className);
        EXPECT_EQ(entry.symbol, expected.symbol);
        EXPECT_EQ(entry.help, expected.help);
        EXPECT_EQ(entry.description, expected.description);
        EXPECT_EQ(entry.nbArgs, expected.nbArgs);
        EXPECT_EQ(entry.precedence, 0);
        EXPECT_FALSE(entry.isUnary);
        EXPECT_EQ(entry.isConstant, !isRandom(entry));
    }
}

TEST(Vocabulary, FunctionsAnswerAsListed)
{
    const RegisteredVocabulary registered;
    for (std::size_t i = 0; i < functions().size(); ++i)
    {
        const VocabularyEntry& entry = functions()[i];
        const IMathFunction& item = registered.get().getFunction(i);
        SCOPED_TRACE(narrow(entry.className));
        EXPECT_EQ(item.getSymbol(), entry.symbol);
        EXPECT_EQ(item.getHelpString(), entry.help);
        EXPECT_EQ(item.getDescription(), entry.description);
        EXPECT_EQ(item.getNbArgs(), entry.nbArgs);
        EXPECT_EQ(item.isConstant(), !isRandom(entry));
    }
}

TEST(Vocabulary, NoTwoFunctionsClash)
{
    std::set<std::pair<std::wstring, std::uint32_t>> overloads;
    std::set<std::wstring> classNames;
    for (const VocabularyEntry& entry : getVocabulary())
    {
        EXPECT_TRUE(overloads.emplace(entry.symbol, entry.nbArgs).second) << narrow(entry.className);
        EXPECT_TRUE(classNames.insert(entry.className).second) << narrow(entry.className);
    }
}

TEST(Vocabulary, ItemsAreNothingButTheirInterface)
{
    EXPECT_EQ(sizeof(AddOp), sizeof(void*));
    EXPECT_EQ(sizeof(SinFct), sizeof(void*));
    EXPECT_EQ(sizeof(MinUndefFct), sizeof(void*));
    EXPECT_EQ(sizeof(ill), sizeof(void*));
    EXPECT_EQ(sizeof(M2cmFct), sizeof(void*));
}

TEST(Vocabulary, EveryClassReportsAPointWithAUniqueLine)
{
    const RegisteredVocabulary registered;
    const std::set<std::wstring> neverRaise{L"AbsFct", L"RandFct", L"Point", L"dist", L"nor", L"vec", L"vec1", L"ill"};
    std::map<std::uint32_t, std::wstring> classByLine;
    for (std::size_t i = 0; i < functions().size(); ++i)
    {
        const VocabularyEntry& entry = functions()[i];
        const IMathFunction& item = registered.get().getFunction(i);
        SCOPED_TRACE(narrow(entry.className));
        const std::vector<VALTYPE> args(entry.nbArgs == any ? 1 : entry.nbArgs, point(1, 2, 3));
        const std::uint32_t line = raisedLine(item, args);
        if (neverRaise.contains(entry.className))
        {
            EXPECT_EQ(line, 0U);
            continue;
        }
        ASSERT_NE(line, 0U);
        EXPECT_TRUE(classByLine.emplace(line, entry.className).second) << "shared with " << narrow(classByLine[line]);
        EXPECT_TRUE(raises(item, args, line));
    }
    EXPECT_EQ(classByLine.size(), 257U - neverRaise.size());
}

}
