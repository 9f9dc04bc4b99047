// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EditorServices.h - what an edit box needs while its user types: all of the editor services.
//
// These rules apply to each of them.
//
// - Any text is taken, broken or half typed; a null pointer is an empty text. A cursor beyond the end counts as the end.
// - Positions count characters of wchar_t from 0, blanks included.
// - Nothing in the object changes: neither its program nor its variables, diagnostic or pending assignment.
// - No message is shown. The host's service is not asked for a value, unless a call is told that it may. The name
//   source (setNameSource in Diagnostics.h) may be asked for all its names; NameIndex.h is for large models.
// - The object's limits hold. A text that is longer than the limit is not looked at.
// - What is thrown is std::bad_alloc, and what the host's own callbacks throw.
#pragma once

#include "mathexpr/Completion.h"
#include "mathexpr/NameIndex.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/TextTokens.h"
#include "mathexpr/Typeset.h"
#include "mathexpr/TypingHelp.h"
