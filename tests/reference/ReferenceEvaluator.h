// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceEvaluator.h - a slow, obvious second implementation of the expression language, for comparison with the
// library.
//
// A Session has the calls of a MathExpression, and reports everything that a host could observe: the returned value,
// messages shown, exceptions raised, names looked up. It shares no code with the library except VALTYPE, and is simple
// rather than fast: three replacements rewrite the text, folding visits the whole subtree recursively after every
// emitted record, and look-ups scan lists. The recursion depth is the nesting depth of the text, so texts should have
// at most about ten thousand characters.
//
// The entry point is Session; describe() converts an Outcome to a line that tests compare and print.
#pragma once

#include "mathexpr/ValType.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference {

/// An exception as a host would catch it: the record of its newest entry.
struct Raised
{
    enum class Kind
    {
        Parsing,
        Definition,
        Host,  ///< Any exception of the host's own service.
    };

    Kind kind = Kind::Parsing;
    std::uint32_t exID = 0;
    std::uint32_t pos = 0;
    std::wstring itemName;
    std::uint32_t nbArgs = 0;
    std::wstring conflictItemName;

    bool operator==(const Raised&) const = default;
};

/// Everything that a host can observe of a call.
struct Outcome
{
    bool returned = false;                ///< The returned value; false if it raised an exception.
    VALTYPE value;                        ///< After evaluate: the caller's record, changed or not.
    std::vector<std::uint32_t> messages;  ///< Numbers of the messages shown, in order.
    std::optional<Raised> raised;
    std::vector<std::wstring> asked;  ///< Names looked up in the host, in order.
};

/// Whether a host cannot distinguish the outcomes, ignoring sign and payload of NaNs: those depend on which operand of
/// an addition or multiplication the compiler puts first.
bool sameOutcome(const Outcome& left, const Outcome& right);

/// One line that describes an outcome, such as "[4,6,0]", "5 flag", "false, message 10", "raised parsing 7 at 1 sin
/// nbArgs 2, asked unk".
std::string describe(const Outcome& outcome);

/// A value as in describe(Outcome).
std::string describe(const VALTYPE& value);

/// Converts wide text for test messages; characters other than printable ASCII become \u{hex}.
std::string printable(const std::wstring& text);

/// Looks up a name: returns true and sets the value (all zero on entry), or returns false. May throw.
using Host = std::function<bool(const std::wstring& name, VALTYPE& value)>;

struct Record;

/// An expression object of the reference.
class Session
{
public:
    /// @param silent  as in MathExpression
    /// @param host    called for unknown names; may be empty
    explicit Session(bool silent, Host host = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The greatest integer literal; by default 2147483647.
    void setMaxInteger(std::uint32_t limit);

    Outcome setExpression(const std::wstring& text);

    /// @param result  the caller's record before the call
    Outcome evaluate(const VALTYPE& result);

    void dropAssignment();

    /// Sets the limit, compiles and evaluates, as CMathExpr does. The session must not be silent or have a host.
    Outcome calculate(const std::wstring& text, const VALTYPE& result, std::uint32_t limit);

    /// Changes a variable between two evaluations of a program; returns false if there is no such variable. The library
    /// has no such function. Tests use it to observe what slots keep from one evaluation to the next.
    bool changeVariable(const std::wstring& name, const VALTYPE& value);

private:
    bool silent;
    Host host;
    std::uint32_t maxInteger = 2147483647;
    std::map<std::wstring, std::unique_ptr<VALTYPE>> variables;  // keys with A to Z folded
    std::wstring assignTarget;
    std::vector<std::unique_ptr<Record>> program;
};
}
