// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// An expression calculator for CAD applications: numbers and points, units, geometry, variables.
//
//     import { init, evaluate } from "mathexpr";
//     await init();
//     evaluate("3*[1,2,0.5]");  // Point { x: 3, y: 6, z: 1.5 }
//
// Texts are JavaScript strings; positions and lengths count UTF-16 units. All functions except init() throw an Error until
// init() has completed.

/// <reference lib="esnext.disposable" />

// ----- start ------------------------------------------------------------------

/** Source of the WebAssembly module. */
export type ModuleSource =
  | string
  | URL
  | Response
  | ArrayBuffer
  | ArrayBufferView
  | WebAssembly.Module
  | PromiseLike<string | URL | Response | ArrayBuffer | ArrayBufferView | WebAssembly.Module>;

export interface InitOptions {
  /** By default `mathexpr.wasm` in the folder of the package; with `mathexpr/inline`, the embedded module. */
  wasm?: ModuleSource;
  /** Language of messages and hints, see setLanguage(). By default the browser's or the process's. */
  language?: string;
}

/**
 * Loads the module. Later calls ignore their options and return the promise of the first call. After a failure, the next call
 * tries again.
 */
export function init(options?: InitOptions): Promise<void>;

/** Loads the module synchronously, from bytes or a compiled module. Browsers may refuse this outside workers. */
export function initSync(options: { wasm: ArrayBuffer | ArrayBufferView | WebAssembly.Module; language?: string }): void;

/**
 * Selects the language of messages and hints by a tag such as "de" or "pt-BR". The languages are English, German, French,
 * Spanish, Italian, Portuguese, Japanese and simplified Chinese; any other tag selects English.
 */
export function setLanguage(tag: string): void;

/** Version of the library, such as "1.0.0". */
export function version(): string;

// ----- values -----------------------------------------------------------------

/** An immutable point. `[...point]` is the array of its coordinates. */
export class Point {
  constructor(x: number, y: number, z?: number);
  readonly x: number;
  readonly y: number;
  readonly z: number;
  [Symbol.iterator](): Iterator<number>;
  /** Returns the text of formatValue(), which an expression reads back. */
  toString(): string;
}

export type Value = number | Point;

/** A value for a variable; a missing z is 0. */
export type ValueLike = number | { readonly x: number; readonly y: number; readonly z?: number } | readonly number[];

/**
 * Formats a value as text that an expression reads back.
 * @param digits  significant digits, 1 to 17; by default the fewest that read back to the same bits
 */
export function formatValue(value: ValueLike, digits?: number): string;

// ----- errors -----------------------------------------------------------------

/** A span of a text. */
export interface Span {
  readonly start: number;
  readonly length: number;
}

/** Replaces a span of a text. */
export interface Edit extends Span {
  readonly replacement: string;
}

export type Expected =
  | "value"
  | "operator"
  | "closing bracket"
  | "separator"
  | "end"
  | "function"
  | "known name"
  | "new name"
  | "other count"
  | "number"
  | "point"
  | "same kind"
  | "in domain"
  | "smaller number"
  | "less";

/** A failure and its position. */
export interface Diagnostic {
  /** The message in the user's language. */
  readonly message: string;
  /** Number of the message, 1 to 19; 0 for a refused name of a variable. */
  readonly messageNumber: number;
  /** "refused": an item refused its arguments, or an integer literal is too large. */
  readonly kind: "parsing" | "definition" | "refused";
  /** Code of the failure: MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_... of the C interface, by kind; else 0. */
  readonly code: number;
  /** The text that failed. */
  readonly text: string;
  /** Span of the failure; length 0 if it has none. */
  readonly span: Span;
  /** The token, symbol or text concerned. */
  readonly item: string;
  /** What a definition conflicts with. */
  readonly conflict: string;
  /** What would have been accepted at the failure. */
  readonly expected: readonly Expected[];
  /** Number of arguments given to the item; 0 if unknown. */
  readonly argCount: number;
  /** Argument counts of the function concerned; Infinity is any number. */
  readonly acceptedArgCounts: readonly number[];
  /** For an unknown name: up to three similar names, the nearest first. */
  readonly suggestions: readonly string[];
  /** Sentences in the user's language that help to correct the text. */
  readonly hints: readonly string[];
  /** The correction that the last hint describes, or null. The corrected text compiles; see applyEdit(). */
  readonly fix: Edit | null;
}

/** Thrown if a text does not compile or has no value. */
export class MathExprError extends Error {}
export interface MathExprError extends Omit<Diagnostic, "message"> {}

/** Thrown by evaluateArrays() if some rows have no value. All other rows have been computed. */
export class RowsError extends Error {
  readonly failedCount: number;
  /** Index of the first row without a value. */
  readonly firstFailed: number;
  /** Per row: 0 for a value, a message number (1 to 19), or 256 for a point among numbers or a number among points. */
  readonly rowStatus: Uint32Array;
}

/** Applies an edit to a text. */
export function applyEdit(text: string, edit: Edit): string;

// ----- expressions ------------------------------------------------------------

/**
 * Called while a text is compiled, for a name that is neither a constant nor a variable. Returns its value, which becomes a
 * variable of that name, or null or undefined if it is unknown. Its exceptions propagate unchanged out of the call that
 * compiles. It must not use the expression.
 */
export type Resolver = (name: string) => ValueLike | null | undefined;

/** Upper bounds on an accepted text; 0 or undefined is no limit. */
export interface Limits {
  /** Unicode characters, blanks included. */
  maxTextLength?: number;
  /** Values, operators and calls, counted at each use. */
  maxRecords?: number;
  /** Nesting depth of brackets and prefix operators. */
  maxNesting?: number;
}

export interface ExpressionOptions {
  resolver?: Resolver;
  /** Names that the resolver knows, for suggestions and completion; iterated over when needed. */
  names?: Iterable<string>;
  limits?: Limits;
}

/** The variables of an expression, by name, in the order of definition. Names ignore the case of A to Z. */
export interface Variables extends Iterable<[string, Value]> {
  readonly size: number;
  get(name: string): Value | undefined;
  has(name: string): boolean;
  /** Throws a MathExprError if the name is not allowed for a variable. */
  set(name: string, value: ValueLike): this;
  /** A text that reads the variable must be compiled again. */
  delete(name: string): boolean;
  keys(): IterableIterator<string>;
  values(): IterableIterator<Value>;
  entries(): IterableIterator<[string, Value]>;
}

/** Memory for results, or for a column of numbers. */
export type NumberArray = Float64Array | MemoryArray;

/** One number per row, or three for points; or one value for all rows. */
export type Column = NumberArray | readonly number[] | number | Point;

export interface ArrayOptions<Out extends NumberArray = NumberArray> {
  /** Receives the values, one number per row, or three for points. */
  out?: Out;
  /** Receives one status per row, see RowsError.rowStatus. */
  rowStatus?: Uint32Array;
  /** By default true. If false, rows without a value are NaN and no RowsError is thrown. */
  strict?: boolean;
}

/** A text and its variables. `using` or free() releases its memory at once; otherwise a finalizer does so later. */
export class Expression implements Disposable {
  /** @param variables  set before the text is compiled */
  constructor(text?: string, variables?: Readonly<Record<string, ValueLike>>, options?: ExpressionOptions);

  /** Compiles another text. After a failure there is nothing to evaluate. The variables are kept in any case. */
  compile(text: string): void;
  /**
   * Evaluates the compiled text, or compiles and evaluates another one. An assignment such as "a=2" takes effect at the
   * first successful evaluation.
   */
  evaluate(text?: string): Value;
  /** Like evaluate(), for a number; throws a TypeError if the value is a point. */
  evaluateNumber(text?: string): number;
  /** Like evaluate(), for a point; throws a TypeError if the value is a number. */
  evaluatePoint(text?: string): Point;
  /**
   * Evaluates the compiled text for each row. Columns are the values of variables that existed when the text was compiled:
   * one number per row, or three if the variable is a Point. Arrays in the module's memory (MemoryArray) are used in place;
   * others are copied.
   */
  evaluateArrays<Out extends NumberArray = Float64Array>(
    columns: Readonly<Record<string, Column>>,
    options?: ArrayOptions<Out>,
  ): Out;
  /**
   * Compiles a text to a function of numbers with positional arguments, the fastest way to compute one number. Argument
   * names that are not variables yet become variables. Other variables keep their present values in the function.
   */
  fn(text: string, ...names: string[]): CompiledFunction;

  readonly variables: Variables;
  /** The last text given to compile, valid or not. */
  readonly text: string;
  /** Names of the variables that the compiled text reads, in the order of first use. */
  readonly usedNames: string[];
  /** Names of the variables that the resolver supplied. */
  readonly hostNames: string[];
  limits: Limits;

  // Editor services. They accept any text, including an incomplete or invalid one, and do not change the expression. A
  // cursor beyond the end counts as the end.

  /** Splits a text into tokens, which cover it without gaps. */
  tokens(text: string): Token[];
  /** Checks whether a text would compile; if not, returns the failure. */
  diagnose(text: string, options?: AskOptions): Diagnosis;
  /** Proposes items that would be accepted at a cursor, the best first. */
  complete(text: string, cursor?: number, options?: CompletionOptions): Completion[];
  /** The innermost function call that is open at a cursor, or null. */
  signature(text: string, cursor?: number): Signature | null;
  /** Describes the token under a cursor; null if there is none, or only a blank. */
  hover(text: string, cursor: number, options?: AskOptions): Hover | null;
  /** Rewrites a text with uniform spacing; it compiles to the same program. */
  format(text: string): string;
  /**
   * Typesets a text for LaTeX math mode (also for MathJax and KaTeX), or as presentation MathML: one element <math>. A text
   * that is not an expression is set verbatim.
   */
  typeset(text: string, notation: "latex" | "mathml"): string;
  /** Finds all uses of a name in a text. */
  references(text: string, name: string): Span[];
  /** Computes the edits that rename a variable at all its uses in a text. */
  rename(text: string, name: string, newName: string): Renaming;
  /** Lists the literal numbers and points in order; a point precedes its coordinates. */
  literals(text: string): Literal[];

  /** Releases the memory. Any later use throws an Error; freeing again has no effect. */
  free(): void;
  [Symbol.dispose](): void;
}

/** A text as a function of numbers, with positional arguments. */
export interface CompiledFunction extends Disposable {
  /** Throws a MathExprError, without a span, if an item refuses its arguments. */
  (...args: number[]): number;
  readonly text: string;
  readonly names: readonly string[];
  free(): void;
  [Symbol.dispose](): void;
}

/** Evaluates a text. */
export function evaluate(
  text: string,
  variables?: Readonly<Record<string, ValueLike>>,
  options?: ExpressionOptions,
): Value;

/** Compiles a text to a function of numbers: `fn("x^2+y", "x", "y")(3, 1)` is 10. */
export function fn(text: string, ...names: string[]): CompiledFunction;

/** Numbers in the module's memory, which evaluateArrays() uses in place. */
export class MemoryArray implements Disposable {
  /** @param source  the number of zeros, or the numbers to copy */
  constructor(source: number | ArrayLike<number>);
  readonly length: number;
  /**
   * A view of the numbers, for reading and writing. It is detached when the module's memory grows: get it again after every
   * other call of the package.
   */
  readonly values: Float64Array;
  free(): void;
  [Symbol.dispose](): void;
}

// ----- editor services --------------------------------------------------------

export type TokenKind =
  | "number"
  | "constant"
  | "function"
  | "variable"
  | "host name"
  | "unknown name"
  | "operator"
  | "bracket"
  | "separator"
  | "assigned name"
  | "assignment sign"
  | "blank"
  | "shorthand"
  | "other";

export type ValueKind = "unknown" | "number" | "point" | "either";

export interface Token extends Span {
  readonly kind: TokenKind;
  readonly text: string;
  /** Number of brackets open around the token. */
  readonly depth: number;
  /** Index of the matching bracket; null for an unmatched bracket and for any other token. */
  readonly partner: number | null;
}

export interface AskOptions {
  /** Whether the resolver may be called for names that are not known otherwise. */
  askResolver?: boolean;
}

export interface Diagnosis {
  /** "unfinished": the text is valid so far, but incomplete. */
  readonly state: "complete" | "unfinished" | "wrong";
  /** Null if the text compiles. */
  readonly diagnostic: Diagnostic | null;
}

/** The host's notes on one of its names. */
export interface NameNotes {
  description?: string;
  valueKind?: ValueKind;
  /** Why the name must not be used here. */
  unavailable?: string;
}

export interface CompletionOptions {
  /** Upper bound on the number of items; by default 200. */
  maxCount?: number;
  /** Recently chosen names, the newest first. */
  recent?: readonly string[];
  /** Returns the host's notes on one of its names. */
  notes?: (name: string) => NameNotes | null | undefined;
}

export interface Completion {
  readonly name: string;
  readonly kind: "constant" | "function" | "variable" | "host name";
  readonly valueKind: ValueKind;
  /** One line. */
  readonly description: string;
  /** Value of a constant or variable; otherwise null. */
  readonly value: Value | null;
  /** Inserts the name; a function is inserted as a valid call. */
  readonly edit: Edit;
  /** What to select after the edit: a call's arguments, otherwise an empty span. */
  readonly selection: Span;
  /** The host's reason why the name must not be used here; otherwise empty. */
  readonly unavailable: string;
}

export interface Overload {
  /** The usage, such as "min(x,y)". */
  readonly help: string;
  readonly description: string;
  /** Names of the parameters; a final "..." means that more may follow. */
  readonly parameters: readonly string[];
  readonly parameterKind: ValueKind;
}

export interface Signature {
  readonly function: string;
  /** Span of the function's name, or of the square bracket. */
  readonly nameSpan: Span;
  /** Index of the argument at the cursor, from 0. */
  readonly argument: number;
  /** Unit of the argument, such as "degree"; empty if it has none. */
  readonly unit: string;
  readonly overloads: readonly Overload[];
  /** Index of the first overload that has this argument. */
  readonly activeOverload: number;
  /** The required kind of the argument. */
  readonly wanted: ValueKind;
}

/** Description of the token under a cursor. Texts that do not apply are empty. */
export interface Hover {
  readonly kind: TokenKind;
  readonly span: Span;
  readonly name: string;
  /** The usage of an operator or function. */
  readonly help: string;
  readonly description: string;
  /** The function's message for an argument outside its domain. */
  readonly domain: string;
  /** Unit of a function's argument. */
  readonly unit: string;
  /** A valid call of the function. */
  readonly example: string;
  readonly exampleValue: Value | null;
  /** Value of a number, a constant, a name, a function call or a bracketed part; otherwise null. */
  readonly value: Value | null;
  /** The part of the text that has this value. */
  readonly valueSpan: Span;
}

export interface Renaming {
  readonly refusal: "done" | "not a name" | "name taken" | "read otherwise";
  /** Span of the conflicting use, for "name taken" and "read otherwise". */
  readonly refusedAt: Span;
  /** In text order; empty if the renaming is refused. */
  readonly edits: readonly Edit[];
}

/** A literal number, including its sign, or a literal point. */
export interface Literal extends Span {
  readonly value: Value;
}

// ----- vocabulary -------------------------------------------------------------

export type Family =
  | "operators"
  | "core math"
  | "angle"
  | "length"
  | "area"
  | "volume"
  | "geometry"
  | "constants";

/** A constant, operator or function. Every overload is a separate item. */
export interface VocabularyItem {
  readonly kind: "constant" | "operator" | "function";
  readonly family: Family;
  readonly symbol: string;
  /** The usage, such as "sin(x)"; empty for a constant. */
  readonly help: string;
  readonly description: string;
  /** Number of arguments or operands; Infinity if any number is accepted; 0 for a constant. */
  readonly argCount: number;
  /** Precedence of an operator, 0 to 4; higher binds tighter. */
  readonly precedence: number;
  /** Whether it is a prefix operator. */
  readonly unary: boolean;
  /** Value of a constant; otherwise null. */
  readonly value: number | null;
  /** Units of the arguments and the result; empty if there are none. */
  readonly units: string;
  /** Accepted arguments. */
  readonly domain: string;
  /** Example expressions that have a value. */
  readonly examples: readonly string[];
}

/** All constants, operators and functions, in this order. */
export function vocabulary(): VocabularyItem[];

/**
 * Finds the items that match all words, the best first: by symbol, by any name of a unit ("inch mm"), by words of the notes and
 * descriptions. A unit alone finds the conversions from it, then those to it.
 */
export function find(words: string): VocabularyItem[];
