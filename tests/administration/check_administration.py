#!/usr/bin/env -S python3 -B
"""Works the profile administration of a built library under Wine on a display of its own, by its buttons, and looks at
the profiles file, the results and the registry afterwards.

    check_administration.py LIBRARY DRIVER [PICTURES]

DRIVER is the program administration_driver.exe; the provider lies beside LIBRARY. Pictures are left in the folder
PICTURES, where one is given and ImageMagick's "import" is there. WINE and WINEPREFIX are as for check_dialogs.py.
Prints each difference, then one line "N passed, M failed".
"""

import subprocess
import sys
import tempfile
import time
from pathlib import Path

TESTS = Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TESTS), str(TESTS / "resources")]

import expected_resources as expected
from counting import Checks
from wine_display import find_wine, run_on_display, take_picture

OK, CANCEL, YES, NO = 1, 2, 6, 7
LIST, ADD, REMOVE, PROPERTIES, COPY, DISPLAY, NAME = 1000, 1001, 1002, 1003, 1004, 1005, 1010
ENTER, ESCAPE, DOWN, DELETE = 0x0D, 0x1B, 0x28, 0x2E
# The result of DisplayAdminProfiles, the last result, and ProfileLock.
CLOSED, CANCELLED = "1 0x00000000 0", "1 0x80040113 0"
NOT_SHOWN, DAMAGED = "0 0x80040102 0", "0 0x8004011B 0"
PATIENCE = 120  # seconds after which a dialog is taken to hang
HEAD = "# Profiles of the fax address books. Text is UTF-8.\n\n"
SERVICE = "service = VCARD\nflags = 0x00000000\n"


class Administration:
    """The driver at work, which answers each line that it is told with one."""

    def __init__(self, program, checks, take_picture):
        self.program, self.checks, self.take_picture = program, checks, take_picture

    def ask(self, *words):
        self.program.stdin.write("\t".join(map(str, words)) + "\n")
        self.program.stdin.flush()
        answer = self.program.stdout.readline()
        if not answer:
            raise RuntimeError("administration_driver ended early")
        return answer.rstrip("\r\n")

    def do(self, *words):
        answer = self.ask(*words)
        if answer.startswith("error: "):
            raise RuntimeError(f"{' '.join(map(str, words))}: {answer}")

    def expect(self, what, find, wanted):
        """What is found comes to be what is wanted: dialogs act when they get to it."""
        end = time.monotonic() + PATIENCE
        while (found := find()) != wanted and time.monotonic() < end:
            time.sleep(0.05)
        self.checks.equal(what, found, wanted)

    def expect_items(self, what, control, wanted):
        self.expect(what, lambda: self.ask("items", control), wanted)

    def await_kind(self, kind):
        end = time.monotonic() + PATIENCE
        while (found := self.ask("kind")) != kind:
            if time.monotonic() > end:
                raise RuntimeError(f"the dialog is {found}, not {kind}")
            time.sleep(0.05)

    def press(self, button, kind):
        """Presses a button, whereupon the user can reach a dialog of that kind."""
        self.do("press", button)
        self.await_kind(kind)

    def expect_message(self, what, string_id):
        self.checks.equal(what, (self.ask("caption"), self.ask("message")),
                          (expected.STRINGS[50], expected.STRINGS[string_id]))

    def open(self, profile):
        self.do("open", "library", profile)
        self.await_kind("profiles")


def check_without_dialogs(work, checks, diagnostics):
    for module in ("none", "driver"):
        work.do("open", module, "Office")
        checks.equal(f"resources of module {module}", work.ask("end"), NOT_SHOWN)
    said = diagnostics.read_text().splitlines()
    checks.equal("diagnostics without dialogs", ["without the dialogs" in line for line in said], [True, True])


def check_adding_and_copying(work, checks, profiles):
    work.open("Office")
    checks.equal("caption", work.ask("caption"), expected.STRINGS[50])
    checks.equal("parent window is enabled", work.ask("owner"), "no")
    checks.equal("buttons that are enabled without a selection",
                 [work.ask("enabled", button) for button in (ADD, REMOVE, PROPERTIES, COPY)], ["yes", "no", "no", "no"])

    work.press(ADD, "name")
    work.do("type", NAME, " ")
    work.press(OK, "message")
    work.expect_message("without a name", 51)
    work.press(OK, "name")
    for name, fault in (("a\u0085b", "control character"), ("n" * 65, "64 are the most")):
        work.do("type", NAME, name)
        work.press(OK, "message")
        checks.equal(f"why a profile cannot be named {name!r}", fault in work.ask("message"), True)
        work.press(OK, "name")
    work.do("type", NAME, " Office ")
    work.take_picture("name")
    work.press(OK, "profiles")
    work.expect_items("profile added", LIST, "Office*")
    checks.equal("file with one profile", profiles.read_text(), f"{HEAD}[profile Office]\n{SERVICE}")

    work.press(COPY, "name")
    work.do("type", NAME, "Office")
    work.press(OK, "message")
    work.expect_message("name in use", 52)
    work.take_picture("name_in_use")
    work.press(OK, "name")
    work.do("type", NAME, "Büro 東京 & Co")
    work.press(OK, "profiles")
    work.expect_items("profile copied", LIST, "Büro 東京 & Co*|Office")
    work.press(ADD, "name")
    work.press(CANCEL, "profiles")
    work.do("press", CANCEL)
    checks.equal("closed by the button", work.ask("end"), CLOSED)
    checks.equal("file with a copy", profiles.read_text(),
                 f"{HEAD}[profile Office]\n{SERVICE}\n[profile Büro 東京 & Co]\n{SERVICE}")


def check_choosing_and_removing(work, checks, profiles):
    work.open("Office")
    work.expect_items("list with the caller's profile selected", LIST, "Büro 東京 & Co|Office*")
    checks.equal("buttons that are enabled with a selection",
                 [work.ask("enabled", button) for button in (REMOVE, PROPERTIES, COPY)], ["yes", "yes", "yes"])
    work.do("choose", DISPLAY, "Office")
    work.expect_items("profile for display", DISPLAY, "Büro 東京 & Co|Office*")
    checks.equal("file with a display profile", profiles.read_text().startswith(f"{HEAD}display = Office\n"), True)
    work.do("choose", LIST, "Büro 東京 & Co")
    work.take_picture("profiles")

    work.do("key", DELETE)
    work.await_kind("message")
    work.expect_message("question before removing", 53)
    work.press(NO, "profiles")
    work.expect_items("profile kept", LIST, "Büro 東京 & Co*|Office")
    work.do("choose", LIST, "Office")
    work.press(REMOVE, "message")
    work.take_picture("remove")
    work.press(YES, "profiles")
    work.expect_items("profile removed, the next selected", LIST, "Büro 東京 & Co*")
    work.expect_items("display profile removed", DISPLAY, "Büro 東京 & Co")
    work.do("key", ESCAPE)
    checks.equal("cancelled by Escape", work.ask("end"), CANCELLED)
    checks.equal("file keeps what was done before", profiles.read_text(),
                 f"{HEAD}\n[profile Büro 東京 & Co]\n{SERVICE}")


def check_properties(work, checks, profiles):
    # A folder that every Wine prefix has, and that nobody changes while it is listed.
    location = r"C:\windows"
    text = ("[profile None]\n\n[profile Two]\nservice = VCARD\nlocation = C:\\a & b\n# second\nservice = VCARD\n"
            "location = C:\\second\nflags = 0x00000001\n")
    profiles.write_text(text)
    work.open("None")
    work.press(PROPERTIES, "message")
    work.expect_message("profile without services", 54)
    work.press(OK, "profiles")

    work.do("choose", LIST, "Two")
    work.press(PROPERTIES, "menu")
    work.take_picture("services")
    for key in (DOWN, DOWN, ENTER):
        work.do("key", key)
    work.await_kind("browse")
    checks.equal("location shown", r"C:\second" in work.ask("message"), True)
    work.expect("folder selected", lambda: work.ask("location", location), "windows")
    work.take_picture("location")
    work.press(OK, "profiles")
    work.expect("file with the second location changed", profiles.read_text, text.replace(r"C:\second", location))

    profiles.write_text("[profile Other]\n")
    work.do("press", PROPERTIES)
    work.expect_items("profile removed by another program", LIST, "Other")
    work.do("press", CANCEL)
    checks.equal("closed after the properties", work.ask("end"), CLOSED)


def check_other_ends(work, checks, profiles):
    work.open("Office")
    work.expect_items("nothing selected for an unknown profile", LIST, "Other")
    work.do("key", ENTER)
    checks.equal("closed by Enter", work.ask("end"), CLOSED)
    work.open("Office")
    work.do("close")
    checks.equal("cancelled by the system menu", work.ask("end"), CANCELLED)
    work.open("Office")
    profiles.write_text("what is this\n")
    work.press(ADD, "name")
    work.do("type", NAME, "New")
    work.do("press", OK)
    checks.equal("file damaged meanwhile", work.ask("end"), DAMAGED)
    checks.equal("damaged file is left alone", profiles.read_text(), "what is this\n")


def main(arguments):
    if len(arguments) not in (2, 3):
        print(__doc__, file=sys.stderr)
        return 2
    library, driver = (str(Path(argument).resolve()) for argument in arguments[:2])
    pictures = Path(arguments[2]) if len(arguments) == 3 else None
    checks = Checks()

    def work(environment, messages):
        with tempfile.TemporaryDirectory() as folder:
            profiles, diagnostics = Path(folder, "profiles.ini"), Path(folder, "said.txt")
            environment = environment | {"FAXBOOK_PROFILES": f"Z:{profiles}", "FAXBOOK_DIAGNOSTICS": f"Z:{diagnostics}"}
            # There is no window manager: Wine draws the frames and captions itself.
            subprocess.run([find_wine(), "reg", "add", r"HKCU\Software\Wine\X11 Driver", "/f", "/v", "Managed", "/d",
                            "N"], env=environment, stdout=subprocess.DEVNULL, stderr=messages, check=True)

            def take(name):
                time.sleep(0.3)  # windows are painted after they can be reached
                take_picture(pictures, f"administration_{name}", environment)

            with subprocess.Popen([find_wine(), driver, "Z:" + library], env=environment, encoding="utf-8",
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=messages) as program:
                administration = Administration(program, checks, take)
                check_without_dialogs(administration, checks, diagnostics)
                check_adding_and_copying(administration, checks, profiles)
                check_choosing_and_removing(administration, checks, profiles)
                check_properties(administration, checks, profiles)
                check_other_ends(administration, checks, profiles)
            checks.equal("administration_driver: exit code", program.returncode, 0)

    return run_on_display(checks, work)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
