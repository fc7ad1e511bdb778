#!/usr/bin/env -S python3 -B
"""Opens every dialog of a built library under Wine on a display of its own and compares what Windows makes of it with
the tables of expected_resources.py.

    check_dialogs.py LIBRARY OPEN_DIALOGS [PICTURES]

OPEN_DIALOGS is the program open_dialogs.exe. A picture of each dialog is left in the folder PICTURES, where one is
given. WINE names the Wine command, else wine64 is looked for; WINEPREFIX names a prefix in which no other program runs
meanwhile, since Wine takes its display from the first. Prints each difference, then one line "N passed, M failed".
"""

import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import expected_resources as expected
from counting import Checks
from wine_display import find_wine, run_on_display, take_picture

CLASS_NAMES = {
    expected.BUTTON: "Button", expected.EDIT: "Edit", expected.STATIC: "Static", expected.LISTBOX: "ListBox",
    expected.COMBOBOX: "ComboBox",
}


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

    def work(environment, messages):
        command = [find_wine(), program_file, "Z:" + library] + [str(dialog_id) for dialog_id in expected.DIALOGS]
        with subprocess.Popen(command, env=environment, text=True, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=messages) as program:
            for dialog_id, dialog in expected.DIALOGS.items():
                check_dialog(checks, program, dialog_id, dialog)
                take_picture(pictures, f"dialog_{dialog_id}", environment)
                program.stdin.write("\n")
                program.stdin.flush()
        checks.equal("open_dialogs: exit code", program.returncode, 0)

    return run_on_display(checks, work)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
