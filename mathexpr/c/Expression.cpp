// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Expression.cpp - creates, copies and destroys the objects behind handles.
#include "mathexpr/c/Expression.h"

#include "mathexpr/Diagnostics.h"
#include "mathexpr/c/Structures.h"

#include <utility>

namespace {

bool areKnown(std::uint32_t kind, std::uint32_t flags) noexcept
{
    return (kind == MATHEXPR_EXPRESSION || kind == MATHEXPR_CALCULATOR) &&
           (flags & ~static_cast<std::uint32_t>(MATHEXPR_SHOW_MESSAGES)) == 0;
}

/// Transfers a new expression to the host.
void handOver(std::unique_ptr<mathexpr_expression> expression, mathexpr_expression** handle)
{
    HandleRegistry::add(expression.get());
    *handle = expression.release();
}

template <class Encoding>
mathexpr_status create(const typename Encoding::Options* given, mathexpr_expression** handle) noexcept
{
    if (handle == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    typename Encoding::Options options{};
    if (given != nullptr && !readStructure(given, options))
    {
        return MATHEXPR_BAD_SIZE;
    }
    const bool isCalculator = options.kind == MATHEXPR_CALCULATOR;
    if (!areKnown(options.kind, options.flags) || options.reserved != 0 || (isCalculator && options.lookup != nullptr))
    {
        return MATHEXPR_BAD_OPTION;
    }
    return atBoundary([&] {
        auto host = std::make_shared<EncodedHostCallbacks<Encoding>>(options);
        if (isCalculator)
        {
            handOver(std::make_unique<mathexpr_expression>(std::move(host)), handle);
        }
        else
        {
            const bool silent = (options.flags & MATHEXPR_SHOW_MESSAGES) == 0;
            handOver(std::make_unique<mathexpr_expression>(silent, std::move(host)), handle);
        }
        return MATHEXPR_OK;
    });
}

}

void offerNames(MathExpression& object, const HostCallbacks& host) noexcept
{
    mathexpr::setNameSource(object, host.offersNames() ? &host : nullptr);
}

mathexpr_expression::mathexpr_expression(bool silent, std::shared_ptr<HostCallbacks> callbacks)
    : host(std::move(callbacks))
{
    plain.emplace(silent, host->answersNames() ? host.get() : nullptr);
    offerNames(*plain, *host);
}

mathexpr_expression::mathexpr_expression(std::shared_ptr<HostCallbacks> callbacks) : host(std::move(callbacks))
{
    calculator.emplace();
    offerNames(object(), *host);
}

mathexpr_expression::mathexpr_expression(const mathexpr_expression& other) : host(other.host)
{
    calculator.emplace(*other.calculator);
}

mathexpr_status mathexpr_create_utf8(const mathexpr_options_utf8* options, mathexpr_expression** expression) noexcept
{
    return create<Utf8>(options, expression);
}

mathexpr_status mathexpr_create_utf16(const mathexpr_options_utf16* options, mathexpr_expression** expression) noexcept
{
    return create<Utf16>(options, expression);
}

mathexpr_status mathexpr_copy(mathexpr_expression* source, mathexpr_expression** copy) noexcept
{
    return changeExpression(source, [copy](const mathexpr_expression& expression) {
        if (copy == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (!expression.isCalculator())
        {
            return MATHEXPR_WRONG_KIND;
        }
        handOver(std::make_unique<mathexpr_expression>(expression), copy);
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_destroy(mathexpr_expression* expression) noexcept
{
    if (expression == nullptr)
    {
        return MATHEXPR_OK;
    }
    // Separate, so that the check and the mark end before the object that they use is destroyed.
    const mathexpr_status status = changeExpression(expression, [](const mathexpr_expression&) { return MATHEXPR_OK; });
    if (status == MATHEXPR_OK)
    {
        delete expression;
    }
    return status;
}
