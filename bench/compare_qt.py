"""Measures hxbench built with Qt 5 against hxbench built with Qt 6, and writes every row.

The two programs run in turn, so that what else the machine does hits both. Each row is the median of the CPU
time of our own operation. Rows of which Qt 6 takes more than MOST times as long are marked.

usage: compare_qt.py QT5_PROGRAM QT6_PROGRAM [--rounds 5] [--min-time 0.02] [--filter REGEX] [--output FILE]
"""
import argparse
import json
import os
import statistics
import subprocess
import sys
from collections import defaultdict

MOST = 1.15


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", nargs=2)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--min-time", default="0.02")
    parser.add_argument("--filter", default="/own$")
    parser.add_argument("--output")
    return parser.parse_args()


def measured(program, options):
    """Nanoseconds of each row, of one run of the program."""
    done = subprocess.run([program, f"--benchmark_filter={options.filter}", "--benchmark_format=json",
                           f"--benchmark_min_time={options.min_time}"], capture_output=True, check=True)
    return {run["name"]: run["cpu_time"] for run in json.loads(done.stdout)["benchmarks"]
            if run.get("run_type") == "iteration"}


def medians(options):
    times = [defaultdict(list), defaultdict(list)]
    for _ in range(options.rounds):
        for program, rows in zip(options.programs, times):
            for row, time in measured(program, options).items():
                rows[row].append(time)
    return [{row: statistics.median(values) for row, values in rows.items()} for rows in times]


def report(five, six, load):
    rows = sorted(((six[row] / five[row], row) for row in five if row in six), reverse=True)
    slow = [row for ratio, row in rows if ratio > MOST]
    lines = ["# Speed under Qt 5 and Qt 6", "",
             "Written by `scripts/bench --qt`; run it again rather than editing this file.", "",
             f"- {len(rows)} rows; {len(slow)} take more than {MOST} times as long under Qt 6",
             f"- load of the machine when it began: {load:.1f}", "",
             "| row | Qt 5, ns | Qt 6, ns | Qt 6 / Qt 5 |", "|---|---|---|---|"]
    lines += [f"| {row.removesuffix('/own')} | {five[row]:.4g} | {six[row]:.4g} | {ratio:.2f}{' *' * (ratio > MOST)} |"
              for ratio, row in rows]
    return slow, "\n".join(lines) + "\n"


def main():
    options = arguments()
    load = os.getloadavg()[0]
    slow, text = report(*medians(options), load)
    if options.output:
        with open(options.output, "w", encoding="utf-8") as file:
            file.write(text)
    print(text, end="")
    return 1 if slow else 0


if __name__ == "__main__":
    sys.exit(main())
