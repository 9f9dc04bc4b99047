// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetForms.h - how each construct of an expression is set in each notation, as a table of forms.
//
// A form is a text with places in it: "@0" and "@1" are the first and the second part, "@*" all parts with commas between
// them, "@:" all parts one below the other, "@n" the name.
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
    Piece,  ///< Such as a fraction, which a power does not hold to.
    Atom,
};

struct TypesetForm
{
    Grip grip = Grip::Atom;                 ///< Of what is set.
    std::array<Grip, 3> least{};            ///< What each part needs at least.
    std::array<const wchar_t*, 2> texts{};  ///< By Notation.

    // cppcheck-suppress CastIntegerToAddressAtReturn ; an element of the array is an address
    const wchar_t* in(Notation notation) const noexcept { return texts[static_cast<std::size_t>(notation)]; }
};

/// Of an operator of the vocabulary.
const TypesetForm& formOfOperator(std::wstring_view symbol, bool isUnary) noexcept;

const TypesetForm& formOfCall(std::wstring_view function, std::size_t argumentCount) noexcept;

extern const TypesetForm typesetBrackets;
extern const TypesetForm typesetConversion;  ///< Its second and third part are units.
extern const TypesetForm typesetAssignment;
extern const TypesetForm typesetFormula;  ///< All of an expression.
extern const TypesetForm typesetVerbatim;

}
