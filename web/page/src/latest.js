// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** latest.js - runs a task without overlap: any number of calls during a run cause one further run. */

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
