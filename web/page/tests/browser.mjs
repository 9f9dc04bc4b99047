// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** browser.mjs - the built page in a real browser: a server, Debian's Chromium, and what every test does with a page. */
import assert from "node:assert/strict";
import { after, before } from "node:test";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";
import { addressOf, serve } from "../serve.mjs";

/** The built page. */
export const built = process.env.MATHEXPR_PAGE;

/** What the tests but those of the budget ask of the server. */
export const quickCompression = 4;

/** Milliseconds that something may take that has to come: other work may keep the machine busy. */
const patience = 30_000;

let browser;
let server;

before(async () => {
  assert.ok(built, "MATHEXPR_PAGE names the built page");
  browser = await chromium.launch({
    executablePath: "/usr/bin/chromium",
    args: ["--no-sandbox"], // root, as in CI, has none
    env: { ...process.env, FONTCONFIG_FILE: fileURLToPath(new URL("fonts.conf", import.meta.url)) },
  });
  server = await serve(built, 0, quickCompression);
});

after(async () => {
  await browser.close();
  server.closeAllConnections();
  server.close();
});

export const address = () => addressOf(server);

/**
 * Opens the page, and holds that nothing is written to the console until the test ends.
 * @param {import("node:test").TestContext} t
 * @param {object} [options]
 * @param {string} [options.sheet]  that the browser has kept
 * @param {string} [options.fragment]
 * @param {string} [options.at]  where the page is served
 * @param {(page: import("playwright-core").Page) => Promise<void>} [options.prepare]  called before the page is opened
 * @param {import("playwright-core").BrowserContextOptions} [options.browser]
 */
export async function openPage(t, { sheet, fragment = "", at = address(), prepare, browser: contextOptions } = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, locale: "en", ...contextOptions });
  if (sheet !== undefined) {
    // Only where nothing is kept yet, so that a reload finds what the page has kept.
    await context.addInitScript((text) => localStorage.getItem("mathexpr.sheet") ?? localStorage.setItem("mathexpr.sheet", text), sheet);
  }
  context.setDefaultTimeout(patience);
  const page = await context.newPage();
  const said = [];
  page.on("console", (message) => said.push(`${message.type()}: ${message.text()}`));
  page.on("pageerror", (error) => said.push(error.stack));
  t.after(async () => {
    await context.close();
    assert.deepEqual(said, [], "nothing is written to the console");
  });
  await prepare?.(page);
  await page.goto(at + fragment);
  await page.waitForSelector("#canvas svg .scale");
  return page;
}

/** Types lines into an empty sheet. */
export async function type(page, text) {
  await page.click(".cm-content");
  await page.keyboard.press("Control+a");
  await page.keyboard.press("Delete");
  await page.keyboard.type(text);
}

/** Waits for the list of completions, and until it takes keys: not as it appears under the hands of somebody who types. */
export async function completions(page) {
  const list = page.getByRole("listbox", { name: "Completions" });
  await list.waitFor();
  await page.waitForTimeout(150);
  return list;
}

/** The values at the right, by line; "" where a line has none. */
export const values = (page) =>
  page.evaluate(() =>
    [...document.getElementById("editor").shadowRoot.querySelectorAll(".cm-line")].map(
      (line) => line.querySelector(".value")?.textContent ?? "",
    ),
  );

/** Waits until the values are as expected. */
export async function expectValues(page, expected) {
  await eventually(() => values(page), expected);
}

/** The text of the sheet, as the browser keeps it. */
export const keptSheet = (page) => page.evaluate(() => localStorage.getItem("mathexpr.sheet"));

/** Asks until the answer is as expected. */
export async function eventually(ask, expected) {
  const end = Date.now() + patience;
  for (;;) {
    const answer = await ask();
    try {
      return assert.deepEqual(answer, expected);
    } catch (error) {
      if (Date.now() > end) throw error;
    }
    await new Promise((resolve) => setTimeout(resolve, 30));
  }
}
