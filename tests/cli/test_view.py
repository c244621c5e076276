import html
import os
import re
import stat
import time

from command import CommandTest, THREE_POINTS

BROWSER = '#!/bin/sh\nprintf "%s\\n" "$#" "$@" >"$SHOWN/${1##*/}"\nexit "${ANSWER:-0}"\n'
DAY = 24 * 60 * 60


class View(CommandTest):
    def setUp(self):
        super().setUp()
        self.shown = self.folder / "shown"
        self.shown.mkdir()
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.pages = self.home / ".cache/penwick"
        browser = self.programs / "xdg-open"
        browser.write_text(BROWSER)
        browser.chmod(0o755)

    def view(self, *words, env=None, **options):
        self.penwick("view", *words, env={"PATH": f"{self.programs}:/usr/bin:/bin", "SHOWN": str(self.shown), **(env or {})},
                     **options)

    def all_pages(self):
        return sorted(path.name for path in self.pages.iterdir())

    def assert_shown(self, *pages):
        """Each page was given to the browser, by its full name and nothing else."""
        self.assertEqual(sorted(path.name for path in self.shown.iterdir()), sorted(pages))
        for page in pages:
            self.assertEqual((self.shown / page).read_text(), f"1\n{self.pages / page}\n")

    def test_shows_a_page_that_nobody_else_can_read(self):
        self.file("a.pnx")
        self.view("a.pnx")
        self.assertEqual((self.result.returncode, self.errors), (0, ""))
        page, = self.all_pages()
        self.assertRegex(page, r"^a-[0-9a-f]{16}\.html$")
        self.assert_shown(page)
        self.assertEqual(self.out, f"a.pnx: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> {self.pages / page}\n")
        self.assertEqual(stat.S_IMODE(self.pages.stat().st_mode), 0o700)
        self.penwick("open", "-q", "a.pnx", "-o", "a.html")
        self.assertEqual((self.pages / page).read_bytes(), (self.folder / "a.html").read_bytes())

    def test_closes_a_folder_that_others_could_enter(self):
        self.file("a.pnx")
        self.pages.mkdir(parents=True)
        self.pages.chmod(0o755)
        self.view("a.pnx")
        self.assertEqual(stat.S_IMODE(self.pages.stat().st_mode), 0o700)

    def test_shows_several_files_and_what_is_left_where_one_fails(self):
        self.file("a.pnx")
        self.file("b.pnx", b"nothing of the kind")
        self.file("c.pnx")
        self.view("a.pnx", "b.pnx", "c.pnx", "missing.pnx")
        self.assertEqual(self.result.returncode, 1)
        pages = self.all_pages()
        self.assertEqual([page[0] for page in pages], ["a", "c"])
        self.assert_shown(*pages)
        self.assertEqual(self.errors.count("\n"), 2)

    def messages_on(self, page):
        return [html.unescape(line) for line in re.findall("<li>(.*)</li>", (self.pages / page).read_text())]

    def test_pages_say_what_is_wrong_where_nobody_sees_a_terminal(self):
        self.file("a.pnx")
        self.file("b<b>.pnx", b"nothing of the kind")
        self.file("c.pnx", THREE_POINTS[:-3])
        self.view("--messages-in-pages", "a.pnx", "b<b>.pnx", "c.pnx", "missing.pnx")
        self.assertEqual(self.result.returncode, 1)
        sound, refused, cut, missing = self.all_pages()
        self.assert_shown(sound, refused, cut, missing)
        printed = [line.removeprefix("penwick: ") for line in self.errors.splitlines()]
        self.assertEqual(len(printed), 3)
        self.assertTrue(printed[1].startswith("c.pnx: warning: "), printed)
        self.assertEqual([self.messages_on(page) for page in (sound, refused, cut, missing)],
                         [[]] + [[line] for line in printed])
        self.assertIn("<h1>b&lt;b&gt;.pnx</h1>", (self.pages / refused).read_text())
        self.assertIn('id="strokes"', (self.pages / cut).read_text())
        self.assertNotIn('id="strokes"', (self.pages / refused).read_text())

    def test_pages_of_sound_recordings_have_no_messages(self):
        self.file("a.pnx")
        self.view("--messages-in-pages", "a.pnx")
        page, = self.all_pages()
        self.penwick("open", "-q", "a.pnx", "-o", "a.html")
        self.assertEqual((self.pages / page).read_bytes(), (self.folder / "a.html").read_bytes())

    def test_messages_are_either_wanted_or_not(self):
        self.file("a.pnx")
        self.view("--messages-in-pages", "--quiet", "a.pnx")
        self.assertEqual(self.result.returncode, 2)
        self.assertEqual(self.errors, "penwick: give --messages-in-pages or --quiet, not both\n")

    def test_each_recording_has_one_page_of_its_own(self):
        self.file("2019/a.pnx")
        self.file("2020/a.pnx")
        self.view("2019/a.pnx", "2020/a.pnx")
        pages = self.all_pages()
        self.assertEqual(len(pages), 2)
        self.view("2020/../2019/a.pnx")
        self.assertEqual(self.all_pages(), pages)

    def test_no_name_of_a_file_can_do_harm(self):
        for name in ("a b.pnx", "$(touch harm).pnx", "a\nb;touch harm.pnx", "'\"`touch harm`.pnx", "../../harm.pnx",
                     "<script>.pnx", "-rf.pnx", "\udcff\udcfe.pnx", "x" * 250 + ".pnx", "灯台.pnx", ".pnx"):
            with self.subTest(name):
                self.file(f"deep/deeper/{name}")
                before = self.files()
                self.view(f"deep/deeper/{name}")
                self.assertEqual(self.result.returncode, 0, self.errors)
                made = {path for path in self.files() - before if not path.startswith("home/.local/")}
                page, = (path for path in made if path.startswith("home/"))
                self.assertRegex(page, r"^home/\.cache/penwick/[A-Za-z0-9][A-Za-z0-9-]*-[0-9a-f]{16}\.html$")
                self.assertEqual(made - {page}, {"shown/" + page.rpartition("/")[2]})

    def test_says_where_the_page_is_when_there_is_no_browser(self):
        self.file("a.pnx")
        (self.programs / "xdg-open").unlink()
        for env, reason in (({"PATH": str(self.programs)}, "xdg-open is not installed"),
                            ({"ANSWER": "3"}, "xdg-open found no browser")):
            self.view("a.pnx", env=env)
            page, = self.all_pages()
            self.assertEqual(self.result.returncode, 1)
            self.assertEqual(self.errors, f"penwick: {self.pages / page}: this page could not be shown: {reason}; "
                                          "open it in a browser\n")
            (self.programs / "xdg-open").write_text(BROWSER)
            (self.programs / "xdg-open").chmod(0o755)

    def test_the_cache_folder_can_be_elsewhere(self):
        self.file("a.pnx")
        self.pages = self.folder / "cache/penwick"
        self.view("a.pnx", env={"XDG_CACHE_HOME": str(self.folder / "cache")})
        self.assert_shown(*self.all_pages())
        # A relative name is ignored.
        self.view("a.pnx", env={"XDG_CACHE_HOME": "elsewhere"})
        self.assertFalse((self.folder / "elsewhere").exists())

    def test_removes_its_pages_after_a_week(self):
        self.file("a.pnx")
        self.pages.mkdir(parents=True)
        number = "0123456789abcdef"
        ages = {f"new-{number}.html": 6, f"old-{number}.html": 8, "own.html": 8, f"old-{number}.svg": 8,
                f"o ld-{number}.html": 8}
        for name, days in ages.items():
            (self.pages / name).write_text("")
            os.utime(self.pages / name, (time.time() - days * DAY,) * 2)
        (self.pages / f"link-{number}.html").symlink_to("own.html")
        self.view("a.pnx")
        kept = [name for name in self.all_pages() if not re.match("^a-", name)]
        self.assertEqual(kept, sorted({*ages, f"link-{number}.html"} - {f"old-{number}.html"}))

    def test_says_where_there_is_no_place_for_the_page(self):
        self.file("a.pnx")
        (self.home / ".cache").write_text("")
        self.view("a.pnx")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors, f"penwick: a.pnx: the folder for the page, {self.pages}, cannot be made: "
                                      "Not a directory; use open -o\n")

    def test_takes_recordings_alone(self):
        (self.folder / "in").mkdir()
        self.assert_fails("'in' is a folder; name the recordings to view", "view", "in", status=2)

    def test_reads_standard_input(self):
        self.view("-", input=THREE_POINTS)
        self.assertEqual((self.result.returncode, self.errors), (0, ""))
        page, = self.all_pages()
        self.assert_shown(page)
        self.assertIn("<h1>drawing</h1>", (self.pages / page).read_text())

    def test_draws_with_a_pressure_and_mends(self):
        self.file("a.pnx", THREE_POINTS[:-3])
        self.view("a.pnx", "--rescue", "--pressure", "0.5")
        self.assertEqual(self.result.returncode, 0, self.errors)
        self.assertIn("rescued: ", self.out)
