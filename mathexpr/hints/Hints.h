// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hints.h - adds to the record of a failure what helps the user along: sentences in the user's language, and a corrected
// text where one is plain.
#pragma once

#include "MTParserLib/MTParser.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/hints/KnownNames.h"

namespace mathexpr {

/// @param diagnostic  filled in but for its hints and its fix
/// @param parser      what has failed
void addHints(ExpressionDiagnostic& diagnostic, const MTParser& parser, const KnownNames& names);

}
