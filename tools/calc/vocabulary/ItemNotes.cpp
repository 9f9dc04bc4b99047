// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ItemNotes.cpp - one row for each operator and function except conversions, whose notes follow from their units.
#include "tools/calc/vocabulary/ItemNotes.h"

#include "tools/calc/text/Utf8.h"
#include "tools/calc/vocabulary/UnitNames.h"

#include <algorithm>
#include <iterator>

namespace {

struct Row
{
    const wchar_t* className;
    const char* units;
    const char* domain;
    const char* example;
    const char* refused;  // one expression, or two separated by a blank
    const char* points;   // expressions separated by blanks
};

// clang-format off
const Row rows[] = {
//   class                 units                           domain                                      example                          refused          points
//   --------------------- ------------------------------- ------------------------------------------- -------------------------------- ---------------- ----------------------------------------
    {L"AddOp",              "",                             "two numbers or two points",                "2+3",                           "",              "[1,2,3]+[4,5,6] [1,2,3]+2 2+[1,2,3]"},
    {L"MinusOp",            "",                             "two numbers or two points",                "7-2.5",                         "",              "[1,2,3]-[4,5,6] [1,2,3]-2 2-[1,2,3]"},
    {L"MultOp",             "",                             "numbers and points",                       "2*3",                           "",              "[1,2,3]*2 2*[1,2,3] [1,2,3]*[4,5,6]"},
    {L"DivOp",              "",                             "y is a number and not 0",                  "7/2",                           "1/0",           "[1,2,3]/2 2/[1,2,3]"},
    {L"ExpOp",              "",                             "x is a number; 0 to any power is 0",       "2^10",                          "",              "[1,2,3]^2 2^[3,4,5]"},
    {L"UnaryMinusOp",       "",                             "any number or point",                      "-2^2",                          "",              "-[1,2,3]"},
    {L"ModuloOp",           "",                             "any numbers; y = 0 yields nan",            "7%3",                           "",              "[7,2,3]%3 7%[3,2,1]"},
    {L"GreaterThanOp",      "",                             "any numbers",                              "3>2",                           "",              "[3,0]>2 3>[2,0]"},
    {L"LesserThanOp",       "",                             "any numbers",                              "3<2",                           "",              "[3,0]<2 3<[2,0]"},
    {L"GreaterEqualThanOp", "",                             "any numbers",                              "2>=2",                          "",              "[3,0]>=2 3>=[2,0]"},
    {L"LesserEqualThanOp",  "",                             "any numbers",                              "3<=2",                          "",              "[3,0]<=2 3<=[2,0]"},
    {L"NotEqualOp",         "",                             "any numbers",                              "3!=2",                          "",              "[3,0]!=2 3!=[2,0]"},
    {L"EqualOp",            "",                             "any numbers",                              "3==2",                          "",              "[3,0]==2 3==[2,0]"},
    {L"AndOp",              "",                             "converted numbers or distances; the cross product of two points; 0 for plain numbers", "m2cm(2)&m2cm(3)", "", "[1,0,0]&[0,1,0] [1,0,0]&2"},
    {L"OrOp",               "",                             "any numbers",                              "0|2",                           "",              "[0,1]|0 0|[0,1]"},
    {L"NotOp",              "",                             "any number",                               "!0",                            "",              "![0,1]"},

    {L"SinFct",             "x in degrees",                 "any number",                               "sin(30)",                       "",              "sin([1,2,3])"},
    {L"ArcSinFct",          "result in degrees",            "-1 to 1",                                  "asin(0.5)",                     "asin(2)",       "asin([1,2,3])"},
    {L"SinhFct",            "x in degrees",                 "any number",                               "sinh(30)",                      "",              "sinh([1,2,3])"},
    {L"CosFct",             "x in degrees",                 "any number",                               "cos(60)",                       "",              "cos([1,2,3])"},
    {L"ArcCosFct",          "result in degrees",            "-1 to 1",                                  "acos(0.5)",                     "acos(2)",       "acos([1,2,3])"},
    {L"CoshFct",            "x in degrees",                 "any number",                               "cosh(30)",                      "",              "cosh([1,2,3])"},
    {L"TanFct",             "x in degrees",                 "any number",                               "tan(45)",                       "",              "tan([1,2,3])"},
    {L"ArcTanFct",          "result in degrees",            "any number",                               "atan(1)",                       "",              "atan([1,2,3])"},
    {L"TanhFct",            "x in degrees",                 "any number",                               "tanh(30)",                      "",              "tanh([1,2,3])"},
    {L"SqrtFct",            "",                             "above 0; 0 itself is refused",             "sqrt(16)",                      "sqrt(0)",       "sqrt([1,2,3])"},
    {L"MinFct",             "",                             "any numbers",                              "min(3,2)",                      "",              "min([1,2,3],5) min(5,[1,2,3])"},
    {L"Min3Fct",            "",                             "any numbers",                              "min(3,2,4)",                    "",              "min([1,2,3],5,6) min(5,6,[1,2,3])"},
    {L"MinUndefFct",        "",                             "at least one number",                      "min(3,2,4,1)",                  "",              "min([1,2,3],5,6,7) min(5,6,7,[1,2,3])"},
    {L"MaxFct",             "",                             "any numbers",                              "max(3,2)",                      "",              "max([1,2,3],0) max(0,[1,2,3])"},
    {L"Max3Fct",            "",                             "any numbers",                              "max(3,2,4)",                    "",              "max([1,2,3],0,0) max(0,0,[1,2,3])"},
    {L"MaxUndefFct",        "",                             "at least one number",                      "max(3,2,4,1)",                  "",              "max([1,2,3],0,0,0) max(0,0,0,[1,2,3])"},
    {L"AbsFct",             "",                             "any number or point",                      "abs(-2.5)",                     "",              "abs([3,4,12])"},
    {L"RandFct",            "",                             "cannot be called from an expression",      "",                              "rand()",        ""},
    {L"RandMinMaxFct",      "",                             "any numbers",                              "rand(3,3)",                     "",              "rand([3,0],3) rand(3,[3,0])"},
    {L"CeilFct",            "",                             "any number",                               "ceil(2.1)",                     "",              "ceil([1,2,3])"},
    {L"FloorFct",           "",                             "any number",                               "floor(-2.1)",                   "",              "floor([1,2,3])"},
    {L"LogFct",             "",                             "above 0",                                  "ln(10)",                        "ln(0)",         "ln([1,2,3])"},
    {L"Log10Fct",           "",                             "above 0",                                  "log(1000)",                     "log(0)",        "log([1,2,3])"},
    {L"AvgFct",             "",                             "at least one number",                      "avg(1,2,6)",                    "",              "avg([1,2,3],5) avg(5,[1,2,3])"},
    {L"SumFct",             "",                             "at least one number",                      "sum(1,2,6)",                    "",              "sum([1,2,3],5) sum(5,[1,2,3])"},
    {L"FactorialFct",       "",                             "any number, cut to a whole one",           "fact(5)",                       "",              "fact([1,2,3])"},
    {L"SqrFct",             "",                             "any number",                               "sqr(5)",                        "",              "sqr([1,2,3])"},
    {L"ExpFct",             "",                             "any number",                               "exp(1)",                        "",              "exp([1,2,3])"},
    {L"Exp10Fct",           "",                             "any number",                               "exp10(3)",                      "",              "exp10([1,2,3])"},
    {L"RoundFct",           "",                             "-2147483648 to 2147483647",                "round(-2.5)",                   "round(3e+9)",   "round([1,2,3])"},
    {L"TruncFct",           "",                             "-2147483648 to 2147483647",                "trunc(-2.9)",                   "trunc(3e+9)",   "trunc([1,2,3])"},
    {L"R2dFct",             "radians to degrees",           "any number",                               "r2d(pi)",                       "",              "r2d([1,2,3])"},
    {L"D2rFct",             "degrees to radians",           "any number",                               "d2r(180)",                      "",              "d2r([1,2,3])"},
    {L"PowFct",             "",                             "any numbers",                              "pow(2,10)",                     "",              "pow([1,2,3],2) pow(2,[3,4,5])"},

    {L"Point",              "coordinates in drawing units", "one to three numbers; more yield zeros",   "point(1,2,3)",                  "",              "point([1,2,3],5)"},
    {L"dist",               "drawing units",                "two points",                               "dist([0,0,0],[3,4,12])",        "dist(1,2)",     "dist([0,0,0],5)"},
    {L"nor",                "no unit",                      "two points not above each other",          "nor([0,0,0],[3,4,0])",          "nor(1,2)",      "nor([0,0,0],5)"},
    {L"vec",                "drawing units",                "two points",                               "vec([1,2,3],[4,6,3])",          "vec(1,2)",      "vec([0,0,0],5)"},
    {L"vec1",               "no unit",                      "two different points",                     "vec1([0,0,0],[3,4,0])",         "vec1(1,2)",     "vec1([0,0,0],5)"},
    {L"ill",                "drawing units",                "four points; two on each line",            "ill([0,0,0],[2,2,0],[0,2,0],[2,0,0])", "ill(1,2,3,4)", "ill([0,0,0],[2,2,0],[0,2,0],5)"},
};
// clang-format on

std::vector<std::string> words(std::string_view text)
{
    std::vector<std::string> found;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find(' '), text.size());
        found.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return found;
}

ItemNotes notesOfConversion(const mathexpr::VocabularyItem& item)
{
    const std::string name = toUtf8(item.symbol);
    return {conversionText(*conversionOf(item)), "any number", {name + "(1)"}, {}, {name + "([1,2,3])"}};
}

}

ItemNotes notesOf(const mathexpr::VocabularyItem& item)
{
    if (item.kind == mathexpr::VocabularyKind::Constant)
    {
        return {{}, {}, {toUtf8(item.symbol) + "*2"}, {}, {}};
    }
    const auto* const row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& candidate) {
        return std::wstring_view(candidate.className) == item.className;
    });
    if (row == std::end(rows))
    {
        return notesOfConversion(item);
    }
    return {row->units, row->domain, words(row->example), words(row->refused), words(row->points)};
}

std::string_view familyTitle(mathexpr::VocabularyFamily family)
{
    switch (family)
    {
    case mathexpr::VocabularyFamily::Constants:
        return "Constants";
    case mathexpr::VocabularyFamily::Operators:
        return "Operators";
    case mathexpr::VocabularyFamily::CoreMath:
        return "Core mathematics";
    case mathexpr::VocabularyFamily::Angle:
        return "Angle conversions";
    case mathexpr::VocabularyFamily::Length:
        return "Length conversions";
    case mathexpr::VocabularyFamily::Area:
        return "Area conversions";
    case mathexpr::VocabularyFamily::Volume:
        return "Volume conversions";
    case mathexpr::VocabularyFamily::Geometry:
        return "Geometry";
    }
    return {};
}
