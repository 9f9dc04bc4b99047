# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Tests that check_sources.py finds every kind of violation, and nothing else."""

import pathlib
import tempfile
import unittest

import check_sources


class CheckSources(unittest.TestCase):
    def breaches(self, files):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for path, text in files.items():
                (root / path).parent.mkdir(parents=True, exist_ok=True)
                (root / path).write_text(text, encoding="utf-8")
            return list(check_sources.check(root))

    def test_nothing_to_find(self):
        self.assertEqual(self.breaches({
            "include/mathexpr/Value.h": "#include <cstdint>\n",
            "include/value.h": "#include <stddef.h>\n#include <stdint.h>\n",
            "mathexpr/c/Values.h": "#include <value.h>\n",
            "platform/Box.h": "#include <unistd.h>\n",
            "MTParserLib/Engine.h": '#include "mathexpr/Value.h"\n#include "platform/Box.h"\n// never abort()\n',
            "MTParserLib/MTMessage.h": "",
            "MTParserLib/vocabulary/Items.h": '#include "mathexpr/Value.h"\n#include "MTParserLib/MTMessage.h"\n',
            "MTParserLib/run/Run.h": '#include "MTParserLib/Engine.h"\n#include "MTParserLib/vocabulary/Items.h"\n',
            "mathexpr/Shell.cpp": '#include "MTParserLib/Engine.h"\n#include "MTParserLib/vocabulary/Items.h"\n'
                                  'static_assert(sizeof(int) == 4);\n',
            "mathexpr/StartUpWindows.cpp": "#include <windows.h>\n",
            "mathexpr/RunTimeMinGW.cpp": "#include <cxxabi.h>\n#include <windows.h>\n",
            "tools/calc/main.cpp": '#include "mathexpr/Value.h"\n#include <unistd.h>\nint n = printf("");\n',
            "tests/Anything.cpp": '#include "MTParserLib/Engine.h"\n',
            "build/Generated.h": "\u00e9",
        }), [])

    def test_upward_includes(self):
        for path, included in (
            ("include/mathexpr/Value.h", "platform/Box.h"),
            ("include/value.h", "platform/Box.h"),
            ("platform/Box2.h", "mathexpr/Host.h"),
            ("MTParserLib/Engine.h", "mathexpr/Shell.h"),
            ("MTParserLib/vocabulary/Items.h", "MTParserLib/Engine2.h"),
            ("MTParserLib/vocabulary/Items.h", "mathexpr/Shell.h"),
            ("MathExprRes/Texts.h", "MTParserLib/Engine2.h"),
            ("tools/calc/main.cpp", "MTParserLib/Engine2.h"),
            ("examples/host.cpp", "platform/Box.h"),
        ):
            files = {"platform/Box.h": "", "include/mathexpr/Host.h": "", "mathexpr/Shell.h": "",
                     "MTParserLib/Engine2.h": "", path: f'#include "{included}"\n'}
            target = "include/" + included if included == "mathexpr/Host.h" else included
            self.assertEqual(self.breaches(files), [f"{path}: includes {target}, which its layer may not include"])

    def test_compiler_and_evaluator_share_the_program_only(self):
        self.assertEqual(
            self.breaches({"MTParserLib/program/MTParserProgram.h": '#include "MTParserLib/MTParserCompiler.h"\n',
                           "MTParserLib/MTParserCompiler.h": ""}),
            ["MTParserLib/program/MTParserProgram.h: must not include MTParserLib/MTParserCompiler.h"])

    def test_headers_that_are_not_there_or_not_standard(self):
        self.assertEqual(
            self.breaches({"mathexpr/Shell.cpp": '#include "gone.h"\n#include <unistd.h>\n#include <gtest/gtest.h>\n'}),
            ["mathexpr/Shell.cpp: includes gone.h, which does not exist",
             "mathexpr/Shell.cpp: includes <unistd.h>, which is not in the standard library",
             "mathexpr/Shell.cpp: includes <gtest/gtest.h>, which is not in the standard library"])

    def test_output_and_end_of_the_process(self):
        for path in ("MTParserLib/Engine.cpp", "MTParserLib/vocabulary/Items.h"):
            self.assertEqual(len(self.breaches({path: "std::abort();\n"})), 1, path)
        for code in ("std::cerr << 1;", "std::wcout << 1;", 'std::printf("");', 'fprintf(stderr, "");', 'puts("");',
                     "std::abort();", "exit(1);", "assert(true);"):
            found = self.breaches({"MTParserLib/Engine.cpp": code + "\n"})
            self.assertEqual(len(found), 1, code)

    def test_text_that_is_not_ascii(self):
        for path in ("tests/A.cpp", "MTParserLib/A.h", "CMakeLists.txt", "cmake/A.cmake", "tests/a.py", "dev"):
            self.assertEqual(self.breaches({path: "one\n\u00e9\n"}), [f"{path}:2: not ASCII"])


if __name__ == "__main__":
    unittest.main()
