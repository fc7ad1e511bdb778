#!/usr/bin/env python3
"""Draws what counting and filling cost per row against the number of rows, beside the floor, one panel for each build.

usage: plot.py RESULTS-FOLDER FILE.svg    the folder that ./bench leaves
"""
import math
import sys
from pathlib import Path
from xml.sax.saxutils import escape

SECTION = "growth, per row"
PANELS = [("native.tsv", "native build"), ("windows.tsv", "Windows build under Wine")]
LINES = [("counting, ns", 3, "counting", "#1f5fa8", ""), ("counting, ns", 4, "counting, floor", "#1f5fa8", "5 4"),
         ("filling, ns", 3, "filling", "#c0501c", ""), ("filling, ns", 4, "filling, floor", "#c0501c", "5 4")]
WIDTH, HEIGHT, LEFT, TOP, BOTTOM = 460, 360, 60, 86, 50


def read(path):
    rows = [line.rstrip("\n").split("\t") for line in path.read_text(encoding="utf-8").splitlines()]
    return [row for row in rows if row[0] == SECTION]


def text(x, y, words, anchor="middle", more=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" {more}>{escape(words)}</text>'


def draw_panel(rows, title, offset, top_value):
    sizes = sorted({int(row[2]) for row in rows})
    low, high = math.log10(sizes[0]), math.log10(sizes[-1])
    right, bottom = offset + WIDTH - 36, HEIGHT - BOTTOM

    def x(size):
        return offset + LEFT + (math.log10(size) - low) / (high - low) * (right - offset - LEFT)

    def y(value):
        return bottom - value / top_value * (bottom - TOP)

    parts = [text(offset + WIDTH / 2, 24, title, more='font-weight="bold"')]
    for tick in range(0, int(top_value) + 1, 50):
        parts.append(f'<path d="M{offset + LEFT} {y(tick):.1f}H{right}" stroke="#ddd"/>')
        parts.append(text(offset + LEFT - 6, y(tick) + 4, str(tick), "end"))
    for size in sizes:
        parts.append(text(x(size), bottom + 18, f"{size:,}"))
    parts.append(text(offset + WIDTH / 2, HEIGHT - 12, "rows"))
    for index, (what, column, name, colour, dash) in enumerate(LINES):
        points = [(x(int(row[2])), y(float(row[column]))) for row in rows if row[1] == what]
        path = "M" + "L".join(f"{px:.1f} {py:.1f}" for px, py in points)
        style = f'stroke="{colour}" stroke-width="2" stroke-dasharray="{dash}" fill="none"'
        parts.append(f'<path d="{path}" {style}/>')
        left, label = offset + LEFT + 180 * (index // 2), 48 + 18 * (index % 2)
        parts.append(f'<path d="M{left} {label - 4}h24" {style}/>')
        parts.append(text(left + 30, label, name, "start"))
    return parts


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    panels = [(read(folder / name), title) for name, title in PANELS if (folder / name).exists()]
    if not panels:
        sys.exit(f"{folder} has no results; run ./bench")
    highest = max(float(row[column]) for rows, _ in panels for row in rows for column in (3, 4))
    top_value = math.ceil(highest / 50) * 50
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH * len(panels)}" height="{HEIGHT}" '
             'font-family="sans-serif" font-size="12">', '<rect width="100%" height="100%" fill="white"/>',
             text(14, HEIGHT / 2, "ns per row", more=f'transform="rotate(-90 14 {HEIGHT / 2})"')]
    for number, (rows, title) in enumerate(panels):
        parts += draw_panel(rows, title, number * WIDTH, top_value)
    Path(sys.argv[2]).write_text("\n".join(parts) + "\n</svg>\n", encoding="utf-8")


main()
