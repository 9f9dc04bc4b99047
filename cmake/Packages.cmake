# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# The packages that cpack makes: an archive of everything (TGZ), and one Debian package per component (DEB).
#
# Debian packages are made from a tree configured for /usr and its library folder; see cmake/packages. The folder debian
# contains files that only they need.
set(CPACK_PACKAGE_VENDOR "The mathexpr authors")
set(CPACK_PACKAGE_CONTACT "The mathexpr authors <mathexpr@git.example.com>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://git.example.com/mathexpr")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_COMPONENTS_ALL ${MATHEXPR_COMPONENTS})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" platform)
set(CPACK_PACKAGE_FILE_NAME mathexpr-${PROJECT_VERSION}-${platform})

set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Contents.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Finish.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)  # SOURCE_DATE_EPOCH, if set
set(CPACK_MATHEXPR_DEBIAN ${PROJECT_BINARY_DIR}/debian)
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${CPACK_MATHEXPR_DEBIAN}/changelog @ONLY)
set(about "It takes a text such as 2*width+0.5, compiles it, and evaluates it to a
number or a 3-D point as often as the host likes. Every mistake is answered
by a message that shows where it is.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${MATHEXPR_LIBRARY_PACKAGE})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CPACK_MATHEXPR_DEBIAN}/symbols ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "expression calculator for CAD applications - shared library\n${about}")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${MATHEXPR_DEVELOPMENT_PACKAGE})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${MATHEXPR_LIBRARY_PACKAGE} (= ${version})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "expression calculator for CAD applications - development files\n${about}
.
Headers for C++ and C, the static library, documents and examples.")

# The tool's dependency on the library cannot be detected, because the library is in the build tree.
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ${MATHEXPR_TOOL_PACKAGE})
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION math)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${MATHEXPR_LIBRARY_PACKAGE} (>= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "expression calculator for CAD applications - command line\n${about}")

include(CPack)
