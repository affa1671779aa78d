#!/usr/bin/env python3
"""Kills an update of a product in a state file, and looks at what the file holds.

usage: killed_update.py HXHOST PLUGIN
"""

import os
import subprocess
import sys
import tempfile

ACKNOWLEDGED = b"received F0 00 6B 2D 30 41 43 0C 00 F7"


def run(*words):
    return subprocess.run(words, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60, check=False)


def kill_in_the_midst(hxhost, plugin, image, port):
    """The update says more than a pipe takes, so that it waits for us before it can come to its end."""
    update = subprocess.Popen([hxhost, "update", image, "--plugin", plugin, "--port", port, "-vv"],
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    acknowledged = 0
    while acknowledged < 5:
        line = update.stderr.readline()
        if not line:
            raise SystemExit("FAILED: the update ended before it could be killed")
        acknowledged += line.startswith(ACKNOWLEDGED)
    update.kill()
    update.wait(60)


def expect(ended, code, text):
    if ended.returncode != code or text not in ended.stdout + ended.stderr:
        raise SystemExit(f"FAILED: {ended.args} ended with {ended.returncode}, expected {code} and "
                         f"\"{text}\":\n{ended.stdout}{ended.stderr}")


def main():
    hxhost, plugin = (os.path.abspath(word) for word in sys.argv[1:3])
    with tempfile.TemporaryDirectory() as folder:
        code, image, state = (os.path.join(folder, name) for name in ("code.bin", "image.syx", "state"))
        with open(code, "wb") as file:
            file.write(bytes(i % 256 for i in range(65536)))
        expect(run(hxhost, "image", "build", code, "-o", image, "--kind", "fwu"), 0, "")
        product = ["--plugin", plugin, "--port", "simulator:" + state]
        expect(run(hxhost, "identify", *product), 0, "1.0.2.3")
        kill_in_the_midst(hxhost, plugin, image, product[-1])
        with open(state, encoding="ascii") as file:
            if "\nvalid no\n" not in file.read():
                raise SystemExit("FAILED: an erased product is valid in its state file")
        expect(run(hxhost, "recover", *product), 8, "no valid code")
        expect(run(hxhost, "update", image, *product), 0, "Verified")
        expect(run(hxhost, "verify", image, *product), 0, "Verified")
    print("the state file of a killed product holds what its flash would")


if __name__ == "__main__":
    main()
