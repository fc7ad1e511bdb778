#!/usr/bin/env python3
"""Reads files in which something is repeated beside something long, in a size and in four times this size, and looks
whether instructions, memory and messages grow with the file, or with its square.

usage: check_products.py PROGRAM LIBRARIES [NAME]    PROGRAM is product_work, LIBRARIES the folder of QDXL7RC.DLL; with a
                                                     NAME, only products that have it in their names, with all figures

Instructions are counted by callgrind and bytes by the program itself, so the figures are the same on a busy machine.
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from counting import Checks

BYTES = 4 * 1024
GROWTH = 4
# How much more than in proportion a figure may grow (sorting, and lists that double when they are full; a square would
# be four times as much), and by what in any case.
BOUNDS = {"instructions": (1.3, 300_000), "memory": (2, 256 << 10), "memory at one time": (2, 512 << 10),
          "messages": (1.3, 8 << 10)}
PROCESSES = 2


class Figures:
    """Of one product in one size."""

    def __init__(self, line, instructions):
        self.product, _size, taken, most, told, _count = line.split("\t")
        self.values = {"instructions": instructions, "memory": int(taken), "memory at one time": int(most),
                       "messages": int(told)}


def start(program, libraries, part, name, folder):
    command = ["valgrind", "--tool=callgrind", "--collect-atstart=no", "--dump-line=no",
               f"--callgrind-out-file={folder}/counts", program, libraries, f"{folder}/work", str(BYTES), str(part),
               str(PROCESSES)] + ([name] if name else [])
    return subprocess.Popen(command, stdout=open(f"{folder}/lines", "w", encoding="utf-8"),
                            stderr=open(f"{folder}/errors", "w", encoding="utf-8"))


def instructions_by_line(folder):
    counts = {}
    for file in Path(folder).glob("counts.*"):
        text = file.read_text(encoding="utf-8", errors="replace")
        line = re.search(r"^desc: Trigger: Client Request: (\d+)$", text, re.MULTILINE)
        if line:
            counts[int(line.group(1))] = int(re.search(r"^summary: (\d+)", text, re.MULTILINE).group(1))
    return counts


def figures_of(folder):
    counts = instructions_by_line(folder)
    lines = (Path(folder) / "lines").read_text(encoding="utf-8").splitlines()
    return [Figures(line, counts[number]) for number, line in enumerate(lines)]


def check(checks, least, small, large, shows_all):
    work = [figures.values["instructions"] for figures in (least, small, large)]
    checks.true(f"{small.product}: a larger file takes no more than a smaller one: {work}", work[0] < work[1] < work[2])
    for what, (tolerance, allowance) in BOUNDS.items():
        less = max(0, small.values[what] - least.values[what])
        more = large.values[what] - least.values[what]
        told = f"{small.product}: {less} {what} became {more} in {GROWTH} times the size"
        if shows_all:
            print(told)
        checks.true(told, more <= GROWTH * tolerance * less + allowance)


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    program, libraries, name = sys.argv[1], sys.argv[2], sys.argv[3] if len(sys.argv) > 3 else None
    checks = Checks()
    with tempfile.TemporaryDirectory() as top:
        folders = [f"{top}/{part}" for part in range(1 if name else PROCESSES)]
        for folder in folders:
            Path(folder, "work").mkdir(parents=True)
        running = [start(program, libraries, part, name, folder) for part, folder in enumerate(folders)]
        for process, folder in zip(running, folders):
            checks.true(f"product_work ended with {process.wait()}: {Path(folder, 'errors').read_text()[-300:]}",
                        process.returncode == 0)
            figures = figures_of(folder)
            for sizes in zip(figures[0::3], figures[1::3], figures[2::3]):
                check(checks, *sizes, name is not None)
    sys.exit(checks.finish())


main()
