# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Cross-builds for 64-bit ARM with Debian's g++-aarch64-linux-gnu, and runs the programs under QEMU's user emulation.
#
# The system's own headers are used; they do not depend on the architecture. Debian's arm64 packages of the
# calculator's libraries contain the files below, but not the links that a linker looks for.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_STRIP aarch64-linux-gnu-strip)

set(libraries /usr/lib/aarch64-linux-gnu)
set(MATHEXPR_UTF8PROC_LIBRARY ${libraries}/libutf8proc.so.2 CACHE FILEPATH "utf8proc for this architecture")
set(MATHEXPR_LIBEDIT_LIBRARY ${libraries}/libedit.so.2 CACHE FILEPATH "libedit for this architecture")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${libraries}")

# Debian has GoogleTest for its own architecture only.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/../from_sources)

set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
find_program(MATHEXPR_QEMU qemu-aarch64)
if(MATHEXPR_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${MATHEXPR_QEMU})
endif()
