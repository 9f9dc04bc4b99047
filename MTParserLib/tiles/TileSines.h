// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileSines.h - sines and cosines of a tile of angles in degrees, in WebAssembly with vectors.
#pragma once

#include "MTParserLib/tiles/MTTileCode.h"

namespace tiles {

#if defined(MATHEXPR_TILE_SINES)
inline constexpr bool hasSines = true;
#else
inline constexpr bool hasSines = false;
#endif

/// An MTTileCall, defined only if hasSines. The same bits as std::sin or std::cos of each angle in radians, in half the
/// time or less.
/// @tparam isCosine  whether it computes cosines
template <bool isCosine>
bool computeSines(const MTTileStep& step, const MTTileContext& context);

}
