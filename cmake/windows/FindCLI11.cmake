# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# CLI11 for a cross build: only its headers.
include(${CMAKE_CURRENT_LIST_DIR}/StagedHeaders.cmake)
if(NOT TARGET CLI11::CLI11)
  stage_headers(CLI CLI11_INCLUDE_DIR)
  add_library(CLI11::CLI11 INTERFACE IMPORTED)
  target_include_directories(CLI11::CLI11 INTERFACE ${CLI11_INCLUDE_DIR})
endif()
set(CLI11_FOUND TRUE)
