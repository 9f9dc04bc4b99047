// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * scene.js - what a picture of a sheet shows, in the sheet's own coordinates.
 *
 *     A=[1,2]            the point A, which can be moved
 *     dist(A,[3,4])      a dimension line, and a point that can be moved
 *     ill(a,b,c,d)       the intersection, and both lines
 *     vec(a,b)           an arrow from a to b
 *     x^2                a curve
 *
 * @typedef {import("../engine/line-results.js").Coordinates} Coordinates
 * @typedef {import("../engine/line-results.js").Handle} Handle
 *
 * @typedef {object} ScenePoint
 * @property {number} line  from 0
 * @property {string} key  the same from one scene to the next
 * @property {string} label  empty for a point within a line
 * @property {Coordinates} at
 * @property {Handle | null} handle  of a point that can be moved
 *
 * @typedef {object} Segment
 * @property {Coordinates} from
 * @property {Coordinates} to
 * @property {string} text
 *
 * @typedef {object} Scene
 * @property {ScenePoint[]} points
 * @property {Segment[]} dimensions
 * @property {Segment[]} vectors
 * @property {Segment[]} lines
 * @property {{line: number, source: string, label: string}[]} curves
 */
import { texts } from "../texts.js";

/**
 * @param {import("../engine/line-results.js").LineResult[]} results
 * @returns {Scene}
 */
export function sceneOf(results) {
  /** @type {Scene} */
  const scene = { points: [], dimensions: [], vectors: [], lines: [], curves: [] };
  results.forEach((result, line) => {
    if (result.kind === "curve") scene.curves.push({ line, source: result.source, label: labelOf(result, line) });
    if (result.kind === "value") addValue(scene, result, line);
  });
  return scene;
}

export function labelOf({ name }, line) {
  return name || texts.line(line + 1);
}

function addValue(scene, result, line) {
  const { handles, constructions, point } = result;
  for (const { kind, at, text, whole } of constructions) {
    const [from, to] = at;
    if (kind === "dist") scene.dimensions.push({ from, to, text });
    if (kind === "vec") scene.vectors.push({ from, to, text: whole ? result.name : "" });
    if (kind === "ill") scene.lines.push({ from, to, text: "" }, { from: at[2], to: at[3], text: "" });
  }
  const whole = handles.find((handle) => isWhole(result.source, handle));
  if (point && !constructions.some(({ kind, whole: isAll }) => kind === "vec" && isAll)) {
    scene.points.push({ line, key: `${line}`, label: labelOf(result, line), at: point, handle: whole ?? null });
  }
  handles.forEach((handle, index) => {
    if (handle !== whole) scene.points.push({ line, key: `${line}.${index}`, label: "", at: handle.at, handle });
  });
}

/** Whether nothing but an assignment stands before a written point, and nothing behind it. */
function isWhole(source, { start, length }) {
  return /^\s*([^=]*=)?\s*$/.test(source.slice(0, start)) && /^\s*$/.test(source.slice(start + length));
}

/** The text of a point that takes the place of a written one. */
export function pointText(source, { start, length, at }, x, y, decimals) {
  const hasZ = source.slice(start, start + length).split(",").length > 2;
  const [, , z] = at;
  return `[${[x, y].map((value) => coordinateText(value, decimals)).join(",")}${hasZ ? `,${coordinateText(z, 12)}` : ""}]`;
}

const greatestWholeLiteral = 2_147_483_647;

/** A number as the language reads it: without exponent, and with a decimal point where it is large. */
export function coordinateText(value, decimals) {
  const fixed = value.toFixed(decimals);
  const text = fixed.includes(".") ? fixed.replace(/\.?0+$/, "") : fixed;
  if (/^-?0$/.test(text)) return "0";
  return Math.abs(value) > greatestWholeLiteral && !text.includes(".") ? `${text}.0` : text;
}
