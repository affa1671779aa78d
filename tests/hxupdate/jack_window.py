#!/usr/bin/env python3
"""Updates a simulated product through the window and a real MIDI port: jackd with its dummy driver
carries the bytes, Xvfb is the screen, xdotool presses the keys, and the window's title says what came of it.

usage: jack_window.py HXHOST PLUGIN HXUPDATE

Exits 77, the code of a skipped test, where a tool is missing.
"""

import os
import pathlib
import signal
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hxhost"))
import jack_end_to_end as jack  # noqa: E402

TOOLS = (*jack.TOOLS, "Xvfb", "xdotool")


class Screen:
    def __init__(self, bench):
        self.bench = bench
        reading, writing = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
            pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        bench.processes.append(self.process)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            bench.environment["DISPLAY"] = ":" + numbers.readline().strip()

    def window(self, title):
        """The window of this title; waits for it."""
        return jack.eventually(f"a window \"{title}\"", lambda: self.bench.run(
            "xdotool", "search", "--onlyvisible", "--name", title).stdout.split()[:1], 60)[0]

    def press(self, title, *keys):
        """Presses keys in the window of this title."""
        window = self.window(title)
        self.bench.run("xdotool", "windowfocus", "--sync", window)
        jack.check(self.bench.run("xdotool", "key", *keys).returncode == 0, f"no key {keys}")


def start_window(bench, image):
    environment = {"QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8", "XDG_CONFIG_HOME": bench.folder}
    bench.environment.update(environment)
    return bench.start(sys.argv[3], "--plugin", bench.plugin, image)


def kill_in_the_midst(bench, screen, image):
    window = start_window(bench, image)
    screen.press("Valdrin was found", "Return")
    screen.press("Review what will be done", "alt+u")
    screen.window("^[1-9][0-9]? % - Valdrin is being updated")  # a part of it was acknowledged
    jack.stop(window, signal.SIGKILL)


def update_after_that(bench, screen, image):
    window = start_window(bench, image)
    screen.press("Valdrin has to be recovered", "Return")
    screen.press("Review what will be done", "alt+r")
    screen.window("Valdrin was updated")
    bench.json(0, "verify", image)
    screen.press("Valdrin was updated", "alt+c")
    window.wait(20)
    jack.check(window.returncode == 0, f"the window ended with {window.returncode}")


def try_window(bench):
    bench.start_server()
    bench.start_product()
    image = bench.image("small.syx", 8192)
    screen = Screen(bench)
    kill_in_the_midst(bench, screen, image)
    update_after_that(bench, screen, image)
    print("updated through the window over JACK")


def main():
    if jack.lacks(TOOLS, "jackd2, xvfb or xdotool"):
        return jack.SKIPPED
    return jack.exit_code(try_window, *sys.argv[1:3], jack.Bench)


if __name__ == "__main__":
    sys.exit(main())
