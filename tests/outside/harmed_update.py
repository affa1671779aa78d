"""One update over a MIDI server that is harmed from outside, what the product holds then, and its recovery."""

import pathlib
import resource
import signal
import subprocess
import sys
import time

import statefile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hxhost"))
import jack_end_to_end as jack  # noqa: E402
import trial  # noqa: E402

SIZES = (1500, 2600, 4000)  # of code bytes, one image each: a second or so at the pace of a MIDI wire
FAKETIME = sorted(pathlib.Path("/usr/lib").glob("*/faketime/libfaketime.so.1"))
CLOCK_STEPS = ("+3600", "-3600", "+86400", "-400d")  # seconds but where a letter says another unit
FULL_DISK = 2048  # bytes that a file may have, fewer than the state and the trace take
ATTEMPTS = 3  # at what a stalled server hinders: it knows no more of a client that was killed
FILE_ERROR = 10  # the host's exit code


class ServerTrouble(Exception):
    """The MIDI server does not serve, whatever the programs under test do."""


class HarmedUpdate:
    """Added to a bench: the rounds on its server. `who` can be killed, stopped and ended."""

    who = ("host", "product", "server")
    stalls_after_kill = False  # of a client

    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        self.state_file = self.path("product.state")
        self.clock_file = self.path("clock")
        self.images = {}
        self.product = None
        self.sent = set()
        self.repeated = 0  # undisturbed updates that a stalled server cut off
        self.crashed = 0  # updates that ended by a signal that was not their harm

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
            except (trial.Failure, subprocess.TimeoutExpired) as stuck:
                trial.check(self.processes[-1].poll() != FILE_ERROR, "the product refuses its own state file")
                print(f"the server was stuck and is started anew: {stuck}", flush=True)
                self.end_all()
        raise ServerTrouble("it does not start")

    def start_what_is_missing(self):
        if self.server is None or any(part is not None and part.poll() is not None
                                      for part in (self.server, self.manager)):
            self.end_all()
            self.start_server()
        if self.product is None or self.product.poll() is not None:
            self.product = self.start_product("--plugin", self.plugin, "--state", self.state_file)

    def end_all(self):
        for process in reversed(self.processes):
            self.end(process)

    def end(self, process):
        if process is not None:
            trial.stop(process, signal.SIGKILL)

    def begin_update(self, image, is_clock_faked):
        self.sent.add(self.images[image])
        trace = pathlib.Path(self.path("update.trace"))
        trace.unlink(missing_ok=True)
        environment = self.environment
        if is_clock_faked:
            self.set_clock("+0")
            self.environment = dict(environment, LD_PRELOAD=str(FAKETIME[0]), FAKETIME_NO_CACHE="1",
                                    FAKETIME_TIMESTAMP_FILE=self.clock_file, FAKETIME_DONT_FAKE_MONOTONIC="1")
        try:
            with open(self.path("update.log"), "w", encoding="utf-8") as log:
                return self.start(self.hxhost, "update", image, "--plugin", self.plugin, "--rate", "3125",
                                  "--no-listen", "--trace", str(trace), stderr=log)
        finally:
            self.environment = environment

    def set_clock(self, step):
        pathlib.Path(self.clock_file).write_text(step + "\n", encoding="ascii")

    def do_harm(self, harm, update, draw):
        if harm == "clock":
            for step in draw.choices(CLOCK_STEPS, k=3):
                self.set_clock(step)
                time.sleep(0.2)
            return
        number, _, who = harm.rpartition(" ")
        process = {"host": update, "product": self.product, "server": self.server, "manager": self.manager}[who]
        if process.poll() is not None:
            return
        if number == "full disk":
            resource.prlimit(process.pid, resource.RLIMIT_FSIZE, (FULL_DISK, FULL_DISK))
            return
        process.send_signal(getattr(signal, number))
        if number == "SIGSTOP":
            time.sleep(draw.uniform(0.1, 3))
            process.send_signal(signal.SIGCONT)

    def check_state(self):
        state = statefile.read_file(self.state_file)
        trial.check(not state.valid or state.code in self.sent, "code is valid that was never sent")
        trial.check(not state.valid or state.crc == statefile.crc_text(state.code), "the stored checksum is another one")
        return state

    def recover(self, image, harm):
        if self.stalls_after_kill and harm.startswith("SIGKILL"):
            self.end(self.server)
        trial.stop(self.product)
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
        trial.check(ended.returncode == 0, f"the product is not recovered even without a wire: {ended.stderr}")
        self.check_held(image)
        raise ServerTrouble("no update gets through, and without it the product is recovered")

    def update_undisturbed(self, image, port):
        try:
            return self.run(self.hxhost, "update", image, "--plugin", self.plugin, "--rate", "0", *port)
        except subprocess.TimeoutExpired as never:
            raise trial.Failure("an undisturbed update does not end") from never

    def check_held(self, image):
        state = self.check_state()
        trial.check(state.valid and state.code == self.images[image], "an update succeeded and is not held")

    def round(self, harm, draw):
        """How the update ended, and what became of the product's code."""
        image, other = draw.sample(sorted(self.images), 2)
        before, after = draw.uniform(0, 2), draw.uniform(0, 0.5)
        update = self.begin_update(image, harm == "clock")
        time.sleep(before)
        self.do_harm(harm, update, draw)
        if harm.startswith("SIGKILL"):
            time.sleep(after)
        else:
            trial.eventually("the update ends", lambda: update.poll() is not None, 200)
        is_cut_off = update.poll() is None
        self.end(update)
        held = self.check_state()
        trial.check(update.returncode != 0 or (held.valid and held.code == self.images[image]),
                   "the host said that it succeeded, and the product does not hold the image")
        ended = self.end_in_words(update.returncode, is_cut_off, harm)
        self.recover(other, harm)
        self.processes = [p for p in self.processes if p.poll() is None]
        return ended, "valid" if held.valid else "not valid"

    def end_in_words(self, code, is_cut_off, harm):
        """A crash is shown with what the host said last."""
        if code >= 0:
            return str(code)
        name = signal.Signals(-code).name
        if not is_cut_off and harm != name + " host":
            self.crashed += 1
            print(f"{harm}: the update ended by {name}: {trial.contents(self.path('update.log'))}", flush=True)
        return name


class OverJack(HarmedUpdate, jack.Bench):
    stalls_after_kill = True


class OverPipeWire(HarmedUpdate, jack.PipeWireBench):
    who = (*HarmedUpdate.who, "manager")


BENCHES = {"jackd": OverJack, "pipewire": OverPipeWire}
