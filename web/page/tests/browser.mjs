// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** browser.mjs - runs the built page in Debian's Chromium: a server, the browser, and helpers of the tests. */
import assert from "node:assert/strict";
import { after, before } from "node:test";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";
import { addressOf, serve } from "../serve.mjs";

/** Folder of the built page. */
export const built = process.env.MATHEXPR_PAGE;

/** Compression quality for all tests except those of the budget. */
export const quickCompression = 4;

/** Timeout in milliseconds; long, since the machine may be busy. */
const patience = 30_000;

let browser;
let server;

before(async () => {
  assert.ok(built, "MATHEXPR_PAGE names the built page");
  browser = await chromium.launch({
    executablePath: "/usr/bin/chromium",
    args: ["--no-sandbox"], // the sandbox does not work for root, as in CI
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
 * Opens the page; the test fails if anything is written to the console.
 * @param {import("node:test").TestContext} t
 * @param {object} [options]
 * @param {string} [options.sheet]  the stored sheet
 * @param {string} [options.fragment]
 * @param {string} [options.at]  URL of the page
 * @param {(page: import("playwright-core").Page) => Promise<void>} [options.prepare]  called before the page is opened
 * @param {import("playwright-core").BrowserContextOptions} [options.browser]
 */
export async function openPage(t, { sheet, fragment = "", at = address(), prepare, browser: contextOptions } = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, locale: "en", ...contextOptions });
  if (sheet !== undefined) {
    // Only if nothing is stored, so that a reload finds the sheet that the page has stored.
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

/** Waits for the list of completions, and until it accepts keys: it ignores them just after it appears. */
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

/** Waits for the expected values. */
export async function expectValues(page, expected) {
  await eventually(() => values(page), expected);
}

/** The stored text of the sheet. */
export const keptSheet = (page) => page.evaluate(() => localStorage.getItem("mathexpr.sheet"));

/** Repeats a question until it has the expected answer. */
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
