#!/usr/bin/env python3
"""The shells complete exactly the commands, options and faults that hxhost's help lists.

usage: completions.py HXHOST PLUGIN COMPLETIONS_FOLDER

bash and fish are asked what they offer; fish is left out, and said to be, where it is missing. zsh
offers nothing outside of a terminal: its script is checked by zsh where there is one, and is held to
name every option in the lines of its command.
"""

import re
import shutil
import subprocess
import sys

HXHOST, FOLDER = sys.argv[1], sys.argv[3]


def output_of(*words):
    return subprocess.run(words, capture_output=True, text=True, timeout=60, check=True).stdout


def options_of(command):
    text = output_of(HXHOST, *command.split(), "--help")
    return set(re.findall(r"^  (?:-\w,)?(--[a-z-]+)", text, re.MULTILINE))


def commands_of(*command):
    text = output_of(HXHOST, *command, "--help").split("Subcommands:\n")[1]
    return re.findall(r"^  ([a-z]+) ", text.split("\n\n")[0], re.MULTILINE)


def faults():
    text = output_of(HXHOST, "simulate", "--help")
    return set(re.findall(r"^([a-z-]+)(?:\[:WHICH)", text.split("Faults:")[1], re.MULTILINE))


def bash(*words):
    quoted = " ".join(f"'{word}'" for word in words)
    script = (f"source '{FOLDER}/hxhost.bash'; COMP_WORDS=({quoted}); COMP_CWORD={len(words) - 1}; "
              "_hxhost; printf '%s\\n' \"${COMPREPLY[@]}\"")
    return set(output_of("bash", "--norc", "-c", script).split())


def fish(line):
    script = f"source '{FOLDER}/hxhost.fish'; complete -C '{line}'"
    return {row.split("\t")[0] for row in output_of("fish", "--no-config", "-c", script).splitlines()}


def check_bash(check, every):
    check("bash commands", bash("hxhost", ""), set(commands_of()) | {"--help", "--version"})
    check("bash image commands", bash("hxhost", "image", ""), set(commands_of("image")) | {"--help"})
    for command in every:
        check(f"bash {command}", bash("hxhost", *command.split(), "--"), options_of(command))
    check("bash faults", bash("hxhost", "update", "--fault", ""), faults())
    check("bash ports", bash("hxhost", "info", "--port", "s"), {"simulator", "simulator:"})


def check_fish(check, every):
    if shutil.which("fish") is None:
        print("fish is not installed: its completions were not asked for")
        return
    check("fish commands", fish("hxhost "), set(commands_of()))
    for command in every:
        check(f"fish {command}", fish(f"hxhost {command} --"), options_of(command))
    check("fish faults", fish("hxhost update --fault "), faults())


def zsh_variables(text):
    """The lists of options that several commands share, by name."""
    return dict(re.findall(r"local -a (\w+)=\((.*?)\)\n    (?=local)", text, re.DOTALL))


def zsh_lines(text, variables, command):
    """All that zsh offers after a command: its lines, and the lists that they name."""
    name = command.split()[-1]
    source = text.split("_hxhost()")[0 if " " in command else 1]
    branch = re.search(rf"^ +(?:[a-z]+ \| )*{name}(?: \| [a-z]+)*\)(.*?);;", source, re.MULTILINE | re.DOTALL)
    words = branch.group(1) if branch else ""
    for _ in range(3):
        words = re.sub(r"\$(\w+)\b", lambda found: variables.get(found.group(1), ""), words)
    return words


def check_zsh(check, every):
    if shutil.which("zsh") is not None:
        subprocess.run(["zsh", "-n", f"{FOLDER}/_hxhost"], check=True)
    with open(f"{FOLDER}/_hxhost", encoding="utf-8") as file:
        text = file.read()
    variables = zsh_variables(text)
    for command in every:
        found = set(re.findall(r"(--[a-z-]+)\W", zsh_lines(text, variables, command)))
        check(f"zsh {command}", found, options_of(command))
    described = set(re.findall(r"^ +'([a-z]+):", variables["commands"], re.MULTILINE))
    check("zsh commands", described, set(commands_of()))
    check("zsh faults", set(variables["faults"].split()), faults())


def main():
    every = [command for command in commands_of() if command != "image"]
    every += [f"image {command}" for command in commands_of("image")]
    failures = []

    def check(what, found, expected):
        if not expected or found != expected:
            failures.append(f"{what}: not offered {sorted(expected - found)}, too much {sorted(found - expected)}")

    check_bash(check, every)
    check_fish(check, every)
    check_zsh(check, every)
    print("\n".join(failures) or f"{len(every)} commands are completed as their help lists them")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
