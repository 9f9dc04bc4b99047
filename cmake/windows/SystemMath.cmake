# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# mathexpr_system_math: replaces MinGW's statically linked mathematical functions by those of Windows' own C library.
#
# MinGW's compute with x87 instructions: their pow(10, -2) is not the double nearest to 0.01, and sines near a multiple
# of pi lose half of their digits.
add_library(mathexpr_system_math INTERFACE)
if(MINGW)
  set(system_math_library ${PROJECT_BINARY_DIR}/libsystem_math.a)
  find_program(MATHEXPR_DLLTOOL x86_64-w64-mingw32-dlltool REQUIRED)
  add_custom_command(
    OUTPUT ${system_math_library}
    COMMAND ${MATHEXPR_DLLTOOL} -d ${CMAKE_CURRENT_LIST_DIR}/msvcrt_math.def -l ${system_math_library}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/msvcrt_math.def
    VERBATIM)
  add_custom_target(mathexpr_system_math_import DEPENDS ${system_math_library})
  add_dependencies(mathexpr_system_math mathexpr_system_math_import)
  target_link_libraries(mathexpr_system_math INTERFACE ${system_math_library})
endif()
