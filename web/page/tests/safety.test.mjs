// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** safety.test.mjs - links, hostile input, working offline, and successive deployments. */
import assert from "node:assert/strict";
import { cp, mkdtemp, readFile, readdir, rename, rm, writeFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import path from "node:path";
import { test } from "node:test";
import { deflateRawSync } from "node:zlib";
import { addressOf, serve } from "../serve.mjs";
import { address, built, eventually, expectValues, keptSheet, openPage, quickCompression, type } from "./browser.mjs";

const fragmentOf = (bytes) => `#sheet=${deflateRawSync(bytes).toString("base64url")}`;
const notice = (page) => page.textContent("#notice span");

/** Resolves when the service worker controls the page. */
const controlled = (page) =>
  page.evaluate(async () => {
    await navigator.serviceWorker.ready;
    while (!navigator.serviceWorker.controller) await new Promise((resolve) => setTimeout(resolve, 20));
  });

test("a link contains the sheet, and a new window opens it", async (t) => {
  const page = await openPage(t, { browser: { permissions: ["clipboard-read", "clipboard-write"] } });
  await type(page, "größe = 2\ngröße*3 ");
  await expectValues(page, ["2", "6"]);
  await page.click("#link");
  await eventually(() => notice(page), "The link is copied. It holds the sheet.");
  const link = await page.evaluate(() => navigator.clipboard.readText());
  const other = await openPage(t, { fragment: link.slice(link.indexOf("#")), sheet: "7*7" });
  await expectValues(other, ["2", "6"]);
  assert.equal(new URL(other.url()).hash, "", "later edits are not those of the link");
  await other.getByRole("button", { name: "Back to my sheet" }).click();
  await expectValues(other, ["49"]);
});

test("a hostile link yields only text", async (t) => {
  const hostile = `<img src=x onerror="document.title='taken'">\n"><script>document.title='taken'</script>\njavascript:1`;
  const page = await openPage(t, { fragment: fragmentOf(hostile) });
  await page.locator(".problem").first().waitFor();
  await eventually(() => keptSheet(page), hostile);
  assert.equal(await page.title(), "mathexpr");
  assert.equal(await page.evaluate(() => document.getElementById("editor").shadowRoot.querySelectorAll("img:not(.cm-widgetBuffer), script").length), 0);
});

for (const [what, fragment] of [
  ["no base 64", "#sheet=%%%"],
  ["nothing that was deflated", "#sheet=AAAA"],
  ["ill-formed UTF-8", fragmentOf(Buffer.from([0x31, 0xff, 0x31]))],
  ["text that unpacks to millions of characters", fragmentOf(Buffer.alloc(8_000_000, "1"))],
  ["a fragment of a million characters", `#sheet=${"A".repeat(1_000_000)}`],
]) {
  test(`a link that contains ${what} does not change the sheet`, async (t) => {
    const page = await openPage(t, { fragment, sheet: "6*7" });
    await eventually(() => notice(page), "The link holds no sheet.");
    await expectValues(page, ["42"]);
    assert.equal(await keptSheet(page), "6*7");
  });
}

test("a line of any length is refused or computed, and the page keeps working", async (t) => {
  const page = await openPage(t, { sheet: `${"(".repeat(20_000)}\n${"1+".repeat(4_000)}1\n1+1` });
  await page.click(".cm-content");
  await page.keyboard.press("Control+End");
  await page.keyboard.type("+1");
  await eventually(async () => (await page.locator(".value").allTextContents()).at(-1), "3");
});

test("a change that would make the sheet too long is refused with a notice", async (t) => {
  const page = await openPage(t, { sheet: "1+1" });
  await page.click(".cm-content");
  await page.keyboard.press("Control+End");
  await page.keyboard.insertText("1".repeat(400_000));
  await eventually(() => notice(page), "That is too long.");
  assert.equal(await keptSheet(page), "1+1");
  await page.keyboard.type("+1");
  await expectValues(page, ["3"]);
});

test("invalid stored settings are replaced by those of a first visit", async (t) => {
  const page = await openPage(t, {
    sheet: "1/3",
    prepare: (opened) =>
      opened.addInitScript(() => localStorage.setItem("mathexpr.settings", '{"digits":"<b>","language":"xx","unit":{},"colours":7}')),
  });
  await expectValues(page, ["0.333333333333333"]);
  assert.equal(await page.inputValue("#language"), "en");
});

test("everything comes from the page's own server", async (t) => {
  const asked = [];
  const page = await openPage(t, { sheet: "1+1", prepare: async (opened) => void opened.on("request", (request) => asked.push(request.url())) });
  await page.click("#about");
  await eventually(async () => /@codemirror\/view[^]*\nmusl\n/.test(await page.textContent("#licences")), true);
  assert.deepEqual(asked.filter((url) => !url.startsWith(address()) && !url.startsWith("data:") && !url.startsWith("blob:")), []);
});

test("the page's files contain no eval and no inline script or style", async () => {
  const html = await readFile(path.join(built, "index.html"), "utf8");
  assert.doesNotMatch(html, /<style|style=|<script(?![^>]*src=)|\son\w+=/);
  assert.match(html, /script-src 'self' 'wasm-unsafe-eval';/);
  for (const name of (await readdir(built)).filter((file) => file.endsWith(".js"))) {
    const text = await readFile(path.join(built, name), "utf8");
    assert.doesNotMatch(text, /\bnew Function\b|\beval\(/, name);
    assert.doesNotMatch(text, /https?:\/\/(?!www\.w3\.org\/)/, name);
  }
});

test("the page works offline after the first visit", async (t) => {
  const page = await openPage(t, { sheet: "3*4" });
  await expectValues(page, ["12"]);
  await controlled(page);
  await page.context().setOffline(true);
  await page.reload();
  await expectValues(page, ["12"]);
  await type(page, "sqrt(2)");
  await expectValues(page, ["1.4142135623731"]);
  await page.click("#about");
  await eventually(async () => (await page.textContent("#licences")).length > 1000, true);
});

/** Renames the files of a folder, as another deployment would. */
async function redeploy(folder) {
  const hashed = /-\w{8,10}\./;
  const names = (await readdir(folder)).filter((name) => hashed.test(name));
  const renamed = new Map(names.map((name, index) => [name, name.replace(hashed, `-${10_000_000 + index}.`)]));
  for (const file of await readdir(folder)) {
    if (!/\.(js|html)$/.test(file)) continue;
    let text = await readFile(path.join(folder, file), "utf8");
    for (const [name, next] of renamed) text = text.replaceAll(name, next);
    if (file === "service-worker.js") text = text.replace(/"[0-9a-f]{10}"/, '"0123456789"');
    await writeFile(path.join(folder, file), text);
  }
  for (const [name, next] of renamed) await rename(path.join(folder, name), path.join(folder, next));
}

test("an open page keeps its files after a new deployment, and the next visit gets the new ones", async (t) => {
  const folder = await mkdtemp(path.join(tmpdir(), "mathexpr-page-"));
  t.after(() => rm(folder, { recursive: true }));
  await cp(built, folder, { recursive: true });
  const server = await serve(folder, 0, quickCompression);
  t.after(() => {
    server.closeAllConnections();
    server.close();
  });
  const page = await openPage(t, { at: addressOf(server), sheet: "A=[1,2]" });
  await controlled(page);
  const scriptOf = (opened) => opened.getAttribute("script[type=module]", "src");
  const before = await scriptOf(page);
  await redeploy(folder);
  await page.evaluate(async () => void (await (await navigator.serviceWorker.getRegistration()).update()));
  const [download] = await Promise.all([page.waitForEvent("download"), page.click("#svg")]);
  assert.equal(download.suggestedFilename(), "picture.svg", "a part that was not loaded before comes from the old cache");
  const context = page.context();
  await page.close();
  const next = await context.newPage();
  await eventually(async () => {
    // The new deployment becomes active only while no page is open.
    await next.goto("about:blank");
    await next.waitForTimeout(500);
    await next.goto(addressOf(server));
    return (await scriptOf(next)) !== before;
  }, true);
  await expectValues(next, ["[1,2,0]"]);
  assert.equal((await next.evaluate(() => caches.keys())).length, 1, "the old cache is gone");
});
