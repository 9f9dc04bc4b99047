// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/**
 * policy.mjs - the page's Content-Security-Policy: it may load and run files of its own origin, and compile WebAssembly. index.html
 * contains the policy; a server may also send it as a header. Scripts may set styles; inline styles in the markup are forbidden.
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
