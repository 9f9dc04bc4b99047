# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Cross-builds for 64-bit Windows with Debian's mingw-w64, and runs the programs under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The variant with the standard library's threads.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# No module may need the compiler's run-time DLL: hosts would have to ship it, and versions could conflict.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# This compiler warns about its own std::string as if it called memcpy on overlapping memory.
set(CMAKE_CXX_FLAGS_INIT "-Wno-restrict")

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Debian has GoogleTest and the header-only libraries for its own architecture only; the Find modules in this folder use
# their sources and headers.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR} ${CMAKE_CURRENT_LIST_DIR}/../from_sources)
set(MATHEXPR_UTF8CPP_INCLUDE_DIR /usr/include/utf8cpp CACHE PATH "Where utf8.h is")

find_program(MATHEXPR_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(MATHEXPR_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${MATHEXPR_WINE})
endif()
