// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * link.js - a link that contains the sheet: after "#sheet=", its UTF-8 text, deflated and encoded in URL-safe base64. A fragment is
 * never sent to a server. Decoding yields text of limited length, even if the fragment inflates to more.
 */
import { maxSheetLength } from "../engine/limits.js";

const mark = "#sheet=";
const maxLinkLength = 32_000;
const maxBytes = 4 * maxSheetLength;

/** The fragment for a sheet; null if it would be too long. */
export async function fragmentOf(text) {
  const packed = new Blob([text]).stream().pipeThrough(new CompressionStream("deflate-raw"));
  const bytes = new Uint8Array(await new Response(packed).arrayBuffer());
  const binary = Array.from(bytes, (byte) => String.fromCharCode(byte)).join("");
  const fragment = mark + btoa(binary).replaceAll("+", "-").replaceAll("/", "_").replace(/=+$/, "");
  return fragment.length <= maxLinkLength ? fragment : null;
}

/** Whether a fragment claims to contain a sheet. */
export const holdsSheet = (fragment) => fragment.startsWith(mark);

/** The sheet in a fragment; null if it is invalid or too long. */
export async function sheetOf(fragment) {
  if (fragment.length > maxLinkLength) return null;
  try {
    const binary = atob(fragment.slice(mark.length).replaceAll("-", "+").replaceAll("_", "/"));
    const packed = new Blob([Uint8Array.from(binary, (character) => character.charCodeAt(0))]).stream();
    return await limitedText(packed.pipeThrough(new DecompressionStream("deflate-raw")));
  } catch {
    return null;
  }
}

async function limitedText(stream) {
  const decoder = new TextDecoder("utf-8", { fatal: true });
  const reader = stream.getReader();
  let text = "";
  for (let length = 0; ; ) {
    const { done, value } = await reader.read();
    if (done) return acceptedText(text + decoder.decode());
    length += value.length;
    if (length > maxBytes) {
      await reader.cancel();
      return null;
    }
    text += decoder.decode(value, { stream: true });
  }
}

/** An imported sheet with its line ends converted to this page's; null if it is too long. */
export function acceptedText(text) {
  return text.length > maxSheetLength ? null : text.replace(/^\uFEFF/, "").replace(/\r\n?/g, "\n");
}
