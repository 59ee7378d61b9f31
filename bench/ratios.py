#!/usr/bin/env python3
"""Compares each benchmark with its reference in one run's JSON output.

Usage: ratios.py RESULTS.json
Ends with 1 when a ratio misses its goal or a pair is incomplete.
"""

import json
import sys

GOALS = {"decode": 1.5, "encode": 1.3}


def medians(path):
    """Milliseconds of processor time by name."""
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {run["run_name"]: run["cpu_time"] for run in runs if run.get("aggregate_name") == "median"}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    times = medians(sys.argv[1])
    pairs = sorted({name.rsplit("/", 1)[0] for name in times})
    if not pairs:
        sys.exit("No medians: run with --benchmark_repetitions.")
    failed = False
    for pair in pairs:
        codec, reference = times.get(pair + "/codec"), times.get(pair + "/reference")
        if codec is None or reference is None:
            print(f"{pair}: incomplete")
            failed = True
            continue
        goal = GOALS[pair.split("/")[0]]
        ratio = codec / reference
        missed = ratio > goal
        failed = failed or missed
        print(f"{pair:24} {codec:7.1f} ms against {reference:7.1f} ms: "
              f"{ratio:.2f}, goal {goal}{'  MISSED' if missed else ''}")
    sys.exit(failed)


if __name__ == "__main__":
    main()
