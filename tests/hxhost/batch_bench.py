#!/usr/bin/env python3
"""Batches over simulated products on devices, at the pace of the wire.

usage: batch_bench.py HXHOST PLUGIN [--small] [--seed N] [--faults N] [--start I] [--count N] [PART...]

Parts: alone (a fault of one product is nothing to the others; --start and --count choose a piece of its faults),
killed (a batch that is killed leaves nothing behind), watch (the loop of a bench), silent (a port where nothing
answers), stop (Ctrl-C and the end of standard input), pace (as many products take no longer than one; measures time
and memory, never in --small).
Without --small each is as large as docs/evidence/reliability.md says.
"""

import argparse
import glob
import json
import os
import random
import signal
import subprocess
import sys
import time

import trial
from trial import check, contents, eventually, exit_code

PIECE = 112  # code bytes a message
LONGEST_END = 15  # seconds within which the processes of a batch that was killed have ended
LIMIT_OF_MEMORY = 6 * 1024  # KiB a product
LIMIT_OF_DELAY = 1.01

# Of a product by its own fault, {} being the number of a message, then of the processes.
FAULTS = ["silent:{}", "silent:{}-", "damage-message:{}:9:10", "cut-message:{}:5", "insert-message:{}:3:F8F8",
          "refuse:{}", "refuse:{}-", "wrong-model:{}", "wrong-model", "vanish:{}", "bad-ack:{}", "bad-ack:{}-",
          "failed-ack:{}", "power-cut:{}:before", "power-cut:{}:during", "power-cut:{}:after", "bad-write:{}",
          "drop-reply:{}", "drop-reply:{}-", "duplicate-reply:{}", "damage-reply:{}:7:40", "cut-reply:{}:4",
          "insert-reply:{}:2:00", "delay-reply:{}:3000", "late-reply:{}", "swap-reply:{}", "noise"]
PROCESS_FAULTS = ["kill product", "stop product", "kill run", "stop run"]


class Product:
    """A simulated product on a device of its own."""

    def __init__(self, bench, number, fault=None):
        self.link = bench.path(f"device{number:02}")
        self.state = bench.path(f"{number}.state")
        log = bench.path(f"{number}.log")
        words = ["simulate", "--device", "--serial", f"Unit{number:04}", "--state", self.state, self.link]
        with open(log, "w", encoding="utf-8") as file:
            self.process = bench.start_host(*words, *(["--fault", fault] if fault else []), stderr=file)
        eventually(f"product {number} is there", lambda: "The product is on" in contents(log))
        self.port = "device:" + self.link

    def stop(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGCONT)
        trial.stop(self.process)


class BatchBench(trial.Bench):
    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        self.products = {}

    def start_host(self, *words, **streams):
        return self.start(self.hxhost, *words, "--plugin", self.plugin, **streams)

    def make_image(self, code_bytes):
        self.image("image", code_bytes)
        self.messages = code_bytes // PIECE + 2

    def have(self, numbers):
        for number in numbers:
            if number not in self.products:
                self.products[number] = Product(self, number)

    def replace(self, number, fault=None):
        if number in self.products:
            self.products.pop(number).stop()
        self.products[number] = Product(self, number, fault)

    def start_batch(self, *more, ports="device*", **settings):
        return self.start_host("batch", self.path("image"), "--no-listen", "--ports", "device:" + self.path(ports),
                          "--traces", self.path("traces"), *more, **settings)

    def batch(self, expected, *more, ports="device*"):
        """Units by serial number, or port where there is none."""
        batch = self.start_batch("--json", "--progress", "none", *more, ports=ports, stdout=subprocess.PIPE)
        document = json.loads(batch.communicate(timeout=900)[0])
        check(batch.returncode == expected, f"the batch ended with {batch.returncode}, not {expected}: {document}")
        return {unit["serial"] or unit["port"]: unit for unit in document["result"]["units"]}

    def runs(self):
        """The processes of updates and questions, by their device."""
        found = {}
        for place in glob.glob("/proc/[0-9]*"):
            try:
                with open(place + "/cmdline", "rb") as file:
                    words = file.read().decode(errors="replace").split("\0")
            except OSError:
                continue
            if "--stop-at-eof" in words and any(word.startswith("device:" + self.folder) for word in words):
                found[words[words.index("--port") + 1]] = int(os.path.basename(place))
        return found

    def close(self):
        for product in self.products.values():
            product.stop()
        super().close()


def is_alive(pid):
    """A process that has ended and is only waited for does not count."""
    try:
        return contents(f"/proc/{pid}/stat").rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def memory_of(pid):
    """What the process itself needs, in KiB: its part of what it shares with others included."""
    try:
        return sum(int(line.split()[1]) for line in contents(f"/proc/{pid}/smaps_rollup").splitlines()
                   if line.startswith("Pss:"))
    except OSError:
        return 0


def pace(bench, options, _random):
    """As many products as there are take no longer than one."""
    bench.make_image(32768)
    bench.have(range(options.products))
    times = []
    memory = 0
    for ports in ("device00", "device*"):
        began = time.monotonic()
        batch = bench.start_batch("--progress", "none", ports=ports)
        while batch.poll() is None:
            memory = max(memory, sum(memory_of(pid) for pid in bench.runs().values()))
            time.sleep(1)
        times.append(time.monotonic() - began)
        check(batch.returncode == 0, f"the batch ended with {batch.returncode}")
    limit = options.products * LIMIT_OF_MEMORY
    print(f"pace: one product {times[0]:.2f} s, {options.products} products {times[1]:.2f} s, "
          f"{times[1] / times[0]:.3f} times that; runs: {memory} KiB, limit {limit} KiB")
    check(times[1] <= 1.1 * times[0], "they take longer")
    check(memory <= limit, "they take more memory")


def harm(bench, fault, product):
    """Does what a fault of the processes says, once the update is under way; the process that was stopped."""
    pid = eventually("the run is there", lambda: bench.runs().get(product.port))
    victim = pid if fault.endswith("run") else product.process.pid
    os.kill(victim, signal.SIGKILL if fault.startswith("kill") else signal.SIGSTOP)


def drawn_faults(draw, count, messages):
    faults = [draw.choice(FAULTS).format(draw.randint(1, messages + 12)) for _ in range(count)]
    for number, fault in enumerate(PROCESS_FAULTS[:max(2, count // 25)]):
        faults[number * count // len(PROCESS_FAULTS)] = fault
    return faults


def keep_shortest(shortest, found):
    for port, duration in found.items():
        shortest[port] = min(duration, shortest.get(port, duration))


def slowest_part(shortest, undisturbed):
    """Of the others beside a fault the one that is furthest behind its own best run without one."""
    return max(duration / undisturbed[port] for port, duration in shortest.items())


def run_beside(bench, options, fault, number):
    """One batch with the fault; the others' durations by their ports, and the outcome of the faulty one."""
    is_process = fault in PROCESS_FAULTS
    bench.replace(number, None if is_process else fault)
    product = bench.products[number]
    batch = bench.start_batch("--json", "--progress", "none", stdout=subprocess.PIPE)
    if is_process:
        harm(bench, fault, product)
    units = {unit["port"]: unit for unit in json.loads(batch.communicate(timeout=900)[0])["result"]["units"]}
    check(len(units) == options.products, f"{fault}: {len(units)} units")
    faulty = units.pop(product.port)
    check(all(unit["outcome"] == "succeeded" for unit in units.values()), f"{fault}: {units}")
    check((batch.returncode == 0) == (faulty["outcome"] == "succeeded"), f"{fault}: {faulty}")
    bench.replace(number)
    return {port: unit["durationMs"] for port, unit in units.items()}, faulty["outcome"]


def best_beside(bench, options, fault, number, undisturbed):
    """As often as one of the others is behind, but not for ever: what a fault causes is there each time."""
    shortest, outcome = {}, None
    for _ in range(options.repeats):
        found, outcome = run_beside(bench, options, fault, number)
        keep_shortest(shortest, found)
        if slowest_part(shortest, undisturbed) <= LIMIT_OF_DELAY:
            break
    return slowest_part(shortest, undisturbed), outcome


def alone(bench, options, draw):
    """A fault of one product changes nothing for the others. What else the machine does can only delay them, and
    differently each time, so that the best run of each product beside a fault is held to its best run without. The
    starts of all the processes differ by some 50 ms, which is more than a hundredth of a short update."""
    bench.make_image(options.alone_bytes)
    bench.have(range(options.products))
    faults = list(enumerate(drawn_faults(draw, options.faults, bench.messages)))
    faults = faults[options.start:options.start + options.count]
    undisturbed = {}
    for _ in range(options.repeats):
        keep_shortest(undisturbed, {unit["port"]: unit["durationMs"] for unit in bench.batch(0).values()})
    worst, behind, outcomes = 0.0, [], {}
    for number, fault in faults:
        part, outcome = best_beside(bench, options, fault, number % options.products, undisturbed)
        worst = max(worst, part)
        behind += [f"{fault} {part:.4f}"] if part > LIMIT_OF_DELAY else []
        outcomes[outcome] = outcomes.get(outcome, 0) + 1
        print(f"alone: {fault}: {outcome}, the others at most {part:.4f} times", flush=True)
    print(f"alone: {len(faults)} faults of one of {options.products} products, the others all updated, at most "
          f"{worst:.4f} times as long as without (about {max(undisturbed.values())} ms); the faulty one: {outcomes}")
    check(options.small or not behind, f"these faults delay the others: {', '.join(behind)}")


def killed(bench, options, draw):
    """A batch that is killed leaves no process behind, and its products can be updated."""
    bench.make_image(options.code_bytes)
    for number in range(options.killed_products):
        bench.replace(number)
    began = time.monotonic()
    bench.batch(0)
    whole = time.monotonic() - began
    slowest, cut_off = 0.0, 0
    for _ in range(options.kills):
        batch = bench.start_batch()
        try:
            batch.wait(draw.uniform(0, whole))
        except subprocess.TimeoutExpired:
            pass
        runs = bench.runs()
        batch.kill()
        batch.wait()
        began = time.monotonic()
        runs.update(bench.runs())
        eventually("all processes have ended", lambda: not any(is_alive(pid) for pid in runs.values()) and
                   not bench.runs(), LONGEST_END)
        slowest = max(slowest, time.monotonic() - began)
        cut_off += any("\nvalid no\n" in contents(product.state) for product in bench.products.values())
        units = bench.batch(0)
        check(len(units) == options.killed_products, f"the second run updated {units}")
    print(f"killed: {options.kills} times, {cut_off} times in the midst of updates; all processes had ended within "
          f"{slowest:.1f} s, and a second run updated all {options.killed_products} products")


def watch(bench, _options, _draw):
    """Each product that comes is updated once; Ctrl-C ends the loop in good order."""
    bench.make_image(300)
    bench.have([50])
    report = bench.path("watch.jsonl")
    with open(bench.path("watch.log"), "w", encoding="utf-8") as log:
        batch = bench.start_batch("--watch", "--slow-host", "--report", report, ports="device5?", stderr=log)

    def count():
        return contents(report).count("\n") if os.path.exists(report) else 0

    eventually("the first product is updated", lambda: count() == 1)
    bench.have([51])
    eventually("the second one is updated", lambda: count() == 2)
    bench.products.pop(50).stop()
    bench.replace(52, "failed-ack:2")
    eventually("the third one has failed", lambda: count() == 3)
    bench.replace(50)
    eventually("the first one is left alone", lambda: "the product with the serial number Unit0050 is updated "
               "already" in contents(bench.path("watch.log")))
    bench.products.pop(52).stop()
    bench.have([53]) # once it is updated, the other one has been seen to be gone
    eventually("the fourth one is updated", lambda: count() == 4)
    bench.have([52])
    eventually("the third one is updated when it comes again", lambda: count() == 5)
    batch.send_signal(signal.SIGINT)
    check(batch.wait(20) == 14, f"the loop ended with {batch.returncode}: {contents(report)}")
    units = [json.loads(line) for line in contents(report).splitlines()]
    found = [(unit["serial"], unit["outcome"]) for unit in units]
    check(found == [("Unit0050", "succeeded"), ("Unit0051", "succeeded"), ("Unit0052", "update-failed"),
                    ("Unit0053", "succeeded"), ("Unit0052", "succeeded")], f"the loop has {found}")
    check("\"count\":{\"failed\":1,\"skipped\":0,\"succeeded\":4}" in contents(bench.path("watch.log")), "the count")
    print("watch: each product was updated once, one that had failed when it came again")


def silent(bench, _options, _draw):
    """A port where nothing answers fails, or is left out when that is asked for."""
    bench.make_image(300)
    bench.replace(60)
    bench.replace(61, "silent")
    bench.replace(62, "silent")
    alone = bench.start_batch("--json", "--skip-silent", ports="device62", stdout=subprocess.PIPE)
    units = bench.batch(14, "--ports", bench.products[60].port, ports="device61")
    check(units["Unit0060"]["outcome"] == "succeeded", f"{units}")
    port = bench.products[61].port
    check(units[port]["outcome"] == "no-answer" and os.path.exists(units[port]["trace"]), f"{units}")
    document = json.loads(alone.communicate(timeout=60)[0])
    check(alone.returncode == 5 and not document["result"]["units"], f"left out: {document}")
    print("silent: a port where nothing answers fails, or is left out")


def stop(bench, _options, _draw):
    """Ctrl-C ends the updates in good order, and so does the end of standard input."""
    bench.make_image(20000)
    bench.have([70, 71])
    report = bench.path("stop.csv")
    batch = bench.start_batch("--report", report, "--jobs", "1", ports="device7?")
    eventually("an update is under way", lambda: any("valid no" in contents(bench.products[number].state)
                                                     for number in (70, 71)))
    batch.send_signal(signal.SIGTERM)
    check(batch.wait(20) == 130, f"the batch ended with {batch.returncode}")
    check(contents(report).count(",interrupted,") == 2, contents(report))
    update = bench.start_host("update", bench.path("image"), "--port", bench.products[71].port, "--yes", "--json",
                         "--stop-at-eof", stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    update.stdin.write(b"what is read is lost\n")
    update.stdin.flush()
    eventually("the update is under way", lambda: "valid no" in contents(bench.products[71].state))
    document = json.loads(update.communicate(timeout=20)[0])
    check(update.returncode == 130 and document["result"]["outcome"] == "interrupted", f"{document}")
    with_image = bench.start_host("update", "-", "--stop-at-eof", stderr=subprocess.PIPE)
    check(b"the image ends standard input" in with_image.communicate(timeout=20)[1], "an image on standard input")
    check(with_image.returncode == 2, f"it ended with {with_image.returncode}")
    print("stop: a batch and an update end in good order")


PARTS = {"silent": silent, "watch": watch, "stop": stop, "pace": pace, "alone": alone, "killed": killed}


def read_options():
    options = argparse.ArgumentParser()
    options.add_argument("hxhost")
    options.add_argument("plugin")
    options.add_argument("--small", action="store_true")
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--faults", type=int, default=100)
    options.add_argument("--start", type=int, default=0, help="the first of the faults that is tried")
    options.add_argument("--count", type=int, default=100, help="how many of them")
    options.add_argument("parts", nargs="*")
    options = options.parse_intermixed_args()
    options.products, options.kills = (4, 3) if options.small else (32, 50)
    options.faults = 3 if options.small else options.faults
    options.repeats = 1 if options.small else 5
    options.code_bytes = 1500 if options.small else 8192
    options.alone_bytes = 1500 if options.small else 32768
    options.killed_products = 2 if options.small else 8
    options.parts = options.parts or [part for part in PARTS if not (options.small and part == "pace")]
    return options


def main():
    options = read_options()
    for part in options.parts:
        def try_part(bench, part=part):
            PARTS[part](bench, options, random.Random(options.seed))
        if exit_code(try_part, options.hxhost, options.plugin, BatchBench) != 0:
            print(f"in part {part}")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
