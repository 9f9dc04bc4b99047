// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** texts.js - the page's own texts, except those in index.html. Messages and hints come from the library, in its languages. */
export const texts = {
  editor: "Expressions, one per line",
  plotted: "plotted over x",
  stopped: "stopped: it took too long",
  fix: (replacement) => `Write ${replacement}`,
  line: (number) => `Line ${number}`,
  empty: "Lines with a point, such as A=[3,4], or with a free x, such as x^2, are drawn here.",
  picture: "Picture of the sheet",
  movable: "movable point",
  pointAt: (label, ...coordinates) => `${label} at ${coordinates.join(", ")}`,
  jump: "no value",
  gapAt: (label, place, reason) => `${label}: open at x = ${place}: ${reason}`,
  gapBetween: (label, from, to, reason) => `${label}: open from x = ${from} to ${to}: ${reason}`,
  columns: ["Line", "Name", "x", "y", "z"],
  noPoints: "No line has a point as its value.",
  allFamilies: "All",
  found: (count) => `${count} found`,
  use: (example) => `Add ${example} to the sheet`,
  linkCopied: "The link is copied. It holds the sheet.",
  badLink: "The link holds no sheet.",
  linked: "This sheet came with the link.",
  earlier: "Back to my sheet",
  tooLong: "That is too long.",
  removed: "A new sheet.",
  undo: "Undo",
  noEngine: "The calculator could not be loaded.",
  allDigits: "all",
};
