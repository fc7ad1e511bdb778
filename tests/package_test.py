#!/usr/bin/env python3
"""Tries the package as a maker of programs would: unpacks it into an empty folder, types the commands of its README as
they stand, builds the samples by CMake, too, links with the import library of Visual C++, and runs all of that under
Wine.

python3 package_test.py ZIP WINE
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

from counting import run_tests

ZIP = Path(sys.argv[1]).resolve()
WINE = sys.argv[2]
TOOLCHAIN = Path(__file__).resolve().parents[1] / "cmake" / "mingw-w64.cmake"


COMPANY = """\
name,type,number,company,department,note,comment
Management,group,,,,,Two persons of this folder.
Everyone,group,,,,,"Two groups, one of them from the folder Sales, and two persons, one of whom is in a group as well \
and gets one fax only."
Ada Winterfeld,person,+493023125002,Nordlicht Instruments,Management,,\
"Three fax numbers: at work, at home and the preferred one."
Ada Winterfeld,person,+493023125003,Nordlicht Instruments,Management,,\
"Three fax numbers: at work, at home and the preferred one."
Ada Winterfeld,person,+493023125004,Nordlicht Instruments,Management,,\
"Three fax numbers: at work, at home and the preferred one."
Zoë Müller-Ångström,person,+49 30 23125 011,Nordlicht Instruments,Accounts,,Two fax numbers.
Zoë Müller-Ångström,person,+49 40 66969 012,Nordlicht Instruments,Accounts,,Two fax numbers.
山田 花子,person,+1 212 555 0120,Nordlicht Instruments,東京連絡事務所,,A name in Japanese. A code page without these \
characters shows question marks in their place.
Łukasz Žižka,person,,,,,
"""


class PackageTest(unittest.TestCase):
    def setUp(self):
        # A blank and a letter outside ASCII, as in folders of users.
        temporary = tempfile.TemporaryDirectory(prefix="Müller programs ")
        self.addCleanup(temporary.cleanup)
        with zipfile.ZipFile(ZIP) as package:
            package.extractall(temporary.name)
        self.folder = Path(temporary.name) / ZIP.stem
        self.readme = (self.folder / "README.txt").read_text(encoding="utf-8")

    def run_here(self, command, **environment):
        done = subprocess.run(command, cwd=self.folder, shell=isinstance(command, str), stdin=subprocess.DEVNULL,
                              env={**os.environ, "LC_ALL": "C.UTF-8", **environment}, capture_output=True, timeout=300,
                              check=False)
        # The sample in C prints in the code page.
        output = done.stdout.decode("utf-8", "replace").replace("\r\n", "\n")
        notes = done.stderr.decode("utf-8", "replace")
        self.assertEqual(done.returncode, 0, (command, notes, output))
        return output

    def run_program(self, *command):
        return self.run_here([WINE, *command], FAXBOOK_CONTACTS="examples", FAXBOOK_DIAGNOSTICS="off")

    def commands(self, start):
        found = re.findall(rf"^    ({start}.*)$", self.readme, re.MULTILINE)
        self.assertTrue(found, start)
        return found

    def assert_samples_work(self, folder):
        self.assertIn("    Ngozi Okafor: +44 1632 960123\n", self.run_program(f"{folder}/fax_list.exe"))
        self.assertIn("[Company]\nAda Winterfeld\nNordlicht Instruments\n",
                      self.run_program(f"{folder}/fax_find.exe", "ADA winter"))
        self.assertEqual(self.run_program(f"{folder}/fax_find.exe", "花子"),
                         "[Company]\n山田 花子\nNordlicht Instruments\n東京連絡事務所\n+1 212 555 0120 [Business]\n"
                         "A name in Japanese. A code page without these characters shows question marks in their "
                         "place.\n\n")

    def test_everything_that_the_readme_names_is_there_and_nothing_else(self):
        named = set(re.findall(r"^    (\w+)/ ", self.readme, re.MULTILINE))
        self.assertEqual({path.name for path in self.folder.iterdir()}, named | {"README.txt", "CHANGELOG.md", "LICENSE.txt"})
        for file in re.findall(r"[\w.-]+\.(?:DLL|h|md|txt|a|lib)\b", self.readme):
            self.assertTrue(list(self.folder.rglob(file)), file)
        for document in self.folder.glob("**/*.md"):
            for link in re.findall(r"\]\(([^)#:]+)\)", document.read_text(encoding="utf-8")):
                self.assertTrue((document.parent / link).exists(), (document, link))

    def test_the_program_runs_as_the_readme_says(self):
        command = self.commands(r"bin\\faxbook")[0].replace("\\", "/").replace("faxbook", "faxbook.exe", 1).split()
        self.assertIn("Company/Sales/Export\tExport\tcontainer\tVCARD\t0\n", self.run_program(*command))
        self.assertEqual(self.run_program("bin/faxbook.exe", "destinations", "Company", "--csv"), COMPANY)
        version = self.run_program("bin/faxbook.exe", "--version").split()[1]
        self.assertIn(version, ZIP.name)
        self.assertIn(version, self.readme)

    def test_each_sample_builds_with_one_command(self):
        for command in self.commands("x86_64-w64-mingw32-"):
            self.run_here(command)
        self.assert_samples_work("bin")

    def test_cmake_finds_the_package(self):
        configure, build = self.commands("cmake ")
        configure = configure.replace("%CD%", str(self.folder))
        self.run_here(f"{configure} -G Ninja -DCMAKE_TOOLCHAIN_FILE='{TOOLCHAIN}'")
        self.run_here(build)
        self.assert_samples_work("build")

    def test_cmake_of_another_system_is_told(self):
        done = subprocess.run(["cmake", "-S", "samples", "-B", "build", "-G", "Ninja",
                               f"-DCMAKE_PREFIX_PATH={self.folder}"], cwd=self.folder, capture_output=True, check=False)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("64-bit Windows", " ".join(done.stderr.decode().split()))

    def test_each_header_for_providers_compiles_by_itself(self):
        headers = sorted((self.folder / "include" / "mapi").glob("*.h"))
        self.assertGreater(len(headers), 5)
        for header in headers:
            self.run_here(f"x86_64-w64-mingw32-g++ -std=c++20 -Wall -Wextra -Werror -fsyntax-only -Iinclude "
                          f"-include mapi/{header.name} -x c++ /dev/null")

    def test_visual_c_s_import_library_links_with_a_linker_of_its_kind(self):
        source = self.folder / "start.c"
        source.write_text('#include "qdxl7rc.h"\n'
                          "int start(void) { return DisplayRecipSelect() == -1 ? 42 + GetLastVOKError(0) : 1; }\n")
        self.run_here("x86_64-w64-mingw32-gcc -c -Iinclude start.c -o start.obj")
        self.run_here("lld-link /entry:start /subsystem:console /nodefaultlib /machine:x64 /out:bin/start.exe "
                      "start.obj lib/qdxl7rc.lib")
        self.assertEqual(subprocess.run([WINE, "bin/start.exe"], cwd=self.folder, check=False).returncode, 42)


run_tests()
