"""Holds every include of the project against the table of rooms in CONTRIBUTING.md, and the README of
every room against its row. Nothing in the host and in the programs may name a byte of one product.

usage: includes.py SOURCE

A row names rooms and what their files may include: rooms further up in the table (a folder stands for
every room in it) and libraries. A file belongs to the longest room that its path begins with.
"""
import pathlib
import re
import subprocess
import sys

DOCUMENT = "CONTRIBUTING.md"
HEADING = "| Room | May use |"
ANY_ROOM = "any room"
LIBRARIES = {"CLI/": "CLI11", "RtMidi.h": "RtMidi", "sodium.h": "libsodium", "gtest/": "GoogleTest",
             "gmock/": "GoogleTest"}
INCLUDE = re.compile(r'^ *# *include +(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
LONGEST_README = 25
PRODUCT_NEUTRAL = ("host/", "apps/")  # they learn the product from its plugin
PRODUCTS_BYTES = re.compile("6B.?2D|300041")
PROJECTS = "examples/"  # whose READMEs are for whoever copies them


class Table:
    """Rooms in their order, and for each the cell that says what it may use."""

    def __init__(self, document):
        self.cells = {}
        self.complaints = []
        rows = document.partition(HEADING)[2].partition("\n\n")[0].splitlines()[2:]
        if not rows:
            self.complaints.append(f"{DOCUMENT}: there is no table with the heading {HEADING}")
        for row in rows:
            names, cell = (part.strip() for part in row.strip("| ").split("|"))
            self.check_order(names, cell)
            self.cells.update({name: cell for name in re.findall(r"`([^`]+)`", names)})

    def check_order(self, names, cell):
        for used in re.findall(r"`([^`]+)`", cell):
            if not any(is_within(room, used) for room in self.cells):
                self.complaints.append(f"{DOCUMENT}: {names} may use `{used}`, which no row further up names")

    def room_of(self, path):
        return max((room for room in self.cells if is_within(path, room)), key=len, default=None)

    def allows_room(self, room, used):
        cell = self.cells[room]
        names = re.findall(r"`([^`]+)`", cell)
        return cell == ANY_ROOM or any(is_within(used, name) for name in names)

    def allows_library(self, room, library):
        cell = self.cells[room]
        return cell == ANY_ROOM or library in re.sub(r"`[^`]+`", "", cell).replace(",", "").split()


def is_within(path, folder):
    return path == folder or path.startswith(folder + "/")


def complaint_about_library(table, room, header):
    for beginning, library in LIBRARIES.items():
        if header.startswith(beginning) and not table.allows_library(room, library):
            return f"{room} may not use {library}"
    return None


def complaint_about_header(table, path, header, files):
    """What is wrong with a file's include of a header of the project."""
    beside = str(pathlib.PurePosixPath(path).parent / header)
    if header not in files:
        is_made = header.endswith(".moc")
        return None if is_made or beside in files else "there is no such file"
    room, used = table.room_of(path), table.room_of(header)
    if used is None:
        return "is in no room of the table"
    return None if used == room or table.allows_room(room, used) else f"{room} may not use {used}"


def complaints_about_includes(table, files):
    for path, text in sorted(files.items()):
        if not path.endswith((".h", ".cpp", ".mm")):
            continue
        room = table.room_of(path)
        if room is None:
            yield f"{path}: is in no room of the table"
            continue
        for match in INCLUDE.finditer(text):
            ours, others = match.groups()
            found = (complaint_about_header(table, path, ours, files) if ours
                     else complaint_about_library(table, room, others))
            if found:
                line = text.count("\n", 0, match.start()) + 1
                yield f"{path}:{line}: {ours or others}: {found}"


def complaints_about_readmes(table, files):
    for room, cell in table.cells.items():
        text = files.get(f"{room}/README.md")
        if text is None:
            yield f"{room}: has no README.md"
        elif cell != ANY_ROOM and f"\nMay use: {cell}.\n" not in text:
            yield f"{room}/README.md: does not say what the table says: May use: {cell}."
    for path, text in sorted(files.items()):
        is_room = path.endswith("/README.md") and not path.startswith(PROJECTS)
        if is_room and text.count("\n") > LONGEST_README:
            yield f"{path}: {text.count(chr(10))} lines; a room's README has at most {LONGEST_README}"


def complaints_about_products(files):
    for path, text in sorted(files.items()):
        for match in PRODUCTS_BYTES.finditer(text) if path.startswith(PRODUCT_NEUTRAL) else ():
            yield f"{path}:{text.count(chr(10), 0, match.start()) + 1}: names a product: {match[0]}"


def complaints(files):
    """All that is wrong with the files, given as a map from path to text."""
    table = Table(files[DOCUMENT])
    return [*table.complaints, *complaints_about_includes(table, files), *complaints_about_readmes(table, files),
            *complaints_about_products(files)]


def read_files(source):
    words = ["git", "-C", source, "ls-files", "-z", "--cached", "--others", "--exclude-standard",
             "*.h", "*.cpp", "*.mm", "*.md"]
    names = subprocess.run(words, capture_output=True, check=True).stdout.decode().split("\0")
    places = {name: pathlib.Path(source) / name for name in names if name}
    return {name: place.read_text(encoding="utf-8") for name, place in places.items() if place.is_file()}


def main():
    files = read_files(sys.argv[1])
    found = complaints(files)
    print("\n".join(found) or f"{len(files)} files hold to the table")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
