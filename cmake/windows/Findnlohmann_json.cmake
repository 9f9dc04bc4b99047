# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# nlohmann-json for a cross build: only its headers.
include(${CMAKE_CURRENT_LIST_DIR}/StagedHeaders.cmake)
if(NOT TARGET nlohmann_json::nlohmann_json)
  stage_headers(nlohmann nlohmann_json_INCLUDE_DIR)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
  target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${nlohmann_json_INCLUDE_DIR})
endif()
set(nlohmann_json_FOUND TRUE)
