"""The commands, options and arguments of a program, read from its help."""
import dataclasses
import pathlib
import re
import subprocess
import typing

DESCRIPTION_AT = 30  # the column of the help in which descriptions begin


@dataclasses.dataclass(frozen=True)
class Option:
    flags: tuple
    argument: str  # empty for a flag
    default: str
    excluded: tuple
    repeatable: bool
    description: str
    group: str

    @property
    def long(self):
        return self.flags[-1]

    @property
    def choices(self):
        """The values of an argument that is written as "a|b|c"."""
        return self.argument.split("|") if re.fullmatch(r"[a-z0-9]+(\|[a-z0-9]+)+", self.argument) else []

    @property
    def headline(self):
        return re.split(r"[;:(]", self.description)[0].strip().replace("'", "")


@dataclasses.dataclass(frozen=True)
class Argument:
    name: str
    repeatable: bool


class Command(typing.NamedTuple):
    words: tuple
    headline: str
    options: list
    arguments: list
    below: list  # names of the commands in it
    help: str


def rows(text):
    """(group, names, description) of each row of the help's sections."""
    group, pending = "", ""
    for line in text.splitlines():
        if re.fullmatch(r"[A-Z][a-z]+:", line):
            group = line[:-1]
        elif line.startswith(" " * DESCRIPTION_AT) and pending:
            yield group, pending, line.strip()
            pending = ""
        elif re.match(r"  \S", line) and group:
            names, description = line[:DESCRIPTION_AT].strip(), line[DESCRIPTION_AT:].strip()
            if len(line) > DESCRIPTION_AT and line[DESCRIPTION_AT - 1] == " ":
                yield group, names, description
            else:
                pending = line.strip()
        elif line:
            group = ""


def option_of(group, names, description):
    before, _, excluded = names.partition(" Excludes: ")
    flags, _, rest = before.partition(" ")
    argument, _, default = rest.replace(" REQUIRED", "").replace(" ...", "").partition("=")
    argument = argument.split(":")[0]
    return Option(tuple(flags.split(",")), argument, default, tuple(excluded.split()),
                  rest.endswith("..."), description.rstrip("."), group)


class Program:
    def __init__(self, place):
        self.place = pathlib.Path(place).resolve()
        self.name = self.place.name
        self.commands = list(self._read(()))

    def _help(self, words):
        return subprocess.run([self.place, *words, "--help"], capture_output=True, text=True, timeout=60,
                              check=True).stdout

    def _read(self, words):
        """The command of these words, and all below it."""
        text = self._help(words)
        table = list(rows(text))
        options = [option_of(*row) for row in table if row[1].startswith("-")]
        arguments = [Argument(names.split()[0], names.endswith("...")) for group, names, _ in table
                     if group == "Positionals"]
        below = [names for group, names, _ in table if group == "Subcommands"]
        yield Command(words, text.splitlines()[0], options, arguments, below, text)
        for name in below:
            yield from self._read((*words, name))

    def shared_options(self):
        """The options that several commands have alike, and the words of these commands."""
        having = {}
        for command in self.commands:
            for option in command.options:
                having.setdefault(option, []).append(command.words)
        return {option: commands for option, commands in having.items() if len(commands) > 1}

    def faults(self):
        """What the simulated product can be made to do."""
        found = [re.findall(r"^([a-z-]+)(?:\[:WHICH)", command.help, re.MULTILINE) for command in self.commands]
        return max(found, key=len)

    def field_types(self):
        """The types of typed values, as the help of their command lists them."""
        for command in self.commands:
            listed = re.search(r"^Types of fields:\n((?:  .*\n)+)", command.help, re.MULTILINE)
            if listed:
                names = re.findall(r"^  (\S+(?: \S+)*?)  ", listed.group(1), re.MULTILINE)
                return " ".join(names).split()
        return []
