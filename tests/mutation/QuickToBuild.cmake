# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT
#
# Included by the project when mutate.py builds it: what is changed is compiled over and over, what tests it only once.
# A precompiled header needs the same options as its sources; kernels are compiled without support for errno.
cmake_language(DEFER CALL target_compile_options mathexpr_engine PRIVATE -O0 -fno-math-errno)
cmake_language(DEFER CALL target_compile_options mathexpr PRIVATE -O0 -fno-math-errno)
cmake_language(DEFER CALL target_precompile_headers mathexpr_engine PRIVATE
               <algorithm> <array> <cmath> <functional> <memory> <string> <unordered_map> <vector>)
cmake_language(DEFER CALL target_precompile_headers mathexpr REUSE_FROM mathexpr_engine)
