#!/usr/bin/env python3
"""How long the window takes from the start of its process to its first paint, and how large it is.

usage: window.py [--size] BUILD

On a screen of its own where there is Xvfb, else without one. The machine should have nothing else to do.
With --size it is only weighed.
"""
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
MOST_MS = 300
MOST_BYTES = {"5": 500_000, "6": 520_000}  # by Qt; the texts of 6 have three pointers in the place of one


def shown_after(program, environment):
    start = time.perf_counter()
    subprocess.run([program], env=environment, check=True, stderr=subprocess.DEVNULL)
    return (time.perf_counter() - start) * 1000


def measure(program, environment):
    shown_after(program, environment)  # the first run reads from the disk
    return statistics.median(shown_after(program, environment) for _ in range(RUNS))


def measure_on_screen(program):
    if shutil.which("Xvfb") is None:
        return "offscreen", measure(program, dict(os.environ, QT_QPA_PLATFORM="offscreen"))
    reading, writing = os.pipe()
    screen = subprocess.Popen(["Xvfb", "-displayfd", str(writing)], pass_fds=[writing],
                              stderr=subprocess.DEVNULL)
    os.close(writing)
    try:
        with os.fdopen(reading) as numbers:
            display = ":" + numbers.readline().strip()
        return "Xvfb", measure(program, dict(os.environ, QT_QPA_PLATFORM="xcb", DISPLAY=display))
    finally:
        screen.terminate()
        screen.wait()


def stripped_size(program):
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / "program"
        subprocess.run(["strip", "-o", copy, program], check=True)
        return copy.stat().st_size


def is_fast(build):
    screen, milliseconds = measure_on_screen(build / "bin" / "hxbench_window")
    print(f"window: shown after {milliseconds:.0f} ms (median of {RUNS}, {screen}; at most {MOST_MS})")
    return milliseconds <= MOST_MS


def qt_of(build):
    return re.search(r"^HX_QT:\w+=(\d)$", (build / "CMakeCache.txt").read_text(), re.MULTILINE).group(1)


def is_small(build):
    size = stripped_size(build / "bin" / "hxupdate")
    most = MOST_BYTES[qt_of(build)]
    print(f"window: {size} bytes, resources included (at most {most})")
    return size <= most


def main():
    build = pathlib.Path(sys.argv[-1])
    checks = [is_small] if "--size" in sys.argv else [is_fast, is_small]
    return 0 if all([check(build) for check in checks]) else 1


if __name__ == "__main__":
    sys.exit(main())
