#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""Changes one operator, constant or condition of the library at a time, and counts which changes the tests notice.

Usage: mutate.py [--seed N] [--jobs N] [--again | --resume] [--only PREFIX]... [--together] FOLDER [COUNT | --all]

Of all places where one of the rules of mutants.py applies, a seed chooses COUNT (560 unless given), in the files of any PREFIX.
One build in FOLDER contains three quarters of the mutants, and an environment variable chooses between them at run time
(together.py). A mutant of each row of the table of conversions is tried in one build (rows.py). The others are built one by one
(singly.py); --together omits them. The tests that reach a mutant run until one fails, crashes, or exceeds its time or its memory.
A change that does not compile, or leaves the built library as it is, is no mutant.

FOLDER/results.txt lists the outcomes; --resume continues with mutants that it does not contain, and --again also tries its
survivors again. survivors.txt beside this script lists accepted survivors with their reasons; --again does not try them. Fails if
less than 95 % of the mutants are noticed, or if one survives that is not listed.
"""

import argparse
import collections
import hashlib
import os
import pathlib
import queue
import re
import sys
import threading
import time

from mutants import all_mutants
from rows import Rows
from singly import Singly
from together import Together

SURVIVORS = pathlib.Path(__file__).with_name("survivors.txt")
SHARE = 0.08  # upper bound on the part of the mutants in one file: the table of conversions has hundreds of constants
ENOUGH = 0.95  # of all mutants 97 % are noticed, of a choice a few more or less


def shuffled(mutants, seed=1):
    """The mutants in the order of a hash, so that those tried in part of the time are typical of all, and a choice hardly changes
    when a source does: --resume and --again find most of it tried already."""
    return sorted(mutants, key=lambda mutant: hashlib.sha256(f"{seed} {mutant.key()}".encode()).digest())


def chosen(mutants, count, seed):
    """Chooses mutants, with no file above its share."""
    taken = collections.Counter()
    choice = []
    for mutant in shuffled(mutants, seed):
        if len(choice) < count and taken[mutant.path] < max(1, count * SHARE):
            taken[mutant.path] += 1
            choice.append(mutant)
    return choice


def earlier_fates(results):
    """The outcomes of mutants in an earlier run, by their keys."""
    blocks = re.findall(r"^(.*) (\S+):\d+\n- (.*)\n\+ (.*)$", results.read_text(), re.MULTILINE)
    return {(path, old, new): fate for fate, path, old, new in blocks}


def accepted_survivors():
    """The reasons, by the keys of the mutants."""
    blocks = re.findall(r"^(\S+)\n- (.*)\n\+ (.*)\n((?:  .*\n)+)", SURVIVORS.read_text(), re.MULTILINE)
    return {(path, old, new): " ".join(reason.split()) for path, old, new, reason in blocks}


def tried(workers, mutants, report):
    """Tries each mutant with one of the workers, functions that return its outcome."""
    waiting = queue.Queue()
    for mutant in mutants:
        waiting.put(mutant)

    def work(fate_of):
        while True:
            try:
                mutant = waiting.get_nowait()
            except queue.Empty:
                return
            report(fate_of(mutant), mutant)

    threads = [threading.Thread(target=work, args=(worker,), daemon=True) for worker in workers]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()


def main():
    parser = argparse.ArgumentParser(description="Counts which changes of the library the tests notice.")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--again", action="store_true", help="as --resume, and try the survivors again")
    parser.add_argument("--resume", action="store_true", help="continue with mutants that FOLDER/results.txt does not contain")
    parser.add_argument("--only", action="append", metavar="PREFIX", help="only in files whose path begins with PREFIX")
    parser.add_argument("--together", action="store_true", help="omit mutants that need a build of their own")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("count", type=int, nargs="?", default=560)
    parser.add_argument("--all", action="store_true", help="all places, not a choice")
    options = parser.parse_args()

    folder = options.folder.resolve()
    folder.mkdir(parents=True, exist_ok=True)
    results = folder / "results.txt"
    mutants = list(all_mutants())
    accepted = accepted_survivors()
    for key in accepted.keys() - {mutant.key() for mutant in mutants}:
        raise SystemExit("mutate: survivors.txt holds a change that cannot be made any more:\n{}\n- {}\n+ {}".format(*key))
    choice = [mutant for mutant in mutants if mutant.path.startswith(tuple(options.only or [""]))]
    if not options.all:
        choice = chosen(choice, options.count, options.seed)
    known = earlier_fates(results) if options.resume or options.again else {}
    fates = {mutant: known[mutant.key()] for mutant in choice if mutant.key() in known}
    if options.again:
        fates = {mutant: fate for mutant, fate in fates.items() if fate != "survived" or mutant.key() in accepted}
    left = [mutant for mutant in choice if mutant not in fates]

    os.nice(10)
    print(f"{len(choice)} of {len(mutants)} changes, {len(left)} of them now, once the tree is built", flush=True)
    start = time.monotonic()
    with results.open("a" if known else "w") as log:
        def report(fate, mutant):
            fates[mutant] = fate
            print(f"{len(fates)}/{len(choice)} {time.monotonic() - start:.0f} s  {fate} {mutant}", end="", flush=True)
            print(f"{fate} {mutant}", file=log, flush=True)

        together = Together(folder / "schemata", mutants, options.jobs)
        if left:
            together.prepare()
        held = {mutant for mutant in left if together.holds(mutant)}
        tried([together.fate] * options.jobs, shuffled(held), report)
        of_rows = {mutant for mutant in left if Rows.holds(mutant)} - held
        if of_rows:
            Rows(together).tried(of_rows, report)
        singly = Singly(together)
        if not options.together:  # those of a source one after the other, so that fewer sources are built again
            tried([singly.fate], sorted(set(left) - held - of_rows), report)
        for mutant in sorted(mutant for mutant in held if fates[mutant] == "survived"):
            if singly.fate_of_build(mutant) == "without effect":
                report("without effect", mutant)

    tested = [mutant for mutant, fate in fates.items() if fate not in ("not compiled", "without effect")]
    survived = sorted(mutant for mutant in tested if fates[mutant] == "survived")
    unlisted = [mutant for mutant in survived if mutant.key() not in accepted]
    for mutant in survived:
        print(f"\nsurvived {mutant}  {accepted.get(mutant.key(), 'NOT LISTED')}")
    noticed = len(tested) - len(survived)
    print(f"\n{len(fates)} changes, of which {len(fates) - len(tested)} do not compile or have no effect. Of {len(tested)} mutants "
          f"{noticed} are noticed ({100 * noticed / max(1, len(tested)):.1f} %); of the {len(survived)} survivors "
          f"{len(unlisted)} are not listed.")
    return 0 if tested and noticed >= ENOUGH * len(tested) and not unlisted else 1


if __name__ == "__main__":
    sys.exit(main())
