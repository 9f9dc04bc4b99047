# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# mathexpr_options: what every target of the project is compiled with.
#
# Floating point is exact and repeatable: each multiplication and division is a double operation of its own, so the
# compiler may neither contract nor reorder them.
add_library(mathexpr_options INTERFACE)
target_include_directories(mathexpr_options INTERFACE ${PROJECT_SOURCE_DIR})
if(WIN32)
  target_compile_definitions(mathexpr_options INTERFACE NOMINMAX UNICODE WIN32_LEAN_AND_MEAN)
endif()
if(MSVC)
  target_compile_options(mathexpr_options INTERFACE /utf-8 /fp:precise /W4 /permissive- $<$<BOOL:${MATHEXPR_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(
    mathexpr_options
    INTERFACE -ffp-contract=off
              -Wall
              -Wextra
              -Wpedantic
              $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>
              -Wconversion
              -Wsign-conversion
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              $<$<BOOL:${MATHEXPR_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

# A build that names no configuration would not be optimised at all. Whoever names one, or a level, gets that.
if(NOT MSVC AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES AND NOT CMAKE_CXX_FLAGS MATCHES "(^| )-O")
  target_compile_options(mathexpr_options INTERFACE -O2)
endif()

# For the library in test builds, whose programs are quick to build instead: the preset dev says -O1 -g1. Types are for
# debuggers, and for the comparison of layouts.
set(optimised "$<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<CONFIG:RelWithDebInfo>>:-O2;-g>")

# What every evaluation runs through has no stack protector (Hardening.cmake): it would be a tenth of a short evaluation, and
# these functions have no arrays that a text could make them overrun.
set(unprotected "$<$<CXX_COMPILER_ID:GNU,Clang>:-fno-stack-protector>")

# What a run jumps into has each function at the beginning of a cache line, which takes a tenth less. Nothing is gained
# where nothing is optimised.
set(run_options "$<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<NOT:$<CONFIG:Debug>>>:-falign-functions=64>" "${unprotected}")

# Kernels, beside that: a root takes one instruction and no look at errno, which nobody reads; and coordinates that were
# just stored one by one are loaded one by one, since a load of two at once would wait for both stores. No value changes.
set(kernel_options "${run_options}"
                   "$<$<CXX_COMPILER_ID:GNU,Clang>:-fno-math-errno$<SEMICOLON>-fno-tree-slp-vectorize>")
