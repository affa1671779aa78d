#!/usr/bin/env python3
"""Runs hxhost in a terminal, as a person does: the question before an update, the progress bar in
40 columns, a dumb terminal.

usage: terminal.py HXHOST PLUGIN README
"""

import fcntl
import os
import pty
import re
import signal
import struct
import sys
import termios

import trial


def keep_output_at_interrupts():
    """The system sends the signal of Ctrl-C first and empties the terminal afterwards: what a program
    has written in between would be lost."""
    settings = termios.tcgetattr(0)
    settings[3] |= termios.NOFLSH
    termios.tcsetattr(0, termios.TCSANOW, settings)


def run_in_terminal(words, typed="", columns=40, environment=None, when_asked=lambda: None, signalled=None,
                    question=b"Type yes to start:"):
    """Returns the exit code and all that appeared on the terminal. When the `question` is there, calls
    `when_asked`, then types `typed` or sends the signal `signalled`."""
    pid, terminal = pty.fork()
    if pid == 0:
        keep_output_at_interrupts()
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
        if question in shown and not asked:
            asked = True
            when_asked()
            if signalled is not None:
                os.kill(pid, signalled)
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
        check(("Nothing of the image was sent" in shown) == (expected == 12), f"after {typed!r}", shown)
    code, shown = run_in_terminal([*update, "--yes"])
    check(code == 0 and "Type yes" not in shown, "--yes must not ask", shown)


def question_of(update, *more, **settings):
    """What is asked, with an answer that sends nothing."""
    shown = run_in_terminal([*update, "--no-listen", *more], "no\n", 100, **settings)[1]
    return shown[:shown.find("Type yes to start:")]


def check_question(check, bench):
    """Product, serial number and versions come from the product itself; the time counts the pace."""
    images = {version: bench.image(version, 3000, version) for version in ("1.0.2.4", "1.0.2.3", "0.9.9.9")}

    def words(version, port="simulator"):
        return [bench.hxhost, "update", images[version], "--port", port, "--plugin", bench.plugin]

    asked = question_of(words("1.0.2.4"))
    check(asked == "Valdrin, serial number 30410001 on simulator\n"
                   "It holds version 1.0.2.3; the image holds version 1.0.2.4 (fwu).\n"
                   "The image is not signed: its origin is not known.\n"
                   "The update takes about 2 s. Leave the instrument on and connected until it is "
                   "done.\n", "the question before an upgrade", asked)
    asked = question_of(words("1.0.2.3"))
    check("\nThis is a reinstall: the instrument has this version already.\n" in asked, "a reinstall", asked)
    asked = question_of(words("0.9.9.9"))
    check("\nThis is a downgrade: the image is older than what the instrument has.\n" in asked,
          "a downgrade", asked)
    asked = question_of(words("1.0.2.4"), "--rate", "1000")
    check("takes about 4 s." in asked, "--rate counts", asked)
    asked = question_of(words("1.0.2.4"), "--gap", "2000")
    check("takes about 1 min 0 s." in asked, "--gap counts", asked)
    asked = question_of(words("1.0.2.4"), "--rate", "0")
    check("takes as long as the port takes." in asked, "no rate", asked)
    state = "simulator:" + bench.path("begun.state")
    bench.run(*words("1.0.2.4", state), "--fault", "failed-ack:4", "--no-listen")
    asked = question_of(words("1.0.2.4", state))
    check("\nIt holds no valid code; the image holds" in asked, "a product in its boot loader", asked)


def check_question_is_always_seen(check, update, log):
    """Standard error may lead elsewhere: whoever types still sees what is asked."""
    shell = ["/bin/sh", "-c", '"$@" 2> "$0"', log, *update, "--no-listen"]
    code, shown = run_in_terminal(shell, "no\n", 100)
    check(code == 12 and "Type yes to start:" in shown, "the question with 2> FILE", shown)
    check("Type yes" not in trial.contents(log), "the question is in the file", shown)
    code, shown = run_in_terminal([*update, "--no-listen"], "\x03", 100)
    check(code == 130 and "before anything of an image was sent" in shown, "Ctrl-C at the question", shown)
    for number in (signal.SIGTERM, signal.SIGHUP):
        code, shown = run_in_terminal([*update, "--no-listen"], "", 100, signalled=number)
        check(code == 130, f"signal {number} at the question ended with {code}", shown)
    code, shown = run_in_terminal([*update, "--no-listen", "--json"], "\x03", 100)
    check(code == 130 and '"exitName": "interrupted"' in shown, "Ctrl-C at the question with --json", shown)


# Made by minisign for this test alone; the password is "sesame".
LOCKED_KEY = """untrusted comment: minisign encrypted secret key
RWRTY0IyfgD8DIFnp/IecAShF8lRkguw8WTL8kzaQigjrwRag+AAAAACAAAAAAAAAEAAAAAAp+CGtakweVqP7ug1dKwvEfIWgVdoFs3T93fPEriOhlSw\
9mJsyTSwgCtK5nt8Kdq15vFLHrQp/l/DZqjVjf3pRtNF3TxzD9mD57W4Me4vpnM5dzrxBjFUDmp55hOVdB0fTDwR6JwbhnQ=
"""
ITS_PUBLIC_KEY = """untrusted comment: minisign public key 898A80B5FE2FAAF2
RWTyqi/+tYCKicSF/VE407EAU3ELWEx+li221/tSBsbVCkQk9Q+yOEA/
"""


def check_signed(check, bench):
    """A key's password is typed unseen; what is asked says how the image is signed."""
    secret, public = bench.path("locked.key"), bench.path("locked.pub")
    for name, text in ((secret, LOCKED_KEY), (public, ITS_PUBLIC_KEY)):
        with open(name, "w", encoding="ascii", opener=lambda path, flags: os.open(path, flags, 0o600)) as file:
            file.write(text)
    image = bench.path("0.9.9.9")
    sign = [bench.hxhost, "image", "sign", image, "--key", secret, "--plugin", bench.plugin]
    code, shown = run_in_terminal(sign, "\x03", 100, question=b"Password of ")
    check(code == 130 and "nothing was signed" in shown and "Password of " in shown, "Ctrl-C at the password", shown)
    code, shown = run_in_terminal(sign, "sesame\n", 100, question=b"Password of ")
    check(code == 0 and "sesame" not in shown, f"signing with a password ended with {code}", shown)
    update = [bench.hxhost, "update", image, "--port", "simulator", "--plugin", bench.plugin, "--pubkey", public]
    asked = question_of(update)
    check("The image is signed with the key 898A80B5FE2FAAF2.\n"
          "This is a downgrade to an older signed version: faults that were mended since come back.\n" in asked,
          "the question before a signed downgrade", asked)
    code, shown = run_in_terminal([*update, "--yes"])
    check(code == 0 and "This is a downgrade to an older" in shown, "--yes is warned of the downgrade", shown)
    asked = question_of([*update, "--unsigned"])
    check("\nThe image is not checked (--unsigned): its origin is not known.\n" in asked, "--unsigned", asked)


def normalised(line):
    """A line of an update without what differs from port to port and from image to image."""
    line = line.replace(" Simulated: no instrument was changed.", "").split("\r\x1b[K")[-1]
    line = re.sub(r"(alsa:.*|simulator)$", "PORT", line.rstrip())
    return re.sub(r"[0-9.]+ kB/s|(\d+ min )?\d+ s\b", "...", line)


def check_readme(check, update, readme):
    """The update that README shows is what a person sees."""
    session = trial.contents(readme).split("$ hxhost update update.syx\n")[1].split("```")[0]
    shown = run_in_terminal(update, "yes\n", 90)[1]
    expected, found = ([normalised(line) for line in text.strip().split("\n")] for text in (session, shown))
    check(len(expected) > 7 and expected == found, f"README shows {expected}, the terminal {found}", shown)


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


def try_terminal(bench, readme):
    check = Checks()
    image = bench.image("image.syx", 3000)
    update = [bench.hxhost, "update", image, "--port", "simulator", "--plugin", bench.plugin]
    check_answers(check, update)
    check_question(check, bench)
    check_signed(check, bench)
    check_question_is_always_seen(check, update, bench.path("log"))
    check_readme(check, update, readme)
    check_bar(check, update)
    check_colour(check, bench.hxhost)
    trial.check(check.failures == 0, f"{check.failures} failures")
    print("the terminal shows what it should")


if __name__ == "__main__":
    sys.exit(trial.exit_code(lambda bench: try_terminal(bench, sys.argv[3]), *sys.argv[1:3]))
