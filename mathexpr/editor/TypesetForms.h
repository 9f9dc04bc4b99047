// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetForms.h - a table of forms: how each construct of an expression is typeset in each notation.
//
// A form is a text with placeholders: "@0" and "@1" are the first and second part, "@*" all parts separated by commas,
// "@:" all parts below each other, "@n" the name.
#pragma once

#include "mathexpr/Typeset.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mathexpr::editor {

/// Binding strength of a typeset part, loosest first. A part that binds more loosely than its place allows gets brackets.
enum class Grip : std::uint8_t
{
    Loose,
    Relation,
    Remainder,
    Sum,
    Not,
    Minus,
    Product,
    Power,
    Piece,  ///< Such as a fraction, which needs brackets as the base of a power.
    Atom,
};

struct TypesetForm
{
    Grip grip = Grip::Atom;                 ///< Of the typeset construct.
    std::array<Grip, 3> least{};            ///< Least grip that each part may have without brackets.
    std::array<const wchar_t*, 2> texts{};  ///< By Notation.

    // cppcheck-suppress CastIntegerToAddressAtReturn ; the elements are addresses
    const wchar_t* in(Notation notation) const noexcept { return texts[static_cast<std::size_t>(notation)]; }
};

/// The form of an operator of the vocabulary.
const TypesetForm& formOfOperator(std::wstring_view symbol, bool isUnary) noexcept;

const TypesetForm& formOfCall(std::wstring_view function, std::size_t argumentCount) noexcept;

extern const TypesetForm typesetBrackets;
extern const TypesetForm typesetConversion;  ///< Parts 1 and 2 are units.
extern const TypesetForm typesetAssignment;
extern const TypesetForm typesetFormula;  ///< The whole expression.
extern const TypesetForm typesetVerbatim;

}
