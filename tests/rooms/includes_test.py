"""Tests of includes.py: each thing that it must find, in a project of a few files."""
import unittest

import includes

TABLE = """# Contributing

| Room | May use |
| --- | --- |
| `base` | nothing of ours |
| `host/bus` | `base` |
| `host/image` | `base`, `host/bus` |
| `ports` | `host`, RtMidi |
| `tests`, `bench` | any room |

## Style
"""


def project(**changes):
    files = {
        "CONTRIBUTING.md": TABLE,
        "base/README.md": "# base\n\nMay use: nothing of ours.\n",
        "host/bus/README.md": "# bus\n\nMay use: `base`.\n",
        "host/image/README.md": "# image\n\nMay use: `base`, `host/bus`.\n",
        "ports/README.md": "# ports\n\nMay use: `host`, RtMidi.\n",
        "tests/README.md": "# tests\n",
        "bench/README.md": "# bench\n",
        "base/Hex.h": "#include <QString>\n",
        "host/bus/Bus.h": '#include "base/Hex.h"\n',
        "host/image/Image.h": "",
        "ports/Port.cpp": '#include "host/bus/Bus.h"\n#include <RtMidi.h>\n',
        "tests/PortTest.cpp": '#include "ports/Port.h"\n#include <gtest/gtest.h>\n',
        "ports/Port.h": "",
    }
    files.update({path.replace("__", "/") + ".h": text for path, text in changes.items()})
    return files


class Includes(unittest.TestCase):
    def found(self, files):
        return includes.complaints(files)

    def test_a_project_that_follows_its_table_has_no_finding(self):
        self.assertEqual(self.found(project()), [])

    def test_an_include_against_the_arrow_is_found(self):
        self.assertEqual(self.found(project(base__Wrong='// one\n#include "host/bus/Bus.h"\n')),
                         ["base/Wrong.h:2: host/bus/Bus.h: base may not use host/bus"])

    def test_an_include_between_two_rooms_of_a_folder_is_found(self):
        self.assertEqual(self.found(project(host__bus__Wrong='#include "host/image/Image.h"\n')),
                         ["host/bus/Wrong.h:1: host/image/Image.h: host/bus may not use host/image"])

    def test_an_include_inside_a_condition_is_found(self):
        text = '#ifdef Q_OS_MACOS\n#  include "ports/Port.h"\n#endif\n'
        self.assertEqual(self.found(project(base__Wrong=text)),
                         ["base/Wrong.h:2: ports/Port.h: base may not use ports"])

    def test_a_folder_stands_for_the_rooms_in_it(self):
        self.assertEqual(self.found(project(ports__Right='#include "host/image/Image.h"\n')), [])

    def test_what_a_used_room_may_use_is_not_inherited(self):
        self.assertEqual(self.found(project(ports__Wrong='#include "base/Hex.h"\n')),
                         ["ports/Wrong.h:1: base/Hex.h: ports may not use base"])

    def test_a_product_that_includes_a_test_is_found(self):
        files = project(ports__Wrong='#include "tests/Support.h"\n', tests__Support="")
        self.assertEqual(self.found(files), ["ports/Wrong.h:1: tests/Support.h: ports may not use tests"])

    def test_a_library_in_another_room_is_found(self):
        self.assertEqual(self.found(project(base__Wrong="#include <RtMidi.h>\n")),
                         ["base/Wrong.h:1: RtMidi.h: base may not use RtMidi"])

    def test_a_header_that_is_not_there_is_found(self):
        self.assertEqual(self.found(project(ports__Wrong='#include "host/Gone.h"\n')),
                         ["ports/Wrong.h:1: host/Gone.h: there is no such file"])

    def test_a_header_beside_the_file_and_one_made_by_moc_are_no_finding(self):
        self.assertEqual(self.found(project(bench__A='#include "B.h"\n#include "A.moc"\n', bench__B="")), [])

    def test_a_folder_without_a_row_is_found(self):
        self.assertEqual(self.found(project(cellar__Wine="")), ["cellar/Wine.h: is in no room of the table"])

    def test_a_row_that_uses_a_room_further_down_is_found(self):
        files = project()
        files["CONTRIBUTING.md"] = TABLE.replace("| `base` | nothing of ours |", "| `base` | `ports` |")
        files["base/README.md"] = "# base\n\nMay use: `ports`.\n"
        self.assertEqual(self.found(files),
                         ["CONTRIBUTING.md: `base` may use `ports`, which no row further up names"])

    def test_a_document_without_the_table_is_found(self):
        files = {"CONTRIBUTING.md": "# Contributing\n"}
        self.assertEqual(self.found(files), [f"CONTRIBUTING.md: there is no table with the heading {includes.HEADING}"])

    def test_a_room_without_a_readme_is_found(self):
        files = project()
        del files["host/bus/README.md"]
        self.assertEqual(self.found(files), ["host/bus: has no README.md"])

    def test_a_readme_that_says_other_than_the_table_is_found(self):
        files = project()
        files["ports/README.md"] = "# ports\n\nMay use: `host`.\n"
        self.assertEqual(self.found(files), [
            "ports/README.md: does not say what the table says: May use: `host`, RtMidi."])

    def test_a_long_readme_is_found(self):
        files = project()
        files["bench/README.md"] = "line\n" * 26
        self.assertEqual(self.found(files), ["bench/README.md: 26 lines; a room's README has at most 25"])

    def test_a_product_that_the_host_names_is_found(self):
        self.assertEqual(self.found(project(host__bus__Wrong="// one\nconst char maker[] = \"00 6B 2D\";\n")),
                         ["host/bus/Wrong.h:2: names a product: 6B 2D"])
        self.assertEqual(self.found(project(tests__Right="0x300041\n")), [])


if __name__ == "__main__":
    unittest.main()
