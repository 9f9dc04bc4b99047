// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** latest.js - a task whose runs never overlap: while one is going on, however many calls make for one more. */

/** @param {() => Promise<void>} task  reads the latest state itself */
export function latest(task) {
  let isRunning = false;
  let isDue = false;
  return {
    async start() {
      isDue = true;
      if (isRunning) return;
      isRunning = true;
      try {
        while (isDue) {
          isDue = false;
          await task();
        }
      } finally {
        isRunning = false;
      }
    },
  };
}
