# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Cross-builds for WebAssembly with Debian's emscripten, and runs test programs under Node.
set(MATHEXPR_EMSCRIPTEN /usr/share/emscripten CACHE PATH "Folder of emcc and of its folder cmake/")
include(${MATHEXPR_EMSCRIPTEN}/cmake/Modules/Platform/Emscripten.cmake)

# emscripten's linker needs acorn, which Debian installs outside emscripten's tree.
set(ENV{NODE_PATH} /usr/share/nodejs)

# Uses WebAssembly's own exceptions: emscripten's, in JavaScript, would slow down every call. Engines with exceptions also have
# the instructions of the last three options, which make the module smaller. Without -finline-functions,
# emscripten inlines nothing when it compiles for size, not even functions smaller than their call.
set(CMAKE_CXX_FLAGS_INIT
    "-fwasm-exceptions -finline-functions -fno-rtti -mbulk-memory -mnontrapping-fptoint -msign-ext")

# Independent of the compiler's level: linking for the smallest size would use a smaller pow, which rounds worse.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Os")

# Debian has header-only libraries for its own compilers. Only their folders are made available: the other headers beside them
# belong to another C library.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/system)
file(CREATE_LINK /usr/include/fast_float ${CMAKE_BINARY_DIR}/system/fast_float SYMBOLIC)
set(MATHEXPR_FAST_FLOAT_INCLUDE_DIR ${CMAKE_BINARY_DIR}/system CACHE PATH "Where fast_float/ is")
set(MATHEXPR_UTF8CPP_INCLUDE_DIR /usr/include/utf8cpp CACHE PATH "Where utf8.h is")

# GoogleTest is compiled from its sources.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/../from_sources)

# Omits an option of emscripten that Node no longer accepts. Disables fetch, which emscripten's loader takes for a browser's.
find_program(MATHEXPR_NODE NAMES node nodejs REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${MATHEXPR_NODE} --no-experimental-fetch)
