// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DifferentialTests.cpp - runs generated scripts on the library and on the reference, and compares every call.
//
// Every test uses the same texts. The environment sets their number and seed:
//
//     MATHEXPR_DIFFERENTIAL_EXPRESSIONS=1000000 MATHEXPR_DIFFERENTIAL_SEED=7 reference_tests
//
// A failure prints a number N. MATHEXPR_DIFFERENTIAL_EXPRESSIONS=1 MATHEXPR_DIFFERENTIAL_SEED=N repeats it.
#include "EngineSession.h"
#include "ExpressionGenerator.h"
#include "ReferenceEvaluator.h"
#include "Settings.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <set>
#include <sstream>

namespace {

using reference::Outcome;
using reference::Script;
using reference::Step;

constexpr std::size_t expressionsPerScript = 40;
constexpr std::size_t differencesShown = 5;

std::uint64_t nbScripts()
{
    const std::uint64_t wanted = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_EXPRESSIONS", 100000);
    return (wanted + expressionsPerScript - 1) / expressionsPerScript;
}

/// Knows the script's names and the hidden numbers; refuses other names, and throws for one of them.
reference::Host hostOf(const Script& script)
{
    return [&known = script.known](const std::wstring& name, VALTYPE& value) {
        if (name == L"throws")
        {
            throw 1;
        }
        const auto found = known.find(name);
        if (found != known.end())
        {
            value = found->second;
            return true;
        }
        return reference::hiddenNumber(name, value);
    };
}

/// Content of the caller's record before a call: a value that no expression yields, so that any write is detected.
VALTYPE untouched()
{
    VALTYPE value;
    value.type = 1;
    value.flag = 1;
    value.reserved = 0x5A5A;
    value.padding = 0xA5A5A5A5;
    value.x = 12345.678;
    value.y = -9876.5;
    value.z = 0.03125;
    return value;
}

/// Both sides draw the same random numbers from the process's generator.
template <class Subject>
Outcome apply(Subject& subject, const Step& step, std::size_t draw)
{
    std::srand(static_cast<unsigned>(draw));
    Outcome outcome;
    switch (step.kind)
    {
    case Step::Kind::SetExpression:
        return subject.setExpression(step.text);
    case Step::Kind::Evaluate:
        return subject.evaluate(untouched());
    case Step::Kind::DropAssignment:
        subject.dropAssignment();
        return outcome;
    case Step::Kind::ChangeVariable:
        outcome.returned = subject.changeVariable(step.text, step.value);
        return outcome;
    }
    return outcome;
}

std::string shown(const Step& step)
{
    switch (step.kind)
    {
    case Step::Kind::SetExpression:
        return "set      " + reference::printable(step.text);
    case Step::Kind::Evaluate:
        return "evaluate";
    case Step::Kind::DropAssignment:
        return "drop the pending assignment";
    case Step::Kind::ChangeVariable:
        return "change   " + reference::printable(step.text) + " to " + reference::describe(step.value);
    }
    return {};
}

/// The script up to a step, with the reference's results.
std::string history(const Script& script, std::size_t last, bool silent)
{
    std::ostringstream lines;
    reference::Session session(silent, hostOf(script));
    for (std::size_t i = 0; i <= last; ++i)
    {
        const Outcome outcome = apply(session, script.steps[i], i);
        lines << "  " << shown(script.steps[i]) << "  ->  " << reference::describe(outcome) << '\n';
    }
    return lines.str();
}

/// Stops at the first different outcome, since it would affect all later ones.
bool playsTheSame(const Script& script, bool silent)
{
    reference::EngineSession engine(silent, hostOf(script));
    reference::Session session(silent, hostOf(script));
    for (std::size_t i = 0; i < script.steps.size(); ++i)
    {
        const Outcome ofEngine = apply(engine, script.steps[i], i);
        const Outcome ofReference = apply(session, script.steps[i], i);
        if (!reference::sameOutcome(ofEngine, ofReference))
        {
            ADD_FAILURE() << "seed " << script.seed << ", step " << i << ": " << shown(script.steps[i])
                          << "\nlibrary:   " << reference::describe(ofEngine)
                          << "\nreference: " << reference::describe(ofReference) << "\nafter\n"
                          << history(script, i, silent);
            return false;
        }
    }
    return true;
}

void playAll(bool silent, bool hidden)
{
    std::size_t differences = 0;
    for (std::uint64_t i = 0; i < nbScripts() && differences < differencesShown; ++i)
    {
        Script script = reference::makeScript(reference::firstSeed() + i, expressionsPerScript);
        if (hidden)
        {
            script = reference::withHiddenNumbers(std::move(script));
        }
        if (!playsTheSame(script, silent))
        {
            ++differences;
        }
    }
}

TEST(Differential, WithMessages)
{
    playAll(false, false);
}

TEST(Differential, Silent)
{
    playAll(true, false);
}

TEST(Differential, WithMessagesAndHiddenNumbers)
{
    playAll(false, true);
}

TEST(Differential, SilentAndHiddenNumbers)
{
    playAll(true, true);
}

TEST(Differential, Calculator)
{
    static constexpr std::array<std::uint32_t, 6> limits = {2147483647, 0, 1, 5, 100, 4294967295};
    std::size_t differences = 0;
    for (std::uint64_t i = 0; i < nbScripts() && differences < differencesShown; ++i)
    {
        const Script script = reference::makeScript(reference::firstSeed() + i, expressionsPerScript);
        reference::EngineCalculator engine;
        reference::Session session(false);
        std::string texts;
        for (std::size_t step = 0; step < script.steps.size(); ++step)
        {
            if (script.steps[step].kind != Step::Kind::SetExpression)
            {
                continue;
            }
            const std::wstring& text = script.steps[step].text;
            const std::uint32_t limit = limits[(i + step) % limits.size()];
            texts += "  " + reference::printable(text) + '\n';
            std::srand(static_cast<unsigned>(step));
            const Outcome ofEngine = engine.calculate(text, untouched(), limit);
            std::srand(static_cast<unsigned>(step));
            const Outcome ofReference = session.calculate(text, untouched(), limit);
            if (!reference::sameOutcome(ofEngine, ofReference))
            {
                ADD_FAILURE() << "seed " << script.seed << ", limit " << limit
                              << "\nlibrary:   " << reference::describe(ofEngine)
                              << "\nreference: " << reference::describe(ofReference) << "\nafter\n"
                              << texts;
                ++differences;
                break;
            }
        }
    }
}

// The generated texts must reach every error code and every message, and enough of them must succeed.
TEST(Generator, TextsReachEveryOutcome)
{
    std::set<std::uint32_t> codes;
    std::set<std::uint32_t> messages;
    std::size_t texts = 0;
    std::size_t compiled = 0;
    std::size_t points = 0;
    for (std::uint64_t seed = 1; seed <= 500; ++seed)
    {
        for (const bool silent : {false, true})
        {
            const Script script = reference::makeScript(seed, expressionsPerScript);
            reference::Session session(silent, hostOf(script));
            for (std::size_t i = 0; i < script.steps.size(); ++i)
            {
                const Outcome outcome = apply(session, script.steps[i], i);
                const bool set = script.steps[i].kind == Step::Kind::SetExpression;
                texts += set ? 1 : 0;
                compiled += set && outcome.returned ? 1 : 0;
                points += outcome.returned && outcome.value.type == 1 ? 1 : 0;
                messages.insert(outcome.messages.begin(), outcome.messages.end());
                if (outcome.raised && outcome.raised->kind == reference::Raised::Kind::Parsing)
                {
                    codes.insert(outcome.raised->exID);
                }
            }
        }
    }
    const std::set<std::uint32_t> allCodes = {0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 15, 16};
    EXPECT_EQ(codes, allCodes);
    std::set<std::uint32_t> allMessages;
    for (std::uint32_t id = 1; id <= 19; ++id)
    {
        allMessages.insert(id);
    }
    EXPECT_EQ(messages, allMessages);
    EXPECT_GT(compiled, texts * 35 / 100);
    EXPECT_GT(points, texts / 20);
}
}
