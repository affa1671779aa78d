#!/usr/bin/env python3
"""Updates a simulated product over JACK again and again, and does it harm from outside meanwhile: the host, the
product or the server is killed, stopped for a while or ended, the product's disk is full, the host's clock jumps.

usage: outside.py HXHOST PLUGIN --minutes N [--seed N]

After each harm the product's state file, read by statefile.py, must not call code valid that is neither the
factory's nor that of an image that was sent; and one undisturbed update must recover the product. Exits 77,
the code of a skipped test, where there is no jackd.
"""

import argparse
import collections
import os
import pathlib
import random
import resource
import shutil
import signal
import sys
import tempfile
import time

import statefile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hxhost"))
import jack_end_to_end as jack  # noqa: E402

SIZES = (1500, 2600, 4000)  # of code bytes, one image each: a second or so at the pace of a MIDI wire
FAKETIME = sorted(pathlib.Path("/usr/lib").glob("*/faketime/libfaketime.so.1"))
CLOCK_STEPS = ("+3600", "-3600", "+86400", "-400d")  # seconds but where a letter says another unit
FULL_DISK = 2048  # bytes that a file may have, fewer than the state takes


class Outside(jack.Bench):
    def __init__(self, hxhost, plugin, folder, seed):
        super().__init__(hxhost, plugin, folder)
        self.random = random.Random(seed)
        self.state_file = self.path("product.state")
        self.clock_file = self.path("clock")
        self.images = {}
        self.product = None
        self.sent = set()

    def prepare(self):
        for size in SIZES:
            image = self.image(f"{size}.syx", size)
            self.images[image] = pathlib.Path(self.path(f"{size}.syx.bin")).read_bytes()
        self.ready()
        self.sent.add(statefile.read_file(self.state_file).code)  # the factory's

    def ready(self):
        """Server and product are there, and nothing holds them up."""
        if self.server is None or self.server.poll() is not None:
            self.end(self.product)
            self.start_server()
        if self.product is not None and self.product.poll() is None:
            return
        try:
            self.product = self.start_product("--plugin", self.plugin, "--state", self.state_file)
        except jack.Failure:  # a server whose client was killed may stall: it gives way to another one
            print("the server was stuck and was started anew", flush=True)
            self.end(self.processes[-1])
            self.end(self.server)
            self.start_server()
            self.product = self.start_product("--plugin", self.plugin, "--state", self.state_file)

    def end(self, process):
        if process is not None:
            jack.stop(process, signal.SIGKILL)

    def begin_update(self, image, is_clock_faked):
        self.sent.add(self.images[image])
        environment = self.environment
        if is_clock_faked:
            pathlib.Path(self.clock_file).write_text("+0\n", encoding="ascii")
            self.environment = dict(environment, LD_PRELOAD=str(FAKETIME[0]), FAKETIME_NO_CACHE="1",
                                    FAKETIME_TIMESTAMP_FILE=self.clock_file, FAKETIME_DONT_FAKE_MONOTONIC="1")
        try:
            return self.start(self.hxhost, "update", image, "--plugin", self.plugin, "--rate", "3125", "--no-listen")
        finally:
            self.environment = environment

    def do_harm(self, harm, update):
        if harm == "clock":
            for _ in range(3):
                pathlib.Path(self.clock_file).write_text(self.random.choice(CLOCK_STEPS) + "\n", encoding="ascii")
                time.sleep(0.2)
            return
        if harm == "full disk":
            resource.prlimit(self.product.pid, resource.RLIMIT_FSIZE, (FULL_DISK, FULL_DISK))
            return
        number, _, who = harm.partition(" ")
        process = {"host": update, "product": self.product, "server": self.server}[who]
        if process.poll() is not None:
            return
        process.send_signal(getattr(signal, number))
        if number == "SIGSTOP":
            time.sleep(self.random.uniform(0.1, 3))
            process.send_signal(signal.SIGCONT)

    def check_state(self):
        state = statefile.read_file(self.state_file)
        jack.check(not state.valid or state.code in self.sent, "code is valid that was never sent")
        jack.check(not state.valid or state.crc == statefile.crc_text(state.code), "the stored checksum is another one")
        return state

    def recover(self, image):
        for process in (self.product, *([] if self.server.poll() is None else [self.server])):
            self.end(process)
        self.ready()
        self.sent.add(self.images[image])
        found = self.json(0, "update", image, "--rate", "0")
        jack.check(found["outcome"] == "succeeded", f"an undisturbed update: {found}")
        state = self.check_state()
        jack.check(state.valid and state.code == self.images[image], "an update succeeded and is not held")

    def round(self, harm):
        image, other = self.random.sample(sorted(self.images), 2)
        update = self.begin_update(image, harm == "clock")
        time.sleep(self.random.uniform(0, 2))
        self.do_harm(harm, update)
        if harm.startswith("SIGKILL"):
            time.sleep(self.random.uniform(0, 0.5))
        else:
            self.wait(update)
        self.end(update)
        held = self.check_state()
        ended = "killed" if update.returncode < 0 else update.returncode
        # On a full disk the product keeps its memory, and the file stays behind.
        jack.check(update.returncode != 0 or harm == "full disk" or (held.valid and held.code == self.images[image]),
                   "the host said that it succeeded, and the product does not hold the image")
        self.recover(other)
        self.processes = [p for p in self.processes if p.poll() is None]
        return ended, "valid" if held.valid else "not valid"

    def wait(self, update):
        """Until it has ended; one that never does is a failure."""
        jack.eventually("the update ends", lambda: update.poll() is not None, 200)


def all_harms():
    harms = [f"{number} {who}" for number in ("SIGKILL", "SIGSTOP", "SIGTERM") for who in ("host", "product", "server")]
    return harms + ["full disk"] + (["clock"] if FAKETIME else [])


def run(bench, minutes):
    bench.prepare()
    ends = collections.Counter()
    harms = all_harms()
    deadline = time.monotonic() + 60 * minutes
    rounds = 0
    while rounds == 0 or time.monotonic() < deadline:
        rounds += 1
        harm = bench.random.choice(harms)
        try:
            ends[(harm, *bench.round(harm))] += 1
        except (jack.Failure, statefile.Damaged, OSError) as failure:
            raise jack.Failure(f"round {rounds}, {harm}: {failure}") from failure
    for (harm, ended, held), count in sorted(ends.items(), key=str):
        print(f"{count:5}  {harm:16} the update ended: {ended}; the product's code: {held}")
    print(f"{rounds} rounds: never marked valid with other code, always recovered by one undisturbed update")
    if not FAKETIME:
        print("the clock was left alone: there is no libfaketime (Debian package faketime)")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("hxhost", type=os.path.abspath)
    parser.add_argument("plugin", type=os.path.abspath)
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--seed", type=int, default=random.randrange(1000000))
    options = parser.parse_args()
    missing = [tool for tool in jack.TOOLS if shutil.which(tool) is None]
    if missing:
        print(f"SKIPPED: there is no {' '.join(missing)} (Debian package jackd2)")
        return jack.SKIPPED
    print(f"seed {options.seed}", flush=True)
    with tempfile.TemporaryDirectory() as folder:
        bench = Outside(options.hxhost, options.plugin, folder, options.seed)
        try:
            run(bench, options.minutes)
        except jack.Failure as failure:
            print(f"FAILED: {failure}")
            return 1
        finally:
            bench.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
