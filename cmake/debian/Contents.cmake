# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Run by cpack before it makes the Debian packages. Adds to each tree what Debian's policy requires: compressed manual
# pages and changelogs, without time stamps. Writes the symbols file: the exported names, each as of this version, which
# is right for the first version and conservative for later ones.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(folder ${CPACK_TEMPORARY_DIRECTORY})

file(GLOB_RECURSE pages ${folder}/*.1)
list(FILTER pages INCLUDE REGEX "/man/man1/")
file(GLOB_RECURSE copyrights ${folder}/*/copyright)
if(NOT pages OR NOT copyrights)
  message(FATAL_ERROR "no manual page or no documents below ${folder}")
endif()
foreach(copyright ${copyrights})
  cmake_path(GET copyright PARENT_PATH documents)
  if(EXISTS ${documents}/CHANGELOG.md)
    file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
    list(APPEND pages ${documents}/changelog)
  endif()
  file(COPY_FILE ${CPACK_MATHEXPR_DEBIAN}/changelog ${documents}/changelog.Debian)
  list(APPEND pages ${documents}/changelog.Debian)
endforeach()
execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)

execute_process(
  COMMAND dpkg-gensymbols -p${CPACK_DEBIAN_LIBRARY_PACKAGE_NAME} -v${CPACK_PACKAGE_VERSION} -c0 -P${folder}/library
          -O${CPACK_MATHEXPR_DEBIAN}/symbols
  WORKING_DIRECTORY ${CPACK_MATHEXPR_DEBIAN}/..
  COMMAND_ERROR_IS_FATAL ANY)
