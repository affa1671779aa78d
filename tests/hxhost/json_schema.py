#!/usr/bin/env python3
"""Runs every command of hxhost with --json, in good and in bad cases, and validates each document
against the schema.

usage: json_schema.py HXHOST PLUGIN SCHEMA

Exits 77, the code of a skipped test, where python3-jsonschema is missing.
"""

import json
import os
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    print("SKIPPED: the JSON documents are not validated, because python3-jsonschema is missing")
    sys.exit(77)

# Words, and the exit code they must lead to. IMAGE, BAD, TRACE, TRACES, STATE, CODE, NEW, SECRET, PUBLIC and
# PLUGIN are file names.
CASES = [
    (["inspect"], 0),
    (["inspect", "--plugin", "BAD"], 3),
    (["check", "PLUGIN"], 0),
    (["check", "BAD"], 3),
    (["identify", "--port", "simulator"], 0),
    (["identify", "--port", "simulator", "--fault", "silent"], 5),
    (["identify", "--port", "simulator", "--fault", "wrong-model"], 9),
    (["identify", "--port", "simulator", "--fault", "vanish:1"], 4),
    (["identify", "--port", "no such port"], 4),
    (["identify", "--port", "simulator", "--field", "port"], 0),
    (["info", "--port", "simulator"], 0),
    (["info", "--port", "simulator", "--fault", "refuse:3"], 0),
    (["info", "--port", "simulator", "--fault", "silent:2-"], 5),
    (["info", "--port", "replay:TRACE"], 11),
    (["image", "build", "CODE", "-o", "NEW", "--kind", "fwd"], 0),
    (["image", "build", "nowhere", "-o", "NEW", "--kind", "fwu"], 10),
    (["image", "build", "CODE", "-o", "NEW", "--kind", "fwu", "--code-version", "x"], 2),
    (["image", "inspect", "IMAGE"], 0),
    (["image", "inspect", "BAD"], 6),
    (["image", "inspect", "nowhere"], 10),
    (["image", "sign", "IMAGE", "--key", "SECRET"], 0),
    (["image", "sign", "IMAGE", "--key", "SECRET"], 10),
    (["image", "verify", "IMAGE", "--pubkey", "PUBLIC"], 0),
    (["image", "verify", "IMAGE", "--pubkey", "PUBLIC", "--signature", "PUBLIC"], 6),
    (["update", "IMAGE", "--port", "simulator", "--pubkey", "PUBLIC"], 0),
    (["update", "IMAGE", "--port", "simulator", "--pubkey", "BAD"], 6),
    (["update", "IMAGE", "--port", "simulator", "--pubkey", "BAD", "--unsigned"], 0),
    (["update", "IMAGE", "--port", "simulator:STATE", "--fault", "failed-ack:3"], 7),
    (["recover", "--port", "simulator:STATE"], 8),
    (["verify", "--port", "simulator:STATE"], 8),
    (["update", "IMAGE", "--port", "simulator:STATE"], 0),
    (["recover", "--port", "simulator:STATE"], 0),
    (["verify", "IMAGE", "--port", "simulator:STATE"], 0),
    (["update", "IMAGE", "--port", "simulator", "--fault", "noise"], 0),
    (["update", "IMAGE", "--port", "simulator", "--fault", "silent"], 5),
    (["update", "IMAGE", "--port", "simulator", "--fault", "silent:5-"], 7),
    (["update", "IMAGE", "--port", "simulator", "--fault", "wrong-model"], 9),
    (["update", "IMAGE", "--port", "simulator", "--fault", "vanish:6"], 4),
    (["update", "IMAGE", "--dry-run"], 0),
    (["update", "BAD", "--port", "simulator"], 6),
    (["batch", "IMAGE", "--ports", "simulator", "--ports", "simulator:STATE", "--traces", "TRACES"], 0),
    (["batch", "IMAGE", "--ports", "simulator:BAD", "--traces", "TRACES"], 14),
    (["batch", "IMAGE", "--ports", "no such port"], 4),
    (["batch", "BAD", "--ports", "simulator"], 6),
    (["update"], 2),
    (["dance"], 2),
    (["update", "IMAGE", "--port", "replay:TRACE"], 11),
    (["verify", "IMAGE", "--port", "simulator"], 8),
    (["recover", "--port", "simulator", "--fault", "silent"], 5),
    (["monitor", "--port", "simulator", "--fault", "noise", "--count", "4"], 0),
    (["monitor", "--port", "simulator", "--fault", "vanish:1", "--seconds", "1"], 0),
    (["monitor", "--port", "no such port"], 4),
    (["trace", "TRACE"], 0),
    (["trace", "TRACE", "--svg", "NEW"], 0),
    (["trace", "BAD"], 10),
    (["ports"], 0),
    (["simulate", "--backend", "nothing", "--seconds", "1"], 2),
    (["support", "-o", "NEW", "--port", "simulator"], 0),
    (["support", "-o", "NEW", "--port", "simulator", "--image", "IMAGE", "--last-trace", "TRACE"], 0),
    (["support", "-o", "NEW", "--port", "simulator", "--last-trace", "BAD"], 10),
    (["update", "IMAGE", "--port", "simulator", "--field", "colour"], 2),
    (["identify", "--fault", "silent"], 2),
]


def run(hxhost, words):
    return subprocess.run([hxhost, *words, "--json"], stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, timeout=60, check=False)


def complaint(hxhost, validator, words, expected):
    """Empty when the document is as it must be."""
    ended = run(hxhost, words)
    try:
        document = json.loads(ended.stdout)
    except json.JSONDecodeError as error:
        return f"no single JSON document: {error}\n{ended.stdout}"
    if ended.returncode != expected or document.get("exitCode") != expected:
        return f"ended with {ended.returncode}, expected {expected}\n{ended.stdout}{ended.stderr}"
    errors = [f"{'/'.join(map(str, error.path))}: {error.message}" for error in validator.iter_errors(document)]
    return "\n".join(errors)


def main():
    hxhost, plugin = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    with open(sys.argv[3], encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema)
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        names = {name: os.path.join(folder, name.lower())
                 for name in ("TRACES", "IMAGE", "BAD", "TRACE", "STATE", "CODE", "NEW", "SECRET", "PUBLIC")}
        names["PLUGIN"] = plugin
        with open(names["CODE"], "wb") as file:
            file.write(bytes(i % 251 for i in range(700)))
        with open(names["BAD"], "wb") as file:
            file.write(b"\xf0\x00 nothing good")
        subprocess.run(["minisign", "-G", "-W", "-p", names["PUBLIC"], "-s", names["SECRET"]], check=True,
                       stdout=subprocess.DEVNULL)
        run(hxhost, ["image", "build", names["CODE"], "-o", names["IMAGE"], "--kind", "fwu"])
        run(hxhost, ["identify", "--port", "simulator", "--trace", names["TRACE"]])
        for case, expected in CASES:
            words = case
            for name, path in names.items():
                words = [word.replace(name, path) for word in words]
            if case[0] not in ("check", "image", "trace", "simulate", "dance") and "--plugin" not in case and len(case) > 1:
                words = [*words, "--plugin", plugin]
            found = complaint(hxhost, validator, words, expected)
            if found:
                failures += 1
                print(f"hxhost {' '.join(case)}:\n{found}\n")
    print(f"{len(CASES) - failures} of {len(CASES)} documents are as the schema says")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
