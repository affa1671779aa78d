"""Only one file of the product asks for Qt's version, and not often; what it knows is not asked elsewhere.

usage: qt_versions.py SOURCE
"""
import pathlib
import re
import subprocess
import sys

HEADER = "qt/Versions.h"
MOST = 5
PRODUCT = ("mididata/", "deviceinterface/", "plugin/", "simulator/", "host/", "contract/", "ports/", "apps/",
           "examples/", "qt/")
CONDITION = re.compile(r"^[ \t]*#[ \t]*(?:el)?if.*\bQT_VERSION\w*", re.MULTILINE)


def complaints(files):
    """All that is wrong with the files, given as a map from path to text."""
    asked = {path: len(CONDITION.findall(text)) for path, text in files.items() if path.startswith(PRODUCT)}
    found = [f"{path}: asks for Qt's version; only {HEADER} may" for path, count in sorted(asked.items())
             if count and path != HEADER]
    if not 1 <= asked.get(HEADER, 0) <= MOST:
        found.append(f"{HEADER}: asks {asked.get(HEADER, 0)} times for Qt's version; expected 1 to {MOST}")
    return found


def main():
    source = pathlib.Path(sys.argv[1])
    words = ["git", "-C", source, "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.cpp", "*.mm"]
    names = subprocess.run(words, capture_output=True, check=True, text=True).stdout.splitlines()
    files = {name: (source / name).read_text(encoding="utf-8") for name in names if (source / name).is_file()}
    found = complaints(files)
    print("\n".join(found) or f"{len(files)} files; Qt's version is asked in {HEADER} alone")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
