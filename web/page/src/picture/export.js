// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** export.js - exports the picture as a standalone SVG file, with the styles of the page's style sheet as attributes. */
import { svg } from "./shapes.js";

const looks = ["fill", "stroke", "stroke-width", "stroke-dasharray", "font-family", "font-size", "paint-order"];
const forThePage = ["class", "role", "tabindex", "aria-label", "aria-hidden", "aria-roledescription", "data-key"];

/** @param {SVGSVGElement} picture */
export function svgText(picture) {
  const copy = /** @type {SVGSVGElement} */ (picture.cloneNode(true));
  const originals = picture.querySelectorAll("*");
  copy.querySelectorAll("*").forEach((element, index) => {
    const style = getComputedStyle(originals[index]);
    for (const look of looks) element.setAttribute(look, style.getPropertyValue(look));
  });
  for (const unseen of copy.querySelectorAll(".reach")) unseen.remove();
  for (const element of [copy, ...copy.querySelectorAll("*")]) for (const name of forThePage) element.removeAttribute(name);
  const { width, height } = picture.viewBox.baseVal;
  copy.setAttribute("width", String(width));
  copy.setAttribute("height", String(height));
  copy.prepend(svg("rect", { width, height, fill: getComputedStyle(picture.parentElement).backgroundColor }));
  return new XMLSerializer().serializeToString(copy);
}
