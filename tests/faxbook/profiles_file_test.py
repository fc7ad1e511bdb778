#!/usr/bin/env python3
"""Has the built faxbook change a profiles file that is away, foreign, linked or left half-changed, and looks at what
becomes of it.

python3 profiles_file_test.py PROGRAM [LAUNCHER...]
"""

import contextlib
import errno
import os
import shutil
import stat
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

from faxbook_program import LAUNCHER, PROGRAM, FaxbookTest, run_tests, system_path

OLD = "# mine\n\n[profile Old]\nservice = VCARD\nlocation = /old\n"
ADDED = "[profile New]\nservice = VCARD\nflags = 0x00100000\n"
NOBODY = 65534
NO_ACCESS = "0x80070005 (MAPI_E_NO_ACCESS)"


def tree_of(folder):
    """Every name below the folder, with what it is, whose it is and what is in it."""
    tree = {}
    for path in sorted(folder.rglob("*")):
        status = path.lstat()
        what = (os.readlink(path) if path.is_symlink() else
                path.read_bytes() if stat.S_ISREG(status.st_mode) else None)
        tree[str(path.relative_to(folder))] = (oct(status.st_mode), status.st_uid, status.st_gid, what)
    return tree


class ProfilesFileTest(FaxbookTest):
    def setUp(self):
        super().setUp()
        # The folder of the outputs of the runs is another one.
        self.place = self.folder / "place"
        self.place.mkdir()
        self.profiles = self.place / "profiles.ini"

    def renew(self):
        for path in self.place.iterdir():
            shutil.rmtree(path) if path.is_dir() and not path.is_symlink() else path.unlink()

    def create(self, name="New", services=("VCARD",), **environment):
        more = [word for service in services for word in ("--service", service)]
        return self.run_faxbook("profile", "create", name, *more, **environment)

    def expect_created(self, name="New", **environment):
        done = self.create(name, **environment)
        self.assertEqual((done.returncode, done.stdout), (0, b""), done.stderr)

    def expect_refused(self, **environment):
        """Nothing is made, changed or left behind, and the user is told."""
        before = tree_of(self.place)
        environment = {"FAXBOOK_DIAGNOSTICS": system_path(self.folder / "said"), **environment}
        done = self.create(**environment)
        self.assertEqual((done.returncode, done.stdout), (1, b""), done.stderr)
        self.assertIn(NO_ACCESS, done.stderr.decode())
        self.assertIn("profiles cannot be written: ", (self.folder / "said").read_text())
        self.assertEqual(tree_of(self.place), before)
        (self.folder / "said").unlink()


class MissingFileTest(ProfilesFileTest):
    def make_where_nothing_can_be_told(self, situation):
        away = self.place / "away"
        if situation == "link to nothing":
            self.profiles.symlink_to(away)
        elif situation == "link to a link to nothing":
            self.profiles.symlink_to("second")
            (self.place / "second").symlink_to(away)
        elif situation == "link to itself":
            self.profiles.symlink_to(self.profiles.name)
        elif situation == "folder that is a link to nothing":
            (self.place / "folder").symlink_to(away)
            self.profiles = self.place / "folder" / "profiles.ini"
        elif situation == "folders below a link to nothing":
            (self.place / "folder").symlink_to(away)
            self.profiles = self.place / "folder" / "second" / "profiles.ini"
        elif situation == "below a file":
            (self.place / "file").write_text("no folder")
            self.profiles = self.place / "file" / "profiles.ini"
        elif situation == "folder":
            self.profiles.mkdir()
        elif situation == "pipe":
            os.mkfifo(self.profiles)
        elif situation == "link to a device":
            self.profiles.symlink_to("/dev/zero")
        elif situation == "link to what ends early":
            self.profiles.symlink_to("/proc/self/mem")
        elif situation == "name that is too long":
            self.profiles = self.place / ("n" * 300)
        elif situation == "too large":
            with open(self.profiles, "wb") as file:
                file.truncate(1 << 30)

    def test_what_cannot_be_told_is_not_no_profiles(self):
        for situation in ("link to nothing", "link to a link to nothing", "link to itself",
                          "folder that is a link to nothing", "folders below a link to nothing", "below a file",
                          "folder", "pipe", "link to a device", "link to what ends early", "name that is too long",
                          "too large"):
            with self.subTest(situation):
                self.renew()
                self.profiles = self.place / "profiles.ini"
                self.make_where_nothing_can_be_told(situation)
                if situation == "too large":
                    self.assertEqual(self.create().returncode, 1)
                    self.assertEqual([path.name for path in self.place.iterdir()], ["profiles.ini"])
                else:
                    self.expect_refused()
                self.assert_fails(["profiles"], 1, NO_ACCESS)

    def test_no_such_file_and_no_such_folder_are_no_profiles(self):
        (self.place / "real").mkdir()
        (self.place / "link").symlink_to("real")
        for path in ("profiles.ini", "new/folder/profiles.ini", "link/profiles.ini", "link/new/profiles.ini"):
            with self.subTest(path):
                self.profiles = self.place / path
                self.assertEqual(self.output_of("profiles", "--csv", notes=f"faxbook: there are no profiles in "
                                                f"{system_path(self.profiles)}; the default profile needs none\n"),
                                 "profile,service,location,flags,for_display\n")
                self.expect_created()
                self.assertTrue(self.profiles.read_text().endswith(ADDED))
                self.assertEqual([file.name for file in self.profiles.parent.glob("profiles.ini*")], ["profiles.ini"])


class KeptFileTest(ProfilesFileTest):
    def test_links_stay_links(self):
        for links in ({"profiles.ini": "real.ini"}, {"profiles.ini": "other/real.ini"},
                      {"profiles.ini": "second", "second": "other/third", "other/third": "../real.ini"},
                      {"profiles.ini": "folder/real.ini", "folder": "other"}):
            with self.subTest(links):
                self.renew()
                (self.place / "other").mkdir()
                for link, target in links.items():
                    (self.place / link).symlink_to(target)
                real = self.profiles.resolve()
                real.write_text(OLD)
                self.expect_created()
                self.assertEqual({link: os.readlink(self.place / link) for link in links}, links)
                self.assertEqual(real.read_text(), OLD + "\n" + ADDED)

    @unittest.skipIf(LAUNCHER, "Wine keeps what a mode can say of Windows' rights")
    def test_owner_mode_and_attributes_stay(self):
        owner = (12345, 54321) if os.geteuid() == 0 else (os.geteuid(), os.getegid())
        access = struct.pack("<I", 2) + b"".join(
            struct.pack("<HHI", *entry) for entry in ((1, 6, 0xFFFFFFFF), (2, 6, 1), (4, 0, 0xFFFFFFFF),
                                                      (16, 6, 0xFFFFFFFF), (32, 0, 0xFFFFFFFF)))
        for mode, attributes in ((0o600, {}), (0o640, {}), (0o664, {}), (0o606, {"user.note": b"mine"}),
                                 (0o660, {"system.posix_acl_access": access})):
            with self.subTest(mode=oct(mode)):
                self.profiles.write_text(OLD)
                os.chown(self.profiles, *owner)
                self.profiles.chmod(mode)
                try:
                    for name, value in attributes.items():
                        os.setxattr(self.profiles, name, value)
                except OSError as error:
                    if error.errno != errno.ENOTSUP:
                        raise
                    continue
                self.expect_created()
                status = self.profiles.stat()
                self.assertEqual((oct(stat.S_IMODE(status.st_mode)), status.st_uid, status.st_gid),
                                 (oct(mode), *owner))
                self.assertEqual({name: os.getxattr(self.profiles, name) for name in os.listxattr(self.profiles)},
                                 attributes)
                self.profiles.unlink()

    def test_another_hard_link_keeps_the_old_state(self):
        self.profiles.write_text(OLD)
        os.link(self.profiles, self.place / "backup.ini")
        self.expect_created()
        self.assertEqual((self.place / "backup.ini").read_text(), OLD)
        self.assertEqual(self.profiles.read_text(), OLD + "\n" + ADDED)

    def test_what_crashed_writers_left_goes_and_nothing_else(self):
        left = ["profiles.ini.1-0.new", "profiles.ini.4711-12.new", "profiles.ini.99999999999-0.new"]
        foreign = ["profiles.ini.new", "profiles.ini.4711.new", "profiles.ini.4711-.new", "profiles.ini.-1.new",
                   "profiles.ini.4711-1x.new", "profiles.ini.4711-1.new.bak", "profiles.ini.4711-1.NEW",
                   "profiles.ini.1.4711-1.new", "other.ini.4711-1.new", "4711-1.new", "profiles.ini.4711-1-2.new"]
        self.profiles.write_text(OLD)
        for name in left + foreign:
            (self.place / name).write_text("half")
        (self.place / "profiles.ini.2-0.new").mkdir()
        kept = {*foreign, "profiles.ini.2-0.new", "profiles.ini"}
        if not LAUNCHER:  # Wine takes a link for what it leads to
            (self.place / "profiles.ini.3-0.new").symlink_to("other.ini.4711-1.new")
            kept.add("profiles.ini.3-0.new")
        self.expect_created()
        self.assertEqual({path.name for path in self.place.iterdir()}, kept)

    @unittest.skipIf(LAUNCHER, "killing Wine's launcher does not kill the program")
    def test_a_program_that_is_killed_leaves_whole_profiles(self):
        for number in range(40):
            with subprocess.Popen([PROGRAM, "profile", "create", str(number), "--service", "VCARD"],
                                  env=self.environment(), stderr=subprocess.DEVNULL) as process:
                with contextlib.suppress(subprocess.TimeoutExpired):
                    process.wait(number / 8000)
                process.kill()
        self.expect_created()
        services = {}
        for row in self.rows_of("profiles"):
            services.setdefault(row["profile"], []).append(row["service"])
        self.assertEqual(set(map(tuple, services.values())), {("VCARD",)})
        self.assertEqual([path.name for path in self.place.iterdir()], ["profiles.ini"])


@unittest.skipIf(LAUNCHER, "Wine's programs are of the user who started its server")
@unittest.skipUnless(os.geteuid() == 0, "only root can start programs as another user")
class AnotherUserTest(ProfilesFileTest):
    """faxbook as a user who may do nothing that he is not given."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o755)
        self.place.chmod(0o777)
        # Where the program was built need not be a place that others may enter.
        programs = Path(self.enterContext(tempfile.TemporaryDirectory()))
        programs.chmod(0o755)
        for file in [PROGRAM, *PROGRAM.parent.glob("QDXL7R?.DLL"), *PROGRAM.parent.glob("libhost_windows.so")]:
            shutil.copy(file, programs)
        self.program = programs / PROGRAM.name

    def create(self, name="New", services=("VCARD",), **environment):
        environment.pop("FAXBOOK_DIAGNOSTICS", None)
        done = subprocess.run([self.program, "profile", "create", name, "--service", *services],
                              env=self.environment(FAXBOOK_DIAGNOSTICS="", **environment), user=NOBODY, group=NOBODY,
                              extra_groups=[], stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=False)
        (self.folder / "said").write_bytes(done.stderr)
        return done

    def put(self, mode, owner, folder_mode=0o777):
        self.profiles.write_text(OLD)
        os.chown(self.profiles, owner, owner)
        self.profiles.chmod(mode)
        self.place.chmod(folder_mode)

    def test_what_may_not_be_read_is_not_no_profiles(self):
        for mode, owner, folder_mode in ((0o600, 0, 0o777), (0o000, NOBODY, 0o777), (0o666, 0, 0o700)):
            with self.subTest(mode=oct(mode), folder=oct(folder_mode)):
                self.put(mode, owner, folder_mode)
                self.expect_refused()
                self.place.chmod(0o777)

    def test_what_may_not_be_written_or_would_change_hands_stays(self):
        for mode, owner, folder_mode in ((0o644, 0, 0o777), (0o400, NOBODY, 0o777), (0o666, 0, 0o777),
                                         (0o644, NOBODY, 0o755)):
            with self.subTest(mode=oct(mode), owner=owner, folder=oct(folder_mode)):
                self.put(mode, owner, folder_mode)
                self.expect_refused()

    def test_only_the_folder_of_the_file_itself_is_written_to(self):
        real = self.place / "real"
        real.mkdir()
        os.chown(real, NOBODY, NOBODY)
        self.profiles.symlink_to("real/profiles.ini")
        (real / "profiles.ini").write_text(OLD)
        os.chown(real / "profiles.ini", NOBODY, NOBODY)
        (real / "profiles.ini").chmod(0o604)
        self.place.chmod(0o555)
        self.expect_created()
        self.assertEqual((real / "profiles.ini").read_text(), OLD + "\n" + ADDED)
        self.assertEqual(oct(stat.S_IMODE((real / "profiles.ini").stat().st_mode)), "0o604")


if __name__ == "__main__":
    run_tests()
