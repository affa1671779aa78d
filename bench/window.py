#!/usr/bin/env python3
"""How long the window takes from the start of its process to its first paint, how long its event loop is away at a
time during an update, and how large it is.

usage: window.py [--size] BUILD

On a screen of its own where there is Xvfb, else without one. The machine should have nothing else to do.
With --size it is only weighed.
"""
import contextlib
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 20
UPDATES = 5
MOST_MS = 300
MOST_GAP_MS = 100
MOST_BYTES = {"5": 500_000, "6": 520_000}  # by Qt; the texts of 6 have three pointers in the place of one


def shown_after(program, environment):
    start = time.perf_counter()
    subprocess.run([program], env=environment, check=True, stderr=subprocess.DEVNULL)
    return (time.perf_counter() - start) * 1000


def measure(program, environment):
    shown_after(program, environment)  # the first run reads from the disk
    return statistics.median(shown_after(program, environment) for _ in range(RUNS))


@contextlib.contextmanager
def screen():
    """Its name, and what a program needs to be shown on it."""
    if shutil.which("Xvfb") is None:
        yield "offscreen", dict(os.environ, QT_QPA_PLATFORM="offscreen")
        return
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing)], pass_fds=[writing],
                              stderr=subprocess.DEVNULL)
    os.close(writing)
    try:
        with os.fdopen(reading) as numbers:
            display = ":" + numbers.readline().strip()
        yield "Xvfb", dict(os.environ, QT_QPA_PLATFORM="xcb", DISPLAY=display)
    finally:
        server.terminate()
        server.wait()


def gaps_of_update(program, environment):
    """By step: how often the event loop came round, and the median and the longest time between, in ms."""
    done = subprocess.run([program], env=environment, check=True, stdout=subprocess.PIPE, text=True,
                          stderr=subprocess.DEVNULL)
    rows = (line.split() for line in done.stdout.splitlines())
    return {step: (int(count), float(median), float(longest)) for step, count, median, longest in rows}


def stripped_size(program):
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / "program"
        subprocess.run(["strip", "-o", copy, program], check=True)
        return copy.stat().st_size


def is_fast(build):
    with screen() as (name, environment):
        milliseconds = measure(build / "bin" / "hxbench_window", environment)
    print(f"window: shown after {milliseconds:.0f} ms (median of {RUNS}, {name}; at most {MOST_MS})")
    return milliseconds <= MOST_MS


def is_responsive(build):
    with screen() as (name, environment):
        updates = [gaps_of_update(build / "bin" / "hxbench_window_gaps", environment) for _ in range(UPDATES)]
    longest = 0
    for step in updates[0]:
        medians, peaks = ([update[step][column] for update in updates if step in update] for column in (1, 2))
        longest = max(longest, *peaks)
        print(f"window, {step}: the event loop was away {statistics.median(medians):.1f} ms in the median, "
              f"{max(peaks):.1f} ms at most (of {len(peaks)} updates, {name}; at most {MOST_GAP_MS})")
    return longest <= MOST_GAP_MS


def qt_of(build):
    return re.search(r"^HX_QT:\w+=(\d)$", (build / "CMakeCache.txt").read_text(), re.MULTILINE).group(1)


def is_small(build):
    size = stripped_size(build / "bin" / "hxupdate")
    most = MOST_BYTES[qt_of(build)]
    print(f"window: {size} bytes, resources included (at most {most})")
    return size <= most


def main():
    build = pathlib.Path(sys.argv[-1])
    checks = [is_small] if "--size" in sys.argv else [is_fast, is_responsive, is_small]
    return 0 if all([check(build) for check in checks]) else 1


if __name__ == "__main__":
    sys.exit(main())
