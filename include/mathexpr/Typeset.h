// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Typeset.h - a text as a page or a notebook sets it: fractions, roots, powers, indices, points as columns. One of the
// editor services (EditorServices.h), whose rules apply.
//
//     p_1/(1+x)^2    LaTeX   \frac{p_{1}}{\left(1 + x\right)^{2}}
//                    MathML  <mfrac><msub><mi>p</mi><mn>1</mn></msub><msup>...</msup></mfrac>
//
// What is set is what is computed: brackets stand where the compiler's grouping needs them to be seen, and "e+" is a
// power of ten. "=" assigns as ":=" does, "==" is an equals sign.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstdint>
#include <string>

namespace mathexpr {

/// The numbers are part of the interface.
enum class Notation : std::uint32_t
{
    Latex = 0,   ///< For math mode, with the package amsmath; also what MathJax and KaTeX take.
    MathMl = 1,  ///< Presentation MathML: one `math` element, well-formed for any text.
};

/// The text in a notation, whether or not its names are known. A text that is no expression is set as it was typed, in
/// the letters of a typewriter; so is one with commas in brackets that are no call's, as in "(1,2)", and one that assigns
/// to nothing, as in "=5".
MATHEXPR_API std::wstring typesetText(const MathExpression& expression, const wchar_t* text, Notation notation);

}
