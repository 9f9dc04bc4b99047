// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EditorServices.h - editor services: what an edit box needs while its user types. Includes all their headers.
//
// These rules apply to every service.
//
// - Any text is accepted, also an incomplete or invalid one; a null pointer is an empty text. A cursor beyond the end
//   means the end.
// - Positions count characters of wchar_t from 0, blanks included.
// - No service changes the object: its program, variables, diagnostic and pending assignment stay as they are.
// - No message is shown. The host's service is called only where an argument allows it. The name source (setNameSource
//   in Diagnostics.h) may be enumerated completely; for large models use NameIndex.h.
// - The object's limits apply. A text that exceeds the length limit is not analysed.
// - Services throw std::bad_alloc, and exceptions of the host's callbacks propagate.
#pragma once

#include "mathexpr/Completion.h"
#include "mathexpr/NameIndex.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/TextTokens.h"
#include "mathexpr/Typeset.h"
#include "mathexpr/TypingHelp.h"
