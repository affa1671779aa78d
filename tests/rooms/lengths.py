"""Measures the files and functions of product and tests: the longest of each, and the middle one.

usage: lengths.py SOURCE

A function is measured from the line of its opening brace to that of its closing one, these two left out,
as the formatter sets them; one on a single line has one line. Benchmarks are neither product nor tests.
"""
import pathlib
import re
import statistics
import subprocess
import sys

LONGEST_FILE = 400
LONGEST_FUNCTION = 60
MEDIAN_FUNCTION = 8
# A brace on a line of its own opens a function; before it are its parameters, or its initializers.
BODY = re.compile(r"^( *)\{\n(.*?)^\1\}[;,)]*$", re.MULTILINE | re.DOTALL)
ONE_LINE = re.compile(r"^ *[^/\n]*\)(?: const)?(?: noexcept)?(?: override)?(?: final)? \{ .*\}$", re.MULTILINE)


def functions(text):
    """Of each function the line where it begins, and how many lines it has."""
    for match in BODY.finditer(text):
        yield text.count("\n", 0, match.start()) + 1, match[2].count("\n")
    for match in ONE_LINE.finditer(text):
        yield text.count("\n", 0, match.start()) + 1, 1


def complaints(files):
    """All that is too long in the files, given as a map from path to text."""
    lengths = []
    for path, text in sorted(files.items()):
        lines = text.count("\n")
        if lines > LONGEST_FILE:
            yield f"{path}: {lines} lines; a file has at most {LONGEST_FILE}"
        if not path.endswith((".cpp", ".h")):
            continue
        for line, length in functions(text):
            lengths.append(length)
            if length > LONGEST_FUNCTION:
                yield f"{path}:{line}: a function of {length} lines; at most {LONGEST_FUNCTION}"
    if lengths and statistics.median(lengths) > MEDIAN_FUNCTION:
        yield f"the middle function has {statistics.median(lengths):g} lines; at most {MEDIAN_FUNCTION}"


def figures(files):
    lengths = [length for path, text in files.items() if path.endswith((".cpp", ".h"))
               for _, length in functions(text)]
    return (f"{len(files)} files, the longest of {max(text.count(chr(10)) for text in files.values())} lines; "
            f"{len(lengths)} functions, the longest of {max(lengths)} lines, the middle one of "
            f"{statistics.median(lengths):g}")


def read_files(source):
    words = ["git", "-C", source, "ls-files", "-z", "--cached", "--others", "--exclude-standard",
             "*.h", "*.cpp", "*.mm", "*.c", "*.py"]
    names = subprocess.run(words, capture_output=True, check=True).stdout.decode().split("\0")
    places = {name: pathlib.Path(source) / name for name in names if name and not name.startswith("bench/")}
    return {name: place.read_text(encoding="utf-8") for name, place in places.items() if place.is_file()}


def main():
    files = read_files(sys.argv[1])
    found = list(complaints(files))
    print("\n".join(found) or figures(files))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
