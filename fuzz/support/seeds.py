"""The seeds of a fuzz target: a text file with one input a line (its name, a blank, its bytes in
hex; a name alone is the empty input), sorted by name.

usage: seeds.py unpack FILE FOLDER    makes FOLDER anew, with one file for each input
       seeds.py pack FOLDER FILE      writes the files of FOLDER as such a text file

A name of twelve hex digits is the beginning of the input's SHA-1: a fuzzer made it. Such an input may
go when others reach the same code; one with any other name stays.
"""
import hashlib
import pathlib
import re
import shutil
import sys

MADE_BY_FUZZER = re.compile(r"[0-9a-f]{12}$")


def read(file):
    lines = pathlib.Path(file).read_text(encoding="ascii").splitlines()
    return {name: bytes.fromhex(digits) for name, _, digits in (line.partition(" ") for line in lines)}


def unpack(file, folder):
    folder = pathlib.Path(folder)
    shutil.rmtree(folder, ignore_errors=True)
    for name, unit in read(file).items():
        place = folder / ("found" if MADE_BY_FUZZER.match(name) else "named")
        place.mkdir(parents=True, exist_ok=True)
        (place / name).write_bytes(unit)


# libFuzzer names a file after the whole SHA-1 of what is in it.
def short_name(name, unit):
    return hashlib.sha1(unit).hexdigest()[:12] if re.fullmatch("[0-9a-f]{40}", name) else name


def pack(folder, file):
    units = {}
    for path in pathlib.Path(folder).rglob("*"):
        if path.is_file():
            unit = path.read_bytes()
            units[short_name(path.name, unit)] = unit
    lines = [f"{name} {units[name].hex()}".rstrip() + "\n" for name in sorted(units)]
    pathlib.Path(file).write_text("".join(lines), encoding="ascii")


if __name__ == "__main__":
    if len(sys.argv) != 4 or sys.argv[1] not in ("unpack", "pack"):
        sys.exit(__doc__)
    {"unpack": unpack, "pack": pack}[sys.argv[1]](*sys.argv[2:])
