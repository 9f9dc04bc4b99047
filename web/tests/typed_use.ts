// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// typed_use.ts - uses the declarations as a TypeScript host does. It is compiled, never run.
import {
  type Completion,
  type Diagnostic,
  type Value,
  type VocabularyItem,
  Expression,
  MathExprError,
  MemoryArray,
  Point,
  RowsError,
  applyEdit,
  evaluate,
  find,
  fn,
  formatValue,
  init,
  initSync,
  setLanguage,
  version,
  vocabulary,
} from "mathexpr";
import { init as initInline } from "mathexpr/inline";

export async function use(): Promise<string> {
  await init({ wasm: new URL("mathexpr.wasm", "https://example.com/"), language: "de" });
  await init({ wasm: fetch("/mathexpr.wasm") });
  await initInline();
  initSync({ wasm: new Uint8Array() });
  setLanguage("fr");

  const value: Value = evaluate("r*[1,2,0]", { r: 2, p: { x: 1, y: 2 }, q: [1, 2, 3] });
  const area: number = fn("x^2+y", "x", "y")(3, 1);
  const resolver = (name: string) => (name === "d" ? new Point(1, 2) : null);
  const expression = new Expression("d+1", {}, { resolver, names: new Set(["d"]), limits: { maxNesting: 10 } });
  const results: Float64Array = expression.evaluateArrays({ d: [1, 2, 3], e: 2, f: new Point(1, 2) });
  const out: MemoryArray = expression.evaluateArrays({ d: new MemoryArray(3) }, { out: new MemoryArray(3) });
  const completions: Completion[] = expression.complete("d", 1, { notes: () => ({ description: "depth" }) });
  const diagnostic: Diagnostic | null = expression.diagnose("1+").diagnostic;
  const items: VocabularyItem[] = [...vocabulary(), ...find("inch mm")];
  try {
    expression.variables.set("a", 1).set("b", [1, 2]);
  } catch (error) {
    if (error instanceof MathExprError && error.fix) return applyEdit(error.text, error.fix);
    if (error instanceof RowsError) return String(error.rowStatus[error.firstFailed]);
    throw error;
  } finally {
    expression.free();
  }
  // @ts-expect-error: a string is not a value
  evaluate("a", { a: "1" });
  // @ts-expect-error: no such notation
  expression.typeset("1", "svg");
  return [formatValue(value), area, results.length, out.values[0], completions[0]?.name, diagnostic?.message]
    .concat(items.map(({ symbol }) => symbol), version())
    .join();
}
