// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** shapes.js - the elements of the picture: grid, axes, scale, curves, lines, polylines, arrows, dimension lines, points. */
import { texts } from "../texts.js";
import { decimalsOf } from "./view.js";

const svgNames = "http://www.w3.org/2000/svg";

/** Creates an SVG element. */
export function svg(tag, attributes = {}, ...children) {
  const element = document.createElementNS(svgNames, tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, String(value));
  element.append(...children);
  return element;
}

const round = (value) => Math.round(value * 100) / 100;
const path = (...points) => `M${points.map(([left, top]) => `${round(left)} ${round(top)}`).join("L")}`;

/** Pixel coordinates are clamped to this absolute value, since drawing has a limited range. */
const farAway = 1e5;
const near = ([left, top]) => [left, top].map((value) => Math.min(farAway, Math.max(-farAway, value)));

/** Text of a number beside an axis. */
export const axisText = (value, step) => String(Number(value.toFixed(decimalsOf(step))));

/** The grid, and the axes with their numbers. */
export const groundOf = (view, withGrid) => (view.isSpace ? groundInSpace(view, withGrid) : groundInPlan(view, withGrid));

/** @param {import("./view.js").View} view */
function groundInPlan(view, withGrid) {
  const grid = svg("g", { class: "grid", "aria-hidden": "true" });
  const axes = svg("g", { class: "axes", "aria-hidden": "true" });
  const [left, top] = view.toScreen([0, 0]);
  for (const axis of [0, 1]) {
    const step = view.gridStep(axis);
    const [from, to] = view.range(axis);
    for (let index = Math.ceil(from / step); index * step <= to; ++index) {
      const place = view.toScreen([index * step, index * step])[axis];
      const ends = axis ? { x1: 0, x2: view.width, y1: place, y2: place } : { y1: 0, y2: view.height, x1: place, x2: place };
      if (index === 0) axes.append(svg("line", ends));
      else if (withGrid) grid.append(svg("line", ends));
      if (index === 0) continue;
      const label = axisText(index * step, step);
      const at = axis
        ? { x: Math.min(Math.max(left + 5, 5), view.width - 8 * label.length - 6), y: place + 4 }
        : { x: place, y: Math.min(Math.max(top + 15, 15), view.height - 6), "text-anchor": "middle" };
      axes.append(svg("text", at, label));
    }
  }
  return [grid, axes];
}

const axisNames = ["x", "y", "z"];

/** Minimum distance of two numbers on an axis, in pixels; a closer axis has none. */
const minNumberPixels = 24;

/** The grid is in the plane z = 0. */
function groundInSpace(view, withGrid) {
  const grid = svg("g", { class: "grid", "aria-hidden": "true" });
  const axes = svg("g", { class: "axes", "aria-hidden": "true" });
  const along = (axis, value, other = 0) => near(view.toScreen(axisNames.map((_, index) => (index === axis ? value : index === 1 - axis ? other : 0))));
  for (const axis of [0, 1, 2]) {
    const step = view.gridStep(axis);
    const [from, to] = view.range(axis);
    const [start, end] = [from, to].map((value) => along(axis, value));
    axes.append(segment(start, end));
    const hasNumbers = Math.hypot(...view.direction(axis)) * step * Math.min(...view.scale) >= minNumberPixels;
    for (let index = Math.ceil(from / step); index * step <= to; ++index) {
      if (index === 0) continue;
      if (withGrid && axis < 2) grid.append(segment(...view.range(1 - axis).map((other) => along(axis, index * step, other))));
      if (!hasNumbers) continue;
      const [left, top] = along(axis, index * step);
      axes.append(svg("text", { x: left + 4, y: top + (axis < 2 ? 13 : 4) }, axisText(index * step, step)));
    }
  }
  return [grid, axes, tripodOf(view)];
}

const segment = ([x1, y1], [x2, y2], look = "") => svg("line", { ...(look && { class: look }), x1, y1, x2, y2 });

/** The directions of the axes, drawn in a corner. */
function tripodOf(view) {
  const [left, top, length] = [52, view.height - 52, 30];
  const at = (axis, factor) => {
    const [right, up] = view.direction(axis).map((part) => part * length * factor);
    return [left + right, top - up];
  };
  const arms = axisNames.flatMap((name, axis) => {
    const [x, y] = at(axis, 1.35);
    return [segment([left, top], at(axis, 1)), svg("text", { x, y: y + 4, "text-anchor": "middle" }, name)];
  });
  return svg("g", { class: "tripod", "aria-hidden": "true" }, ...arms);
}

/** A vertical line from a point to the plane z = 0. */
export function stemOf(view, { at: [x, y, z] }) {
  return segment(near(view.toScreen([x, y, z])), near(view.toScreen([x, y, 0])), "stem");
}

export function polylineOf(view, { label, at }) {
  const d = path(...at.map((place) => near(view.toScreen(place))));
  return svg("path", { class: "polyline", d, role: "img", "aria-label": label });
}

/** A scale bar of one grid step, with its length in the user's unit. */
export function scaleOf(view, unit) {
  const step = view.gridStep(0);
  const length = step * view.scale[0];
  const [right, bottom] = [view.width - 16, view.height - 24];
  const bar = path([right - length, bottom - 4], [right - length, bottom], [right, bottom], [right, bottom - 4]);
  const label = `${axisText(step, step)}${unit && ` ${unit}`}`;
  return svg(
    "g",
    { class: "scale", "aria-hidden": "true" },
    svg("path", { d: bar }),
    svg("text", { x: right - length / 2, y: bottom - 7, "text-anchor": "middle" }, label),
  );
}

/** A curve, with its label at its right end in the picture. */
export function curveOf(view, { pieces }, colour, label) {
  const onScreen = pieces.map((piece) => piece.map((place) => near(view.toScreen(place))));
  const d = onScreen.map((piece) => path(...piece)).join("");
  const curve = svg("path", { class: `curve curve-${colour}`, d, role: "img", "aria-label": label });
  const isSeen = ([left, top]) => left > 0 && left < view.width - labelRoom && top > 20 && top < view.height - 40;
  const end = onScreen.flat().findLast(isSeen);
  return end ? [curve, svg("text", { class: "label", x: end[0], y: end[1] - 8 }, label)] : [curve];
}

/** Width reserved for the label of a curve, in pixels. */
const labelRoom = 56;

/** A vertical line at a gap of a single x. */
export function gapOf(view, { place }) {
  const [start, end] = view.range(1).map((y) => near(view.toScreen([place, y])));
  return segment(start, end, "open");
}

/** An infinite straight line through two points. */
export function lineOf(view, { from, to }) {
  const [a, b] = [near(view.toScreen(from)), near(view.toScreen(to))];
  const length = Math.hypot(b[0] - a[0], b[1] - a[1]);
  if (length === 0) return svg("g");
  const reach = (view.width + view.height + Math.hypot(...a)) / length;
  const at = (factor) => [a[0] + (b[0] - a[0]) * factor, a[1] + (b[1] - a[1]) * factor];
  return segment(near(at(-reach)), near(at(1 + reach)), "line");
}

function arrowHead([x, y], angle, size = 9) {
  const side = (turn) => [x - size * Math.cos(angle + turn), y - size * Math.sin(angle + turn)];
  return path(side(0.35), [x, y], side(-0.35));
}

export function vectorOf(view, { from, to, text }) {
  const [a, b] = [near(view.toScreen(from)), near(view.toScreen(to))];
  const angle = Math.atan2(b[1] - a[1], b[0] - a[0]);
  const arrow = svg("path", { class: "vector", d: path(a, b) + arrowHead(b, angle) });
  return svg("g", {}, arrow, svg("text", { class: "label", x: (a[0] + b[0]) / 2 + 8, y: (a[1] + b[1]) / 2 - 6 }, text));
}

const dimensionOffset = 26;

export function dimensionOf(view, { from, to, text }, unit) {
  const [a, b] = [near(view.toScreen(from)), near(view.toScreen(to))];
  const angle = Math.atan2(b[1] - a[1], b[0] - a[0]);
  const shift = (distance) => ([x, y]) => [x + distance * Math.sin(angle), y - distance * Math.cos(angle)];
  const [start, end] = [a, b].map(shift(dimensionOffset));
  const extensions = [a, b].map((place) => path(shift(6)(place), shift(dimensionOffset + 5)(place))).join("");
  const arrows = arrowHead(start, angle + Math.PI) + arrowHead(end, angle);
  const [x, y] = shift(dimensionOffset + 12)([(a[0] + b[0]) / 2, (a[1] + b[1]) / 2]);
  return svg(
    "g",
    { class: "dimension" },
    svg("path", { d: extensions + path(start, end) + arrows }),
    svg("text", { x, y: y + 4, "text-anchor": "middle" }, `${text}${unit && ` ${unit}`}`),
  );
}

/** @param {import("./scene.js").ScenePoint} point */
export function pointOf(view, { key, label, line, at, handle }) {
  const [x, y] = near(view.toScreen(at));
  const step = view.gridStep(0) / 100;
  const coordinates = at[2] === 0 ? at.slice(0, 2) : at;
  const said = texts.pointAt(label || texts.line(line + 1), ...coordinates.map((value) => axisText(value, step)));
  const movable = { role: "button", tabindex: 0, "aria-roledescription": texts.movable };
  const group = svg(
    "g",
    { class: handle ? "point movable" : "point", "data-key": key, "aria-label": said, ...(handle ? movable : { role: "img" }) },
    svg("circle", { class: "reach", cx: x, cy: y, r: 14 }),
    svg("circle", { cx: x, cy: y, r: label ? 5 : 4 }),
  );
  if (label) group.append(svg("text", { class: "label", x: x + 9, y: y - 9 }, label));
  return group;
}
