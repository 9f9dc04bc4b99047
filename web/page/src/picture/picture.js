// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * picture.js - draws the sheet in plan or in space. Mouse, touch and keys pan, zoom and rotate. A literal point of a line can be
 * dragged, or moved by keys, which changes the line.
 */
import { texts } from "../texts.js";
import { Curves } from "./curves.js";
import { pointText, sceneOf } from "./scene.js";
import {
  axisText,
  curveOf,
  dimensionOf,
  gapOf,
  groundOf,
  lineOf,
  pointOf,
  polylineOf,
  scaleOf,
  stemOf,
  svg,
  vectorOf,
} from "./shapes.js";
import { View, decimalsOf } from "./view.js";

const colours = 6;
const zoomStep = 1.25;
const curveRange = [-10, 10];
const flat = [0, 0];

/** Pixels and degrees by which an arrow key pans and rotates. */
const panStep = 40;
const turnStep = 10;
const degreesPerPixel = 0.4;

/** Direction of each key: right, up, height. */
const directions = {
  ArrowLeft: [-1, 0, 0],
  ArrowRight: [1, 0, 0],
  ArrowUp: [0, 1, 0],
  ArrowDown: [0, -1, 0],
  PageUp: [0, 0, 1],
  PageDown: [0, 0, -1],
};

export class Picture {
  #host;
  #gaps;
  #onMove;
  #svg;
  /** The text for a picture without content. */
  #empty;
  #view = new View();
  #results = [];
  #scene = sceneOf([]);
  #curves;
  /** Whether the user has changed the view since the last fit. */
  #isChosen = false;
  #needsFit = true;
  #pointers = new Map();
  #dragged = "";
  /** A move that waits for the result of its line. */
  #waiting = null;
  #options = { grid: true, vectors: false, space: false, unit: "" };

  /**
   * @param {HTMLElement} host
   * @param {HTMLElement} gaps  list of the curves' gaps
   * @param {object} sheet
   * @param {(parameters: object) => Promise<any>} sheet.askCurve
   * @param {(line: number, source: string, handle: {start: number, length: number}, text: string) => boolean} sheet.onMove
   *        returns false if the text of the line is no longer `source`
   */
  constructor(host, gaps, { askCurve, onMove }) {
    this.#host = host;
    this.#gaps = gaps;
    this.#onMove = onMove;
    this.#curves = new Curves(askCurve, () => this.#curvesCame());
    this.#svg = svg("svg", { role: "group", tabindex: 0, "aria-label": texts.picture });
    this.#empty = document.createElement("p");
    this.#empty.className = "empty";
    this.#empty.textContent = texts.empty;
    host.append(this.#svg, this.#empty);
    this.#listen();
    new ResizeObserver(() => this.#resize()).observe(host);
  }

  get element() {
    return this.#svg;
  }

  /** @param {import("../engine/line-results.js").LineResult[]} results */
  show(results) {
    this.#results = results;
    this.#scene = sceneOf(results);
    if (!this.#isChosen && !this.#dragged) this.#fit();
    this.#change();
    if (this.#waiting) this.#movePoint(this.#waiting);
  }

  /** @param {{grid: boolean, vectors: boolean, space: boolean, unit: string}} options */
  set options(options) {
    this.#options = options;
    if (options.space === this.#view.isSpace) {
      this.#draw();
    } else {
      this.#view.isSpace = options.space;
      this.fit();
    }
  }

  /** Fits everything into the view. */
  fit() {
    this.#isChosen = false;
    this.#fit();
    this.#change();
  }

  zoom(factor, left, top) {
    this.#isChosen = true;
    this.#view.zoom(factor, left, top);
    this.#change();
  }

  zoomIn = () => this.zoom(zoomStep);
  zoomOut = () => this.zoom(1 / zoomStep);

  #draw() {
    const { points, dimensions, vectors, lines, curves, polylines } = this.#scene;
    const { grid, unit } = this.#options;
    const view = this.#view;
    const colourOf = (index) => (index % colours) + 1;
    const drawnCurves = curves.flatMap((curve, index) => {
      const known = this.#curves.of(curve);
      if (!known) return [];
      const places = known.gaps.filter(({ place }) => place !== null);
      return [...places.map((gap) => gapOf(view, gap)), ...curveOf(view, known, colourOf(index), curve.label)];
    });
    const fromOrigin = this.#options.vectors ? points.filter(({ label }) => label) : [];
    const focused = document.activeElement?.getAttribute?.("data-key");
    this.#svg.setAttribute("viewBox", `0 0 ${view.width} ${view.height}`);
    this.#svg.replaceChildren(
      ...groundOf(view, grid),
      ...drawnCurves,
      ...polylines.map((polyline) => polylineOf(view, polyline)),
      ...(view.isSpace ? points.filter(({ at }) => at[2] !== 0).map((point) => stemOf(view, point)) : []),
      ...lines.map((line) => lineOf(view, line)),
      ...fromOrigin.map(({ at }) => vectorOf(view, { from: [0, 0, 0], to: at, text: "" })),
      ...vectors.map((vector) => vectorOf(view, vector)),
      ...dimensions.map((dimension) => dimensionOf(view, dimension, unit)),
      ...points.map((point) => pointOf(view, point)),
      scaleOf(view, unit),
    );
    if (focused) this.#svg.querySelector(`[data-key="${focused}"]`)?.focus();
    this.#empty.hidden = Object.values(this.#scene).some(({ length }) => length > 0);
  }

  /** Redraws, and computes the curves for the present view. */
  #change() {
    this.#draw();
    if (this.#scene.curves.length || this.#gaps.childElementCount) this.#curves.compute(this.#scene.curves, this.#view);
  }

  #curvesCame() {
    if (this.#needsFit && !this.#isChosen) this.#fitCurves();
    this.#draw();
    this.#listGaps();
  }

  #fit() {
    const { points, dimensions, vectors, lines, curves, polylines } = this.#scene;
    const places = [
      ...points.map(({ at }) => at),
      ...polylines.flatMap(({ at }) => at),
      ...[...dimensions, ...vectors, ...lines].flatMap(({ from, to }) => [from, to]),
    ].filter((place) => place.every(Number.isFinite));
    if (this.#options.vectors && points.length) places.push([0, 0, 0]);
    this.#needsFit = places.length === 0 && curves.length > 0;
    if (places.length) {
      this.#view.fit([0, 1, 2].map((axis) => extent(places.map((place) => place[axis]))), true);
    } else if (curves.length === 0) {
      this.#view.fit([curveRange, flat, flat], true);
    } else if (this.#view.range(0)[0] !== curveRange[0]) {
      this.#view.fit([curveRange, curveRange, flat], false);
    }
  }

  /** Fits the view to the curves' values, without the extreme ones. */
  #fitCurves() {
    const [from, to] = curveRange;
    const values = this.#scene.curves
      .flatMap((curve) => this.#curves.of(curve)?.pieces.flat() ?? [])
      .filter(([x]) => x >= from && x <= to)
      .map(([, y]) => y)
      .sort((a, b) => a - b);
    this.#needsFit = false;
    if (values.length === 0) return;
    const at = (share) => values[Math.round(share * (values.length - 1))];
    const [low, high] = [at(0.02), at(0.98)];
    this.#view.fit([curveRange, low === high ? [low - 1, high + 1] : [low, high], flat], false);
    this.#curves.compute(this.#scene.curves, this.#view);
  }

  #listGaps() {
    const step = this.#view.gridStep(0) / 1000;
    const [from, to] = this.#view.range(0);
    const items = this.#scene.curves.flatMap((curve) => {
      const seen = this.#curves.of(curve)?.gaps.filter((gap) => gap.to >= from && gap.from <= to) ?? [];
      return seen.map((gap) => {
        const reason = gap.reason || texts.jump;
        const place = (value) => axisText(value, step);
        const item = document.createElement("li");
        item.textContent =
          gap.place !== null || axisText(gap.from, step) === axisText(gap.to, step)
            ? texts.gapAt(curve.label, place(gap.place ?? gap.from), reason)
            : texts.gapBetween(curve.label, place(Math.max(gap.from, from)), place(Math.min(gap.to, to)), reason);
        return item;
      });
    });
    this.#gaps.replaceChildren(...items);
  }

  #resize() {
    const { width, height } = this.#host.getBoundingClientRect();
    if (width === 0 || height === 0) return;
    Object.assign(this.#view, { width, height });
    if (!this.#isChosen) this.#fit();
    this.#change();
  }

  #listen() {
    const { element } = this;
    element.addEventListener("pointerdown", (event) => this.#press(event));
    element.addEventListener("pointermove", (event) => this.#drag(event));
    for (const end of ["pointerup", "pointercancel"]) element.addEventListener(end, (event) => this.#release(event));
    element.addEventListener("keydown", (event) => this.#key(event));
    element.addEventListener(
      "wheel",
      (event) => {
        event.preventDefault();
        const [left, top] = this.#placeOf(event);
        this.zoom(Math.exp(-event.deltaY / 400), left, top);
      },
      { passive: false },
    );
  }

  #placeOf({ clientX, clientY }) {
    const { left, top } = this.#svg.getBoundingClientRect();
    return [clientX - left, clientY - top];
  }

  #press(event) {
    this.#svg.setPointerCapture(event.pointerId);
    this.#pointers.set(event.pointerId, this.#placeOf(event));
    const point = event.target.closest(".movable");
    this.#dragged = this.#pointers.size === 1 && point ? point.getAttribute("data-key") : "";
    point?.focus();
  }

  #drag(event) {
    const before = this.#pointers.get(event.pointerId);
    if (!before) return;
    const now = this.#placeOf(event);
    const spread = () => {
      const [a, b] = [...this.#pointers.values()];
      return Math.hypot(a[0] - b[0], a[1] - b[1]);
    };
    const spreadBefore = this.#pointers.size === 2 ? spread() : 0;
    this.#pointers.set(event.pointerId, now);
    if (this.#dragged) {
      const z = this.#point(this.#dragged)?.at[2]; // undefined while its line has no value
      const [x, y] = this.#view.toLevel(...now, z);
      this.#movePoint({ key: this.#dragged, place: [x, y, z], step: 1 / this.#view.scale[0] });
      return;
    }
    const [right, down] = [now[0] - before[0], now[1] - before[1]];
    if (this.#view.isSpace && this.#pointers.size === 1 && !event.shiftKey) {
      this.#orbit(right * degreesPerPixel, -down * degreesPerPixel);
      return;
    }
    this.#isChosen = true;
    const share = 1 / this.#pointers.size;
    this.#view.pan(right * share, down * share);
    if (spreadBefore > 0) this.#view.zoom(spread() / spreadBefore, ...now);
    this.#change();
  }

  #orbit(turn, tilt) {
    this.#isChosen = true;
    this.#view.orbit(turn, tilt);
    this.#draw();
  }

  #release(event) {
    this.#pointers.delete(event.pointerId);
    this.#dragged = "";
  }

  #key(event) {
    const direction = directions[event.key];
    const key = event.target.getAttribute("data-key");
    const isHeight = direction?.[2];
    if (direction && key && (this.#view.isSpace || !isHeight)) {
      const step = this.#view.gridStep(0) / (event.shiftKey ? 1 : 10);
      const place = this.#waiting?.place ?? this.#point(key).at;
      this.#movePoint({ key, place: place.map((value, axis) => value + direction[axis] * step), step });
    } else if (direction && !isHeight && this.#view.isSpace && !event.shiftKey) {
      this.#orbit(-direction[0] * turnStep, -direction[1] * turnStep);
    } else if (direction && !isHeight) {
      this.#isChosen = true;
      this.#view.pan(-direction[0] * panStep, direction[1] * panStep);
      this.#change();
    } else if (event.key === "+" || event.key === "-") {
      this.zoom(event.key === "+" ? zoomStep : 1 / zoomStep);
    } else if (event.key === "0") {
      this.fit();
    } else {
      return;
    }
    event.preventDefault();
  }

  #point(key) {
    return this.#scene.points.find((point) => point.key === key);
  }

  /** Writes a point's new coordinates into its line, rounded to visible steps. */
  #movePoint(move) {
    this.#waiting = null;
    const point = this.#point(move.key);
    if (!point?.handle) return;
    const { source } = this.#results[point.line];
    const text = pointText(source, point.handle, move.place, decimalsOf(move.step));
    if (!this.#onMove(point.line, source, point.handle, text)) this.#waiting = move;
  }
}

function extent(values) {
  return [Math.min(...values), Math.max(...values)];
}
