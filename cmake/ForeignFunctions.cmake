# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Extracts declarations from mathexpr.h and mathexpr_editor.h for foreign-function interfaces without a preprocessor,
# such as LuaJIT's ffi.cdef and cffi: ForeignFunctions.cmake -D INCLUDE=... -D CDEF=...
#
# Keeps the declarations, and converts each macro that is a plain number to an enumerator.
cmake_minimum_required(VERSION 3.25)
file(READ ${INCLUDE}/mathexpr.h text)
file(READ ${INCLUDE}/mathexpr_editor.h editor_text)
string(APPEND text "${editor_text}")
string(REGEX REPLACE "//[^\n]*" "" text "${text}")
string(REGEX REPLACE "#if defined\\(__cplusplus\\).*#else\n(.*)#endif" "\\1" text "${text}")
string(REGEX REPLACE "#define (MATHEXPR_[A-Z_]+) ([0-9]+)\n" "enum { \\1 = \\2 };\n" text "${text}")
string(REGEX REPLACE "#[^\n]*" "" text "${text}")
string(REGEX REPLACE "MATHEXPR_C_API | MATHEXPR_NOEXCEPT" "" text "${text}")
string(REGEX REPLACE "[ \t]+\n" "\n" text "${text}")
string(REGEX REPLACE "\n\n+" "\n" text "${text}")
string(STRIP "${text}" text)
file(WRITE ${CDEF} "${text}\n")
