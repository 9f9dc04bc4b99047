// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hints.h - adds hints to the record of a failure: sentences in the user's language, and a corrected text if one is
// unambiguous.
#pragma once

#include "MTParserLib/MTParser.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/hints/KnownNames.h"

namespace mathexpr {

/// @param diagnostic  complete except for hints and fix
/// @param parser      the session that failed
void addHints(ExpressionDiagnostic& diagnostic, const MTParser& parser, const KnownNames& names);

}
