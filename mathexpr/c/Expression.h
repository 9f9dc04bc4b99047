// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Expression.h - the object behind a handle of the C interface, and the checks that every function makes first.
#pragma once

#include "mathexpr/CMathExpr.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/ThreadMessageDisplay.h"
#include "mathexpr/c/Boundary.h"
#include "mathexpr/c/HandleRegistry.h"
#include "mathexpr/c/HostCallbacks.h"

#include <mathexpr.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

/// Texts that the host may read until it requests others.
template <class Encoding>
class TextList
{
public:
    explicit TextList(const std::vector<std::wstring>& wide)
    {
        texts.reserve(wide.size());
        pointers.reserve(wide.size());
        for (const std::wstring& text : wide)
        {
            pointers.push_back(texts.emplace_back(Encoding::encode(text)).c_str());
        }
    }
    TextList(const TextList&) = delete;
    TextList& operator=(const TextList&) = delete;

    const typename Encoding::Unit* const* data() const noexcept { return pointers.empty() ? nullptr : pointers.data(); }
    std::size_t size() const noexcept { return pointers.size(); }

private:
    std::vector<typename Encoding::Text> texts;
    std::vector<const typename Encoding::Unit*> pointers;
};

template <class Encoding>
struct DiagnosticTexts
{
    explicit DiagnosticTexts(const mathexpr::ExpressionDiagnostic& own)
        : text(Encoding::encode(own.text)), itemName(Encoding::encode(own.itemName)),
          conflictName(Encoding::encode(own.conflictItemName)), acceptedArgCounts(own.acceptedArgCounts),
          suggestions(own.suggestions), hints(own.hints),
          replacement(own.fix ? Encoding::encode(own.fix->replacement) : typename Encoding::Text())
    {}

    typename Encoding::Text text;
    typename Encoding::Text itemName;
    typename Encoding::Text conflictName;
    std::vector<std::uint32_t> acceptedArgCounts;
    TextList<Encoding> suggestions;
    TextList<Encoding> hints;
    typename Encoding::Text replacement;
};

/// Results of one encoding that the host may still read.
template <class Encoding>
struct Answers
{
    std::unique_ptr<const DiagnosticTexts<Encoding>> diagnostic;
    std::unique_ptr<const TextList<Encoding>> names;
    std::map<const void*, std::shared_ptr<const void>> ofEditor;  // by the function that returned it
};

struct mathexpr_expression
{
    /// Creates a plain expression.
    mathexpr_expression(bool silent, std::shared_ptr<HostCallbacks> callbacks);
    /// Creates a calculator.
    explicit mathexpr_expression(std::shared_ptr<HostCallbacks> callbacks);
    /// Copies a calculator.
    mathexpr_expression(const mathexpr_expression& other);
    mathexpr_expression& operator=(const mathexpr_expression&) = delete;
    ~mathexpr_expression() = default;

#if defined(MATHEXPR_CHECK_HANDLES)
    // NOLINTNEXTLINE(cert-dcl54-cpp): the global operator new allocates, and its counterpart frees in the end
    static void operator delete(void* memory) noexcept
    {
        HandleRegistry::retire(memory);
    }
#endif

    bool isCalculator() const noexcept
    {
        return calculator.has_value();
    }

    /// Whether it is a plain expression with no call in progress.
    bool isIdle() const noexcept
    {
        return plain.has_value() && !host->isCalled && !host->isAskedForNames;
    }

    /// The expression object, whichever class wraps it.
    MathExpression& object() noexcept
    {
        return isCalculator() ? mathexpr::expressionOf(*calculator) : *plain;
    }

    template <class Encoding>
    Answers<Encoding>& answers() noexcept
    {
        return std::get<Answers<Encoding>>(answersByEncoding);
    }

    const std::shared_ptr<HostCallbacks> host;  // must outlive the objects that call it
    std::optional<MathExpression> plain;
    std::optional<CMathExpr> calculator;

private:
    std::tuple<Answers<Utf8>, Answers<Utf16>> answersByEncoding;
};

/// Gives an expression object the host's name source, if the host has one.
void offerNames(MathExpression& object, const HostCallbacks& host) noexcept;

/// Calls work with the expression behind a handle, even while another call on it waits for the host.
template <class Work>
mathexpr_status readExpression(const mathexpr_expression* handle, Work work) noexcept
{
    if (handle == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    if (!HandleRegistry::isLive(handle))
    {
        return MATHEXPR_STALE_HANDLE;
    }
    return atBoundary([&] { return work(const_cast<mathexpr_expression&>(*handle)); });
}

/// The same for work that changes or runs the expression: returns MATHEXPR_BUSY while another call is in progress.
template <class Work>
mathexpr_status changeExpression(mathexpr_expression* handle, Work work) noexcept
{
    return readExpression(handle, [&](mathexpr_expression& expression) -> mathexpr_status {
        HostCallbacks& host = *expression.host;
        if (host.isCalled || host.isAskedForNames)
        {
            return MATHEXPR_BUSY;
        }
        const Mark underWay(host.isCalled);
        std::optional<ThreadMessageDisplay> display;
        if (host.display().show != nullptr)
        {
            display.emplace(&host.display());
        }
        return work(expression);
    });
}
