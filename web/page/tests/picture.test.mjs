// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** picture.test.mjs - drawing, moving points, panning, zooming and rotating. */
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { test } from "node:test";
import { eventually, expectValues, keptSheet, openPage, type } from "./browser.mjs";

const point = (page, label) => page.locator(`#canvas [aria-label^="${label} at"]`);
const labels = (page) => page.locator("#canvas .point").evaluateAll((points) => points.map((p) => p.getAttribute("aria-label")));

test("points, a distance, an intersection and a vector are drawn", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[30,40]\ndist(A,B)\nP=ill(A,[40,40],[0,40],[40,0])\nv=vec(A,P)\n" });
  await eventually(() => labels(page), ["A at 0, 0", "B at 30, 40", "P at 20, 20", "Line 4 at 40, 40", "Line 4 at 0, 40", "Line 4 at 40, 0"]);
  assert.equal(await page.locator("#canvas .dimension text").textContent(), "50");
  assert.equal(await page.locator("#canvas .line").count(), 2);
  assert.equal(await page.locator("#canvas .vector").count(), 1);
  await page.check("#vectors");
  assert.equal(await page.locator("#canvas .vector").count(), 4);
  await page.fill("#unit", "mm");
  assert.equal(await page.locator("#canvas .dimension text").textContent(), "50 mm");
  await page.uncheck("#grid");
  assert.equal(await page.locator("#canvas .grid line").count(), 0);
  await page.click("#tab-points");
  const rows = await page.locator("#points tr").evaluateAll((all) => all.map((row) => [...row.cells].map((cell) => cell.textContent)));
  assert.deepEqual(rows, [
    ["Line", "Name", "x", "y", "z"],
    ["1", "A", "0", "0", "0"],
    ["2", "B", "30", "40", "0"],
    ["4", "P", "20", "20", "0"],
    ["5", "v", "20", "20", "0"],
  ]);
});

test("dragging a point changes its line and dependent lines", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB = [30, 40] \nC=B*2\ndist(A,B)" });
  const { x, y } = await centre(point(page, "B"));
  const origin = await centre(point(page, "A"));
  const unit = (x - origin.x) / 30;
  await page.mouse.move(x, y);
  await page.mouse.down();
  await page.mouse.move(x - 10 * unit, y + 5 * unit, { steps: 8 });
  await page.mouse.move(x - 15 * unit, y + 20 * unit, { steps: 8 });
  await page.mouse.up();
  await eventually(async () => /^A=\[0,0\]\nB = \[15(\.\d)?,20(\.\d)?\] \nC=B\*2\ndist\(A,B\)$/.test(await keptSheet(page)), true);
  await page.click(".cm-content");
  for (let step = 0; step < 20 && (await keptSheet(page)) !== "A=[0,0]\nB = [30, 40] \nC=B*2\ndist(A,B)"; ++step) {
    await page.keyboard.press("Control+z");
  }
  await expectValues(page, ["[0,0,0]", "[30,40,0]", "[60,80,0]", "50"]);
});

async function centre(locator) {
  await locator.waitFor();
  const { x, y, width, height } = await locator.locator("circle").first().boundingBox();
  return { x: x + width / 2, y: y + height / 2 };
}

test("the arrow keys move a point, which keeps the focus", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[10,10,7]\n" });
  await point(page, "B").focus();
  await page.keyboard.press("Shift+ArrowRight");
  await eventually(async () => (await keptSheet(page)).split("\n")[1] !== "B=[10,10,7]", true);
  const moved = (await keptSheet(page)).split("\n")[1];
  assert.match(moved, /^B=\[1\d(\.\d+)?,10,7\]$/);
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute("aria-label").startsWith("B at 1")), true);
  for (let step = 0; step < 5; ++step) await page.keyboard.press("ArrowDown");
  await eventually(async () => /^B=\[1\d(\.\d+)?,9(\.\d+)?,7\]$/.test((await keptSheet(page)).split("\n")[1]), true);
});

test("one finger drags a point, two fingers zoom", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[10,10]\n", browser: { hasTouch: true, isMobile: true, viewport: { width: 390, height: 844 } } });
  await page.locator("#canvas").evaluate((canvas) => canvas.scrollIntoView({ block: "center" }));
  const { x, y } = await centre(point(page, "B"));
  const session = await page.context().newCDPSession(page);
  const touch = (kind, ...touchPoints) =>
    session.send("Input.dispatchTouchEvent", { type: kind, touchPoints: touchPoints.map(([left, top], id) => ({ x: left, y: top, id })) });
  await touch("touchStart", [x, y]);
  await touch("touchMove", [x - 10, y + 4]);
  await touch("touchMove", [x - 40, y]);
  await touch("touchEnd");
  await eventually(async () => /^A=\[0,0\]\nB=\[[5-9](\.\d+)?,(9|10)(\.\d+)?\]\n$/.test(await keptSheet(page)), true);
  const kept = await keptSheet(page);
  const distance = async () => (await centre(point(page, "B"))).x - (await centre(point(page, "A"))).x;
  const before = await distance();
  const canvas = await page.locator("#canvas").boundingBox();
  const [left, top] = [canvas.x + canvas.width / 2, canvas.y + canvas.height / 2];
  for (const [kind, apart] of [["touchStart", 30], ["touchMove", 45], ["touchMove", 60]]) {
    await touch(kind, [left - apart, top + 30], [left + apart, top + 30]);
  }
  await touch("touchEnd");
  const after = await distance();
  assert.ok(after > 1.5 * before, `${before} ${after}`);
  assert.equal(await keptSheet(page), kept);
  const heights = await page.locator("button:visible").evaluateAll((all) => all.map((button) => button.getBoundingClientRect().height));
  assert.ok(Math.min(...heights) >= 44, heights.join());
});

test("a drag changes nothing after its point has disappeared", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[10,10]\n" });
  const { x, y } = await centre(point(page, "B"));
  await page.mouse.move(x, y);
  await page.mouse.down();
  await page.setInputFiles("#file", { name: "other.txt", mimeType: "text/plain", buffer: Buffer.from("1+2") });
  await expectValues(page, ["3"]);
  await page.locator("#canvas .point").first().waitFor({ state: "detached" });
  await page.mouse.move(x - 20, y + 5, { steps: 3 });
  await page.mouse.up();
  assert.equal(await keptSheet(page), "1+2");
});

test("a computed point is not movable", async (t) => {
  const page = await openPage(t, { sheet: "w=3\nA=[w,4]\n" });
  assert.equal(await point(page, "A").getAttribute("role"), "img");
  assert.equal(await point(page, "A").getAttribute("tabindex"), null);
});

test("a line with a free x is plotted, with gaps where it has no value", async (t) => {
  const page = await openPage(t, { sheet: "1/(x-1)\nsqrt(x)\nx^2\n" });
  const gaps = () => page.locator("#gaps li").allTextContents();
  await eventually(async () => (await gaps()).length, 2);
  const [divided, rooted] = await gaps();
  assert.match(divided, /^Line 1: open at x = 1: The divisor is 0/);
  assert.match(rooted, /^Line 2: open from x = -1\d\.\d+ to 0: sqrt needs a number greater than 0/);
  const pieces = await page.locator("#canvas .curve").evaluateAll((all) => all.map((c) => c.getAttribute("d").match(/M/g).length));
  assert.deepEqual(pieces, [2, 1, 1]);
  assert.deepEqual(await page.locator("#canvas .label").allTextContents(), ["Line 1", "Line 2", "Line 3"]);
  assert.equal(await page.locator("#canvas .open").count(), 1);
});

test("mouse and keys pan and zoom, and Fit shows everything again", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[10,10]\n" });
  const box = () => point(page, "B").locator("circle").first().boundingBox();
  await point(page, "B").waitFor();
  const first = await box();
  await page.click("#zoom-in");
  assert.notDeepEqual(await box(), first);
  await page.click("#fit");
  assert.deepEqual(await box(), first);
  const { x, y } = await page.locator("#canvas").boundingBox();
  await page.mouse.move(x + 60, y + 60);
  await page.mouse.down();
  await page.mouse.move(x + 90, y + 100);
  await page.mouse.up();
  const panned = await box();
  assert.equal(Math.round(panned.x - first.x), 30);
  assert.equal(Math.round(panned.y - first.y), 40);
  await page.locator("#canvas svg").focus();
  await page.keyboard.press("0");
  assert.deepEqual(await box(), first);
  await page.keyboard.press("ArrowLeft");
  assert.equal(Math.round((await box()).x - first.x), 40);
  await page.mouse.wheel(0, -200);
  assert.ok((await box()).x !== first.x);
});

test("mouse and keys rotate the picture in space, and it returns to the plan", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[10,0]\nC=[0,0,10]\n" });
  const at = async (label) => {
    const { x, y } = await centre(point(page, label));
    return [x, y];
  };
  const all = async () => [await at("A"), await at("B"), await at("C")];
  const plan = await all();
  assert.deepEqual(plan[0], plan[2], "in plan C lies on A");
  await page.check("#space");
  const [a, b, c] = await all();
  assert.ok(Math.abs(a[0] - c[0]) < 0.1 && c[1] < a[1] - 50, "z is up");
  assert.ok(b[0] > a[0] + 50, "x is to the right");
  assert.deepEqual(await page.locator("#canvas .tripod text").allTextContents(), ["x", "y", "z"]);
  assert.equal(await page.locator("#canvas .stem").count(), 1);
  assert.equal(await point(page, "C").getAttribute("aria-label"), "C at 0, 0, 10");

  const box = await page.locator("#canvas").boundingBox();
  const drag = async () => {
    await page.mouse.move(box.x + 60, box.y + 60);
    await page.mouse.down();
    await page.mouse.move(box.x + 110, box.y + 80, { steps: 4 });
    await page.mouse.up();
  };
  const apart = ([one, other]) => [other[0] - one[0], other[1] - one[1]];
  await drag();
  const turned = await all();
  assert.notDeepEqual(apart(turned), apart([a, b]), "the background turns");
  await page.keyboard.down("Shift");
  await drag();
  await page.keyboard.up("Shift");
  const panned = await all();
  const moves = panned.map(([x, y], index) => [Math.round(x - turned[index][0]), Math.round(y - turned[index][1])]);
  assert.deepEqual(moves, [[50, 20], [50, 20], [50, 20]]);

  await page.locator("#canvas svg").focus();
  await page.keyboard.press("ArrowLeft");
  await page.keyboard.press("ArrowUp");
  assert.notDeepEqual(apart(await all()), apart(panned));
  await page.uncheck("#space");
  assert.deepEqual(await all(), plan);
  assert.equal(await page.locator("#canvas .tripod").count(), 0);
});

test("in space a point is dragged at constant z, and keys change its z", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\nB=[10,10,7]\nC=[20,0]\n" });
  await page.check("#space");
  const { x, y } = await centre(point(page, "B"));
  await page.mouse.move(x, y);
  await page.mouse.down();
  await page.mouse.move(x + 40, y - 10, { steps: 4 });
  await page.mouse.up();
  const line = async (index) => (await keptSheet(page)).split("\n")[index];
  await eventually(async () => /^B=\[1\d(\.\d+)?,\d+(\.\d+)?,7\]$/.test(await line(1)) && (await line(1)) !== "B=[10,10,7]", true);
  await eventually(async () => Math.abs((await centre(point(page, "B"))).x - (x + 40)) < 3, true);
  await point(page, "C").focus();
  await page.keyboard.press("Shift+PageUp");
  await eventually(async () => /^C=\[20,0,[125]0?\]$/.test(await line(2)), true);
  const level = async () => Number((await line(2)).match(/^C=\[20,0,(-?\d+)\]$/)[1]);
  const raised = await level();
  await page.keyboard.press("Shift+PageDown"); // the step differs if the picture's scale has changed
  await eventually(async () => (await level()) < raised, true);
});

/** Opens a page whose sheet has the focus, with spreadsheet columns in the clipboard. */
async function openWithCopied(t, columns, sheet) {
  const page = await openPage(t, { sheet, browser: { permissions: ["clipboard-read", "clipboard-write"] } });
  await page.evaluate((text) => navigator.clipboard.writeText(text), columns);
  await page.click(".cm-content");
  return page;
}

test("pasted spreadsheet columns are a polyline with movable corners", async (t) => {
  const page = await openWithCopied(t, "x\ty\r\n0\t0\r\n10\t2.5\r\n20\t0.5\r\n", "a=1");
  await page.keyboard.press("Control+End");
  await page.keyboard.press("Control+v");
  const pasted = "a=1\n# x, y\n[0,0]\n[10,2.5]\n[20,0.5]";
  await eventually(() => keptSheet(page), pasted);
  const polyline = page.getByRole("img", { name: "Line 3–5" });
  await polyline.waitFor();
  assert.equal((await polyline.getAttribute("d")).match(/L/g).length, 2);
  await eventually(() => labels(page), ["Line 3 at 0, 0", "Line 4 at 10, 2.5", "Line 5 at 20, 0.5"]);
  await point(page, "Line 4").focus();
  await page.keyboard.press("Shift+ArrowUp");
  await eventually(async () => /^a=1\n# x, y\n\[0,0\]\n\[10,[3-9](\.\d+)?\]\n\[20,0\.5\]$/.test(await keptSheet(page)), true);
  await page.click(".cm-content");
  for (let step = 0; step < 5 && (await keptSheet(page)) !== "a=1"; ++step) await page.keyboard.press("Control+z");
  await eventually(() => keptSheet(page), "a=1");
  await page.locator("#canvas .polyline").waitFor({ state: "detached" });
});

test("columns pasted within a line are inserted on separate lines", async (t) => {
  const page = await openWithCopied(t, "0\t0\n1\t2", "1+2");
  await page.keyboard.press("Home");
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("Control+v");
  await eventually(() => keptSheet(page), "1\n[0,0]\n[1,2]\n+2");
});

test("the picture is exported as a standalone SVG", async (t) => {
  const page = await openPage(t, { sheet: "A=[0,0]\ndist(A,[3,4])\nx^2\n" });
  await page.locator("#canvas .curve").waitFor();
  const [download] = await Promise.all([page.waitForEvent("download"), page.click("#svg")]);
  const text = await readFile(await download.path(), "utf8");
  assert.match(text, /^<svg [^>]*xmlns="http:\/\/www.w3.org\/2000\/svg"/);
  assert.doesNotMatch(text, /class=|role=|tabindex|var\(/);
  const drawn = await page.evaluate((source) => {
    const { documentElement } = new DOMParser().parseFromString(source, "image/svg+xml");
    return [...documentElement.querySelectorAll("text")].map((element) => element.textContent);
  }, text);
  assert.ok(drawn.includes("A") && drawn.includes("5"), drawn.join());
});

test("a click on an example of the vocabulary adds it to the sheet", async (t) => {
  const page = await openPage(t, { sheet: "1" });
  await page.click("#tab-vocabulary");
  await page.fill("#words", "inch mm");
  await eventually(async () => (await page.locator("#items code").allTextContents()).includes("i2mm(x)"), true);
  await page.getByRole("button", { name: /^Add i2mm/ }).click();
  await eventually(async () => (await keptSheet(page)).startsWith("1\ni2mm("), true);
  await page.fill("#words", "");
  await page.selectOption("#family", "geometry");
  await eventually(async () => (await page.locator("#items code").allTextContents()).includes("dist(x,y)"), true);
});

test("the picture of a sheet without points explains what is drawn", async (t) => {
  const page = await openPage(t, { sheet: "1+1" });
  await expectValues(page, ["2"]);
  assert.ok(await page.locator("#canvas .empty").isVisible());
  await type(page, "[1,2]");
  await page.locator("#canvas .empty").waitFor({ state: "hidden" });
});
