// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSignature.cpp - formats the signature that the library finds.
#include "tools/calc/prompt/PromptSignature.h"

#include "mathexpr/TypingHelp.h"
#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <vector>

std::optional<Signature> signatureAt(const MathExpression& expression, std::string_view text)
{
    const auto typed = toWide(text);
    const mathexpr::CallSignature call =
        typed ? mathexpr::getSignature(expression, typed->c_str(), static_cast<std::uint32_t>(typed->size()))
              : mathexpr::CallSignature();
    if (call.overloads.empty())
    {
        return std::nullopt;
    }
    const mathexpr::SignatureOverload& overload = call.overloads[call.activeOverload];
    const std::size_t count = overload.parameters.size();
    const bool repeats = overload.parameters.back() == L"...";
    const std::size_t current = repeats ? std::min<std::size_t>(call.argument, count - 1) : call.argument;
    const bool isSquare = (*typed)[call.name.start] == L'[';

    Signature signature{isSquare ? "[" : toUtf8(call.function) + "(", {}, {}};
    for (std::size_t index = 0; index < count; ++index)
    {
        std::string& piece = index < current    ? signature.before
                             : index == current ? signature.current
                                                : signature.after;
        std::string& separated = index <= current ? signature.before : signature.after;
        separated += index == 0 ? "" : ", ";
        piece +=
            (overload.parameterKind == mathexpr::ValueKind::Point ? "point " : "") + toUtf8(overload.parameters[index]);
    }
    (current < count ? signature.after : signature.before) += isSquare ? "]" : ")";
    return signature;
}
