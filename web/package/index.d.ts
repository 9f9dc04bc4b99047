// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// An expression calculator for CAD applications: numbers and points, units, geometry, variables.
//
//     import { init, evaluate } from "mathexpr";
//     await init();
//     evaluate("3*[1,2,0.5]");  // Point { x: 3, y: 6, z: 1.5 }
//
// Texts are JavaScript's strings; positions and lengths count their UTF-16 units. Each function but init() needs the module
// and throws an Error before init() has ended.

/// <reference lib="esnext.disposable" />

// ----- start ------------------------------------------------------------------

/** Where the WebAssembly module comes from. */
export type ModuleSource =
  | string
  | URL
  | Response
  | ArrayBuffer
  | ArrayBufferView
  | WebAssembly.Module
  | PromiseLike<string | URL | Response | ArrayBuffer | ArrayBufferView | WebAssembly.Module>;

export interface InitOptions {
  /** By default `mathexpr.wasm` beside this file; with `mathexpr/inline`, the one that it carries. */
  wasm?: ModuleSource;
  /** Language of messages and hints, see setLanguage(). By default the browser's or the process's. */
  language?: string;
}

/**
 * Loads the module. Later calls return the first one's promise, whatever their options; after a failure the next call tries
 * again.
 */
export function init(options?: InitOptions): Promise<void>;

/** The same at once, for bytes or a compiled module. Browsers may refuse to compile so much outside of a worker. */
export function initSync(options: { wasm: ArrayBuffer | ArrayBufferView | WebAssembly.Module; language?: string }): void;

/**
 * Chooses the language of messages and hints: a tag such as "de" or "pt-BR". There are texts in English, German, French, Spanish,
 * Italian, Portuguese, Japanese and simplified Chinese; any other tag gives English.
 */
export function setLanguage(tag: string): void;

/** Version of the library, such as "1.0.0". */
export function version(): string;

// ----- values -----------------------------------------------------------------

/** A point. Immutable. `[...point]` are its coordinates. */
export class Point {
  constructor(x: number, y: number, z?: number);
  readonly x: number;
  readonly y: number;
  readonly z: number;
  [Symbol.iterator](): Iterator<number>;
  /** As formatValue() writes it, which an expression reads back. */
  toString(): string;
}

export type Value = number | Point;

/** What a variable can be set to: z is 0 where it is missing. */
export type ValueLike = number | { readonly x: number; readonly y: number; readonly z?: number } | readonly number[];

/**
 * The text of a value, which an expression reads back.
 * @param digits  significant digits, 1 to 17; by default the fewest that read back to the same bits
 */
export function formatValue(value: ValueLike, digits?: number): string;

// ----- errors -----------------------------------------------------------------

/** A stretch of a text. */
export interface Span {
  readonly start: number;
  readonly length: number;
}

/** What to put in place of a stretch of a text. */
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

/** What is wrong with a text, and where. */
export interface Diagnostic {
  /** The message in the user's language. */
  readonly message: string;
  /** Number of the message, 1 to 19; 0 for a name that was given by itself and that no variable may have. */
  readonly messageNumber: number;
  /** "refused": an item refused its arguments, or an integer literal is too large. */
  readonly kind: "parsing" | "definition" | "refused";
  /** Code of the failure: MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_... of the C interface, by kind; else 0. */
  readonly code: number;
  /** The text that failed. */
  readonly text: string;
  /** The part of it that is concerned; its length is 0 where none is. */
  readonly span: Span;
  /** The token, symbol or text concerned. */
  readonly item: string;
  /** What a definition conflicts with. */
  readonly conflict: string;
  /** What would have been accepted there. */
  readonly expected: readonly Expected[];
  /** Number of arguments given to the item; 0 if unknown. */
  readonly argCount: number;
  /** The numbers of arguments that the function concerned takes; Infinity is any number. */
  readonly acceptedArgCounts: readonly number[];
  /** For an unknown name: up to three that may be meant, the nearest first. */
  readonly suggestions: readonly string[];
  /** Sentences in the user's language that help further. */
  readonly hints: readonly string[];
  /** The correction that the last hint speaks of, or null. The text that it makes compiles: see applyEdit(). */
  readonly fix: Edit | null;
}

/** A text that does not compile, or that has no value. */
export class MathExprError extends Error {}
export interface MathExprError extends Omit<Diagnostic, "message"> {}

/** Rows of arrays have no value; all others have been computed. */
export class RowsError extends Error {
  readonly failedCount: number;
  /** Index of the first row without a value. */
  readonly firstFailed: number;
  /** By row: 0 for a value, the number of a message (1 to 19), or 256 for a value of the other kind. */
  readonly rowStatus: Uint32Array;
}

/** The text after an edit. */
export function applyEdit(text: string, edit: Edit): string;

// ----- expressions ------------------------------------------------------------

/**
 * Answers a name that is neither a constant nor a variable, while a text is compiled; null or undefined where it is unknown.
 * The name is a variable from then on. What it throws comes out of the call that asked. It must not use the expression.
 */
export type Resolver = (name: string) => ValueLike | null | undefined;

/** Upper bounds on a text; 0 or undefined is no limit. */
export interface Limits {
  /** Unicode characters, blanks included. */
  maxTextLength?: number;
  /** Values, operators and calls. */
  maxRecords?: number;
  /** Depth of brackets, and of operators before an operand. */
  maxNesting?: number;
}

export interface ExpressionOptions {
  resolver?: Resolver;
  /** Names that the resolver would answer, for suggestions and completion; gone through when they are needed. */
  names?: Iterable<string>;
  limits?: Limits;
}

/** The variables of an expression, by name; the case of the letters A to Z does not matter. Names keep their order. */
export interface Variables extends Iterable<[string, Value]> {
  readonly size: number;
  get(name: string): Value | undefined;
  has(name: string): boolean;
  /** Throws a MathExprError for a name that no variable may have. */
  set(name: string, value: ValueLike): this;
  /** A compiled text that reads the variable has to be compiled anew. */
  delete(name: string): boolean;
  keys(): IterableIterator<string>;
  values(): IterableIterator<Value>;
  entries(): IterableIterator<[string, Value]>;
}

/** Where a result or a column of numbers is kept. */
export type NumberArray = Float64Array | MemoryArray;

/** For each row a number, or three for a point; or one value for all rows. */
export type Column = NumberArray | readonly number[] | number | Point;

export interface ArrayOptions<Out extends NumberArray = NumberArray> {
  /** Receives the values, one number per row, or three for points. */
  out?: Out;
  /** Receives 0 for each row with a value, else the number of a message, or 256. */
  rowStatus?: Uint32Array;
  /** False: rows without a value are NaN and no RowsError is thrown. */
  strict?: boolean;
}

/** A text and its variables. Use `using`, or free(), to give its memory back early; a finalizer does so late. */
export class Expression implements Disposable {
  /** @param variables  set before the text is compiled */
  constructor(text?: string, variables?: Readonly<Record<string, ValueLike>>, options?: ExpressionOptions);

  /** Compiles another text. After a failure there is nothing to evaluate; the variables stay. */
  compile(text: string): void;
  /**
   * The value of the compiled text, or of another one, which is compiled first. An assignment such as "a=2" is made by the
   * first evaluation that succeeds.
   */
  evaluate(text?: string): Value;
  /** The same for a number; a TypeError where the value is a point. */
  evaluateNumber(text?: string): number;
  /** The same for a point; a TypeError where the value is a number. */
  evaluatePoint(text?: string): Point;
  /**
   * Evaluates the compiled text for each row. Columns are variables that were known when the text was compiled: numbers, or for a
   * variable that is a Point, three numbers per row. Arrays in the module's memory (MemoryArray) are read and written
   * where they are; others are copied.
   */
  evaluateArrays<Out extends NumberArray = Float64Array>(
    columns: Readonly<Record<string, Column>>,
    options?: ArrayOptions<Out>,
  ): Out;
  /**
   * A text as a function of numbers by position, the fastest way to compute one number. The names that are no variables
   * yet become variables. Other variables keep their present values in the function.
   */
  fn(text: string, ...names: string[]): CompiledFunction;

  readonly variables: Variables;
  /** The text that was compiled last, whether or not it compiles. */
  readonly text: string;
  /** Variables that the compiled text reads, in the order of first use. */
  readonly usedNames: string[];
  /** Variables that the resolver has answered. */
  readonly hostNames: string[];
  limits: Limits;

  // Editor services: for any text, broken or half typed. They change nothing. A cursor beyond an end is at the end.

  /** The tokens of a text, which cover it without a gap. */
  tokens(text: string): Token[];
  /** Whether a text would compile, and what is wrong with it. */
  diagnose(text: string, options?: AskOptions): Diagnosis;
  /** What may stand at a cursor and would be accepted, the best first. */
  complete(text: string, cursor?: number, options?: CompletionOptions): Completion[];
  /** The call that is open around a cursor, or null. */
  signature(text: string, cursor?: number): Signature | null;
  /** What stands under a cursor, or null for nothing or a blank. */
  hover(text: string, cursor: number, options?: AskOptions): Hover | null;
  /** The text with even spacing; it compiles to the same program. */
  format(text: string): string;
  /**
   * A text as LaTeX for math mode (what MathJax and KaTeX take), or as presentation MathML: one element <math>. A text that is
   * no expression is set as it was typed.
   */
  typeset(text: string, notation: "latex" | "mathml"): string;
  /** Where a text uses a name. */
  references(text: string, name: string): Span[];
  /** What renames a variable wherever a text uses it. */
  rename(text: string, name: string, newName: string): Renaming;
  /** The numbers and points that are written out, in order; a point stands before its coordinates. */
  literals(text: string): Literal[];

  /** Gives the memory back. Any later use throws an Error; freeing again has no effect. */
  free(): void;
  [Symbol.dispose](): void;
}

/** A text as a function of numbers by position. */
export interface CompiledFunction extends Disposable {
  /** Throws a MathExprError, without a span, where an item refuses its arguments. */
  (...args: number[]): number;
  readonly text: string;
  readonly names: readonly string[];
  free(): void;
  [Symbol.dispose](): void;
}

/** The value of one text. */
export function evaluate(
  text: string,
  variables?: Readonly<Record<string, ValueLike>>,
  options?: ExpressionOptions,
): Value;

/** A text as a function of numbers: `fn("x^2+y", "x", "y")(3, 1)` is 10. */
export function fn(text: string, ...names: string[]): CompiledFunction;

/** Numbers in the module's memory, which evaluateArrays() reads and writes where they are. */
export class MemoryArray implements Disposable {
  /** @param source  a number of zeros, or numbers to copy */
  constructor(source: number | ArrayLike<number>);
  readonly length: number;
  /**
   * A view of the numbers, for reading and writing. It is detached when the module's memory grows: ask for it again after each
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
  /** How many brackets are open around it. */
  readonly depth: number;
  /** Of a bracket: the index of the token that it pairs with; else null. */
  readonly partner: number | null;
}

export interface AskOptions {
  /** Whether names that nothing else knows may be looked up by the resolver. */
  askResolver?: boolean;
}

export interface Diagnosis {
  /** "unfinished": something has to follow; there is no mistake yet. */
  readonly state: "complete" | "unfinished" | "wrong";
  /** Null where the text compiles. */
  readonly diagnostic: Diagnostic | null;
}

/** What a host knows of one of its names. */
export interface NameNotes {
  description?: string;
  valueKind?: ValueKind;
  /** Why the name must not be used here. */
  unavailable?: string;
}

export interface CompletionOptions {
  /** 200 by default. */
  maxCount?: number;
  /** Names that the user has chosen lately, the newest first. */
  recent?: readonly string[];
  /** Tells what is known of one of the host's names. */
  notes?: (name: string) => NameNotes | null | undefined;
}

export interface Completion {
  readonly name: string;
  readonly kind: "constant" | "function" | "variable" | "host name";
  readonly valueKind: ValueKind;
  /** One line. */
  readonly description: string;
  /** Of a constant or variable; else null. */
  readonly value: Value | null;
  /** A function is inserted as a call that works. */
  readonly edit: Edit;
  /** What to select in the text afterwards: the arguments, to be typed over; else a place. */
  readonly selection: Span;
  /** Why the host does not want the name here; else empty. */
  readonly unavailable: string;
}

export interface Overload {
  /** The usage, such as "min(x,y)". */
  readonly help: string;
  readonly description: string;
  /** Their names; a last one of "..." repeats. */
  readonly parameters: readonly string[];
  readonly parameterKind: ValueKind;
}

export interface Signature {
  readonly function: string;
  /** The function's name in the text, or the square bracket. */
  readonly nameSpan: Span;
  /** The argument at the cursor, from 0. */
  readonly argument: number;
  /** Of the argument, such as "degree"; empty where it has none. */
  readonly unit: string;
  readonly overloads: readonly Overload[];
  /** Index of the overload that has this argument. */
  readonly activeOverload: number;
  /** What the argument has to be. */
  readonly wanted: ValueKind;
}

/** Texts are empty where there is nothing to say. */
export interface Hover {
  readonly kind: TokenKind;
  readonly span: Span;
  readonly name: string;
  /** The usage of an operator or function. */
  readonly help: string;
  readonly description: string;
  /** The message of an argument that a function is not defined for. */
  readonly domain: string;
  /** Of a function's argument. */
  readonly unit: string;
  /** A call of a function. */
  readonly example: string;
  readonly exampleValue: Value | null;
  /** Of a number, constant or name, of the call of a function, or of what a bracket encloses. */
  readonly value: Value | null;
  /** What has this value. */
  readonly valueSpan: Span;
}

export interface Renaming {
  readonly refusal: "done" | "not a name" | "name taken" | "read otherwise";
  /** The use that stands in the way, with the last two refusals. */
  readonly refusedAt: Span;
  /** In the order of the text; none where the renaming is refused. */
  readonly edits: readonly Edit[];
}

/** A number, with its sign, or a point that is written out. */
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

/** A constant, operator or function; overloads are items of their own. */
export interface VocabularyItem {
  readonly kind: "constant" | "operator" | "function";
  readonly family: Family;
  readonly symbol: string;
  /** The usage, such as "sin(x)"; empty for a constant. */
  readonly help: string;
  readonly description: string;
  /** Number of arguments or operands; Infinity for any; 0 for a constant. */
  readonly argCount: number;
  /** Of an operator, 0 to 4; higher binds tighter. */
  readonly precedence: number;
  /** Whether it is an operator before its operand. */
  readonly unary: boolean;
  /** Of a constant; else null. */
  readonly value: number | null;
  /** Units of the arguments and the result; empty where there are none. */
  readonly units: string;
  /** What the item accepts. */
  readonly domain: string;
  /** Expressions that show it and have a value. */
  readonly examples: readonly string[];
}

/** All constants, operators and functions, in this order. */
export function vocabulary(): VocabularyItem[];

/**
 * Those that have to do with all words, the best first: symbols, units in all their spellings ("inch mm"), words of the notes and
 * descriptions. A unit by itself finds what converts from it, then what converts to it.
 */
export function find(words: string): VocabularyItem[];
