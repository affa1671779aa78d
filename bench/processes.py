"""Times whole runs of two builds of hxhost in turn: this one and an earlier one, the previous release.

    python3 bench/processes.py build/release OTHER/build/release [--rounds 9]

Prints CPU time (median, and the ratio with its least and greatest) and the peak of memory. The update is of 1 MiB,
on the simulator and without a wire's pace.
"""

import argparse
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile

IMAGE_BYTES = 1 << 20


def commands(folder, image):
    """The runs of a build, by name."""
    host = str(folder / "bin" / "hxhost")
    plugin = ["--plugin", str(folder / "lib" / "libtarv_valdrinboot_3041.so")]
    simulator = ["--port", "simulator"]
    return {
        "hxhost --version": [host, "--version"],
        "hxhost inspect": [host, "inspect", *plugin],
        "hxhost identify": [host, "identify", *plugin, *simulator],
        "hxhost update, 1 MiB": [host, "update", "--yes", "--no-listen", "--rate", "0", "--progress", "none",
                                 *plugin, *simulator, image],
    }


def finished(command):
    """Runs a command to its end, which must be a good one."""
    process = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    if process.returncode != 0:
        sys.exit(f"{' '.join(command)} ended with {process.returncode}: {process.stderr.decode(errors='replace')}")
    return process


def milliseconds_of(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    finished(command)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return 1000 * (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)


def peak_memory(command):
    """In MiB. Told by time(1): a child of this program counts this program's memory as its own."""
    told = finished(["time", "--quiet", "-f", "%M", *command]).stderr.split()[-1]
    return int(told) / 1024


def build_image(folder, where):
    code = where / "code.bin"
    code.write_bytes(bytes((i * 167 + (i >> 8)) & 0xFF for i in range(IMAGE_BYTES)))
    image = str(where / "code.syx")
    host, plugin = folder / "bin" / "hxhost", folder / "lib" / "libtarv_valdrinboot_3041.so"
    subprocess.run([host, "image", "build", "--kind", "fwu", "--plugin", plugin, "-o", image, code],
                   stdout=subprocess.DEVNULL, check=True)
    return image


def row(name, own, other, memory):
    """One line of the table: of each build the times of its runs, and the peaks of memory of both."""
    ratios = [a / b for a, b in zip(own, other)]
    times = [statistics.median(runs) for runs in (own, other)]
    return (f"| {name} | {times[0]:.1f} ms | {times[1]:.1f} ms | {times[0] / times[1]:.2f}"
            f" ({min(ratios):.2f} to {max(ratios):.2f}) | {memory[0]:.1f} MiB | {memory[1]:.1f} MiB |")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("own", type=pathlib.Path, help="folder of a build")
    parser.add_argument("other", type=pathlib.Path, help="folder of the one that it is compared with")
    parser.add_argument("--rounds", type=int, default=9)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as where:
        image = build_image(options.own, pathlib.Path(where))
        builds = [commands(folder, image) for folder in (options.own, options.other)]
        print("| process | CPU time | of the other | ratio | memory | of the other |\n|---|---|---|---|---|---|")
        for name in builds[0]:
            runs = [[milliseconds_of(build[name]) for build in builds] for _ in range(options.rounds)]
            print(row(name, *zip(*runs), [peak_memory(build[name]) for build in builds]), flush=True)


if __name__ == "__main__":
    main()
