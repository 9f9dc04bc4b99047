// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Items.h - calls items, and compares the records that they fill.
//
// An item writes only some fields of its result. So every call gets a stale record without zero bytes, and the whole
// record is compared: the expected record is the stale record with the named fields changed.
#pragma once

#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "mathexpr/IMathExprItemEvaluator.h"
#include "mathexpr/ValType.h"
#include "tests/MadeValues.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <iosfwd>
#include <limits>
#include <string>
#include <vector>

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Returns the value, but hides it from the compiler, to prevent computation at compile time.
double opaque(double value);

inline std::uint64_t bitsOf(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

/// A number with the second flag, as from a conversion.
VALTYPE converted(double x);

/// A stale record: no byte is zero, and type is neither number nor point.
VALTYPE stale();

// A stale record after an item has written some fields.
VALTYPE withX(double x);
VALTYPE withNumber(double x);
VALTYPE withConverted(double x);
VALTYPE withPoint(double x, double y, double z);

/// Byte by byte, except that a NaN coordinate equals any NaN.
bool sameRecord(const VALTYPE& left, const VALTYPE& right);

void PrintTo(const VALTYPE& value, std::ostream* out);

/// Whether the item accepts the arguments, shows nothing and leaves the expected record, with and without messages.
testing::AssertionResult yields(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args,
                                const VALTYPE& expected, const VALTYPE& onEntry = stale());

/// Whether the item refuses the arguments, with exactly that message or without one, and leaves the record unchanged.
testing::AssertionResult refuses(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args,
                                 std::uint32_t message);

/// Whether the item raises the exception for a point in place of a number, with all its fields, with and without
/// messages.
testing::AssertionResult raises(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args,
                                std::uint32_t line);

/// The line in the exception that the item raises for these arguments; 0 if it raises none.
std::uint32_t raisedLine(const IMathExprItemEvaluator& item, const std::vector<VALTYPE>& args);

/// The vocabulary in a registrar.
class RegisteredVocabulary
{
public:
    RegisteredVocabulary() { registerVocabulary(registrar); }

    const MTParserRegistrar& get() const { return registrar; }
    const IMathOperator& getOperator(const VocabularyEntry& entry) const;
    const IMathFunction& getFunction(const std::wstring& symbol, std::uint32_t nbArgs) const;

private:
    MTParserRegistrar registrar;
};

/// For test messages; the texts of the vocabulary are ASCII.
std::string narrow(const std::wstring& text);
