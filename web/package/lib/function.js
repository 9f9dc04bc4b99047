// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// function.js - compiles texts to functions of numbers with positional arguments.
//
// A call passes its numbers as parameters to an export of the module, and checks the status only if the result is NaN. It
// creates no array of arguments and does not access memory: either would take longer than the call.
import * as C from "./layouts.js";
import { checkedText, errorOf, f64, u32, wasm, withFrame } from "./module.js";
import { MathExprError } from "./errors.js";
import { dispose, releaseWith } from "./release.js";
import { Session } from "./session.js";

const functions = releaseWith((owned) => {
  wasm.mathexpr_destroy_function(owned.handle);
});

/** Checks a call whose result is NaN; throws if it failed. */
function checked(result, owned, given) {
  if (owned.handle === 0) throw new Error("mathexpr: the function has been freed");
  const status = wasm.web_call_status();
  if (status === C.MATHEXPR_OK) return result;
  if (status === C.MATHEXPR_REFUSED) throw refusalOf(owned, given);
  throw errorOf(status);
}

/** Evaluates the text again in an expression, to get the diagnostic. */
function refusalOf({ text, names, variables }, given) {
  const session = new Session();
  try {
    for (const [name, value] of variables) session.setVariable(name, value);
    names.forEach((name, index) => session.setVariable(name, Number(given[index])));
    session.compile(text);
    session.evaluate(text);
  } catch (error) {
    if (error instanceof MathExprError) return error;
    throw error;
  } finally {
    session.free();
  }
  return errorOf(C.MATHEXPR_REFUSED);
}

function checkCount(given, names) {
  if (given.length !== names.length) {
    throw new TypeError(`mathexpr: the function takes ${names.length} numbers, not ${given.length}`);
  }
}

/** The callables, indexed by number of arguments; the last one takes any number. */
const callables = [
  (owned) => {
    const call = wasm.web_call_0;
    return function () {
      if (arguments.length !== 0) checkCount(arguments, owned.names);
      const result = call(owned.handle);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
  (owned) => {
    const call = wasm.web_call_1;
    return function (a) {
      if (arguments.length !== 1) checkCount(arguments, owned.names);
      const result = call(owned.handle, a);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
  (owned) => {
    const call = wasm.web_call_2;
    return function (a, b) {
      if (arguments.length !== 2) checkCount(arguments, owned.names);
      const result = call(owned.handle, a, b);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
  (owned) => {
    const call = wasm.web_call_3;
    return function (a, b, c) {
      if (arguments.length !== 3) checkCount(arguments, owned.names);
      const result = call(owned.handle, a, b, c);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
  (owned) => {
    const call = wasm.web_call_4;
    return function (a, b, c, d) {
      if (arguments.length !== 4) checkCount(arguments, owned.names);
      const result = call(owned.handle, a, b, c, d);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
  (owned) => {
    const call = wasm.web_call_5;
    return function (a, b, c, d, e) {
      if (arguments.length !== 5) checkCount(arguments, owned.names);
      const result = call(owned.handle, a, b, c, d, e);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
  (owned) => {
    const call = wasm.web_call_6;
    return function (a, b, c, d, e, f) {
      if (arguments.length !== 6) checkCount(arguments, owned.names);
      const result = call(owned.handle, a, b, c, d, e, f);
      return result === result ? result : checked(result, owned, arguments);
    };
  },
];

function callableOfMany(owned) {
  return (...given) => {
    checkCount(given, owned.names);
    return withFrame((frame) => {
      const numbers = frame.bytes(8 * given.length);
      f64.set(given, numbers >> 3);
      const result = wasm.web_call_many(owned.handle, numbers);
      return result === result ? result : checked(result, owned, given);
    });
  };
}

/** @param session  supplies the variables that are not arguments; the function keeps their present values */
export function compileFunction(session, text, names) {
  for (const name of names) {
    if (session.getVariable(checkedText(name, "a name")) === undefined) session.setVariable(name, 0);
  }
  const handle = session.withoutAssignment(() =>
    withFrame((frame) => {
      const created = frame.bytes(4);
      session.call((_, expression) => {
        const [typed, list] = [frame.text(text), frame.texts(names)];
        return wasm.mathexpr_create_function_utf16(expression, typed, text.length, list, names.length, created);
      }, text);
      return u32[created >> 2];
    }),
  );
  const variables = session.names(C.MATHEXPR_NAMES_DEFINED).map((name) => [name, session.getVariable(name)]);
  const owned = { handle, text, names: Object.freeze([...names]), variables };
  const callable = (callables[names.length] ?? callableOfMany)(owned);
  const free = () => {
    functions.unregister(callable);
    wasm.mathexpr_destroy_function(owned.handle);
    owned.handle = 0;
  };
  Object.defineProperties(callable, {
    text: { value: text },
    names: { value: owned.names },
    free: { value: free },
    [dispose]: { value: free },
  });
  functions.register(callable, owned);
  return callable;
}
