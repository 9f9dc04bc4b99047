// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** signature.js - shows the function call around the cursor below the sheet, with the current argument marked. */

/**
 * @param {HTMLElement} host
 * @param {{name: string, description: string, parameters: string[], active: number, unit: string} | null} signature
 */
export function showSignature(host, signature) {
  if (!signature) {
    host.replaceChildren();
    return;
  }
  const { name, description, parameters, active, unit } = signature;
  const code = document.createElement("code");
  code.append(`${name}(`);
  parameters.forEach((parameter, index) => {
    if (index) code.append(", ");
    const shown = document.createElement(index === active ? "b" : "span");
    shown.textContent = parameter;
    code.append(shown);
  });
  code.append(")");
  host.replaceChildren(code, ` ${[description, unit].filter(Boolean).join(" · ")}`);
}
