// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** announcer.js - announces the edited line to screen readers after a pause in typing: its value, or its problem. */
import { texts } from "./texts.js";

const pause = 900;

export class Announcer {
  #region = document.getElementById("announcer");
  #timer = 0;
  #last = "";

  /**
   * @param {import("./engine/line-results.js").LineResult | undefined} result
   * @param {number} line  from 0
   * @param {string} language  of messages
   */
  announce(result, line, language) {
    const text = result ? textOf(result) : "";
    const said = `${line} ${text}`;
    if (said === this.#last) return;
    this.#last = said;
    clearTimeout(this.#timer);
    if (!text) return;
    this.#timer = setTimeout(() => {
      this.#region.lang = result.problem ? language : "en";
      this.#region.textContent = `${texts.line(line + 1)}: ${text}`;
    }, pause);
  }
}

function textOf({ kind, name, value, problem }) {
  switch (kind) {
    case "value":
      return name ? `${name} = ${value}` : value;
    case "curve":
      return texts.plotted;
    case "stopped":
      return texts.stopped;
    case "problem":
      return problem.unfinished ? "" : [problem.message, ...problem.hints].join(" ");
    default:
      return "";
  }
}
