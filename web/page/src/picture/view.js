// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * view.js - the mapping between the sheet and the screen: a parallel projection, in plan or in space. All axes have the same scale,
 * unless only curves are shown.
 *
 *     turn 0, tilt 0      plan: x to the right, y up, z towards the eye
 *     turn 0, tilt 90     from the front: x to the right, z up
 */
const margin = 48;
const minScale = 1e-9;
const maxScale = 1e12;

/** Minimum grid step in pixels. A grid step is 1, 2 or 5 times a power of ten, in units. */
const minGridPixels = 56;

/** Degrees. At 90, a horizontal plane would be a line, and the pointer could not select a position in it. */
const maxTilt = 85;

/** Initial orientation in space, in degrees. */
const usualTurn = 30;
const usualTilt = 60;

const degree = Math.PI / 180;

export class View {
  width = 1;
  height = 1;
  /** The point at the centre of the screen. */
  center = [0, 0, 0];
  /** Pixels per unit of x and y; a unit of z takes the smaller one. */
  scale = [40, 40];
  #turn = 0;
  #tilt = 0;
  #isSpace = false;

  get isSpace() {
    return this.#isSpace;
  }

  /** Switches between plan and space, with the initial orientation. */
  set isSpace(isSpace) {
    this.#isSpace = isSpace;
    this.#turn = isSpace ? usualTurn : 0;
    this.#tilt = isSpace ? usualTilt : 0;
  }

  /** Rotates the view around the centre of the screen, by degrees. */
  orbit(turn, tilt) {
    this.#turn = (this.#turn + turn) % 360;
    this.#tilt = Math.min(maxTilt, Math.max(0, this.#tilt + tilt));
  }

  toScreen([x, y, z = 0]) {
    const [right, up] = this.#rotate(this.#pixels([x, y, z]));
    return [this.width / 2 + right, this.height / 2 - up];
  }

  /** The point of the plane of height z at a position on the screen. */
  toLevel(left, top, z = this.center[2]) {
    const { sin, cos } = this.#angles();
    const height = this.#pixels([0, 0, z])[2];
    const along = (this.height / 2 - top - height * sin.tilt) / cos.tilt;
    const right = left - this.width / 2;
    return this.#units([right * cos.turn + along * sin.turn, along * cos.turn - right * sin.turn, height]);
  }

  /** Range of an axis, [from, to]: in plan the visible one; in space as long as the screen's diagonal. */
  range(axis) {
    const size = this.#isSpace ? Math.hypot(this.width, this.height) : [this.width, this.height][axis];
    const half = size / 2 / this.#scaleOf(axis);
    return [this.center[axis] - half, this.center[axis] + half];
  }

  pan(left, top) {
    this.center = this.#onScreen(-left, top);
  }

  /** Zooms; the point at a position on the screen keeps that position. */
  zoom(factor, left = this.width / 2, top = this.height / 2) {
    const [right, up] = [left - this.width / 2, this.height / 2 - top];
    const before = this.#onScreen(right, up);
    this.scale = this.scale.map((scale) => Math.min(maxScale, Math.max(minScale, scale * factor)));
    const after = this.#onScreen(right, up);
    this.center = this.center.map((center, axis) => center + before[axis] - after[axis]);
  }

  /**
   * Fits a box into the view: [from, to] of each axis.
   * @param {[number, number][]} box
   * @param {boolean} hasOneScale  the same scale for all axes
   */
  fit(box, hasOneScale) {
    this.center = box.map(([from, to]) => (from + to) / 2);
    const room = [Math.max(this.width - 2 * margin, 40), Math.max(this.height - 2 * margin, 40)];
    this.scale = [1, 1];
    const corners = [0, 1, 2, 3, 4, 5, 6, 7].map((corner) => box.map((range, axis) => range[(corner >> axis) & 1]));
    const seen = corners.map((corner) => this.#rotate(this.#pixels(corner)));
    const sizes = hasOneScale
      ? [0, 1].map((axis) => 2 * Math.max(...seen.map((place) => place[axis])))
      : box.slice(0, 2).map(([from, to]) => to - from);
    const scales = sizes.map((size, axis) => (size > 0 ? room[axis] / size : Infinity));
    const least = Math.min(...scales);
    this.scale = scales.map((scale) => {
      const chosen = hasOneScale || scale === Infinity ? least : scale;
      return Number.isFinite(chosen) ? Math.min(maxScale, Math.max(minScale, chosen)) : 40;
    });
  }

  /** Distance of two grid lines, in units. */
  gridStep(axis) {
    const least = minGridPixels / this.#scaleOf(axis);
    const power = 10 ** Math.floor(Math.log10(least));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => step >= least * (1 - 1e-12));
  }

  /** The point at an offset in pixels from the centre, in the plane parallel to the screen through the centre. */
  #onScreen(right, up) {
    const { sin, cos } = this.#angles();
    const along = up * cos.tilt;
    return this.#units([right * cos.turn + along * sin.turn, along * cos.turn - right * sin.turn, up * sin.tilt]);
  }

  /** Projection of an axis's unit vector onto the screen: [right, up]. */
  direction(axis) {
    return this.#rotate([0, 1, 2].map((other) => Number(other === axis)));
  }

  /** Converts a point to pixels from the centre, along the axes of the sheet. */
  #pixels(place) {
    return place.map((value, axis) => (value - this.center[axis]) * this.#scaleOf(axis));
  }

  #units(pixels) {
    return pixels.map((value, axis) => this.center[axis] + value / this.#scaleOf(axis));
  }

  #scaleOf(axis) {
    return axis === 2 ? Math.min(...this.scale) : this.scale[axis];
  }

  /** Projects pixels along the axes of the sheet onto the screen: [right, up]. */
  #rotate([x, y, z]) {
    const { sin, cos } = this.#angles();
    return [x * cos.turn - y * sin.turn, (x * sin.turn + y * cos.turn) * cos.tilt + z * sin.tilt];
  }

  #angles() {
    const [turn, tilt] = [this.#turn * degree, this.#tilt * degree];
    return {
      sin: { turn: Math.sin(turn), tilt: Math.sin(tilt) },
      cos: { turn: Math.cos(turn), tilt: Math.cos(tilt) },
    };
  }
}

export const maxDecimals = 12;

/** Number of decimals that distinguishes two numbers that differ by a step. */
export function decimalsOf(step) {
  return Math.min(maxDecimals, Math.max(0, Math.ceil(-Math.log10(step) - 1e-9)));
}
