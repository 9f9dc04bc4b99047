// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** theme.js - the editor's styles, in the colours of page.css. In a shadow root they are an adopted style sheet. */
import { EditorView } from "@codemirror/view";

const underline = {
  backgroundImage: "none",
  textDecoration: "underline wavy var(--wrong) 1px",
  textUnderlineOffset: "0.25em",
  textDecorationSkipInk: "none",
};

export const theme = EditorView.theme({
  "&": { containerType: "inline-size", height: "100%", color: "var(--ink)", backgroundColor: "transparent" },
  "&.cm-focused": { outline: "none" },
  ".cm-scroller": { fontFamily: "var(--mono)", fontSize: "0.95rem", lineHeight: "1.9" },
  ".cm-content": { padding: "0.4rem 0", minWidth: "0", caretColor: "var(--accent)" },
  ".cm-line": { position: "relative", padding: "0 0.75rem" },
  ".cm-line:has(.value)": { paddingRight: "44%" },
  ".cm-gutters": { backgroundColor: "transparent", color: "var(--quiet)", border: "none", fontSize: "0.75rem" },
  ".cm-lineNumbers .cm-gutterElement": { minWidth: "2.6rem", padding: "0 0.35rem 0 0" },
  ".cm-activeLineGutter": { backgroundColor: "transparent", color: "var(--ink)" },
  ".cm-activeLine": { backgroundColor: "transparent" },
  "&.cm-focused .cm-activeLine": { backgroundColor: "var(--faint)" },
  ".cm-cursor": { borderLeft: "2px solid var(--accent)" },
  "& > .cm-scroller > .cm-selectionLayer .cm-selectionBackground": { background: "var(--accent-soft) !important" },

  ".value": {
    position: "absolute",
    right: "1rem",
    insetBlock: "0",
    height: "fit-content",
    marginBlock: "auto",
    maxWidth: "41%",
    overflow: "hidden",
    whiteSpace: "nowrap",
    textOverflow: "ellipsis",
    color: "var(--accent)",
    fontWeight: "600",
    userSelect: "all",
  },
  ".value.said": { color: "var(--quiet)", fontWeight: "400" },
  ".value.wrong": { color: "var(--wrong)", fontWeight: "400" },
  ".typeset": { display: "inline-block", maxWidth: "100%", overflow: "clip", verticalAlign: "middle" },
  ".typeset math": { fontSize: "1.15em", fontFamily: "math, 'Latin Modern Math', 'STIX Two Math', 'Cambria Math', serif" },
  ".problem": {
    margin: "0 1rem 0.4rem 0.75rem",
    padding: "0.25rem 0.6rem",
    borderLeft: "3px solid var(--wrong)",
    background: "var(--wrong-soft)",
    fontFamily: "system-ui, 'Segoe UI', Roboto, 'DejaVu Sans', sans-serif",
    fontSize: "0.82rem",
    lineHeight: "1.5",
  },
  ".problem .message": { color: "var(--wrong)" },
  ".problem .fix": {
    font: "inherit",
    fontFamily: "var(--mono)",
    color: "var(--ink)",
    background: "var(--surface)",
    border: "1px solid var(--line)",
    borderRadius: "6px",
    padding: "0.1rem 0.5rem",
    minHeight: "1.6rem",
    maxWidth: "100%",
    overflowWrap: "anywhere",
    cursor: "pointer",
  },
  "@media (pointer: coarse)": { ".problem .fix": { minHeight: "2.75rem" } },

  ".token-number": { color: "var(--number)" },
  ".token-constant": { color: "var(--number)", fontStyle: "italic" },
  ".token-function": { color: "var(--function)" },
  ".token-operator": { color: "var(--quiet)" },
  ".token-bracket": { color: "var(--quiet)" },
  ".token-assigned-name": { color: "var(--name)", fontWeight: "600" },
  ".token-comment": { color: "var(--quiet)", fontStyle: "italic" },
  ".pair": { backgroundColor: "var(--accent-soft)", outline: "1px solid var(--accent)", borderRadius: "2px" },
  ".cm-lintRange-error": underline,
  ".cm-lintRange-active": { backgroundColor: "transparent" },

  ".cm-tooltip": {
    color: "var(--ink)",
    backgroundColor: "var(--surface)",
    border: "1px solid var(--line)",
    borderRadius: "8px",
    boxShadow: "0 6px 24px rgb(0 0 0 / 18%)",
    overflow: "hidden",
  },
  ".cm-tooltip.cm-tooltip-autocomplete > ul": { fontFamily: "var(--mono)", fontSize: "0.85rem", maxHeight: "none", overflow: "visible" },
  ".cm-tooltip.cm-tooltip-autocomplete > ul > li": { padding: "0.25rem 0.6rem", lineHeight: "1.5" },
  ".cm-tooltip-autocomplete ul li[aria-selected]": { color: "var(--surface)", background: "var(--accent)" },
  ".cm-completionDetail": { marginLeft: "1.5em", fontStyle: "normal", fontFamily: "system-ui, sans-serif", fontSize: "0.8rem" },
  ".cm-tooltip.cm-tooltip-autocomplete > ul > li:not([aria-selected]) .cm-completionDetail": { color: "var(--quiet)" },
  ".explanation": { padding: "0.4rem 0.7rem", fontSize: "0.82rem", maxWidth: "24rem" },
  ".explanation code": { fontFamily: "var(--mono)", color: "var(--function)" },

  "@container (max-width: 30rem)": {
    ".cm-line:has(.value)": { paddingRight: "0.75rem" },
    ".value": {
      position: "static",
      display: "inline-block",
      width: "100%",
      maxWidth: "none",
      textAlign: "right",
      verticalAlign: "top", // baseline alignment would leave a gap for descenders below it
    },
    ".cm-lineNumbers .cm-gutterElement": { minWidth: "1.6rem" },
  },
  "@media print": {
    ".cm-gutters": { display: "none" },
    ".cm-scroller": { overflow: "visible" },
  },
});
