// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * view.js - which part of the plan is seen, and where on the screen. Both axes have one scale, unless only curves are shown.
 */
const margin = 48;
const minScale = 1e-9;
const maxScale = 1e12;

/** Steps of a grid, in units: 1, 2 or 5 times a power of ten, of at least so many pixels. */
const minGridPixels = 56;

export class View {
  width = 1;
  height = 1;
  center = [0, 0];
  scale = [40, 40];

  toScreen([x, y]) {
    return [this.width / 2 + (x - this.center[0]) * this.scale[0], this.height / 2 - (y - this.center[1]) * this.scale[1]];
  }

  toPlan(left, top) {
    return [
      this.center[0] + (left - this.width / 2) / this.scale[0],
      this.center[1] - (top - this.height / 2) / this.scale[1],
    ];
  }

  /** What is seen: [from, to] of an axis, 0 or 1. */
  range(axis) {
    const half = (axis ? this.height : this.width) / 2 / this.scale[axis];
    return [this.center[axis] - half, this.center[axis] + half];
  }

  pan(left, top) {
    this.center = [this.center[0] - left / this.scale[0], this.center[1] + top / this.scale[1]];
  }

  /** Zooms around a place of the screen, which stays where it is. */
  zoom(factor, left = this.width / 2, top = this.height / 2) {
    const before = this.toPlan(left, top);
    this.scale = this.scale.map((scale) => Math.min(maxScale, Math.max(minScale, scale * factor)));
    const after = this.toPlan(left, top);
    this.center = this.center.map((center, axis) => center + before[axis] - after[axis]);
  }

  /**
   * Shows a rectangle.
   * @param {[number, number]} xs
   * @param {[number, number]} ys
   * @param {boolean} isPlan  one scale for both axes
   */
  fit(xs, ys, isPlan) {
    this.center = [(xs[0] + xs[1]) / 2, (ys[0] + ys[1]) / 2];
    const room = [Math.max(this.width - 2 * margin, 40), Math.max(this.height - 2 * margin, 40)];
    const sizes = [xs[1] - xs[0], ys[1] - ys[0]];
    const scales = sizes.map((size, axis) => (size > 0 ? room[axis] / size : Infinity));
    const least = Math.min(...scales);
    this.scale = scales.map((scale) => {
      const chosen = isPlan || scale === Infinity ? least : scale;
      return Number.isFinite(chosen) ? Math.min(maxScale, Math.max(minScale, chosen)) : 40;
    });
  }

  /** Units between two lines of the grid. */
  gridStep(axis) {
    const least = minGridPixels / this.scale[axis];
    const power = 10 ** Math.floor(Math.log10(least));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => step >= least * (1 - 1e-12));
  }
}

/** Decimals that tell two numbers apart that differ by a step. */
export function decimalsOf(step) {
  return Math.min(12, Math.max(0, Math.ceil(-Math.log10(step) - 1e-9)));
}
