#!/usr/bin/env python3
"""The program as a process: its command line, its manual page, and the limits that it outlives.

usage: program.py HXUPDATE PLUGIN MANUAL
"""
import os
import pathlib
import re
import signal
import subprocess
import sys
import unittest

PROGRAM, PLUGIN, MANUAL = sys.argv[1:4]
QTS_OWN = {"--help-all"}  # which Qt adds, and describes by itself


def run(*arguments, **environment):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=60, check=False,
                          env=dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", **environment))


class CommandLine(unittest.TestCase):
    def refused(self, *arguments):
        done = run(*arguments)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertTrue(done.stderr.endswith("Try 'hxupdate --help'.\n"), done.stderr)
        return done.stderr

    def test_help_is_printed_where_there_is_no_screen(self):
        done = run("--help", QT_QPA_PLATFORM_PLUGIN_PATH="/nowhere")
        self.assertEqual(done.returncode, 0)
        self.assertIn("Updates the firmware of a MIDI product, in a window.", done.stdout)

    def test_version_is_printed(self):
        done = run("--version")
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout, r"^hxupdate \d+\.\d+\.\d+\n$")

    def test_an_unknown_option_is_refused(self):
        self.assertIn("Unknown option 'colour'", self.refused("--colour"))

    def test_a_port_of_the_machine_is_refused_and_says_where_it_is_chosen(self):
        self.assertIn("not \"alsa:Valdrin\". A real product's port is chosen in the window.",
                      self.refused("--port", "alsa:Valdrin"))
        self.refused("--port", "")

    def test_qt_does_not_take_the_plugin_for_one_of_its_own(self):
        self.assertIn("Missing value after '--plugin'", self.refused("--plugin"))
        self.assertNotIn("No such plugin", self.refused("--plugin", PLUGIN, "one.syx", "two.syx"))

    def test_two_images_are_refused(self):
        self.assertIn("One image at a time, not 2.", self.refused("one.syx", "two.syx"))

    def test_the_manual_page_has_the_options_of_the_help(self):
        flags = set(re.findall(r"(?<!\S)(--?[a-z][a-z-]*)", run("--help").stdout)) - QTS_OWN
        section = pathlib.Path(MANUAL).read_text(encoding="utf-8")
        section = section.partition(".SH OPTIONS")[2].partition(".SH ")[0].partition("of every Qt program")[0]
        written = set(re.findall(r"(--?[a-z][a-z-]*)", section.replace("\\-", "-")))
        self.assertEqual(written, flags)


class Running(unittest.TestCase):
    def setUp(self):
        self.window = subprocess.Popen(
            [PROGRAM, "--plugin", PLUGIN, "--port", "simulator"], stderr=subprocess.DEVNULL,
            env=dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8"))

    def tearDown(self):
        self.window.kill()
        self.window.wait()

    @unittest.skipUnless(os.path.exists("/proc/self/status"), "signals are not told here")
    def test_a_limit_on_the_size_of_files_does_not_end_it(self):
        ignored = 0
        while not ignored and self.window.poll() is None:  # until it has come so far
            status = pathlib.Path(f"/proc/{self.window.pid}/status").read_text(encoding="ascii")
            ignored = int(re.search(r"SigIgn:\s*(\w+)", status).group(1), 16) & 1 << (signal.SIGXFSZ - 1)
        self.assertTrue(ignored)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
