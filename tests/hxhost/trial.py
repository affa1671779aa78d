"""What the scripts that try hxhost share: a check that says why it fails, waiting, and a bench, which is the
program with a plugin, a folder, and the processes that are under way."""

import os
import shutil
import signal
import subprocess
import tempfile
import time

SKIPPED = 77


class Failure(Exception):
    pass


def check(holds, what):
    if not holds:
        raise Failure(what)


def eventually(what, test, seconds=30):
    """Waits until `test` gives something true, and returns that."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        found = test()
        if found:
            return found
        time.sleep(0.02)
    raise Failure(f"{what}: not within {seconds} s")


def contents(path):
    with open(path, encoding="utf-8", errors="replace") as file:
        return file.read()


def stop(process, number=signal.SIGTERM):
    if process.poll() is None:
        process.send_signal(number)
    try:
        process.wait(20)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def lacks(tools, package):
    """Whether one of the programs is missing; says so."""
    missing = [tool for tool in tools if shutil.which(tool) is None]
    if missing:
        print(f"SKIPPED: there is no {' '.join(missing)} (Debian package {package})")
    return bool(missing)


class Bench:
    def __init__(self, hxhost, plugin, folder):
        self.hxhost, self.plugin = os.path.abspath(hxhost), os.path.abspath(plugin)
        self.folder = folder
        self.environment = None
        self.processes = []

    def path(self, name):
        return os.path.join(self.folder, name)

    def start(self, *words, **streams):
        """Starts any program; what it says is thrown away unless `streams` say where it goes."""
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **streams}
        process = subprocess.Popen(words, env=self.environment, **streams)
        self.processes.append(process)
        return process

    def run(self, *words):
        return subprocess.run(words, env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=300, check=False)

    def host(self, expected, *words):
        """Runs a command of hxhost with the plugin; it must end with the exit code `expected`."""
        ended = self.run(self.hxhost, *words, "--plugin", self.plugin)
        check(ended.returncode == expected,
              f"{words} ended with {ended.returncode} instead of {expected}:\n{ended.stdout}{ended.stderr}")
        return ended

    def image(self, name, size, version="1.0.2.4"):
        """An update image of so many code bytes; the code alone is in NAME.bin."""
        with open(self.path(name + ".bin"), "wb") as file:
            file.write(bytes((i * 7 + i // 256) % 256 for i in range(size)))
        self.host(0, "image", "build", self.path(name + ".bin"), "-o", self.path(name), "--kind", "fwu",
                  "--code-version", version)
        return self.path(name)

    def close(self):
        for process in reversed(self.processes):
            stop(process)


def exit_code(test, hxhost, plugin, kind=Bench):
    """Runs a test on a bench in a new folder; says why it fails."""
    with tempfile.TemporaryDirectory() as folder:
        bench = kind(hxhost, plugin, folder)
        try:
            test(bench)
        except Failure as failure:
            print(f"FAILED: {failure}")
            return 1
        finally:
            bench.close()
    return 0
