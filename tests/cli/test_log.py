"""Where the plug-in's log lies, and what it is never written to."""
import json
import os
import shutil
import stat
import subprocess

from command import LOG, MODULE, PENWICK, THREE_POINTS, CommandTest

BAD = b"\x02"  # No recording begins so; the plug-in writes two lines into its log.


class Log(CommandTest):
    def setUp(self):
        super().setUp()
        self.file("bad.pnx", BAD)

    def fail_to_open(self, *words, **options):
        self.penwick("open", "bad.pnx", *words, **options)
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, r"^penwick: bad\.pnx: .*byte 0.*\n$")

    def log_lines(self, place):
        lines = (self.folder / place).read_text().splitlines()
        return [line.split("] ")[-1].split("\t")[0] for line in lines]

    LINES = ["SEVERE bad packet tag: 1 expected for file descriptor", "SEVERE invalid file descriptor"]

    def test_lies_in_the_users_state_folder(self):
        self.fail_to_open()
        self.assertEqual(self.files(), {"bad.pnx", LOG})
        self.assertEqual(self.log_lines(LOG), self.LINES)
        for folder in (".local", ".local/state", ".local/state/penwick"):
            self.assertEqual(stat.S_IMODE((self.home / folder).stat().st_mode), 0o700)

    def test_lies_where_an_absolute_xdg_state_home_says(self):
        self.fail_to_open(env={"XDG_STATE_HOME": str(self.folder / "state")})
        self.assertEqual(self.files(), {"bad.pnx", "state/penwick/orvo.log"})
        self.fail_to_open(env={"XDG_STATE_HOME": "relative"})
        self.assertEqual(self.files(), {"bad.pnx", "state/penwick/orvo.log", LOG})

    def test_lies_in_the_folder_that_is_named(self):
        self.fail_to_open("--log-dir", "deep/logs")
        self.assertEqual(self.files(), {"bad.pnx", "deep/logs/orvo.log"})
        self.assertEqual(self.log_lines("deep/logs/orvo.log"), self.LINES)

    def test_in_a_folder_that_cannot_be_used_is_an_error(self):
        self.file("file", b"")
        self.assert_fails("file: no log can be written in this folder: Not a directory; name another",
                          "open", "bad.pnx", "--log-dir", "file")
        # Not even the administrator may make a file there.
        self.penwick("open", "bad.pnx", "--log-dir", "/proc/self")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, "^penwick: /proc/self: no log can be written in this folder: .* "
                                      "(not permitted|denied); name another\n$")

    def test_is_not_written_where_no_folder_can_be_made(self):
        shutil.rmtree(self.home)
        self.home.write_bytes(b"")
        self.fail_to_open()
        self.assertEqual(self.files(), {"bad.pnx", "home"})
        self.file("a.pnx")
        self.assert_done("open", "-q", "a.pnx", "-o", "a.svg")

    def test_leaves_names_that_are_not_whole_as_they_are_meant(self):
        self.file("deep/a.pnx")
        for words in ([], ["--log-dir", "logs"]):
            self.assert_done("open", "-q", "../deep/a.pnx", "-o", "../a.json", "--journal", "../c.jsonl",
                             "--module", os.path.relpath(MODULE, self.folder / "deep"), *words,
                             program=self.in_folder("deep"))
            self.assertLessEqual({"a.json", "c.jsonl"}, self.files())
            for name in ("a.json", "c.jsonl"):
                (self.folder / name).unlink()

    def in_folder(self, name):
        """A script that runs the command in another folder."""
        script = self.folder / "run"
        script.write_text(f'#!/bin/sh\ncd "{self.folder / name}" && exec "{PENWICK}" "$@"\n')
        script.chmod(0o755)
        return script

    def test_does_not_keep_a_removed_folder_from_being_left(self):
        gone = self.folder / "gone"
        gone.mkdir()
        line = 'cd gone && rmdir ../gone && exec "$0" "$@"'
        self.file("a.pnx")
        done = subprocess.run(["sh", "-c", line, PENWICK, "open", "-q", self.folder / "a.pnx", "-o",
                               self.folder / "a.svg"], cwd=self.folder, capture_output=True,
                              env=dict(os.environ, HOME=str(self.home)), timeout=600, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))

    def plant(self, make):
        """Puts something in the place of the log and opens a recording that is logged."""
        place = self.folder / LOG
        place.parent.mkdir(parents=True)
        make(place)
        self.fail_to_open()

    def test_follows_no_link(self):
        target = self.file("target", b"mine")
        self.plant(lambda place: place.symlink_to(target))
        self.assertEqual(target.read_bytes(), b"mine")

    def test_makes_no_file_behind_a_link(self):
        self.plant(lambda place: place.symlink_to(self.folder / "target"))
        self.assertNotIn("target", self.files())

    def test_writes_to_no_file_with_a_second_name(self):
        target = self.file("target", b"mine")
        self.plant(lambda place: os.link(target, place))
        self.assertEqual(target.read_bytes(), b"mine")

    def test_does_not_wait_for_a_pipe(self):
        self.plant(os.mkfifo)

    def test_is_appended_to(self):
        self.fail_to_open()
        self.fail_to_open()
        self.assertEqual(self.log_lines(LOG), self.LINES * 2)


class Journal(CommandTest):
    def test_of_a_run_in_another_folder_is_the_same(self):
        self.file("a.pnx", THREE_POINTS)
        journals = []
        for words in ([], ["--log-dir", "logs"], ["--log-dir", self.folder]):
            self.assert_done("open", "-q", "a.pnx", "-o", "a.svg", "--journal", "c.jsonl", *words)
            journals.append((self.folder / "c.jsonl").read_bytes())
        self.assertEqual(len(set(journals)), 1)
        self.assertGreater(len(journals[0]), 1000)
        self.assertNotIn(b"/", b"".join(json.dumps(json.loads(line)["arguments"]).encode()
                                        for line in journals[0].splitlines()))
