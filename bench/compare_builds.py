"""Measures hxbench of this state against that of an earlier one, and writes what has become slower.

The two programs run in turn. A time is the median of the CPU time over the rounds. Rows that take more than MOST
times as long are measured again, in four times as many rounds; what stays slower is listed. Both are built with this
state's benchmarks: in a worktree of the earlier commit, with this state's `bench` but the commit's own
`bench/UpdateLoopBench.cpp`, which uses the host's interfaces.

usage: compare_builds.py BUILD EARLIER_BUILD COMMIT [--rounds 5] [--min-time 0.02] [--output FILE]
"""
import argparse
import os
import re
import statistics
from collections import defaultdict

import compare_qt
import report

MOST = 1.05
OWN = "/own$"


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("build")
    parser.add_argument("earlier")
    parser.add_argument("commit", help="what the earlier build is of, for the page")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--min-time", default="0.02")
    parser.add_argument("--output")
    return parser.parse_args()


def ratios(options, rounds, pattern):
    """How many times as long each row takes now: the median over the rounds, and its least and greatest value."""
    found = defaultdict(list)
    chosen = argparse.Namespace(filter=pattern, min_time=options.min_time)
    for _ in range(rounds):
        earlier, now = (compare_qt.measured(build, chosen) for build in (options.earlier, options.build))
        for row in earlier:
            if row in now:
                found[row].append(now[row] / earlier[row])
    return {row: (statistics.median(values), min(values), max(values)) for row, values in found.items()}


def measured_twice(options):
    """The ratios of all rows; those of the slower ones are of the second measurement."""
    found = ratios(options, options.rounds, OWN)
    slower = [row for row, (median, _, _) in found.items() if median > MOST]
    if slower:
        again = "^(" + "|".join(re.sub("[^A-Za-z0-9/]", ".", row) for row in slower) + ")$"
        found.update(ratios(options, 4 * options.rounds, again))
    return found


def operation_rows(found):
    operations = defaultdict(list)
    for row, (median, _, _) in found.items():
        operations[row.partition("/")[0]].append(median)
    for operation, values in sorted(operations.items()):
        yield operation, str(len(values)), f"{statistics.median(values):.2f}", f"{max(values):.2f}"


def slower_rows(found):
    for row, (median, least, greatest) in sorted(found.items()):
        if median > MOST:
            yield row.removesuffix("/own").replace("|", "\\|"), f"{median:.2f}", f"{least:.2f} to {greatest:.2f}"


def document(found, commit, load):
    slower = list(slower_rows(found))
    listed = [report.table(["row", "times as long", "from, to"], slower)] if slower else ["None."]
    return "\n".join([
        "# Speed beside an earlier state", "",
        "Written by `scripts/bench --beside FOLDER COMMIT`; run it again rather than editing this file.", "",
        f"- Machine: {report.machine()}; load when it began: {load:.1f}",
        f"- Earlier state: commit {commit}, built with this state's benchmarks",
        "- Times now as multiples of those of the earlier state: medians of CPU time, both programs in turn", "",
        report.table(["operation", "rows", "median", "slowest"], operation_rows(found)), "",
        f"Rows that take more than {MOST} times as long, measured a second time in four times as many rounds:", "",
        *listed, ""])


def main():
    options = arguments()
    load = os.getloadavg()[0]
    text = document(measured_twice(options), options.commit, load)
    if options.output:
        with open(options.output, "w", encoding="utf-8") as file:
            file.write(text)
    print(text, end="")


if __name__ == "__main__":
    main()
