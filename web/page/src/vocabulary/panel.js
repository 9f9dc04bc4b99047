// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** panel.js - the vocabulary, searched by words and units and filtered by family. A click on an example adds it to the sheet. */
import { texts } from "../texts.js";

export class VocabularyPanel {
  #engine;
  #onUse;
  #words = /** @type {HTMLInputElement} */ (document.getElementById("words"));
  #family = /** @type {HTMLSelectElement} */ (document.getElementById("family"));
  #found = document.getElementById("found");
  #items = document.getElementById("items");
  #vocabulary = [];

  /**
   * @param {import("../engine/client.js").Engine} engine
   * @param {(example: string) => void} onUse
   */
  constructor(engine, onUse) {
    this.#engine = engine;
    this.#onUse = onUse;
    this.#words.addEventListener("input", () => this.#search());
    this.#family.addEventListener("change", () => this.#search());
  }

  /** Loads the vocabulary when it is shown for the first time. */
  async show() {
    if (this.#vocabulary.length) return;
    this.#vocabulary = await this.#engine.ask("vocabulary");
    const families = [...new Set(this.#vocabulary.map(({ family }) => family))];
    this.#family.replaceChildren(new Option(texts.allFamilies, ""), ...families.map((family) => new Option(family, family)));
    await this.#search();
  }

  async #search() {
    const words = this.#words.value.trim();
    const family = this.#family.value;
    const keys = new Set(words ? await this.#engine.ask("find", { words }) : this.#vocabulary.map(({ key }) => key));
    if (words !== this.#words.value.trim()) return;
    const shown = this.#vocabulary.filter((item) => keys.has(item.key) && (!family || item.family === family));
    this.#found.textContent = texts.found(shown.length);
    this.#items.replaceChildren(...shown.map((item) => this.#row(item)));
  }

  #row({ key, description, unit, domain, example, value }) {
    const row = document.createElement("li");
    const name = document.createElement("code");
    name.textContent = key;
    const about = document.createElement("span");
    about.textContent = [description, unit, domain].filter(Boolean).join(" · ");
    row.append(name, about);
    if (example) {
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = value ? `${example} = ${value}` : example;
      button.setAttribute("aria-label", texts.use(button.textContent));
      button.onclick = () => this.#onUse(example);
      row.append(button);
    }
    return row;
  }
}
