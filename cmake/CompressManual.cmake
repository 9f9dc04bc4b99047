# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Run by cpack on what a package is made of: Debian's packages hold manual pages compressed, without a time in them.
if(CPACK_GENERATOR STREQUAL "DEB")
  file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*.1)
  list(FILTER pages INCLUDE REGEX "/man/man1/")
  if(NOT pages)
    message(FATAL_ERROR "no manual page below ${CPACK_TEMPORARY_DIRECTORY}")
  endif()
  execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()
