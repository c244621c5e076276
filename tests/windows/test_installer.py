"""The installer and the uninstaller: what they leave behind, looked at as files.

Their exit codes are not counted on: an installer that does nothing can end with 0 too.
"""
import contextlib
import pathlib
import shutil
import subprocess
import time
import unittest

import wine

SETUP = wine.DIST / "penwick-illustrator-cs6-setup.exe"
LIBRARY = wine.ROOT / "packaging/brush_pressure.ai"
HOST = "Adobe Illustrator CS6 (64 Bit)"
DEFAULT = wine.DRIVE / "Program Files/Adobe" / HOST / "Plug-ins"
UNINSTALL_KEYS = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall"
OWN_KEY = UNINSTALL_KEYS + r"\PenwickVectorFiles"
HOST_KEY = UNINSTALL_KEYS + r"\TheHost"
ENDINGS = (".pnx", ".eli", ".kvo", ".inkml")
VERBS = r"HKLM\Software\Classes\SystemFileAssociations"
SHORTCUTS = {"Guide.lnk", "Put the brush library in place.lnk", "Uninstall.lnk"}


def start_menu():
    return (wine.folder_named_by("ProgramData") /
            "Microsoft/Windows/Start Menu/Programs/Penwick vector files")


def until(condition):
    """Waits for something to become true; tells whether it did."""
    end = time.monotonic() + 60
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.2)
    return True


def uninstaller_runs():
    """An uninstaller starts a copy of itself, which goes on working after the first program ended."""
    def words(process):
        try:
            return (process / "cmdline").read_bytes()
        except OSError:
            return b""

    return any(b"~nsu" in words(process) for process in pathlib.Path("/proc").glob("[0-9]*"))


def has_key(key):
    return wine.wine("reg", "query", key, "/reg:64").returncode == 0


def verb_key(ending):
    return rf"{VERBS}\{ending}\shell\Penwick.Show"


def value_of(key):
    """The unnamed value of a key; None where the key has none."""
    told = wine.wine("reg", "query", key, "/ve", "/reg:64")
    words = told.stdout.decode(errors="replace").split("REG_SZ", 1)
    return words[1].strip() if told.returncode == 0 and len(words) == 2 else None


class Installer(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.own = wine.local_app_data() / "Penwick"
        cls.menu = start_menu()

    def setUp(self):
        self.clear()
        self.addCleanup(self.clear)

    def clear(self):
        for folder in (self.own, self.menu, wine.DRIVE / "Program Files/Adobe", wine.DRIVE / "hosts"):
            shutil.rmtree(folder, ignore_errors=True)
        # The uninstaller works on a copy of itself, which Windows removes at its next start.
        for folder in wine.DRIVE.glob("users/*/Temp/~nsu*"):
            shutil.rmtree(folder, ignore_errors=True)
        wine.wine("reg", "delete", VERBS, "/f", "/reg:64")

    def in_a_prompt(self, line):
        script = wine.DRIVE / "run.cmd"
        script.write_bytes(f"@echo off\r\n{line}\r\n".encode())
        self.addCleanup(script.unlink, missing_ok=True)
        return wine.wine("cmd", "/c", r"C:\run.cmd")

    def silently(self, program, folder=None, show=False):
        """Runs an installer as an administrator would from the command prompt: the folder stands
        last and without quotation marks."""
        line = f'"{wine.windows_path(program)}" /S'
        if show:
            line += " /SHOW"
        if folder is not None:
            line += f" /D={wine.windows_path(folder)}"
        self.in_a_prompt(line)

    def run_uninstaller(self, folder):
        self.silently(folder / "uninstall.exe")
        self.assertTrue(until(lambda: not uninstaller_runs()))

    def uninstall(self, folder):
        self.run_uninstaller(folder)
        return not folder.exists()

    def assert_installed(self, folder):
        installed = {file.name: file.read_bytes() for file in folder.iterdir()}
        self.assertEqual(set(installed), {"kvoexportfile.aip", "penwick.exe", "brush_pressure.ai",
                                          "place-brush-library.cmd", "GUIDE.txt", "LICENSE.txt",
                                          "THIRD-PARTY.txt", "signature.pnx", "uninstall.exe"})
        self.assertEqual(installed["kvoexportfile.aip"], (wine.DIST / "kvoexportfile.aip").read_bytes())
        self.assertEqual(installed["penwick.exe"], (wine.DIST / "penwick.exe").read_bytes())
        self.assertEqual(installed["brush_pressure.ai"], LIBRARY.read_bytes())
        self.assertEqual({file.name for file in self.menu.iterdir()}, SHORTCUTS)

    def test_puts_everything_in_place_and_takes_all_of_it_away(self):
        folder = wine.DRIVE / "hosts" / HOST / "Plug-ins/Penwick"
        folder.parent.parent.mkdir(parents=True)
        self.silently(SETUP, folder)
        self.assert_installed(folder)
        self.assertEqual((self.own / "brush_pressure.ai").read_bytes(), LIBRARY.read_bytes())
        self.assertTrue(has_key(OWN_KEY))

        art = wine.DRIVE / "hosts/art.json"
        drawn = wine.wine(folder / "penwick.exe", "open", wine.ROOT / "samples/signature.pnx", "-o",
                          wine.windows_path(art), "--no-built-in-library", cwd=wine.DRIVE / "hosts")
        self.assertEqual(drawn.returncode, 0, drawn.stderr)
        self.assertIn(b"kvoaiexportset", art.read_bytes())

        self.assertTrue(self.uninstall(folder), "the folder is still there")
        self.assertFalse(self.own.exists())
        self.assertFalse(self.menu.exists())
        self.assertFalse(has_key(OWN_KEY))
        self.assertEqual([file.name for file in (wine.DRIVE / "hosts").rglob("*")],
                         [HOST, "art.json"])

    def test_removes_every_folder_that_it_made_and_no_other(self):
        self.silently(SETUP)
        self.silently(SETUP)
        self.assertTrue(self.uninstall(DEFAULT / "Penwick"))
        self.assertFalse((wine.DRIVE / "Program Files/Adobe").exists())
        DEFAULT.mkdir(parents=True)
        self.silently(SETUP)
        self.assertTrue(self.uninstall(DEFAULT / "Penwick"))
        self.assertTrue(DEFAULT.exists())

    def test_goes_into_a_folder_of_its_own_where_others_have_files(self):
        shared = wine.DRIVE / "hosts/shared"
        shared.mkdir(parents=True)
        for name in ("LICENSE.txt", "uninstall.exe"):
            (shared / name).write_bytes(b"another's")
        self.silently(SETUP, shared)
        self.assert_installed(shared / "Penwick")
        self.assertTrue(self.uninstall(shared / "Penwick"))
        self.assertEqual({file.name: file.read_bytes() for file in shared.iterdir()},
                         {"LICENSE.txt": b"another's", "uninstall.exe": b"another's"})

    def test_takes_a_given_folder_that_is_empty_as_it_is_and_leaves_it(self):
        folder = wine.DRIVE / "hosts/given"
        folder.mkdir(parents=True)
        self.silently(SETUP, folder)
        self.assert_installed(folder)
        self.run_uninstaller(folder)
        self.assertFalse(self.menu.exists())
        self.assertEqual(list(folder.iterdir()), [])

    def test_updates_the_plug_in_where_it_is(self):
        folder = wine.DRIVE / "hosts/first/Penwick"
        self.silently(SETUP, folder)
        (folder / "kvoexportfile.aip").write_bytes(b"older")
        self.silently(SETUP)
        self.assert_installed(folder)
        self.assertFalse(DEFAULT.exists())

    def test_removing_a_copy_that_was_put_elsewhere_before_leaves_the_last_one_whole(self):
        first, second = (wine.DRIVE / "hosts" / name / "Penwick" for name in ("first", "second"))
        self.silently(SETUP, first)
        self.silently(SETUP, second)
        self.assertTrue(self.uninstall(first))
        self.assert_installed(second)
        self.assertTrue(has_key(OWN_KEY))
        self.assertTrue((self.own / "brush_pressure.ai").exists())
        self.assertTrue(self.uninstall(second))
        self.assertFalse(has_key(OWN_KEY))

    def test_takes_the_default_folder_when_nothing_tells_another(self):
        self.silently(SETUP)
        self.assert_installed(DEFAULT / "Penwick")

    def test_shows_nothing_in_the_menus_unless_that_is_wanted(self):
        self.silently(SETUP)
        for ending in ENDINGS:
            self.assertFalse(has_key(rf"{VERBS}\{ending}"), ending)

    def test_adds_show_with_penwick_to_every_kind_of_recording_and_takes_it_away(self):
        folder = wine.DRIVE / "hosts/with blanks/Penwick"
        self.silently(SETUP, folder, show=True)
        for ending in ENDINGS:
            self.assertEqual(value_of(verb_key(ending)), "Show with Penwick")
            self.assertEqual(value_of(verb_key(ending) + r"\command"),
                             f'"{wine.windows_path(folder)}\\penwick.exe" view --messages-in-pages "%1"')
        self.assertTrue(self.uninstall(folder))
        for ending in ENDINGS:
            self.assertFalse(has_key(rf"{VERBS}\{ending}"), ending)

    def test_an_update_keeps_show_with_penwick(self):
        self.silently(SETUP, show=True)
        self.silently(SETUP)
        for ending in ENDINGS:
            self.assertEqual(value_of(verb_key(ending)), "Show with Penwick")

    def test_what_opens_recordings_and_the_verbs_of_others_stay(self):
        opener, other = r"HKLM\Software\Classes\.pnx", rf"{VERBS}\.kvo\shell\Other"
        self.addCleanup(wine.wine, "reg", "delete", opener, "/f", "/reg:64")
        for key, value in ((opener, "TheHost.Recording"), (other, "Another's")):
            wine.wine("reg", "add", key, "/ve", "/d", value, "/f", "/reg:64", check=True)
        self.silently(SETUP, show=True)
        self.assertEqual((value_of(opener), value_of(other)), ("TheHost.Recording", "Another's"))
        self.assertTrue(self.uninstall(DEFAULT / "Penwick"))
        self.assertEqual((value_of(opener), value_of(other)), ("TheHost.Recording", "Another's"))
        self.assertFalse(has_key(verb_key(".kvo")))
        self.assertFalse(has_key(rf"{VERBS}\.pnx"))

    @contextlib.contextmanager
    def listed_host(self, place, view):
        for name, value in (("DisplayName", "Adobe Illustrator CS6"),
                            ("InstallLocation", wine.windows_path(place))):
            wine.wine("reg", "add", HOST_KEY, "/v", name, "/d", value, "/f", view, check=True)
        try:
            yield
        finally:
            wine.wine("reg", "delete", HOST_KEY, "/f", view)

    def test_finds_the_host_by_its_entry_among_the_installed_programs(self):
        place = wine.DRIVE / "hosts/elsewhere"
        (place / HOST / "Plug-ins").mkdir(parents=True)
        for view, entry in (("/reg:64", place), ("/reg:32", place), ("/reg:64", place / HOST)):
            with self.subTest(view=view, entry=entry.name), self.listed_host(entry, view):
                self.silently(SETUP)
                self.assert_installed(place / HOST / "Plug-ins/Penwick")
                self.assertFalse(DEFAULT.exists())
                self.assertTrue(self.uninstall(place / HOST / "Plug-ins/Penwick"))

    def test_leaves_the_32_bit_host_alone(self):
        place = wine.DRIVE / "hosts/Adobe Illustrator CS6"
        (place / "Plug-ins").mkdir(parents=True)
        with self.listed_host(place, "/reg:32"):
            self.silently(SETUP)
        self.assert_installed(DEFAULT / "Penwick")
        self.assertEqual(list((place / "Plug-ins").iterdir()), [])

    def test_keeps_a_library_that_is_the_users_own(self):
        self.own.mkdir()
        (self.own / "brush_pressure.ai").write_bytes(b"mine")
        self.silently(SETUP)
        self.assertEqual((self.own / "brush_pressure.ai").read_bytes(), b"mine")
        self.assertTrue(self.uninstall(DEFAULT / "Penwick"))
        self.assertEqual((self.own / "brush_pressure.ai").read_bytes(), b"mine")

    def test_keeps_a_library_that_the_user_changed(self):
        changes = {"longer": LIBRARY.read_bytes() + b"\n", "shorter": LIBRARY.read_bytes()[:-1],
                   "other": LIBRARY.read_bytes()[:-1] + b"?"}
        self.silently(SETUP)
        for name, content in changes.items():
            with self.subTest(name):
                (self.own / "brush_pressure.ai").write_bytes(content)
                self.assertTrue(self.uninstall(DEFAULT / "Penwick"))
                self.assertEqual((self.own / "brush_pressure.ai").read_bytes(), content)
                self.silently(SETUP)

    def test_replaces_an_older_version_of_the_plug_in(self):
        self.silently(SETUP)
        (DEFAULT / "Penwick/kvoexportfile.aip").write_bytes(b"older")
        self.silently(SETUP)
        self.assert_installed(DEFAULT / "Penwick")

    def while_it_runs(self, program, work):
        """Does the work while another program, which stands in the given place, runs."""
        program.parent.mkdir(parents=True, exist_ok=True)
        kept = program.read_bytes() if program.exists() else None
        shutil.copy(next(pathlib.Path(wine.BUILD).rglob("waiting_program.exe")), program)
        sign = wine.DRIVE / "running"
        self.addCleanup(sign.unlink, missing_ok=True)
        with subprocess.Popen([wine.RUNNER, program, wine.windows_path(sign)],
                              stdin=subprocess.PIPE) as running:
            self.assertTrue(until(sign.exists))
            work()
            running.stdin.close()
            self.assertEqual(running.wait(60), 0)
        sign.unlink()
        if kept is not None:
            program.write_bytes(kept)

    def try_to_remove(self):
        folder = DEFAULT / "Penwick"
        self.run_uninstaller(folder)
        self.assertTrue((folder / "kvoexportfile.aip").exists())
        self.assertTrue((folder / "uninstall.exe").exists())

    def test_installs_and_removes_nothing_while_the_host_runs(self):
        program = DEFAULT.parent / "Support Files/Contents/Windows/Illustrator.exe"
        self.while_it_runs(program, lambda: self.silently(SETUP))
        self.assertFalse((DEFAULT / "Penwick").exists())
        self.assertFalse(self.own.exists())
        deeper = DEFAULT / "ours/deeper/Penwick"
        self.while_it_runs(program, lambda: self.silently(SETUP, deeper))
        self.assertFalse(deeper.exists())
        self.silently(SETUP)
        self.assert_installed(DEFAULT / "Penwick")
        self.while_it_runs(program, self.try_to_remove)
        self.assertTrue(self.uninstall(DEFAULT / "Penwick"))

    def test_removes_nothing_while_one_of_its_files_is_in_use(self):
        self.silently(SETUP)
        for name in ("penwick.exe", "kvoexportfile.aip"):
            with self.subTest(name):
                self.while_it_runs(DEFAULT / "Penwick" / name, self.try_to_remove)
        self.assert_installed(DEFAULT / "Penwick")

    def test_another_user_puts_the_library_in_place_and_never_over_an_own_one(self):
        self.silently(SETUP)
        shutil.rmtree(self.own)
        script = wine.windows_path(DEFAULT / "Penwick/place-brush-library.cmd")
        done = self.in_a_prompt(f'call "{script}" /q')
        self.assertEqual((self.own / "brush_pressure.ai").read_bytes(), LIBRARY.read_bytes())
        self.assertIn(b"is in place", done.stdout)
        (self.own / "brush_pressure.ai").write_bytes(b"mine")
        done = self.in_a_prompt(f'call "{script}" /q')
        self.assertIn(b"left as it is", done.stdout)
        self.assertEqual((self.own / "brush_pressure.ai").read_bytes(), b"mine")


if __name__ == "__main__":
    unittest.main()
