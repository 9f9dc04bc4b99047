# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Copies of the working tree in which mutants are built, and processes with limits on their time and memory."""

import hashlib
import os
import pathlib
import resource
import shutil
import signal
import subprocess

from mutants import ROOT

# The build is quick to make and to run: optimisation does not affect whether the tests notice a change. A separate
# library makes the choice, for all modules of a process (MutantChoice.cpp).
CONFIGURATION = ("-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1", "-DCMAKE_C_COMPILER=clang",
                 "-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld",
                 "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld", "-DMATHEXPR_CHECK_HANDLES=ON", "-DMATHEXPR_INSTALL=OFF")
CXX_FLAGS = "-w -D_GLIBCXX_ASSERTIONS"

# Test programs, in an order that notices mutants early.
PROGRAMS = ("language_tests", "program_tests", "additions_tests", "engine_tests", "unit_tests", "failure_tests",
            "floating_point_tests", "robustness_tests", "registrar_shortage_tests", "message_display_tests",
            "memory_tests", "boundary_tests", "unicode_tests", "reference_tests", "tile_tests", "vocabulary_tests",
            "c_thread_tests", "thread_tests", "first_use_tests", "value_text_tests", "end_of_process_tests",
            "unloading_tests", "cpp_host_tests", "editor_tests", "prompt_tests")
# Other tests of CTest. The longest texts are omitted, for their time, and so are tests of tools.
OTHERS = (r"^(c_tests|exported_names|calculator|fuzz|initialized_bytes$|readme_host|vocabulary_page|HostWithoutExceptions"
          r"|long_life)")
OMITTED_TESTS = "Generator.*"  # tests of the tests themselves

# Numbers of generated texts to compare with the reference; those of ./dev test would take too long.
COMPARISONS = {"MATHEXPR_DIFFERENTIAL_EXPRESSIONS": "2000", "MATHEXPR_DIFFERENTIAL_COUNT": "1000",
               "MATHEXPR_DIFFERENTIAL_CALLS": "200"}
MEMORY = 6 << 30  # bytes of address space of a test
WAIT_SECONDS = 10
WAITS = 6  # a test that uses no processor time as often is deadlocked, however busy the machine is


class Workspace:
    """A copy of the working tree, and its build."""

    def __init__(self, folder):
        self.folder = folder
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.environment = dict(os.environ, **COMPARISONS, LOCPATH=str(self.build / "tests/unit/locales"),
                                CCACHE_BASEDIR=str(folder), CCACHE_NOHASHDIR="1")  # shared by the copies

    def copy(self, replaced=None):
        """Copies the tree, with other texts for some files, and returns a digest. An earlier run may have left mutants there."""
        digest = hashlib.sha256()
        names = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                               stdout=subprocess.PIPE, check=True, text=True).stdout
        for name in filter(None, names.split("\0")):
            if (ROOT / name).exists():
                text = (replaced or {}).get(name)
                content = (ROOT / name).read_bytes() if text is None else text.encode("ascii")
                self.write(name, content)
                shutil.copymode(ROOT / name, self.tree / name)
                if not name.startswith(("docs/", "tests/mutation/")):
                    digest.update(f"{name} {len(content)}\n".encode() + content)
        return digest.hexdigest()

    def write(self, name, content):
        """Writes a file, unless it has this content: what depends on it is then built again."""
        target = self.tree / name
        target.parent.mkdir(parents=True, exist_ok=True)
        if not (target.exists() and target.read_bytes() == content):
            target.write_bytes(content)

    def configure(self, *options, flags=""):
        configuration = [*CONFIGURATION, f"-DCMAKE_CXX_FLAGS={CXX_FLAGS} {flags}", *options]
        if shutil.which("ccache"):
            configuration.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(["cmake", *configuration, "-S", self.tree, "-B", self.build], check=True, stdout=subprocess.DEVNULL)

    def built(self, target, jobs=1):
        command = ["cmake", "--build", self.build, f"-j{jobs}", "--target", target]
        return exit_code(command, self.build, self.environment) == 0


def exit_code(command, folder, environment, seconds=None):
    """None if the process waits without using the processor. With an upper bound on the processor time, memory is bounded too."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if seconds is not None:
            resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 5))
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

    process = subprocess.Popen(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True, preexec_fn=limit)
    used, idle = -1, 0
    try:
        while idle < WAITS:
            try:
                return process.wait(WAIT_SECONDS)
            except subprocess.TimeoutExpired:
                used, before = ticks_of_session(process.pid), used
                idle = idle + 1 if used == before else 0
        return None
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)  # also what a test has started
        except ProcessLookupError:
            pass
        process.wait()


def ticks_of_session(leader):
    """Processor time of all processes of a session."""
    total = 0
    for process in os.listdir("/proc"):
        try:
            fields = pathlib.Path("/proc", process, "stat").read_text().rpartition(")")[2].split()
        except (OSError, ValueError):
            continue
        if process.isdigit() and int(fields[3]) == leader:
            total += sum(map(int, fields[11:15]))
    return total


def outcome(code):
    """How a test failed, from its exit code; None if it passed."""
    return {0: None, None: "waited", -signal.SIGXCPU: "hung", -signal.SIGKILL: "hung"}.get(
        code, "failed" if code is None or code > 0 else "crashed")  # fmt: skip
