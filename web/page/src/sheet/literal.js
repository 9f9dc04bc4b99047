// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** literal.js - writes numbers as literals of expressions: small ones without an exponent, large integers with a decimal point. */

const greatestWholeLiteral = 2_147_483_647;

/** The shortest literal that reads back as the same number. */
export function literalOf(value) {
  const text = String(value);
  const small = /^(-?)(\d)\.?(\d*)e-(\d+)$/.exec(text);
  if (small) {
    const [, sign, digit, digits, exponent] = small;
    return `${sign}0.${"0".repeat(Number(exponent) - 1)}${digit}${digits}`;
  }
  return Math.abs(value) > greatestWholeLiteral && /^-?\d+$/.test(text) ? `${text}.0` : text;
}
