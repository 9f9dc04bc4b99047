# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Options that make faults in the library or the calculator hard to exploit. They are for shipped files, not for
# tests: mathexpr_hardening has the compile options, hardening_link_options the link options, which do not propagate to
# hosts of the static library.
#
#   -fstack-protector-strong    a function with an array detects an overwritten return address
#   -fstack-clash-protection    a large frame touches each of its pages, so that it cannot skip the guard page
#   _FORTIFY_SOURCE             the C library's copying functions check the size of their target
#   -fcf-protection,            indirect jumps and calls must reach marked instructions, if processor and system check it
#   -mbranch-protection         (x86-64 and ARM64)
#   -z relro, -z now            functions of other libraries are bound at start, in tables that are read-only afterwards
#   PIE                         the calculator is loaded at random addresses
#
# No value changes. Sanitizer builds leave the options out: sanitizers check more, and fortified functions would hide
# calls from them.
option(MATHEXPR_HARDEN "Harden the library and the calculator" ON)

add_library(mathexpr_hardening INTERFACE)
if(NOT MATHEXPR_HARDEN OR CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  return()
endif()

if(MINGW)  # These are the linker's defaults since binutils 2.36. The other options need a run-time DLL, or have no
           # meaning there.
  set(hardening_link_options -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
elseif(NOT MSVC AND NOT EMSCRIPTEN)  # WebAssembly's memory contains no return addresses and no code
  include(CheckCXXCompilerFlag)
  include(CheckCXXSourceCompiles)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)

  set(CMAKE_REQUIRED_FLAGS -Werror)  # otherwise clang would only warn that it ignores an option
  foreach(option -fstack-protector-strong -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER "MATHEXPR_HAS${option}" has_option)
    check_cxx_compiler_flag(${option} ${has_option})
    if(${has_option})
      target_compile_options(mathexpr_hardening INTERFACE ${option})
    endif()
  endforeach()

  # Level 3 also checks sizes computed at run time. Fortification needs optimisation.
  check_cxx_source_compiles("int main(int, char** v) { return __builtin_dynamic_object_size(v, 0) == 1; }"
                            MATHEXPR_HAS_DYNAMIC_OBJECT_SIZE)
  unset(CMAKE_REQUIRED_FLAGS)
  set(level $<IF:$<BOOL:${MATHEXPR_HAS_DYNAMIC_OBJECT_SIZE}>,3,2>)
  set(fortified "-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=${level}")
  target_compile_options(mathexpr_hardening INTERFACE "$<$<NOT:$<CONFIG:Debug>>:${fortified}>")

  if(NOT APPLE)
    set(hardening_link_options -Wl,-z,relro,-z,now)
  endif()
endif()
