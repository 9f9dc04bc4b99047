// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// environment.js - test programs see Node's environment, which emscripten keeps from them.
Module["preRun"] = () => Object.assign(ENV, process.env);
