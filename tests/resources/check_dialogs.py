#!/usr/bin/env -S python3 -B
"""Opens every dialog of a built library under Wine on a display of its own and compares what Windows makes of it with
the tables of expected_resources.py.

    check_dialogs.py LIBRARY OPEN_DIALOGS [PICTURES]

OPEN_DIALOGS is the program open_dialogs.exe. A picture of each dialog is left in the folder PICTURES, where one is
given. WINE names the Wine command, else wine64 is looked for; WINEPREFIX names a prefix in which no other program runs
meanwhile, since Wine takes its display from the first. Prints each difference, then one line "N passed, M failed".
"""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import expected_resources as expected
from check_resources import Checks

CLASS_NAMES = {
    expected.BUTTON: "Button", expected.EDIT: "Edit", expected.STATIC: "Static", expected.LISTBOX: "ListBox",
    expected.COMBOBOX: "ComboBox",
}


class Display:
    """A virtual display, as long as the object is in use."""

    def __enter__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
            pass_fds=(writing,), stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            self.server.wait()
            raise RuntimeError("Xvfb does not start")
        return f":{number}"

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


def find_wine():
    wine = os.environ.get("WINE") or shutil.which("wine64") or "/usr/lib/wine/wine64"
    if not shutil.which(wine):
        raise RuntimeError("no Wine: install wine64 or name the command in WINE")
    return wine


def to_signed(control_id):
    return control_id - (1 << 32) if control_id >> 31 else control_id


def describe(control):
    """A control's line as open_dialogs prints it, the class in lower case."""
    found = "hidden" if control.id == expected.NO_ID else "found"
    name = CLASS_NAMES.get(control.window_class, control.window_class)
    return [str(to_signed(control.id)), name.lower(), found, control.text.replace("\n", "\\n")]


def read_line(program):
    line = program.stdout.readline()
    if not line:
        raise RuntimeError("open_dialogs ended early")
    return line.rstrip("\r\n")


def check_dialog(checks, program, dialog_id, dialog):
    title = read_line(program).split("\t")
    checks.equal(f"dialog {dialog_id}", title,
                 [f"dialog {dialog_id}", dialog.caption, str(len(dialog.controls))])
    controls = []
    while (line := read_line(program)) != "shown":
        controls.append(line.split("\t"))
        controls[-1][1] = controls[-1][1].lower()
    # GetDlgItem gives the first of several controls of one id.
    seen_static = False
    for i, (found, control) in enumerate(zip(controls, dialog.controls)):
        wanted = describe(control)
        if control.id == expected.NO_ID and not seen_static:
            seen_static = True
            wanted[2] = "found"
        checks.equal(f"dialog {dialog_id}: control {i}", found, wanted)


def main(arguments):
    if len(arguments) not in (2, 3):
        print(__doc__, file=sys.stderr)
        return 2
    library, program_file = (str(Path(argument).resolve()) for argument in arguments[:2])
    pictures = Path(arguments[2]) if len(arguments) == 3 else None
    checks = Checks()
    # What Wine and the program say is shown when something fails: Wine also complains of the display's end.
    messages = tempfile.TemporaryFile("w+", errors="replace")
    try:
        with Display() as display:
            environment = os.environ | {"DISPLAY": display}
            environment.setdefault("WINEDEBUG", "-all")
            command = [find_wine(), program_file, "Z:" + library] + [str(dialog_id) for dialog_id in expected.DIALOGS]
            with subprocess.Popen(command, env=environment, text=True, stdin=subprocess.PIPE,
                                  stdout=subprocess.PIPE, stderr=messages) as program:
                for dialog_id, dialog in expected.DIALOGS.items():
                    check_dialog(checks, program, dialog_id, dialog)
                    if pictures:
                        pictures.mkdir(parents=True, exist_ok=True)
                        subprocess.run(["import", "-window", "root", str(pictures / f"dialog_{dialog_id}.png")],
                                       env=environment, check=True)
                    program.stdin.write("\n")
                    program.stdin.flush()
            checks.equal("open_dialogs: exit code", program.returncode, 0)
    except (OSError, RuntimeError, subprocess.CalledProcessError) as error:
        checks.failed += 1
        print(f"the dialogs cannot be opened: {error}")
    if checks.failed:
        messages.seek(0)
        sys.stderr.write(messages.read())
    print(f"{checks.passed} passed, {checks.failed} failed")
    return 1 if checks.failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
