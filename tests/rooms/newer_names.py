"""No source file of the product names anything that Qt's documentation calls newer than the oldest Qt we build with.

usage: newer_names.py SOURCE
       newer_names.py --write INDEX...    writes the table anew, from the .index files of Debian's
                                          qtbase5-doc-html and qtsvg5-doc-html

The table, newer_names.txt, has a name and the version that brought it. A name that no older part of Qt has
stands alone: a type is found wherever it stands, a member where it is called or taken. A name that older
classes have too stands with its scope, and is found where it is written with that scope.

What this cannot see: a new overload of an old name, and a new member whose name an older class has, called on
an object. Where these are functions in Qt's libraries, newer_symbols.py finds them.
"""
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

OLDEST = (5, 12)
TABLE = pathlib.Path(__file__).with_suffix(".txt")
PRODUCT = ("mididata/", "deviceinterface/", "plugin/", "simulator/", "host/", "contract/", "ports/", "apps/",
           "examples/", "qt/")
MODULES = ("qtcore", "qtdbus", "qtgui", "qtsvg", "qttestlib", "qtwidgets")
SCOPES = ("class", "struct", "namespace")  # an enumerator is mostly named without its enumeration
NAMED = SCOPES + ("enum", "function", "typedef", "property", "value", "macro", "variable")
# What is not code of ours: comments, texts.
OTHER = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.DOTALL)
NUMBER = re.compile(r"(\d+)\.(\d+)")


def version_of(text):
    return tuple(int(part) for part in NUMBER.search(text).groups())


class Names:
    """Every documented name, with its scope and without, and the oldest version that has it."""

    def __init__(self):
        self.first = {}
        self.first_alone = {}
        self.enumerators = set()

    def add(self, element, scope=(), version=(4, 0)):
        if NUMBER.search(element.get("since", "")):
            version = version_of(element.get("since"))
        name = element.get("name", "").split("::")[-1]
        if element.tag in NAMED and re.fullmatch(r"\w+", name):
            path = (*scope, name)
            self.first[path] = min(version, self.first.get(path, version))
            self.first_alone[name] = min(version, self.first_alone.get(name, version))
            if element.tag == "value":
                self.enumerators.add(path)
            if element.tag in SCOPES:
                scope = path
        for child in element:
            self.add(child, scope, version)

    def newer(self):
        """The lines of the table; what lies in a scope that is in it needs no line of its own."""
        for path, version in sorted(self.first.items()):
            if version <= OLDEST or any(self.first.get(path[:end], OLDEST) > OLDEST for end in range(1, len(path))):
                continue
            if self.first_alone[path[-1]] > OLDEST and path not in self.enumerators:
                path, version = path[-1:], self.first_alone[path[-1]]
            elif len(path) == 1:
                continue
            yield f"{'::'.join(path)} {version[0]}.{version[1]}"


def write_table(places):
    names = Names()
    for place in map(pathlib.Path, places):
        if place.stem in MODULES:
            names.add(ElementTree.parse(place).getroot())
    lines = sorted(set(names.newer()))
    TABLE.write_text("\n".join(lines) + "\n", encoding="utf-8")
    print(f"{TABLE.name}: {len(lines)} names")


def pattern_of(name):
    if "::" in name or not name[0].islower() or name.startswith("q"):
        return r"\b" + name + r"\b"
    return r"(?:\.|->|::)\s*" + name + r"\b"


def complaints(files, table):
    """All that is wrong with the files, given as a map from path to text; the table maps names to versions."""
    oldest = ".".join(map(str, OLDEST))
    for path, text in sorted(files.items()):
        if not path.startswith(PRODUCT):
            continue
        code = OTHER.sub(lambda other: "\n" * other.group().count("\n"), text)
        words = set(re.findall(r"\w+", code))
        for name in (name for name in table if name.split("::")[-1] in words):
            for match in re.finditer(pattern_of(name), code):
                line = code.count("\n", 0, match.start()) + 1
                yield f"{path}:{line}: {name} came with Qt {table[name]}; expected what Qt {oldest} has"


def read_table():
    return dict(line.split() for line in TABLE.read_text(encoding="utf-8").splitlines())


def main():
    if sys.argv[1] == "--write":
        return write_table(sys.argv[2:])
    source = pathlib.Path(sys.argv[1])
    words = ["git", "-C", source, "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.cpp", "*.mm"]
    names = subprocess.run(words, capture_output=True, check=True, text=True).stdout.splitlines()
    files = {name: (source / name).read_text(encoding="utf-8") for name in names
             if name.startswith(PRODUCT) and (source / name).is_file()}
    table = read_table()
    found = list(complaints(files, table))
    print("\n".join(found) or f"{len(files)} files name none of the {len(table)} things that are newer")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
