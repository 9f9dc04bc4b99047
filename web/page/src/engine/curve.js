// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * curve.js - samples a line with one free variable over a range. The curve has a gap where the line has no value, and where the
 * value jumps.
 *
 * All samples are evaluated as rows of one array. Bisection finds where gaps begin and end; each step evaluates all its midpoints
 * as rows of one array.
 *
 * @typedef {object} Gap
 * @property {number} from  the last x before the gap with a value, or the start of the range
 * @property {number} to  the first x after the gap with a value, or the end of the range
 * @property {number | null} place  the x without a value, if it is a single one
 * @property {number} message  message number; 0 if the value jumps or is not a number
 *
 * @typedef {object} Curve
 * @property {[number, number][][]} pieces
 * @property {Gap[]} gaps
 */

const bisections = 48;

/**
 * @param {(places: Float64Array) => {values: Float64Array, status: Uint32Array}} compute
 * @param {number} from
 * @param {number} to
 * @param {number} count  of samples
 * @param {number} height  of the visible range; a step of more than half of it is examined for a jump
 * @returns {Curve}
 */
export function sampleCurve(compute, from, to, count, height) {
  const places = Float64Array.from({ length: count }, (_, index) => from + ((to - from) * index) / (count - 1));
  const { values, status } = compute(places);
  const samples = Array.from(places, (x, index) => ({ x, y: values[index], status: status[index] }));
  const edges = [];
  for (let index = 1; index < samples.length; ++index) {
    const [left, right] = [samples[index - 1], samples[index]];
    if (hasValue(left) !== hasValue(right) || (hasValue(left) && Math.abs(right.y - left.y) > height / 2)) {
      edges.push({ index, left, right });
    }
  }
  narrow(edges, compute);
  return assemble(samples, edges, compute, height);
}

const hasValue = ({ y, status }) => status === 0 && Number.isFinite(y);

/**
 * Bisects every edge until its ends are adjacent numbers. It keeps the half where a value begins or ends, otherwise the half with
 * the greater step. If both ends have a value and the middle has none, the edge becomes two.
 */
function narrow(edges, compute) {
  for (let step = 0; step < bisections; ++step) {
    const middles = Float64Array.from(edges, ({ left, right }) => left.x + (right.x - left.x) / 2);
    const { values, status } = compute(middles);
    const halves = edges.length;
    for (let index = 0; index < halves; ++index) {
      const edge = edges[index];
      const { left, right } = edge;
      const middle = { x: middles[index], y: values[index], status: status[index] };
      if (middle.x === left.x || middle.x === right.x) continue;
      if (hasValue(left) !== hasValue(right)) {
        if (hasValue(left) === hasValue(middle)) edge.left = middle;
        else edge.right = middle;
      } else if (!hasValue(middle)) {
        edge.right = middle;
        edges.push({ index: edge.index, left: middle, right });
      } else if (Math.abs(middle.y - left.y) > Math.abs(right.y - middle.y)) {
        edge.right = middle;
      } else {
        edge.left = middle;
      }
    }
  }
  edges.sort((a, b) => a.left.x - b.left.x);
}

function assemble(samples, edges, compute, height) {
  const pieces = [];
  const gaps = [];
  let piece = [];
  let gap = null;
  let nextEdge = 0;
  const open = (last, status) => {
    if (piece.length) pieces.push(piece);
    piece = [];
    gap = { from: last.x, to: last.x, place: null, message: status };
  };
  const close = (next) => {
    gap.to = next.x;
    gaps.push(gap);
    gap = null;
  };
  if (!hasValue(samples[0])) open(samples[0], samples[0].status);
  samples.forEach((sample, index) => {
    for (; edges[nextEdge]?.index === index; ++nextEdge) {
      const { left, right } = edges[nextEdge];
      if (hasValue(left)) {
        piece.push([left.x, left.y]);
        if (!hasValue(right)) open(left, right.status);
        else if (Math.abs(right.y - left.y) > height / 4) open(left, 0);
      }
      if (hasValue(right)) {
        if (gap) close(right);
        piece.push([right.x, right.y]);
      }
    }
    if (hasValue(sample)) {
      if (gap) close(sample);
      piece.push([sample.x, sample.y]);
    } else if (!gap) {
      open(samples[index - 1] ?? sample, sample.status);
    }
  });
  if (gap) close(samples[samples.length - 1]);
  if (piece.length) pieces.push(piece);
  namePlaces(gaps, compute);
  return { pieces, gaps };
}

/** Tries the number with the fewest decimals in every short gap; if it has no value, it is the gap's `place`. */
function namePlaces(gaps, compute) {
  for (const gap of gaps) {
    const place = shortestBetween(gap.from, gap.to);
    if (place === null) continue;
    const { values, status } = compute(Float64Array.of(place));
    if (hasValue({ y: values[0], status: status[0] })) continue;
    gap.place = place;
    gap.message = status[0];
  }
}

function shortestBetween(from, to) {
  if (to - from > 1e-9 * Math.max(1, Math.abs(from), Math.abs(to))) return null;
  for (let decimals = 0; decimals <= 12; ++decimals) {
    const candidate = Number((from + (to - from) / 2).toFixed(decimals));
    if (candidate >= from && candidate <= to) return candidate === 0 ? 0 : candidate;
  }
  return null;
}
