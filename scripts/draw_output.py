#!/usr/bin/env python3
"""Draws docs/faxbook.svg: what a terminal shows of some commands of faxbook on the sample address books.

usage: draw_output.py FAXBOOK [--check]    the native program; --check only says whether the drawing is up to date
"""
import fcntl
import os
import pty
import re
import struct
import subprocess
import sys
import termios
import unicodedata
from pathlib import Path
from xml.sax.saxutils import escape

COMMANDS = [["destinations", "Company"], ["group", "Company", "Everyone"], ["why", "Company", "Ada Winterfeld"]]
COLUMNS = 104
CELL_WIDTH, LINE_HEIGHT, MARGIN = 8, 18, 16
STYLES = {"0": "", "1": "b", "36": "n"}
DRAWING = Path("docs/faxbook.svg")


def shown_by(command):
    """What a terminal shows in the end."""
    mine, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 50, COLUMNS, 0, 0))
    environment = {**os.environ, "FAXBOOK_CONTACTS": "examples", "FAXBOOK_DIAGNOSTICS": "off", "TERM": "xterm"}
    environment.pop("NO_COLOR", None)
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=theirs, stderr=theirs, env=environment)
    os.close(theirs)
    output = b""
    while True:
        try:
            more = os.read(mine, 65536)
        except OSError:
            break
        if not more:
            break
        output += more
    os.close(mine)
    if process.wait() != 0:
        sys.exit(f"{command} failed: {output.decode()}")
    # On a busy machine there was a line of progress, which is wiped before anything is printed.
    return output.rpartition(b"\r\x1b[K")[2].lstrip(b"\r").decode().replace("\r\n", "\n")


def words_of(line):
    """Each word of the line with its style and its column."""
    style, column = "", 0
    for code, text in re.findall(r"\x1b\[(\d+)m|([^\x1b]+)", line):
        if code:
            style = STYLES[code]
            continue
        for word in re.findall(r" +|[^ ]+", text):
            if word[0] != " ":
                yield word, style, column
            column += sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in word)


def draw(lines):
    width, height = COLUMNS * CELL_WIDTH + 2 * MARGIN, len(lines) * LINE_HEIGHT + 2 * MARGIN
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}" '
           'font-family="DejaVu Sans Mono, Consolas, Menlo, monospace" font-size="13">')
    yield "<style>text { fill: #d8dee9 } .b { font-weight: bold; fill: #fff } .n { fill: #7fd1de } .p { fill: #a3be8c }"
    yield "</style>"
    yield f'<rect width="{width}" height="{height}" rx="8" fill="#1f2430"/>'
    for row, line in enumerate(lines):
        y = MARGIN + row * LINE_HEIGHT + 13
        for word, style, column in words_of(line):
            style = "p" if line.startswith("$ ") else style
            yield (f'<text x="{MARGIN + column * CELL_WIDTH}" y="{y}"' + (f' class="{style}"' if style else "") +
                   f">{escape(word)}</text>")
    yield "</svg>"


def main():
    program = sys.argv[1]
    lines = []
    for command in COMMANDS:
        typed = " ".join(f'"{word}"' if " " in word else word for word in command)
        lines += ["", f"$ faxbook {typed}", *shown_by([program, *command]).splitlines()]
    drawing = "\n".join(draw(lines[1:])) + "\n"
    if sys.argv[2:] != ["--check"]:
        DRAWING.write_text(drawing, encoding="utf-8")
        return
    same = DRAWING.read_text(encoding="utf-8") == drawing
    if not same:
        print(f"FAILED: {DRAWING} is not what the program shows; draw it anew with {Path(__file__).name}")
    print("1 passed, 0 failed" if same else "0 passed, 1 failed")
    sys.exit(0 if same else 1)


main()
