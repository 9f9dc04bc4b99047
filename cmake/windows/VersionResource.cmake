# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# add_version_resource(<target> <description>): adds a VERSIONINFO resource with the project's version to a
# Windows module.
set(MATHEXPR_VERSION_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/VersionInfo.rc.in)

function(add_version_resource target description)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set(file_type VFT_APP)
    set(suffix .exe)
  else()
    set(file_type VFT_DLL)
    set(suffix .dll)
  endif()
  get_target_property(name ${target} OUTPUT_NAME)
  if(NOT name)
    set(name ${target})
  endif()
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${MATHEXPR_VERSION_TEMPLATE} ${source} @ONLY)
  # A separate library, so that the resource compiler does not get the options of the C++ compiler.
  add_library(${target}_version OBJECT ${source})
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_version>)
endfunction()
