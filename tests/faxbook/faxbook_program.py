"""What the tests of the built faxbook share: the program, where it is and how it is started."""

import json
import os
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from counting import run_tests  # for the scripts of tests

EXAMPLES = Path(__file__).resolve().parents[2] / "examples"
PROGRAM = Path(sys.argv[1]).resolve()
LAUNCHER = sys.argv[2:]  # wine64 for the Windows program
PATIENCE = 300  # seconds after which a program is taken to hang, on any machine and beside any other work
INTERRUPTS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)


def system_path(path):
    """The path as the program under test sees it; Wine has the root folder as drive Z."""
    return "Z:" + str(path).replace("/", "\\") if LAUNCHER else str(path)


def code_page_environment(code_page):
    if LAUNCHER:
        return {"LC_ALL": {"1252": "C.UTF-8", "932": "ja_JP.UTF-8"}[code_page]}
    return {"HOST_CODE_PAGE": code_page}


def heed_interrupts():
    """For a program that will be interrupted, in its process before it starts: it would ignore what the tests themselves
    ignore, as they do in the background and under nohup."""
    for interrupt in INTERRUPTS:
        signal.signal(interrupt, signal.SIG_DFL)
    signal.pthread_sigmask(signal.SIG_UNBLOCK, INTERRUPTS)


def some(cases):
    """All cases, but few of them where each start of the program costs half a second."""
    return cases[:3] if LAUNCHER else cases


class FaxbookTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.contacts = EXAMPLES
        self.profiles = self.folder / "profiles.ini"

    def enterContext(self, manager):
        value = manager.__enter__()
        self.addCleanup(manager.__exit__, None, None, None)
        return value

    def environment(self, **changes):
        inherited = {name: value for name, value in os.environ.items() if name not in ("NO_COLOR", "COLUMNS", "LINES")}
        return {**inherited, "FAXBOOK_CONTACTS": system_path(self.contacts),
                "FAXBOOK_PROFILES": system_path(self.profiles), "FAXBOOK_DIAGNOSTICS": "off",
                "HOST_REGISTRY": str(self.folder / "registry"), "LC_ALL": "C.UTF-8", **changes}

    def run_faxbook(self, *arguments, program=None, **environment):
        # Files, not pipes: Wine's server outlives the program that started it and would keep a pipe open.
        output, notes = self.folder / "output", self.folder / "notes"
        with open(output, "wb") as out, open(notes, "wb") as err:
            done = subprocess.run(
                LAUNCHER + [str(program or PROGRAM), *arguments],
                env=self.environment(**environment), stdin=subprocess.DEVNULL, stdout=out,
                stderr=err, timeout=PATIENCE, check=False)
        return subprocess.CompletedProcess(done.args, done.returncode, output.read_bytes(), notes.read_bytes())

    def output_of(self, *arguments, notes="", **environment):
        """Standard output of a command that must end well and say nothing but `notes` beside it."""
        done = self.run_faxbook(*arguments, **environment)
        self.assertEqual((done.returncode, done.stderr.decode()), (0, notes), arguments)
        return done.stdout.decode()

    def rows_of(self, *arguments, **environment):
        return json.loads(self.output_of(*arguments, "--json", **environment))

    def assert_fails(self, arguments, exit_code, *parts, **environment):
        """Nothing on standard output, and one line on standard error that has the parts in it."""
        done = self.run_faxbook(*arguments, **environment)
        message = done.stderr.decode()
        self.assertEqual((done.returncode, done.stdout), (exit_code, b""), (arguments, message))
        self.assertRegex(message, r"\Afaxbook: [^\n]+\n\Z", arguments)
        for part in parts:
            self.assertIn(part, message, arguments)
