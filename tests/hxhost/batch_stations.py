#!/usr/bin/env python3
"""One batch a station, spread by GNU parallel over two logins that are both of this machine.

usage: batch_stations.py HXHOST PLUGIN
"""

import json
import os
import shlex
import sys

import trial
from trial import check, contents

STATIONS = ("bench-1", "bench-2")

# In place of ssh: a login is a folder, and a command is run in it.
LOGIN = """#!/bin/sh
cd "$STATIONS/$1" || exit 255
shift
[ "$1" != -- ] || shift
exec sh -c "$*"
"""


class Stations(trial.Bench):
    """Two logins, bench-1 and bench-2, with two products each."""

    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        # Where no shell is named, parallel takes what called it for one, which is this script's interpreter. It
        # fails where the folder for its own files has a blank in its name.
        self.environment = dict(os.environ, STATIONS=folder, HOME=folder, SHELL="/bin/sh", TMPDIR="/tmp",
                                PATH=folder + os.pathsep + os.environ["PATH"])

    def prepare(self):
        with open(self.path("login"), "w", encoding="ascii") as file:
            file.write(LOGIN)
        os.chmod(file.name, 0o700)
        self.image("image", 500)
        for station in STATIONS:
            os.mkdir(self.path(station))
            for number in (1, 2):
                self.host(0, "identify", "--port", "simulator:" + self.path(f"{station}/{number}.state"), "--serial",
                          f"{station}{number}")

    def spread(self):
        """The command of docs/user/many-products.md, with another way to log in."""
        command = shlex.join([self.hxhost, "batch", self.path("image"), "--plugin", self.plugin, "--ports",
                              "simulator:*.state", "--report", "batch.jsonl"])
        return self.run("parallel", "--will-cite", "--nonall", "--tag", "--ssh", "login", "--sshlogin",
                        ",".join(STATIONS), command)

    def units(self, station):
        return [json.loads(line) for line in contents(self.path(f"{station}/batch.jsonl")).splitlines()]


def try_stations(bench):
    bench.prepare()
    ended = bench.spread()
    check(ended.returncode == 0, f"parallel ended with {ended.returncode}:\n{ended.stdout}{ended.stderr}")
    for station in STATIONS:
        units = bench.units(station)
        check(sorted(unit["serial"] for unit in units) == [station + "1", station + "2"], f"{station}: {units}")
        check(all(unit["outcome"] == "succeeded" for unit in units), f"{station}: {units}")
        check(f"{station}\t2 updated, 0 failed" in ended.stdout, ended.stdout)
    with open(bench.path("bench-2/2.state"), "w", encoding="ascii") as file:
        file.write("damaged\n")
    ended = bench.spread()
    check(ended.returncode == 1, f"with one station that fails parallel ended with {ended.returncode}")
    print("two stations updated their products, and one that failed was counted")


if __name__ == "__main__":
    sys.exit(trial.exit_code(try_stations, *sys.argv[1:3], Stations))
