"""Reads the state file of a simulated product, from its description in docs/formats/simulated-product.md and
nothing else: no code of the host or of the product."""

import binascii
import dataclasses
import re

CODE_BYTES_A_LINE = 32


class Damaged(Exception):
    """The file is not a whole state file; the text says where."""


@dataclasses.dataclass
class State:
    kind: str
    valid: bool
    version: str
    crc: str
    code: bytes


def crc_text(data):
    return f"{binascii.crc32(data):08X}"


def expect(holds, what):
    if not holds:
        raise Damaged(what)


def field(line, name, pattern):
    found = re.fullmatch(f"{name} ({pattern})", line)
    expect(found, f"expected \"{name} {pattern}\", found \"{line}\"")
    return found.group(1)


def whole(text):
    """(state, what follows) of the beginning of a file."""
    end = re.search(r"^end ([0-9A-F]{8})\n", text, re.MULTILINE)
    expect(end, "there is no \"end\"")
    before = text[:end.start()]
    expect(crc_text(before.encode("ascii")) == end.group(1), "the checksum of the file does not fit")
    lines = before.splitlines()
    expect(len(lines) >= 6 and lines[0] == "simulated product state 1", "it does not begin as a state file")
    state = State(field(lines[1], "kind", "fwu|fwd"), field(lines[2], "valid", "yes|no") == "yes", "", "", b"")
    length = int(field(lines[3], "length", r"\d+"))
    state.version = field(lines[4], "version", r"\d\.\d\.\d\.\d|-")
    state.crc = field(lines[5], "crc", "[0-9A-F]{8}|-")
    code_lines = lines[6:]
    if code_lines and code_lines[0].startswith("serial "):
        field(code_lines.pop(0), "serial", "[0-9A-F]{16}")
    for number, line in enumerate(code_lines):
        address, _, code = line.partition(" ")
        expect(int(address, 16) == number * CODE_BYTES_A_LINE, f"address {address} is out of its turn")
        state.code += bytes.fromhex(code)
    expect(len(state.code) == length, f"{len(state.code)} bytes of code instead of {length}")
    return state, text[end.end():]


def change(state, line):
    """The state after a line of change."""
    content, _, check = line.rpartition(" ")
    expect(crc_text(content.encode("ascii")) == check, f"the checksum of the change \"{line}\" does not fit")
    words = content.split(" ")
    expect(len(words) == 7 and words[0] == "change", f"\"{line}\" is not a change")
    address = int(words[5], 16)
    expect(address <= len(state.code), f"the change at {words[5]} leaves a hole")
    code = b"" if words[6] == "-" else bytes.fromhex(words[6])
    return State(words[1], words[2] == "yes", words[3], words[4], state.code[:address] + code)


def read(text):
    """The state that a file holds. A last line without its end does not count."""
    state, rest = whole(text)
    lines = rest.split("\n")[:-1]
    for line in lines:
        state = change(state, line)
    return state


def read_file(path):
    with open(path, encoding="ascii", newline="") as file:
        return read(file.read())
