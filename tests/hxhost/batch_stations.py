#!/usr/bin/env python3
"""One batch a station, spread by GNU parallel over two logins that are both of this machine.

usage: batch_stations.py HXHOST PLUGIN
"""

import json
import os
import subprocess
import sys
import tempfile

# In place of ssh: a login is a folder, and a command is run in it.
LOGIN = """#!/bin/sh
cd "$STATIONS/$1" || exit 255
shift
[ "$1" != -- ] || shift
exec sh -c "$*"
"""


def check(holds, what):
    if not holds:
        raise SystemExit(f"FAILED: {what}")


def run(*words, **settings):
    return subprocess.run(words, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=300, check=False,
                          **settings)


def make_station(folder, name, hxhost, plugin):
    os.mkdir(os.path.join(folder, name))
    for number in (1, 2):
        made = run(hxhost, "identify", "--plugin", plugin, "--port", f"simulator:{number}.state", "--serial",
                   f"{name[:7]}{number}", cwd=os.path.join(folder, name))
        check(made.returncode == 0, made.stderr)


def spread(folder, hxhost, plugin):
    """The command of docs/user/many-products.md, with another way to log in."""
    # Where no shell is named, parallel takes what called it for one, which is this script's interpreter.
    environment = dict(os.environ, STATIONS=folder, HOME=folder, SHELL="/bin/sh")
    command = f"{hxhost} batch {folder}/image --plugin {plugin} --ports 'simulator:*.state' --report batch.jsonl"
    return run("parallel", "--will-cite", "--nonall", "--tag", "--ssh", os.path.join(folder, "login"), "--sshlogin",
               "bench-1,bench-2", command, env=environment)


def units_of(folder, station):
    with open(os.path.join(folder, station, "batch.jsonl"), encoding="utf-8") as file:
        return [json.loads(line) for line in file]


def main():
    hxhost, plugin = (os.path.abspath(word) for word in sys.argv[1:3])
    stations = ("bench-1", "bench-2")
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "login"), "w", encoding="ascii") as file:
            file.write(LOGIN)
        os.chmod(file.name, 0o700)
        with open(os.path.join(folder, "code"), "wb") as file:
            file.write(bytes(i % 251 for i in range(500)))
        run(hxhost, "image", "build", file.name, "-o", os.path.join(folder, "image"), "--kind", "fwu", "--plugin",
            plugin)
        for station in stations:
            make_station(folder, station, hxhost, plugin)
        ended = spread(folder, hxhost, plugin)
        check(ended.returncode == 0, f"parallel ended with {ended.returncode}:\n{ended.stdout}{ended.stderr}")
        for station in stations:
            units = units_of(folder, station)
            check(sorted(unit["serial"] for unit in units) == [station + "1", station + "2"], f"{station}: {units}")
            check(all(unit["outcome"] == "succeeded" for unit in units), f"{station}: {units}")
            check(f"{station}\t2 updated, 0 failed" in ended.stdout, ended.stdout)
        with open(os.path.join(folder, "bench-2", "2.state"), "w", encoding="ascii") as file:
            file.write("damaged\n")
        ended = spread(folder, hxhost, plugin)
        check(ended.returncode == 1, f"with one station that fails parallel ended with {ended.returncode}")
    print("two stations updated their products, and one that failed was counted")


if __name__ == "__main__":
    main()
