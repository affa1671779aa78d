#!/usr/bin/env python3
"""What messages survive over JACK's own server and over PipeWire, as a table: sent by the MIDI library alone, and
by the ports of this system.

usage: port_limits.py HXPORT_LIMITS [SERVER...]

Each server is started for it, without hardware; the names are those of the table below.
"""

import argparse
import json
import os
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tests/hxhost"))
from jack_end_to_end import Bench, Failure, PipeWireBench  # noqa: E402


class HurriedBench(Bench):
    """A period does not wait for programs that are late, as jackd runs when nothing else is said."""

    waiting = ()


SERVERS = {"jackd": HurriedBench, "jackd --sync": Bench, "PipeWire": PipeWireBench}
SENDERS = ("library", "ports")


def burst(result):
    lost, bursts, told = result
    return "all arrive" if lost == 0 else f"{lost} lost in {bursts} bursts, {told} told"


ROWS = (("longest message that arrives", lambda result: f"{result['longest']} bytes"),
        ("20 bursts of 20 messages of 256 bytes", lambda result: burst(result["few"])),
        ("20 bursts of 1,000 messages of 6 bytes", lambda result: burst(result["many"])),
        ("400 messages of 32 bytes at the pace of a wire", lambda result: f"{400 - result['paced']} arrive"),
        ("20 times closed right after a message", lambda result: f"{20 - result['closed']} arrive"))


def measure(server, program, sender):
    with tempfile.TemporaryDirectory() as folder:
        bench = SERVERS[server]("", "", folder)
        try:
            bench.start_server()
            ended = bench.run(program, sender)
            if ended.returncode != 0:
                raise Failure(f"{program} ended with {ended.returncode}: {ended.stderr}")
            return json.loads(ended.stdout)
        finally:
            bench.close()


def print_table(results):
    print("| | " + " | ".join(", ".join(column) for column in results) + " |")
    print("| --- |" + " --- |" * len(results))
    for name, text in ROWS:
        print(f"| {name} | " + " | ".join(text(result) for result in results.values()) + " |")


def main():
    options = argparse.ArgumentParser()
    options.add_argument("program", type=os.path.abspath)
    options.add_argument("servers", nargs="*")
    options = options.parse_args()
    results = {}
    try:
        for server in options.servers or SERVERS:
            for sender in SENDERS:
                results[server, sender] = measure(server, options.program, sender)
    except Failure as failure:
        print(f"FAILED: {failure}")
        return 1
    print_table(results)
    return 0


if __name__ == "__main__":
    sys.exit(main())
