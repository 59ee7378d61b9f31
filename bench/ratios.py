#!/usr/bin/env python3
"""Compares each benchmark with its reference in one run's JSON output.

Usage: ratios.py RESULTS.json
Ends with 1 when a ratio or a time misses its goal or a pair is incomplete.
"""

import json
import sys

GOALS = {"decode": 1.5, "encode": 1.3, "save": 1.3, "append": 2.0, "stream": 2, "reconcile": 3}

# Most of a save is waiting for the disk; a step is timed by itself.
BY_THE_CLOCK = {"save", "step"}

# Milliseconds of what has no reference.
LIMITS = {"change/one card": 0.1, "change/one conversation": 0.2, "search/first text": 20,
          "search/next text": 8, "step/20000 pieces at once": 8, "step/100000 pieces at once": 8,
          "step/20000 pieces steadily": 8, "step/sync of 10 MB, as here": 8,
          "step/sync of 10 MB, all new": 8}

# How many times as long five times as much may take.
GROWTH = {"show/100000 pieces": ("show/20000 pieces", 6.5),
          "stream/100000 pieces/codec": ("stream/20000 pieces/codec", 6.5)}


def kind(name):
    return name.split("/")[0]


def medians(path):
    """Milliseconds by name."""
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {run["run_name"].split("/iterations")[0]: run["real_time" if kind(run["run_name"]) in BY_THE_CLOCK else "cpu_time"]
            for run in runs if run.get("aggregate_name") == "median"}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    times = medians(sys.argv[1])
    if not times:
        sys.exit("No medians: run with --benchmark_repetitions.")
    pairs = sorted({name.rsplit("/", 1)[0] for name in times if name.endswith(("/codec", "/reference"))})
    failed = False
    for name, limit in LIMITS.items():
        if name not in times:
            continue
        missed = times[name] > limit
        failed = failed or missed
        print(f"{name:24} {times[name]:7.3f} ms, goal {limit} ms{'  MISSED' if missed else ''}")
    for name, (less, limit) in GROWTH.items():
        if name not in times or less not in times:
            continue
        growth = times[name] / times[less]
        missed = growth > limit
        failed = failed or missed
        print(f"{name:24} {growth:7.2f} times {less}, goal {limit}{'  MISSED' if missed else ''}")
    for pair in pairs:
        codec, reference = times.get(pair + "/codec"), times.get(pair + "/reference")
        if codec is None or reference is None:
            print(f"{pair}: incomplete")
            failed = True
            continue
        goal = GOALS[kind(pair)]
        ratio = codec / reference
        missed = ratio > goal
        failed = failed or missed
        print(f"{pair:24} {codec:7.1f} ms against {reference:7.1f} ms: "
              f"{ratio:.2f}, goal {goal}{'  MISSED' if missed else ''}")
    sys.exit(failed)


if __name__ == "__main__":
    main()
