// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** settings.js - the user's settings: digits, language, colours, and options of the picture. */
import { load, store } from "./sheet/store.js";
import { texts } from "./texts.js";

const languages = [
  ["en", "English"],
  ["de", "Deutsch"],
  ["fr", "Français"],
  ["es", "Español"],
  ["it", "Italiano"],
  ["pt", "Português"],
  ["ja", "日本語"],
  ["zh", "简体中文"],
];

const digits = [6, 9, 12, 15, 17, 0];
const field = (id) => /** @type {HTMLInputElement} */ (document.getElementById(id));

const usual = {
  digits: 15,
  language: "en",
  colours: "light dark",
  typeset: true,
  grid: true,
  vectors: false,
  space: false,
  unit: "",
};

/** Reads the stored settings and ignores invalid ones. On a first visit the language is the browser's. */
export function readSettings() {
  const preferred = navigator.language.slice(0, 2);
  const settings = { ...usual, language: languages.some(([tag]) => tag === preferred) ? preferred : "en" };
  let stored = {};
  try {
    stored = JSON.parse(load("settings") ?? "{}") ?? {};
  } catch {
    // Not written by this page: the defaults apply.
  }
  for (const name of Object.keys(usual)) if (typeof stored[name] === typeof usual[name]) settings[name] = stored[name];
  if (!languages.some(([tag]) => tag === settings.language)) settings.language = "en";
  if (!digits.includes(settings.digits)) settings.digits = usual.digits;
  settings.unit = settings.unit.slice(0, 8);
  return settings;
}

/**
 * Initialises the fields with the settings, and calls `on` when the user changes them.
 * @param {ReturnType<typeof readSettings>} settings
 * @param {{digits: (digits: number) => void, language: (tag: string) => void, typeset: (typeset: boolean) => void,
 *          picture: (options: object) => void}} on
 */
export function useSettings(settings, on) {
  field("digits").append(...digits.map((count) => new Option(count ? String(count) : texts.allDigits, String(count))));
  field("language").append(
    ...languages.map(([tag, name]) => {
      const option = new Option(name, tag);
      option.lang = tag;
      return option;
    }),
  );
  const paint = () => document.documentElement.style.setProperty("color-scheme", settings.colours);
  const pictureOptions = () => on.picture({ grid: settings.grid, vectors: settings.vectors, space: settings.space, unit: settings.unit });
  const bind = (name, act, read, write) => {
    write(field(name), settings[name]);
    field(name).addEventListener("input", () => {
      settings[name] = read(field(name));
      store("settings", JSON.stringify(settings));
      act(settings[name]);
    });
  };
  const bindText = (name, act, convert = String) =>
    bind(name, act, ({ value }) => convert(value), (element, value) => (element.value = String(value)));
  const bindCheck = (name, act) => bind(name, act, ({ checked }) => checked, (element, value) => (element.checked = value));
  bindText("digits", on.digits, Number);
  bindText("language", on.language);
  bindText("colours", paint);
  bindText("unit", pictureOptions);
  bindCheck("typeset", on.typeset);
  bindCheck("grid", pictureOptions);
  bindCheck("vectors", pictureOptions);
  bindCheck("space", pictureOptions);
  paint();
  pictureOptions();
}
