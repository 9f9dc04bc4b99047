# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Run by cpack on the finished Debian packages. Removes the scripts that call ldconfig after installation; the trigger
# does so once for all packages.
foreach(package ${CPACK_PACKAGE_FILES})
  if(package MATCHES "\\.deb$")
    set(folder ${package}.unpacked)
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group --build ${folder} ${package} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE ${folder})
  endif()
endforeach()
