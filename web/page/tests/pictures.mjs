// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** pictures.mjs - compares two PNG files, which the browser decodes. */

/** Greatest invisible difference of a colour channel. */
const threshold = 24;

/** Share of pixels that differ; 1 if the sizes differ. */
export async function differentShare(page, one, other) {
  const blank = await page.context().newPage();
  try {
    return await blank.evaluate(compare, [one.toString("base64"), other.toString("base64"), threshold]);
  } finally {
    await blank.close();
  }
}

async function compare([one, other, greatest]) {
  const pixelsOf = async (base64) => {
    const bytes = Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
    const bitmap = await createImageBitmap(new Blob([bytes], { type: "image/png" }));
    const context = new OffscreenCanvas(bitmap.width, bitmap.height).getContext("2d");
    context.drawImage(bitmap, 0, 0);
    return context.getImageData(0, 0, bitmap.width, bitmap.height);
  };
  const [a, b] = await Promise.all([one, other].map(pixelsOf));
  if (a.width !== b.width || a.height !== b.height) return 1;
  let count = 0;
  for (let index = 0; index < a.data.length; index += 4) {
    const differs = (channel) => Math.abs(a.data[index + channel] - b.data[index + channel]) > greatest;
    if (differs(0) || differs(1) || differs(2)) ++count;
  }
  return count / (a.data.length / 4);
}
