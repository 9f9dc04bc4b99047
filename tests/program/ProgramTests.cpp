// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ProgramTests.cpp - compiles the expressions of the golden files and compares the programs.
#include "MTParserLib/MTMessage.h"
#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/run/MTParserEvaluator.h"
#include "MTParserLib/tiles/MTTileProgram.h"
#include "tests/program/ProgramDump.h"
#include "tests/program/ScalarDump.h"
#include "tests/program/TileDump.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

void showMessage(Message::Id id)
{
    FAIL() << "message " << id;
}

namespace {

/// Supplies numbers for x, y and z, and points for p and q.
class Host final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        value.type = name[0] == L'p' || name[0] == L'q' ? 1 : 0;
        value.x = value.y = value.z = 2.5;
        return std::wstring(L"xyzpq").find(name) != std::wstring::npos;
    }
};

class Factory final : public IMathVariableFactory
{
public:
    IMathVariable* create(const wchar_t* name) override;

    std::map<std::wstring, const VALTYPE*> values;  // of the defined variables
};

class Variable final : public IMathVariable
{
public:
    explicit Variable(const wchar_t* variableName) : name(variableName) {}
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE& result, bool) const override
    {
        result = value;
        return true;
    }
    std::wstring getSymbol() const override { return name; }
    VALTYPE* getValuePtr() override { return &value; }

private:
    std::wstring name;
    VALTYPE value;
};

IMathVariable* Factory::create(const wchar_t* name)
{
    auto* const variable = new Variable(name);
    values[name] = variable->getValuePtr();
    return variable;
}

struct GoldenProgram
{
    int line;
    std::string text;
    std::string dump;
};

/// The file has a block per expression: the text, then its program, indented. "#" begins a comment.
std::vector<GoldenProgram> readGoldenPrograms(const std::string& path)
{
    std::ifstream file(path);
    std::vector<GoldenProgram> programs;
    int number = 0;
    for (std::string line; std::getline(file, line);)
    {
        ++number;
        if (line.empty() || line.front() == '#')
        {
            continue;
        }
        if (line.front() != ' ')
        {
            programs.push_back({number, line, {}});
        }
        else
        {
            programs.back().dump += line.substr(line.find_first_not_of(' ')) + '\n';
        }
    }
    return programs;
}

/// @param inPlace  whether variables are treated as the library's own, which are read in place
void compareWithGoldenFile(const std::string& name, bool inPlace)
{
    Host host;
    Factory factory;
    MTParserRegistrar registrar;
    registrar.setSyntax({L'.', L',', L'[', L']'});
    registrar.setVariableFactory(&factory, inPlace);
    registerVocabulary(registrar);
    MTCompilation compilation;
    MTParserCompiler compiler(registrar, compilation, false, &host);

    const std::string path = std::string(PROGRAMS_DIRECTORY) + "/" + name;
    const std::vector<GoldenProgram> programs = readGoldenPrograms(path);
    ASSERT_GE(programs.size(), 8U);
    for (const GoldenProgram& golden : programs)
    {
        SCOPED_TRACE(path + ":" + std::to_string(golden.line) + ": " + golden.text);
        std::wstring assignTarget;
        ASSERT_TRUE(compiler.compile(std::wstring(golden.text.begin(), golden.text.end()).c_str(), {}, assignTarget));
        EXPECT_EQ(dumpProgram(compilation.program, registrar), golden.dump);
    }
}

TEST(Programs, CopyTheVariablesOfAHost)
{
    compareWithGoldenFile("programs.txt", false);
}

TEST(Programs, ReadTheLibrarysOwnVariablesInPlace)
{
    compareWithGoldenFile("programs_in_place.txt", true);
}

/// Compiles with variables that are treated as the library's own.
struct InPlace
{
    explicit InPlace(const std::wstring& text)
    {
        registrar.setSyntax({L'.', L',', L'[', L']'});
        registrar.setVariableFactory(&factory, true);
        registerVocabulary(registrar);
        compile(text);
    }
    void compile(const std::wstring& text)
    {
        std::wstring assignTarget;
        EXPECT_TRUE(compiler.compile(text.c_str(), {}, assignTarget));
    }

    Host host;
    Factory factory;
    MTParserRegistrar registrar;
    MTCompilation compilation;
    MTParserCompiler compiler{registrar, compilation, false, &host};
};

/// Host code that runs between two steps may change any variable.
TEST(Programs, CopyTheirVariablesWhereCodeOfTheHostsCanRun)
{
    const auto nbSteps = [](auto define) {
        InPlace compiled(L"x");
        define(compiled.registrar);
        compiled.compile(L"x+y");
        return compiled.compilation.program.steps.size();
    };
    Factory hostsOwn;
    EXPECT_EQ(nbSteps([](MTParserRegistrar&) {}), 1U);
    EXPECT_EQ(nbSteps([&](MTParserRegistrar& to) { to.setVariableFactory(&hostsOwn); }), 3U);
    EXPECT_EQ(nbSteps([](MTParserRegistrar& to) { to.defineFunction(new TestFunction(L"hostsown"), true); }), 3U);
    EXPECT_EQ(nbSteps([](MTParserRegistrar& to) { to.defineOperator(new TestOperator(L"#"), true); }), 3U);
    EXPECT_EQ(nbSteps([](MTParserRegistrar& to) { to.defineVariable(new Variable(L"hostsown"), false); }), 3U);
}

MTRunState stateAfterRun(MTParserProgram& program, bool succeeds = true)
{
    MTRunFailure failure;
    EXPECT_EQ(runProgram(program, false, failure), succeeds);
    return program.choice.getState();
}

/// A text followed by another one, repeated.
std::wstring withRepeated(std::wstring text, const wchar_t* repeated, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
    {
        text += repeated;
    }
    return text;
}

/// Whether a program has no spare capacity.
bool isFitted(const MTParserProgram& program)
{
    return program.steps.capacity() == program.steps.size() && program.slots.capacity() == program.slots.size() &&
           program.inputs.capacity() == program.inputs.size() &&
           program.usedVariables.capacity() == program.usedVariables.size();
}

TEST(Programs, HaveMemoryOfTheirSizeIfTheyAreShortAndTheFirst)
{
    const std::vector<std::pair<std::wstring, double>> texts = {
        {L"2*3+1", 7.0}, {L"x", 2.5}, {L"((x*2+y)*3-z)/(x+z*2)", 20.0 / 7.5}, {L"sqrt(x*x)+y-x", 2.5}};
    for (const auto& [text, value] : texts)
    {
        InPlace compiled(text);
        MTParserProgram& program = compiled.compilation.program;
        EXPECT_TRUE(isFitted(program));
        for (int run = 0; run < 3; ++run)
        {
            stateAfterRun(program);
            EXPECT_EQ(program.getRoot().x, value);
        }
    }
}

TEST(Programs, KeepTheirMemoryIfTheyAreLongOrLater)
{
    const std::wstring longText = withRepeated(L"x", L"+x", 64);
    InPlace compiled(longText);
    MTParserProgram& program = compiled.compilation.program;
    EXPECT_EQ(program.slots.size(), 64U);
    EXPECT_TRUE(isFitted(program));

    InPlace longer(longText + L"+x");
    EXPECT_FALSE(isFitted(longer.compilation.program));

    compiled.compile(L"x+y");
    EXPECT_FALSE(isFitted(program));
    EXPECT_EQ(program.slots.capacity(), 64U);
}

TEST(ScalarCode, IsWhatTheGoldenFileHolds)
{
    const std::string path = std::string(PROGRAMS_DIRECTORY) + "/scalar_programs.txt";
    const std::vector<GoldenProgram> programs = readGoldenPrograms(path);
    ASSERT_GE(programs.size(), 20U);
    for (const GoldenProgram& golden : programs)
    {
        SCOPED_TRACE(path + ":" + std::to_string(golden.line) + ": " + golden.text);
        InPlace compiled(std::wstring(golden.text.begin(), golden.text.end()));
        MTParserProgram& program = compiled.compilation.program;
        EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
        EXPECT_EQ(stateAfterRun(program), MTRunState::Scalar);
        EXPECT_EQ(dumpScalarCode(program, compiled.registrar), golden.dump);
    }
}

// One kernel may run several steps.
TEST(ScalarCode, RepeatsFusedItems)
{
    for (const wchar_t* const pair : {L")*y+z", L")+z-y", L"*z)/y", L")-y+z)*y-z)/z-y"})
    {
        for (std::size_t count = 1; count < 7; ++count)
        {
            const std::wstring text = withRepeated(L"x", pair, count);
            const auto nbOpen = static_cast<std::size_t>(std::count(text.begin(), text.end(), L')'));
            InPlace compiled(std::wstring(nbOpen, L'(') + text);
            MTParserProgram& program = compiled.compilation.program;
            const_cast<VALTYPE*>(compiled.factory.values.at(L"y"))->x = 0.7;
            const_cast<VALTYPE*>(compiled.factory.values.at(L"z"))->x = -1.1;
            EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
            const double interpreted = program.getRoot().x;
            EXPECT_EQ(stateAfterRun(program), MTRunState::Scalar);
            EXPECT_EQ(program.getRoot().x, interpreted) << testing::PrintToString(text);
        }
    }
}

// One test case per row of the table in docs/architecture.md.
TEST(RunChoice, FollowsItsTable)
{
    InPlace compiled(L"p/x");
    MTParserProgram& program = compiled.compilation.program;
    VALTYPE& x = *const_cast<VALTYPE*>(compiled.factory.values.at(L"x"));
    const auto isArmed = [&] {
        program.choice.arm(program);
        return program.choice.getArmed() != nullptr;
    };
    EXPECT_EQ(program.choice.getState(), MTRunState::Fresh);
    EXPECT_FALSE(isArmed());
    x.x = 0.0;
    EXPECT_EQ(stateAfterRun(program, false), MTRunState::Fresh);
    x.x = 2.0;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
    EXPECT_FALSE(isArmed());
    EXPECT_EQ(stateAfterRun(program), MTRunState::Scalar);
    EXPECT_TRUE(isArmed());
    program.choice.disarm();
    EXPECT_EQ(program.choice.getArmed(), nullptr);
    x.x = 0.0;
    EXPECT_EQ(stateAfterRun(program, false), MTRunState::Scalar);
    x.x = 2.0;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Scalar);
    x.flag = 1;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
    x.type = 1;
    EXPECT_EQ(stateAfterRun(program, false), MTRunState::Fresh);
    x.type = x.flag = 0;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
    x.flag = 1;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);

    compiled.compile(L"2");
    EXPECT_EQ(program.choice.getState(), MTRunState::Constant);
    EXPECT_EQ(stateAfterRun(program), MTRunState::Constant);
    EXPECT_TRUE(isArmed());
    program.clear();
    EXPECT_EQ(program.choice.getState(), MTRunState::Empty);
    EXPECT_EQ(program.choice.getArmed(), nullptr);
}

// The steps of a constant do not run, even those that would refuse their operands.
TEST(RunChoice, RunsNoStepOfAConstant)
{
    InPlace compiled(L"(p+1,2)");
    EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Constant);
    EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Constant);
    EXPECT_EQ(compiled.compilation.program.getRoot().x, 2.0);
}

// Any number of values may be pending, including values that no step consumes.
TEST(RunChoice, SpillsNumbersThatWait)
{
    std::wstring nested = L"x";
    for (int depth = 0; depth < 40; ++depth)
    {
        nested = L"x*2-(" + nested + L")";
    }
    for (const std::wstring& text : {nested, std::wstring(L"(x+1,y+2)"), std::wstring(L"(x+1,x*y)+y")})
    {
        InPlace compiled(text);
        EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Settled);
        EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Scalar);
    }
}

// The interpreter runs programs that scalar code does not support, even after their inputs change.
TEST(RunChoice, InterpretsLongPrograms)
{
    InPlace compiled(withRepeated(L"x", L"+y", 4097));
    MTParserProgram& program = compiled.compilation.program;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
    EXPECT_EQ(stateAfterRun(program), MTRunState::Interpreted);
    EXPECT_EQ(stateAfterRun(program), MTRunState::Interpreted);
    const_cast<VALTYPE*>(compiled.factory.values.at(L"x"))->flag = 1;
    EXPECT_EQ(stateAfterRun(program), MTRunState::Settled);
}

// The maximum length is smaller in builds without optimisation.
TEST(RunChoice, TakesScalarCodeUpToAGreatestLength)
{
    const auto stateOf = [](std::size_t nbSteps) {
        InPlace compiled(withRepeated(L"x", L"+y", nbSteps));
        stateAfterRun(compiled.compilation.program);
        return stateAfterRun(compiled.compilation.program);
    };
    const std::size_t greatest = stateOf(129) == MTRunState::Scalar ? 4096 : 128;
    EXPECT_EQ(stateOf(greatest), MTRunState::Scalar);
    EXPECT_EQ(stateOf(greatest + 1), MTRunState::Interpreted);
}

// Variables are copied if host code could run, even if no step consumes the copy.
TEST(RunChoice, InterpretsCopiesWithoutAConsumer)
{
    InPlace compiled(L"x");
    compiled.registrar.defineFunction(new TestFunction(L"hostsown"), true);
    for (const auto& [text, state] : {std::pair(L"-((x),y)", MTRunState::Interpreted),
                                      {L"x+y", MTRunState::Scalar},
                                      {L"[x,y,2]*x", MTRunState::Scalar}})
    {
        compiled.compile(text);
        EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Settled);
        EXPECT_EQ(stateAfterRun(compiled.compilation.program), state);
    }
}

// Results of conversions are flagged, and hosts may flag points.
TEST(RunChoice, TakesFlaggedNumbersAndPoints)
{
    InPlace compiled(L"dist(p,q)*x+y");
    for (const wchar_t* name : {L"x", L"p"})
    {
        const_cast<VALTYPE*>(compiled.factory.values.at(name))->flag = 1;
    }
    EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Settled);
    EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Scalar);
}

// Only a host can create kinds other than number and point.
TEST(RunChoice, InterpretsUnknownKinds)
{
    InPlace compiled(L"[x,y,2]");
    const_cast<VALTYPE*>(compiled.factory.values.at(L"x"))->type = 2;
    EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Settled);
    EXPECT_EQ(stateAfterRun(compiled.compilation.program), MTRunState::Interpreted);
}

/// Three tiles, and a row of a fourth one.
const std::size_t rowsOfFourTiles = 3 * baselineTiles.nbRows + 1;

/// Runs a text in tiles, with columns for x, y, p and q.
TileRun runInTiles(const std::wstring& text, std::size_t nbRows = rowsOfFourTiles)
{
    static constexpr std::array<double, 3> row = {2.5, 2.5, 2.5};
    InPlace compiled(text);
    std::vector<MTBoundColumn> columns;
    for (const auto& [name, value] : compiled.factory.values)
    {
        const auto kind = value->type != 0 ? mathexpr::BulkKind::Point : mathexpr::BulkKind::Number;
        if (name != L"z")
        {
            columns.push_back({value, {name.c_str(), row.data(), 0, kind}});
        }
    }
    return runInTiles(compiled.compilation.program, columns, compiled.registrar, nbRows);
}

TEST(TileCode, IsWhatTheGoldenFileHolds)
{
    const std::string path = std::string(PROGRAMS_DIRECTORY) + "/tile_programs.txt";
    const std::vector<GoldenProgram> programs = readGoldenPrograms(path);
    ASSERT_GE(programs.size(), 20U);
    for (const GoldenProgram& golden : programs)
    {
        SCOPED_TRACE(path + ":" + std::to_string(golden.line) + ": " + golden.text);
        EXPECT_EQ(runInTiles(std::wstring(golden.text.begin(), golden.text.end())).steps, golden.dump);
    }
}

TEST(TileCode, ComputesEachTileOnce)
{
    for (const wchar_t* text : {L"x*2+y", L"p*x+q", L"fact(x)", L"sin(x)", L"pow(x,y)", L"dist(p,q)", L"max(x,y,1,2)"})
    {
        EXPECT_EQ(runInTiles(text).nbTiles, 4U) << testing::PrintToString(text);
    }
}

// The rest of the tile is filled with copies of the last row, which no item refuses.
TEST(TileCode, ComputesATileThatIsNotFull)
{
    for (const wchar_t* text : {L"sqrt(x-1)", L"sqrt(abs(p)-1)", L"1/(p*[1,0,0])"})
    {
        EXPECT_EQ(runInTiles(text, 1).nbTiles, 1U) << testing::PrintToString(text);
    }
}

// Without optimisation, each step calls the next one. The value is stored before a pause.
TEST(TileCode, PausesAfterSomeSteps)
{
    std::istringstream steps(runInTiles(withRepeated(L"x", L"+1", 1000)).steps);
    std::vector<std::size_t> lengths = {0};
    for (std::string step; std::getline(steps, step);)
    {
        lengths.back() += 1;
        if (step == "pause")
        {
            lengths.push_back(0);
        }
    }
    EXPECT_EQ(lengths, (std::vector<std::size_t>{130, 130, 130, 130, 130, 130, 130, 105}));
}

TEST(TileCode, UsesPlacesAgainInLongPrograms)
{
    EXPECT_EQ(runInTiles(withRepeated(L"x", L"+fact(y)", 5000)).nbTiles, 4U);
    EXPECT_EQ(runInTiles(withRepeated(L"x", L"*sqrt(y)/x", 5000)).nbTiles, 4U);
    EXPECT_EQ(runInTiles(withRepeated(L"p", L"+q*x", 5000)).nbTiles, 4U);
}

/// Whether a program runs in tiles when a column supplies numbers for x.
bool runsInTiles(const std::wstring& text)
{
    InPlace compiled(text);
    const double number = 0;
    const MTBoundColumn x{compiled.factory.values.at(L"x"), {L"x", &number}};
    return MTTileProgram::build(compiled.compilation.program, {&x, 1}, baselineTiles) != nullptr;
}

TEST(Programs, RunInTilesWhereAllKindsAreTaken)
{
    for (const wchar_t* text : {L"x*2", L"x*y", L"sqrt(x)", L"min(1,x,y)", L"max(y,3,4)*x", L"-(x+1)", L"point(x,1,2)",
                                L"p*x", L"asin(x)", L"asin(x+1)"})
    {
        EXPECT_TRUE(runsInTiles(text)) << testing::PrintToString(text);
    }
    for (const wchar_t* text : {L"x", L"x+p", L"max(p,1,2)+x"})
    {
        EXPECT_FALSE(runsInTiles(text)) << testing::PrintToString(text);
    }
}

TEST(Programs, RunInTilesWhileTheirResultsFindRoom)
{
    const auto waiting = [](std::size_t count) {
        std::wstring text;
        for (std::size_t i = 0; i < count; ++i)
        {
            text += L"sin(x)+(";
        }
        return text + L"1" + std::wstring(count, L')');
    };
    EXPECT_TRUE(runsInTiles(waiting(4000)));
    EXPECT_FALSE(runsInTiles(waiting(4100)));
}

}
