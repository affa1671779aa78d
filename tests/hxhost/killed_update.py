#!/usr/bin/env python3
"""Kills an update of a product in a state file, and looks at what the file holds.

usage: killed_update.py HXHOST PLUGIN
"""

import subprocess
import sys

import trial
from trial import check, contents

ACKNOWLEDGED = b"received F0 00 6B 2D 30 41 43 0C 00 F7"


def kill_in_the_midst(bench, image, port):
    """The update says more than a pipe takes, so that it waits for us before it can come to its end."""
    update = bench.start(bench.hxhost, "update", image, "--plugin", bench.plugin, "--port", port, "-vv",
                         stderr=subprocess.PIPE)
    acknowledged = 0
    while acknowledged < 5:
        line = update.stderr.readline()
        check(line, "the update ended before it could be killed")
        acknowledged += line.startswith(ACKNOWLEDGED)
    update.kill()
    update.wait(60)


def try_kill(bench):
    image, state = bench.image("image.syx", 65536), bench.path("state")

    def says(text, code, *words):
        ended = bench.host(code, *words, "--port", "simulator:" + state)
        check(text in ended.stdout + ended.stderr, f"{words} does not say \"{text}\":\n{ended.stdout}{ended.stderr}")

    says("1.0.2.3", 0, "identify")
    kill_in_the_midst(bench, image, "simulator:" + state)
    check("\nvalid no\n" in contents(state), "an erased product is valid in its state file")
    says("no valid code", 8, "recover")
    says("Verified", 0, "update", image)
    says("Verified", 0, "verify", image)
    print("the state file of a killed product holds what its flash would")


if __name__ == "__main__":
    sys.exit(trial.exit_code(try_kill, *sys.argv[1:3]))
