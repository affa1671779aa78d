#!/usr/bin/env python3
"""Runs every command of every document as it is printed there, in a scratch copy of the project with
the built programs in the path.

usage: commands_run.py SOURCE BUILD [DOCUMENT...]

A command is a line of a fenced block of language sh, an indented line that begins with one of the
project's scripts or programs, or a line of the examples of a manual page. It must end with exit code 0, or with the one that its comment names
("# ends with exit code 7"). The commands of one document run in their order, from the top folder;
nothing that one document leaves behind is there for the next.

What a test cannot run stands in NOT_RUN. A script there must at least be in the tree and know the
options that the document gives it. So must what a sentence names in `backquotes`: such a command is one
to be completed, and only its words and options are looked up. Blocks of language console, and the manual of hxmidi, show output too
and are run by tests/hxmidi/DocumentExamplesTest.cpp, which must name their document.
"""

import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SOURCE, BUILD = (pathlib.Path(word).resolve() for word in sys.argv[1:3])

# Beginnings of commands, and why they are not run here; the longest that fits counts. None: it is run.
NOT_RUN = {
    "scripts/setup": "installs packages",
    "scripts/run": "installs packages",
    "scripts/build": "builds the tree that this test is part of",
    "scripts/test": "builds and runs the tests that this test is one of",
    ".ci/run": "runs all tests",
    "scripts/analyse": "takes minutes; .ci/run runs it",
    "scripts/check-format": "needs clang-format; .ci/run runs it",
    "scripts/check-package": "builds packages; .ci/run runs the quick form",
    "scripts/abi": "needs clang; tests/abi runs it",
    "scripts/check": "the long checks; .ci/run runs some of them",
    "scripts/fuzz": "builds with clang, searches for minutes; .ci/run runs it",
    "scripts/mutate": "builds and tests many times over",
    "scripts/mutate --list": None,
    "scripts/coverage": "builds and tests another time",
    "scripts/window-pictures": "builds its program; the pictures are looked at, not compared",
    "scripts/translate": "changes the tree; tests/hxupdate says whether it is needed",
    "hxupdate": "opens a window and waits for a person; tests/hxupdate works it",
    "parallel": "needs two stations; tests/hxhost/batch_stations.py runs it with logins of its own",
    "scripts/bench": "measures for minutes, which needs an idle machine",
}

# Documents whose commands run elsewhere, in the place that they are written for.
RUN_ELSEWHERE = {
    "examples/plugin-template/README.md": "tests/install/projects.py",
}

# Files that a document takes for granted.
GIVEN = {
    "docs/man/hxhost.1": "firmware.bin",
}

# How an indented line begins when it is a command. The others are grammars, texts and file trees.
INDENTED = re.compile(r"(\./)?(scripts/|\.ci/)|(hxhost|hxmidi|cmake|git|pkg-config) ")
# The documents print the names of the kit that is made for Qt 5. Of the one for Qt 6 they carry the number, and a
# project says that it takes that one.
NAMES_WITH_QT_6 = {
    r"/hxmidikit/plugins": "/hxmidikit-qt6/plugins",
    r"(?<=^pkg-config ).*HxDeviceInterface": r"\g<0>-qt6",
    r"-DCMAKE_PREFIX_PATH=\S+": r"\g<0> -DKIT=HxMidiKit-qt6",
}
EXIT_CODE = re.compile(r"# ends with exit code (\d+)$")


def with_names_of(major, command):
    for printed, name in NAMES_WITH_QT_6.items() if major == "6" else ():
        command = re.sub(printed, name, command)
    return command


def listed_files():
    words = ["git", "-C", SOURCE, "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    names = subprocess.run(words, capture_output=True, check=True).stdout.decode().split("\0")
    return [name for name in names if name and (SOURCE / name).is_file()]


def blocks(text):
    """(language, lines) of each fenced block; the lines between two of them as language None."""
    language, lines = None, []
    for line in text.split("\n"):
        fence = re.match(r" *```(\w*)$", line)
        if not fence:
            lines.append(line)
            continue
        yield language, lines
        language, lines = (fence.group(1) or "text") if language is None else None, []
    yield language, lines


def commands_in(lines):
    """Commands, those that a backslash continues joined, without comment lines."""
    whole = re.sub(r"\\\n *", "", "\n".join(lines))
    return [line.strip() for line in whole.split("\n") if line.strip() and not line.strip().startswith("#")]


def commands_of_manual(text):
    examples = re.search(r"^\.SH EXAMPLES\n.*?^\.nf\n(.*?)^\.fi$", text, re.MULTILINE | re.DOTALL)
    return examples.group(1).replace("\\-", "-").splitlines() if examples else []


def commands_of(document):
    text = (SOURCE / document).read_text(encoding="utf-8")
    if document.endswith(".1"):
        return commands_of_manual(text)
    found = []
    for language, lines in blocks(text):
        if language in ("sh", "bash"):
            found += commands_in(lines)
        elif language is None:
            found += [line.strip() for line in lines
                      if line.startswith("    ") and INDENTED.match(line.strip())]
    return found


def commands_in_sentences(document):
    text = (SOURCE / document).read_text(encoding="utf-8")
    prose = "\n".join(line for language, lines in blocks(text) if language is None for line in lines)
    return [" ".join(span.split()) for span in re.findall(r"`([^`]+)`", prose) if INDENTED.match(span)]


def beginning_of(command):
    """The entry of NOT_RUN that a command begins with."""
    words = re.sub(r"^\./", "", command).split()
    fitting = [name for name in NOT_RUN if words[:len(name.split())] == name.split()]
    return max(fitting, key=len, default=None)


def reason_not_to_run(command):
    return NOT_RUN.get(beginning_of(command))


def options_of(command):
    return re.findall(r"(?<= )--?[a-z][a-z0-9-]*", command.split("#")[0])


def complaint_about_options(command, known):
    unknown = [option for option in options_of(command) if not re.search(rf"(?<![\w-]){option}\b", known)]
    return f"{command.split()[0]} does not know {unknown[0]}" if unknown else None


def complaint_about_script(command):
    """What is wrong with a command that is not run: of a script, or of a program by its own help. Of a program
    that starts one of ours the words from there on count."""
    started = re.search(r" ((hxhost|hxmidi) .*)", command)
    if started:
        return complaint_about_program(started.group(1))
    name = command.split()[0]
    program = BUILD / "bin" / name
    if "/" not in name and program.exists():
        asked = subprocess.run([program, "--help"], capture_output=True, text=True, check=True, timeout=60)
        return complaint_about_options(command, asked.stdout)
    if not os.access(SOURCE / name, os.X_OK):
        return f"{name} is not in the tree"
    return complaint_about_options(command, (SOURCE / name).read_text(encoding="utf-8"))


def complaint_about_program(command):
    """What is wrong with words and options of one of our programs, by its own help."""
    words = list(itertools.takewhile(re.compile("[a-z]+$").match, command.split()))
    asked = subprocess.run([BUILD / "bin" / words[0], *words[1:], "--help"],
                           capture_output=True, text=True, check=False, timeout=60)
    if f"Usage: {' '.join(words)} " not in asked.stdout:
        return "is no command"
    return complaint_about_options(command, asked.stdout)


def check_sentences(document, report):
    for command in commands_in_sentences(document):
        if re.match(r"(\./)?(scripts/|\.ci/)", command):
            report(document, command, complaint_about_script(command))
        elif command.startswith(("hxhost ", "hxmidi ")):
            report(document, command, complaint_about_program(command))


class Scratch:
    """A copy of the project that looks as if it had been built."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder).resolve() / "project"
        for name in listed_files():
            target = self.folder / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(SOURCE / name, target)
        self.git("init", "--quiet")
        self.git("add", "--all")
        self.git("-c", "user.name=scratch", "-c", "user.email=scratch@localhost", "commit", "--quiet", "-m", "copy")

    def git(self, *words):
        subprocess.run(["git", *words], cwd=self.folder, check=True)

    def clean(self):
        self.git("clean", "-fdxq")
        self.git("checkout", "--quiet", ".")
        (self.folder / "build").mkdir()
        (self.folder / "build/release").symlink_to(BUILD)

    def run(self, command):
        """What is wrong with how it ended."""
        expected = EXIT_CODE.search(command)
        packages = self.folder / "build/kit" / os.environ.get("HX_LIBDIR", "lib") / "pkgconfig"
        environment = dict(os.environ, PKG_CONFIG_PATH=str(packages),
                           PATH=f"{BUILD / 'bin'}{os.pathsep}{os.environ['PATH']}")
        words = ["bash", "-c", with_names_of(os.environ.get("HX_QT"), command)]
        ended = subprocess.run(words, cwd=self.folder, env=environment, text=True, stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=600, check=False)
        wanted = int(expected.group(1)) if expected else 0
        if ended.returncode == wanted:
            return None
        return f"ended with {ended.returncode}, not {wanted}:\n{ended.stdout[-2000:]}"


def check_document(scratch, document, report):
    commands = commands_of(document)
    if not commands or document in RUN_ELSEWHERE:
        return 0
    run = 0
    scratch.clean()
    if document in GIVEN:
        (scratch.folder / GIVEN[document]).write_bytes(bytes(range(200)))
    for command in commands:
        if reason_not_to_run(command):
            report(document, command, complaint_about_script(command))
        else:
            run += 1
            report(document, command, scratch.run(command))
    print(f"{document}: {run} of {len(commands)} commands run", flush=True)
    return run


def check_console_blocks(document, report):
    examples = (SOURCE / "tests/hxmidi/DocumentExamplesTest.cpp").read_text(encoding="utf-8")
    text = (SOURCE / document).read_text(encoding="utf-8")
    shows_output = any(language == "console" for language, _ in blocks(text))
    is_manual_of_its_own = document.endswith(".1") and not commands_of(document)
    if (shows_output or is_manual_of_its_own) and f'"{document}"' not in examples:
        report(document, "its examples", "are in no test")


def check_lists(documents, report):
    """Nothing is left out for a reason that has gone."""
    used = {beginning_of(command) for document in documents
            for command in commands_of(document) + commands_in_sentences(document)}
    for name in NOT_RUN.keys() - used:
        report("NOT_RUN", name, "stands in no document")
    for document, test in RUN_ELSEWHERE.items():
        if not commands_of(document) or not (SOURCE / test).exists():
            report("RUN_ELSEWHERE", document, f"holds no command, or there is no {test}")


def main():
    if sys.platform == "darwin":
        print("SKIPPED: the documents print the names of libraries on Linux")
        return 77
    failures = []

    def report(document, command, problem):
        if problem:
            failures.append(f"{document}: {command}\n  {problem}")

    every = [name for name in listed_files() if name.endswith((".md", ".1"))]
    documents = sys.argv[3:] or every
    run = 0
    with tempfile.TemporaryDirectory() as folder:
        scratch = Scratch(folder)
        for document in documents:
            check_console_blocks(document, report)
            check_sentences(document, report)
            run += check_document(scratch, document, report)
    check_lists(every, report)
    print("\n".join(failures) or f"{run} commands of {len(documents)} documents run as printed")
    return 1 if failures or not run else 0


if __name__ == "__main__":
    sys.exit(main())
