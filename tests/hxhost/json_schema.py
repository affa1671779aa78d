#!/usr/bin/env python3
"""Runs every command of hxhost with --json, in good and in bad cases, and validates each document
against the schema.

usage: json_schema.py HXHOST PLUGIN SCHEMA

Exits 77, the code of a skipped test, where python3-jsonschema is missing.
"""

import json
import os
import sys

import trial

try:
    import jsonschema
except ImportError:
    print("SKIPPED: the JSON documents are not validated, because python3-jsonschema is missing")
    sys.exit(trial.SKIPPED)

NO_PLUGIN = ("check", "image", "trace", "simulate", "dance")  # commands that choose it otherwise, or need none

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
    (["update", "--colour"], 2),
    (["image", "build", "CODE"], 2),
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


class SchemaBench(trial.Bench):
    def __init__(self, hxhost, plugin, folder):
        super().__init__(hxhost, plugin, folder)
        with open(sys.argv[3], encoding="utf-8") as file:
            schema = json.load(file)
        jsonschema.Draft7Validator.check_schema(schema)
        self.validator = jsonschema.Draft7Validator(schema)
        self.names = {name: self.path(name.lower())
                      for name in ("TRACES", "IMAGE", "BAD", "TRACE", "STATE", "CODE", "NEW", "SECRET", "PUBLIC")}
        self.names["PLUGIN"] = self.plugin

    def prepare(self):
        self.image("image", 700)
        os.rename(self.path("image.bin"), self.names["CODE"])
        with open(self.names["BAD"], "wb") as file:
            file.write(b"\xf0\x00 nothing good")
        self.run("minisign", "-G", "-W", "-p", self.names["PUBLIC"], "-s", self.names["SECRET"])
        self.host(0, "identify", "--port", "simulator", "--trace", self.names["TRACE"])

    def complaint(self, case, expected):
        """Empty when the document is as it must be."""
        words = case
        for name, path in self.names.items():
            words = [word.replace(name, path) for word in words]
        if case[0] not in NO_PLUGIN and "--plugin" not in case and len(case) > 1:
            words = [*words, "--plugin", self.plugin]
        ended = self.run(self.hxhost, *words, "--json")
        try:
            document = json.loads(ended.stdout)
        except json.JSONDecodeError as error:
            return f"no single JSON document: {error}\n{ended.stdout}"
        if ended.returncode != expected or document.get("exitCode") != expected:
            return f"ended with {ended.returncode}, expected {expected}\n{ended.stdout}{ended.stderr}"
        errors = [f"{'/'.join(map(str, error.path))}: {error.message}"
                  for error in self.validator.iter_errors(document)]
        return "\n".join(errors)

    def accepts_a_short_key(self):
        words = ["image", "verify", self.names["IMAGE"], "--pubkey", self.names["PUBLIC"], "--plugin", self.plugin]
        document = json.loads(self.run(self.hxhost, *words, "--json").stdout)
        document["result"]["signature"]["key"] = "C2EF0989DD3435"
        return self.validator.is_valid(document)


def validate_all(bench):
    bench.prepare()
    failures = 0
    for case, expected in CASES:
        found = bench.complaint(case, expected)
        if found:
            failures += 1
            print(f"hxhost {' '.join(case)}:\n{found}\n")
    trial.check(bench.accepts_a_short_key(), "an identifier of a key with a zero before it is as the schema says")
    print(f"{len(CASES) - failures} of {len(CASES)} documents are as the schema says")
    trial.check(failures == 0, f"{failures} are not")


if __name__ == "__main__":
    sys.exit(trial.exit_code(validate_all, *sys.argv[1:3], SchemaBench))
