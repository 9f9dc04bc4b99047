# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""test_check_headers.py - tests that check_headers.py finds the errors that it checks for."""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import check_headers  # noqa: E402


class GlobalNames(unittest.TestCase):
    def names(self, text):
        return list(check_headers.global_names(text))

    def test_finds_every_kind_of_declaration(self):
        self.assertEqual(self.names("#pragma once\nstruct First;\nclass MATHEXPR_API Second : public First { int in; };\n"
                                    "enum class Third : int { A, B };\nnamespace Fourth { struct Hidden {}; }\n"
                                    "using Fifth = int;\nMATHEXPR_API bool sixth(int, const First& first) noexcept;\n"
                                    "inline constexpr int SEVENTH = 7;\ntemplate <class T>\nclass Eighth {};\n"),
                         ["First", "Second", "Third", "Fourth", "Fifth", "sixth", "SEVENTH", "Eighth"])

    def test_skips_comments_and_macros(self):
        self.assertEqual(self.names("// struct Commented;\n#define MACRO(x) struct x;\nstatic_assert(1 == 1, \"{;\");\n"), [])


class Names(unittest.TestCase):
    def test_tells_of_a_name_that_was_not_given(self):
        with tempfile.TemporaryDirectory() as folder:
            include = pathlib.Path(folder)
            for index in range(21):
                (include / f"Header{index}.h").write_text("struct VALTYPE;\nnamespace mathexpr { struct Inside; }\n")
            self.assertEqual(list(check_headers.check_names(include)), [])
            (include / "Header7.h").write_text("struct Outside;\n")
            self.assertEqual(list(check_headers.check_names(include)),
                             ["Header7.h: Outside must be in namespace mathexpr"])


if __name__ == "__main__":
    unittest.main()
