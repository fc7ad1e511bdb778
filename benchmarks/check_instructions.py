#!/usr/bin/env python3
"""Counts the instructions that counting and filling 100,000 rows take, by callgrind, and compares them with those that
are kept in instruction_counts.txt: they depend on the code and the compiler only, not on how busy the machine is.

usage: check_instructions.py PROGRAM [--keep]    PROGRAM is instruction_bench; --keep keeps the new numbers
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

TOLERANCE = 0.05
KEPT = Path(__file__).with_name("instruction_counts.txt")
FUNCTIONS = {"counting": "CountDestinations*", "filling": "FillDestinations*"}


def count(program, function):
    with tempfile.TemporaryDirectory() as folder:
        command = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out", f"--toggle-collect={function}",
                   program]
        output = subprocess.run(command, check=True, capture_output=True, text=True).stderr
    return int(re.search(r"Collected : (\d+)", output).group(1))


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    counts = {name: count(sys.argv[1], function) for name, function in FUNCTIONS.items()}
    if "--keep" in sys.argv:
        KEPT.write_text("".join(f"{name} {number}\n" for name, number in counts.items()), encoding="utf-8")
        return
    kept = dict(line.split() for line in KEPT.read_text(encoding="utf-8").splitlines())
    failed = 0
    for name, number in counts.items():
        ratio = number / int(kept[name])
        print(f"{name}: {number} instructions, {ratio:.3f} times those kept")
        if ratio > 1 + TOLERANCE or number == 0:
            failed += 1
            print(f"FAILED: {name} has become slower; mend it, or keep the new number and say why")
        elif ratio < 1 - TOLERANCE:
            print(f"{name} has become faster: keep the new number")
    print(f"{len(counts) - failed} passed, {failed} failed")
    sys.exit(1 if failed else 0)


main()
