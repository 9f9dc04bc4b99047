// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** files.js - opens and saves files. */
import { maxSheetLength } from "../engine/limits.js";
import { acceptedText } from "./link.js";

/** The text of a file; null if it is too large. */
export async function textOf(file) {
  return file.size > 4 * maxSheetLength ? null : acceptedText(await file.text());
}

export function save(name, text, type) {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([text], { type }));
  link.download = name;
  link.click();
  URL.revokeObjectURL(link.href);
}
