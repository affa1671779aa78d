#!/usr/bin/env python3
"""Updates a simulated product over a real MIDI port: a server carries the bytes between 'hxhost simulate' in
one process and the other commands in another. The server is jackd with its dummy driver, or PipeWire, which
serves JACK programs too.

usage: jack_end_to_end.py HXHOST PLUGIN [--server jackd|pipewire] [TIMES]

Exits 77, the code of a skipped test, where there is no such server.
"""

import argparse
import glob
import json
import os
import re
import signal
import subprocess
import sys
import time
import urllib.parse

import trial
import terminal
from trial import SKIPPED, Failure, check, contents, eventually, exit_code, lacks, stop

PRODUCT_PORT = "jack:Valdrin Update:in"
PRODUCT_REPLIES = "jack:Valdrin Update replies:out"
SOON = 15  # seconds within which a command has said that its port is gone
TOOLS = ("jackd", "jack_lsp", "jack_connect", "jack_midi_dump")
PIPEWIRE_TOOLS = ("dbus-daemon", "pipewire", "wireplumber", "pw-jack", *TOOLS[1:])


class Bench(trial.Bench):
    """A JACK server of its own, and the program on it."""

    renames = False  # ports, when others go
    # A period waits for every program, so that none loses data on a busy machine.
    waiting = ("--sync", "-t", "1000")
    period = 512  # frames

    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        self.name = f"hxhost-test-{os.getpid()}"
        self.environment = dict(os.environ, JACK_DEFAULT_SERVER=self.name, JACK_NO_AUDIO_RESERVATION="1")
        self.server = None
        self.manager = None  # of the server's links, where it has one

    def start_server(self):
        self.server = self.start("jackd", "--no-realtime", *self.waiting, "-n", self.name, "-d", "dummy", "-p",
                                 str(self.period))
        eventually("jackd answers", lambda: self.run("jack_lsp").returncode == 0)

    def start_product(self, *more):
        # The server stalls when two programs enter at the same moment, so that nothing else may ask
        # it anything before the product is there.
        return self.start_and_see("The product is on", "simulate", "--backend", "jack", *more)

    def start_and_see(self, said, *words):
        """Starts a command, and returns it when it has said on stderr that it is under way."""
        log = self.path(f"{len(self.processes)}.log")
        with open(log, "w", encoding="utf-8") as file:
            process = self.start(self.hxhost, *words, stderr=file)
        eventually(f"{words[0]} is under way", lambda: said in contents(log))
        process.log = log
        return process

    def start_update(self, image, messages, *more, **settings):
        """Starts an update, and returns it when it has sent more than so many messages."""
        trace = self.path(f"{len(self.processes)}.trace")
        update = self.start(self.hxhost, "update", image, "--plugin", self.plugin, "--trace", trace, *more, **settings)
        eventually("the update is under way",
                   lambda: os.path.exists(trace) and len(sent_in(trace)) > messages)
        return update

    def json(self, expected, *words):
        """Runs a command that must end with the exit code `expected`; returns its document."""
        plugin = [] if words[0] == "trace" else ["--plugin", self.plugin]
        ended = self.run(self.hxhost, *words, *plugin, "--json")
        check(ended.returncode == expected,
              f"{words} ended with {ended.returncode} instead of {expected}:\n{ended.stdout}{ended.stderr}")
        return json.loads(ended.stdout)["result"]


class PipeWireBench(Bench):
    """PipeWire in a runtime folder of its own, with the manager that links what programs connect."""

    renames = True

    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        os.mkdir(self.path("runtime"), 0o700)
        libraries = glob.glob("/usr/lib/*/pipewire-*/jack") # as pw-jack has them
        self.environment = dict(os.environ, XDG_RUNTIME_DIR=self.path("runtime"), HOME=folder,
                                LD_LIBRARY_PATH=":".join(libraries))

    def start_server(self):
        """Also in the place of one that was killed."""
        bus = self.path("runtime/bus")
        if os.path.exists(bus):
            os.remove(bus)
        address = "unix:path=" + urllib.parse.quote(bus) # which has no blanks
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.start("dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}")
        eventually("the bus answers", lambda: os.path.exists(bus))
        self.server = self.start("pipewire")
        eventually("PipeWire answers", lambda: self.run("pw-cli", "info", "0").returncode == 0)
        self.manager = self.start("wireplumber")
        eventually("its manager is there", lambda: "WirePlumber" in self.run("pw-cli", "list-objects", "Client").stdout)
        eventually("JACK programs are served", lambda: self.run("jack_lsp").returncode == 0)


def sent_in(trace, kind="sent"):
    return re.findall(rf"^ *[0-9.]+ {kind} +((?:[0-9A-F]{{2}} ?)+?)(?: =.*)?$", contents(trace), re.M)


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
    check("before anything was sent" in error["what"], error)


def refuse_a_second_host(bench):
    """While another host updates the product."""
    second = bench.run(bench.hxhost, "update", bench.path("small.syx"), "--plugin", bench.plugin)
    check(second.returncode == 4, f"a second host's update ended with {second.returncode}: {second.stderr}")
    check("another program is updating this product" in second.stderr, second.stderr)


def stop_in_the_midst(bench, number, meanwhile=lambda bench: None):
    """Returns the trace of an update that the signal has stopped."""
    trace = bench.path(f"{number.name}.trace")
    update = bench.start(bench.hxhost, "update", bench.path("large.syx"), "--rate", "0", "--plugin",
                         bench.plugin, "--trace", trace)
    eventually("the update is under way", lambda: os.path.exists(trace) and len(sent_in(trace)) > 20)
    meanwhile(bench)
    stop(update, number)
    check(update.returncode == 130, f"{number.name} ended the update with {update.returncode}")
    return trace


def recover_after_a_signal(bench):
    large = bench.path("large.syx")
    stop_in_the_midst(bench, signal.SIGHUP, refuse_a_second_host)
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


def heard_by_the_product(bench):
    """The product's own trace has what the host's trace says was sent, and all answers."""
    heard = sent_in(bench.path("product.trace"), "received")
    sent = sent_in(bench.path("wire.trace"))
    check(heard[-len(sent):] == sent, f"the product heard\n{heard[-len(sent):]}\nthe host sent\n{sent}")
    answered = sent_in(bench.path("product.trace"))
    taken = sent_in(bench.path("wire.trace"), "received")
    check(answered[-len(taken):] == taken, "the host did not take the answers that the product gave")


def product_ports(bench):
    """Those that fit the product, the outputs first."""
    return [port["name"] for port in bench.json(0, "ports")["ports"] if port["product"]]


def two_of_one_name(bench):
    """A second product under the same name holds other code, so that each is known by its code."""
    before = product_ports(bench)
    state = bench.path("second.state")
    bench.json(0, "update", bench.path("small.syx"), "--port", "simulator:" + state, "--yes", "--serial", "Unit0002")
    product = bench.start_product("--state", state)
    bench.json(4, "identify")
    second = [port for port in product_ports(bench) if port not in before]
    check(len(second) == 2 and re.fullmatch(r"jack:Valdrin Update-\d+:in", second[0]), f"its ports are {second}")
    probed = {row["name"]: row for row in bench.json(0, "ports", "--probe")["probe"]}
    for port in (PRODUCT_PORT, second[0]):
        check(probed[port]["served"], f"the probe does not find the product on {port}: {probed}")
    bench.json(0, "verify", bench.path("tiny.syx"), "--port", PRODUCT_PORT, "--in-port", PRODUCT_REPLIES)
    bench.json(0, "verify", bench.path("small.syx"), "--port", second[0])
    return product


def replaced_by_its_double(bench, product):
    """The server gives the ports of the second product the names of the first one's when that is pulled out."""
    update = bench.start_update(bench.path("large.syx"), 20, "--rate", "0", "--port", PRODUCT_PORT, "--no-listen",
                                "--json", stdout=subprocess.PIPE)
    stop(product)
    document = json.loads(update.communicate(timeout=60)[0])
    check(update.returncode == 9, f"the update ended with {update.returncode}: {document['error']}")
    check("another product is on the port since it is back" in document["error"]["what"], document["error"])
    bench.json(0, "verify", bench.path("small.syx"), "--port", PRODUCT_PORT)
    return bench.start_product("--state", bench.path("product.state"), "--trace", bench.path("product.trace"))


def unplug(bench, product):
    """Pulls the product out while an update runs, and somebody listens."""
    monitor = bench.start_and_see("Listening on", "monitor", "--plugin", bench.plugin, "--port",
                                  PRODUCT_REPLIES)
    trace = bench.path("unplugged.trace")
    update = subprocess.Popen(
        [bench.hxhost, "update", bench.path("large.syx"), "--rate", "0", "--plugin", bench.plugin,
         "--port", PRODUCT_PORT, "--trace", trace, "--json"], env=bench.environment, stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    bench.processes.append(update)
    eventually("the update is under way", lambda: os.path.exists(trace) and len(sent_in(trace)) > 20)
    stop(product)
    document = json.loads(update.communicate(timeout=60)[0])
    check(update.returncode == 4, f"unplugging ended the update with {update.returncode}")
    check(monitor.wait(SOON) == 4, f"unplugging ended the monitor with {monitor.returncode}")
    check("was lost at message" in document["error"]["what"], document["error"])
    check(document["result"]["product"]["touched"], document["result"]["product"])
    kept = bench.json(8, "recover", "--port", "simulator:" + bench.path("product.state"))
    check(kept["condition"] == "no valid code", f"the unplugged product's state: {kept}")


def lose_the_server(bench):
    """All commands that are under way say at once that it is gone."""
    second = product_ports(bench)
    mute = bench.start_product("--name", "Mute", "--fault", "silent", "-vv")
    under_way = {"simulate": mute}
    under_way["monitor"] = bench.start_and_see("Listening on", "monitor", "--plugin", bench.plugin,
                                               "--port", second[1])
    for command in ("identify", "info", "verify", "recover"):
        # So slowly that none is done asking before the last one has begun.
        before = contents(mute.log).count("received F0 7E")
        under_way[command] = bench.start(bench.hxhost, command, "--plugin", bench.plugin, "--port",
                                         "jack:Mute:in", "--rate", "1")
        eventually(f"{command} asks", lambda count=before: contents(mute.log).count("received F0 7E") > count)
    # Last, because a server that lets a program in may keep the others from talking for seconds.
    under_way["update"] = bench.start_update(bench.path("large.syx"), 10, "--no-listen", "--port",
                                             second[0])
    stop(bench.server)
    began = time.monotonic()
    for command, process in under_way.items():
        try:
            process.wait(SOON)
        except subprocess.TimeoutExpired:
            raise Failure(f"{command} goes on without the server") from None
        check(process.returncode == 4, f"without the server {command} ended with {process.returncode}")
    print(f"without the server all commands ended within {time.monotonic() - began:.1f} s")


SERVERS = {"jackd": (Bench, TOOLS, "jackd2"), "pipewire": (PipeWireBench, PIPEWIRE_TOOLS, "pipewire-jack")}


def try_all(bench):
    bench.start_server()
    product = bench.start_product("--state", bench.path("product.state"), "--trace",
                                  bench.path("product.trace"))
    check("Valdrin Update:in" in bench.run("jack_lsp").stdout, "the product's port is not there")
    find_and_identify(bench)
    update_large(bench)
    update_at_the_pace_of_the_wire(bench)
    recover_after_a_kill(bench)
    stop_while_listening(bench)
    recover_after_a_signal(bench)
    wire_check(bench)
    heard_by_the_product(bench)
    second = two_of_one_name(bench)
    if bench.renames:
        product = replaced_by_its_double(bench, product)
        stop(second)
    unplug(bench, product)
    if bench.renames:
        bench.start_product("--state", bench.path("second.state"))
    lose_the_server(bench)


def main():
    options = argparse.ArgumentParser()
    options.add_argument("hxhost")
    options.add_argument("plugin")
    options.add_argument("--server", choices=SERVERS, default="jackd")
    options.add_argument("times", type=int, nargs="?", default=1)
    options = options.parse_intermixed_args()
    kind, tools, package = SERVERS[options.server]
    if lacks(tools, package):
        return SKIPPED
    for number in range(1, options.times + 1):
        if exit_code(try_all, options.hxhost, options.plugin, kind) != 0:
            return 1
        print(f"run {number} of {options.times} passed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
