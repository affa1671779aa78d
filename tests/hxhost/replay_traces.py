#!/usr/bin/env python3
"""Replays every trace in a folder through the program, and compares exit code and JSON document with
those that stand beside it.

usage: replay_traces.py HXHOST PLUGIN FOLDER [--record]

A trace NAME.trace has its command, exit code and document in NAME.json. --record makes the traces
of the table below anew, against the simulated product; those made elsewhere are only read.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

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


def build_image(hxhost, folder):
    code, image = os.path.join(folder, "code.bin"), os.path.join(folder, "IMAGE")
    with open(code, "wb") as file:
        file.write(bytes((i * 7 + i // 256) % 256 for i in range(300)))
    subprocess.run([hxhost, "image", "build", code, "-o", image, "--kind", "fwu"], check=True,
                   stdout=subprocess.DEVNULL)


def run(hxhost, plugin, folder, words, port, more=()):
    """Runs in the image's folder, so that the document holds no path of this machine."""
    return subprocess.run([hxhost, *words, "--plugin", plugin, "--port", port, "--json", *more],
                          cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          timeout=60, check=False)


def result_of(ended, port):
    document = json.loads(ended.stdout.replace(json.dumps(port)[1:-1], "PORT"))
    return {"exitCode": ended.returncode, "document": document}


def replay(hxhost, plugin, folder, traces, name, words):
    port = "replay:" + os.path.join(traces, name + ".trace")
    return result_of(run(hxhost, plugin, folder, words, port), port)


def record(hxhost, plugin, folder, traces):
    for name, words, faults in RECORDED:
        trace = os.path.join(traces, name + ".trace")
        if os.path.exists(trace):
            os.remove(trace)
        more = [word for fault in faults for word in ("--fault", fault)]
        first = run(hxhost, plugin, folder, words, "simulator", [*more, "--trace", trace])
        with open(trace, encoding="utf-8") as file:
            lines = file.read()
        with open(trace, "w", encoding="utf-8") as file:
            title = " ".join(["# hxhost", *words, "--port", "simulator", *more])
            file.write(re.sub(r"^# hxhost .*$", title, lines, count=1, flags=re.M))
        expected = replay(hxhost, plugin, folder, traces, name, words)
        if expected["exitCode"] != first.returncode:
            print(f"{name}: recorded with {first.returncode}, replayed with {expected['exitCode']}")
        with open(os.path.join(traces, name + ".json"), "w", encoding="utf-8") as file:
            json.dump({"command": words, **expected}, file, indent=1)
            file.write("\n")


def difference(expected, found, path=""):
    """The first place where two documents differ; empty when they are the same."""
    if isinstance(expected, dict) and isinstance(found, dict):
        for key in sorted(set(expected) | set(found)):
            place = difference(expected.get(key, "(nothing)"), found.get(key, "(nothing)"), f"{path}.{key}")
            if place:
                return place
        return ""
    return "" if expected == found else f"{path}: expected {expected!r}, found {found!r}"


def main():
    hxhost, plugin, traces = (os.path.abspath(word) for word in sys.argv[1:4])
    with tempfile.TemporaryDirectory() as folder:
        build_image(hxhost, folder)
        if "--record" in sys.argv:
            record(hxhost, plugin, folder, traces)
        names = sorted(name[:-6] for name in os.listdir(traces) if name.endswith(".trace"))
        wrong, failures = 0, 0
        for name in names:
            with open(os.path.join(traces, name + ".json"), encoding="utf-8") as file:
                expected = json.load(file)
            found = replay(hxhost, plugin, folder, traces, name, expected.pop("command"))
            failures += expected["exitCode"] != 0
            place = difference(expected, found)
            if place:
                wrong += 1
                print(f"{name}{place}")
    print(f"{len(names) - wrong} of {len(names)} traces replay as they must; {failures} of them are of failures")
    return 1 if wrong or len(names) < 25 or failures < 10 else 0


if __name__ == "__main__":
    sys.exit(main())
