// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Trial.h - compiles and evaluates texts in a separate object, so that the original does not change.
//
// The separate object has the same limits and knows the same names: the variables with their present values, and the
// names that the host offers. It shows no message. Every text starts afresh.
//
// Names whose values only the host knows are replaced by numbers, or by points if they are known to be points.
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
        Undefined,  ///< A value outside an item's domain, such as a divisor of 0; another value might be accepted.
        Refused,
    };

    /// @param original    must outlive the trial
    /// @param names       of the original; must outlive the trial
    /// @param mayAskHost  whether the host's service is called for names that are not known otherwise
    Trial(const MathExpression& original, const KnownNames& names, bool mayAskHost) noexcept;
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    /// Declares whether a name of the host is a number or a point; names of an index may have notes that do so.
    void setKind(const std::wstring& name, ValueKind kind) { kinds[name] = kind; }

    bool compile(const std::wstring& text);

    /// Compiles a text and evaluates it, unless it contains random numbers: drawing one would change the numbers that
    /// follow.
    /// @param value  receives the value, if all values in the text are known
    Verdict evaluate(const std::wstring& text, std::optional<VALTYPE>& value);
    /// The same without a value. If a number is refused for a name of unknown kind, a point is tried.
    Verdict judge(const std::wstring& text);

    /// Diagnostic of the last text.
    ExpressionDiagnostic diagnostic() const;

    /// Names for an arbitrary number and an arbitrary point, in characters that cannot be typed.
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
    mutable bool hasStandIns = false;                // the text uses a name whose value is not known
    mutable std::vector<std::wstring> unknownKinds;  // names in the text that may be numbers or points
};

}
