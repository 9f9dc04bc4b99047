// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetForms.cpp - the tables of forms. If the language groups operands differently than readers expect, as in -2^2,
// the output has brackets in either case.
#include "mathexpr/editor/TypesetForms.h"

#include <algorithm>
#include <iterator>

namespace mathexpr::editor {
namespace {

struct OperatorForm
{
    std::wstring_view symbol;
    bool isUnary;
    TypesetForm form;
};

struct CallForm
{
    std::wstring_view function;
    std::size_t argumentCount;
    TypesetForm form;
};

constexpr std::size_t anyCount = 0;

constexpr Grip loose = Grip::Loose;
constexpr Grip relation = Grip::Relation;
constexpr Grip remainder = Grip::Remainder;
constexpr Grip sum = Grip::Sum;
constexpr Grip product = Grip::Product;
constexpr Grip power = Grip::Power;
constexpr Grip piece = Grip::Piece;
constexpr Grip atom = Grip::Atom;

// clang-format off

// ----- operators: symbol, unary, grip, least grip of the parts, LaTeX, MathML -----
constexpr OperatorForm operatorForms[] = {
    {L"+",  false, {sum,         {sum,       product},      {L"@0 + @1",             L"<mrow>@0<mo>+</mo>@1</mrow>"}}},
    {L"-",  false, {sum,         {sum,       product},      {L"@0 - @1",             L"<mrow>@0<mo>-</mo>@1</mrow>"}}},
    {L"*",  false, {product,     {Grip::Minus, power},      {L"@0 \\cdot @1",        L"<mrow>@0<mo>\u22C5</mo>@1</mrow>"}}},
    {L"/",  false, {piece,       {loose,     loose},        {L"\\frac{@0}{@1}",      L"<mfrac>@0@1</mfrac>"}}},
    {L"^",  false, {power,       {atom,      loose},        {L"@0^{@1}",             L"<msup>@0@1</msup>"}}},
    {L"%",  false, {remainder,   {power,     power},        {L"@0 \\bmod @1",        L"<mrow>@0<mo>mod</mo>@1</mrow>"}}},
    {L">",  false, {relation,    {remainder, remainder},    {L"@0 > @1",             L"<mrow>@0<mo>&gt;</mo>@1</mrow>"}}},
    {L"<",  false, {relation,    {remainder, remainder},    {L"@0 < @1",             L"<mrow>@0<mo>&lt;</mo>@1</mrow>"}}},
    {L">=", false, {relation,    {remainder, remainder},    {L"@0 \\geq @1",         L"<mrow>@0<mo>\u2265</mo>@1</mrow>"}}},
    {L"<=", false, {relation,    {remainder, remainder},    {L"@0 \\leq @1",         L"<mrow>@0<mo>\u2264</mo>@1</mrow>"}}},
    {L"==", false, {relation,    {remainder, remainder},    {L"@0 = @1",             L"<mrow>@0<mo>=</mo>@1</mrow>"}}},
    {L"!=", false, {relation,    {remainder, remainder},    {L"@0 \\neq @1",         L"<mrow>@0<mo>\u2260</mo>@1</mrow>"}}},
    {L"&",  false, {relation,    {remainder, remainder},    {L"@0 \\land @1",        L"<mrow>@0<mo>\u2227</mo>@1</mrow>"}}},
    {L"|",  false, {relation,    {remainder, remainder},    {L"@0 \\lor @1",         L"<mrow>@0<mo>\u2228</mo>@1</mrow>"}}},
    {L"-",  true,  {Grip::Minus, {piece,     loose},        {L"-@0",                 L"<mrow><mo>-</mo>@0</mrow>"}}},
    {L"!",  true,  {Grip::Not,   {power,     loose},        {L"\\lnot @0",           L"<mrow><mo>\u00AC</mo>@0</mrow>"}}},
};

// ----- calls: function, number of arguments, grip, least grip of the parts, LaTeX, MathML -----
constexpr CallForm callForms[] = {
    {L"sqrt",  1, {atom,  {loose, loose}, {L"\\sqrt{@0}",                            L"<msqrt>@0</msqrt>"}}},
    {L"abs",   1, {atom,  {loose, loose}, {L"\\left|@0\\right|",                     L"<mrow><mo>|</mo>@0<mo>|</mo></mrow>"}}},
    {L"ceil",  1, {atom,  {loose, loose}, {L"\\left\\lceil @0\\right\\rceil",        L"<mrow><mo>\u2308</mo>@0<mo>\u2309</mo></mrow>"}}},
    {L"floor", 1, {atom,  {loose, loose}, {L"\\left\\lfloor @0\\right\\rfloor",      L"<mrow><mo>\u230A</mo>@0<mo>\u230B</mo></mrow>"}}},
    {L"asin",  1, {piece, {loose, loose}, {L"\\arcsin\\left(@0\\right)",             L"<mrow><mi>arcsin</mi><mo>\u2061</mo><mrow><mo>(</mo>@0<mo>)</mo></mrow></mrow>"}}},
    {L"acos",  1, {piece, {loose, loose}, {L"\\arccos\\left(@0\\right)",             L"<mrow><mi>arccos</mi><mo>\u2061</mo><mrow><mo>(</mo>@0<mo>)</mo></mrow></mrow>"}}},
    {L"atan",  1, {piece, {loose, loose}, {L"\\arctan\\left(@0\\right)",             L"<mrow><mi>arctan</mi><mo>\u2061</mo><mrow><mo>(</mo>@0<mo>)</mo></mrow></mrow>"}}},
    {L"log",   1, {piece, {loose, loose}, {L"\\log_{10}\\left(@0\\right)",           L"<mrow><msub><mi>log</mi><mn>10</mn></msub><mo>\u2061</mo><mrow><mo>(</mo>@0<mo>)</mo></mrow></mrow>"}}},
    {L"point", anyCount, {atom, {loose, loose}, {L"\\begin{pmatrix} @: \\end{pmatrix}", L"<mrow><mo>(</mo><mtable>@:</mtable><mo>)</mo></mrow>"}}},
};

constexpr TypesetForm otherCall =
    {piece, {loose, loose}, {L"\\operatorname{@n}\\left(@*\\right)", L"<mrow><mi>@n</mi><mo>\u2061</mo><mrow><mo>(</mo>@*<mo>)</mo></mrow></mrow>"}};

}

const TypesetForm typesetBrackets   = {atom,  {loose, loose}, {L"\\left(@0\\right)",  L"<mrow><mo>(</mo>@0<mo>)</mo></mrow>"}};
const TypesetForm typesetConversion = {atom,  {product, loose}, {L"\\left(@0\\ \\text{@1} \\to \\text{@2}\\right)",
                                                                 L"<mrow><mo>(</mo>@0<mtext>\u00A0@1</mtext><mo>\u2192</mo><mtext>@2</mtext><mo>)</mo></mrow>"}};
const TypesetForm typesetAssignment = {loose, {loose, loose}, {L"@0 := @1",           L"<mrow>@0<mo>:=</mo>@1</mrow>"}};
const TypesetForm typesetFormula    = {loose, {loose, loose}, {L"@0",                 L"<math xmlns=\"http://www.w3.org/1998/Math/MathML\">@0</math>"}};
const TypesetForm typesetVerbatim   = {atom,  {loose, loose}, {L"\\mathtt{@n}",       L"<mtext mathvariant=\"monospace\">@n</mtext>"}};
// clang-format on

const TypesetForm& formOfOperator(std::wstring_view symbol, bool isUnary) noexcept
{
    return std::find_if(std::begin(operatorForms), std::end(operatorForms),
                        [=](const OperatorForm& each) { return each.symbol == symbol && each.isUnary == isUnary; })
        ->form;
}

const TypesetForm& formOfCall(std::wstring_view function, std::size_t argumentCount) noexcept
{
    const auto* const own = std::find_if(std::begin(callForms), std::end(callForms), [=](const CallForm& each) {
        return each.function == function && (each.argumentCount == anyCount || each.argumentCount == argumentCount);
    });
    return own == std::end(callForms) ? otherCall : own->form;
}

}
