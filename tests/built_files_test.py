#!/usr/bin/env python3
"""Checks the built Windows files as they are: names, exported functions and ordinals, imported libraries, protections.

usage: built_files_test.py FOLDER    the folder with QDXL7RC.DLL, QDXL7RA.DLL, faxbook.exe and the sample programs
"""
import re
import subprocess
import sys
from pathlib import Path

from counting import Checks

# Windows takes these from its own folder for every program (KnownDLLs, in all versions since 7). Any other, such as
# VERSION.DLL or COMCTL32.DLL, it would take from beside the program if somebody had put one there.
KNOWN_LIBRARIES = {"KERNEL32.DLL", "USER32.DLL", "ADVAPI32.DLL", "GDI32.DLL", "COMDLG32.DLL", "SHELL32.DLL", "OLE32.DLL",
                   "MSVCRT.DLL"}
LIBRARY_EXPORTS = {
    2: "OpenAddressBook", 3: "CloseAddressBook", 5: "DisplayRecipSelect", 6: "DisplayAdminProfiles",
    9: "GetLastVOKError", 10: "CreateProfile", 11: "DisplayRecipSelectEx", 12: "GetAddressBookList",
    13: "GetDestinationList", 14: "GetDestinationDetails", 15: "GetDestinationsInGroup",
}
PROVIDER_EXPORTS = {"VOKOpen", "VOKAdminProfiles", "VOKAllocateBuffer", "VOKAllocateMore", "VOKFreeBuffer",
                    "VOKFreeProws", "SetResourceDllHandle", "VOKDiagnose", "VOKCountUnread",
                    "VOKListProfiles", "VOKSetMessageReceiver", "VOKStopReading"}

checks = Checks()


def check(condition, what_is_wrong_otherwise):
    checks.true(what_is_wrong_otherwise, condition)


class BuiltFile:
    def __init__(self, path):
        self.path = path
        self.text = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], check=True, capture_output=True,
                                   text=True, errors="replace").stdout

    def sections(self):
        """Name and flags of every section."""
        headers = subprocess.run(["x86_64-w64-mingw32-objdump", "-h", self.path], check=True, capture_output=True,
                                 text=True, errors="replace").stdout
        return re.findall(r"^ *\d+ (\S+) .*\n +(\S.*)$", headers, re.MULTILINE)

    def imports(self):
        return {name.upper() for name in re.findall(r"DLL Name: (\S+)", self.text)}

    def module_name(self):
        found = re.search(r"^Name\s+[0-9a-f]+ (\S+)$", self.text, re.MULTILINE)
        return found and found.group(1)

    def ordinal_base(self):
        return int(re.search(r"^Ordinal Base\s+(\d+)$", self.text, re.MULTILINE).group(1))

    def address_slots(self):
        return int(re.search(r"^\s*Export Address Table\s+([0-9a-f]+)$", self.text, re.MULTILINE).group(1), 16)

    def addresses(self):
        """Ordinal of every function with an address."""
        table = self.text.split("Export Address Table -- Ordinal Base")[1].split("[Ordinal/Name Pointer] Table")[0]
        base = self.ordinal_base()
        return {base + int(index) for index in re.findall(r"^\s*\[\s*(\d+)\] \+base\[\s*\d+\] [0-9a-f]+ Export RVA",
                                                          table, re.MULTILINE)}

    def names(self):
        """Ordinal and name of every named export."""
        table = self.text.split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
        base = self.ordinal_base()
        return {base + int(index): name for index, name in re.findall(r"^\s*\[\s*(\d+)\] (\S+)$", table, re.MULTILINE)}


def check_common(built, beside=frozenset()):
    """The libraries beside it are those that it is there to use."""
    name = built.path.name
    check("pei-x86-64" in built.text, f"{name} is no 64-bit Windows file")
    foreign = built.imports() - KNOWN_LIBRARIES - beside
    check(not foreign, f"{name} imports {', '.join(sorted(foreign))}")
    check(built.imports(), f"{name}: no imports were found")
    check(re.search(r"^Entry \w+ 0+ 0+ Delay Import Directory", built.text, re.MULTILINE), f"{name} has delayed imports")
    # Of these the linker has an option for each; for the marks of control-flow protection it has none.
    for protection in ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"):
        check(protection in built.text, f"{name} lacks {protection}")
    check("relocations stripped" not in built.text, f"{name} cannot be moved: its relocations are stripped")
    both = [section for section, flags in built.sections() if "CODE" in flags and "READONLY" not in flags]
    check(not both, f"{name} can be written to where it is executed: {', '.join(both)}")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    library, provider = BuiltFile(folder / "QDXL7RC.DLL"), BuiltFile(folder / "QDXL7RA.DLL")
    for built in (library, provider, BuiltFile(folder / "faxbook.exe")):
        check_common(built)
    for sample in ("fax_list.exe", "fax_find.exe"):
        check_common(BuiltFile(folder / sample), {"QDXL7RC.DLL"})

    check(library.module_name() == "QDXL7RC.dll", f"the library's export table names {library.module_name()}")
    check(library.ordinal_base() == 2, f"the library's ordinals begin at {library.ordinal_base()}")
    check(library.names() == LIBRARY_EXPORTS, f"the library's exports are {library.names()}")
    check(library.addresses() == set(LIBRARY_EXPORTS), f"functions stand at the ordinals {library.addresses()}")
    check(library.address_slots() == 14, f"the library's export table has {library.address_slots()} ordinals")
    check(provider.module_name() == "QDXL7RA.dll", f"the provider's export table names {provider.module_name()}")
    check(set(provider.names().values()) == PROVIDER_EXPORTS, f"the provider's exports are {provider.names()}")
    sys.exit(checks.finish())


main()
