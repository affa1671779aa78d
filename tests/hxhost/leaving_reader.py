#!/usr/bin/env python3
"""Runs an update whose output nobody reads any more, as after "hxhost update ... | head": it goes on
to its end, and only the lost result is an error.

usage: leaving_reader.py HXHOST PLUGIN
"""

import os
import sys

import trial
from trial import check


def pipe_without_reader():
    reader, writer = os.pipe()
    os.close(reader)
    return writer


def try_streams(bench):
    image = bench.image("image", 3000)
    for stream, expected in (("stderr", 0), ("stdout", 10)):
        product = ("--port", "simulator:" + bench.path(stream + ".state"))
        update = bench.start(bench.hxhost, "update", image, *product, "--plugin", bench.plugin,
                             **{stream: pipe_without_reader()})
        check(update.wait(60) == expected,
              f"nobody reads {stream}: the update ended with {update.returncode}, expected {expected}")
        bench.host(0, "verify", image, *product)


if __name__ == "__main__":
    sys.exit(trial.exit_code(try_streams, *sys.argv[1:3]))
