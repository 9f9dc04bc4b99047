// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** tabs.js - the tabs of the views, selected by a click, the arrow keys, Home or End. */

/** @param {(panel: string) => void} onShow */
export function useTabs(onShow) {
  const tabs = [...document.querySelectorAll("[role=tab]")];
  const choose = (tab) => {
    for (const other of tabs) {
      const isChosen = other === tab;
      other.setAttribute("aria-selected", String(isChosen));
      other.tabIndex = isChosen ? 0 : -1;
      document.getElementById(other.getAttribute("aria-controls")).hidden = !isChosen;
    }
    onShow(tab.getAttribute("aria-controls"));
  };
  tabs.forEach((tab, index) => {
    tab.addEventListener("click", () => choose(tab));
    tab.addEventListener("keydown", ({ key }) => {
      const next = { ArrowLeft: index - 1, ArrowRight: index + 1, Home: 0, End: tabs.length - 1 }[key];
      if (next === undefined) return;
      const chosen = tabs[(next + tabs.length) % tabs.length];
      chosen.focus();
      choose(chosen);
    });
  });
}
