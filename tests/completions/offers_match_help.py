#!/usr/bin/env python3
"""A shell offers exactly the commands and options that the program's help lists, for each command.

usage: offers_match_help.py PROGRAM SHELL COMPLETIONS_FOLDER

Skips itself where there is no such shell.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import shells

NOT_RUN = 77

# Offers beside commands and options, in a folder with one file "take.syx". None: all of the faults
# that the help of the simulated product lists.
VALUES = {
    "hxhost": {
        "update --progress ": {"auto", "bar", "plain", "json", "none"},
        "image build --kind ": {"fwu", "fwd"},
        "simulate --backend ": {"alsa", "jack", "core"},
        "info --port rep": {"replay:"},
        "info --port dev": {"device:"},
        "update --fault ": None,
        "monitor --fault ": None,
        "simulate --fault ": None,
        "update ta": {"take.syx"},
        "upd": {"update"},
    },
    "hxmidi": {
        "parse --from ": {"auto", "raw", "hex", "decimal", "c"},
        "convert --to ": {"hex", "compact", "raw", "decimal", "c"},
        "sum --kind ": {"7bit", "complement", "32bit"},
        "fields 14": {"14bit@"},
        "parse @ta": {"@take.syx"},
        "s": {"split", "sum"},
    },
}


class Help:
    def __init__(self, program, command):
        self.text = subprocess.run([program, *command.split(), "--help"], capture_output=True, text=True,
                                   timeout=60, check=True).stdout
        self.long = set(re.findall(r"^  (?:-\w,)?(--[a-z-]+)", self.text, re.MULTILINE))
        self.short = set(re.findall(r"^  (-\w)\b", self.text, re.MULTILINE))
        listed = re.search(r"^Subcommands:\n((?:  .*\n)+)", self.text, re.MULTILINE)
        self.commands = set(re.findall(r"^  ([a-z]+) ", listed.group(1), re.MULTILINE)) if listed else set()

    def faults(self):
        return set(re.findall(r"^([a-z-]+)(?:\[:WHICH)", self.text.split("Faults:")[1], re.MULTILINE))


def check_tree(program, shell, check, command=""):
    """Holds what is offered after `command`, and after each command below it, to its help."""
    known = Help(program, command)
    line = f"{pathlib.Path(program).name} {command} ".replace("  ", " ")
    check(line + "--", shell.offers(line + "--"), known.long)
    # bash offers the long form alone: a short one is typed as fast.
    one_dash = known.long if isinstance(shell, shells.Bash) else known.long | known.short
    check(line + "-", shell.offers(line + "-"), one_dash)
    if not known.commands:
        return 1
    check(line, shell.offers(line) - known.long, known.commands)
    return 1 + sum(check_tree(program, shell, check, f"{command} {name}".strip()) for name in sorted(known.commands))


def check_values(program, shell, check):
    name = pathlib.Path(program).name
    for words, values in VALUES[name].items():
        expected = values or Help(program, "simulate").faults()
        # zsh completes the name behind the sign that makes it a file's.
        if isinstance(shell, shells.Zsh):
            expected = {value.lstrip("@") for value in expected}
            expected = {value[:-1] if value.endswith("@") else value for value in expected}
        check(f"{name} {words}", shell.offers(f"{name} {words}"), expected)


def main():
    program, name, folder = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3]).resolve()
    if shutil.which(name) is None:
        print(f"SKIPPED: {name} is not installed (scripts/setup --tests installs it)")
        return NOT_RUN
    failures = []

    def check(line, found, expected):
        if not expected or found != expected:
            failures.append(f"\"{line}\": not offered {sorted(expected - found)}, too much {sorted(found - expected)}")

    with tempfile.TemporaryDirectory() as scratch:
        (pathlib.Path(scratch) / "take.syx").touch()
        os.chdir(scratch)
        shell = {"bash": shells.Bash, "zsh": shells.Zsh, "fish": shells.Fish}[name](pathlib.Path(program).name, folder)
        commands = check_tree(program, shell, check)
        check_values(program, shell, check)
        os.chdir("/")
    print("\n".join(failures) or f"{name} offers what the help of {commands} commands lists")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
