// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitTests.cpp - questions about units, names of units, and their search.
#include "tools/calc/units/UnitAnswer.h"
#include "tools/calc/units/UnitQuestion.h"
#include "tools/calc/vocabulary/UnitNames.h"
#include "tools/calc/vocabulary/VocabularySearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct Question
{
    const char* text;
    const char* answer;
};

constexpr Question questions[] = {
    {"3 inch to mm", "i2mm(3) = 76.2"},
    {"3 inches into millimeters", "i2mm(3) = 76.2"},
    {"3in in mm", "i2mm(3) = 76.2"},
    {"3 in in mm", "i2mm(3) = 76.2"},
    {"3 IN -> MM", "i2mm(3) = 76.2"},
    {"3in", "i2mm(3) = 76.2"},
    {"76.2mm", "mm2i(76.2) = 3"},
    {"2mm", "mm2i(2) = 0.078740157480315"},
    {"5 ft to m", "f2m(5) = 1.524"},
    {"90 deg to rad", "d2r(90) = 1.570796326795"},
    {"90\u00B0 to grad", "d2g(90) = 100"},
    {"5 ft 6 in to mm", "f2mm(5)+i2mm(6) = 1676.4"},
    {"5'6\"", "f2mm(5)+i2mm(6) = 1676.4"},
    {"5\u20326\u2033", "f2mm(5)+i2mm(6) = 1676.4"},
    {"5\u20196\u201D", "f2mm(5)+i2mm(6) = 1676.4"},
    {"5'6''", "f2mm(5)+i2mm(6) = 1676.4"},
    {"11'6-7/8\"", "f2mm(11)+i2mm(6+7/8) = 3527.425"},
    {"6 7/8 in to mm", "i2mm(6+7/8) = 174.625"},
    {"7/8 in to mm", "i2mm(7/8) = 22.225"},
    {"1 m 20 cm to m", "1+cm2m(20) = 1.2"},
    {"2 sq ft to square metres", "sf2sm(2) = 0.18580608"},
    {"2 m\u00B2 to sq ft", "sm2sf(2) = 21.5278208334194"},
    {"2 square ft to square m", "sf2sm(2) = 0.18580608"},
    {"1 acre to m2", "sa2sm(1) = 4046.85642"},
    {"2 cu ft", "vf2vm(2) = 0.056633693184"},
    {"-3 in to mm", "i2mm(-3) = -76.2"},
    {"3 in =mm", "i2mm(3) = 76.2"},
    {"3 in = mm", "i2mm(3) = 76.2"},
    // No question, or units that do not match:
    {"", ""},
    {"3", ""},
    {"inch", ""},
    {"3 inch to", ""},
    {"3 inch to mm now", ""},
    {"3 apples to mm", ""},
    {"3 inch to rad", ""},
    {"3 mm to mm", ""},
    {"3 inch mm", ""},
    {"3/ in to mm", ""},
    {"3-/8 in to mm", ""},
    {"3/0 in to mm", ""},
    {"width*2", ""},
};

TEST(Units, QuestionsAreAnsweredByAnExpression)
{
    for (const auto& [text, answer] : questions)
    {
        EXPECT_EQ(unitAnswer(text, 15), answer) << text;
    }
    EXPECT_EQ(unitAnswer("3 inch to mm", 1), "i2mm(3) = 80");
}

TEST(Units, LongTextsAreNoQuestions)
{
    EXPECT_EQ(unitAnswer("3 inch to mm" + std::string(200, ' '), 15), "");
}

TEST(Units, AreFoundByAllTheirNames)
{
    for (const UnitName& unit : unitNames())
    {
        std::vector<std::string> all = unit.others;
        all.insert(all.end(), {unit.singular, unit.plural});
        for (const std::string& name : all)
        {
            EXPECT_EQ(unitCalled(name), &unit) << name;
        }
    }
}

/// The symbols of each group found, after its title.
std::string found(const std::string& words)
{
    std::string text;
    for (const FoundGroup& group : searchVocabulary(words))
    {
        text += (text.empty() ? "" : "; ") + group.title + ":";
        for (std::size_t index = 0; index < std::min<std::size_t>(group.items.size(), 3); ++index)
        {
            const std::wstring symbol = group.items[index].symbol;
            text += ' ' + std::string(symbol.begin(), symbol.end());
        }
    }
    return text;
}

TEST(Search, GroupsTheConversionsOfAUnit)
{
    for (const char* const words : {"inch", "inches", "in", "\"", " INCH "})
    {
        EXPECT_EQ(found(words), "From inch: i2m i2cm i2f; To inch: m2i cm2i f2i") << words;
    }
    for (const char* const words : {"mm", "millimetre", "Millimeters"})
    {
        EXPECT_EQ(found(words), "From millimetre: mm2m mm2cm mm2f; To millimetre: m2mm cm2mm f2mm") << words;
    }
    EXPECT_EQ(found("m\u00B2").substr(0, 18), "From square metre:");
    EXPECT_EQ(found("\u00B0"), "From degree: d2r d2c d2g; To degree: r2d c2d g2d");
}

TEST(Search, PutsTheBestFirst)
{
    EXPECT_EQ(found("inch to mm"), "From inch to millimetre: i2mm");
    EXPECT_EQ(found("sq ft in m\u00B2"), "From square foot to square metre: sf2sm");
    EXPECT_EQ(found("inch mm"), "Found: i2mm mm2i si2smm");
    EXPECT_EQ(found("inch to rad"), "");
    EXPECT_EQ(found("sin").substr(0, 10), "Found: sin");
    EXPECT_EQ(found("logarithm").substr(0, 6), "Found:");
    EXPECT_EQ(found("length").substr(0, 10), "Found: m2m");
    EXPECT_EQ(found("xyzzy"), "");
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(found("to"), "");
}

}
