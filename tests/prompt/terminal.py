# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""A program at a real terminal: tmux is the terminal, keys are sent to it, and its screen is read.

Nothing here waits for a fixed time: the screen is polled until it has the expected content, for at most a minute.
"""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time

PATIENCE = 60


class Terminal:
    """A terminal that runs a command. Use it in a with statement."""

    def __init__(self, command, environment, columns=80, lines=24):
        """The command gets this environment, and tmux's variables for the terminal."""
        self.folder = tempfile.mkdtemp(prefix="terminal.")
        settings = pathlib.Path(self.folder, "settings")
        settings.write_text("set -g remain-on-exit on\nset -g history-limit 50000\nset -g status off\nset -s escape-time 0\n")
        self.socket = os.path.join(self.folder, "socket")
        kept = {name: os.environ[name] for name in ("PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS") if name in os.environ}
        self.environment = {"LC_ALL": "C.UTF-8", "TERM": "xterm", "SHELL": "/bin/sh", **kept}
        words = ["env", "-i", *(f"{name}={value}" for name, value in {**kept, **environment}.items())]
        if "TERM" not in environment:
            words.append("TERM=screen")
        # tmux sometimes misses the end of a command.
        self.status = pathlib.Path(self.folder, "status")
        told = ["/bin/sh", "-c", 'trap : INT; "$@"; echo $? >"$0"', str(self.status)]
        self.tmux("-f", str(settings), "new-session", "-d", "-x", str(columns), "-y", str(lines), "--",
                  *told, *words, *command)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        subprocess.run(["tmux", "-S", self.socket, "kill-server"], env=self.environment, capture_output=True, check=False)
        shutil.rmtree(self.folder, ignore_errors=True)

    def tmux(self, *arguments):
        return subprocess.run(["tmux", "-u", "-S", self.socket, *arguments], env=self.environment, check=True,
                              capture_output=True, timeout=PATIENCE).stdout.decode()

    def type(self, text):
        self.tmux("send-keys", "-l", "--", text)

    def press(self, *keys):
        """Presses keys, by tmux's names such as Enter, C-c and Tab."""
        self.tmux("send-keys", *keys)

    def resize(self, columns, lines=24):
        """Resizes the terminal; returns when the command can observe the new size."""
        self.tmux("resize-window", "-x", str(columns), "-y", str(lines))
        device = self.tmux("display-message", "-p", "#{pane_tty}").strip()
        self.wait_for(lambda _: self.size_of(device) == (columns, lines), f"{columns} columns")

    @staticmethod
    def size_of(device):
        with open(device, "rb") as terminal:
            return os.get_terminal_size(terminal.fileno())

    def screen(self, coloured=False):
        """Everything since the start, as lines of the terminal without trailing blanks."""
        shown = self.tmux("capture-pane", "-p", "-S", "-", *(["-e"] if coloured else []))
        return "\n".join(line.rstrip() for line in shown.rstrip("\n").split("\n")).rstrip("\n")

    def visible(self):
        """The visible screen, without trailing blanks."""
        return self.tmux("capture-pane", "-p").rstrip()

    def wait_for(self, condition, expectation):
        """Waits until the condition holds for the screen, and returns the screen."""
        deadline = time.monotonic() + PATIENCE
        while True:
            shown = self.screen()
            if condition(shown):
                return shown
            if time.monotonic() > deadline:
                raise AssertionError(f"expected {expectation}; the screen shows:\n{shown}")
            time.sleep(0.02)

    def expect(self, end):
        """Waits until the screen ends in this text."""
        return self.wait_for(lambda shown: shown.endswith(end), f"at the end {end!r}")

    def expect_match(self, pattern):
        return self.wait_for(lambda shown: re.search(pattern, shown) is not None, f"a match of {pattern!r}")

    def ended(self):
        """Waits for the end of the command, and returns its exit status."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            told = self.status.read_text() if self.status.exists() else ""
            if told.endswith("\n"):
                return int(told)
            time.sleep(0.02)
        raise AssertionError("the command has not ended; the screen shows:\n" + self.screen())
