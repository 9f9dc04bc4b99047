# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# add_test_program(NAME SOURCES... [LIBRARIES target...] [PROPERTIES property value...])
#
# Adds a GoogleTest program as the target NAME, and as one CTest test of that name. If it fails, CTest prints the output
# of GoogleTest. Test programs are built quickly: without optimisation, with one shared precompiled header, and with a
# fast linker if one is installed.
add_library(test_options INTERFACE)
target_link_libraries(test_options INTERFACE mathexpr_options GTest::gtest_main)
# Only the tests check indices and iterators if the preset builds the library as shipped.
target_compile_definitions(test_options INTERFACE _GLIBCXX_ASSERTIONS)
if(NOT MSVC)
  # A compiler cache can supply a precompiled header only if it has no time stamps.
  target_compile_options(test_options INTERFACE -O0 $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
endif()
find_program(MATHEXPR_FAST_LINKER NAMES ld.mold ld.lld)
mark_as_advanced(MATHEXPR_FAST_LINKER)
if(MATHEXPR_FAST_LINKER AND NOT CMAKE_CROSSCOMPILING)
  string(REGEX REPLACE ".*ld\\.(mold|lld)$" "\\1" linker ${MATHEXPR_FAST_LINKER})
  target_link_options(test_options INTERFACE -fuse-ld=${linker})
endif()

add_library(test_headers OBJECT support/precompiled.cpp)
target_link_libraries(test_headers PRIVATE test_options)
target_precompile_headers(
  test_headers
  PRIVATE
  <gtest/gtest.h>
  <algorithm>
  <array>
  <cmath>
  <cstdint>
  <functional>
  <map>
  <memory>
  <optional>
  <set>
  <string>
  <vector>)

function(add_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;PROPERTIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE test_options ${arg_LIBRARIES})
  target_precompile_headers(${name} REUSE_FROM test_headers)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ${arg_PROPERTIES})
endfunction()
