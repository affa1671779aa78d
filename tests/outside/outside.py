#!/usr/bin/env python3
"""Updates a simulated product over JACK again and again, and does it harm from outside meanwhile: the host, the
product or the server is killed, stopped for a while or ended, the host's or the product's disk is full, the host's
clock jumps.

usage: outside.py HXHOST PLUGIN --minutes N [--seed N]

After each harm the product's state file, read by statefile.py, must not call code valid that is neither the
factory's nor that of an image that was sent; and one undisturbed update must recover the product. Exits 1 when a
promise is broken, 3 when the JACK server fails again and again so that nothing can be judged, and 77, the code of
a skipped test, where there is no jackd.
"""

import argparse
import collections
import os
import pathlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import statefile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hxhost"))
import jack_end_to_end as jack  # noqa: E402

SIZES = (1500, 2600, 4000)  # of code bytes, one image each: a second or so at the pace of a MIDI wire
FAKETIME = sorted(pathlib.Path("/usr/lib").glob("*/faketime/libfaketime.so.1"))
CLOCK_STEPS = ("+3600", "-3600", "+86400", "-400d")  # seconds but where a letter says another unit
FULL_DISK = 2048  # bytes that a file may have, fewer than the state and the trace take
ATTEMPTS = 3  # at what a stalled server hinders: it knows no more of a client that was killed
NOT_JUDGED = 3
FILE_ERROR = 10  # the host's exit code


class ServerTrouble(Exception):
    """The JACK server does not serve, whatever the programs under test do."""


class Outside(jack.Bench):
    def __init__(self, hxhost, plugin, folder, seed):
        super().__init__(hxhost, plugin, folder)
        self.random = random.Random(seed)
        self.state_file = self.path("product.state")
        self.clock_file = self.path("clock")
        self.images = {}
        self.product = None
        self.sent = set()
        self.repeated = 0  # undisturbed updates that a stalled server cut off

    def prepare(self):
        for size in SIZES:
            image = self.image(f"{size}.syx", size)
            self.images[image] = pathlib.Path(self.path(f"{size}.syx.bin")).read_bytes()
        self.ready()
        self.sent.add(statefile.read_file(self.state_file).code)  # the factory's

    def ready(self):
        """Server and product are there, and nothing holds them up."""
        for _ in range(ATTEMPTS):
            try:
                return self.start_what_is_missing()
            except (jack.Failure, subprocess.TimeoutExpired) as stuck:
                jack.check(self.processes[-1].poll() != FILE_ERROR, "the product refuses its own state file")
                print(f"the server was stuck and is started anew: {stuck}", flush=True)
                self.end_all()
        raise ServerTrouble("it does not start")

    def start_what_is_missing(self):
        if self.server is None or self.server.poll() is not None:
            self.end(self.product)
            self.start_server()
        if self.product is None or self.product.poll() is not None:
            self.product = self.start_product("--plugin", self.plugin, "--state", self.state_file)

    def end_all(self):
        for process in reversed(self.processes):
            self.end(process)

    def end(self, process):
        if process is not None:
            jack.stop(process, signal.SIGKILL)

    def begin_update(self, image, is_clock_faked):
        self.sent.add(self.images[image])
        trace = pathlib.Path(self.path("update.trace"))
        trace.unlink(missing_ok=True)
        environment = self.environment
        if is_clock_faked:
            pathlib.Path(self.clock_file).write_text("+0\n", encoding="ascii")
            self.environment = dict(environment, LD_PRELOAD=str(FAKETIME[0]), FAKETIME_NO_CACHE="1",
                                    FAKETIME_TIMESTAMP_FILE=self.clock_file, FAKETIME_DONT_FAKE_MONOTONIC="1")
        try:
            return self.start(self.hxhost, "update", image, "--plugin", self.plugin, "--rate", "3125", "--no-listen",
                              "--trace", str(trace))
        finally:
            self.environment = environment

    def do_harm(self, harm, update):
        if harm == "clock":
            for _ in range(3):
                pathlib.Path(self.clock_file).write_text(self.random.choice(CLOCK_STEPS) + "\n", encoding="ascii")
                time.sleep(0.2)
            return
        number, _, who = harm.rpartition(" ")
        process = {"host": update, "product": self.product, "server": self.server}[who]
        if process.poll() is not None:
            return
        if number == "full disk":
            resource.prlimit(process.pid, resource.RLIMIT_FSIZE, (FULL_DISK, FULL_DISK))
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

    def recover(self, image, harm):
        if harm.startswith("SIGKILL"):  # a server whose client was killed may stall for good
            self.end(self.server)
        jack.stop(self.product)
        self.sent.add(self.images[image])
        for _ in range(ATTEMPTS):
            self.ready()
            ended = self.update_undisturbed(image, [])
            if ended.returncode == 0:
                return self.check_held(image)
            # Over a server that has stalled nobody is undisturbed.
            self.repeated += 1
            print(f"an undisturbed update ended with {ended.returncode}: {ended.stderr}", flush=True)
            self.check_state()
            self.end_all()
        ended = self.update_undisturbed(image, ["--port", "simulator:" + self.state_file, "--yes"])
        jack.check(ended.returncode == 0, f"the product is not recovered even without a wire: {ended.stderr}")
        self.check_held(image)
        raise ServerTrouble("no update gets through, and without it the product is recovered")

    def update_undisturbed(self, image, port):
        try:
            return self.run(self.hxhost, "update", image, "--plugin", self.plugin, "--rate", "0", *port)
        except subprocess.TimeoutExpired as never:
            raise jack.Failure("an undisturbed update does not end") from never

    def check_held(self, image):
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
        ended = signal.Signals(-update.returncode).name if update.returncode < 0 else update.returncode
        jack.check(update.returncode != 0 or (held.valid and held.code == self.images[image]),
                   "the host said that it succeeded, and the product does not hold the image")
        self.recover(other, harm)
        self.processes = [p for p in self.processes if p.poll() is None]
        return ended, "valid" if held.valid else "not valid"

    def wait(self, update):
        """Until it has ended; one that never does is a failure."""
        jack.eventually("the update ends", lambda: update.poll() is not None, 200)


def all_harms():
    harms = [f"{number} {who}" for number in ("SIGKILL", "SIGSTOP", "SIGTERM") for who in ("host", "product", "server")]
    return harms + ["full disk host", "full disk product"] + (["clock"] if FAKETIME else [])


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
        print(f"{count:5}  {harm:18} the update ended: {ended}; the product's code: {held}")
    print(f"{rounds} rounds: never marked valid with other code, always recovered by one undisturbed update; "
          f"{bench.repeated} of these were repeated, because the server had stalled")
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
        except ServerTrouble as trouble:
            print(f"NOT JUDGED: the JACK server: {trouble}")
            return NOT_JUDGED
        finally:
            bench.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
