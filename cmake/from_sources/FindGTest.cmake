# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# GoogleTest for a build with another standard library or system than Debian's package: compiled from its sources.
if(NOT TARGET GTest::gtest_main)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  target_compile_options(gtest PRIVATE -O0)  # the slowest source of the tests to compile
  if(NOT TARGET GTest::gtest_main)
    add_library(GTest::gtest_main ALIAS gtest_main)
    add_library(GTest::gtest ALIAS gtest)
  endif()
endif()
set(GTest_FOUND TRUE)
set(GTEST_FOUND TRUE)
