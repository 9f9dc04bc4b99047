// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Function.cpp - implements the functions of mathexpr.h: programs with positional arguments.
//
// A function and its copies share an expression object, which never changes after it has compiled the text. Each copy
// runs the program with its own slots and arguments.
#include "MTParserLib/names/MTNameIndex.h"
#include "MTParserLib/run/MTBoundFunction.h"
#include "mathexpr/Variables.h"
#include "mathexpr/c/Evaluation.h"

#include <algorithm>
#include <utility>

struct mathexpr_function
{
    /// State shared by copies.
    struct Source
    {
        MathExpression expression{true, nullptr};
        std::vector<const VALTYPE*> arguments;  // addresses of the variables, by position
    };

    explicit mathexpr_function(std::shared_ptr<const Source> sharedSource)
        : source(std::move(sharedSource)),
          program(mathexpr::EngineAccess::parserOf(source->expression).getProgram(), source->arguments)
    {}

#if defined(MATHEXPR_CHECK_HANDLES)
    // NOLINTNEXTLINE(cert-dcl54-cpp): the global operator new allocates, and its counterpart frees in the end
    static void operator delete(void* memory) noexcept
    {
        HandleRegistry::retire(memory);
    }
#endif

    const std::shared_ptr<const Source> source;
    MTBoundFunction program;
};

namespace {

bool hasNameTwice(const std::vector<std::wstring>& names)
{
    for (auto name = names.begin(); name != names.end(); ++name)
    {
        if (std::any_of(names.begin(), name, [&](const std::wstring& other) { return sameIgnoringCase(other, *name); }))
        {
            return true;
        }
    }
    return false;
}

/// Compiles a text again for a function, with the current values of the expression's variables.
std::shared_ptr<const mathexpr_function::Source> makeSource(MathExpression& expression, const std::wstring& text,
                                                            const std::vector<std::wstring>& arguments)
{
    auto source = std::make_shared<mathexpr_function::Source>();
    for (const std::wstring& name : mathexpr::getUsedNames(expression))
    {
        VALTYPE value;
        mathexpr::getVariable(expression, name.c_str(), value);
        mathexpr::setVariable(source->expression, name.c_str(), value);
    }
    for (const std::wstring& name : arguments)
    {
        mathexpr::setVariable(source->expression, name.c_str(), VALTYPE());
        source->arguments.push_back(mathexpr::getVariableAddress(source->expression, name.c_str()));
    }
    source->expression.setExpression(text.c_str());
    return source;
}

void handOver(std::unique_ptr<mathexpr_function> function, mathexpr_function** handle)
{
    HandleRegistry::add(function.get());
    *handle = function.release();
}

template <class Encoding>
mathexpr_status takeNames(const typename Encoding::Unit* const* given, std::size_t count,
                          std::vector<std::wstring>& names)
{
    names.resize(count);
    for (std::size_t index = 0; index < count; ++index)
    {
        const mathexpr_status status = takeText<Encoding>(given[index], MATHEXPR_ZERO_TERMINATED, names[index]);
        if (status != MATHEXPR_OK)
        {
            return status;
        }
    }
    return hasNameTwice(names) ? MATHEXPR_BAD_OPTION : MATHEXPR_OK;
}

bool areVariables(MathExpression& expression, const std::vector<std::wstring>& names)
{
    VALTYPE value;
    return std::all_of(names.begin(), names.end(), [&](const std::wstring& name) {
        return mathexpr::getVariable(expression, name.c_str(), value);
    });
}

template <class Encoding>
mathexpr_status create(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                       const typename Encoding::Unit* const* arguments, std::size_t count,
                       mathexpr_function** function) noexcept
{
    return changeExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (function == nullptr || (arguments == nullptr && count != 0))
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (expression.isCalculator())
        {
            return MATHEXPR_WRONG_KIND;
        }
        std::wstring wide;
        std::vector<std::wstring> names;
        mathexpr_status status = takeText<Encoding>(text, length, wide);
        if (status == MATHEXPR_OK)
        {
            status = takeNames<Encoding>(arguments, count, names);
        }
        if (status == MATHEXPR_OK)
        {
            status = areVariables(expression.object(), names) ? compileText(expression, wide) : MATHEXPR_NOT_FOUND;
        }
        if (status == MATHEXPR_OK)
        {
            mathexpr::dropAssignment(*expression.plain);
            auto made = std::make_unique<mathexpr_function>(makeSource(*expression.plain, wide, names));
            if (made->program.yieldsPoint())
            {
                return MATHEXPR_OTHER_KIND;
            }
            handOver(std::move(made), function);
        }
        return status;
    });
}

/// Calls work with a function, if its handle is valid.
template <class Work>
mathexpr_status withFunction(const mathexpr_function* handle, Work work) noexcept
{
    if (handle == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    if (!HandleRegistry::isLive(handle))
    {
        return MATHEXPR_STALE_HANDLE;
    }
    return atBoundary(work);
}

}

mathexpr_status mathexpr_create_function_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                              const char* const* arguments, size_t argument_count,
                                              mathexpr_function** function) noexcept
{
    return create<Utf8>(expression, text, length, arguments, argument_count, function);
}

mathexpr_status mathexpr_create_function_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                               size_t length, const mathexpr_char16* const* arguments,
                                               size_t argument_count, mathexpr_function** function) noexcept
{
    return create<Utf16>(expression, text, length, arguments, argument_count, function);
}

mathexpr_status mathexpr_copy_function(const mathexpr_function* function, mathexpr_function** copy) noexcept
{
    return withFunction(function, [=] {
        if (copy == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        handOver(std::make_unique<mathexpr_function>(function->source), copy);
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_destroy_function(mathexpr_function* function) noexcept
{
    if (function == nullptr)
    {
        return MATHEXPR_OK;
    }
    return withFunction(function, [=] {
        delete function;
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_call_function(mathexpr_function* function, const double* arguments, double* result) noexcept
{
    if (function == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    if (!HandleRegistry::isLive(function))
    {
        return MATHEXPR_STALE_HANDLE;
    }
    if (result == nullptr || (arguments == nullptr && function->program.getArgumentCount() != 0))
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    return function->program.call(arguments, *result) ? MATHEXPR_OK : MATHEXPR_REFUSED;
}
