# Run by cpack on what a package is made of: Debian's packages hold manual pages compressed, without a time in them.
if(CPACK_GENERATOR STREQUAL "DEB")
  file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*/man/man1/*.1)
  if(pages)
    execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endif()
