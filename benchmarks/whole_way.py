#!/usr/bin/env python3
"""Measures the whole way from an address file to a program's output: `faxbook destinations` on a file of many cards,
beside `grep -c TEL` and a program of python3-vobject on the same file.

usage: whole_way.py FAXBOOK FOLDER [CARDS [ROUNDS [RESULTS]]]

The file is made in FOLDER, and is not in the system's cache when a run begins. Times are medians of interleaved runs
with their spread, in milliseconds from start to end of the process; memory is the most that the process had at once.
The figures are added to the file RESULTS, too. The program of python3-vobject runs once, and only where that is over
soon.
"""
import os
import statistics
import subprocess
import sys
import time
from pathlib import Path

TIME_TARGET = 10.0
MEMORY_TARGET = 2.5


MOST_CARDS_OF_VOBJECT = 100_000


def forget(file):
    """Has the system drop the file from its cache."""
    with open(file, "rb") as opened:
        os.fsync(opened.fileno())
        os.posix_fadvise(opened.fileno(), 0, 0, os.POSIX_FADV_DONTNEED)


def run(command, environment, file, output):
    """Seconds and peak bytes of one run. Its output goes to a file: into nothing, grep would stop at the first line."""
    forget(file)
    with open(output, "wb") as out:
        start = time.perf_counter()
        process = subprocess.Popen(command, stdout=out, env=environment)
        _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{command[0]} failed with {status}")
    return time.perf_counter() - start, usage.ru_maxrss * 1024


def describe(seconds):
    milliseconds = sorted(1000 * second for second in seconds)
    return f"{statistics.median(milliseconds):8.1f} ms  ({milliseconds[0]:.1f} to {milliseconds[-1]:.1f})"


def verdict(ratio, target):
    return f"{ratio:6.2f} times, target {target:.1f}: {'met' if ratio <= target else 'missed'}"


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    faxbook, folder = sys.argv[1], Path(sys.argv[2])
    cards = int(sys.argv[3]) if len(sys.argv) > 3 else 100_000
    rounds = int(sys.argv[4]) if len(sys.argv) > 4 else 9
    folder.mkdir(parents=True, exist_ok=True)
    file = folder / f"cards-{cards}.vcf"
    subprocess.run([sys.executable, Path(__file__).with_name("make_cards.py"), str(cards), str(file)], check=True)
    size = file.stat().st_size
    environment = {**os.environ, "FAXBOOK_CONTACTS": str(file), "FAXBOOK_DIAGNOSTICS": "off"}
    commands = {"grep -c TEL": ["grep", "-c", "TEL", str(file)],
                "faxbook destinations": [faxbook, "destinations", file.stem]}
    times = {name: [] for name in commands}
    peaks = {name: 0 for name in commands}
    for name in list(commands) * (rounds + 1):  # the first round warms up and does not count
        seconds, peak = run(commands[name], environment, file, folder / "output")
        times[name].append(seconds)
        peaks[name] = max(peaks[name], peak)
    print(f"{cards} cards, {size / 1e6:.1f} MB, {rounds} rounds")
    for name in commands:
        print(f"  {name:22} {describe(times[name][1:])}   peak {peaks[name] / 1e6:7.1f} MB")
    medians = {name: statistics.median(times[name][1:]) for name in commands}
    if cards <= MOST_CARDS_OF_VOBJECT:
        # The package is the system's, and so is the Python that knows it.
        reader = ["/usr/bin/python3", str(Path(__file__).with_name("vobject_way.py")), str(file)]
        medians["python3-vobject"], peaks["python3-vobject"] = run(reader, environment, file, folder / "output")
        print(f"  {'python3-vobject':22} {describe([medians['python3-vobject']])}"
              f"   peak {peaks['python3-vobject'] / 1e6:7.1f} MB")
    if len(sys.argv) > 5:
        with open(sys.argv[5], "a", encoding="utf-8") as results:
            for name, seconds in medians.items():
                results.write(f"the whole way\t{name}, ms\t{cards}\t{1000 * seconds:.1f}\t\n")
                results.write(f"the whole way\t{name}, peak MB\t{cards}\t{peaks[name] / 1e6:.1f}\t\n")
    print(f"  time    {verdict(medians['faxbook destinations'] / medians['grep -c TEL'], TIME_TARGET)}")
    print(f"  memory  {verdict(peaks['faxbook destinations'] / size, MEMORY_TARGET)}")


if __name__ == "__main__":
    main()
