# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# What cmake --install installs, in three components:
#   library      needed to run a program that is linked with the library
#   development  needed to compile such a program: headers, CMake package, pkg-config file, documents, examples
#   tool         the calculator
#
# Installed files contain no absolute path of the build machine, so the installation can be moved.
include(CMakePackageConfigHelpers)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/mathexpr)
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The documentation folder of a component has the name of its Debian package.
set(MATHEXPR_LIBRARY_PACKAGE libmathexpr${PROJECT_VERSION_MAJOR})
set(MATHEXPR_DEVELOPMENT_PACKAGE libmathexpr-dev)
set(MATHEXPR_TOOL_PACKAGE mathexpr)
set(MATHEXPR_COMPONENTS library development)
if(MATHEXPR_BUILD_TOOLS)
  list(APPEND MATHEXPR_COMPONENTS tool)
endif()
foreach(component ${MATHEXPR_COMPONENTS})
  string(TOUPPER ${component} COMPONENT)
  set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${MATHEXPR_${COMPONENT}_PACKAGE})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${folder} RENAME copyright COMPONENT ${component})
endforeach()

if(MATHEXPR_BUILD_TOOLS)
  install(
    FILES ${PROJECT_SOURCE_DIR}/tools/calc/THIRD-PARTY.txt
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${MATHEXPR_TOOL_PACKAGE}
    COMPONENT tool)
endif()

install(
  TARGETS mathexpr
  EXPORT mathexprTargets
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
if(WIN32)
  install(
    TARGETS TarnUInfo
    EXPORT mathexprTargets
    RUNTIME COMPONENT library
    ARCHIVE COMPONENT development)
  install(TARGETS MathExprRes LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library)
endif()

if(TARGET mathexpr_static)
  install(
    TARGETS mathexpr_static
    EXPORT mathexprTargets
    ARCHIVE COMPONENT development)
endif()

install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/include/
  TYPE INCLUDE
  COMPONENT development)
install(
  EXPORT mathexprTargets
  NAMESPACE mathexpr::
  DESTINATION ${cmake_folder}
  COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/mathexprConfig.cmake.in ${PROJECT_BINARY_DIR}/mathexprConfig.cmake
                              INSTALL_DESTINATION ${cmake_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/mathexprConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/mathexprConfig.cmake ${PROJECT_BINARY_DIR}/mathexprConfigVersion.cmake
  DESTINATION ${cmake_folder}
  COMPONENT development)

file(RELATIVE_PATH MATHEXPR_PREFIX_FROM_PKGCONFIG /prefix/${pkgconfig_folder} /prefix)
string(REGEX REPLACE "/$" "" MATHEXPR_PREFIX_FROM_PKGCONFIG "${MATHEXPR_PREFIX_FROM_PKGCONFIG}")
get_property(needs GLOBAL PROPERTY MATHEXPR_STATIC_NEEDS)
list(TRANSFORM needs PREPEND "-l")
list(JOIN needs " " MATHEXPR_STATIC_NEEDS)
configure_file(${CMAKE_CURRENT_LIST_DIR}/mathexpr.pc.in ${PROJECT_BINARY_DIR}/mathexpr.pc @ONLY)
install(
  FILES ${PROJECT_BINARY_DIR}/mathexpr.pc
  DESTINATION ${pkgconfig_folder}
  COMPONENT development)

# The declarations for foreign-function interfaces, and the list of components (SBOM).
set(cdef ${PROJECT_BINARY_DIR}/mathexpr.cdef)
add_custom_command(
  OUTPUT ${cdef}
  COMMAND ${CMAKE_COMMAND} -D INCLUDE=${PROJECT_SOURCE_DIR}/include -D CDEF=${cdef} -P
          ${CMAKE_CURRENT_LIST_DIR}/ForeignFunctions.cmake
  DEPENDS ${PROJECT_SOURCE_DIR}/include/mathexpr.h ${PROJECT_SOURCE_DIR}/include/mathexpr_editor.h
          ${CMAKE_CURRENT_LIST_DIR}/ForeignFunctions.cmake
  VERBATIM)
add_custom_target(mathexpr_cdef ALL DEPENDS ${cdef})
string(TIMESTAMP MATHEXPR_SBOM_TIME "%Y-%m-%dT%H:%M:%SZ" UTC)  # SOURCE_DATE_EPOCH, if set
file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE MATHEXPR_COPYRIGHT REGEX "^Copyright")
configure_file(${CMAKE_CURRENT_LIST_DIR}/mathexpr.spdx.json.in ${PROJECT_BINARY_DIR}/mathexpr.spdx.json @ONLY)
foreach(component library development)
  string(TOUPPER ${component} COMPONENT)
  install(
    FILES ${PROJECT_BINARY_DIR}/mathexpr.spdx.json
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${MATHEXPR_${COMPONENT}_PACKAGE}
    COMPONENT ${component})
endforeach()
install(
  FILES ${cdef}
  DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/mathexpr
  COMPONENT development)

set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/${MATHEXPR_DEVELOPMENT_PACKAGE})
install(
  FILES ${PROJECT_SOURCE_DIR}/docs/embedding.md ${PROJECT_SOURCE_DIR}/docs/language.md
        ${PROJECT_SOURCE_DIR}/docs/vocabulary.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  DESTINATION ${documents}
  COMPONENT development)
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/docs/pictures
  DESTINATION ${documents}
  COMPONENT development
  FILES_MATCHING PATTERN "expression-edit-*.png")
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/examples
  DESTINATION ${documents}
  COMPONENT development)

if(MATHEXPR_BUILD_TOOLS)
  install(TARGETS mathexpr-calc RUNTIME COMPONENT tool)
  if(UNIX)
    install(
      FILES ${PROJECT_SOURCE_DIR}/docs/mathexpr.1
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
      COMPONENT tool)
  endif()
  # Shell completion of the calculator's options.
  if(UNIX AND (NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR))
    set(script_for_bash bash-completion/completions/mathexpr)
    set(script_for_zsh zsh/vendor-completions/_mathexpr)
    set(script_for_fish fish/vendor_completions.d/mathexpr.fish)
    foreach(shell bash zsh fish)
      set(script ${PROJECT_BINARY_DIR}/completions/${script_for_${shell}})
      cmake_path(GET script PARENT_PATH folder)
      file(MAKE_DIRECTORY ${folder})
      add_custom_command(
        OUTPUT ${script}
        COMMAND mathexpr-calc --completion ${shell} > ${script}
        DEPENDS mathexpr-calc
        VERBATIM)
      list(APPEND completion_scripts ${script})
    endforeach()
    add_custom_target(mathexpr_completions ALL DEPENDS ${completion_scripts})
    install(
      DIRECTORY ${PROJECT_BINARY_DIR}/completions/
      TYPE DATA
      COMPONENT tool)
  endif()
  # The calculator finds the library relative to its own path; in /usr the system finds it.
  if(UNIX AND NOT APPLE AND NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH library_from_tool /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(mathexpr-calc PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_tool}")
  endif()
endif()
