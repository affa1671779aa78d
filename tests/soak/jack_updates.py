#!/usr/bin/env python3
"""Updates one running simulated product many times over JACK, one program after the other, and
measures the resident memory of 'hxhost simulate'.

usage: jack_updates.py HXHOST PLUGIN UPDATES MOST_GROWTH_KIB

Exits 77, the code of a skipped test, where there is no jackd.
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hxhost"))
import jack_end_to_end as jack  # noqa: E402

WARM_UP = 10


def resident_memory(process):
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="utf-8")
    return int(next(line for line in status.splitlines() if line.startswith("VmRSS:")).split()[1])


def update(bench, image, number):
    found = bench.json(0, "update", image, "--rate", "0")
    jack.check(found["outcome"] == "succeeded", f"update {number}: {found}")
    jack.check(found["checksum"]["stored"]["bytes"] == found["checksum"]["image"],
               f"update {number}: the product holds other code")


def updates(bench, count, most_growth):
    bench.start_server()
    product = bench.start_product()
    images = [bench.image("one.syx", 2048), bench.image("other.syx", 3072)]
    before = None
    for number in range(1, count + 1):
        update(bench, images[number % 2], number)
        if number == WARM_UP:
            before = resident_memory(product)
            print(f"after {number} updates: {before} KiB resident", flush=True)
    jack.check(product.poll() is None, "the product has ended")
    if before is None or count == WARM_UP:
        print(f"{count} updates, too few to measure memory by")
        return
    after = resident_memory(product)
    print(f"after {count} updates: {after} KiB resident")
    print(f"growth {after - before} KiB, at most {most_growth} allowed")
    jack.check(after - before <= most_growth, "the memory grows")


def main():
    if len(sys.argv) != 5:
        print(__doc__)
        return 2
    if jack.lacks(jack.TOOLS, "jackd2"):
        return jack.SKIPPED
    return jack.exit_code(lambda bench: updates(bench, int(sys.argv[3]), int(sys.argv[4])), *sys.argv[1:3], jack.Bench)


if __name__ == "__main__":
    sys.exit(main())
