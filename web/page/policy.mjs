// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * policy.mjs - what the page may do: run and load what lies beside it, and compile WebAssembly. The page says so itself, and servers
 * may say it, too. Styles that scripts set are allowed; those that stand in the markup are not.
 */
export const policy = [
  "default-src 'none'",
  "script-src 'self' 'wasm-unsafe-eval'",
  "style-src 'self'",
  "img-src 'self'",
  "connect-src 'self'",
  "worker-src 'self'",
  "base-uri 'none'",
  "form-action 'none'",
].join("; ");
