#!/usr/bin/env python3
"""Runs hxhost in a terminal, as a person does: the question before an update, the progress bar in
40 columns, a dumb terminal.

usage: terminal.py HXHOST PLUGIN
"""

import fcntl
import os
import pty
import re
import struct
import subprocess
import sys
import tempfile
import termios


def run_in_terminal(words, typed="", columns=40, environment=None, when_asked=lambda: None):
    """Returns the exit code and all that appeared on the terminal. Types `typed` when the update
    asks whether to start, after a call of `when_asked`."""
    pid, terminal = pty.fork()
    if pid == 0:
        os.environ.update({"TERM": "xterm"}, **(environment or {}))
        for name in ("NO_COLOR", "CLICOLOR_FORCE"):
            if name not in (environment or {}):
                os.environ.pop(name, None)
        os.execv(words[0], words)
    fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    shown = b""
    asked = False
    while True:
        try:
            piece = os.read(terminal, 4096)
        except OSError:
            break
        if not piece:
            break
        shown += piece
        if b"Type yes to start:" in shown and not asked:
            asked = True
            when_asked()
            os.write(terminal, typed.encode())
    status = os.waitpid(pid, 0)[1]
    os.close(terminal)
    return os.waitstatus_to_exitcode(status), shown.decode().replace("\r\n", "\n")


class Checks:
    def __init__(self):
        self.failures = 0

    def __call__(self, holds, what, shown):
        if not holds:
            self.failures += 1
            print(f"{what}:\n{shown}\n")


def check_answers(check, update):
    for typed, expected in (("yes\n", 0), ("y\n", 0), (" YES \n", 0), ("\n", 12), ("no\n", 12),
                            ("yess\n", 12), ("ok\n", 12), ("\x04", 12)):
        code, shown = run_in_terminal(update, typed)
        check(code == expected, f"the answer {typed!r} ended with {code}, expected {expected}", shown)
        check(("nothing was sent" in shown) == (expected == 12), f"after {typed!r}", shown)
    code, shown = run_in_terminal([*update, "--yes"])
    check(code == 0 and "Type yes" not in shown, "--yes must not ask", shown)


def check_bar(check, update):
    code, shown = run_in_terminal([*update, "--yes", "--no-listen"])
    frames = re.findall(r"\r\x1b\[K([^\r\n]*)", shown)
    check(code == 0 and frames, "the bar is not drawn", shown)
    check(all(len(frame) < 40 for frame in frames), "the bar is wider than the terminal", shown)
    check(any("100%" in frame for frame in frames), "the bar does not reach its end", shown)
    code, shown = run_in_terminal([*update, "--yes", "--no-listen"], environment={"TERM": "dumb"})
    check(code == 0 and "\x1b" not in shown, "a dumb terminal gets control sequences", shown)
    check("100%: " in shown, "a dumb terminal gets no plain lines", shown)


def check_colour(check, hxhost):
    failing = [hxhost, "identify", "--port", "simulator", "--fault", "silent"]
    check("\x1b[31merror:\x1b[0m" in run_in_terminal(failing)[1], "errors are not coloured", "")
    check("\x1b" not in run_in_terminal(failing, environment={"NO_COLOR": "1"})[1], "NO_COLOR", "")
    check("\x1b" not in run_in_terminal(failing, environment={"TERM": "dumb"})[1], "TERM=dumb", "")


def main():
    hxhost, plugin = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    check = Checks()
    with tempfile.TemporaryDirectory() as folder:
        code = os.path.join(folder, "code")
        image = os.path.join(folder, "image.syx")
        with open(code, "wb") as file:
            file.write(bytes(i % 251 for i in range(3000)))
        subprocess.run([hxhost, "image", "build", code, "-o", image, "--kind", "fwu"], check=True,
                       stdout=subprocess.DEVNULL)
        update = [hxhost, "update", image, "--port", "simulator", "--plugin", plugin]
        check_answers(check, update)
        check_bar(check, update)
        check_colour(check, hxhost)
    print("the terminal shows what it should" if check.failures == 0 else f"{check.failures} failures")
    return 1 if check.failures else 0


if __name__ == "__main__":
    sys.exit(main())
