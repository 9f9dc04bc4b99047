// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExceptionTests.cpp - the entries of an exception, and the contents of the compiler's exceptions.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

TEST(Exceptions, HoldOneEntryWhereTheyAreRaised)
{
    const mathexpr::DefinitionException exception(12, 0, L"file", SMTDefExcepData{3, L"item", L"conflict"});
    ASSERT_EQ(exception.entries.size(), 1u);
    EXPECT_EQ(exception.entries[0].line, 12u);
    EXPECT_EQ(exception.entries[0].reserved, 0u);
    EXPECT_EQ(exception.entries[0].file, L"file");
    EXPECT_EQ(exception.entries[0].data.exID, 3u);
    EXPECT_EQ(exception.entries[0].data.itemName, L"item");
    EXPECT_EQ(exception.entries[0].data.conflictItemName, L"conflict");
}

TEST(Exceptions, PutANewEntryInFrontOfTheOthers)
{
    mathexpr::ParsingException exception(1, 0, L"first", SMTParsingExcepData{7, 4, L"item", 2, 0, L""});
    exception.addEntry(2, 0, L"second", exception.entries.front().data);
    exception.addEntry(3, 5, L"third", SMTParsingExcepData{});
    ASSERT_EQ(exception.entries.size(), 3u);
    EXPECT_EQ(exception.entries[0].file, L"third");
    EXPECT_EQ(exception.entries[0].line, 3u);
    EXPECT_EQ(exception.entries[0].reserved, 5u);
    EXPECT_EQ(exception.entries[1].file, L"second");
    EXPECT_EQ(exception.entries[1].data.itemName, L"item");
    EXPECT_EQ(exception.entries[2].file, L"first");
    EXPECT_EQ(exception.entries[2].data.nbArgs, 2u);
}

TEST(Exceptions, OwnTheirStringsWhenCopied)
{
    auto source = std::make_unique<mathexpr::DefinitionException>(
        1, 0, L"a file name too long to be kept inside a string object", SMTDefExcepData{0, L"item", L"conflict"});
    const mathexpr::DefinitionException copy = *source;
    mathexpr::DefinitionException assigned(9, 0, L"", SMTDefExcepData{});
    assigned = *source;
    source->entries.front().file.assign(source->entries.front().file.size(), L'x');
    source->addEntry(2, 0, L"later", SMTDefExcepData{});
    source.reset();
    for (const mathexpr::DefinitionException& kept : {copy, assigned})
    {
        ASSERT_EQ(kept.entries.size(), 1u);
        EXPECT_EQ(kept.entries[0].file, L"a file name too long to be kept inside a string object");
        EXPECT_EQ(kept.entries[0].data.itemName, L"item");
        EXPECT_EQ(kept.entries[0].data.conflictItemName, L"conflict");
    }
}

TEST(Exceptions, AreThrownByValueAndAreNothingElse)
{
    EXPECT_FALSE((std::is_base_of_v<std::exception, mathexpr::ParsingException>));
    EXPECT_FALSE(std::is_polymorphic_v<mathexpr::ParsingException>);
    EXPECT_EQ(sizeof(mathexpr::ParsingException), sizeof(std::vector<mathexpr::ParsingException::Entry>));
    EXPECT_THROW(throw mathexpr::ParsingException(1, 0, L"", SMTParsingExcepData{}), mathexpr::ParsingException);
}

TEST(Exceptions, HaveEmptyRecordsByDefault)
{
    const SMTParsingExcepData parsing;
    EXPECT_EQ(parsing.exID, 0u);
    EXPECT_EQ(parsing.pos, 0u);
    EXPECT_EQ(parsing.nbArgs, 0u);
    EXPECT_EQ(parsing.reserved, 0u);
    EXPECT_TRUE(parsing.itemName.empty() && parsing.reservedName.empty());
    const SMTDefExcepData definition;
    EXPECT_EQ(definition.exID, 0u);
    EXPECT_TRUE(definition.itemName.empty() && definition.conflictItemName.empty());
}

struct ParsingCase
{
    const wchar_t* text;
    std::uint32_t exID;
    std::uint32_t pos;
    const wchar_t* itemName;
    std::uint32_t nbArgs;
    const wchar_t* file;
};

constexpr const wchar_t* compiler = L"MTParserLib/MTParserCompiler";
constexpr const wchar_t* functions = L"MTParserLib/MTParserDefFuncs";

// clang-format off
constexpr ParsingCase parsingCases[] = {
    // text             code  pos         item          nbArgs  file
    // ---------------------------------------------------------------------
    {L"(1)(2)",          0,   3,          L"",          0,      compiler},
    {L"1+*2",            0,   3,          L"",          0,      compiler},
    {L"1+",              3,   1,          L"",          0,      compiler},
    {L"1)",              4,   1,          L"",          0,      compiler},
    {L"1,2",             5,   1,          L"",          0,      compiler},
    {L"2*(1",            6,   2,          L"",          0,      compiler},
    {L"1+sin(1,2)",      7,   3,          L"sin",       2,      compiler},
    {L"a=",              8,   0,          L"a=",        0,      compiler},
    {L"(1)2",            9,   4,          L"2",         0,      compiler},
    {L"1+foo(1)",        10,  3,          L"foo",       0,      compiler},
    {L"1+unk",           11,  3,          L"unk",       0,      compiler},
    {L"1+()",            12,  2,          L"",          0,      compiler},
    {L"1+a=2",           12,  3,          L"",          0,      compiler},
    {L"sin([1,2,3])",    15,  0,          L"",          0,      functions},
    {L"2*!3",            16,  0xFFFFFFFF, L"",          0,      compiler},
};
// clang-format on

TEST(Exceptions, OfTheCompilerCarryWhatIsAtFault)
{
    for (const ParsingCase& expected : parsingCases)
    {
        SCOPED_TRACE(testing::PrintToString(std::wstring(expected.text)));
        std::uint32_t lines[2] = {};
        for (std::uint32_t& line : lines)
        {
            MathExpression expression(true, nullptr);
            try
            {
                expression.setExpression(expected.text);
                ADD_FAILURE() << "nothing was raised";
            }
            catch (const mathexpr::ParsingException& exception)
            {
                ASSERT_EQ(exception.entries.size(), 1u);
                const auto& entry = exception.entries.front();
                EXPECT_EQ(entry.data.exID, expected.exID);
                EXPECT_EQ(entry.data.pos, expected.pos);
                EXPECT_EQ(entry.data.itemName, expected.itemName);
                EXPECT_EQ(entry.data.nbArgs, expected.nbArgs);
                EXPECT_EQ(entry.data.reserved, 0u);
                EXPECT_EQ(entry.data.reservedName, L"");
                EXPECT_EQ(entry.file, expected.file);
                EXPECT_EQ(entry.reserved, 0u);
                line = entry.line;
            }
        }
        EXPECT_GT(lines[0], 0u);
        EXPECT_EQ(lines[0], lines[1]);
    }
}

TEST(Exceptions, OfAVariableThatIsSetHaveAnEntryOfTheOutermostLayerOnly)
{
    MathExpression expression(true, nullptr);
    try
    {
        mathexpr::setVariable(expression, L"a.b", VALTYPE{});
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        ASSERT_EQ(exception.entries.size(), 1u);
        EXPECT_EQ(exception.entries[0].file, L"MTParserLib/MTParser");
        EXPECT_EQ(exception.entries[0].line, 424u);
        EXPECT_EQ(exception.entries[0].reserved, 0u);
        EXPECT_EQ(exception.entries[0].data.exID, mathexpr::DefinitionError::VariableContainsSyntaxCharacter);
        EXPECT_EQ(exception.entries[0].data.itemName, L"a.b");
        EXPECT_EQ(exception.entries[0].data.conflictItemName, L".");
    }
}

TEST(Exceptions, OfANameThatCannotBeAVariableHaveAnEntryOfEveryLayer)
{
    const AnsweringHost host({{L"a.b", VALTYPE{}}});
    MathExpression expression(true, &host);
    try
    {
        expression.setExpression(L"1+a.b");
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        const wchar_t* const files[] = {compiler, L"MTParserLib/MTParserRegistrar", L"MTParserLib/MTParserRegistrar",
                                        L"MTParserLib/MTParserRegistrar"};
        ASSERT_EQ(exception.entries.size(), std::size(files));
        for (std::size_t i = 0; i < std::size(files); ++i)
        {
            EXPECT_EQ(exception.entries[i].file, files[i]);
            EXPECT_GT(exception.entries[i].line, 0u);
            EXPECT_EQ(exception.entries[i].reserved, 0u);
            EXPECT_EQ(exception.entries[i].data.exID, mathexpr::DefinitionError::VariableContainsSyntaxCharacter);
            EXPECT_EQ(exception.entries[i].data.itemName, L"a.b");
            EXPECT_EQ(exception.entries[i].data.conflictItemName, L".");
        }
    }
    VALTYPE value;
    EXPECT_FALSE(expression.evaluate(value));
}

}
