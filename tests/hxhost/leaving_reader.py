#!/usr/bin/env python3
"""Runs an update whose output nobody reads any more, as after "hxhost update ... | head": it goes on
to its end, and only the lost result is an error.

usage: leaving_reader.py HXHOST PLUGIN
"""

import os
import subprocess
import sys
import tempfile


def run(*words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL):
    return subprocess.run(words, stdin=subprocess.DEVNULL, stdout=stdout, stderr=stderr,
                          check=False).returncode


def pipe_without_reader():
    reader, writer = os.pipe()
    os.close(reader)
    return writer


def main():
    hxhost, plugin = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        code, image, state = (os.path.join(folder, name) for name in ("code", "syx", "state"))
        with open(code, "wb") as file:
            file.write(bytes(i % 251 for i in range(3000)))
        run(hxhost, "image", "build", code, "-o", image, "--kind", "fwu")
        product = ("--port", "simulator:" + state, "--plugin", plugin)
        for stream, expected in (("stderr", 0), ("stdout", 10)):
            if os.path.exists(state):
                os.remove(state)
            update = run(hxhost, "update", image, *product, **{stream: pipe_without_reader()})
            verify = run(hxhost, "verify", image, *product)
            if (update, verify) != (expected, 0):
                failures += 1
                print(f"nobody reads {stream}: the update ended with {update}, expected {expected}; "
                      f"verify with {verify}, expected 0")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
