#!/usr/bin/env python3
"""Tests of statefile.py: the example of the page that it was written from, and damaged files.

usage: statefile_test.py PAGE
"""

import pathlib
import re
import sys
import unittest

import statefile

PAGE = pathlib.Path(sys.argv.pop()).read_text(encoding="utf-8")
EXAMPLE = re.search(r"^simulated product state 1\n.*?^end [0-9A-F]{8}\n", PAGE, re.MULTILINE | re.DOTALL).group(0)
CHANGE = re.search(r"^change fwu yes 1\.0\.2\.4 .*\n", PAGE, re.MULTILINE).group(0)


class StateFile(unittest.TestCase):
    def test_the_example_of_the_page(self):
        self.assertEqual(statefile.read(EXAMPLE),
                         statefile.State("fwu", True, "1.0.2.4", "CBF43926", b"123456789"))

    def test_the_change_of_the_page(self):
        self.assertEqual(statefile.read(EXAMPLE + CHANGE).code, b"123456788")

    def test_an_unfinished_change_does_not_count(self):
        self.assertEqual(statefile.read(EXAMPLE + CHANGE[:-1]).code, b"123456789")
        self.assertEqual(statefile.read(EXAMPLE + CHANGE + "change fwu").code, b"123456788")

    def test_each_damaged_byte_is_noticed(self):
        for at, letter in enumerate(EXAMPLE):
            if letter == "\n":
                continue
            with self.assertRaises((statefile.Damaged, ValueError), msg=f"byte {at}"):
                statefile.read(EXAMPLE[:at] + chr(ord(letter) ^ 1) + EXAMPLE[at + 1:])

    def test_a_file_that_is_cut_off_is_damaged(self):
        for size in range(len(EXAMPLE)):
            with self.assertRaises(statefile.Damaged, msg=f"{size} bytes"):
                statefile.read(EXAMPLE[:size])

    def test_a_damaged_change_is_noticed(self):
        with self.assertRaises(statefile.Damaged):
            statefile.read(EXAMPLE + CHANGE.replace("000008 38", "000008 39"))


if __name__ == "__main__":
    unittest.main()
