#!/usr/bin/env python3
"""What goes out of the built faxbook when its address files are hostile: to a shell that completes, to a terminal, to a
spreadsheet, and into a pipe whose reader goes away.

python3 output_test.py PROGRAM [LAUNCHER...]   the launcher is wine64 for the Windows program
"""

import csv
import io
import json
import os
import re
import shutil
import subprocess
import unittest

from faxbook_program import EXAMPLES, LAUNCHER, PROGRAM, FaxbookTest, run_tests, some, system_path
from terminal_test import CODES, Terminal

needs_native = unittest.skipIf(LAUNCHER, "for the native build, as terminal_test.py")


class Bash:
    """An interactive bash, as a context."""

    def __init__(self, environment, folder):
        self.terminal = Terminal(400)
        self.shell = subprocess.Popen(["bash", "--norc", "--noprofile", "-i"], stdin=self.terminal.theirs,
                                      stdout=self.terminal.theirs, stderr=self.terminal.theirs, cwd=folder,
                                      start_new_session=True, env=environment)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.shell.kill()
        self.shell.wait(60)
        self.terminal.__exit__()

    def run(self, typed):
        """What the terminal gets behind the command that is typed."""
        os.write(self.terminal.mine, (typed + "; echo o''ver\n").encode())
        text = self.terminal.read_until(b"over\r\n").decode(errors="replace")
        return text[max(0, text.rfind("; echo o''ver")):]


# What each begins with, no other does.
AWKWARD_NAMES = ("Ann `>ran` Lee", "Bob $(>ran) $HOME ${x}", "Cy \"x\" 'y' \"'", "Dee\\back\\slash\\", "Eve !! !ran wow!",
                 "Flo *?[a-z]{a,b}", "Guy;>ran|>ran&>ran", "Hal # no comment", "Ina =x:y@z =a:b", "Jo<ran>ran (x)",
                 "Kim ‘a’ “b” „c‚", "山田`>ran`山$(>ran)山'x'山\\", "Lee\u0085x\u202e`>ran`\u2066y\u009b2J'z",
                 "Mo~ ^a^b%1", "-Nat-", "--Ola `>ran`", "~Pat", "#Quin", "!Rae", "'Sue'", '"Tom"', "$USER", "`>ran`",
                 "(Uli)", "=1+1", "O'Brien-Smith, Ltd.", "Zoë")
AWKWARD_BOOKS = ("Tab\there", "Li\nnes\n`>ran`", "Esc\x1b[31m\x7f", "Back\\slash", "Cost $HOME `>ran`", "Right \u202e to left")


def beginnings_of(name):
    """How a word can have been begun: bare, with either quote before it, or with one inside."""
    shown = re.split("[\0-\x1f\x7f-\x9f\u2028-\u202e\u2066-\u2069]", name)[0]
    dashes = len(name) - len(name.lstrip("-"))
    for length in sorted({dashes + 1, max(dashes + 1, len(shown) // 2), len(shown)} - {0}):
        part = shown[:length]
        yield re.sub(r"([^A-Za-z0-9\x80-\U0010ffff])", r"\\\1", part)
        if part.startswith("-"):
            continue  # completed as an argument behind "--", which does not go into quotes
        if not part.endswith("'"):
            yield "'" + part.replace("'", "'\\''")
        if "!" not in part:
            yield '"' + re.sub(r'([$`"\\])', r"\\\1", part)
        if re.match(r"[A-Z][^']+$", part):
            yield part[0] + "'" + part[1:]
    # A quote with a dollar, closed before a character that begins a word to readline.
    if name[0].isalpha() and ":" in name:
        yield f"$'{name[0]}'" + re.sub("([ =@])", r"\\\1", name[1:name.index(":") + 1])


@needs_native
class CompletionTest(FaxbookTest):
    def bash(self, *setup, **environment):
        shell = Bash(self.environment(TERM="xterm", PS1="> ", INPUTRC="/dev/null", HISTFILE="", LOCPATH=str(self.folder),
                                      PATH=f"{PROGRAM.parent}:{os.environ['PATH']}", **environment), self.folder)
        self.enterContext(shell)
        for line in ("source <(faxbook completion bash)", *setup):
            shell.run(line)
        return shell

    def make_locale(self, charset):
        """Of that character set; C where the system lacks it."""
        name = f"test.{charset}"
        subprocess.run(["localedef", "-c", "-i", "POSIX", "-f", charset, self.folder / name], check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return name if (self.folder / name).exists() else "C"

    def test_what_bash_completes_is_the_name_and_runs_nothing(self):
        self.contacts = self.folder / "contacts"
        (self.contacts / "Names").mkdir(parents=True)
        with open(self.contacts / "Names" / "all.vcf", "w", encoding="utf-8") as file:
            for name in AWKWARD_NAMES:
                escaped = re.sub(r"([\\,;])", r"\\\1", name)
                file.write(f"BEGIN:VCARD\nVERSION:3.0\nFN:{escaped}\nTEL;TYPE=FAX:1\nEND:VCARD\n")
        for name in AWKWARD_BOOKS:
            shutil.copy(EXAMPLES / "Private.vcf", self.contacts / f"{name}.vcf")
        book_words = [re.sub(r"([/\\])", r"\\\1", name) for name in AWKWARD_BOOKS]
        self.profiles.write_text("[profile Ed & `>ran`]\nservice = VCARD\n")
        # The words before one that is begun, the begun one's option, and what it is to become.
        cases = [(["details", "Names"], "", name) for name in AWKWARD_NAMES]
        cases += [(["destinations"], "", word) for word in book_words]
        cases += [(["books", "--profile"], "", "Ed & `>ran`"), (["books"], "--profile=", "Ed & `>ran`")]
        # In the last of these character sets a letter's second byte can be a backslash or `.
        for locale in ("C.UTF-8", "C", self.make_locale("GBK")):
            # The program as a function: it completes as ever, and keeps the arguments that it is called with.
            shell = self.bash("""faxbook() { case $1 in complete*) command faxbook "$@" ;; """
                              """*) printf '%s\\0' "$@" >got ;; esac; }""", "history -s ran", LC_ALL=locale)
            for before, option, word in cases:
                beginnings = beginnings_of(word)
                if locale != "C.UTF-8":  # whose letters are typed
                    beginnings = [typed for typed in beginnings if typed.isascii()][:2]
                for typed in beginnings:
                    shell.run(f"rm -f got; faxbook {' '.join(before)} {option}{typed}\t")
                    got = (self.folder / "got").read_text().split("\0")[:-1]
                    dashes = ["--"] if word.startswith("-") else []
                    self.assertEqual(got, [*before, *dashes, option + word], (locale, typed))
        self.assertEqual([file.name for file in self.folder.iterdir() if "ran" in file.name], [])
        # What is the shell's own gets no names.
        for line, word in (("$(echo C)\t", ["C"]), ('"`echo C`\t"', ["C"]), (">C\t", []),
                           ("~/C\t", [f"{os.environ['HOME']}/C"])):
            shell.run(f"faxbook details Names {line}")
            self.assertEqual((self.folder / "got").read_text().split("\0")[:-1], ["details", "Names", *word], line)


# All that a terminal obeys and that changes the order or the lines of text, with letters between them.
CONTROLS = [chr(code) for code in (*range(1, 0x20), *range(0x7f, 0xa0), *range(0x2028, 0x202f), *range(0x2066, 0x206a))]
OBEYED = re.compile(f"[{''.join(re.escape(c) for c in CONTROLS)}]".replace(re.escape("\n"), ""))
# Some of each kind, for fields that are cut; those that the names of Windows' files can have, and those that lines can.
LATER_CONTROLS = "\x9b1m-\x85-\u2028-\u202e-\u2066x"
LINE_CONTROLS = "\x1b[31m-\a-\x7f-" + LATER_CONTROLS


class ControlCharactersTest(FaxbookTest):
    def fill_contacts(self):
        """A file of each kind with control characters in everything that is read, and in its own name."""
        self.contacts = self.folder / "contacts"
        # Windows has no names with control characters of ASCII, and Linux has them all.
        name = LATER_CONTROLS if LAUNCHER else "".join(CONTROLS)
        folder = self.contacts / f"B{name}"
        folder.mkdir(parents=True)
        x = LINE_CONTROLS
        (folder / f"c{name}.vcf").write_text(
            f"BEGIN:VCARD\nVERSION:3.0\nFN:Ann{x}\nORG:O{x};D{x}\nNOTE:N{x}\\nM{x}\nUID:u{x}\n"
            f"item1.TEL;TYPE=FAX,{x}:+1{x}2\nitem1.X-ABLabel:fax{x}\nTEL;TYPE=FAX:3{x}\nCATEGORIES:G{x}\nEND:VCARD\n"
            f"BEGIN:VCARD\nVERSION:4.0\nKIND:group\nFN:Grp{x}\nMEMBER:u{x}\nMEMBER:gone{x}\nEND:VCARD\n"
            f"stray{x}\nBEGIN:VCARD\nFN;CHARSET=no{x}:Bo{x}\nTEL;FAX:4\nEND:VCARD\n", encoding="utf-8", newline="\n")
        (folder / "t.csv").write_text(f'Name,Fax{x},Fax,Notes\nCy{x},5{x},6,"a{x}\n{x}b"\n', encoding="utf-8")
        (folder / "addressbook.ini").write_text(f"style = fan{x}\ncolour{x} = 1\ncategories = groups\n", encoding="utf-8")
        if not LAUNCHER:
            (self.contacts / os.fsdecode(b"D\x9b1m\xff.vcf")).write_bytes(b"BEGIN:VCARD\nFN:D\x9b1m\nTEL;FAX:7\nEND:VCARD\n")
        self.profiles.write_text(f"[profile P{LATER_CONTROLS}]\nservice = VCARD\nlocation = {self.contacts}\n", encoding="utf-8")
        books = [row["path"] for row in self.rows_of("books")]
        return books, next(book for book in books if book.startswith("B"))

    def test_none_reaches_a_terminal_from_any_command_in_any_format(self):
        books, book = self.fill_contacts()
        self.assertEqual(len(books), 1 if LAUNCHER else 2, books)
        names = {row["name"] for row in self.rows_of("destinations", book)}
        person, group = (next(name for name in names if name.startswith(start)) for start in ("Ann", "Grp"))
        commands = [["books"], ["destinations", book], ["details", book, person], ["group", book, group],
                    ["why", book, person], ["check"], ["profiles"], ["check", system_path(self.contacts)],
                    ["destinations", "no" + LATER_CONTROLS], ["details", book, "no" + LATER_CONTROLS],
                    ["why", book, group], ["books", "--profile", "no" + LATER_CONTROLS], ["provider-test", f"no{LATER_CONTROLS}.DLL"],
                    ["profile", "create", f"new{LATER_CONTROLS}"], ["x" + LATER_CONTROLS], ["books", "--x" + LATER_CONTROLS],
                    ["profile", "create", "n", "--service", f"V:{LATER_CONTROLS}"],
                    ["provider-test", system_path(PROGRAM.parent / "QDXL7RA.DLL")]]
        said = []
        for command in commands:
            # Under Wine each start costs half a second.
            for form in (["--csv"], ["--json"]) if LAUNCHER else ([], ["--table"], ["--csv"], ["--json"]):
                if command[0] == "profile" and form:
                    continue
                said.append(self.run_faxbook(*command, *form, FAXBOOK_DIAGNOSTICS=""))
        for words in ([], ["destinations"], ["details", book], ["group", book], ["--profile"]):
            said.append(self.run_faxbook("complete", str(len(words)), "--", *words))
            line = "faxbook " + " ".join(f"'{word}'" for word in words) + " "
            said.append(self.run_faxbook("complete-line", "--", line, ""))
        for done in said:
            for stream in (done.stdout, done.stderr):
                # Not one byte of it is anything but UTF-8: another could be obeyed by terminals of other character sets.
                text = stream.decode()
                if stream == done.stdout and not {"--csv", "--json", "--table"} & set(done.args):
                    text = text.replace("\t", "")  # between cells
                self.assertEqual(OBEYED.findall(text), [], done.args)
        self.assertGreater(sum(b"Ann" in done.stdout for done in said), 3)
        self.assertGreater(sum(b"fan" in done.stderr for done in said), 3)
        if not LAUNCHER:
            environment = {"FAXBOOK_DIAGNOSTICS": str(self.folder / "diagnostics")}
            self.run_faxbook("destinations", book, **environment)
            diagnostics = (self.folder / "diagnostics").read_text()
            self.assertTrue("fan" in diagnostics and not OBEYED.search(diagnostics), diagnostics)

    @needs_native
    def test_a_terminal_gets_no_codes_but_those_of_the_program(self):
        _, book = self.fill_contacts()
        for command in (["destinations", book], ["why", book, "nobody"], ["check"]):
            with Terminal(100) as terminal:
                process = subprocess.Popen([PROGRAM, *command], stdin=subprocess.DEVNULL, stdout=terminal.theirs,
                                           stderr=terminal.theirs,
                                           env=self.environment(TERM="xterm", FAXBOOK_DIAGNOSTICS=""))
                terminal.let_go()
                shown = terminal.read_until(None)
                process.wait()
            self.assertEqual(set(CODES.findall(shown)) - {b"\x1b[1m", b"\x1b[0m", b"\x1b[36m", b"\x1b[K"}, set())
            self.assertEqual(set(OBEYED.findall(CODES.sub(b"", shown).decode())) - {"\r"}, set(), command)

    @needs_native
    def test_the_questions_about_profiles_show_names_without_them(self):
        self.fill_contacts()
        with Terminal(100) as terminal:
            process = subprocess.Popen([PROGRAM, "profile", "admin"], stdin=terminal.theirs, stdout=terminal.theirs,
                                       stderr=terminal.theirs, env=self.environment(TERM="xterm"))
            os.write(terminal.mine, b"list\nclose\n")
            process.wait()
            terminal.let_go()
            shown = terminal.read_until(None).decode()
        self.assertEqual(shown.count("  P 1m- - - - x"), 2, shown)
        self.assertEqual(set(OBEYED.findall(shown)) - {"\r"}, set())

    @needs_native  # in a code page without them, they are gone before
    def test_json_has_every_character(self):
        _, book = self.fill_contacts()
        names = {row["name"] for row in self.rows_of("destinations", book)}
        # The provider makes one line of a name; of the rest nothing is lost.
        self.assertTrue(any(LATER_CONTROLS in name for name in names), names)


class SpreadsheetTest(FaxbookTest):
    def test_csv_read_again_as_an_address_book_gives_the_same_names_and_numbers(self):
        self.contacts = self.folder / "contacts"
        self.contacts.mkdir()
        destinations = [("=1+1", "+49 30 23125"), ("-Acme-", "+1 (212) 555-0100"), ("@home", "+cmd|'/C calc'!A0"),
                        ("+Plus, Ltd.", "-5"), ("x;=y;\"z\"", "+49 30 1,,2"), ("'=quoted", "+49 30 1 ext. 7"),
                        ("=wide", "+49-30-1"), ("O'Neill", "@1"), ("'t Hooft", "=1+1")]
        with open(self.contacts / "First.vcf", "w", encoding="utf-8") as file:
            for name, number in destinations:
                escaped = re.sub(r"([\\,;])", r"\\\1", name)
                file.write(f"BEGIN:VCARD\nVERSION:3.0\nFN:{escaped}\nUID:{name}\nTEL;TYPE=FAX,WORK:{number}\nEND:VCARD\n")
            file.write("BEGIN:VCARD\nVERSION:4.0\nKIND:group\nFN:All\n")
            file.writelines(f"MEMBER:{name}\n" for name, _ in destinations)
            file.write("END:VCARD\n")
        text = self.output_of("group", "First", "All", "--csv")
        for row in csv.DictReader(io.StringIO(text)):
            for cell in row.values():
                self.assertNotRegex(cell, r"\A[=@\t\r\n＝＋－＠]|\A[+-].*[^-+0-9 ().,ext]")
        (self.contacts / "Second.csv").write_text(text, encoding="utf-8")
        again = [(row["name"], row["number"]) for row in self.rows_of("destinations", "Second")]
        first = [(row["name"], row["fax"]) for row in self.rows_of("group", "First", "All")]
        self.assertEqual(first, destinations)
        self.assertEqual(again, destinations)
        self.assertIn("so that a spreadsheet runs none", self.output_of("--help"))


class ReaderGoneTest(FaxbookTest):
    def run_into(self, output, arguments, **environment):
        with open(self.folder / "notes", "wb") as notes:
            done = subprocess.run([*LAUNCHER, str(PROGRAM), *arguments], env=self.environment(**environment),
                                  stdin=subprocess.DEVNULL, stdout=output, stderr=notes, timeout=300, check=False)
        return done.returncode, (self.folder / "notes").read_text()

    COMMANDS = (["destinations", "Company"], ["books", "--json"], ["why", "Company", "Ada Winterfeld", "--csv"],
                ["books", "--table"], ["details", "Company", "Everyone"], ["group", "Company", "Everyone"], ["check", "--csv"],
                ["resources"], ["manual"], ["completion", "bash"], ["--help"], ["destinations", "--help"], ["--version"],
                ["complete", "0"], ["complete-line", "--", "faxbook ", ""])

    def test_a_reader_that_goes_is_no_failure_of_the_disk(self):
        for arguments in some(self.COMMANDS):
            reader, writer = os.pipe()
            os.close(reader)
            with os.fdopen(writer, "wb") as pipe:
                exit_code, notes = self.run_into(pipe, arguments)
            self.assertEqual(exit_code, 141, (arguments, notes))
            self.assertNotIn("output", notes, arguments)

    def test_the_program_ends_when_its_reader_has_enough(self):
        self.contacts = self.folder / "contacts"
        self.contacts.mkdir()
        (self.contacts / "Large.vcf").write_text("BEGIN:VCARD\nFN:Somebody\nTEL;TYPE=FAX:+49 30 23125 011\nEND:VCARD\n" * 20_000)
        for ignores in (False, True):  # whether the program starts with the signal of closed pipes ignored
            for form in some(["--csv", "--json", "--table"])[:1 if LAUNCHER else 3]:
                with open(self.folder / "notes", "wb") as notes:
                    process = subprocess.Popen([*LAUNCHER, str(PROGRAM), "destinations", "Large", form],
                                               env=self.environment(), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                               stderr=notes, restore_signals=not ignores)
                self.assertEqual(len(process.stdout.read(10)), 10)
                process.stdout.close()
                self.assertEqual((process.wait(300), (self.folder / "notes").read_text()), (141, ""))

    @unittest.skipUnless(os.path.exists("/dev/full"), "there is no /dev/full")
    def test_a_full_disk_is(self):
        for arguments in some(self.COMMANDS):
            with open("/dev/full", "wb") as full:
                exit_code, notes = self.run_into(full, arguments)
            self.assertEqual(exit_code, 1, arguments)
            self.assertRegex(notes, "faxbook: cannot write the output: its disk is full; [^\n]*\n\\Z", arguments)

    def test_closed_streams_are_nobody_s_file(self):
        def run(redirections, *arguments):
            return subprocess.run(["bash", "-c", f'"$@" {redirections}', "-", *LAUNCHER, str(PROGRAM), *arguments],
                                  env=self.environment(FAXBOOK_DIAGNOSTICS=""), stdin=subprocess.DEVNULL, timeout=300,
                                  check=False).returncode
        notes = self.folder / "notes"
        self.assertEqual(run(f">&- 2>{notes}", "books"), 1)
        self.assertIn("cannot write the output: standard output is closed", notes.read_text())
        # A command without output has nothing to say of it.
        self.assertEqual(run(f">&- 2>{notes}", "profile", "create", "First"), 0)
        self.assertEqual(notes.read_text(), 'faxbook: profile "First" created, without services: it has no address books yet\n')
        output = self.folder / "output"
        self.assertEqual(run(f">{output} 2>&-", "books", "--profile", "First"), 0)
        self.assertEqual(output.read_text(), "path\tname\tkind\tservice\tprovider_value\n")
        if not LAUNCHER:  # Wine itself cannot start so
            self.assertEqual(run("<&- >&- 2>&-", "profile", "create", "Second"), 0)
            self.assertEqual(run("<&- >&- 2>&-", "profile", "create", "Second"), 1)
            self.assertEqual([row["profile"] for row in self.rows_of("profiles")], ["First", "Second"])
        self.assertNotIn("faxbook:", self.profiles.read_text())


if __name__ == "__main__":
    run_tests()
