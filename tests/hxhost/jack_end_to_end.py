#!/usr/bin/env python3
"""Updates a simulated product over a real MIDI port: jackd with its dummy driver carries the bytes
between 'hxhost simulate' in one process and the other commands in another.

usage: jack_end_to_end.py HXHOST PLUGIN [TIMES]

Exits 77, the code of a skipped test, where there is no jackd.
"""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import terminal

SKIPPED = 77
PRODUCT_PORT = "jack:Valdrin Update:in"
TOOLS = ("jackd", "jack_lsp", "jack_connect", "jack_midi_dump")


class Failure(Exception):
    pass


def check(holds, what):
    if not holds:
        raise Failure(what)


def eventually(what, test, seconds=20):
    """Waits until `test` gives something true, and returns that."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        found = test()
        if found:
            return found
        time.sleep(0.05)
    raise Failure(f"{what}: not within {seconds} s")


def stop(process, number=signal.SIGTERM):
    if process.poll() is None:
        process.send_signal(number)
    try:
        process.wait(20)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Bench:
    """A JACK server of its own, and the program on it."""

    def __init__(self, hxhost, plugin, folder):
        self.hxhost = hxhost
        self.plugin = plugin
        self.folder = folder
        self.name = f"hxhost-test-{os.getpid()}"
        self.environment = dict(os.environ, JACK_DEFAULT_SERVER=self.name, JACK_NO_AUDIO_RESERVATION="1")
        self.processes = []

    def path(self, name):
        return os.path.join(self.folder, name)

    def start(self, *words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL):
        process = subprocess.Popen(words, env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=stdout, stderr=stderr)
        self.processes.append(process)
        return process

    def run(self, *words):
        return subprocess.run(words, env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=300, check=False)

    def start_server(self):
        # Synchronous: a period waits for every program, so that none loses data on a busy machine.
        self.start("jackd", "--no-realtime", "--sync", "-t", "1000", "-n", self.name, "-d", "dummy",
                   "-p", "512")
        eventually("jackd answers", lambda: self.run("jack_lsp").returncode == 0)

    def start_product(self, *more):
        # The server stalls when two programs enter at the same moment, so that nothing else may ask
        # it anything before the product is there.
        said = self.path("product.log")
        with open(said, "w", encoding="utf-8") as file:
            product = self.start(self.hxhost, "simulate", "--backend", "jack", *more, stderr=file)
        eventually("the product is there", lambda: "The product is on" in contents(said))
        check("Valdrin Update:in" in self.run("jack_lsp").stdout, "the product's port is not there")
        return product

    def json(self, expected, *words):
        """Runs a command that must end with the exit code `expected`; returns its document."""
        plugin = [] if words[0] == "trace" else ["--plugin", self.plugin]
        ended = self.run(self.hxhost, *words, *plugin, "--json")
        check(ended.returncode == expected,
              f"{words} ended with {ended.returncode} instead of {expected}:\n{ended.stdout}{ended.stderr}")
        return json.loads(ended.stdout)["result"]

    def image(self, name, size):
        code = self.path(name + ".bin")
        with open(code, "wb") as file:
            file.write(bytes((i * 7 + i // 256) % 256 for i in range(size)))
        built = self.run(self.hxhost, "image", "build", code, "-o", self.path(name), "--kind", "fwu")
        check(built.returncode == 0, built.stderr)
        return self.path(name)

    def close(self):
        for process in reversed(self.processes):
            stop(process)


def contents(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def sent_in(trace):
    return re.findall(r"^ *[0-9.]+ sent +((?:[0-9A-F]{2} ?)+?)(?: =.*)?$", contents(trace), re.M)


def find_and_identify(bench):
    ports = bench.json(0, "ports")["ports"]
    marked = [port["name"] for port in ports if port["product"]]
    check(PRODUCT_PORT in marked, f"the product's port is not marked: {ports}")
    probed = bench.json(0, "ports", "--probe")["probe"]
    check({"name": PRODUCT_PORT, "served": True, "answer": "Valdrin, 0x300041, version 1.0.2.3"}
          in probed, f"the probe does not find the product: {probed}")
    for port in ([], ["--port", "Valdrin"], ["--port", PRODUCT_PORT]):
        check(bench.json(0, "identify", *port)["identity"]["served"], "the product is not served")


def update_large(bench):
    large = bench.image("large.syx", 65536)
    found = bench.json(0, "update", large, "--rate", "0")
    check(found["outcome"] == "succeeded", found)
    check(bench.json(0, "verify", large)["checksum"]["stored"]["bytes"] ==
          found["checksum"]["image"], "the product holds other code")


def update_at_the_pace_of_the_wire(bench):
    small = bench.image("small.syx", 8192)
    trace = bench.path("paced.trace")
    bench.json(0, "update", small, "--trace", trace)
    summary = bench.json(0, "trace", trace)["summary"]
    print(f"paced: {summary['sentBytes']} bytes, {summary['wireMs']:.0f} ms on the wire, "
          f"{summary['waitingMs']:.0f} ms of waiting for replies, wire use {summary['wireUse']:.4f}")
    check(summary["wireUse"] >= 0.999, "the bytes left faster than the wire carries them")
    bench.json(0, "verify", small)


def recover_after_a_kill(bench):
    large = bench.path("large.syx")
    trace = bench.path("killed.trace")
    update = bench.start(bench.hxhost, "update", large, "--rate", "0", "--plugin", bench.plugin,
                         "--trace", trace)
    eventually("the update is under way", lambda: os.path.exists(trace) and len(sent_in(trace)) > 40)
    stop(update, signal.SIGKILL)
    state = bench.json(8, "recover")
    check(state["condition"] == "no valid code", state)
    bench.json(0, "update", large, "--rate", "0")
    bench.json(0, "verify", large)


def stop_while_listening(bench):
    update = bench.start(bench.hxhost, "update", bench.path("large.syx"), "--plugin", bench.plugin,
                         "--json", stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    check(b"Listening" in update.stderr.readline(), "the update does not listen first")
    stop(update, signal.SIGINT)
    check(update.returncode == 130, f"Ctrl-C ended the listening with {update.returncode}")
    error = json.load(update.stdout)["error"]
    check("nothing was sent" in error["next"], error)


def stop_in_the_midst(bench, number):
    """Returns the trace of an update that the signal has stopped."""
    trace = bench.path(f"{number.name}.trace")
    update = bench.start(bench.hxhost, "update", bench.path("large.syx"), "--rate", "0", "--plugin",
                         bench.plugin, "--trace", trace)
    eventually("the update is under way", lambda: os.path.exists(trace) and len(sent_in(trace)) > 20)
    stop(update, number)
    check(update.returncode == 130, f"{number.name} ended the update with {update.returncode}")
    return trace


def recover_after_a_signal(bench):
    large = bench.path("large.syx")
    stop_in_the_midst(bench, signal.SIGHUP)
    trace = stop_in_the_midst(bench, signal.SIGINT)
    replayed = bench.run(bench.hxhost, "update", large, "--rate", "0", "--plugin", bench.plugin,
                         "--port", "replay:" + trace)
    check(replayed.returncode == 130, f"its replay ended with {replayed.returncode}: {replayed.stderr}")
    bench.json(8, "verify")
    bench.json(0, "update", large, "--rate", "0")


def wire_check(bench):
    """What a program that is not ours sees of an update, and what the trace says was sent."""
    image = bench.image("tiny.syx", 300)
    trace = bench.path("wire.trace")
    dump = bench.path("dump")
    sent_before = []

    def connect():
        sent_before.extend(sent_in(trace))
        with open(dump, "w", encoding="utf-8") as file:
            bench.start("stdbuf", "-oL", "jack_midi_dump", "-r", stdout=file)
        time.sleep(0.5)
        connected = bench.run("jack_connect", "hxhost output:out", "midi-monitor:input")
        check(connected.returncode == 0, f"no connection to jack_midi_dump: {connected.stderr}")

    os.environ.update(bench.environment)
    code, shown = terminal.run_in_terminal(
        [bench.hxhost, "update", image, "--plugin", bench.plugin, "--trace", trace], "yes\n", 80,
        when_asked=connect)
    check(code == 0, f"the update ended with {code}:\n{shown}")
    time.sleep(0.5)
    stop(bench.processes[-1])
    seen = [line.strip().upper()
            for line in re.findall(r"^[^:]*:((?: [0-9a-f]{2})+)", contents(dump), re.M)]
    sent = sent_in(trace)[len(sent_before):]
    check(seen == sent, f"jack_midi_dump saw\n{seen}\nthe trace says\n{sent}")
    check(len(seen) > 10, f"only {len(seen)} messages were seen")
    print(f"wire: {len(seen)} messages as the trace has them")


def unplug(bench, product):
    """Pulls the product out while an update runs."""
    trace = bench.path("unplugged.trace")
    update = subprocess.Popen(
        [bench.hxhost, "update", bench.path("large.syx"), "--rate", "0", "--plugin", bench.plugin,
         "--trace", trace, "--json"], env=bench.environment, stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    bench.processes.append(update)
    eventually("the update is under way", lambda: os.path.exists(trace) and len(sent_in(trace)) > 20)
    stop(product)
    document = json.loads(update.communicate(timeout=60)[0])
    check(update.returncode == 4, f"unplugging ended the update with {update.returncode}")
    check("has disappeared" in document["error"]["what"], document["error"])
    check(document["result"]["product"]["touched"], document["result"]["product"])


def run_once(hxhost, plugin):
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(hxhost, plugin, folder)
        try:
            bench.start_server()
            product = bench.start_product()
            find_and_identify(bench)
            update_large(bench)
            update_at_the_pace_of_the_wire(bench)
            recover_after_a_kill(bench)
            stop_while_listening(bench)
            recover_after_a_signal(bench)
            wire_check(bench)
            unplug(bench, product)
        finally:
            bench.close()


def main():
    hxhost, plugin = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    times = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    missing = [tool for tool in TOOLS if shutil.which(tool) is None]
    if missing:
        print(f"SKIPPED: no real MIDI port is tested, because there is no {' '.join(missing)} "
              "(Debian package jackd2)")
        return SKIPPED
    for number in range(1, times + 1):
        try:
            run_once(hxhost, plugin)
        except Failure as failure:
            print(f"FAILED in run {number} of {times}: {failure}")
            return 1
        print(f"run {number} of {times} passed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
