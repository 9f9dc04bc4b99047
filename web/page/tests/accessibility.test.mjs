// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * accessibility.test.mjs - every state of the page violates no rule of axe-core, cuts nothing off and equals its recorded
 * screenshot; and the names and roles of the elements.
 *
 * With MATHEXPR_RECORD=1 the screenshots are recorded instead of compared.
 */
import assert from "node:assert/strict";
import { mkdir, readFile, writeFile } from "node:fs/promises";
import { createRequire } from "node:module";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { test } from "node:test";
import { example } from "../src/sheet/example.js";
import { completions, eventually, expectValues, openPage, type } from "./browser.mjs";
import { differentShare } from "./pictures.mjs";

const axe = await readFile(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const pictures = path.join(path.dirname(fileURLToPath(import.meta.url)), "pictures");
const narrow = { viewport: { width: 320, height: 640 } };

/** The states: the browser's options, the sheet, and the actions that lead to each. */
const states = {
  worksheet: {},
  dark: { browser: { colorScheme: "dark" } },
  broken: {
    act: async (page) => {
      await type(page, "radius = 2.5\n2pi*radius\n2*sine(30)\nradius+1\n");
      await page.locator(".problem").nth(1).waitFor();
    },
  },
  completion: {
    act: async (page) => {
      await type(page, "width=4\nsq");
      await completions(page);
      await page.keyboard.press("ArrowDown");
      await page.locator("#editor [aria-selected=true]").waitFor();
    },
  },
  curves: {
    sheet: "a=2\n1/(x-1)\nsqrt(x)*a\n5*sin(60*x)\n",
    act: (page) => page.locator("#gaps li").nth(1).waitFor(),
  },
  space: {
    sheet: "A=[0,0]\nB=[40,0,10]\nC=[40,30,20]\nD=[0,30,5]\ndist(A,C)\n# terrain\n[0,0,3]\n[10,10,4]\n[20,15,12]\n[35,12,6]\n",
    act: async (page) => {
      await page.locator("#canvas .dimension").waitFor();
      await page.check("#space");
      await page.mouse.move(0, 0);
    },
  },
  points: { act: (page) => page.click("#tab-points") },
  vocabulary: {
    act: async (page) => {
      await page.click("#tab-vocabulary");
      await page.fill("#words", "inch mm");
      await page.getByRole("button", { name: /^Add i2mm/ }).waitFor();
    },
  },
  about: {
    act: async (page) => {
      await page.click("#about");
      await eventually(async () => (await page.textContent("#licences")).length > 1000, true);
    },
  },
  empty: { sheet: "" },
  german: {
    browser: { locale: "de" },
    sheet: "2pi\n",
    act: async (page) => {
      await page.locator(".problem").waitFor();
      assert.match(await page.textContent(".problem .message"), /^Ein Name ist nicht bekannt/);
      assert.equal(await page.getAttribute(".problem .message", "lang"), "de");
    },
  },
  narrow: { browser: narrow },
  "narrow, dark": { browser: { ...narrow, colorScheme: "dark" } },
  "at 200 % zoom": { browser: { viewport: { width: 640, height: 400 }, deviceScaleFactor: 2 } },
  print: { print: true },
};

for (const [name, { browser, act, print, sheet = example }] of Object.entries(states)) {
  test(`${name}: no violation, nothing cut off, equals the recorded screenshot`, async (t) => {
    const page = await openPage(t, { sheet, browser: { reducedMotion: "reduce", ...browser } });
    if (sheet === example) {
      await page.getByText("67.0820393249937").waitFor();
      await page.locator("#canvas .curve").waitFor();
    }
    await act?.(page);
    if (print) await page.emulateMedia({ media: "print" });
    await page.evaluate(axe); // the page's policy would refuse it as a <script> element
    const { violations } = await page.evaluate(() => globalThis.axe.run());
    const found = violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html, failureSummary }) => `${html} ${failureSummary}`).join("; ")}`);
    assert.deepEqual(found, []);
    const { scrollWidth, clientWidth } = await page.evaluate(() => document.documentElement);
    assert.ok(!(scrollWidth > clientWidth), `${scrollWidth} is wider than ${clientWidth}`);
    await comparePicture(page, name);
  });
}

async function comparePicture(page, name) {
  const file = path.join(pictures, `${name.replaceAll(/\W+/g, "-")}.png`);
  const shown = await page.screenshot({ fullPage: true, caret: "hide", animations: "disabled" });
  if (process.env.MATHEXPR_RECORD) {
    await mkdir(pictures, { recursive: true });
    await writeFile(file, shown);
    return;
  }
  const share = await differentShare(page, await readFile(file), shown);
  assert.ok(share < 0.002, `${(100 * share).toFixed(2)} % of the picture differ from ${file}`);
}

test("elements have names and roles", async (t) => {
  const page = await openPage(t, { sheet: "A=[1,2]\nB=[A*A,3]" });
  await expectValues(page, ["[1,2,0]", "[5,3,0]"]);
  const tree = await page.locator("body").ariaSnapshot();
  for (const part of [
    /heading "mathexpr" \[level=1\]/,
    /button "Copy link"/,
    /combobox "Digits"/,
    /combobox "Messages"/,
    /checkbox "Typeset" \[checked\]/,
    /region "Worksheet"/,
    /textbox "Expressions, one per line"/,
    /tablist "Views of the sheet"/,
    /tab "Picture" \[selected\]/,
    /tabpanel "Picture"/,
    /group "Picture of the sheet"/,
    /button "A at 1, 2"/,
    /img "B at 5, 3"/,
  ]) {
    assert.match(tree, part);
  }
});

test("keys select the views", async (t) => {
  const page = await openPage(t, { sheet: "A=[1,2]" });
  await page.focus("#tab-picture");
  await page.keyboard.press("ArrowRight");
  assert.ok(await page.locator("#points table").isVisible());
  await page.keyboard.press("End");
  assert.ok(await page.locator("#vocabulary").isVisible());
  await page.keyboard.press("ArrowRight");
  assert.ok(await page.locator("#canvas").isVisible());
});

test("Tab leaves the editor", async (t) => {
  const page = await openPage(t, { sheet: "1" });
  await page.click(".cm-content");
  await page.keyboard.press("Tab");
  assert.equal(await page.evaluate(() => document.activeElement.id), "tab-picture");
});

const names = {
  en: "A name is not known",
  de: "Ein Name ist nicht bekannt",
};

test("messages appear in the selected language, the page's own texts in English", async (t) => {
  const page = await openPage(t, { sheet: "qqq\n" });
  const said = new Set();
  for (const [language, beginning] of [...Object.entries(names), ...["fr", "es", "it", "pt", "ja", "zh"].map((tag) => [tag, ""])]) {
    await page.selectOption("#language", language);
    await eventually(() => page.getAttribute(".problem .message", "lang"), language);
    await eventually(async () => !said.has(await page.textContent(".problem .message")), true);
    const message = await page.textContent(".problem .message");
    assert.ok(message.startsWith(beginning), message);
    said.add(message);
  }
  assert.equal(said.size, 8);
  assert.equal(await page.getAttribute("html", "lang"), "en");
});

test("the page has at most 60 texts of its own", async (t) => {
  const page = await openPage(t, { sheet: "" });
  const { texts } = await import("../src/texts.js");
  const inMarkup = await page.evaluate(async () => {
    const parsed = new DOMParser().parseFromString(await (await fetch("./")).text(), "text/html");
    const walker = document.createTreeWalker(parsed.documentElement, NodeFilter.SHOW_TEXT);
    const found = [];
    while (walker.nextNode()) found.push(walker.currentNode.data.trim());
    for (const element of parsed.querySelectorAll("[aria-label]")) found.push(element.getAttribute("aria-label"));
    return found;
  });
  const inScripts = Object.values(texts).flat().map(String);
  const isText = (text) => /[a-z]{2}/i.test(text) && text !== "mathexpr";
  const count = new Set([...inMarkup, ...inScripts].filter(isText)).size;
  t.diagnostic(`${count} texts`);
  assert.ok(count <= 60, `${count} texts`);
});
