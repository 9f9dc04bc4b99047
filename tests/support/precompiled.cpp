// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// precompiled.cpp - nothing of its own: the target that this source is of makes the test programs' precompiled header.
