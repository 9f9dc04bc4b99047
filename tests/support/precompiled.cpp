// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// precompiled.cpp - empty; the source of the target that builds the test programs' precompiled header.
