// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileSets.cpp - detects the processor's instruction sets.
#include "MTParserLib/tiles/MTTileSets.h"

#if defined(MATHEXPR_WIDE_TILES)

namespace {

constexpr const MTTileSet* allTileSets[] = {&baselineTiles, &avx2Tiles, &avx512Tiles};

std::size_t countTileSets() noexcept
{
    const std::size_t avx2 = __builtin_cpu_supports("avx2") != 0;
    const std::size_t avx512 = __builtin_cpu_supports("avx512f") != 0;
    const std::size_t more = __builtin_cpu_supports("avx512dq") != 0;
    const std::size_t shorter = __builtin_cpu_supports("avx512vl") != 0;
    return 1 + avx2 + (avx2 & avx512 & more & shorter);
}

}

platform::ArrayView<const MTTileSet* const> availableTileSets() noexcept
{
    static const std::size_t count = countTileSets();
    return platform::ArrayView(allTileSets).first(count);
}

#else

platform::ArrayView<const MTTileSet* const> availableTileSets() noexcept
{
    static constexpr const MTTileSet* all[] = {&baselineTiles};
    return all;
}

#endif
