// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Interrupt.h - Ctrl-C as something to ask for, so that work that takes long can end in order.
#pragma once

/// From now on the first Ctrl-C is only noted, and ends a read from a file or terminal that waits; the second one ends
/// the program.
void noteInterrupts();

bool wasInterrupted();

/// From now on no Ctrl-C ends the program: each is noted for takeInterrupt, and ends a read that waits. Not on Windows.
void noteEveryInterrupt();

/// Whether there was a Ctrl-C since the last call.
bool takeInterrupt();

/// From now on writing to a pipe that nobody reads any more fails, instead of ending the program without a word.
void failOnClosedPipes();
