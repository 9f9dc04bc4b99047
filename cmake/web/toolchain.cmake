# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Cross-builds for WebAssembly with Debian's emscripten, and runs test programs under Node.
set(MATHEXPR_EMSCRIPTEN /usr/share/emscripten CACHE PATH "Folder of emcc and of its folder cmake/")
include(${MATHEXPR_EMSCRIPTEN}/cmake/Modules/Platform/Emscripten.cmake)

# Its own look at the linker needs acorn, which Debian keeps outside of emscripten's tree.
set(ENV{NODE_PATH} /usr/share/nodejs)

# Exceptions are WebAssembly's own: those that emscripten makes of JavaScript would cost each call. Engines that know them
# know the instructions of the last three options, which make the module smaller. Where emscripten compiles for size it
# inlines nothing, not even what is smaller than its call, unless it is told to.
set(CMAKE_CXX_FLAGS_INIT
    "-fwasm-exceptions -finline-functions -fno-rtti -mbulk-memory -mnontrapping-fptoint -msign-ext")

# Whatever the sources are compiled for: a link for the smallest size would take a smaller pow, which rounds worse.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Os")

# Debian packs header-only libraries for its own compilers. They alone are taken from there: the other headers of that folder
# are those of another C library.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/system)
file(CREATE_LINK /usr/include/fast_float ${CMAKE_BINARY_DIR}/system/fast_float SYMBOLIC)
set(MATHEXPR_FAST_FLOAT_INCLUDE_DIR ${CMAKE_BINARY_DIR}/system CACHE PATH "Where fast_float/ is")
set(MATHEXPR_UTF8CPP_INCLUDE_DIR /usr/include/utf8cpp CACHE PATH "Where utf8.h is")

# GoogleTest is compiled from its sources.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/../from_sources)

# Without the option that emscripten gives to Node, which knows it no more; and its loader takes fetch for a browser's.
find_program(MATHEXPR_NODE NAMES node nodejs REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${MATHEXPR_NODE} --no-experimental-fetch)
