// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileSets.h - which instruction sets there are for tiles.
#pragma once

#include "MTParserLib/tiles/MTTileCode.h"
#include "platform/ArrayView.h"

/// The sets that this processor has, the widest last.
platform::ArrayView<const MTTileSet* const> availableTileSets() noexcept;
