// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Interrupt.h - makes Ctrl-C a condition to poll, so that long work can end in order.
#pragma once

/// From now on, the first Ctrl-C is recorded, and ends a pending read from a file or terminal; the second one ends the
/// program.
void noteInterrupts();

bool wasInterrupted();

/// From now on, Ctrl-C never ends the program: each one is recorded for takeInterrupt, and ends a pending read. Not on
/// Windows.
void noteEveryInterrupt();

/// Whether Ctrl-C was pressed since the last call.
bool takeInterrupt();

/// From now on, writing to a pipe without a reader fails, instead of ending the program silently.
void failOnClosedPipes();
