#!/usr/bin/env python3
"""Checks model/update.pml with spin: that its claims hold for images of one, two and three data messages,
every order of events tried, and that each line of model/broken.list makes the claim fail that it names."""

import pathlib
import re
import subprocess
import sys
import tempfile
import time

TOP = pathlib.Path(__file__).resolve().parent.parent
MODEL = TOP / "model/update.pml"
RETRIES = 3


def fail(text):
    sys.exit(f"model/check.py: {text}")


def run(*words, folder):
    done = subprocess.run(words, cwd=folder, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        fail(f"{' '.join(words)} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def search(text, messages):
    """(number of states, text of the first broken claim or an empty one) of a model with so many messages."""
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "update.pml").write_text(text, encoding="utf-8")
        run("spin", f"-DN={messages}", f"-DRETRIES={RETRIES}", "-a", "update.pml", folder=folder)
        run("gcc", "-O2", "-DSAFETY", "-o", "pan", "pan.c", folder=folder)
        said = run("./pan", "-m1000000", folder=folder)
        states = re.search(r"^ *(\d+) states, stored", said, re.MULTILINE)
        if states is None or "max search depth too small" in said or "Search not completed" not in said \
                and "errors: 0" not in said:
            fail(f"the search did not end as it should:\n{said}")
        return int(states.group(1)), broken_claim(text, folder, said)


def broken_claim(text, folder, said):
    """The claim that stands at the end of the line whose assertion failed."""
    if "errors: 0" in said:
        return ""
    course = run("spin", "-DN=2", f"-DRETRIES={RETRIES}", "-t", "-p", "update.pml", folder=folder) \
        if "assertion violated" in said else ""
    where = re.search(r"update\.pml:(\d+), Error: assertion violated", course)
    line = text.splitlines()[int(where.group(1)) - 1] if where else ""
    claim = re.search(r"/\* ([A-Z]+) \*/$", line)
    return claim.group(1) if claim else "no claim, but: " + "; ".join(re.findall(r"^pan:1: (.*)", said, re.MULTILINE))


def broken_lines():
    """(name, field by name) of each entry of broken.list."""
    for entry in (TOP / "model/broken.list").read_text(encoding="utf-8").split("\n\n"):
        lines = [line for line in entry.splitlines() if line and not line.startswith("#")]
        if lines:
            yield lines[0], dict(re.split(r" +", line.strip(), maxsplit=1) for line in lines[1:])


def check_broken(text, name, entry):
    tables = "".join(path.read_text(encoding="utf-8") for path in (TOP / "tests/mutations").glob("*.list"))
    if f"why   {entry['code']}\n" not in tables:
        fail(f"{name}: no entry of tests/mutations is there because \"{entry['code']}\"")
    if text.count(entry["was"]) != 1:
        fail(f"{name}: its text stands {text.count(entry['was'])} times in {MODEL.name}, not once")
    _, claim = search(text.replace(entry["was"], entry["now"]), 2)
    if claim != entry["claim"]:
        fail(f"{name}: {entry['claim']} should fail; what fails is: {claim or 'nothing'}")
    print(f"broken: {name}: {claim} fails, as it must")


def main():
    text = MODEL.read_text(encoding="utf-8")
    for messages in (1, 2, 3):
        start = time.monotonic()
        states, claim = search(text, messages)
        if claim:
            fail(f"with {messages} data messages a claim fails: {claim}")
        print(f"{messages} data messages: all claims hold in {states} states, {time.monotonic() - start:.1f} s")
    for name, entry in broken_lines():
        check_broken(text, name, entry)


main()
