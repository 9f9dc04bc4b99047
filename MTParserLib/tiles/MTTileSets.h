// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileSets.h - the available instruction sets for tiles.
#pragma once

#include "MTParserLib/tiles/MTTileCode.h"
#include "platform/ArrayView.h"

/// The sets that this processor supports, the widest last.
platform::ArrayView<const MTTileSet* const> availableTileSets() noexcept;
