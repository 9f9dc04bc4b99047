// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// values.js - converts between JavaScript's numbers and points and the records in the module's memory.
import * as C from "./layouts.js";
import { errorOf, f64, readText, u8, u32, wasm, withFrame } from "./module.js";

export class Point {
  constructor(x, y, z = 0) {
    this.x = x;
    this.y = y;
    this.z = z;
    Object.freeze(this);
  }

  *[Symbol.iterator]() {
    yield this.x;
    yield this.y;
    yield this.z;
  }

  toString() {
    return formatValue(this);
  }
}

export function readValue(address) {
  const at = (address + C.value.x) >> 3;
  return u8[address + C.value.type] === C.MATHEXPR_POINT ? new Point(f64[at], f64[at + 1], f64[at + 2]) : f64[at];
}

/** The coordinates of a point or point-like value; null for anything else. */
function coordinatesOf(value) {
  if (typeof value !== "object" || value === null) return null;
  const coordinates = Array.isArray(value) ? value : [value.x, value.y, value.z];
  const [x, y, z = 0, ...others] = coordinates;
  return [x, y, z].every((number) => typeof number === "number") && others.length === 0 ? [x, y, z] : null;
}

/** Writes a value record; the memory may be uninitialised. */
export function writeValue(address, value) {
  const coordinates = typeof value === "number" ? [value, 0, 0] : coordinatesOf(value);
  if (coordinates === null) {
    throw new TypeError("mathexpr: a value is a number, a point {x, y, z} or an array of two or three numbers");
  }
  u32[address >> 2] = typeof value === "number" ? C.MATHEXPR_NUMBER : C.MATHEXPR_POINT;
  u32[(address >> 2) + 1] = 0;
  f64.set(coordinates, (address + C.value.x) >> 3);
}

export function formatValue(value, digits = 0) {
  return withFrame((frame) => {
    const record = frame.structure(C.value);
    writeValue(record, value);
    const text = frame.bytes(2 * C.MATHEXPR_VALUE_TEXT_CAPACITY);
    const length = frame.bytes(4);
    const status = wasm.mathexpr_format_value_utf16(record, digits, text, C.MATHEXPR_VALUE_TEXT_CAPACITY, length);
    if (status !== C.MATHEXPR_OK) throw errorOf(status);
    return readText(text, u32[length >> 2]);
  });
}
