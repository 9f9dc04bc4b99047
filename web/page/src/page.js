// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** page.js - connects the page's parts: the editor, the engine in its worker, the picture, and the controls. */
import { Announcer } from "./announcer.js";
import { SheetEditor } from "./editor/editor.js";
import { Engine } from "./engine/client.js";
import { latest } from "./latest.js";
import { showPoints } from "./picture/points-table.js";
import { Picture } from "./picture/picture.js";
import { drawnAlike } from "./picture/scene.js";
import { example } from "./sheet/example.js";
import { save, textOf } from "./sheet/files.js";
import { fragmentOf, holdsSheet, sheetOf } from "./sheet/link.js";
import { load, store } from "./sheet/store.js";
import { readSettings, useSettings } from "./settings.js";
import { showSignature } from "./signature.js";
import { useTabs } from "./tabs.js";
import { texts } from "./texts.js";
import { VocabularyPanel } from "./vocabulary/panel.js";

const byId = (id) => document.getElementById(id);

/** Shows a notice below the heading; with a button if there is a label. */
function notify(text, label = "", act = () => undefined) {
  const notice = byId("notice");
  const button = notice.querySelector("button");
  notice.hidden = false;
  notice.querySelector("span").textContent = text;
  button.hidden = !label;
  button.textContent = label;
  button.onclick = () => {
    notice.hidden = true;
    act();
  };
}

const settings = readSettings();
const engine = new Engine(workerUrl, settings, () => evaluation.start());
const announcer = new Announcer();
let results = [];

const editor = new SheetEditor(byId("editor"), {
  text: load("sheet") ?? example,
  typeset: settings.typeset,
  language: settings.language,
  ask: (kind, parameters) => engine.ask(kind, parameters),
  onChange: () => {
    evaluation.start();
    store("sheet", editor.text);
  },
  onTooLong: () => notify(texts.tooLong),
  onCursor: () => help.start(),
});

const picture = new Picture(byId("canvas"), byId("gaps"), {
  askCurve: (parameters) => engine.ask("curve", parameters),
  onMove: (line, source, handle, text) => editor.rewrite(line, source, handle, text),
});

const vocabulary = new VocabularyPanel(engine, (line) => editor.append(line));

const evaluation = latest(async () => {
  const before = results;
  results = await engine.evaluate(editor.lines);
  editor.showResults(results);
  if (!drawnAlike(before, results)) {
    picture.show(results);
    showPoints(byId("points"), results);
  }
  const { line, text, hasFocus } = editor.cursor;
  if (hasFocus && results[line]?.source === text) announcer.announce(results[line], line, settings.language);
});

const help = latest(async () => {
  const { hasFocus, ...place } = editor.cursor;
  showSignature(byId("signature"), hasFocus ? await engine.ask("signature", place) : null);
});

useSettings(settings, {
  digits: async (digits) => {
    await engine.set("digits", digits);
    await evaluation.start();
  },
  language: async (language) => {
    editor.language = language;
    await engine.set("language", language);
    await evaluation.start();
  },
  typeset: (typeset) => {
    editor.typeset = typeset;
  },
  picture: (options) => {
    picture.options = options;
  },
});

useTabs((panel) => {
  if (panel === "vocabulary") vocabulary.show();
});

/** Replaces the sheet. A button of the notice restores the previous one. */
function replaceSheet(text, said, label) {
  const before = editor.text;
  editor.replaceAll(text);
  picture.fit();
  if (before !== text) notify(said, label, () => editor.replaceAll(before));
}

byId("new").onclick = () => {
  replaceSheet("", texts.removed, texts.undo);
  editor.focus();
};
byId("open").onclick = () => byId("file").click();
byId("file").onchange = async ({ target }) => {
  const [file] = target.files;
  target.value = "";
  if (!file) return;
  const text = await textOf(file);
  if (text === null) notify(texts.tooLong);
  else replaceSheet(text, file.name, texts.undo);
};
byId("save").onclick = () => save("sheet.txt", editor.text, "text/plain");
byId("link").onclick = async () => {
  const fragment = await fragmentOf(editor.text);
  if (fragment === null) return notify(texts.tooLong);
  const link = `${location.origin}${location.pathname}${fragment}`;
  try {
    await navigator.clipboard.writeText(link);
    notify(texts.linkCopied);
  } catch {
    history.replaceState(null, "", link); // so that the user can copy it from the address bar
  }
};
byId("print").onclick = () => print();
byId("zoom-in").onclick = picture.zoomIn;
byId("zoom-out").onclick = picture.zoomOut;
byId("fit").onclick = () => picture.fit();
byId("svg").onclick = async () => {
  const { svgText } = await import("./picture/export.js");
  save("picture.svg", svgText(picture.element), "image/svg+xml");
};
byId("about").onclick = async () => {
  byId("about-dialog").showModal();
  const licences = byId("licences");
  licences.textContent ||= await (await fetch(licences.dataset.file)).text();
};

async function openLink() {
  const { hash } = location;
  if (!holdsSheet(hash)) return;
  history.replaceState(null, "", location.pathname);
  const text = await sheetOf(hash);
  if (text === null) notify(texts.badLink);
  else replaceSheet(text, texts.linked, texts.earlier);
}

addEventListener("hashchange", openLink);
await openLink();
try {
  await engine.ready;
  await evaluation.start();
} catch {
  notify(texts.noEngine);
}
navigator.serviceWorker?.register("service-worker.js").catch(() => undefined); // only needed offline
