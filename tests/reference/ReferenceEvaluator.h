// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceEvaluator.h - a slow, obvious second implementation of the expression language, to compare the library with.
//
// A Session answers the same calls as a MathExpression and tells everything that a host could notice of each: what was
// returned, which messages were shown, what was raised, which names the host was asked for. It shares no code with the
// library but the record VALTYPE, and prefers the literal to the fast: the text is rewritten by three replacements, the
// folding walk visits the whole subtree after every emitted record and recurses, records are looked up in plain lists.
// Its recursion is as deep as the text is nested, so it is meant for texts of up to some ten thousand characters.
//
// The one entry point is Session; describe() turns an Outcome into the line that tests compare and print.
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

/// An exception as a host would catch it: the newest entry's record.
struct Raised
{
    enum class Kind
    {
        Parsing,
        Definition,
        Host,  ///< Whatever the host's own service threw.
    };

    Kind kind = Kind::Parsing;
    std::uint32_t exID = 0;
    std::uint32_t pos = 0;
    std::wstring itemName;
    std::uint32_t nbArgs = 0;
    std::wstring conflictItemName;

    bool operator==(const Raised&) const = default;
};

/// All that a host can notice of one call.
struct Outcome
{
    bool returned = false;                ///< What the call answered; false when it raised.
    VALTYPE value;                        ///< After evaluate: the caller's record, changed or not.
    std::vector<std::uint32_t> messages;  ///< Numbers of the messages shown, in order.
    std::optional<Raised> raised;
    std::vector<std::wstring> asked;  ///< Names that the host was asked for, in order.
};

/// True when no host could tell the two apart, except by the sign and payload of a NaN: those depend on which operand
/// of an addition or multiplication the compiler puts first.
bool sameOutcome(const Outcome& left, const Outcome& right);

/// One line that shows an outcome, such as "[4,6,0]", "5 flag", "false, message 10",
/// "raised parsing 7 at 1 sin nbArgs 2, asked unk".
std::string describe(const Outcome& outcome);

/// A value as describe shows it.
std::string describe(const VALTYPE& value);

/// Narrow text of a wide one, for messages of tests; what is not printable ASCII appears as \u{hex}.
std::string printable(const std::wstring& text);

/// The host's answer to a name: true and the value filled (it is all zero on entry), or false. May throw.
using Host = std::function<bool(const std::wstring& name, VALTYPE& value)>;

struct Record;

/// An expression object of the reference.
class Session
{
public:
    /// @param silent  as of MathExpression
    /// @param host    asked for unknown names; may be empty
    explicit Session(bool silent, Host host = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The greatest integer literal, 2147483647 unless set.
    void setMaxInteger(std::uint32_t limit);

    Outcome setExpression(const std::wstring& text);

    /// @param result  what the caller's record holds before the call
    Outcome evaluate(const VALTYPE& result);

    void dropAssignment();

    /// Sets the limit, compiles and evaluates, as CMathExpr does (make the session neither silent nor with a host).
    Outcome calculate(const std::wstring& text, const VALTYPE& result, std::uint32_t limit);

    /// Changes a variable between two evaluations of one program; false when there is none of that name. No exported
    /// operation of the library does this: it is for tests of what slots keep from one evaluation to the next.
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
