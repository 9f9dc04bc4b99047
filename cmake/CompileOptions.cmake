# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# mathexpr_options: compile options of all targets of the project.
#
# Floating-point arithmetic is exact and repeatable: each multiplication and division is a separate double operation, so
# the compiler must neither contract nor reorder them.
add_library(mathexpr_options INTERFACE)
target_include_directories(mathexpr_options INTERFACE ${PROJECT_SOURCE_DIR})
if(WIN32)
  target_compile_definitions(mathexpr_options INTERFACE NOMINMAX UNICODE WIN32_LEAN_AND_MEAN)
endif()
if(MSVC)
  target_compile_options(mathexpr_options INTERFACE /utf-8 /fp:precise /W4 /permissive- $<$<BOOL:${MATHEXPR_WARNINGS_AS_ERRORS}>:/WX>)
else()
  # In a unity build, a name in one file may shadow that of another.
  set(shadow_warning $<IF:$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>,-Wno-shadow,-Wshadow>)
  target_compile_options(
    mathexpr_options
    INTERFACE -ffp-contract=off
              -Wall
              -Wextra
              -Wpedantic
              $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,${shadow_warning}>
              -Wconversion
              -Wsign-conversion
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              $<$<BOOL:${MATHEXPR_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

# A build without a configuration would not be optimised. A given configuration or optimisation level is respected.
if(NOT MSVC AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES AND NOT CMAKE_CXX_FLAGS MATCHES "(^| )-O")
  target_compile_options(mathexpr_options INTERFACE -O2)
endif()

# For the library in test builds; the test programs are compiled with -O1 -g1 (preset dev), which compiles faster. With
# g++, -g adds type information, for debuggers and for the comparison of layouts.
set(optimised "$<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<CONFIG:RelWithDebInfo>>:-O2;$<$<CXX_COMPILER_ID:GNU>:-g>>")

# Code that runs in every evaluation has no stack protector (Hardening.cmake), which would cost a tenth of the time of a
# short evaluation. These functions have no arrays that a text could overrun.
set(unprotected "$<$<CXX_COMPILER_ID:GNU,Clang>:-fno-stack-protector>")

# Aligns the functions that a run jumps to at cache lines, which saves a tenth of the time; no effect without optimisation.
set(run_options "$<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<NOT:$<CONFIG:Debug>>>:-falign-functions=64>" "${unprotected}")

# Additional options for kernels. A square root is a single instruction, since nobody reads errno. Coordinates that were
# just stored one by one are loaded one by one, since a wider load would wait for both stores. No value changes.
set(kernel_options "${run_options}"
                   "$<$<CXX_COMPILER_ID:GNU,Clang>:-fno-math-errno$<SEMICOLON>-fno-tree-slp-vectorize>")
