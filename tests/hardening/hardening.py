"""Every program and the plugin, as readelf shows them: an address that is drawn anew each time, tables that are
read-only once the program runs, a stack that holds no code and is guarded, and a plugin that can be loaded.

ctest gives: HX_BINARIES, with colons between; HX_BUILD, HX_TYPE, HX_HARDENS_ALL, CXX,
READELF.
"""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

OPTIMISED = ("Release", "RelWithDebInfo", "MinSizeRel")
TYPE = os.environ["HX_TYPE"]
FLAGS = ["-fstack-protector-strong", "-fstack-clash-protection", "-D_FORTIFY_SOURCE=3"]
if not os.environ["HX_HARDENS_ALL"]:  # the compiler or the C library is older
    FLAGS = ["-D_FORTIFY_SOURCE=2"]


def findings(binary, is_plugin, is_guarded):
    """What the binary lacks, in words."""
    shown = subprocess.run([os.environ["READELF"], "--wide", "--file-header", "--segments", "--dynamic", "--dyn-syms",
                            binary], capture_output=True, text=True, check=True).stdout
    lacks = {
        "position-independent": not re.search(r"^ *Type: +DYN ", shown, re.M),
        "PIE": not is_plugin and not re.search(r"\(FLAGS_1\).*\bPIE\b", shown),
        "RELRO": not re.search(r"^ *GNU_RELRO ", shown, re.M),
        "BIND_NOW": not re.search(r"\((FLAGS|FLAGS_1)\).*\b(BIND_NOW|NOW)\b", shown),
        "a stack without code": not re.search(r"^ *GNU_STACK .* RW +0x", shown, re.M),
        "code that is not written to": "(TEXTREL)" in shown,
        "dlopen": is_plugin and "NOOPEN" in shown,
        "a guarded stack": is_guarded and "__stack_chk_fail" not in shown,
    }
    return [what for what, is_lacking in lacks.items() if is_lacking]


class Hardening(unittest.TestCase):
    def test_every_binary_is_hardened(self):
        for binary in os.environ["HX_BINARIES"].split(":"):
            with self.subTest(binary=binary):
                self.assertEqual(findings(binary, binary.endswith(".so"), TYPE in OPTIMISED), [])

    def test_every_file_is_compiled_with_it(self):
        """What a binary does not show: the bounds that are checked, and the stack that grows page by page."""
        commands = json.loads((pathlib.Path(os.environ["HX_BUILD"]) / "compile_commands.json").read_text("utf-8"))
        self.assertGreater(len(commands), 10)
        for command in commands if TYPE in OPTIMISED else []:
            words = command["command"].split()
            for flag in FLAGS:
                self.assertIn(flag, words, command["file"])

    def test_what_is_missing_is_found(self):
        without = ["-U_FORTIFY_SOURCE", "-fno-stack-protector", "-Wl,-z,norelro", "-Wl,-z,lazy", "-Wl,-z,execstack"]
        self.assertEqual(self.built([*without, "-no-pie", "-fno-pie"], is_plugin=False),
                         ["position-independent", "PIE", "RELRO", "BIND_NOW", "a stack without code",
                          "a guarded stack"])
        self.assertEqual(self.built([*without, "-shared", "-fPIC", "-Wl,-z,nodlopen"], is_plugin=True),
                         ["RELRO", "BIND_NOW", "a stack without code", "dlopen", "a guarded stack"])

    def built(self, flags, is_plugin):
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder) / "source.cpp"
            source.write_text("int main() { volatile char text[64] = {}; return text[3]; }\n", "ascii")
            binary = source.with_suffix(".out")
            subprocess.run([os.environ["CXX"], source, "-o", binary, *flags], check=True)
            return findings(binary, is_plugin, is_guarded=True)


if __name__ == "__main__":
    unittest.main()
