// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// module.js - the instance of the WebAssembly module: its imports, its memory, and access to texts and structures.
//
// A Frame holds everything that a call passes by address, and releases the memory when the call ends.
import * as C from "./layouts.js";

/** Exports of the instance; empty until it exists. */
export let wasm = {};

/** Views of the memory, renewed whenever it grows. */
export let u8, u16, u32, i32, f64;

function renewViews() {
  const { buffer } = wasm.memory;
  u8 = new Uint8Array(buffer);
  u16 = new Uint16Array(buffer);
  u32 = new Uint32Array(buffer);
  i32 = new Int32Array(buffer);
  f64 = new Float64Array(buffer);
}

const errnoNotSupported = 58;

/** The imports of the module. `callbacks` are those of the import module "host". */
function importsOf(callbacks) {
  return {
    host: callbacks,
    env: { emscripten_notify_memory_growth: renewViews },
    wasi_snapshot_preview1: {
      environ_sizes_get(count, bytes) {
        u32[count >> 2] = 0;
        u32[bytes >> 2] = 0;
        return 0;
      },
      environ_get: () => 0,
      // The library uses no streams. What the C library writes before it aborts is discarded.
      fd_read: () => errnoNotSupported,
      fd_write: () => errnoNotSupported,
      fd_fdstat_get: () => errnoNotSupported,
      proc_exit(code) {
        throw new Error(`mathexpr: the module has ended with code ${code}`);
      },
    },
  };
}

function begin(instance) {
  wasm = instance.exports;
  renewViews();
  wasm._initialize();
}

export async function instantiate(module, callbacks) {
  begin(await WebAssembly.instantiate(module, importsOf(callbacks)));
}

export function instantiateSync(module, callbacks) {
  begin(new WebAssembly.Instance(module, importsOf(callbacks)));
}

/** Throws unless the instance exists. */
export function needInstance() {
  if (wasm.memory === undefined) throw new Error("mathexpr: call init() first, and await it");
}

// ----- texts ------------------------------------------------------------------

const unitsAtOnce = 8192;

/** Reads a UTF-16 text. */
export function readText(address, length) {
  const begin = address >> 1;
  if (length <= unitsAtOnce) return String.fromCharCode.apply(null, u16.subarray(begin, begin + length));
  let text = "";
  for (let at = 0; at < length; at += unitsAtOnce) {
    text += String.fromCharCode.apply(null, u16.subarray(begin + at, begin + Math.min(at + unitsAtOnce, length)));
  }
  return text;
}

/** Reads a zero-terminated text; empty for a null pointer. */
export function readZeroTerminated(address) {
  if (address === 0) return "";
  return readText(address, u16.indexOf(0, address >> 1) - (address >> 1));
}

function writeUnits(address, text) {
  const begin = address >> 1;
  for (let i = 0; i < text.length; i++) u16[begin + i] = text.charCodeAt(i);
  u16[begin + text.length] = 0;
}

/** Reads the items of an array in memory. */
export function readArray(address, count, bytes, read) {
  return Array.from({ length: count }, (_, index) => read(address + index * bytes));
}

export const readPointer = (address) => u32[address >> 2];

/** Reads an array of pointers to zero-terminated texts. */
export function readTexts(address, count) {
  return readArray(address, count, 4, (at) => readZeroTerminated(readPointer(at)));
}

/** Allocates memory on the heap, which the caller frees. */
export function allocate(bytes) {
  const address = wasm.malloc(bytes);
  if (address === 0) throw new RangeError("mathexpr: out of memory");
  return address;
}

/** Allocates a zero-terminated text on the heap, which the caller frees. */
export function allocateText(text) {
  const address = allocate(2 * text.length + 2);
  writeUnits(address, text);
  return address;
}

// ----- frames -----------------------------------------------------------------

/** Larger blocks are allocated on the heap. */
const bytesOnStack = 16384;

/** Memory for one call. */
class Frame {
  #stack = wasm.stackSave();
  #blocks = null;

  /** Uninitialised memory. */
  bytes(count) {
    if (count <= bytesOnStack) return wasm.stackAlloc(count);
    const block = allocate(count);
    (this.#blocks ??= []).push(block);
    return block;
  }

  /** A zero-terminated text. */
  text(text) {
    const address = this.bytes(2 * text.length + 2);
    writeUnits(address, text);
    return address;
  }

  /** A zeroed structure; its member `size` is set if it has one. */
  structure(layout) {
    const address = this.bytes(layout.bytes);
    u8.fill(0, address, address + layout.bytes);
    if (layout.size === 0) u32[address >> 2] = layout.bytes;
    return address;
  }

  /** An array of pointers to texts; null if there are none. */
  texts(texts) {
    if (texts.length === 0) return 0;
    const addresses = texts.map((text) => this.text(text));
    const array = this.bytes(4 * addresses.length);
    u32.set(addresses, array >> 2);
    return array;
  }

  end() {
    wasm.stackRestore(this.#stack);
    this.#blocks?.forEach((block) => wasm.free(block));
  }
}

/** Calls a function with a frame, and releases the frame. */
export function withFrame(use) {
  needInstance();
  const frame = new Frame();
  try {
    return use(frame);
  } finally {
    frame.end();
  }
}

/** Checks that a text argument is a string. */
export function checkedText(text, what = "the text") {
  if (typeof text !== "string") throw new TypeError(`mathexpr: ${what} has to be a string, not ${typeof text}`);
  return text;
}

/** Description of a status in English. */
export function statusText(status) {
  const address = wasm.mathexpr_status_text(status);
  return readBytes(address, u8.indexOf(0, address) - address);
}

/** Reads a UTF-8 text. */
export function readBytes(address, length) {
  return new TextDecoder().decode(u8.subarray(address, address + length));
}

/** Writes a text to a frame as zero-terminated UTF-8. Returns its address and length in bytes. */
export function writeBytes(frame, text) {
  const bytes = new TextEncoder().encode(text);
  const address = frame.bytes(bytes.length + 1);
  u8.set(bytes, address);
  u8[address + bytes.length] = 0;
  return { address, length: bytes.length };
}

/** Error for a status other than the failure of a text. */
export function errorOf(status) {
  const message = `mathexpr: ${statusText(status)}`;
  switch (status) {
    case C.MATHEXPR_OUT_OF_MEMORY:
      return new RangeError(message);
    case C.MATHEXPR_BAD_UTF16:
    case C.MATHEXPR_ZERO_IN_TEXT:
    case C.MATHEXPR_BAD_OPTION:
    case C.MATHEXPR_OTHER_KIND:
      return new TypeError(message);
    default:
      return new Error(message);
  }
}
