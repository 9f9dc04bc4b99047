// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * client.js - the page's side of the worker. A worker that does not answer in time is terminated, and a new one computes the
 * sheet without the line that took too long.
 */
import { patience } from "./limits.js";
import { applyDifference } from "./line-results.js";

export class Engine {
  #url;
  #settings;
  /** @type {Worker} */
  #worker;
  #nextId = 1;
  /** @type {Map<number, {kind: string, parameters: object, resolve: (answer: any) => void, reject: (reason: Error) => void}>} */
  #pending = new Map();
  #watchdog = 0;
  #computing = "";
  #stopped = [];
  #results = [];
  #lines = [];
  #onStop;
  /** Resolves when the module is ready; rejects if it cannot be loaded. */
  ready;

  /**
   * @param {string | URL} url  of the worker's script
   * @param {{language: string, digits: number}} settings
   * @param {(source: string) => void} onStop  called with a line that took too long
   */
  constructor(url, settings, onStop) {
    this.#url = url;
    this.#settings = settings;
    this.#onStop = onStop;
    this.#begin();
  }

  /**
   * Evaluates the sheet.
   * @param {string[]} lines
   * @returns {Promise<import("./line-results.js").LineResult[]>}
   */
  async evaluate(lines) {
    this.#lines = lines;
    this.#results = applyDifference(this.#results, await this.ask("sheet", { lines }));
    return this.#results;
  }

  /** Changes the language of messages, or the digits of values. */
  async set(setting, value) {
    this.#settings = { ...this.#settings, [setting]: value };
    await this.ask(setting, { [setting]: value });
  }

  /** Sends a request to the worker; see `answers` in worker.js. */
  ask(kind, parameters = {}) {
    return new Promise((resolve, reject) => this.#send({ kind, parameters, resolve, reject }));
  }

  #begin() {
    this.#worker = new Worker(this.#url, { type: "module" });
    this.#worker.onmessage = ({ data }) => this.#receive(data);
    this.#worker.onerror = ({ message }) => this.#fail(message);
    this.ready = this.ask("start", { ...this.#settings, stopped: this.#stopped });
    this.ready.catch(() => undefined); // reported to whoever awaits it
  }

  #send(request) {
    const id = this.#nextId++;
    this.#pending.set(id, request);
    this.#worker.postMessage({ id, kind: request.kind, parameters: request.parameters });
    this.#watch();
  }

  #receive({ id, answer, error, computing }) {
    if (computing !== undefined) {
      this.#computing = computing;
      this.#watch();
      return;
    }
    const { resolve, reject } = this.#pending.get(id);
    this.#pending.delete(id);
    if (error === undefined) resolve(answer);
    else reject(new Error(error));
    this.#watch();
  }

  /** Restarts the timeout at every message. Loading the module has none: it depends on the network. */
  #watch() {
    clearTimeout(this.#watchdog);
    const waiting = [...this.#pending.values()];
    if (waiting.length === 0 || waiting.some(({ kind }) => kind === "start")) return;
    this.#watchdog = setTimeout(() => this.#restart(), patience);
  }

  #restart() {
    this.#worker.terminate();
    this.#stopped.push(this.#computing);
    this.#onStop(this.#computing);
    const pending = [...this.#pending.values()];
    this.#pending.clear();
    this.#results = [];
    this.#begin();
    // Requests about a line need the sheet in the worker.
    if (!pending.some(({ kind }) => kind === "sheet")) this.evaluate(this.#lines);
    for (const request of pending) {
      if (request.parameters.source === this.#computing) request.reject(new Error("stopped"));
      else this.#send(request);
    }
  }

  #fail(message) {
    for (const { reject } of this.#pending.values()) reject(new Error(message));
    this.#pending.clear();
  }
}
