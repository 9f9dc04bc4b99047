// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Runner.cpp - see Runner.h. A path runs its steps in order, and stops at the first difference.
#include "tests/language/Runner.h"

#include "mathexpr/CMathExpr.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/language/Hiding.h"
#include "tests/language/RecordingService.h"
#include "tests/language/VariableAccess.h"
#include "tests/support/MessageRecorder.h"

#include <cstring>
#include <sstream>

namespace {

/// A value that no evaluation writes, so that an unchanged result is detected.
constexpr VALTYPE untouched{0xA5, 0x5A, 0xA55A, 0xA5A5A5A5, -12345.678, 1e-300, 1e300};

bool sameBytes(const VALTYPE& a, const VALTYPE& b)
{
    return std::memcmp(&a, &b, sizeof(VALTYPE)) == 0;
}

std::string narrow(const std::wstring& text)
{
    std::string narrowed;
    for (const wchar_t character : text)
    {
        narrowed.push_back(character >= L' ' && character < 127 ? static_cast<char>(character) : '?');
    }
    return narrowed;
}

std::string describe(const ExpectedRecord& record)
{
    std::ostringstream text;
    text << (record.kind == ExpectedRecord::Kind::Parsing ? "parsing " : "definition ") << record.exID
         << " pos=" << record.pos << " item=" << narrow(record.itemName) << " nbArgs=" << record.nbArgs
         << " conflict=" << narrow(record.conflictItemName) << " entries=" << record.entries;
    return text.str();
}

/// The effects of a call on an object.
struct Observed
{
    Stage stage = Stage::Compile;
    bool ok = false;
    VALTYPE value = untouched;
    std::vector<std::uint32_t> messages;
    std::optional<ExpectedRecord> raised;
    std::string misplaced;  // an exception's field that must not be set, or an unexpected file
};

std::string describe(const Observed& observed)
{
    std::ostringstream text;
    text << (observed.stage == Stage::Compile ? "compile: " : "evaluate: ");
    if (observed.raised)
    {
        text << "raised " << describe(*observed.raised);
    }
    else
    {
        text << (observed.ok ? describe(observed.value) : "false");
    }
    text << ", messages";
    for (const std::uint32_t id : observed.messages)
    {
        text << ' ' << id;
    }
    text << (observed.messages.empty() ? " none" : "") << observed.misplaced;
    if (!observed.ok && !sameBytes(observed.value, untouched))
    {
        text << ", the result was written";
    }
    return text.str();
}

template <class Data>
std::string misplacedIn(const MTExceptions<Data>& exception, const wchar_t* file)
{
    std::string misplaced;
    for (const auto& entry : exception.entries)
    {
        if (entry.line == 0 || entry.reserved != 0)
        {
            misplaced = ", an entry without a line or with a second number";
        }
    }
    if (exception.entries.front().file != file)
    {
        misplaced += ", file " + narrow(exception.entries.front().file);
    }
    return misplaced;
}

/// Makes a call, and records its outcome.
template <class Call>
Observed observe(Stage stage, MessageRecorder& recorder, Call call)
{
    Observed observed;
    observed.stage = stage;
    try
    {
        observed.ok = call(observed.value);
    }
    catch (const mathexpr::ParsingException& exception)
    {
        const SMTParsingExcepData& data = exception.entries.front().data;
        observed.raised =
            ExpectedRecord{ExpectedRecord::Kind::Parsing, data.exID, data.pos, data.nbArgs, data.itemName, {},
                           exception.entries.size()};
        observed.misplaced =
            misplacedIn(exception, data.exID == mathexpr::ParsingError::ArgumentKind ? L"MTParserLib/MTParserDefFuncs"
                                                                                     : L"MTParserLib/MTParserCompiler");
        if (data.reserved != 0 || !data.reservedName.empty())
        {
            observed.misplaced += ", a reserved field is set";
        }
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        const SMTDefExcepData& data = exception.entries.front().data;
        observed.raised =
            ExpectedRecord{ExpectedRecord::Kind::Definition, data.exID, 0, 0, data.itemName, data.conflictItemName,
                           exception.entries.size()};
        observed.misplaced = misplacedIn(exception, L"MTParserLib/MTParserCompiler");
    }
    observed.messages = recorder.take();
    return observed;
}

/// A path through the library.
struct Path
{
    std::string name;
    bool silent = false;
    bool reused = false;
    std::optional<Hidden> hiding;
};

bool valueFits(const Outcome& outcome, const VALTYPE& value)
{
    if (const auto* const range = std::get_if<ExpectedRange>(&outcome.expected))
    {
        ExpectedValue number;
        number.record.x = value.x;
        return value.x >= range->least && value.x <= range->greatest && matches(number, value);
    }
    return matches(std::get<ExpectedValue>(outcome.expected), value);
}

bool fits(const Outcome& outcome, const Observed& observed, bool silent, bool anyStage)
{
    if (!observed.misplaced.empty())
    {
        return false;
    }
    const auto* const failure = std::get_if<ExpectedFailure>(&outcome.expected);
    if (failure == nullptr)
    {
        return observed.ok && observed.messages.empty() && valueFits(outcome, observed.value);
    }
    if (observed.ok || !sameBytes(observed.value, untouched) || (!anyStage && observed.stage != failure->stage))
    {
        return false;
    }
    std::vector<std::uint32_t> messages;
    if (failure->message && (!silent || failure->messageAlways))
    {
        messages.push_back(*failure->message);
    }
    const bool raises = failure->record && (silent || failure->raisedAlways);
    return observed.messages == messages && observed.raised == (raises ? failure->record : std::nullopt);
}

/// Runs the steps of a row on one object, and records the first difference.
class PathRun
{
public:
    PathRun(const Row& row, const Path& path, RowReport& report) : row(row), path(path), report(report) {}

    /// @return whether the host supplied a name
    bool throughMathExpression()
    {
        ++report.nbPaths;
        Bindings host = row.host;
        std::vector<std::wstring> texts;
        for (const Step& step : row.steps)
        {
            texts.push_back(path.hiding ? hideOperands(step.text, *path.hiding, host) : step.text);
        }
        RecordingService service(host);
        MathExpression expression(path.silent, &service);
        if (path.reused)
        {
            useBefore(expression);
            service.takeAsked();
            recorder.take();
        }
        for (std::size_t i = 0; i < row.steps.size(); ++i)
        {
            const Step& step = row.steps[i];
            if (step.kind == Step::Kind::DropAssignment)
            {
                mathexpr::dropAssignment(expression);
            }
            else if (!runStep(step, texts[i], expression, service))
            {
                return service.hasAnswered();
            }
        }
        checkTexts();
        return service.hasAnswered();
    }

    void throughCMathExpr()
    {
        ++report.nbPaths;
        CMathExpr calculator;
        if (path.reused)
        {
            useBefore(calculator);
            recorder.take();
        }
        std::uint32_t limit = row.limit.value_or(2147483647);
        for (const Step& step : row.steps)
        {
            switch (step.kind)
            {
            case Step::Kind::DropAssignment:
                mathexpr::dropAssignment(mathexpr::expressionOf(calculator));
                break;
            case Step::Kind::Limit:
                limit = step.limit;
                break;
            case Step::Kind::Expression: {
                const Observed observed = observe(Stage::Evaluate, recorder, [&](VALTYPE& result) {
                    return calculator.Calculate(step.text.c_str(), result, limit);
                });
                if (!fits(step.written.front(), observed, false, true))
                {
                    fail(step.text, step.written.front().source, describe(observed));
                    return;
                }
                break;
            }
            }
        }
        checkTexts();
    }

private:
    bool runStep(const Step& step, const std::wstring& text, MathExpression& expression, RecordingService& service)
    {
        const std::vector<Outcome>& outcomes = path.hiding ? *step.hidden : step.written;
        const bool anyStage = path.hiding.has_value();
        const Observed compiled =
            observe(Stage::Compile, recorder, [&](VALTYPE&) { return expression.setExpression(text.c_str()); });
        if (const auto asked = service.takeAsked(); step.asked && !path.hiding && asked != *step.asked)
        {
            std::string names;
            for (const std::wstring& name : asked)
            {
                names += ' ' + narrow(name);
            }
            fail(text, "the names asked for", "asked" + (names.empty() ? " nothing" : names));
            return false;
        }
        if (!compiled.ok)
        {
            if (!fits(outcomes.front(), compiled, path.silent, anyStage))
            {
                fail(text, outcomes.front().source, describe(compiled));
                return false;
            }
            return staysEmpty(text, expression);
        }
        if (!compiled.messages.empty())
        {
            fail(text, "compile without a message", describe(compiled));
            return false;
        }
        const std::size_t nbEvaluations = outcomes.size() == 1 ? 2 : outcomes.size();
        for (std::size_t i = 0; i < nbEvaluations; ++i)
        {
            const Outcome& outcome = outcomes[outcomes.size() == 1 ? 0 : i];
            for (const auto& [name, value] : outcome.changes)
            {
                setVariable(expression, name, value.value_or(VALTYPE{}));
            }
            const Observed observed =
                observe(Stage::Evaluate, recorder, [&](VALTYPE& result) { return expression.evaluate(result); });
            if (!fits(outcome, observed, path.silent, anyStage))
            {
                fail(text, outcome.source + " at evaluation " + std::to_string(i + 1), describe(observed));
                return false;
            }
        }
        return true;
    }

    /// After a failed compilation, evaluation must return false and change nothing.
    bool staysEmpty(const std::wstring& text, MathExpression& expression)
    {
        const Observed observed =
            observe(Stage::Evaluate, recorder, [&](VALTYPE& result) { return expression.evaluate(result); });
        if (observed.ok || observed.raised || !observed.messages.empty() || !sameBytes(observed.value, untouched))
        {
            fail(text, "nothing to evaluate after a failed compile", describe(observed));
            return false;
        }
        return true;
    }

    /// Leaves state of every kind; it must not affect later texts.
    void useBefore(MathExpression& expression)
    {
        for (const wchar_t* const text : {L"[1,2,3]*7+[4,5,6]", L"1+2*(3", L"1/0", L"sin(30)+rand(0,1)", L"((2+3)*4,"})
        {
            observe(Stage::Evaluate, recorder,
                    [&](VALTYPE& result) { return expression.setExpression(text) && expression.evaluate(result); });
        }
    }

    void useBefore(CMathExpr& calculator)
    {
        for (const wchar_t* const text : {L"[1,2,3]*7+[4,5,6]", L"1+2*(3", L"1/0", L"sin(30)+rand(0,1)", L"((2+3)*4,"})
        {
            observe(Stage::Evaluate, recorder,
                    [&](VALTYPE& result) { return calculator.Calculate(text, result, 2147483647); });
        }
    }

    void checkTexts()
    {
        if (!recorder.allHadText())
        {
            fail(L"", "a text with every message", "a message without one");
        }
    }

    void fail(const std::wstring& text, const std::string& expected, const std::string& got)
    {
        report.failures.push_back("path: " + path.name + "\n  text: " + narrow(text) + "\n  expected: " + expected +
                                  "\n  got: " + got);
    }

    const Row& row;
    const Path& path;
    RowReport& report;
    MessageRecorder recorder;
};

bool holdsKind(const Row& row, Step::Kind kind)
{
    for (const Step& step : row.steps)
    {
        if (step.kind == kind)
        {
            return true;
        }
    }
    return false;
}

/// Whether CMathExpr can show everything that the row expects: it compiles again at every call.
bool suitsOneShot(const Row& row)
{
    for (const Step& step : row.steps)
    {
        if (step.written.size() > 1 || (step.written.size() == 1 && !step.written.front().changes.empty()))
        {
            return false;
        }
    }
    return true;
}

bool canHide(const Row& row, Hidden what)
{
    Bindings made;
    for (const Step& step : row.steps)
    {
        if (step.kind == Step::Kind::Expression && !step.hidden)
        {
            return false;
        }
        hideOperands(step.text, what, made);
    }
    return !made.empty();
}

}

RowReport runRow(const Row& row)
{
    RowReport report;
    const bool oneShotOnly = row.limit || holdsKind(row, Step::Kind::Limit);
    bool hostAnswered = false;
    if (!oneShotOnly)
    {
        for (const bool silent : {false, true})
        {
            for (const bool reused : {false, true})
            {
                const std::string mode = std::string(silent ? "silent" : "messages") + (reused ? ", used object" : "");
                const Path written{"as written, " + mode, silent, reused, std::nullopt};
                hostAnswered = PathRun(row, written, report).throughMathExpression() || hostAnswered;
                if (canHide(row, Hidden::Numbers))
                {
                    const Path path{"numbers hidden, " + mode, silent, reused, Hidden::Numbers};
                    PathRun(row, path, report).throughMathExpression();
                }
                if (canHide(row, Hidden::Points))
                {
                    const Path path{"points hidden, " + mode, silent, reused, Hidden::Points};
                    PathRun(row, path, report).throughMathExpression();
                }
            }
        }
    }
    if (!hostAnswered && suitsOneShot(row))
    {
        for (const bool reused : {false, true})
        {
            const Path path{std::string("CMathExpr") + (reused ? ", used object" : ""), false, reused, std::nullopt};
            PathRun(row, path, report).throughCMathExpr();
        }
    }
    return report;
}
