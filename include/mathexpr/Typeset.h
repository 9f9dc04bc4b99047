// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Typeset.h - typesets a text as LaTeX or MathML: fractions, roots, powers, indices, points as columns. Part of the
// editor services; the rules in EditorServices.h apply.
//
//     p_1/(1+x)^2    LaTeX   \frac{p_{1}}{\left(1 + x\right)^{2}}
//                    MathML  <mfrac><msub><mi>p</mi><mn>1</mn></msub><msup>...</msup></mfrac>
//
// The output shows what is computed: brackets are kept where the compiler's grouping requires them, and "e+" is a power
// of ten. "=" is set as ":=", "==" as an equals sign.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/MathExpression.h"

#include <cstdint>
#include <string>

namespace mathexpr {

/// Output format. The numbers are part of the interface.
enum class Notation : std::uint32_t
{
    Latex = 0,   ///< For LaTeX math mode with the package amsmath; accepted by MathJax and KaTeX.
    MathMl = 1,  ///< Presentation MathML: one `math` element, well-formed for any text.
};

/// Typesets a text. Names need not be known. A text that is not an expression is set verbatim in a monospaced font, as is
/// one with commas in brackets that are not a call's, such as "(1,2)", and one with an assignment to nothing, such as
/// "=5".
MATHEXPR_API std::wstring typesetText(const MathExpression& expression, const wchar_t* text, Notation notation);

}
