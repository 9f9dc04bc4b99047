// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** worksheet.test.mjs - typing in the worksheet, and the page's responses. */
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { test } from "node:test";
import { completions, eventually, expectValues, keptSheet, openPage, type, values } from "./browser.mjs";

const announced = (page) => page.textContent("#announcer");

test("a changed line updates its value and those of the lines below", async (t) => {
  const page = await openPage(t);
  await type(page, "# widths\nwidth = 2.5\nwidth*2\nans+1\nWIDTH^2");
  await expectValues(page, ["", "2.5", "5", "6", "6.25"]);
  await page.keyboard.press("Control+Home");
  await page.keyboard.press("ArrowDown");
  await page.keyboard.press("End");
  await page.keyboard.type("0*2");
  await expectValues(page, ["", "5", "10", "11", "25"]);
  await page.keyboard.press("Control+z");
  await expectValues(page, ["", "2.5", "5", "6", "6.25"]);
});

test("a value is announced after a pause", async (t) => {
  const page = await openPage(t);
  await type(page, "a=2\na*3");
  await eventually(() => announced(page), "Line 2: 6");
  await page.keyboard.type("+b");
  await eventually(async () => (await announced(page)).startsWith("Line 2: A name is not known"), true);
});

test("values have the selected number of digits", async (t) => {
  const page = await openPage(t, { sheet: "2/3" });
  await expectValues(page, ["0.666666666666667"]);
  await page.selectOption("#digits", "6");
  await expectValues(page, ["0.666667"]);
  await page.reload();
  await expectValues(page, ["0.666667"]);
  await page.selectOption("#digits", "all");
  await expectValues(page, ["0.6666666666666666"]);
});

test("completion works by keyboard alone", async (t) => {
  const page = await openPage(t);
  await type(page, "width=4\nsqr");
  const list = await completions(page);
  const option = list.getByRole("option").first();
  assert.equal(await option.getAttribute("aria-selected"), null, "Enter must not take what nobody chose");
  await page.keyboard.press("ArrowDown");
  const content = page.getByRole("textbox", { name: "Expressions, one per line" });
  await eventually(async () => (await content.getAttribute("aria-activedescendant")) === (await option.getAttribute("id")), true);
  assert.equal(await option.getAttribute("aria-selected"), "true");
  assert.match(await list.ariaSnapshot(), /option "sqr.*" \[selected\]/);
  await page.keyboard.press("Enter");
  await page.keyboard.type("wid");
  await completions(page);
  await page.keyboard.press("Tab");
  await eventually(async () => /^width=4\nsqrt?\(width\)$/.test(await keptSheet(page)), true);
});

test("Enter starts a new line even while completions are listed", async (t) => {
  const page = await openPage(t);
  await type(page, "a");
  await completions(page);
  await page.keyboard.press("Enter");
  await page.keyboard.type("2");
  await eventually(() => keptSheet(page), "a\n2");
});

test("an invalid line is underlined and explained, and a click fixes it", async (t) => {
  const page = await openPage(t);
  await type(page, "2pi\n1+1");
  await page.locator(".problem").waitFor();
  assert.equal(await page.locator(".cm-lintRange-error").textContent(), "2pi");
  assert.match(await page.locator(".problem .message").textContent(), /^A name is not known/);
  await page.getByRole("button", { name: "Write 2*pi" }).click();
  await expectValues(page, ["6.28318530718", "2"]);
  assert.equal(await page.locator(".problem").count(), 0);
});

test("a key fixes an invalid line", async (t) => {
  const page = await openPage(t);
  await type(page, "sin 30");
  await page.locator(".problem .fix").waitFor();
  await page.keyboard.press("Alt+Enter");
  await eventually(() => keptSheet(page), "sin(30)");
});

test("an unfinished line shows no problem while it is typed", async (t) => {
  const page = await openPage(t);
  await type(page, "2*(3+");
  await expectValues(page, ["…"]);
  await page.waitForTimeout(1200);
  assert.equal(await page.locator(".problem").count(), 0);
  await page.keyboard.press("Enter");
  await page.locator(".problem").waitFor();
});

test("the call around the cursor is shown with the current argument", async (t) => {
  const page = await openPage(t);
  await type(page, "dist([1,2],");
  await eventually(() => page.locator("#signature b").textContent(), "point y");
});

test("the token under the mouse is explained", async (t) => {
  const page = await openPage(t, { sheet: "1\nsqrt(16)" });
  await page.uncheck("#typeset");
  await page.locator(".token-function").hover();
  await page.locator(".explanation").waitFor();
  assert.match(await page.locator(".explanation").textContent(), /sqrt\(x\).*Square root/);
});

test("matching brackets at the cursor are marked", async (t) => {
  const page = await openPage(t);
  await type(page, "(1+[2,3]*2)*1");
  for (let step = 0; step < 2; ++step) await page.keyboard.press("ArrowLeft");
  await eventually(() => page.locator(".pair").allTextContents(), ["(", ")"]);
});

test("a line is typeset unless the cursor is in it", async (t) => {
  const page = await openPage(t);
  await type(page, "1/(2+3)\n7");
  await page.locator(".typeset mfrac").waitFor();
  assert.equal(await page.locator(".typeset math").count(), 1);
  await page.uncheck("#typeset");
  assert.equal(await page.locator(".typeset").count(), 0);
});

test("a point is typeset in one row", async (t) => {
  const page = await openPage(t, { sheet: "w=2\nA=[w+1,2,3]\n" });
  await page.locator(".typeset math").nth(1).waitFor();
  assert.equal(await page.locator(".typeset").nth(1).textContent(), "A:=(w+1,2,3)");
  assert.equal(await page.locator(".typeset mtable").count(), 0);
  const heights = await page.locator(".cm-line").evaluateAll((lines) => lines.map((line) => line.getBoundingClientRect().height));
  assert.ok(heights[1] < 1.3 * heights[0], heights.join());
});

test("the sheet is stored between visits, and opened and saved as a file", async (t) => {
  const page = await openPage(t);
  await type(page, "r=3\npi*r^2");
  await eventually(() => keptSheet(page), "r=3\npi*r^2");
  await page.reload();
  await expectValues(page, ["3", "28.27433388231"]);
  const [download] = await Promise.all([page.waitForEvent("download"), page.click("#save")]);
  assert.equal(await readFile(await download.path(), "utf8"), "r=3\npi*r^2");
  const file = { name: "other.txt", mimeType: "text/plain", buffer: Buffer.from("\uFEFFa=1\r\na+1\r\n") };
  await page.setInputFiles("#file", file);
  await expectValues(page, ["1", "2", ""]);
  await page.getByRole("button", { name: "Undo" }).click();
  await expectValues(page, ["3", "28.27433388231"]);
  await page.setInputFiles("#file", { ...file, buffer: Buffer.alloc(2_000_000, "1") });
  await eventually(() => page.textContent("#notice span"), "That is too long.");
  await expectValues(page, ["3", "28.27433388231"]);
});

test("2,000 lines are computed, and a change of the first updates the last", async (t) => {
  const lines = ["a0=1", ...Array.from({ length: 1999 }, (_, index) => `a${index + 1}=a${index}+1`)];
  const page = await openPage(t, { sheet: lines.join("\n") });
  await page.click(".cm-content");
  await page.keyboard.press("Control+End");
  await eventually(async () => (await values(page)).at(-1), "2000");
  await page.keyboard.press("Control+Home");
  await page.keyboard.press("End");
  await page.evaluate(() => (globalThis.started = performance.now()));
  await page.keyboard.type("0");
  await page.keyboard.press("Control+End");
  await eventually(async () => (await values(page)).at(-1), "2009");
  t.diagnostic(`${(await page.evaluate(() => performance.now() - globalThis.started)).toFixed(0)} ms from the key to the last line`);
});

test("a line that takes too long is marked as stopped, and the others are computed", async (t) => {
  const page = await openPage(t, {
    prepare: (opened) =>
      opened.route(/worker-\w+\.js$/, async (route) => {
        const response = await route.fetch();
        const hang = "addEventListener('message', ({data}) => { while (data.parameters?.lines?.includes('slow') && !globalThis.spared); });";
        // Simulates a computation that does not end, unless the worker was told not to compute the line.
        const spare = "addEventListener('message', ({data}) => { globalThis.spared ||= data.parameters?.stopped?.includes('slow'); });";
        const announce = "addEventListener('message', ({data}) => { if (data.parameters?.lines?.includes('slow') && !globalThis.spared) postMessage({computing: 'slow'}); });";
        await route.fulfill({ response, body: spare + announce + hang + (await response.text()) });
      }),
  });
  await type(page, "1+1\nslow\n2+2");
  await expectValues(page, ["2", "stopped: it took too long", "4"]);
  await page.keyboard.type("+1");
  await expectValues(page, ["2", "stopped: it took too long", "5"]);
  assert.equal(await keptSheet(page), "1+1\nslow\n2+2+1");
});
