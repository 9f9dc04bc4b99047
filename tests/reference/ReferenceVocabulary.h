// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceVocabulary.h - the names and symbols of the expression language in the reference.
//
// Operators, functions and conversions are listed in the sources in this folder, one per family; look-ups scan the
// lists from front to back.
#pragma once

#include "ReferenceProgram.h"

#include <optional>
#include <string>
#include <vector>

namespace reference {

/// The 16 operators, longest symbol first.
const std::vector<Item>& operators();

/// All functions; overloads share a symbol.
const std::vector<Item>& functions();

/// The longest operator symbol at a position of the text; empty if there is none.
std::wstring operatorSymbolAt(const std::wstring& text, std::size_t index);

const Item* findOperator(const std::wstring& symbol, bool unary);

bool isFunction(const std::wstring& name);

/// Prefers an exact number of arguments. A function with any number of arguments needs at least one, except point.
const Item* findOverload(const std::wstring& name, std::uint32_t nbArgs);

/// pi, PI, e or E.
std::optional<double> findConstant(const std::wstring& name);

/// Digits with at most one decimal point.
bool isNumber(const std::wstring& token);

// The families, in the order of the list of functions.
void addOperators(std::vector<Item>& list);
void addCoreFunctions(std::vector<Item>& list);
void addGeometry(std::vector<Item>& list);
void addConversions(std::vector<Item>& list);

/// Raises the exception of a function that gets a point instead of a number.
void requireNumber(const VALTYPE& value);

/// Truncated toward zero to 32 bits; a NaN or a value out of range is -2147483648.
std::int32_t toInteger(double value);
}
