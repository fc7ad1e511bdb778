#!/usr/bin/env python3
"""Runs the built faxbook as somebody at a terminal would: on a pseudo-terminal, with its completion in a real bash, and
with its manual page in a real formatter. For the native build; Windows has no such terminals.

python3 terminal_test.py PROGRAM
"""

import fcntl
import os
import pty
import re
import select
import signal
import socket
import struct
import subprocess
import termios
import time
import unicodedata

from faxbook_program import PATIENCE, PROGRAM, FaxbookTest, heed_interrupts, run_tests

WIPED_LINE = b"\r\x1b[K"
CODES = re.compile(rb"\x1b\[[0-9;]*[A-Za-z]")


def columns_of(text):
    return sum(0 if unicodedata.combining(c) else 2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


class Terminal:
    """A pseudo-terminal of some columns, as a context."""

    def __init__(self, columns):
        self.mine, self.theirs = pty.openpty()
        fcntl.ioctl(self.theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 50, columns, 0, 0))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self.mine)
        if self.theirs is not None:
            os.close(self.theirs)

    def let_go(self):
        os.close(self.theirs)
        self.theirs = None

    def read_until(self, part):
        """Everything up to the part; without one, up to the end."""
        text = b""
        while part is None or part not in text:
            if not select.select([self.mine], [], [], PATIENCE)[0]:
                raise AssertionError(f"{part} did not come; there was {text}")
            try:
                more = os.read(self.mine, 65536)
            except OSError:  # the other side is closed
                more = b""
            if not more:
                break
            text += more
        return text


class TerminalTest(FaxbookTest):
    def shown(self, *arguments, columns=80, **environment):
        """What a terminal shows of a command in the end."""
        with Terminal(columns) as terminal:
            process = subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=terminal.theirs,
                                       stderr=terminal.theirs, env=self.environment(TERM="xterm", **environment))
            terminal.let_go()
            text = terminal.read_until(None)
            self.assertEqual(process.wait(PATIENCE), 0)
            # On a busy machine there was a line of progress, which is wiped before anything is printed.
            return text.rpartition(WIPED_LINE)[2].lstrip(b"\r")

    def test_columns_fit_the_terminal_and_headings_stand_out(self):
        wide = self.shown("destinations", "Company", columns=400)
        narrow = self.shown("destinations", "Company", columns=90)
        for text, columns in ((wide, 400), (narrow, 90)):
            self.assertTrue(text.startswith(b"\x1b[1mNAME\x1b[0m"), text[:40])
            plain = CODES.sub(b"", text).decode()
            self.assertLessEqual(max(columns_of(line) for line in plain.splitlines()), columns)
            for number in ("+49 30 23125 011", "+49 40 66969 012", "+493023125004", "山田 花子"):
                self.assertIn(number, plain)

    def test_colours_can_be_refused(self):
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            with Terminal(200) as terminal:
                subprocess.run([PROGRAM, "books"], stdout=terminal.theirs, check=True, stderr=subprocess.DEVNULL,
                               env=self.environment(**{"TERM": "xterm", **environment}))
                terminal.let_go()
                self.assertTrue(terminal.read_until(None).startswith(b"PATH  "), environment)

    def start_long_listing(self, terminal, output):
        """A listing that goes on until somebody reads what it prints: more than a pipe or a socket holds."""
        self.contacts = self.folder / "contacts"
        self.contacts.mkdir()
        (self.contacts / "Large.vcf").write_text(
            "BEGIN:VCARD\nFN:Somebody\nTEL;TYPE=FAX:+49 30 23125 011\nEND:VCARD\n" * 50_000)
        return subprocess.Popen([PROGRAM, "destinations", "Large"], stdin=subprocess.DEVNULL, stdout=output,
                                stderr=terminal.theirs, env=self.environment(TERM="xterm"),
                                preexec_fn=heed_interrupts)

    def test_what_takes_long_shows_progress_and_an_interrupt_leaves_nothing(self):
        _, writer = map(self.enterContext, socket.socketpair())
        with Terminal(80) as terminal:
            process = self.start_long_listing(terminal, writer)
            text = terminal.read_until(b"reading Large: ") + terminal.read_until(b" s\r")
            self.assertRegex(text, rb"\r\x1b\[Kreading Large: (\d+, )?\d+ s\r")
            process.send_signal(signal.SIGINT)
            self.assertEqual(process.wait(PATIENCE), -signal.SIGINT)
            terminal.let_go()
            self.assertTrue(terminal.read_until(None).endswith(WIPED_LINE))

    def test_a_pipe_gets_no_progress(self):
        with Terminal(80) as terminal:
            process = self.start_long_listing(terminal, subprocess.PIPE)
            self.assertTrue(select.select([process.stdout], [], [], PATIENCE)[0])
            time.sleep(1)  # long enough for the line, if there were one
            self.assertEqual(select.select([terminal.mine], [], [], 0)[0], [])
            process.send_signal(signal.SIGINT)
            self.assertEqual(process.wait(PATIENCE), -signal.SIGINT)
            process.stdout.close()

    def test_an_interrupt_leaves_the_old_profiles_or_the_new(self):
        def start(name):
            return subprocess.Popen([PROGRAM, "profile", "create", name, "--service", "VCARD"],
                                    stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                    env=self.environment(), preexec_fn=heed_interrupts)

        begin = time.monotonic()
        self.assertEqual(start("First").wait(PATIENCE), 0)
        usual = time.monotonic() - begin
        for i in range(60):
            process = start(f"P{i}")
            time.sleep(usual * (i % 20) / 16)
            process.send_signal(signal.SIGINT)
            self.assertIn(process.wait(PATIENCE), (0, -signal.SIGINT))
        files = {file.name for file in self.folder.iterdir()}
        self.assertLessEqual(files, {"profiles.ini", "registry", "output", "notes"})
        self.assertIn("First", [row["profile"] for row in self.rows_of("profiles")])

    def test_bash_completes_commands_books_and_names(self):
        with Terminal(200) as terminal:
            shell = subprocess.Popen(["bash", "--norc", "--noprofile", "-i"], stdin=terminal.theirs,
                                     stdout=terminal.theirs, stderr=terminal.theirs, start_new_session=True,
                                     env=self.environment(TERM="xterm", PS1="> ", INPUTRC="/dev/null", HISTFILE="",
                                                          PATH=f"{PROGRAM.parent}:{os.environ['PATH']}"))
            os.write(terminal.mine, b"source <(faxbook completion bash); echo rea''dy\n")
            terminal.read_until(b"ready")
            for typed, answer in ((b"faxbook det\tcomp\t Z\t", "Zoë Müller-Ångström"),
                                  (b'faxbook details "Company/Sales" "Ng\t', "Ngozi Okafor"),
                                  (b"faxbook destinations Customers --search sam --j\t", '"name":"Samuel Ortega"'),
                                  (b"faxbook group Company/Sales Ev\t", "Åsa Söderström")):
                os.write(terminal.mine, typed + b"; echo o''ver\n")
                text = terminal.read_until(b"over\r\n").decode()
                self.assertIn(answer, text[text.index("; echo"):], typed)
            os.write(terminal.mine, b"exit\n")
            shell.wait(PATIENCE)

    def test_the_manual_page_is_well_formed_and_names_every_command(self):
        page = self.output_of("manual")
        formatted = subprocess.run(["groff", "-man", "-ww", "-Tutf8", "-Kutf8", "-P-cbou", "-rLL=120n"],
                                   input=page.encode(), capture_output=True, check=True)
        self.assertEqual(formatted.stderr, b"")
        text = formatted.stdout.decode()
        for part in ("faxbook - read address books", "profile create NAME", "--service NAME[:FLAGS]",
                     'faxbook details Company "Ada Example"', "FAXBOOK_CONTACTS", r"written \/, a backslash \\."):
            self.assertIn(part, text)
        help_text = self.output_of("--help")
        for command in re.findall(r"^  ([a-z-]+)  .*", help_text[help_text.index("Commands:"):], re.MULTILINE)[:12]:
            self.assertRegex(text, rf"(?m)^   {command}\b", command)


if __name__ == "__main__":
    run_tests()
