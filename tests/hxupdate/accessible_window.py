#!/usr/bin/env python3
"""Works the window as assistive technology does: over the accessibility bus, from another process. A whole update of
the simulated product; each page is told as an event, and every control on it has a name and a role.

usage: accessible_window.py HXHOST PLUGIN HXUPDATE

Exits 77, the code of a skipped test, where a tool is missing.
"""

import importlib.util
import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hxhost"))
import trial  # noqa: E402
from trial import Failure  # noqa: E402

TOOLS = ("Xvfb", "xdotool", "dbus-run-session")
SOON = 60  # seconds; on an idle machine each step takes less than three
PROGRAM = "hxupdate"
CONTROLS = ("push button", "check box", "combo box", "entry", "list", "list item", "progress bar", "scroll pane",
            "table", "text")
# What is told, in this order, and the button that leads on.
PAGES = (("Valdrin was found", "Continue"),
         ("Review what will be done", "Upgrade Valdrin"),
         ("Valdrin is being updated", None),
         ("Valdrin is being verified", None),
         ("Valdrin was updated", None))


class Watch:
    """What the window tells, and what is in it."""

    def __init__(self):
        import pyatspi  # pylint: disable=import-outside-toplevel
        from gi.repository import GLib  # pylint: disable=import-outside-toplevel
        self.atspi = pyatspi
        self.glib = GLib
        self.told = []
        self.is_heard = False
        self.ears = ((self.hear, "object:property-change:accessible-name"),
                     (self.hear_focus, "object:state-changed:focused"))
        for hear, event in self.ears:
            pyatspi.Registry.registerEventListener(hear, event)

    def hear(self, event):
        try:
            if event.source.getRole() == self.atspi.ROLE_PANEL:
                self.told.append(event.source.name)
        except self.glib.GError:
            pass  # it is gone already

    def hear_focus(self, _event):
        self.is_heard = True

    def wait_for_ears(self):
        """The window tells nothing before it has learnt that somebody listens, and misses those who come while it
        joins the bus: they come again, and the keyboard goes from one control to the next, until that is told."""
        def step():
            for hear, event in self.ears:
                self.atspi.Registry.deregisterEventListener(hear, event)
                self.atspi.Registry.registerEventListener(hear, event)
            subprocess.run(["xdotool", "key", "Tab"], check=False)
            return True
        steps = self.glib.timeout_add(500, step)
        self.wait("the window tells where the keyboard is", lambda: self.is_heard)
        self.glib.source_remove(steps)

    def wait(self, what, test):
        """Lets events come until `test` gives something."""
        timed_out = []
        alarm = self.glib.timeout_add_seconds(SOON, lambda: timed_out.append(True))
        found = self.tried(test)
        while not found and not timed_out:
            self.glib.MainContext.default().iteration(True)
            found = self.tried(test)
        if not found:
            seen = [one.name for one in self.shown() if one.getRole() == self.atspi.ROLE_PANEL]
            raise Failure(f"{what}: not within {SOON} s; told were {self.told}, and shown is {seen}")
        self.glib.source_remove(alarm)
        return found

    def tried(self, test):
        try:
            return test()
        except self.glib.GError:  # what was looked at has gone meanwhile
            return None

    def wait_for_page(self, title):
        """Until it is told; what was told before it is forgotten."""
        self.wait(f"\"{title}\" is told", lambda: title in self.told)
        del self.told[:self.told.index(title) + 1]

    def shown(self):
        """All that can be seen of the window."""
        desktop = self.atspi.Registry.getDesktop(0)
        found = []
        waiting = [program for program in desktop if program is not None and program.name == PROGRAM]
        while waiting:
            one = waiting.pop()
            waiting += [child for child in one if child is not None]
            if one.getState().contains(self.atspi.STATE_SHOWING):
                found.append(one)
        return found

    def is_shown(self, title):
        return any((one.getRole(), one.name) == (self.atspi.ROLE_PANEL, title) for one in self.shown())

    def check_names(self, title):
        shown = self.shown()
        controls = [one for one in shown if one.getRoleName() in CONTROLS
                    or one.getState().contains(self.atspi.STATE_FOCUSABLE)]
        nameless = [one.getRoleName() for one in controls if not one.name]
        if nameless or not controls:
            raise Failure(f"\"{title}\": of {len(controls)} controls these have no name: {nameless}")
        strange = [one.name for one in shown if one.getRoleName() in ("invalid", "unknown")]
        if strange:
            raise Failure(f"\"{title}\": without a role: {strange}")
        return len(controls)

    def press(self, name):
        button = self.wait(f"a button \"{name}\"", lambda: self.button(name))
        action = button.queryAction()
        names = [action.getName(i) for i in range(action.nActions)]
        action.doAction(names.index("Press"))

    def button(self, name):
        for one in self.shown():
            if (one.getRoleName(), one.name) == ("push button", name) \
                    and one.getState().contains(self.atspi.STATE_ENABLED):
                return one
        return None


def watch_update(bench, hxupdate):
    image = bench.image("image.syx", 3000)
    controls = []
    with subprocess.Popen([hxupdate, "--plugin", bench.plugin, "--port", "simulator", image]) as window:
        try:
            # Qt misses a bus that comes to life while the program starts.
            subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "Valdrin was found",
                            "windowfocus", "--sync"], timeout=SOON, check=True)
            watch = Watch()
            watch.wait_for_ears()
            watch.wait("the first page", lambda: watch.is_shown(PAGES[0][0]))
            watch.told.append(PAGES[0][0])
            for title, button in PAGES:
                watch.wait_for_page(title)
                if button is not None or title == PAGES[-1][0]:
                    controls.append(watch.check_names(title))
                if button is not None:
                    watch.press(button)
        finally:
            window.kill()
    print(f"{len(PAGES)} pages were told; controls on those that wait: {controls}, each with a name and a role")


def start_screen(environment):
    reading, writing = os.pipe()
    screen = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
                              pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as numbers:
        environment["DISPLAY"] = ":" + numbers.readline().strip()
    return screen


def run_in_session(words):
    """This script once more, with a screen and a bus of its own."""
    with tempfile.TemporaryDirectory() as folder:
        environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8",
                           HOME=folder, XDG_CONFIG_HOME=folder, XDG_RUNTIME_DIR=folder)
        environment.pop("AT_SPI_BUS_ADDRESS", None)
        screen = start_screen(environment)
        try:
            return subprocess.run(["dbus-run-session", "--", sys.executable, os.path.abspath(__file__), "--here", *words],
                                  cwd=folder, env=environment, check=False).returncode
        finally:
            screen.kill()
            screen.wait()


def main():
    if sys.argv[1] == "--here":
        return trial.exit_code(lambda bench: watch_update(bench, sys.argv[4]), *sys.argv[2:4])
    if trial.lacks(TOOLS, "xvfb, xdotool or dbus"):
        return trial.SKIPPED
    if importlib.util.find_spec("pyatspi") is None:
        print("SKIPPED: there is no python3-pyatspi")
        return trial.SKIPPED
    return run_in_session([os.path.abspath(word) for word in sys.argv[1:4]])


if __name__ == "__main__":
    sys.exit(main())
