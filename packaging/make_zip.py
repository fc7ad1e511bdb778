#!/usr/bin/env python3
"""Makes a zip of a folder whose bytes depend on nothing but the files' names and contents and the time given.

usage: make_zip.py FOLDER ZIP SECONDS    SECONDS since 1970 are the time of every file in it
"""
import sys
import time
import zipfile
from pathlib import Path

folder, target, seconds = Path(sys.argv[1]), sys.argv[2], int(sys.argv[3])
with zipfile.ZipFile(target, "w") as package:
    for file in sorted(file for file in folder.rglob("*") if file.is_file()):
        entry = zipfile.ZipInfo(file.relative_to(folder.parent).as_posix(), time.gmtime(seconds)[:6])
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = 0o644 << 16
        package.writestr(entry, file.read_bytes())
