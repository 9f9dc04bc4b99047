// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * scene.js - converts the results of a sheet to the objects of its picture, in the sheet's coordinates.
 *
 *     A=[1,2]            the movable point A
 *     dist(A,[3,4])      a dimension line and a movable point
 *     ill(a,b,c,d)       the intersection, and both lines
 *     vec(a,b)           an arrow from a to b
 *     x^2                a curve
 *     [1,2]              consecutive lines of one literal point each: a polyline
 *     [3,4]
 *
 * @typedef {import("../engine/line-results.js").Coordinates} Coordinates
 * @typedef {import("../engine/line-results.js").Handle} Handle
 *
 * @typedef {object} ScenePoint
 * @property {number} line  from 0
 * @property {string} key  the same from one scene to the next
 * @property {string} label  empty for a point within a line
 * @property {Coordinates} at
 * @property {Handle | null} handle  null if the point is not movable
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
 * @property {{label: string, at: Coordinates[]}[]} polylines
 */
import { literalOf } from "../sheet/literal.js";
import { texts } from "../texts.js";
import { maxDecimals } from "./view.js";

/**
 * @param {import("../engine/line-results.js").LineResult[]} results
 * @returns {Scene}
 */
export function sceneOf(results) {
  /** @type {Scene} */
  const scene = { points: [], dimensions: [], vectors: [], lines: [], curves: [], polylines: [] };
  const runs = runsOf(results);
  for (const run of runs) addPolyline(scene, results, run);
  const inRun = new Set(runs.flatMap(({ first, end }) => Array.from({ length: end - first }, (_, index) => first + index)));
  results.forEach((result, line) => {
    if (inRun.has(line)) return;
    if (result.kind === "curve") scene.curves.push({ line, source: result.source, label: labelOf(result, line) });
    if (result.kind === "value") addValue(scene, result, line);
  });
  return scene;
}

/** Whether two lists of results give the same scene: the results of all drawn lines are identical. */
export function drawnAlike(before, after) {
  const isAlike = (result, line) => result === before[line] || !(isDrawn(result) || isDrawn(before[line]));
  return before.length === after.length && after.every(isAlike);
}

const isDrawn = ({ kind, point, handles, constructions }) =>
  kind === "curve" || point !== null || handles.length > 0 || constructions.length > 0;

export function labelOf({ name }, line) {
  return name || texts.line(line + 1);
}

/** Corners of longer polylines are not movable, since each movable corner is a stop of the Tab key. */
const maxMovableCorners = 50;

/** Runs of two or more consecutive lines that are a literal point without a name. */
function runsOf(results) {
  const runs = [];
  results.forEach((result, line) => {
    if (result.kind !== "value" || result.name || !wholeHandle(result)) return;
    const last = runs.at(-1);
    if (last?.end === line) ++last.end;
    else runs.push({ first: line, end: line + 1 });
  });
  return runs.filter(({ first, end }) => end - first > 1);
}

function addPolyline(scene, results, { first, end }) {
  const corners = results.slice(first, end);
  scene.polylines.push({ label: texts.line(`${first + 1}–${end}`), at: corners.map(({ point }) => point) });
  if (corners.length > maxMovableCorners) return;
  corners.forEach((result, index) => {
    const line = first + index;
    scene.points.push({ line, key: `${line}`, label: "", at: result.point, handle: wholeHandle(result) });
  });
}

function addValue(scene, result, line) {
  const { handles, constructions, point } = result;
  for (const { kind, at, text, whole } of constructions) {
    const [from, to] = at;
    if (kind === "dist") scene.dimensions.push({ from, to, text });
    if (kind === "vec") scene.vectors.push({ from, to, text: whole ? result.name : "" });
    if (kind === "ill") scene.lines.push({ from, to, text: "" }, { from: at[2], to: at[3], text: "" });
  }
  const whole = wholeHandle(result);
  if (point && !constructions.some(({ kind, whole: isAll }) => kind === "vec" && isAll)) {
    scene.points.push({ line, key: `${line}`, label: labelOf(result, line), at: point, handle: whole });
  }
  handles.forEach((handle, index) => {
    if (handle !== whole) scene.points.push({ line, key: `${line}.${index}`, label: "", at: handle.at, handle });
  });
}

/** The literal point that is the whole line; null if there is none. */
const wholeHandle = ({ handles }) => handles.find(({ whole }) => whole) ?? null;

/** Text of the moved point that replaces a literal one. */
export function pointText(source, { start, length, at }, [x, y, z], decimals) {
  const hasZ = source.slice(start, start + length).split(",").length > 2 || z !== at[2];
  const height = coordinateText(z, z === at[2] ? maxDecimals : decimals);
  return `[${[x, y].map((value) => coordinateText(value, decimals)).join(",")}${hasZ ? `,${height}` : ""}]`;
}

const coordinateText = (value, decimals) => literalOf(Number(value.toFixed(decimals)));
