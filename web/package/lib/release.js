// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// release.js - releases the module's memory when its owner is garbage-collected without having been freed.

/**
 * A registry of owners.
 * @param release  called with the value registered for the owner; that value must not refer to the owner
 */
export function releaseWith(release) {
  const registry = new FinalizationRegistry(release);
  return {
    register: (owner, owned) => registry.register(owner, owned, owner),
    unregister: (owner) => registry.unregister(owner),
  };
}

/** Name of the method that `using` calls; where it does not exist, a registered symbol of the same description. */
export const dispose = Symbol.dispose ?? Symbol.for("Symbol.dispose");
