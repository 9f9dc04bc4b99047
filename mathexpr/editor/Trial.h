// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Trial.h - compiles and evaluates texts beside an expression object, which stays as it is.
//
// The object of the trial has the same limits and finds the same names: variables with the values that they have now,
// and names that the host offers. It shows nothing, and a text that it is given sees nothing of the texts before it.
//
// Numbers stand in for values that only the host knows, and points for those of names that are known to be points.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/hints/KnownNames.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mathexpr::editor {

class Trial final : private IMathExprService, private IMathExprNameSource
{
public:
    enum class Verdict : std::uint8_t
    {
        Accepted,
        Undefined,  ///< A value that an item is not defined for, such as a divisor of 0; another value might do.
        Refused,
    };

    /// @param original    outlives the trial, as do
    /// @param names       which are the original's
    /// @param mayAskHost  whether the host's service is asked for names that nothing else knows
    Trial(const MathExpression& original, const KnownNames& names, bool mayAskHost) noexcept;
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    /// Says whether a name of the host's is a number or a point; the names of an index may tell that themselves.
    void setKind(const std::wstring& name, ValueKind kind) { kinds[name] = kind; }

    bool compile(const std::wstring& text);

    /// Compiles a text and evaluates it, unless it holds random numbers: evaluating those would change which come next.
    /// @param value  receives the value where one was computed from values that are all known
    Verdict evaluate(const std::wstring& text, std::optional<VALTYPE>& value);
    /// The same without a value. Of a name of unknown kind a point is tried where a number is refused.
    Verdict judge(const std::wstring& text);

    /// Of the text compiled last.
    ExpressionDiagnostic diagnostic() const;

    /// Names that stand for any number and any point; no keyboard has them.
    static constexpr const wchar_t* anyNumber = L"\uE000";
    static constexpr const wchar_t* anyPoint = L"\uE001";

private:
    template <class Work>
    bool succeeds(Work work);
    Verdict evaluateCompiled(std::optional<VALTYPE>& value);
    ValueKind kindOf(std::wstring_view name) const;
    bool drawsRandomNumbers() const;
    Verdict verdictOfFailure() const;

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;
    const wchar_t* getName(std::uint32_t index) const override;
    const NameIndex* getIndex() const override { return names.index(); }

    const MathExpression& original;
    const KnownNames& names;
    const bool mayAskHost;
    std::map<std::wstring, ValueKind, std::less<>> kinds;
    std::optional<MathExpression> object;
    mutable bool hasStandIns = false;                // the text names something whose value is not known
    mutable std::vector<std::wstring> unknownKinds;  // and these of it may be numbers or points
};

}
