"""Runs the benchmarks and compares their ratios with the aims of aims.json: a row for each, as docs/performance.md has them.

Of each benchmark the least of its repetitions counts: what else runs only adds. Ratios are of one run, so that they say the
same on any machine. Ends with status 1 where a ratio misses its aim by half again.

usage: aims.py --programs FOLDER [--only WORD ...] [--repetitions N]
"""

import argparse
import json
import os
import subprocess
import sys

MISSED = 1.5
HERE = os.path.dirname(os.path.abspath(__file__))
SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}


def measured(program, names, repetitions):
    """By name the least seconds and the counters of the benchmarks of a program."""
    pattern = "^(" + "|".join(escaped(name) for name in names) + ")(/|$)"
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", QT_LOGGING_RULES="qt.qpa.*=false")
    run = subprocess.run([program, "--benchmark_filter=" + pattern, "--benchmark_format=json",
                          f"--benchmark_repetitions={repetitions}"],
                         env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                         text=True)
    if run.returncode != 0:
        sys.exit(f"{program} failed\n{run.stderr}")
    found = {}
    for one in json.loads(run.stdout)["benchmarks"]:
        if one.get("run_type") == "aggregate":
            continue
        if one.get("error_occurred"):
            sys.exit(f"{one['name']}: {one['error_message']}")
        one["seconds"] = one["real_time"] * SECONDS[one["time_unit"]]
        best = found.get(one["run_name"])
        if best is None or one["seconds"] < best["seconds"]:
            found[one["run_name"]] = one
    return found


def escaped(name):
    return "".join("\\" + letter if letter in ".+*?()[]{}|^$\\" else letter for letter in name)


def ratio(aim, found):
    """Of an aim: the time of `of` over those of `beside` together; or a counter of `of` over
    `of_counter`, or one over that."""
    own = found[aim["of"]]
    if "counter" in aim:
        value = own[aim["counter"]] / aim.get("of_counter", 1)
        return 1 / value if aim.get("inverse") else value
    return own["seconds"] / sum(found[name]["seconds"] for name in aim["beside"])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--programs", required=True)
    parser.add_argument("--only", nargs="*", default=[], help="aims whose words hold one of these")
    parser.add_argument("--repetitions", type=int, default=3)
    arguments = parser.parse_args()
    with open(os.path.join(HERE, "aims.json"), encoding="utf-8") as file:
        aims = json.load(file)
    if arguments.only:
        aims = [aim for aim in aims if any(word in aim["what"] for word in arguments.only)]
    missed = 0
    print("| what | beside | ratio | aim |\n|---|---|---|---|", flush=True)
    for program in dict.fromkeys(aim["program"] for aim in aims):
        own = [aim for aim in aims if aim["program"] == program]
        names = dict.fromkeys(name for aim in own for name in [aim["of"], *aim.get("beside", [])])
        found = measured(os.path.join(arguments.programs, program), names,
                         min(aim.get("repetitions", arguments.repetitions) for aim in own))
        for aim in own:
            is_at = ratio(aim, found)
            word = "" if is_at <= aim["aim"] else " missed" if is_at > MISSED * aim["aim"] else " not reached"
            missed += is_at > MISSED * aim["aim"]
            print(f"| {aim['what']} | {aim['words']} | {is_at:.2f} | {aim['aim']}{word} |", flush=True)
    if missed:
        sys.exit(f"{missed} of {len(aims)} aims are missed by half again.")
    return 0


sys.exit(main())
