// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** curves.js - requests the curves of a picture, over the visible range and half its width beyond each side. */
import { latest } from "../latest.js";

const samplesPerPixel = 1;
const minSamples = 200;
const maxSamples = 4_000;

export class Curves {
  #ask;
  #onChange;
  #computation = latest(() => this.#computeAll());
  #wanted = [];
  #view;
  /** @type {Map<number, {source: string, pieces: [number, number][][], gaps: any[]}>} by line */
  #known = new Map();

  /**
   * @param {(parameters: object) => Promise<any>} ask
   * @param {() => void} onChange
   */
  constructor(ask, onChange) {
    this.#ask = ask;
    this.#onChange = onChange;
  }

  /** The last computed curve of a line; undefined if there is none for its present text. */
  of({ line, source }) {
    const known = this.#known.get(line);
    return known?.source === source ? known : undefined;
  }

  /**
   * @param {import("./scene.js").Scene["curves"]} curves
   * @param {import("./view.js").View} view
   */
  compute(curves, view) {
    this.#wanted = curves;
    this.#view = view;
    this.#computation.start();
  }

  async #computeAll() {
    const [from, to] = this.#view.range(0);
    const [bottom, top] = this.#view.range(1);
    const half = (to - from) / 2;
    const count = Math.min(maxSamples, Math.max(minSamples, Math.round(2 * this.#view.width * samplesPerPixel)));
    const known = new Map();
    await Promise.all(
      this.#wanted.map(async ({ line, source }) => {
        const range = { from: from - half, to: to + half, count, height: top - bottom };
        try {
          known.set(line, { source, ...(await this.#ask({ line, source, ...range })) });
        } catch {
          // The line was stopped; its result shows that.
        }
      }),
    );
    this.#known = known;
    this.#onChange();
  }
}
