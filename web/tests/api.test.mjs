// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// api.test.mjs - tests of the package's public interface in Node.
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { before, describe, test } from "node:test";
import { Worker } from "node:worker_threads";

import * as mathexpr from "mathexpr";

const {
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
  vocabulary,
} = mathexpr;

/** The exception that a call throws. */
function thrownBy(call) {
  try {
    call();
  } catch (error) {
    return error;
  }
  return assert.fail("nothing was thrown");
}

test("before init() each call throws an error that says so", () => {
  for (const call of [
    () => evaluate("1"),
    () => new Expression(),
    () => fn("1"),
    () => vocabulary(),
    () => find("sin"),
    () => formatValue(1),
    () => new MemoryArray(1),
    () => mathexpr.version(),
    () => mathexpr.setLanguage("en"),
  ]) {
    assert.match(thrownBy(call).message, /call init\(\) first/);
  }
});

test("init() can be called again after a failure, and initialises once", async () => {
  await assert.rejects(mathexpr.init({ wasm: new Uint8Array(8) }), WebAssembly.CompileError);
  await assert.rejects(mathexpr.init({ wasm: "no/such/file.wasm" }), { code: "ENOENT" });
  const first = mathexpr.init({ language: "en" });
  assert.equal(mathexpr.init({ wasm: "no/such/file.wasm" }), first);
  await first;
  mathexpr.initSync({ wasm: new Uint8Array(8) }); // ignored: the module is loaded
});

describe("with the module", () => {
  before(() => mathexpr.init());

  test("values are numbers and points", () => {
    assert.equal(mathexpr.version(), "1.0.0");
    assert.equal(evaluate("1+2"), 3);
    assert.equal(evaluate("sin(30)"), 0.5000000000000299);
    assert.ok(Object.is(evaluate("0*-1"), -0));
    const point = evaluate("3*[1,2,0.5]");
    assert.ok(point instanceof Point);
    assert.deepEqual([...point], [3, 6, 1.5]);
    assert.equal(`${point}`, "[3,6,1.5]");
    assert.throws(() => {
      point.x = 1;
    }, TypeError);
    assert.deepEqual(evaluate("p*2", { p: { x: 1, y: 2 } }), new Point(2, 4));
    assert.deepEqual(evaluate("p*2", { p: [1, 2, 3] }), new Point(2, 4, 6));
    assert.equal(formatValue(0.1 + 0.2), "0.30000000000000004");
    assert.equal(formatValue([1 / 3, 2], 3), "[0.333,2,0]");
    assert.throws(() => formatValue(1, 18), TypeError);
  });

  test("invalid values are refused", () => {
    for (const value of ["1", null, undefined, [1], [1, 2, 3, 4], { x: 1 }, [1, "2"], 1n]) {
      assert.throws(() => evaluate("a", { a: value }), { name: "TypeError", message: /a value is a number, a point/ });
    }
    for (const text of [undefined, 1, null, {}]) {
      assert.throws(() => evaluate(text), { name: "TypeError", message: /has to be a string/ });
    }
  });

  test("an error contains its message, position, suggestions and fix", () => {
    const error = thrownBy(() => evaluate("2*sni(30)"));
    assert.ok(error instanceof MathExprError && error instanceof Error);
    const { message, stack, ...told } = error;
    assert.equal(message, "The text before ( is not a function: check its name, or write * to multiply.");
    assert.deepEqual(told, {
      messageNumber: 4,
      kind: "parsing",
      code: 10,
      text: "2*sni(30)",
      span: { start: 2, length: 3 },
      item: "sni",
      conflict: "",
      expected: ["function"],
      argCount: 0,
      acceptedArgCounts: [],
      suggestions: ["sin"],
      hints: ["Did you mean sin?"],
      fix: { start: 2, length: 3, replacement: "sin" },
    });
    assert.equal(applyEdit(error.text, error.fix), "2*sin(30)");

    const refused = thrownBy(() => evaluate("1+3/0"));
    assert.deepEqual([refused.kind, refused.code, refused.span], ["refused", 0, { start: 3, length: 1 }]);
    const count = thrownBy(() => evaluate("sqrt(1,2)"));
    assert.deepEqual([count.argCount, count.acceptedArgCounts], [2, [1]]);
  });

  test("positions count UTF-16 units", () => {
    const error = thrownBy(() => evaluate("1+\u{1D465}y+2"));
    assert.deepEqual(error.span, { start: 2, length: 3 });
    assert.equal(error.item, "\u{1D465}y");
    assert.equal(evaluate("\u{1D465}\u00E9*2", { "\u{1D465}\u00E9": 4 }), 8);
  });

  test("an argument that is not a valid text is refused", () => {
    assert.throws(() => evaluate("1+\ud800"), { name: "TypeError", message: /not well-formed UTF-16/ });
    assert.throws(() => evaluate("1\0"), { name: "TypeError", message: /zero in the text/ });
  });

  test("variables persist from one text to the next", () => {
    using(new Expression(), (sheet) => {
      assert.equal(sheet.evaluate("width=2.5"), 2.5);
      assert.equal(sheet.evaluate("WIDTH*i2mm(1)"), 63.5);
      sheet.variables.set("p", [1, 2]).set("width", 3);
      assert.deepEqual([...sheet.variables], [["width", 3], ["p", new Point(1, 2)]]);
      assert.equal(sheet.variables.size, 2);
      assert.equal(sheet.variables.has("P"), true);
      sheet.compile("width+1");
      assert.deepEqual(sheet.usedNames, ["width"]);
      assert.equal(sheet.variables.delete("width"), true);
      assert.equal(sheet.variables.delete("width"), false);
      assert.equal(sheet.variables.get("width"), undefined);
      assert.throws(() => sheet.evaluate(), /no compiled text/);
      const error = thrownBy(() => sheet.variables.set("a.b", 1));
      assert.ok(error instanceof MathExprError);
      assert.deepEqual([error.kind, error.code, error.span], ["definition", 15, { start: 1, length: 1 }]);
      assert.throws(() => sheet.evaluateNumber("p"), TypeError);
      assert.throws(() => sheet.evaluatePoint("1"), TypeError);
      // A failed assignment is dropped.
      assert.throws(() => sheet.evaluate("pi=3"), MathExprError);
      assert.equal(sheet.evaluate("4"), 4);
      assert.equal(sheet.variables.has("pi"), false);
    });
  });

  test("a resolver supplies names, and its exceptions propagate", () => {
    const asked = [];
    const resolver = (name) => {
      asked.push(name);
      if (name === "bad") throw new RangeError("mine");
      if (name === "wrong") return "text";
      return name === "d1" ? 13 : name === "p1" ? [1, 2, 3] : null;
    };
    using(new Expression("d1*p1", {}, { resolver, names: ["d1", "p1", "delta"] }), (expression) => {
      assert.deepEqual(expression.evaluate(), new Point(13, 26, 39));
      assert.deepEqual(asked, ["d1", "p1"]);
      assert.deepEqual(expression.hostNames, ["d1", "p1"]);
      assert.throws(() => expression.compile("bad+1"), { name: "RangeError", message: "mine" });
      assert.throws(() => expression.compile("wrong+1"), TypeError);
      assert.deepEqual(thrownBy(() => expression.compile("delt+1")).suggestions, ["delta"]);
      assert.equal(expression.evaluate("d1+1"), 14);
    });
    // A resolver cannot use its own expression, but may use another one.
    const own = new Expression(undefined, {}, { resolver: () => own.evaluate("1") });
    assert.throws(() => own.compile("x"), /cannot be used by its own callbacks/);
    own.free();
    assert.equal(evaluate("x+1", {}, { resolver: () => evaluate("y", {}, { resolver: () => 2 }) }), 3);
    const thrower = {
      *[Symbol.iterator]() {
        yield "known";
        throw new SyntaxError("of names");
      },
    };
    assert.throws(() => evaluate("unknown", {}, { resolver: () => null, names: thrower }), SyntaxError);
  });

  test("limits", () => {
    using(new Expression(undefined, {}, { limits: { maxNesting: 3 } }), (expression) => {
      assert.deepEqual(expression.limits, { maxTextLength: 0, maxRecords: 0, maxNesting: 3 });
      assert.equal(thrownBy(() => expression.evaluate("((((1))))")).code, 19);
      expression.limits = { maxTextLength: 5 };
      assert.equal(thrownBy(() => expression.evaluate("1+2+3+4")).code, 17);
      assert.throws(() => {
        expression.limits = { maxRecords: -1 };
      }, RangeError);
    });
  });

  test("functions of numbers with positional arguments", () => {
    const area = fn("x^2+y", "x", "y");
    assert.equal(area(3, 1), 10);
    assert.equal(area.text, "x^2+y");
    assert.deepEqual(area.names, ["x", "y"]);
    assert.throws(() => area(3), { name: "TypeError", message: /takes 2 numbers, not 1/ });
    const names = ["a", "b", "c", "d", "f", "g", "p", "q"]; // more than the module's calls have parameters
    for (let count = 0; count <= names.length; count++) {
      const used = names.slice(0, count);
      const sum = fn(["1", ...used].join("+"), ...used);
      const given = used.map((_, index) => 10 ** index);
      assert.equal(sum(...given), Number("1".repeat(count) || 0) + 1);
      const message = `mathexpr: the function takes ${count} numbers, not ${count + 1}`;
      assert.throws(() => sum(...given, 1), { name: "TypeError", message });
      sum.free();
      assert.throws(() => sum(...given), { name: "Error", message: "mathexpr: the function has been freed" });
    }
    const quotient = fn("1/(x-1)", "x");
    assert.equal(quotient(3), 0.5);
    const error = thrownBy(() => quotient(1));
    assert.ok(error instanceof MathExprError);
    assert.deepEqual([error.messageNumber, error.span], [10, { start: 1, length: 1 }]);
    assert.ok(Number.isNaN(fn("x", "x")(NaN)));
    assert.throws(() => fn("[x,1]", "x"), TypeError);
    assert.throws(() => fn("x", "x", "X"), TypeError);
    assert.throws(() => fn("x+", "x"), MathExprError);
    area.free();
    area.free();
    assert.throws(() => area(1, 2), /freed/);
    using(new Expression(undefined, { k: 2 }), (expression) => {
      const scaled = expression.fn("k*x", "x");
      expression.variables.set("k", 5);
      assert.equal(scaled(3), 6);
    });
  });

  test("arrays are copied, or used in place", () => {
    using(new Expression("x*x+y", { x: 0, y: 1 }), (expression) => {
      assert.deepEqual(expression.evaluateArrays({ x: [1, 2, 3] }), new Float64Array([2, 5, 10]));
      const rows = 100000;
      const x = Float64Array.from({ length: rows }, (_, row) => row / 7);
      const expected = x.map((value) => value * value + 3);
      assert.deepEqual(expression.evaluateArrays({ x, y: 3 }), expected);
      const [inside, out] = [new MemoryArray(x), new MemoryArray(rows)];
      assert.equal(expression.evaluateArrays({ x: inside, y: 3 }, { out }), out);
      assert.deepEqual(out.values, expected);
      expression.evaluateArrays({ x: inside, y: 3 }, { out: inside });
      assert.deepEqual(inside.values, expected);
      const block = new MemoryArray(20e6); // the memory grows
      assert.equal(inside.values[3], expected[3]);
      for (const array of [inside, out, block]) array.free();
      assert.throws(() => inside.values, /freed/);
      assert.deepEqual(expression.evaluateArrays({ x: [] }), new Float64Array(0));
      assert.throws(() => expression.evaluateArrays({ z: [1] }), /no variable/);
      assert.throws(() => expression.evaluateArrays({ x: [1], y: [1, 2] }), /'x' has 1 rows, and 'y' 2/);
      assert.throws(() => expression.evaluateArrays({ x: 1 }), /has to be an array/);
      assert.throws(() => expression.evaluateArrays({ x: [1] }, { out: new Float64Array(2) }), TypeError);
      assert.throws(() => expression.evaluateArrays({ x: [1] }, { out: [1] }), TypeError);
    });
    using(new Expression("p*2+[1,0]", { p: [0, 0] }), (expression) => {
      assert.deepEqual(
        expression.evaluateArrays({ p: [1, 2, 3, 4, 5, 6] }),
        new Float64Array([3, 4, 6, 9, 10, 12]),
      );
      assert.throws(() => expression.evaluateArrays({ p: [1, 2] }), TypeError);
      assert.throws(() => expression.evaluateArrays({ p: 1, q: [1] }), TypeError);
    });
    using(new Expression("10/x", { x: 1 }), (expression) => {
      const rowStatus = new Uint32Array(3);
      const error = thrownBy(() => expression.evaluateArrays({ x: [1, 0, 2] }, { rowStatus }));
      assert.ok(error instanceof RowsError);
      assert.deepEqual([error.failedCount, error.firstFailed, [...rowStatus]], [1, 1, [0, 10, 0]]);
      const values = expression.evaluateArrays({ x: [1, 0, 2] }, { strict: false });
      assert.deepEqual([...values], [10, NaN, 5]);
      const x = new Float64Array(10000).fill(4); // several blocks
      x[9000] = x[9999] = 0;
      const inside = new MemoryArray(x);
      for (const columns of [{ x }, { x: inside }]) {
        const { failedCount, firstFailed, rowStatus: statuses } = thrownBy(() => expression.evaluateArrays(columns));
        assert.deepEqual([failedCount, firstFailed, statuses.length], [2, 9000, 10000]);
        assert.deepEqual([...statuses].flatMap((status, row) => (status === 0 ? [] : [row, status])), [9000, 10, 9999, 10]);
      }
      inside.free();
    });
  });

  test("editor services", () => {
    using(new Expression(undefined, { width: 2, p: [1, 2] }), (expression) => {
      assert.deepEqual(
        expression.tokens("2*sin(30").map(({ kind, text, start, partner }) => [kind, text, start, partner]),
        [
          ["number", "2", 0, null],
          ["operator", "*", 1, null],
          ["function", "sin", 2, null],
          ["bracket", "(", 5, null],
          ["number", "30", 6, null],
        ],
      );
      assert.equal(expression.tokens("(1)")[0].partner, 2);
      const [first] = expression.complete("3*wi");
      assert.deepEqual([first.name, first.value, applyEdit("3*wi", first.edit)], ["width", 2, "3*width"]);
      assert.equal(expression.complete("", 0, { maxCount: 3 }).length, 3);
      const signature = expression.signature("min(1,");
      assert.deepEqual(
        [signature.function, signature.argument, signature.overloads[0].parameters, signature.wanted],
        ["min", 1, ["x", "y"], "number"],
      );
      assert.equal(expression.signature("1+2"), null);
      const hover = expression.hover("2*sqrt(width)", 3);
      assert.deepEqual([hover.help, hover.value, hover.span], ["sqrt(x)", Math.SQRT2, { start: 2, length: 4 }]);
      assert.equal(expression.hover("1   + 2", 2), null);
      assert.equal(expression.format("max( 1,2 )*x+1"), "max(1, 2) * x + 1");
      assert.equal(expression.typeset("p_1/(1+x)^2", "latex"), "\\frac{p_{1}}{\\left(1 + x\\right)^{2}}");
      assert.match(expression.typeset("1/2", "mathml"), /^<math.*<mfrac>.*<\/math>$/);
      assert.throws(() => expression.typeset("1", "svg"), TypeError);
      assert.deepEqual(expression.references("width+1+WIDTH", "width").map(({ start }) => start), [0, 8]);
      const renaming = expression.rename("width+1", "width", "w");
      assert.equal(applyEdit("width+1", renaming.edits[0]), "w+1");
      assert.equal(expression.rename("width+w", "width", "w").refusal, "name taken");
      assert.deepEqual(
        expression.literals("[1,2]-3").map(({ start, length, value }) => [start, length, value]),
        [
          [0, 5, new Point(1, 2)],
          [1, 1, 1],
          [3, 1, 2],
          [6, 1, 3],
        ],
      );
      assert.deepEqual(expression.diagnose("1+2"), { state: "complete", diagnostic: null });
      assert.equal(expression.diagnose("2*(").state, "unfinished");
      assert.deepEqual(expression.diagnose("2*)3").diagnostic.span, { start: 2, length: 1 });
    });
    const options = { resolver: (name) => (name === "beam" ? 7 : null), names: ["beam"] };
    using(new Expression(undefined, {}, options), (expression) => {
      const notes = (name) => ({ description: `of ${name}`, valueKind: "number", unavailable: "locked" });
      const beam = expression.complete("be", 2, { notes }).find(({ name }) => name === "beam");
      assert.deepEqual(
        [beam.kind, beam.description, beam.valueKind, beam.unavailable],
        ["host name", "of beam", "number", "locked"],
      );
      assert.throws(() => expression.complete("be", 2, { notes: () => ({ valueKind: "colour" }) }), TypeError);
      assert.equal(expression.hover("beam", 1, { askResolver: true }).value, 7);
    });
  });

  test("vocabulary and search", () => {
    const items = vocabulary();
    assert.equal(items.length, 277);
    const sine = items.find(({ symbol }) => symbol === "sin");
    assert.deepEqual([sine.kind, sine.family, sine.help], ["function", "core math", "sin(x)"]);
    assert.equal(items.find(({ symbol }) => symbol === "pi").value, evaluate("pi"));
    assert.deepEqual(find("inch mm").map(({ symbol }) => symbol)[0], "i2mm");
    assert.deepEqual(find("no such thing"), []);
    assert.equal(find("sin")[0].symbol, "sin");
    for (const { symbol, examples } of items) {
      for (const example of examples) assert.doesNotThrow(() => evaluate(example), `${symbol}: ${example}`);
    }
  });

  test("messages in the languages of the library", () => {
    const messages = new Map();
    for (const tag of ["en", "de-AT", "fr", "es", "it", "pt-BR", "ja-JP", "zh-CN", "zh-Hans", "xx"]) {
      mathexpr.setLanguage(tag);
      messages.set(tag, thrownBy(() => evaluate("2*(3")).message);
    }
    mathexpr.setLanguage("en");
    assert.match(messages.get("de-AT"), /Klammer/);
    assert.equal(messages.get("xx"), messages.get("en"));
    assert.equal(new Set(messages.values()).size, 8);
  });

  test("use after free() throws an error, and freeing twice has no effect", () => {
    const expression = new Expression("1");
    expression.free();
    expression.free();
    for (const use of [() => expression.evaluate(), () => expression.tokens("1"), () => expression.variables.get("x")]) {
      assert.throws(use, /the expression has been freed/);
    }
  });

  test("finalizers release the memory of unreachable objects", { skip: !globalThis.gc }, async () => {
    const rounds = 40;
    const make = () => {
      for (let i = 0; i < 50; i++) {
        new Expression("x+1", { x: i });
        fn("x+1", "x");
        new MemoryArray(10000);
      }
    };
    const bytes = () => new MemoryArray(0).address;
    let highest = 0;
    for (let round = 0; round < rounds; round++) {
      make();
      globalThis.gc();
      await new Promise((resolve) => setTimeout(resolve));
      if (round === rounds / 2) highest = bytes() + 50 * 80000 * 4;
    }
    assert.ok(bytes() < highest, `the heap has grown to ${bytes()}`);
  });

  test("a text of any length has a value or throws, and the next text is computed", () => {
    const deep = 200000;
    const texts = {
      "open brackets": "(".repeat(deep),
      "nested brackets": `${"(".repeat(deep)}1${")".repeat(deep)}`,
      "a long sum": Array.from({ length: deep }, () => "1").join("+"),
      "a long name": "x".repeat(deep),
      "many signs": `${"-".repeat(deep)}1`,
      "powers": Array.from({ length: deep }, () => "1").join("^"),
    };
    const outcomes = Object.values(texts).map((text) => {
      try {
        return evaluate(text);
      } catch (error) {
        return error.name;
      }
    });
    assert.deepEqual(outcomes, ["MathExprError", 1, deep, "MathExprError", 1, 1]);
    assert.equal(evaluate("1+1"), 2);
  });
});

test("running out of memory throws an error, and existing objects keep working", async () => {
  const bytes = await readFile(new URL(import.meta.resolve("mathexpr/mathexpr.wasm")));
  assert.ok(WebAssembly.validate(bytes));
  const arrays = [];
  const expression = new Expression("x+1", { x: 1 });
  assert.throws(() => {
    for (;;) arrays.push(new MemoryArray(0x07ffffff));
  }, RangeError);
  assert.throws(() => new MemoryArray(0x0fffffff), RangeError);
  for (const array of arrays) array.free();
  assert.equal(expression.evaluate(), 2);
  expression.free();
});

test("a function with deep nesting needs no more stack than a shallow one", async () => {
  const program = `
    const { fn, init } = await import(${JSON.stringify(import.meta.resolve("mathexpr"))});
    const { parentPort } = await import("node:worker_threads");
    await init();
    const [few, many] = [10, 4000].map((count) => fn("sqrt(".repeat(count) + "x" + ")".repeat(count), "x"));
    parentPort.postMessage([few(1), many(1), many(2)]);`;
  const url = new URL(`data:text/javascript,${encodeURIComponent(program)}`);
  const worker = new Worker(url, { resourceLimits: { stackSizeMb: 0.35 } });
  const answer = await new Promise((resolve, reject) => worker.on("message", resolve).on("error", reject));
  assert.deepEqual(answer, [1, 1, 1]);
});

/** Like the declaration `using`, which Node 20 does not support. */
function using(resource, use) {
  try {
    use(resource);
  } finally {
    resource[Symbol.dispose ?? Symbol.for("Symbol.dispose")]();
  }
}

