#!/usr/bin/env python3
"""Looks whether parts that are linked into one file give one name to two types: the language calls that ill-formed, and no
compiler tells.

usage: names_test.py    from the top folder of the tree
"""
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

from counting import Checks

# What is linked together, by the beginnings of paths.
LINKED = {
    "QDXL7RC.DLL": ["library/", "mapi/", "platform/class_library/"],
    "QDXL7RA.DLL": ["provider/", "mapi/", "dialogs/", "text/", "platform/system/"],
    # provider-test reads tables with the library's own readers.
    "faxbook": ["faxbook/", "client/", "include/", "mapi/", "text/", "platform/system/", "library/provider/",
                "library/model/", "library/queries/"],
    "provider_tests": ["tests/provider/", "provider/", "include/", "mapi/", "dialogs/", "text/", "platform/system/"],
    "library_tests": ["tests/library/", "tests/scripted_provider/script", "mapi/"],
    "faxbook_tests": ["tests/faxbook/", "faxbook/", "client/", "include/", "mapi/", "text/", "platform/system/",
                      "library/provider/", "library/model/", "library/queries/", "provider/formats/csv/csv_reader"],
    "product_work": ["tests/products/", "include/", "mapi/"],
}
UNNAMED = re.compile(r"^namespace \{$.*?^\}  // namespace$", re.DOTALL | re.MULTILINE)
TYPE = re.compile(r"^(?:typedef )?(?:class|struct|union|enum(?: class)?) (\w+)(?: final)?(?: : [^;{]*)? \{", re.MULTILINE)


def read_types():
    files = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.cpp"], check=True,
                           capture_output=True, text=True).stdout.split()
    return {file: TYPE.findall(UNNAMED.sub("", Path(file).read_text(encoding="utf-8")))
            for file in files if Path(file).exists()}


def main():
    if len(sys.argv) != 1:
        sys.exit(__doc__)
    checks = Checks()
    types = read_types()
    for product, starts in LINKED.items():
        files_of_name = defaultdict(list)
        for file, names in types.items():
            if file.startswith(tuple(starts)):
                for name in names:
                    files_of_name[name].append(file)
        checks.true(f"{product}: no types are found", len(files_of_name) > 5)
        for name, files in files_of_name.items():
            checks.true(f"{product}: {name} is in {', '.join(files)}", len(set(files)) == 1)
    sys.exit(checks.finish())


main()
