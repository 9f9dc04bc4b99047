# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""The build backend after an earlier build. The installed package proves that building works."""

import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "backend"))
import build_native


@pytest.fixture
def cached(tmp_path, monkeypatch):
    """A build tree whose cache contains these folders."""
    build = tmp_path / "build"
    build.mkdir()
    monkeypatch.setattr(build_native, "BUILD", build)

    def write(home, folder):
        (build / "CMakeCache.txt").write_text(
            f"CMAKE_BUILD_TYPE:STRING=Release\nCMAKE_CACHEFILE_DIR:INTERNAL={folder}\nCMAKE_HOME_DIRECTORY:INTERNAL={home}\n",
            encoding="utf-8")
        return build

    return write


def test_a_build_of_these_folders_is_kept(cached, tmp_path):
    build = cached(build_native.PACKAGE, tmp_path / "build")
    build_native.forget_other_folders()
    assert (build / "CMakeCache.txt").is_file()


@pytest.mark.parametrize("home, folder", [("/elsewhere", None), (None, "/elsewhere")])
def test_a_build_of_other_folders_is_removed(cached, tmp_path, home, folder):
    build = cached(home or build_native.PACKAGE, folder or tmp_path / "build")
    build_native.forget_other_folders()
    assert not build.exists()


def test_there_need_be_no_build(monkeypatch, tmp_path):
    monkeypatch.setattr(build_native, "BUILD", tmp_path / "none")
    build_native.forget_other_folders()
    assert not (tmp_path / "none").exists()
