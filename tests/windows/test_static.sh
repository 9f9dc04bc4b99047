#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# test_static.sh BUILD-DIRECTORY OPTIONS... - builds and runs a host in C that links the static library. Each part of
# the library is compiled as one source. The options are for CMake.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source=$(cd "$here/../.." && pwd)
host=$here/../packages/c_host
build=$1
shift

cmake -G Ninja -S "$host" -B "$build" --toolchain "$source/cmake/windows/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
    -DBUILD_SHARED_LIBS=OFF -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 -DMATHEXPR_WARNINGS_AS_ERRORS=ON \
    -DMATHEXPR_SOURCE="$source" "$@" >/dev/null
cmake --build "$build" --target host
wine64 "$build/host.exe" | tr -d '\r' | diff "$host/expected.txt" -
echo 'the library as a static part of a host in C: as expected'
