// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// arrays.js - evaluation over arrays: columns of numbers or points in, one value per row out.
//
// Arrays in the module's memory are used in place. Other arrays are copied in blocks: the memory does not grow with the
// arrays, and a block fits in the processor's cache.
import * as C from "./layouts.js";
import { RowsError } from "./errors.js";
import { allocate, f64, i32, needInstance, u32, wasm, withFrame } from "./module.js";
import { dispose, releaseWith } from "./release.js";
import { Point } from "./values.js";

const rowsOfBlock = 4096;

const arrays = releaseWith((owned) => {
  wasm.free(owned.address);
});

export class MemoryArray {
  #owned = { address: 0 };

  constructor(source) {
    needInstance();
    const length = typeof source === "number" ? source : source.length;
    if (!Number.isInteger(length) || length < 0 || length > 0x0fffffff) {
      throw new RangeError(`mathexpr: an array cannot have the length ${length}`);
    }
    this.length = length;
    this.#owned.address = allocate(8 * Math.max(length, 1));
    arrays.register(this, this.#owned);
    if (typeof source === "number") this.values.fill(0);
    else this.values.set(source);
  }

  get address() {
    if (this.#owned.address === 0) throw new Error("mathexpr: the array has been freed");
    return this.#owned.address;
  }

  get values() {
    return new Float64Array(wasm.memory.buffer, this.address, this.length);
  }

  free() {
    arrays.unregister(this);
    wasm.free(this.#owned.address);
    this.#owned.address = 0;
  }

  [dispose]() {
    this.free();
  }
}

/** Checks a column, which is an array or one value for all rows. Returns its name, width (numbers per row) and data. */
function columnOf(name, source, variable) {
  if (variable === undefined) throw new TypeError(`mathexpr: the column '${name}' is no variable of the expression`);
  const width = variable instanceof Point ? 3 : 1;
  if (typeof source === "number" || source instanceof Point) {
    const numbers = typeof source === "number" ? [source] : [...source];
    if (numbers.length !== width) throw new TypeError(`mathexpr: '${name}' is a ${width === 3 ? "point" : "number"}`);
    return { name, width, numbers, array: null, rows: null };
  }
  const rows = source?.length / width;
  if (!Number.isInteger(rows)) {
    throw new TypeError(`mathexpr: the column '${name}' needs an array of ${width === 3 ? "three numbers" : "a number"} for each row`);
  }
  return { name, width, numbers: null, array: source, rows };
}

function countRows(columns) {
  const counts = columns.filter(({ rows }) => rows !== null);
  if (counts.length === 0) throw new TypeError("mathexpr: one of the columns has to be an array");
  const [{ name, rows }] = counts;
  for (const other of counts) {
    if (other.rows !== rows) {
      throw new TypeError(`mathexpr: '${name}' has ${rows} rows, and '${other.name}' ${other.rows}`);
    }
  }
  return rows;
}

/** Evaluates a range of rows per call, with blocks for arrays outside the module's memory. */
class RowRun {
  constructor(session, frame, columns, rows) {
    this.session = session;
    this.frame = frame;
    this.columns = columns;
    this.rows = rows;
    this.isInMemory = columns.every(({ array }) => array === null || array instanceof MemoryArray);
    this.names = columns.map(({ name }) => frame.text(name));
    this.blocks = columns.map(({ width, array, numbers }) => {
      if (array instanceof MemoryArray) return 0;
      const block = frame.bytes(8 * width * (array === null ? 1 : Math.min(rowsOfBlock, rows)));
      if (numbers !== null) f64.set(numbers, block >> 3);
      return block;
    });
    this.descriptions = frame.bytes(Math.max(columns.length, 1) * C.column.bytes);
    this.results = frame.structure(C.results);
    this.outcome = frame.structure(C.bulk_outcome);
  }

  /** Describes the columns from row `first` on, and copies those outside the module's memory. */
  #describe(first, count) {
    this.columns.forEach(({ name, width, array }, index) => {
      let data = this.blocks[index];
      if (array instanceof MemoryArray) data = array.address + 8 * width * first;
      else if (array !== null) f64.set(sliceOf(array, width * first, width * (first + count)), data >> 3);
      const at = (this.descriptions + index * C.column.bytes) >> 2;
      u32[at + C.column.size / 4] = C.column.bytes;
      u32[at + C.column.kind / 4] = width === 3 ? C.MATHEXPR_POINTS : C.MATHEXPR_NUMBERS;
      u32[at + C.column.name / 4] = this.names[index];
      u32[at + C.column.name_length / 4] = name.length;
      u32[at + C.column.data / 4] = data;
      i32[at + C.column.stride / 4] = array === null ? 0 : 8 * width;
      i32[at + C.column.coordinate_stride / 4] = 8;
    });
  }

  /** Computes rows. `values` and `status` are the addresses of the results. Returns the number of failed rows. */
  compute(first, count, width, values, status) {
    this.#describe(first, count);
    const at = this.results >> 2;
    u32[at + C.results.kind / 4] = width === 3 ? C.MATHEXPR_POINTS : C.MATHEXPR_NUMBERS;
    u32[at + C.results.data / 4] = values;
    i32[at + C.results.stride / 4] = 8 * width;
    i32[at + C.results.coordinate_stride / 4] = 8;
    u32[at + C.results.row_status / 4] = status;
    const { descriptions, columns, results, outcome } = this;
    this.session.call((_, handle) =>
      wasm.mathexpr_evaluate_bulk_utf16(handle, descriptions, columns.length, count, results, 1, outcome),
    );
    return u32[(outcome + C.bulk_outcome.failed_count) >> 2];
  }
}

const sliceOf = (array, begin, end) => (array.subarray ? array.subarray(begin, end) : array.slice(begin, end));

/** Numbers per value: 1 or 3. Computes rows until one has a value. */
function widthOfResults(run) {
  return withFrame((frame) => {
    const count = Math.min(run.rows, rowsOfBlock);
    const values = frame.bytes(8 * count);
    const status = frame.bytes(4 * count);
    for (let first = 0; first < run.rows; first += count) {
      const rows = Math.min(count, run.rows - first);
      const failed = run.compute(first, rows, 1, values, status);
      if (u32.subarray(status >> 2, (status >> 2) + rows).includes(C.MATHEXPR_ROW_OTHER_KIND)) return 3;
      if (failed < rows) return 1;
    }
    return 1;
  });
}

function checkDestination(out, rows, rowStatus) {
  if (!(out instanceof Float64Array || out instanceof MemoryArray) || (out.length !== rows && out.length !== 3 * rows)) {
    throw new TypeError(`mathexpr: 'out' has to be a Float64Array or MemoryArray of ${rows} numbers, or ${3 * rows} for points`);
  }
  if (rowStatus !== undefined && !(rowStatus instanceof Uint32Array && rowStatus.length === rows)) {
    throw new TypeError(`mathexpr: 'rowStatus' has to be a Uint32Array of ${rows} numbers`);
  }
}

export function evaluateRows(session, sources, { out, rowStatus, strict = true } = {}) {
  const columns = Object.entries(sources).map(([name, source]) => columnOf(name, source, session.getVariable(name)));
  const rows = countRows(columns);
  return withFrame((frame) => {
    const run = new RowRun(session, frame, columns, rows);
    const destination = out ?? new Float64Array(rows * (rows === 0 ? 1 : widthOfResults(run)));
    checkDestination(destination, rows, rowStatus);
    const width = destination.length > rows ? 3 : 1;
    const { failedCount, statuses } = computeAll(run, frame, destination, width, rowStatus);
    if (strict && failedCount !== 0) {
      throw new RowsError(failedCount, statuses.findIndex((status) => status !== C.MATHEXPR_ROW_DONE), statuses);
    }
    return destination;
  });
}

/** Computes all rows. Returns their statuses if a row failed or the caller requested them. */
function computeAll(run, frame, destination, width, rowStatus) {
  const isInMemory = destination instanceof MemoryArray;
  const most = Math.max(1, run.isInMemory && isInMemory ? run.rows : Math.min(rowsOfBlock, run.rows));
  const block = isInMemory ? 0 : frame.bytes(8 * width * most);
  const status = frame.bytes(4 * most);
  let failedCount = 0;
  let statuses = rowStatus;
  for (let first = 0; first < run.rows; first += most) {
    const count = Math.min(most, run.rows - first);
    const values = isInMemory ? destination.address + 8 * width * first : block;
    const failed = run.compute(first, count, width, values, status);
    failedCount += failed;
    if (!isInMemory) destination.set(f64.subarray(values >> 3, (values >> 3) + width * count), width * first);
    if (failed !== 0) statuses ??= new Uint32Array(run.rows);
    statuses?.set(u32.subarray(status >> 2, (status >> 2) + count), first);
  }
  return { failedCount, statuses };
}
