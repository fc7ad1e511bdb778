#!/usr/bin/env python3
"""Runs the built faxbook where there is too little of something: memory for a file, room for what it claims, for its
path, for what is to be said of it.

python3 limits_test.py PROGRAM [LAUNCHER...]   the launcher is wine64 for the Windows program
"""

import os
import subprocess
import unittest
from pathlib import Path

from faxbook_program import LAUNCHER, PROGRAM, FaxbookTest, run_tests, system_path

CARD = "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:{0}\r\nTEL;TYPE=WORK,FAX:+1 555 {0}\r\nEND:VCARD\r\n"
NOT_ALL = b"faxbook: this is not all: something could not be read"


class LimitsTest(FaxbookTest):
    def setUp(self):
        super().setUp()
        self.contacts = self.folder / "contacts"
        self.book = self.contacts / "Book"
        self.book.mkdir(parents=True)
        (self.book / "small.vcf").write_text(CARD.format("Small"), newline="")

    def test_a_file_that_claims_more_than_there_can_be_hides_no_other(self):
        for name in ("huge.vcf", "huge.csv", "addressbook.ini"):
            with open(self.book / name, "wb") as file:
                file.truncate(100 << 30)
        for command in (["destinations", "Book"], ["check"]):
            done = self.run_faxbook(*command, "--csv", FAXBOOK_DIAGNOSTICS="")
            self.assertEqual(done.returncode, 1, done)
            self.assertIn(b"mall", done.stdout)
            for part in (b"huge.vcf: file is too large; ", b"huge.csv: file is too large; ",
                         b"addressbook.ini: settings cannot be read; ", NOT_ALL):
                self.assertIn(part, done.stderr)

    def test_what_cannot_be_reached_is_no_empty_address_book(self):
        missing = self.run_faxbook("books", FAXBOOK_CONTACTS="nothing")
        self.assertEqual(missing.returncode, 1, missing)
        self.assertIn(NOT_ALL, missing.stderr)

    @unittest.skipIf(LAUNCHER, "Wine takes longer paths than Windows")
    def test_paths_that_are_too_long_are_named(self):
        # The path of the last folder but one is short enough for the system, those of the last and of the file beside
        # it are not.
        before = os.open(".", os.O_RDONLY)
        os.chdir(self.contacts)
        length = len(str(self.contacts))
        while length + 1 + 200 < os.pathconf("/", "PC_PATH_MAX"):
            os.mkdir("d" * 200)
            os.chdir("d" * 200)
            length += 201
        os.mkdir("e" * 200)
        Path("f" * 200 + ".vcf").write_text(CARD.format("Far"), newline="")
        os.fchdir(before)
        os.close(before)
        done = self.run_faxbook("check", FAXBOOK_DIAGNOSTICS="")
        self.assertEqual(done.returncode, 1, done)
        for part in (b"eee: folder cannot be read: File name too long; ", b"fff.vcf: file cannot be read; ", NOT_ALL):
            self.assertIn(part, done.stderr)

    def diagnose_into(self, destination):
        """What a listing that has something to say says on standard error."""
        (self.book / "bad.vcf").write_text("text\r\n" + CARD.format("Bad"), newline="")
        done = self.run_faxbook("destinations", "Book", FAXBOOK_DIAGNOSTICS=system_path(destination))
        self.assertEqual((done.returncode, done.stdout.count(b"\n")), (0, 3), done)
        return done.stderr.decode()

    def assert_follows_here(self, notes, reason):
        complaint, message = notes.splitlines()
        self.assertRegex(complaint, f": diagnostics cannot be written: {reason}.*; they follow here; ")
        self.assertIn("bad.vcf:1: text outside of a card", message)

    def test_diagnostics_go_to_a_file_for_their_user_alone(self):
        file = self.folder / "diagnostics"
        self.assertEqual(self.diagnose_into(file), "")
        self.assertIn("bad.vcf:1: text outside of a card", file.read_text())
        if LAUNCHER:
            return
        self.assertEqual(file.stat().st_mode & 0o777, 0o600)
        file.chmod(0o640)
        self.diagnose_into(file)
        self.assertEqual(file.stat().st_mode & 0o777, 0o640)
        link = self.folder / "link"
        link.symlink_to(file)
        self.assertEqual(self.diagnose_into(link), "")
        self.assertEqual(file.read_text().count("\n"), 3)

    def test_diagnostics_that_cannot_be_written_are_said(self):
        self.assert_follows_here(self.diagnose_into(self.folder), "")
        self.assert_follows_here(self.diagnose_into(self.folder / "nothing" / "diagnostics"), "")
        if LAUNCHER:
            return
        self.assert_follows_here(self.diagnose_into("/dev/full"), "No space left on device")
        pipe = self.folder / "pipe"
        os.mkfifo(pipe)
        self.assert_follows_here(self.diagnose_into(pipe), "No such device or address")
        # A reader who does not read.
        reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        writer = os.open(pipe, os.O_WRONLY | os.O_NONBLOCK)
        try:
            while True:
                os.write(writer, b"x" * 4096)
        except BlockingIOError:
            pass
        self.assert_follows_here(self.diagnose_into(pipe), "Resource temporarily unavailable")
        os.close(reader)
        os.close(writer)

    @unittest.skipIf(LAUNCHER or os.name != "posix" or os.geteuid() != 0, "only root makes what belongs to others")
    def test_what_others_have_planted_gets_no_diagnostics(self):
        everybodys = self.folder / "tmp"
        everybodys.mkdir()
        everybodys.chmod(0o1777)
        other = 65534
        planted = everybodys / "planted"
        planted.touch(mode=0o666)
        os.chown(planted, other, other)
        link = self.folder / "link"
        link.symlink_to(self.folder / "target")
        os.chown(link, other, other, follow_symlinks=False)
        for place in (planted, link):
            self.assert_follows_here(self.diagnose_into(place), "Permission denied")
        self.assertEqual(planted.read_bytes(), b"")
        self.assertFalse((self.folder / "target").exists())

    @unittest.skipIf(LAUNCHER, "Wine has no limit for a program's memory")
    def test_at_the_end_of_memory_a_list_is_whole_or_says_that_it_is_not(self):
        import resource

        def run(*arguments, megabytes):
            limit = megabytes << 20
            return subprocess.run([str(PROGRAM), *arguments],
                                  env=self.environment(FAXBOOK_DIAGNOSTICS=""), capture_output=True, check=False,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))

        if run("--version", megabytes=1000).returncode != 0:
            self.skipTest("with sanitizers a program needs more than any limit")
        (self.book / "large.vcf").write_text("".join(CARD.format(number) for number in range(50000)), newline="")
        whole = run("destinations", "Book", megabytes=1000)
        self.assertEqual((whole.returncode, whole.stdout.count(b"\n")), (0, 50002), whole.stderr)
        wholeCount, smallCount = 0, 0
        for megabytes in range(6, 90, 2):
            done = run("destinations", "Book", megabytes=megabytes)
            if done.returncode == 0:
                wholeCount += 1
                self.assertEqual(done.stdout, whole.stdout, megabytes)
                self.assertEqual(done.stderr, b"", megabytes)
            elif NOT_ALL in done.stderr and done.stdout:
                smallCount += done.stdout.endswith(b"Small\t\t\t\t\n")
                self.assertIn(b"there is not enough memory", done.stderr, megabytes)
            else:
                self.assertNotEqual(done.stderr, b"", megabytes)
        self.assertGreater(wholeCount, 0)
        self.assertGreater(smallCount, 0)


if __name__ == "__main__":
    run_tests()
