// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionTests.cpp - the prompt's completions, compared with what the library accepts.
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/MadeValues.h"
#include "tools/calc/answer/HostNames.h"
#include "tools/calc/prompt/PromptCompletion.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/vocabulary/VocabularyItems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

/// A session with a number, a point, and a number that many items refuse. Its host offers a number, a point, and a name
/// that no text can contain.
class EditedSession
{
public:
    EditedSession() : expression(true, &host)
    {
        define(expression);
        host.define(L"depth", number(1));
        host.define(L"corner", point(1, 2, 3));
        host.define(L"a b", number(1));
        mathexpr::setNameSource(expression, &host);
    }

    static void define(MathExpression& object)
    {
        mathexpr::setVariable(object, L"width", number(2));
        mathexpr::setVariable(object, L"place", point(1, 2, 3));
        mathexpr::setVariable(object, L"nothing", number(0));
        mathexpr::setVariable(object, L"\x5e45", number(3));
    }

    Completion completion(const std::string& before, const std::string& behind) const
    {
        return complete(expression, &host, before, behind);
    }

private:
    HostNames host;
    MathExpression expression;
};

Completion completionAt(const std::string& before, const std::string& behind = {})
{
    static const EditedSession session;
    return session.completion(before, behind);
}

Words offered(const std::string& before, const std::string& behind = {})
{
    return completionAt(before, behind).candidates;
}

bool offers(const std::string& before, const std::string& word)
{
    const Words words = offered(before);
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Whether the library accepts the text, ignoring values outside an item's domain.
bool isAccepted(const std::string& text)
{
    MathExpression object(true, nullptr);
    VALTYPE value;
    for (const char* definition : {"width=2", "place=[1,2,3]", "nothing=0"})
    {
        object.setExpression(toWide(definition)->c_str());
        object.evaluate(value);
    }
    try
    {
        return object.setExpression(toWide(text)->c_str()) && object.evaluate(value);
    }
    catch (const mathexpr::ParsingException&)
    {
        return false;
    }
}

/// A call of the function for each of its overloads.
Words callsOf(const std::string& symbol)
{
    Words calls;
    const bool takesPoints = std::set<std::string>{"dist", "nor", "vec", "vec1", "ill"}.contains(symbol);
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        if (item.kind != mathexpr::VocabularyKind::Function || toUtf8(item.symbol) != symbol)
        {
            continue;
        }
        const std::uint32_t nbArgs = item.nbArgs == NB_ARGS_UNDEFINED ? 2 : item.nbArgs;
        const Words points = {"[0,0]", "[2,2]", "[0,2]", "[2,0]"};
        std::string call = symbol + '(';
        for (std::uint32_t index = 0; index < nbArgs; ++index)
        {
            call +=
                (index == 0 ? "" : ",") + (takesPoints ? points[index] : std::string(symbol == "fact" ? "3" : "0.5"));
        }
        calls.push_back(call + ')');
    }
    return calls;
}

}

TEST(Completion, OffersVariablesConstantsAndFunctionsWithTheirBracket)
{
    EXPECT_EQ(offered("wi"), Words{"width"});
    EXPECT_EQ(offered("sq"), (Words{"sqr(", "sqrt("}));
    EXPECT_EQ(offered("2*p"), (Words{"pi", "pow(", "place", "point("}));
    EXPECT_EQ(offered("\xE5\xB9\x85"), Words{"\xE5\xB9\x85"});
    EXPECT_EQ(completionAt("2*wid").replacedBefore, 3U);
    EXPECT_EQ(completionAt("2*\xE5\xB9\x85").replacedBefore, 3U);
}

TEST(Completion, TakesTheCaseOfLettersLightlyOnlyWhereNothingBeginsSo)
{
    EXPECT_EQ(offered("SQ"), (Words{"sqr(", "sqrt("}));
    EXPECT_EQ(offered("WID"), Words{"width"});
    EXPECT_EQ(offered("P"), Words{"PI"});
}

TEST(Completion, OffersNothingInsideANumberOrBehindAValue)
{
    for (const char* before :
         {"2", "1.5", "1.5e", "2s", "2 s", "width s", "(1)s", "[1,2]", "[1,2] s", "place s", "2.s"})
    {
        EXPECT_EQ(offered(before), Words()) << before;
    }
}

TEST(Completion, OffersNothingBehindAMistake)
{
    for (const char* before : {"unknown+s", "1+*s", ")s", "sin(1,s", "1,s", "2=s", "pi=s", "dist(1,s", "rand()+s",
                               "sin(place)+s", "foo(s", "\x01s"})
    {
        EXPECT_EQ(offered(before), Words()) << before;
    }
}

TEST(Completion, OffersWhatCanFollowAnAssignment)
{
    EXPECT_TRUE(offers("a=wi", "width"));
    EXPECT_TRUE(offers("width=p", "place"));
    EXPECT_TRUE(offers("a=b=p", "place"));
    EXPECT_TRUE(offers("b = 2e+wi", "width"));  // "2e+" is a power of ten
}

TEST(Completion, OffersPointsWherePointsAreNeededAndNumbersWhereNumbersAre)
{
    EXPECT_EQ(offered("dist(p"), (Words{"place", "point("}));
    EXPECT_EQ(offered("dist([0,0],v"), (Words{"vec(", "vec1("}));
    EXPECT_FALSE(offers("dist(wi", "width"));
    EXPECT_FALSE(offers("sin(p", "place"));
    EXPECT_FALSE(offers("sin(v", "vec("));
    EXPECT_TRUE(offers("sin(p", "pi"));
    EXPECT_FALSE(offers("1+p", "place"));
    EXPECT_TRUE(offers("2*p", "place"));
    EXPECT_EQ(offered("[1,2]+p"), (Words{"place", "point("}));
}

TEST(Completion, OffersAVariableWhoseValueAloneWouldBeRefused)
{
    EXPECT_TRUE(offers("1/no", "nothing"));
    EXPECT_TRUE(offers("sqrt(no", "nothing"));
    EXPECT_TRUE(offers("log(1-wi", "width"));
}

TEST(Completion, HeedsWhatFollowsTheCursor)
{
    EXPECT_EQ(offered("sin", "(30)"), (Words{"sin", "sinh"}));
    EXPECT_EQ(offered("wi", "(30)"), Words());
    EXPECT_EQ(offered("p", " [1,2]"), (Words{"pow(", "point("}));
    EXPECT_EQ(offered("wi", "xyz"), Words{"width"});
    EXPECT_EQ(completionAt("2*wi", "xyz+1").replacedBefore, 2U);
    EXPECT_EQ(completionAt("2*wi", "xyz+1").replacedBehind, 3U);
    EXPECT_EQ(completionAt("2*wi", "\xC3\xA9+1").replacedBehind, 2U);
    EXPECT_EQ(offered("wi", " x"), Words());
    EXPECT_EQ(offered("wi", "+1)"), Words{"width"});
}

TEST(Completion, OffersNamesOfTheHostsByTheirKind)
{
    EXPECT_EQ(offered("dist(c"), Words{"corner"});
    EXPECT_EQ(offered("sin(de"), Words{"depth"});
    EXPECT_FALSE(offers("sin(c", "corner"));
}

TEST(Completion, OffersWhatHasToDoWithTheWordWhereNothingBeginsSo)
{
    EXPECT_EQ(offered("arcs"), Words{"asin("});
    EXPECT_EQ(offered("2*hyp"), (Words{"sinh(", "cosh(", "tanh("}));
    EXPECT_TRUE(offers("milli", "i2mm("));
    EXPECT_TRUE(offers("milli", "mm2i("));
}

TEST(Completion, OmitsFunctionsThatCannotBeCalledAndNamesThatCannotBeWritten)
{
    EXPECT_EQ(offered("ran"), Words{"rand("});
    EXPECT_FALSE(offers("a", "a b"));
}

TEST(Completion, HeedsTheLimitForWholeNumbers)
{
    CMathExpr calculator;
    EditedSession::define(mathexpr::expressionOf(calculator));
    VALTYPE value;
    calculator.Calculate(L"1", value, 9);
    EXPECT_EQ(complete(mathexpr::expressionOf(calculator), nullptr, "9+wi", "").candidates, Words{"width"});
    EXPECT_EQ(complete(mathexpr::expressionOf(calculator), nullptr, "10+wi", "").candidates, Words());
}

// For every function and position: it is offered if and only if it is accepted.
TEST(Completion, OffersAFunctionWhereTheLibraryAcceptsACallOfIt)
{
    struct Place
    {
        std::string before;
        std::string after;
    };
    const Place places[] = {{"", ""},        {"2*", ""},      {"1+", ""},
                            {"[1,2]+", ""},  {"sin(", ")"},   {"dist([0,0],", ")"},
                            {"min(", ",2)"}, {"min(1,", ")"}, {"max(1,2,3,", ")"},
                            {"[1,", "]"},    {"-", ""},       {"a=", ""},
                            {"2^", ""},      {"(1+", ")*2"},  {"ill([0,0],[2,2],", ",[2,0])"}};
    std::set<std::string> symbols;
    for (const mathexpr::VocabularyItem& item : vocabularyItems())
    {
        if (item.kind == mathexpr::VocabularyKind::Function)
        {
            symbols.insert(toUtf8(item.symbol));
        }
    }
    ASSERT_GT(symbols.size(), 240U);
    for (const Place& place : places)
    {
        const Words words = offered(place.before);
        for (const std::string& symbol : symbols)
        {
            const bool isOffered = std::find(words.begin(), words.end(), symbol + '(') != words.end();
            const Words calls = callsOf(symbol);
            const bool works = std::any_of(calls.begin(), calls.end(), [&](const std::string& call) {
                return isAccepted(place.before + call + place.after);
            });
            EXPECT_EQ(isOffered, works) << place.before << symbol << "( " << place.after;
        }
    }
}

TEST(Completion, OffersCommandsAndTheirArguments)
{
    EXPECT_EQ(offered(":"), (Words{":help", ":find", ":vars", ":list", ":load", ":save", ":digits", ":set", ":quit"}));
    EXPECT_EQ(offered(" :l"), (Words{":list", ":load"}));
    EXPECT_EQ(offered(":help di"), Words{"dist"});
    EXPECT_EQ(offered(":help wi"), Words{"width"});
    EXPECT_EQ(offered(":help :q"), Words{":quit"});
    EXPECT_EQ(offered(":list a"), (Words{"angle", "area"}));
    EXPECT_EQ(offered(":vars w"), Words());
    EXPECT_EQ(offered(":nonsense w"), Words());
    EXPECT_EQ(completionAt(":list ar").replacedBefore, 2U);
}

TEST(Completion, OffersFilesAndFoldersToLoad)
{
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "completion_files";
    std::filesystem::create_directories(folder / "further");
    std::ofstream(folder / "first.txt") << "1\n";
    std::ofstream(folder / ".hidden") << "1\n";
    const std::string start = folder.string() + '/';
    EXPECT_EQ(offered(":load " + start), (Words{start + "first.txt", start + "further/"}));
    EXPECT_EQ(offered(":load " + start + "fi"), Words{start + "first.txt"});
    EXPECT_EQ(offered(":load " + start + ".h"), Words{start + ".hidden"});
    EXPECT_EQ(offered(":load " + start + "missing/"), Words());
    std::filesystem::remove_all(folder);
}

TEST(CommonBeginning, IsThatOfAllAndEndsBetweenCharacters)
{
    EXPECT_EQ(commonBeginning({}), "");
    EXPECT_EQ(commonBeginning({"sin("}), "sin(");
    EXPECT_EQ(commonBeginning({"sin(", "sinh("}), "sin");
    EXPECT_EQ(commonBeginning({"x\xC3\xA9", "x\xC3\xA8"}), "x");
    EXPECT_EQ(commonBeginning({"a", "b"}), "");
}
