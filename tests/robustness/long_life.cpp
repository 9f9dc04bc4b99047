// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// long_life.cpp - uses the library as much as a host does in weeks, and checks that the process does not grow.
//
//     long_life [OBJECTS]
//
// Each object compiles a hundred texts, some of which are refused, and evaluates each compiled text 150 times. The host
// resolves names and throws from some lookups, and allocations fail during one compilation of most objects. 100,000
// objects, the default, make more than 10^9 evaluations. After each tenth of the objects, one row of a table shows the
// counts and the resources of the process. The exit status is 1 if the process has more allocations, descriptors or
// threads than after the first tenth, or clearly more resident memory. A wrong value aborts.
#include "mathexpr/EditorServices.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/MadeValues.h"
#include "tests/support/FailingMemory.h"

#include <mathexpr.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace {

constexpr std::uint64_t usualObjects = 100000;
constexpr std::uint64_t textsPerObject = 100;
constexpr std::uint64_t evaluationsPerText = 150;
constexpr std::size_t bulkRows = 20000;                  // more than one thread's portion
constexpr std::size_t maxGrowth = std::size_t{4} << 20;  // bytes of resident memory, since the heap has gaps

struct Counts
{
    std::uint64_t objects = 0;
    std::uint64_t compilations = 0;
    std::uint64_t evaluations = 0;
    std::uint64_t functionCalls = 0;
    std::uint64_t rows = 0;
    std::uint64_t lookups = 0;
    std::uint64_t exceptions = 0;  // of the host's
    std::uint64_t shortages = 0;   // of memory
};

Counts counts;

void require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

/// A text, and its result for x = 3, y = 4 and z = 5.
struct Task
{
    enum class Outcome : std::uint8_t
    {
        Value,
        RefusedText,
        RefusedEvaluation,
        HostThrows,
    };

    Task(std::string_view given, double expected) : Task(given, Outcome::Value) { value = expected; }
    Task(std::string_view given, Outcome expected) : text(given), wide(given.begin(), given.end()), outcome(expected) {}

    std::string text;
    std::wstring wide;
    Outcome outcome;
    double value = 0.0;
};

const std::array<Task, 14>& tasks()
{
    using Outcome = Task::Outcome;
    static const std::array<Task, 14> all{
        Task("(x+y)*z-x/y", 34.25),
        Task("sqrt(x*x+y*y)", 5.0),
        Task("dist([x,y,0],[0,0,0])", 5.0),
        Task("kept=x*2+1", 7.0),
        Task("unknown+1", Outcome::RefusedText),
        Task("max(x,y,z,2)+min(x,y,1)", 6.0),
        Task("[x,y,z]+[1,1,1]", 4.0),
        Task("(x+[y,", Outcome::RefusedText),
        Task("m2mm(x)/1000", 3.0),
        Task("1/(x-3)", Outcome::RefusedEvaluation),
        Task("((((((x))))))-1.5e+1", -12.0),
        Task("throws*2", Outcome::HostThrows),
        Task("(x>y)|(y>x)", 1.0),
        Task("avg(x,y,z)+pow(x,2)+abs(-y)", 17.0),
    };
    return all;
}

struct HostException
{};

bool answer(std::string_view name, double& x)
{
    ++counts.lookups;
    if (name == "throws")
    {
        ++counts.exceptions;
        throw HostException();
    }
    constexpr std::string_view names = "xyz";
    const std::size_t index = name.size() == 1 ? names.find(name[0]) : std::string_view::npos;
    x = 3.0 + static_cast<double>(index);
    return index != std::string_view::npos;
}

class Host final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        const std::wstring_view wide = name;
        std::array<char, 8> narrow{};  // long enough for every known name
        std::transform(wide.begin(), wide.begin() + static_cast<std::ptrdiff_t>(std::min(wide.size(), narrow.size())),
                       narrow.begin(), [](wchar_t character) { return static_cast<char>(character); });
        return answer({narrow.data(), std::min(wide.size(), narrow.size())}, value.x);
    }
};

/// A MathExpression.
class WideObject
{
public:
    /// @throws std::bad_alloc
    bool compile(const Task& task)
    {
        try
        {
            return expression.setExpression(task.wide.c_str());
        }
        catch (const mathexpr::ParsingException&)
        {
            return false;
        }
        catch (const HostException&)
        {
            return false;
        }
    }

    bool evaluate(double& x)
    {
        VALTYPE value;
        const bool hasValue = expression.evaluate(value);
        x = value.x;
        return hasValue;
    }

    /// Makes the next compilation look the names up again.
    void forgetNames()
    {
        for (const wchar_t* const name : {L"x", L"y", L"z"})
        {
            mathexpr::removeVariable(expression, name);
        }
        mathexpr::dropAssignment(expression);
    }

    /// Calls editor services.
    void finish() const
    {
        require(!mathexpr::getCompletions(expression, L"1+sq", 4).empty());
        require(mathexpr::diagnoseText(expression, L"1+").state == mathexpr::TypingState::Unfinished);
        require(mathexpr::getFixes(expression, L"1+2pi").size() == 1);
        require(mathexpr::formatText(expression, L"1+2") == L"1 + 2");
    }

private:
    Host host;
    MathExpression expression{true, &host};
};

/// A handle of the C interface; also calls a bound function and evaluates rows.
class CObject
{
public:
    CObject()
    {
        mathexpr_options_utf8 options{};
        options.size = sizeof(options);
        options.lookup = [](void*, const char* name, std::size_t length, mathexpr_value* value) -> std::int32_t {
            return answer({name, length}, value->x) ? MATHEXPR_LOOKUP_FOUND : MATHEXPR_LOOKUP_NOT_KNOWN;
        };
        require(mathexpr_create_utf8(&options, &expression) == MATHEXPR_OK);
    }
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    ~CObject() { require(mathexpr_destroy(expression) == MATHEXPR_OK); }

    bool compile(const Task& task)
    {
        const mathexpr_status status = mathexpr_set_expression_utf8(expression, task.text.data(), task.text.size());
        if (status == MATHEXPR_OUT_OF_MEMORY)
        {
            throw std::bad_alloc();
        }
        require((status == MATHEXPR_HOST_CALLBACK_THREW) == (task.outcome == Task::Outcome::HostThrows));
        return status == MATHEXPR_OK;
    }

    bool evaluate(double& x)
    {
        mathexpr_value value{};
        const mathexpr_status status = mathexpr_evaluate(expression, &value);
        x = value.x;
        return status == MATHEXPR_OK;
    }

    void forgetNames()
    {
        for (const char* const name : {"x", "y", "z"})
        {
            mathexpr_remove_variable_utf8(expression, name, 1);
        }
        require(mathexpr_drop_assignment(expression) == MATHEXPR_OK);
    }

    void finish()
    {
        callFunction();
        if (counts.objects % 10 == 1)  // odd, as all objects of this kind
        {
            evaluateRows();
        }
    }

private:
    void callFunction()
    {
        const mathexpr_value zero{};
        require(mathexpr_set_variable_utf8(expression, "u", 1, &zero, nullptr) == MATHEXPR_OK);
        constexpr std::array<const char*, 1> arguments{"u"};
        mathexpr_function* function = nullptr;
        mathexpr_function* copy = nullptr;
        require(mathexpr_create_function_utf8(expression, "u*2+1", 5, arguments.data(), 1, &function) == MATHEXPR_OK);
        require(mathexpr_copy_function(function, &copy) == MATHEXPR_OK);
        for (std::uint64_t call = 0; call < evaluationsPerText; ++call)
        {
            const auto argument = static_cast<double>(call);
            double result = 0.0;
            require(mathexpr_call_function(call % 2 == 0 ? function : copy, &argument, &result) == MATHEXPR_OK);
            require(result == argument * 2.0 + 1.0);
        }
        counts.functionCalls += evaluationsPerText;
        require(mathexpr_destroy_function(function) == MATHEXPR_OK);
        require(mathexpr_destroy_function(copy) == MATHEXPR_OK);
    }

    void evaluateRows()
    {
        const std::vector<double> arguments(bulkRows, 4.0);
        std::vector<double> values(bulkRows, 0.0);
        mathexpr_column_utf8 column{};
        column.size = sizeof(column);
        column.name = "u";
        column.name_length = 1;
        column.data = arguments.data();
        column.stride = sizeof(double);
        mathexpr_results results{};
        results.size = sizeof(results);
        results.data = values.data();
        results.stride = sizeof(double);
        require(mathexpr_set_expression_utf8(expression, "sqrt(u)+u", MATHEXPR_ZERO_TERMINATED) == MATHEXPR_OK);
        require(mathexpr_evaluate_bulk_utf8(expression, &column, 1, bulkRows, &results, 2, nullptr) == MATHEXPR_OK);
        require(std::count(values.begin(), values.end(), 6.0) == static_cast<std::ptrdiff_t>(bulkRows));
        counts.rows += bulkRows;
    }

    mathexpr_expression* expression = nullptr;
};

/// Compiles while all allocations fail from a given one on. If that fails, compiles again with enough memory.
template <class Object>
bool compileShortOfMemory(Object& object, const Task& task, std::size_t failing)
{
    bool isOutOfMemory = false;
    bool isCompiled = false;
    {
        const memory::Shortage shortage(failing, memory::Failing::FromThenOn);
        try
        {
            isCompiled = object.compile(task);
        }
        catch (const std::bad_alloc&)
        {
            isOutOfMemory = true;
        }
    }
    ++counts.compilations;
    if (!isOutOfMemory)
    {
        return isCompiled;
    }
    ++counts.shortages;
    object.forgetNames();
    return object.compile(task);
}

template <class Object>
void live()
{
    Object object;
    for (std::uint64_t text = 0; text < textsPerObject; ++text)
    {
        const Task& task = tasks()[(counts.objects + text) % tasks().size()];
        // The host needs memory, too, to throw its exception.
        const bool isShort = text == counts.objects % textsPerObject && task.outcome == Task::Outcome::Value;
        const bool isCompiled = isShort ? compileShortOfMemory(object, task, 1 + counts.objects / textsPerObject % 20)
                                        : object.compile(task);
        ++counts.compilations;
        require(isCompiled ==
                (task.outcome == Task::Outcome::Value || task.outcome == Task::Outcome::RefusedEvaluation));
        for (std::uint64_t evaluation = 0; isCompiled && evaluation < evaluationsPerText; ++evaluation)
        {
            double x = 0.0;
            require(object.evaluate(x) == (task.outcome == Task::Outcome::Value));
            require(task.outcome != Task::Outcome::Value || x == task.value);
            ++counts.evaluations;
        }
        object.forgetNames();
    }
    object.finish();
}

void liveOnce()
{
    if (counts.objects % 2 == 0)
    {
        live<WideObject>();
    }
    else
    {
        live<CObject>();
    }
    ++counts.objects;
}

struct Holdings
{
    std::size_t allocations;
    std::size_t residentBytes;
    std::size_t descriptors;
    std::size_t threads;
};

std::size_t entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

Holdings holdings()
{
    std::size_t residentPages = 0;
    {
        std::ifstream statistics("/proc/self/statm");
        statistics >> residentPages >> residentPages;  // the second of its numbers
    }
    return {memory::aliveCount(), residentPages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)),
            entriesOf("/proc/self/fd"), entriesOf("/proc/self/task")};
}

void print(const Holdings& held)
{
    std::printf("| %llu | %llu | %llu | %llu | %llu | %llu | %zu | %zu | %zu | %zu |\n",
                static_cast<unsigned long long>(counts.objects), static_cast<unsigned long long>(counts.compilations),
                static_cast<unsigned long long>(counts.evaluations), static_cast<unsigned long long>(counts.lookups),
                static_cast<unsigned long long>(counts.exceptions), static_cast<unsigned long long>(counts.shortages),
                held.allocations, held.residentBytes / 1024, held.descriptors, held.threads);
    std::fflush(stdout);
}

}

int main(int argumentCount, char** arguments)
{
    const std::uint64_t objects = argumentCount > 1 ? std::strtoull(arguments[1], nullptr, 10) : usualObjects;
    require(objects >= 10);
    std::printf(
        "| Objects | Compilations | Evaluations | Lookups | Exceptions | Shortages | Allocations | Resident KiB | "
        "Descriptors | Threads |\n|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    // A library that checks handles keeps the memory of the last destroyed ones.
    for (int handle = 0; handle < 1000; ++handle)
    {
        const CObject object;
    }
    std::optional<Holdings> early;
    for (std::uint64_t tenth = 1; tenth <= 10; ++tenth)
    {
        while (counts.objects < objects * tenth / 10)
        {
            liveOnce();
        }
        const Holdings held = holdings();
        print(held);
        early = early.value_or(held);
        if (held.allocations != early->allocations || held.descriptors != early->descriptors ||
            held.threads != early->threads || held.residentBytes > early->residentBytes + maxGrowth)
        {
            std::printf("The process holds more than after the first tenth.\n");
            return 1;
        }
    }
    std::printf("%llu calls of functions, %llu rows\n", static_cast<unsigned long long>(counts.functionCalls),
                static_cast<unsigned long long>(counts.rows));
    return 0;
}
