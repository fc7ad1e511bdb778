#!/usr/bin/env python3
"""Runs the built faxbook as a user would, on the sample address books and on some made here.

python3 faxbook_test.py PROGRAM [LAUNCHER...]   the launcher is wine64 for the Windows program
"""

import csv
import io
import json
import shutil
import unittest

from faxbook_program import EXAMPLES, LAUNCHER, PROGRAM, FaxbookTest, code_page_environment, run_tests, some, system_path


class ReadingTest(FaxbookTest):
    def test_books_are_listed_with_their_containers(self):
        self.assertEqual(
            self.output_of("books", "--table"),
            "PATH                  NAME       KIND          SERVICE  PROVIDER VALUE\n"
            "Company               Company    address book  VCARD                 0\n"
            "Company/Sales         Sales      container     VCARD                 0\n"
            "Company/Sales/Export  Export     container     VCARD                 0\n"
            "Company/Support       Support    container     VCARD                 0\n"
            "Customers             Customers  address book  VCARD                 0\n"
            "Private               Private    address book  VCARD                 0\n"
            "Suppliers             Suppliers  address book  VCARD                 0\n")

    def test_a_person_has_a_line_for_each_number(self):
        for book, name, numbers in (
                ("Company", "Ada Winterfeld", ["+493023125002", "+493023125003", "+493023125004"]),
                ("company/SALES", "Ngozi Okafor", ["+44 20 7946 0123", "+44 1632 960123"]),
                ("Customers", "Iris Papadopoulou", ["+1 212 555 0151", "+1 212 555 0152", "+1 212 555 0153"]),
                ("Customers", "Thandi Dube", [""]),
                ("Suppliers", "Glaswerk Harz", ["+49 69 90009 163"]),
                ("Private", "Jürgen Groß", ["+49 89 99998 171"]),
                ("Support", "Maeve Kelly", ["+1 212 555 0141"]),
                ("Support", "Piero Rossi", ["+1 212 555 0143"])):
            rows = [row for row in self.rows_of("destinations", book) if row["name"] == name]
            self.assertEqual([row["number"] for row in rows], numbers, name)
            self.assertEqual({row["type"] for row in rows}, {"person"}, name)

    def test_the_same_rows_come_in_every_format(self):
        rows = self.rows_of("destinations", "Sales")
        self.assertEqual([row["type"] for row in rows], ["person", "person", "person", "group"])
        table = csv.DictReader(io.StringIO(self.output_of("destinations", "Sales", "--csv"), newline=""))
        self.assertEqual(list(table), rows)
        lines = self.output_of("--profile", "", "destinations", "Sales", "--table").splitlines()
        self.assertEqual(lines[0].split(), ["NAME", "TYPE", "NUMBER", "COMPANY", "DEPARTMENT", "COMMENT"])
        self.assertEqual([line[:len("François Lefèvre")].strip() for line in lines[1:]],
                         [row["name"][:len("François Lefèvre")] for row in rows])
        lines = self.output_of("destinations", "Sales").splitlines()
        self.assertEqual([line.split("\t") for line in lines], [list(rows[0]), *(list(row.values()) for row in rows)])

    def test_search_looks_in_every_column_in_any_case(self):
        for word, names in some([("MÜLLER", {"Zoë Müller-Ångström"}), ("group", {"Management", "Everyone"}),
                            ("23125 011", {"Zoë Müller-Ångström"}), ("ACCOUNTS", {"Zoë Müller-Ångström"})]):
            rows = self.rows_of("destinations", "Company", "--search", word)
            self.assertEqual({row["name"] for row in rows}, names, word)

    def test_an_empty_result_is_no_failure(self):
        nothing = ("destinations", "Private", "--search", "zebra")
        note = 'faxbook: no destinations in Private with "zebra"\n'
        self.assertEqual(self.output_of(*nothing, "--table", notes=note), "")
        self.assertEqual(self.output_of(*nothing, "--json", notes=note), "[]\n")
        self.assertEqual(self.output_of(*nothing, "--csv", notes=note),
                         "name,type,number,company,department,note,comment\n")
        self.contacts = self.folder / "nothing"
        self.contacts.mkdir()
        done = self.run_faxbook("books", "--json")
        self.assertEqual((done.returncode, done.stdout), (0, b"[]\n"))
        self.assertIn(b"no address books", done.stderr)

    def test_details_of_persons_and_groups(self):
        for book, name, text in (
                ("Company", "ada winterfeld", "Ada Winterfeld\nNordlicht Instruments\nManagement\n"
                 "+493023125002 [Business]\nThree fax numbers: at work, at home and the preferred one.\n"),
                ("Suppliers", "Ciara Byrne", "Ciara Byrne\nLiffey Optics\nOrders\n+1 212 555 0161 [Primary]\n"
                 "A primary and a secondary fax number.\n"),
                ("Company", "Everyone", "Zoë Müller-Ångström\n?\nManagement\nEveryone in Sales\n")):
            lines = self.output_of("details", book, name).splitlines()
            expected = text.splitlines()
            self.assertEqual(len(lines), len(expected), lines)
            for line, wanted in zip(lines, expected):
                if wanted != "?":  # a name that the code page may lack
                    self.assertEqual(line, wanted)

    def test_all_destinations_of_a_name_are_shown(self):
        self.contacts = self.folder / "contacts"
        self.contacts.mkdir()
        cards = "".join(f"BEGIN:VCARD\nVERSION:3.0\nFN:Sam Hill\nTEL;TYPE=FAX:+1 212 555 01{i}\nEND:VCARD\n"
                        for i in (10, 11))
        (self.contacts / "Twins.vcf").write_text(cards)
        texts = self.output_of("details", "Twins", "Sam Hill").split("\n\n")
        self.assertEqual([text.splitlines()[1][:15] for text in texts], ["+1 212 555 0110", "+1 212 555 0111"])

    def test_a_group_is_expanded_to_whom_a_fax_goes(self):
        rows = self.rows_of("group", "Company", "Everyone")
        self.assertEqual([(row["fax"], row["home_fax"]) for row in rows],
                         [("+493023125004", ""), ("+49 30 23125 011", "+49 40 66969 012"), ("+33 1 99 00 12 02", ""),
                          ("+44 20 7946 0123", "+44 1632 960123"), ("+46 8 465 004 10", ""), ("+1 212 555 0120", "")])
        rows = self.rows_of("group", "Customers", "newsletter")
        self.assertEqual([(row["name"], row["fax"]) for row in rows],
                         [("Iris Papadopoulou", f"+1 212 555 015{i}") for i in (1, 2, 3)] +
                         [("Samuel Ortega", "+1 212 555 0154")])

    def program_of_older_systems(self):
        """Windows before the version 1903 of Windows 10 passes over what sets the code page in a manifest."""
        if not LAUNCHER:
            return PROGRAM
        folder = self.folder / "older"
        shutil.copytree(PROGRAM.parent, folder, ignore=lambda _, names: {name for name in names if "QDXL7R" not in name})
        contents = PROGRAM.read_bytes()
        self.assertEqual(contents.count(b"activeCodePage"), 2)
        (folder / PROGRAM.name).write_bytes(contents.replace(b"activeCodePage", b"unknownSetting"))
        return folder / PROGRAM.name

    def test_text_is_utf8_in_every_code_page(self):
        older = self.program_of_older_systems()
        for program, code_page, japanese in ((older, "932", "山田 花子"), (older, "1252", "?? ??"),
                                             *((PROGRAM, code_page, "山田 花子") for code_page in ("932", "1252")
                                               if LAUNCHER)):
            environment = {"program": program, **code_page_environment(code_page)}
            names = {row["name"] for row in self.rows_of("destinations", "Company", **environment)}
            self.assertIn(japanese, names, (program, code_page))
            self.assertEqual("Łukasz Žižka" in names, bool(LAUNCHER) and program == PROGRAM)
            if LAUNCHER and code_page != "1252":
                continue  # Wine reads arguments by a locale that need not be installed
            # The name as the card has it finds the name as the code page has it.
            self.assertIn(japanese, self.output_of("details", "Company", "山田 花子", **environment))

    @unittest.skipUnless(LAUNCHER, "on the host the code page is the system's")
    def test_the_character_set_of_files_is_guessed_as_the_system_has_it(self):
        self.contacts = self.folder / "old.csv"
        self.contacts.write_bytes("Name,Fax\nJürgen Groß,1\n".encode("latin-1"))
        for program in (PROGRAM, self.program_of_older_systems()):
            for locale, charset in (("C.UTF-8", "windows-1252"), ("pl_PL.UTF-8", "windows-1250")):
                done = self.run_faxbook("check", "--json", program=program, LC_ALL=locale)
                self.assertEqual(json.loads(done.stdout)[0]["guessed_charset"], charset, (program, locale))


class ProviderTestTest(FaxbookTest):
    def provider(self, folder):
        return system_path(PROGRAM.resolve().parent.parent / folder / "QDXL7RA.DLL")

    def test_the_provider_beside_the_program_has_no_fault(self):
        self.contacts = self.folder / "contacts"
        (self.contacts / "Book" / "Inner").mkdir(parents=True)
        (self.contacts / "Book" / "addressbook.ini").write_text("style = fax-entries\n")
        shutil.copy(EXAMPLES / "Customers" / "customers.vcf", self.contacts / "Book")
        shutil.copy(EXAMPLES / "Private.vcf", self.contacts / "Book" / "Inner")
        shutil.copytree(EXAMPLES / "Company", self.contacts / "Company")
        # Cards as bad as they come.
        (self.contacts / "Damaged").mkdir()
        for kind, ending in (("cards", "vcf"), ("csv", "csv")):
            for file in (EXAMPLES.parent / "fuzz" / "corpus" / kind).iterdir():
                shutil.copy(file, self.contacts / "Damaged" / f"{file.name}.{ending}")
        done = self.run_faxbook("provider-test", self.provider("bin"), "--table")
        self.assertEqual((done.returncode, done.stdout), (0, b""), done.stderr)
        self.assertRegex(done.stderr.decode(), r"^faxbook: \d{4} answers of the provider were looked at, all as they")

    def test_faults_and_remarks_are_told(self):
        # The provider of the benchmarks has only what those need.
        done = self.run_faxbook("provider-test", self.provider("bench"), "--json")
        self.assertEqual(done.returncode, 1)
        findings = {row["where"]: (row["kind"], row["answer"], row["meaning"]) for row in json.loads(done.stdout)}
        self.assertEqual(findings["VOKAdminProfiles"],
                         ("fault", "is not exported", "profiles can be neither made nor shown"))
        self.assertEqual(findings["VOKFreeBuffer"],
                         ("remark", "is not exported", "the library never calls it; other programs may"))
        self.assertEqual(findings["OpenEntry"][:2], ("fault", "opens an identifier that it never gave"))
        self.assertNotIn("VOKOpen", findings)
        self.assertIn(b"with 2 kinds of fault and 4 kinds of remark", done.stderr)
        self.assert_fails(["provider-test", system_path(EXAMPLES / "Private.vcf")], 1, "cannot load", "Private.vcf")

    def test_a_provider_with_nothing_but_remarks_passes(self):
        self.contacts = self.folder / "nothing"
        self.contacts.mkdir()
        done = self.run_faxbook("provider-test", self.provider("bin"), "--json")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([(row["where"], row["kind"], row["answer"]) for row in json.loads(done.stdout)],
                         [("the address books", "remark", "there are none")])
        self.assertIn(b"without fault, with 1 kind of remark: ", done.stderr)


class DiagnosisTest(FaxbookTest):
    def test_why_explains_every_number_of_a_person(self):
        rows = self.rows_of("why", "company", "ADA winterfeld")
        self.assertEqual([(row["number"], row["kind"], row["place"], row["line"]) for row in rows],
                         [("+493023125001", "", "", 8), ("+493023125002", "business", "business", 9),
                          ("+493023125003", "home", "home", 10), ("+493023125004", "primary", "primary", 11)])
        self.assertEqual((rows[1]["source"], rows[1]["rule"]),
                         ('TEL;TYPE="work,fax";VALUE=uri', "business fax number: it says fax, and work or business"))
        self.assertTrue(rows[0]["file"].endswith("people.vcf"), rows[0])
        self.assertEqual(self.output_of("why", "Customers", "Thandi Dube", "--table",
                                        notes='faxbook: "Thandi Dube" has no number at all, in '
                                              f"{system_path(EXAMPLES / 'Customers' / 'customers.vcf')}:20\n"), "")
        for arguments, parts in some([(["why", "Company", "Everyone"], ["is a group"]),
                                      (["why", "Support", "Pjero Rosi"], ["in Company/Support", "Piero Rossi"]),
                                      (["why", "Nowhere", "A"], ['no address book "Nowhere"']),
                                      (["why", "Company", "A", "--profile", "Nope"],
                                       ['"Nope"', "0x8004010F (MAPI_E_NOT_FOUND)"])]):
            self.assert_fails(arguments, 1, *parts)

    def test_check_counts_what_is_in_each_file_and_says_what_is_wrong(self):
        folder = self.folder / "here"
        (folder / "Sub").mkdir(parents=True)
        (folder / "good.vcf").write_text(
            "BEGIN:VCARD\nFN:A\nTEL;TYPE=FAX,WORK:1\nTEL;TYPE=FAX,HOME:2\nEND:VCARD\n"
            "BEGIN:VCARD\nFN:B\nTEL:3\nEND:VCARD\n")
        (folder / "Sub" / "old.csv").write_bytes("Name,Fax\nJürgen Groß,1\n,\n\"Otto,2\n".encode("latin-1"))
        (folder / "Sub" / "bad.vcf").write_text("BEGIN:VCARD\nNOTE:x\nEND:VCARD\nBEGIN:VCARD\nFN:G\nKIND:group\n"
                                                "MEMBER:urn:uuid:5\n")
        done = self.run_faxbook("check", system_path(folder), "--csv")
        rows = {row["file"].replace("\\", "/").rsplit("/", 1)[1]: list(row.values())[1:]
                for row in csv.DictReader(io.StringIO(done.stdout.decode()))}
        self.assertEqual(rows, {"good.vcf": ["2", "2", "0", "1", "1", "0", "0", "0", "0", "0", ""],
                                "bad.vcf": ["2", "0", "1", "0", "0", "0", "0", "0", "1", "1", ""],
                                "old.csv": ["2", "2", "0", "0", "0", "0", "2", "0", "0", "0", "windows-1252"]})
        self.assertEqual(done.returncode, 0)
        notes = done.stderr.decode().splitlines()
        for part in ("bad.vcf:1: card without name", "bad.vcf:4: card without END:VCARD", "bad.vcf:7: member 5 ",
                     "old.csv: text is not UTF-8; it looks like windows-1252", "old.csv:4: a quote is opened"):
            self.assertTrue(any(part in note for note in notes), (part, notes))
        self.assertEqual(len(notes), 5, notes)
        heading = self.run_faxbook("check", system_path(folder / "good.vcf"), "--table").stdout.decode().splitlines()[0]
        self.assertEqual(heading.split(), ["FILE", "CARDS", "PERSONS", "BUSINESS", "FAX", "HOME", "FAX"])
        missing = self.run_faxbook("check", system_path(folder / "nothing"))
        self.assertIn(b"no such folder or file", missing.stderr)
        self.assertIn(b"no address files to check", missing.stderr)


class MessageTest(FaxbookTest):
    def test_a_failure_is_one_line_that_says_what_to_do(self):
        for arguments, parts in some([
                (["destinations", "/Sales"], ['no address book "/Sales"']),  # on Windows, too, a slash is no option
                (["books", "--profile", "Nope"], ['"Nope"', "0x8004010F (MAPI_E_NOT_FOUND)", "faxbook profiles"]),
                (["destinations", "Nowhere"], ['no address book "Nowhere"', "Company/Sales", "Suppliers"]),
                (["destinations", "books"], ['no address book "books"']),
                (["details", "Support", "Pjero Rosi"], ['"Pjero Rosi" in Company/Support', "Piero Rossi"]),
                (["group", "Company", "Ada Winterfeld"], ["is a person"]),
                (["profile", "create", "Work", "--service", "s" * 32], ["longer than 31 bytes"]),
                (["profile", "create", ""], ["0x80070057 (MAPI_E_INVALID_PARAMETER)"])]):
            self.assert_fails(arguments, 1, *parts)

    def test_wrong_usage_ends_with_2(self):
        for arguments in some([[], ["profile", "create", "A", "--service", "VCARD:one"], ["books", "--json", "--csv"],
                               ["faxes"], ["destinations"], ["destinations", "A", "B"],
                               ["destinations", "A", "--search"], ["profile"], ["profile", "create"],
                               ["profile", "create", "A", "--service", ":1"], ["books", "--nothing"]]):
            self.assert_fails(arguments, 2, "--help")

    def test_every_command_has_help_with_examples(self):
        for command in some(["profile create", "books", "destinations", "details", "group", "why", "check", "profiles",
                             "profile admin", "resources"]):
            self.assertIn(f"Examples:\n  faxbook {command}", self.output_of(*command.split(), "--help"))
        self.assertRegex(self.output_of("--version"), r"\Afaxbook \d+(\.\d+)+\n\Z")

    def test_a_missing_or_foreign_library_is_named(self):
        binaries = PROGRAM.parent
        here = self.folder / "alone"
        here.mkdir()
        for file in [PROGRAM, *binaries.glob("libhost_windows.so")]:
            shutil.copy(file, here)
        alone = here / PROGRAM.name
        self.assert_fails(["books"], 1, "cannot load", "QDXL7RC.DLL", program=alone)
        shutil.copy(binaries / "QDXL7RA.DLL", here / "QDXL7RC.DLL")
        self.assert_fails(["books"], 1, "QDXL7RC.DLL has no function OpenAddressBook", program=alone)
        shutil.copy(binaries / "QDXL7RC.DLL", here)
        self.assert_fails(["books"], 1, "0x80004005 (MAPI_E_CALL_FAILED)", "QDXL7RA.DLL", program=alone)


class ProfileTest(FaxbookTest):
    def test_a_profile_is_created_listed_and_read(self):
        self.output_of("profile", "create", "Work", "--service", "VCARD", "--service", "VCARD:3",
                       notes='faxbook: profile "Work" created, with VCARD, VCARD\n')
        self.assertEqual([(row["profile"], row["service"], row["flags"]) for row in self.rows_of("profiles")],
                         [("Work", "VCARD", "0x00100000"), ("Work", "VCARD", "0x00130000")])
        books = [row["path"] for row in self.rows_of("books", "--profile", "Work")]
        # Two services on one folder: the second copy of each book has a path of its own.
        self.assertEqual(len(books), 14)
        self.assertEqual(len(set(books)), 14)
        self.assertIn("Company#2/Sales/Export", books)
        self.assertEqual(self.rows_of("destinations", "Company#2/Sales/Export", "--profile", "Work"),
                         self.rows_of("destinations", "Export"))
        self.assert_fails(["profile", "create", "Work"], 1, "0x80040604 (MAPI_E_COLLISION)", "exists already")

    def test_what_cannot_be_created_or_read_is_said(self):
        self.assertIn("there are no profiles in", self.run_faxbook("profiles").stderr.decode())
        self.assert_fails(["profile", "create", "New", "--service", "NOSUCH"], 1, "0x8004010F (MAPI_E_NOT_FOUND)",
                          "NOSUCH")
        self.profiles.write_text("[profile Damaged\nservice = VCARD\n")
        self.assert_fails(["profiles"], 1, "profiles.ini", "0x8004011B (MAPI_E_CORRUPT_DATA)")
        for position in ("2", "3", str(2**64 - 1)):
            self.assertEqual(self.output_of("complete", position, "--", "books", "--profile"), "")

    def test_administration_without_a_terminal_fails(self):
        if LAUNCHER:
            self.skipTest("Windows has its dialogs")
        self.assert_fails(["profile", "admin"], 1, "0x80040102 (MAPI_E_NO_SUPPORT)", "terminal")


class ResourceTest(FaxbookTest):
    def test_the_library_s_resources_are_listed(self):
        done = self.run_faxbook("resources", "--json")
        self.assertEqual(done.returncode, 0)
        rows = json.loads(done.stdout)
        strings = {row["id"]: row["text"] for row in rows if row["kind"] == "string"}
        self.assertEqual((strings[29], strings[80], strings[2009]),
                         ("\r\n", "(Business Fax)", "Select Destination Fax Number Dialog Box"))
        self.assertFalse(strings.keys() & {26, 64, 71, 81, 91})
        if not LAUNCHER:
            self.assertIn(b"strings only", done.stderr)
            return
        self.assertEqual([row["id"] for row in rows if row["kind"] == "dialog"], list(range(101, 108)))
        self.assertEqual([row["id"] for row in rows if row["kind"] == "icon group"], list(range(200, 207)))
        self.assertIn({"kind": "control", "id": 106, "control": 1003, "text": "P&roperties"}, rows)
        self.assertIn("OriginalFilename: QDXL7RC.DLL", [row["text"] for row in rows if row["kind"] == "version"])
        self.assertTrue(any("asInvoker" in row["text"] for row in rows if row["kind"] == "manifest"))


if __name__ == "__main__":
    run_tests()
