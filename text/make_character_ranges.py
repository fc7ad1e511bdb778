#!/usr/bin/env python3
"""Writes the ranges of character_ranges.inc from Python's Unicode character database.

usage: make_character_ranges.py > character_ranges.inc
"""
import sys
import unicodedata

LAST = 0xE01EF  # behind it there are only characters of private use
# Wide whatever stands there one day: ideographs.
IDEOGRAPHS = [(0x3400, 0x4DBF), (0x4E00, 0x9FFF), (0xF900, 0xFAFF), (0x20000, 0x2FFFD), (0x30000, 0x3FFFD)]
# Vowels and finals of Hangul are drawn into the syllable's first letter, skin colours into the emoji before them.
DRAWN_INTO_OTHERS = [(0x1160, 0x11FF), (0x1F3FB, 0x1F3FF)]
SOFT_HYPHEN = 0xAD


def lies_in(ranges, code_point):
    return any(first <= code_point <= last for first, last in ranges)


def is_zero(code_point):
    marks = unicodedata.category(chr(code_point)) in ("Mn", "Me", "Cf") and code_point != SOFT_HYPHEN
    return marks or lies_in(DRAWN_INTO_OTHERS, code_point)


def is_wide(code_point):
    # Of characters that are not assigned, the database knows no width.
    known = unicodedata.category(chr(code_point)) != "Cn" and unicodedata.east_asian_width(chr(code_point)) in "WF"
    return (known or lies_in(IDEOGRAPHS, code_point)) and not is_zero(code_point)


def write(macro, belongs):
    ranges = []
    for code_point in range(0x300, LAST + 1):
        if not belongs(code_point):
            continue
        if ranges and ranges[-1][1] == code_point - 1:
            ranges[-1][1] = code_point
        else:
            ranges.append([code_point, code_point])
    entries = [f"{macro}(0x{first:04X}, 0x{last:04X})" for first, last in ranges]
    for row in range(0, len(entries), 4):
        print(*entries[row:row + 4])


print(f"// Made by make_character_ranges.py from Unicode {unicodedata.unidata_version}. ZERO_WIDTH: drawn over or into")
print("// another character. WIDE: two columns. In order, from U+0300 on.")
write("ZERO_WIDTH", is_zero)
write("WIDE", is_wide)
