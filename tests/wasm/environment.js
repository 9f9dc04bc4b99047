// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// environment.js - gives test programs Node's environment, which emscripten hides from them.
Module["preRun"] = () => Object.assign(ENV, process.env);
