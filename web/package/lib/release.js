// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// release.js - releases memory of the module when its owner is collected without having been freed.

/**
 * A registry of owners.
 * @param release  called with the value registered with the owner, which must not refer to the owner
 */
export function releaseWith(release) {
  const registry = new FinalizationRegistry(release);
  return {
    register: (owner, owned) => registry.register(owner, owned, owner),
    unregister: (owner) => registry.unregister(owner),
  };
}

/** The method that `using` calls; in browsers without it, a symbol of the same name. */
export const dispose = Symbol.dispose ?? Symbol.for("Symbol.dispose");
