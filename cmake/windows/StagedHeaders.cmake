# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# stage_headers(<folder> <out>): makes one folder of /usr/include available to a cross build, without the rest
# of /usr/include, whose C headers are for another system. <out> receives the directory to search.
function(stage_headers folder out)
  if(NOT IS_DIRECTORY /usr/include/${folder})
    message(FATAL_ERROR "/usr/include/${folder} is missing")
  endif()
  set(stage ${CMAKE_BINARY_DIR}/staged-headers/${folder})
  file(MAKE_DIRECTORY ${stage})
  file(CREATE_LINK /usr/include/${folder} ${stage}/${folder} SYMBOLIC)
  set(${out} ${stage} PARENT_SCOPE)
endfunction()
