"""A virtual display on which Windows programs show their dialogs under Wine, and the script's end around it."""

import os
import shutil
import subprocess
import sys
import tempfile


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


def take_picture(folder, name, environment):
    """Leaves a picture of the display in the folder, where one is given and ImageMagick's "import" is there."""
    if folder is None or not shutil.which("import"):
        return
    folder.mkdir(parents=True, exist_ok=True)
    subprocess.run(["import", "-window", "root", str(folder / f"{name}.png")], env=environment, check=True)


def run_on_display(checks, work):
    """Calls work(environment, messages) with a display for its programs, prints what the checks came to, and returns
    the script's exit code. What programs say in `messages` is shown only when something fails: Wine also complains of
    the display's end."""
    with tempfile.TemporaryFile("w+", errors="replace") as messages:
        try:
            with Display() as display:
                environment = os.environ | {"DISPLAY": display}
                environment.setdefault("WINEDEBUG", "-all")
                work(environment, messages)
        except (OSError, RuntimeError, subprocess.CalledProcessError) as error:
            checks.fail(f"the dialogs cannot be opened: {error}")
        if checks.failed:
            messages.seek(0)
            sys.stderr.write(messages.read())
    return checks.finish()
