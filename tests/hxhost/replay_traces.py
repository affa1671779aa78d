#!/usr/bin/env python3
"""Replays every trace in a folder through the program, and compares exit code and JSON document with
those in the folder's expected.json.

usage: replay_traces.py HXHOST PLUGIN FOLDER [--record]

expected.json has command, exit code and document of each trace by its name. --record makes the traces
of the table below anew, against the simulated product; those made elsewhere are only read.
"""

import json
import os
import re
import subprocess
import sys

import trial

# Name of the trace, the command that made it, the faults of the product. IMAGE is an update image
# of 300 code bytes.
RECORDED = [
    ("identify", ["identify"], []),
    ("identify-silent", ["identify"], ["silent"]),
    ("identify-late", ["identify"], ["delay-reply:1:3000"]),
    ("identify-noise", ["identify"], ["noise"]),
    ("identify-other-model", ["identify"], ["wrong-model"]),
    ("identify-cut-reply", ["identify"], ["cut-reply:*:9"]),
    ("info", ["info"], []),
    ("info-refused", ["info"], ["refuse:2-4"]),
    ("info-silent-after-identity", ["info"], ["silent:2-"]),
    ("verify", ["verify"], []),
    ("verify-other-image", ["verify", "IMAGE"], []),
    ("verify-silent", ["verify"], ["silent:3-"]),
    ("verify-refused", ["verify"], ["refuse:3-"]),
    ("recover", ["recover"], []),
    ("recover-silent", ["recover"], ["silent"]),
    ("update", ["update", "IMAGE"], []),
    ("update-clock-running", ["update", "IMAGE"], ["noise"]),
    ("update-bad-once", ["update", "IMAGE"], ["bad-ack:2"]),
    ("update-bad-always", ["update", "IMAGE"], ["bad-ack:2-"]),
    ("update-failed-first", ["update", "IMAGE"], ["failed-ack:1"]),
    ("update-failed-last", ["update", "IMAGE"], ["failed-ack:5"]),
    ("update-silent-once", ["update", "IMAGE"], ["silent:5"]),
    ("update-silent-for-good", ["update", "IMAGE"], ["silent:5-"]),
    ("update-reply-damaged", ["update", "IMAGE"], ["damage-reply:5:7:64"]),
    ("update-reply-lost", ["update", "IMAGE"], ["drop-reply:6"]),
    ("update-reply-twice", ["update", "IMAGE"], ["duplicate-reply:5"]),
    ("update-replies-swapped", ["update", "IMAGE"], ["swap-reply:5"]),
    ("update-message-damaged", ["update", "IMAGE"], ["damage-message:5:20:1"]),
    ("update-power-cut", ["update", "IMAGE"], ["power-cut:3"]),
    ("update-bad-memory", ["update", "IMAGE"], ["bad-write:2"]),
    ("update-unplugged", ["update", "IMAGE"], ["vanish:6"]),
    ("update-unplugged-at-start", ["update", "IMAGE"], ["vanish:1"]),
    ("update-other-model", ["update", "IMAGE"], ["wrong-model"]),
]


class ReplayBench(trial.Bench):
    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        self.traces = os.path.abspath(sys.argv[3])
        self.image("IMAGE", 300)

    def trace(self, name):
        return os.path.join(self.traces, name + ".trace")

    def run_on(self, port, words, more=()):
        """Runs in the image's folder, so that the document holds no path of this machine."""
        return subprocess.run([self.hxhost, *words, "--plugin", self.plugin, "--port", port, "--json", *more],
                              cwd=self.folder, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60,
                              check=False)

    def replay(self, name, words):
        port = "replay:" + self.trace(name)
        ended = self.run_on(port, words)
        document = json.loads(ended.stdout.replace(json.dumps(port)[1:-1], "PORT"))
        return {"command": words, "exitCode": ended.returncode, "document": document}

    def record(self, name, words, faults):
        trace = self.trace(name)
        if os.path.exists(trace):
            os.remove(trace)
        more = [word for fault in faults for word in ("--fault", fault)]
        first = self.run_on("simulator", words, [*more, "--trace", trace])
        with open(trace, encoding="utf-8") as file:
            lines = file.read()
        with open(trace, "w", encoding="utf-8") as file:
            title = " ".join(["# hxhost", *words, "--port", "simulator", *more])
            file.write(re.sub(r"^# hxhost .*$", title, lines, count=1, flags=re.M))
        expected = self.replay(name, words)
        if expected["exitCode"] != first.returncode:
            print(f"{name}: recorded with {first.returncode}, replayed with {expected['exitCode']}")
        return expected


def difference(expected, found, path=""):
    """The first place where two documents differ; empty when they are the same."""
    if isinstance(expected, dict) and isinstance(found, dict):
        for key in sorted(set(expected) | set(found)):
            place = difference(expected.get(key, "(nothing)"), found.get(key, "(nothing)"), f"{path}.{key}")
            if place:
                return place
        return ""
    return "" if expected == found else f"{path}: expected {expected!r}, found {found!r}"


def record_all(bench, expected, path):
    expected.update({name: bench.record(name, words, faults) for name, words, faults in RECORDED})
    with open(path, "w", encoding="utf-8") as file:
        json.dump(expected, file, indent=1, sort_keys=True)
        file.write("\n")


def replay_all(bench):
    path = os.path.join(bench.traces, "expected.json")
    with open(path, encoding="utf-8") as file:
        expected = json.load(file)
    if "--record" in sys.argv:
        record_all(bench, expected, path)
    names = sorted(name[:-6] for name in os.listdir(bench.traces) if name.endswith(".trace"))
    trial.check(names == sorted(expected), f"the traces are {names}, those that are expected {sorted(expected)}")
    places = {name: difference(expected[name], bench.replay(name, expected[name]["command"])) for name in names}
    wrong = "\n".join(name + place for name, place in places.items() if place)
    trial.check(not wrong, f"these do not replay as they must:\n{wrong}")
    failures = sum(one["exitCode"] != 0 for one in expected.values())
    trial.check(len(names) >= 25 and failures >= 10, f"only {len(names)} traces, {failures} of failures")
    print(f"all {len(names)} traces replay as they must; {failures} of them are of failures")


if __name__ == "__main__":
    sys.exit(trial.exit_code(replay_all, *sys.argv[1:3], ReplayBench))
