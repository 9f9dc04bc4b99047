#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# test_package.sh ZIP BUILD-DIRECTORY - unpacks the package to another folder, builds its samples with the package alone, and
# runs them for a German user; and builds and runs a host for the ABI of Microsoft's compiler.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
zip=$1
build=$2
elsewhere=$(mktemp -d "${TMPDIR:-/tmp}/mathexpr package.XXXXXX")
trap 'rm -rf "$elsewhere"' EXIT
cd "$elsewhere"
cmake -E tar xf "$zip"
package=$(echo "$elsewhere"/mathexpr-*)

cat >toolchain.cmake <<'END'
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
END
cmake -G Ninja -S "$package/samples" -B samples -DCMAKE_TOOLCHAIN_FILE="$elsewhere/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release >log
cmake --build samples >>log || { cat log; exit 1; }

clang --target=x86_64-pc-windows-msvc -std=c99 -ffreestanding -O1 -Wall -Wextra -Werror -I "$package/include" \
    -c "$here/msvc_host.c" -o msvc_host.obj
x86_64-w64-mingw32-gcc-posix -nostdlib -Wl,-e,start -o "$package/bin/msvc_host.exe" msvc_host.obj \
    "$package/lib/mathexpr.lib" -lkernel32
wine64 "$package/bin/msvc_host.exe"

export LC_ALL=de_DE.UTF-8
MATHEXPR_PACKAGE=$(wine64 winepath -w "$package" | tr -d '\r')
MATHEXPR_SAMPLES=$(wine64 winepath -w "$elsewhere/samples" | tr -d '\r')
export MATHEXPR_PACKAGE MATHEXPR_SAMPLES
wine64 "$build/bin/PackageTests.exe"
