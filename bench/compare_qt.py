"""Measures hxbench built with Qt 5 against hxbench built with Qt 6, and writes one line for each operation.

The two programs run in turn, so that what else the machine does hits both. A time is the median of the CPU time
over the rounds. An operation is marked when one of its rows takes more than MOST times as long under Qt 6; beside it
stands how Qt's own part compares: the row's floor, which does nothing but allocate and fill.

usage: compare_qt.py QT5_BUILD QT6_BUILD [--rounds 5] [--min-time 0.02] [--filter REGEX] [--output FILE]
"""
import argparse
import json
import os
import statistics
import subprocess
import sys
from collections import defaultdict

import report

MOST = 1.15
MEASURED = "/(own|floor)$"

SHORT_CALL = ("these calls take 6 to 8 ns, under Qt 6 less than 1 ns more: a length of 64 bits is held to the 32 of our"
              " interface")
# Why the slowest row of an operation may take so many times as long, and what shows it.
REASONS = {
    "match one": (1.25, SHORT_CALL),
    "miss one": (1.25, SHORT_CALL),
    "splitOnStatus": (1.8, "each piece is an allocation; the row's floor, which does nothing else, moves as much from"
                           " one run to the next, in both directions"),
    "whole process": (1.3, "Qt 6's libraries take longer to load: with an empty plugin, the row's floor, it is the"
                           " same"),
}


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("builds", nargs=2)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--min-time", default="0.02")
    parser.add_argument("--filter", default=MEASURED, help="only the rows whose name fits; writes no file")
    parser.add_argument("--output")
    return parser.parse_args()


def measured(build, options):
    """Nanoseconds of each row, of one run of the program and a hundred whole processes."""
    done = subprocess.run([os.path.join(build, "bin", "hxbench"), f"--benchmark_filter={options.filter}",
                           "--benchmark_format=json", f"--benchmark_min_time={options.min_time}"],
                          capture_output=True, check=True)
    runs = json.loads(done.stdout)["benchmarks"]
    if options.filter == MEASURED:
        runs += [dict(run, name=run["run_name"]) for run in report.measure_loading(os.path.abspath(build), 1)]
    return {run["name"]: run["cpu_time"] for run in runs if run.get("run_type") == "iteration"}


def ratios(options):
    """How many times as long each row takes under Qt 6."""
    times = [defaultdict(list), defaultdict(list)]
    for _ in range(options.rounds):
        for build, rows in zip(options.builds, times):
            for row, time in measured(build, options).items():
                rows[row].append(time)
    five, six = ({row: statistics.median(values) for row, values in rows.items()} for rows in times)
    return {row: six[row] / five[row] for row in five if row in six}


def operation_rows(found):
    """For each operation the number of its rows, the median, the slowest, its floor, and whether that is too slow."""
    operations = defaultdict(list)
    for row, ratio in found.items():
        if row.endswith("/own"):
            operations[row.partition("/")[0]].append((ratio, row.removesuffix("/own")))
    for operation, rows in sorted(operations.items()):
        worst, row = max(rows)
        floor = found.get(row + "/floor", found.get(row + "/empty plugin"))
        yield (operation, str(len(rows)), f"{statistics.median(ratio for ratio, _ in rows):.2f}", f"{worst:.2f}",
               row.partition("/")[2].replace("|", "\\|"), "" if floor is None else f"{floor:.2f}",
               "*" if worst > MOST else "")


def reasons(slow):
    """A line for each operation that is slower."""
    return [f"- {operation}: {REASONS.get(operation, (0, 'nobody has looked yet'))[1]}." for operation in slow]


def unexplained(rows):
    """The operations that are slower than there is a reason for."""
    return [row[0] for row in rows if row[-1] and float(row[3]) > REASONS.get(row[0], (0, ""))[0]]


def document(found, load):
    """The operations that are slower without a reason, and the page."""
    rows = list(operation_rows(found))
    slow = [row[0] for row in rows if row[-1]]
    return unexplained(rows), "\n".join([
        "# Speed under Qt 5 and Qt 6", "",
        "Written by `scripts/bench --qt`; run it again rather than editing this file.", "",
        f"- Machine: {report.machine()}; load when it began: {load:.1f}",
        f"- {sum(int(row[1]) for row in rows)} rows of {len(rows)} operations; {len(slow)} operations have a row that"
        f" takes more than {MOST} times as long under Qt 6 (*)",
        "- Times under Qt 6 as multiples of those under Qt 5: medians of CPU time, both programs in turn",
        "- The floor of a row does only what Qt must do for it: it allocates the result and fills it", "",
        report.table(["operation", "rows", "median", "slowest", "which is", "its floor", ""], rows), "",
        *reasons(slow), ""]).rstrip() + "\n"


def main():
    options = arguments()
    load = os.getloadavg()[0]
    failed, text = document(ratios(options), load)
    if options.output and options.filter == MEASURED:
        with open(options.output, "w", encoding="utf-8") as file:
            file.write(text)
    print(text, end="")
    if failed:
        print(f"slower under Qt 6 than there is a reason for: {', '.join(failed)}", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
