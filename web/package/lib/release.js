// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// release.js - gives memory of the module back when the object that owns it is collected and has not been freed.

/**
 * A registry of owners.
 * @param release  takes what was registered beside the owner, which must not refer to it
 */
export function releaseWith(release) {
  const registry = new FinalizationRegistry(release);
  return {
    register: (owner, owned) => registry.register(owner, owned, owner),
    unregister: (owner) => registry.unregister(owner),
  };
}

/** What `using` calls; browsers that do not know it yet get a symbol of the same name. */
export const dispose = Symbol.dispose ?? Symbol.for("Symbol.dispose");
