#!/usr/bin/env python3
"""Updates a simulated product over MIDI servers again and again, and does it harm from outside meanwhile: the host,
the product or the server is killed, stopped for a while or ended, the host's or the product's disk is full, the
host's clock jumps. The server is jackd or PipeWire, which serves JACK programs too and has a manager that is harmed
like it.

usage: outside.py HXHOST PLUGIN --minutes N [--seed N] [--server jackd|pipewire|both] [--only TEXT]

Seed and number of a round decide its server, its harm and when that is done. After each harm the product's state
file, read by statefile.py, must not call code valid that is neither the factory's nor that of an image that was sent;
and one undisturbed update must recover the product. Exits 1 when a promise is broken, 3 when a server fails again and
again so that nothing can be judged, and 77, the code of a skipped test, where there is no server.
"""

import argparse
import collections
import os
import random
import signal
import sys
import tempfile
import time

import harmed_update
import statefile
from harmed_update import jack, trial

NOT_JUDGED = 3


def servers_here(wanted):
    """Those of `wanted` whose programs are installed."""
    return [name for name in wanted if not trial.lacks(*jack.SERVERS[name][1:])]


def harms_of(bench, text):
    harms = [f"{number} {who}" for number in ("SIGKILL", "SIGSTOP", "SIGTERM") for who in bench.who]
    harms += ["full disk host", "full disk product"] + (["clock"] if harmed_update.FAKETIME else [])
    return [harm for harm in harms if text in harm]


def run(benches, options):
    for bench in benches.values():
        bench.prepare()
    ends = collections.Counter()
    choices = [(name, harm) for name, bench in benches.items() for harm in harms_of(bench, options.only)]
    trial.check(choices, f"no harm is called {options.only}")
    deadline = time.monotonic() + 60 * options.minutes
    rounds = 0
    while rounds == 0 or time.monotonic() < deadline:
        rounds += 1
        draw = random.Random(f"{options.seed} {rounds}")
        server, harm = draw.choice(choices)
        try:
            ends[(server, harm, *benches[server].round(harm, draw))] += 1
        except (trial.Failure, statefile.Damaged, OSError) as failure:
            raise trial.Failure(f"round {rounds}, {server}, {harm}: {failure}") from failure
    for (server, harm, ended, held), count in sorted(ends.items(), key=str):
        print(f"{count:5}  {server:8}  {harm:18} the update ended: {ended}; the product's code: {held}")
    print_sums(benches, ends)


def print_sums(benches, ends):
    for name, bench in benches.items():
        rounds = sum(count for key, count in ends.items() if key[0] == name)
        print(f"{name}: {rounds} rounds: never marked valid with other code, always recovered by one undisturbed "
              f"update; {bench.repeated} of these were repeated, because the server had stalled; {bench.crashed} "
              "updates crashed")
    if not harmed_update.FAKETIME:
        print("the clock was left alone: there is no libfaketime (Debian package faketime)")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("hxhost", type=os.path.abspath)
    parser.add_argument("plugin", type=os.path.abspath)
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--seed", type=int, default=random.randrange(1000000))
    parser.add_argument("--server", choices=[*harmed_update.BENCHES, "both"], default="both")
    parser.add_argument("--only", metavar="TEXT", default="", help="only harms with this text, as \"SIGTERM server\"")
    options = parser.parse_args()
    options.servers = [options.server] if options.server != "both" else list(harmed_update.BENCHES)
    return options


def main():
    options = arguments()
    servers = servers_here(options.servers)
    if not servers:
        return trial.SKIPPED
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # the servers are ended too
    print(f"seed {options.seed}, over {' and '.join(servers)}", flush=True)
    with tempfile.TemporaryDirectory() as folder:
        benches = {}
        try:
            for name in servers:
                os.mkdir(os.path.join(folder, name))
                benches[name] = harmed_update.BENCHES[name](options.hxhost, options.plugin, os.path.join(folder, name))
            run(benches, options)
        except trial.Failure as failure:
            print(f"FAILED: {failure}")
            return 1
        except harmed_update.ServerTrouble as trouble:
            print(f"NOT JUDGED: the server: {trouble}")
            return NOT_JUDGED
        finally:
            for bench in benches.values():
                bench.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
