"""Compares what the hot pieces of work cost in instructions with what they cost when that was last recorded.

Counts do not vary with the machine's load, so a bound of 15 per cent finds what a clock would miss. They hold for one
compiler, one Qt and one C library; with others this says so and is skipped (status 77).

usage: counts.py --pieces PROGRAM --compiler NAME --qt VERSION --recorded FILE [--record] [--only PIECE] [--share PART]
"""

import argparse
import json
import os
import platform
import re
import subprocess
import sys
import tempfile

BOUND = 1.15
SKIPPED = 77


def count(program, piece):
    """Instructions of one piece, by callgrind."""
    with tempfile.TemporaryDirectory() as folder:
        out = os.path.join(folder, "callgrind.out")
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", QT_HASH_SEED="0",
                           XDG_RUNTIME_DIR=folder, HOME=folder, QT_LOGGING_RULES="qt.qpa.*=false")
        run = subprocess.run(["valgrind", "--tool=callgrind", "--instr-atstart=no",
                              "--callgrind-out-file=" + out, program, piece],
                             env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=subprocess.PIPE, text=True)
        if run.returncode != 0:
            sys.exit(f"{piece}: the program failed\n{run.stderr}")
        with open(out, encoding="utf-8") as text:
            found = re.search(r"^totals: (\d+)", text.read(), re.MULTILINE)
        if found is None or int(found.group(1)) == 0:
            sys.exit(f"{piece}: callgrind counted nothing")
        return int(found.group(1))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--pieces", required=True)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--qt", required=True)
    parser.add_argument("--recorded", required=True)
    parser.add_argument("--record", action="store_true", help="write what is counted now")
    parser.add_argument("--only", help="no other piece than this one")
    parser.add_argument("--share", type=float, default=1,
                        help="take this part of the recorded counts, to see that the guard finds what costs more")
    arguments = parser.parse_args()

    versions = {"compiler": arguments.compiler, "qt": arguments.qt, "c library": " ".join(platform.libc_ver()),
                "processor": platform.machine()}
    names = subprocess.run([arguments.pieces], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"), check=True,
                           stdout=subprocess.PIPE, text=True).stdout.splitlines()
    if arguments.record:
        counts = {name: count(arguments.pieces, name) for name in names}
        with open(arguments.recorded, "w", encoding="utf-8") as file:
            json.dump({"versions": versions, "counts": counts}, file, indent=2)
            file.write("\n")
        return 0

    with open(arguments.recorded, encoding="utf-8") as file:
        recorded = json.load(file)
    if recorded["versions"] != versions:
        print(f"Skipped: counts are recorded for {recorded['versions']}, here is {versions}.")
        return SKIPPED
    if sorted(recorded["counts"]) != sorted(names):
        sys.exit(f"Recorded are {sorted(recorded['counts'])}, there are {sorted(names)}.")
    if arguments.only is not None:
        names = [name for name in names if name == arguments.only]
    worse = 0
    for name in names:
        now, before = count(arguments.pieces, name), recorded["counts"][name] * arguments.share
        print(f"{name:32} {now:>14,} instructions, {now / before:5.2f} of what was recorded", flush=True)
        worse += now > BOUND * before
    if worse:
        sys.exit(f"{worse} of {len(names)} cost more than {BOUND} times of what was recorded. If that is meant, "
                 "the build's target record-instructions writes the counts anew.")
    return 0


sys.exit(main())
