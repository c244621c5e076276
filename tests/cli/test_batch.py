"""Several files and whole folders: what is taken, what comes of each, and what is said about it."""
import os
import pathlib
import pty
import re
import shutil
import signal
import subprocess
import time

from command import MODULE, PENWICK, THREE_POINTS, TWO_POINTS, CommandTest, descriptor, ink, layer, TRACE

BAD_MODULE = os.environ["PENWICK_BAD_MODULE"]
CRASHED = "the work on it crashed (Aborted) and nothing was written; please report this with the file"
OUT_OF_TIME = "it took more than 1 s of processor time and was ended; --time-limit gives it more"
KILLED = "the system ended the work on it (Killed), perhaps for lack of memory; try it alone"
DENIED = "permission to read the {} is denied; check its permissions"
NOBODY = 65534


class BatchTest(CommandTest):
    def drawn(self):
        return sorted(name for name in self.files() if name.endswith(".svg"))

    def lines(self):
        """What each line of standard output is about, without the figures."""
        return [re.sub(r": 1 layer, .* mm -> ", " -> ", line) for line in self.out.splitlines()]

    def as_somebody_else(self):
        """Options with which the command has no special rights; it may write to this test's folder."""
        if os.geteuid() != 0:
            return {}
        for folder in (self.folder, self.home):
            folder.chmod(0o777)
        for built in (PENWICK, MODULE, BAD_MODULE):
            shutil.copy(built, self.folder)
        return {"user": NOBODY, "group": NOBODY, "extra_groups": [],
                "program": self.folder / pathlib.Path(PENWICK).name}


class Folders(BatchTest):
    def test_give_all_recordings_in_them_and_keep_their_structure(self):
        for name in ("d/b.pnx", "d/a.PNX", "d/2020/c.Eli", "d/2020/may/e.pnx", "d/2020.pnx", "d/notes.txt"):
            self.file(name)
        self.file("d/z.KVO", ink(layer(TRACE)))
        self.file("d/y.InkML", ink(layer(TRACE)))
        self.assert_done("open", "d", "--out-dir", "out")
        self.assertEqual(self.lines(), [
            "d/2020/c.Eli -> out/2020/c.svg", "d/2020/may/e.pnx -> out/2020/may/e.svg",
            "d/2020.pnx -> out/2020.svg", "d/a.PNX -> out/a.svg", "d/b.pnx -> out/b.svg",
            "d/y.InkML -> out/y.svg", "d/z.KVO -> out/z.svg", "7 drawn"])
        self.assertEqual(self.drawn(), ["out/2020.svg", "out/2020/c.svg", "out/2020/may/e.svg",
                                        "out/a.svg", "out/b.svg", "out/y.svg", "out/z.svg"])

    def test_are_converted_too(self):
        self.file("d/e/a.pnx")
        self.assert_done("convert", "-q", "d", "--out-dir", "out")
        self.assertIn("out/e/a.kvo", self.files())

    def test_are_rescued_too(self):
        self.file("d/a.pnx")
        self.file("d/e/b.pnx")
        self.assert_done("rescue", "-q", "d", "--out-dir", "out")
        self.assertLessEqual({"out/a.pnx", "out/e/b.pnx"}, self.files())

    def test_of_results_are_not_taken_for_recordings(self):
        self.file("d/a.pnx")
        self.assert_done("convert", "d", "--out-dir", "d/out")
        self.penwick("convert", "d", "--out-dir", "d/out")
        self.assertEqual((self.result.returncode, self.errors, self.out), (
            0, "penwick: d/out: warning: this folder is left out, since the results go there\n",
            "d/a.pnx: d/out/a.kvo already exists and is kept; --force replaces it\n"))
        self.assert_fails("d: the results would go among the recordings; name another folder with "
                          "--out-dir", "convert", "d", "--out-dir", "d")
        self.assert_done("open", "-q", "d", "--out-dir", "d")
        self.assertEqual(self.drawn(), ["d/a.svg", "d/out/a.svg"])

    def test_without_recordings_are_an_error(self):
        self.file("d/notes.txt")
        self.assert_fails("d: there are no recordings (.pnx, .eli, .kvo, .inkml) in this folder",
                          "open", "d")

    def test_that_cannot_be_read_are_an_error_in_their_place(self):
        for name in ("d/a.pnx", "d/b/x.pnx", "d/c.pnx"):
            self.file(name)
        options = self.as_somebody_else()
        (self.folder / "d/b").chmod(0)
        self.penwick("open", "-q", "d", **options)
        (self.folder / "d/b").chmod(0o755)
        self.assertEqual((self.result.returncode, self.errors), (
            1, f"penwick: d/b: {DENIED.format('folder')}\n"))
        self.assertEqual(self.drawn(), ["a.svg", "c.svg"])

    def test_lead_nowhere_else_through_links(self):
        self.file("d/a.pnx")
        self.file("elsewhere/b.pnx")
        (self.folder / "d/folder").symlink_to("../elsewhere")
        (self.folder / "d/file.pnx").symlink_to("../elsewhere/b.pnx")
        (self.folder / "d/round").symlink_to(".")
        self.penwick("open", "d")
        self.assertEqual((self.result.returncode, self.errors), (
            0, "penwick: d: warning: 3 links in this folder are not followed; name what they lead to\n"))
        self.assertEqual(self.drawn(), ["a.svg"])

    def test_that_are_links_themselves_are_worked_through(self):
        self.file("d/a.pnx")
        (self.folder / "link").symlink_to("d")
        self.assert_done("open", "link")
        self.assertEqual(self.drawn(), ["a.svg"])

    def test_hide_their_hidden_files(self):
        for name in ("d/a.pnx", "d/._a.pnx", "d/.trash/b.pnx"):
            self.file(name)
        self.assert_done("open", "d", "--out-dir", "out")
        self.assertEqual(self.drawn(), ["out/a.svg"])


class Names(BatchTest):
    """of results never clash."""
    def test_keep_the_folders_that_tell_them_apart(self):
        for name in ("2019/a.pnx", "2019/b.pnx", "2020/a.pnx", "2020/deep/a.pnx"):
            self.file(name)
        self.assert_done("open", "-q", "2019", "2020", "--out-dir", "out")
        self.assertEqual(self.drawn(), ["out/2019/a.svg", "out/2020/a.svg", "out/b.svg", "out/deep/a.svg"])

    def test_keep_the_endings_that_tell_them_apart(self):
        for name in ("d/a.pnx", "d/a.eli", "d/b.pnx"):
            self.file(name)
        self.assert_done("open", "-q", "d", "--out-dir", "out")
        self.assertEqual(self.drawn(), ["out/a.eli.svg", "out/a.pnx.svg", "out/b.svg"])

    def test_do_not_depend_on_what_was_drawn_before(self):
        self.file("d/a.pnx")
        self.assert_done("open", "-q", "d", "--out-dir", "out")
        self.file("d/a.eli", TWO_POINTS)
        self.assert_done("open", "-q", "d", "--out-dir", "out")
        pictures = {name: (self.folder / name).read_bytes() for name in self.drawn()}
        self.assertEqual(sorted(pictures), ["out/a.eli.svg", "out/a.pnx.svg", "out/a.svg"])
        self.assertEqual(pictures["out/a.pnx.svg"], pictures["out/a.svg"])
        self.assertNotEqual(pictures["out/a.eli.svg"], pictures["out/a.svg"])

    def test_of_one_file_named_twice_are_one(self):
        self.file("d/a.pnx")
        self.assert_done("open", "d", "d/a.pnx", "./d/../d/a.pnx")
        self.assertEqual(self.lines(), ["d/a.pnx -> a.svg"])


class ResultsThatExist(BatchTest):
    def setUp(self):
        super().setUp()
        self.file("d/a.pnx")
        self.file("d/b.pnx")
        self.file("out/a.svg", b"mine")

    def test_are_kept_and_no_failure(self):
        for words in ((), ("--on-conflict", "keep")):
            self.assert_done("open", "d", "--out-dir", "out", *words)
            self.assertEqual((self.folder / "out/a.svg").read_bytes(), b"mine")
        self.assertEqual(self.lines(), [
            "d/a.pnx: out/a.svg already exists and is kept; --force replaces it",
            "d/b.pnx: out/b.svg already exists and is kept; --force replaces it", "0 drawn, 2 kept"])

    def test_are_replaced_where_that_is_asked_for(self):
        for words in (["--force"], ["--on-conflict", "replace"]):
            self.file("out/a.svg", b"mine")
            self.assert_done("open", "d", "--out-dir", "out", *words)
            self.assertEqual((self.folder / "out/a.svg").read_bytes(),
                             (self.folder / "out/b.svg").read_bytes())

    def test_are_kept_beside_new_ones_with_numbers(self):
        self.file("d/a-2.pnx", TWO_POINTS)
        for _ in range(2):
            self.assert_done("open", "-q", "d", "--out-dir", "out", "--on-conflict", "number")
        self.assertEqual(self.drawn(), ["out/a-2-2.svg", "out/a-2.svg", "out/a-3.svg", "out/a-4.svg",
                                        "out/a.svg", "out/b-2.svg", "out/b.svg"])
        self.assertEqual((self.folder / "out/a.svg").read_bytes(), b"mine")
        of_two_points = (self.folder / "out/a-2.svg").read_bytes()
        self.assertEqual((self.folder / "out/a-2-2.svg").read_bytes(), of_two_points)
        self.assertNotEqual((self.folder / "out/a-3.svg").read_bytes(), of_two_points)

    def test_under_a_name_that_is_given_are_replaced_unless_a_rule_says_otherwise(self):
        for rule, left in (("keep", {"out/a.svg"}), ("number", {"out/a.svg", "out/a-2.svg"})):
            self.assert_done("open", "d/a.pnx", "-o", "out/a.svg", "--on-conflict", rule)
            self.assertEqual((self.folder / "out/a.svg").read_bytes(), b"mine")
            self.assertEqual(set(self.drawn()), left)
        self.assert_done("open", "d/a.pnx", "-o", "out/a.svg")
        self.assertNotEqual((self.folder / "out/a.svg").read_bytes(), b"mine")

    def test_are_recordings_and_kept_or_replaced_the_same_way(self):
        self.file("out/a.kvo", b"mine")
        self.assert_done("convert", "-q", "d", "--out-dir", "out")
        self.assertEqual((self.folder / "out/a.kvo").read_bytes(), b"mine")
        self.assert_fails("out/a.kvo: is another recording; use --force to overwrite it",
                          "convert", "d/a.pnx", "-o", "out/a.kvo")
        self.assert_done("convert", "-q", "d/a.pnx", "-o", "out/a.kvo", "--on-conflict", "replace")
        self.assertNotEqual((self.folder / "out/a.kvo").read_bytes(), b"mine")

    def test_are_never_a_recording_that_is_read(self):
        for rule in ("keep", "replace"):
            self.file("c.kvo", b"<ink/>")
            self.assert_fails("c.kvo: is the recording itself; choose another output",
                              "convert", "c.kvo", "--on-conflict", rule)
            self.assertEqual((self.folder / "c.kvo").read_bytes(), b"<ink/>")


class ManyFiles(BatchTest):
    def test_fail_alone_where_one_crashes_hangs_or_may_not_be_read(self):
        names = [f"d/{number:03}.pnx" for number in range(500)]
        bad = {"d/100crash.pnx": CRASHED, "d/200hang.pnx": OUT_OF_TIME, "d/300kill.pnx": KILLED,
               "d/400.pnx": DENIED.format("file")}
        for name in {*names, *bad}:
            self.file(name)
        (self.folder / "d/400.pnx").chmod(0)
        options = self.as_somebody_else()
        module = self.folder / pathlib.Path(BAD_MODULE).name if options else BAD_MODULE
        self.penwick("open", "d", "--out-dir", "out", "--module", module, "--time-limit", "1", "--jobs", "3",
                     **options)
        good = sorted({*names, *bad} - set(bad))
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors.splitlines(),
                         [f"penwick: {name}: {sentence}" for name, sentence in bad.items()])
        self.assertEqual(self.lines(), [f"{name} -> out/{pathlib.Path(name).stem}.svg" for name in good]
                         + ["499 drawn, 4 failed"])
        self.assertEqual(self.drawn(), [f"out/{pathlib.Path(name).stem}.svg" for name in good])

    def test_are_printed_in_their_order_whichever_is_done_first(self):
        self.file("d/0.pnx", descriptor() + THREE_POINTS[6:] * 3000)
        names = ["d/0.pnx", "d/1.pnx", "d/2.pnx", "d/3.pnx"]
        for name in names[1:]:
            self.file(name)
        self.assert_done("open", "d", "--jobs", "4")
        self.assertEqual([line.split(":")[0] for line in self.out.splitlines()], [*names, "4 drawn"])

    def test_end_with_the_process_that_a_module_ends(self):
        for name in ("a.pnx", "exit.pnx", "z.pnx"):
            self.file(name)
        self.penwick("open", "a.pnx", "exit.pnx", "z.pnx", "--module", BAD_MODULE, "--jobs", "1")
        self.assertEqual((self.result.returncode, self.errors), (
            1, f"penwick: exit.pnx: {CRASHED.replace('Aborted', 'exit 0')}\n"))
        self.assertEqual(self.drawn(), ["a.svg", "z.svg"])

    def test_say_nothing_where_quiet_is_asked_for(self):
        self.file("d/a.pnx")
        self.file("d/b.pnx")
        self.assert_done("open", "-q", "d")
        self.assertEqual(self.out, "")

    def test_are_counted_by_what_is_done_to_them(self):
        self.file("d/a.pnx")
        self.file("d/b.pnx", b"")
        self.penwick("convert", "d")
        self.assertEqual(self.out.splitlines()[-1], "1 converted, 1 failed")

    def test_leave_no_private_copy_where_one_crashes(self):
        place = self.folder / "place"
        place.mkdir()
        # Under another ending, the file gets a second name in a private folder.
        self.file("crash.bin")
        self.file("good.bin")
        self.penwick("open", "crash.bin", "good.bin", "--as", "inkml", "--module", BAD_MODULE,
                     env={"TMPDIR": str(place)})
        self.assertEqual(list(place.iterdir()), [])


class OneFile(BatchTest):
    def test_with_a_time_limit_is_ended_by_it(self):
        self.file("hang.pnx")
        self.assert_fails(f"hang.pnx: {OUT_OF_TIME}", "open", "hang.pnx", "--module", BAD_MODULE,
                          "--time-limit", "1")

    def test_with_a_time_limit_still_reads_and_writes_the_streams(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.svg")
        right = (self.folder / "a.svg").read_bytes()
        self.penwick("open", "-", "-o", "-", "--format", "svg", "--time-limit", "60", input=THREE_POINTS)
        self.assertEqual((self.result.returncode, self.result.stdout), (0, right))
        self.assertTrue(self.errors.startswith("-: 1 layer, 1 stroke"), self.errors)


class Interruption(BatchTest):
    def wait_for(self, what):
        end = time.monotonic() + 600
        while not what():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)

    def children(self, process):
        return pathlib.Path(f"/proc/{process}/task/{process}/children").read_text().split()

    def test_ends_every_process_and_leaves_nothing_behind(self):
        for number in range(20):
            self.file(f"d/{number:02}.pnx")
        self.file("d/99hang.pnx")
        place = self.folder / "temporary"
        place.mkdir()
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with subprocess.Popen([PENWICK, "open", "d", "--out-dir", "out", "--module", BAD_MODULE, "--jobs",
                                   "2", "--force", "--time-limit", "1000"], cwd=self.folder,
                                  env=dict(os.environ, HOME=str(self.home), TMPDIR=str(place)),
                                  stdout=subprocess.PIPE) as running:
                for _ in range(20):
                    running.stdout.readline()
                self.wait_for(lambda: len(self.children(running.pid)) == 1)
                child = self.children(running.pid)[0]
                running.send_signal(number)
                self.assertEqual(running.wait(timeout=600), -number)
            self.assertFalse(pathlib.Path("/proc", child).exists())
            self.assertEqual(sorted(os.listdir(self.folder / "out")),
                             [f"{number:02}.svg" for number in range(20)])
            self.assertEqual(os.listdir(place), [])


class Terminals(BatchTest):
    def watched(self, *words):
        """Starts the command with a terminal for its standard error; gives the process and the terminal."""
        terminal, other = pty.openpty()
        self.addCleanup(os.close, terminal)
        running = subprocess.Popen([PENWICK, *words], cwd=self.folder, stdin=subprocess.DEVNULL,
                                   stdout=other, stderr=other, env=dict(os.environ, HOME=str(self.home)))
        self.addCleanup(running.wait)
        self.addCleanup(running.kill)
        os.close(other)
        return running, terminal

    @staticmethod
    def read(terminal, until=None):
        """What is shown until something is, or until the end."""
        shown = ""
        while until is None or not re.search(until, shown):
            try:
                shown += os.read(terminal, 65536).decode()
            except OSError:  # the end of a terminal
                break
        return shown

    def test_show_a_bar_with_name_count_and_time_left(self):
        for name in ("a.pnx", "b.pnx", "hang.pnx"):
            self.file("d/" + name)
        running, terminal = self.watched("open", "d", "--module", BAD_MODULE, "--time-limit", "1000")
        self.assertRegex(self.read(terminal, until="hang.pnx"),
                         r"\[#{16}\.{8}\] 2/3, about \d+ (s|min) left hang\.pnx")
        running.send_signal(signal.SIGINT)
        self.assertRegex(self.read(terminal), r"\r *\r$")
        self.assertEqual(running.wait(timeout=600), -signal.SIGINT)

    def test_show_no_bar_where_quiet_is_asked_for(self):
        for name in ("a.pnx", "hang.pnx"):
            self.file("d/" + name)
        running, terminal = self.watched("open", "-q", "d", "--module", BAD_MODULE, "--time-limit", "2")
        self.assertEqual(self.read(terminal).replace("\r\n", "\n"),
                         f"penwick: d/hang.pnx: {OUT_OF_TIME.replace('1 s', '2 s')}\n")
        self.assertEqual(running.wait(timeout=600), 1)

    def failures_shown(self, files):
        for number in range(files):
            self.file(f"d/{number:02}.pnx")
        self.file("d/00.pnx", b"")
        running, terminal = self.watched("open", "d", "--out-dir", "out", "--force")
        shown = self.read(terminal).replace("\r\n", "\n")
        self.assertEqual(running.wait(timeout=600), 1)
        self.assertTrue(shown.endswith(f"{files - 1} drawn, 1 failed\n"), shown)
        return shown.splitlines().count("penwick: d/00.pnx: the file is empty (0 bytes)"), shown

    def test_repeat_the_failures_where_more_than_a_screen_went_by(self):
        self.assertEqual(self.failures_shown(24)[0], 1)
        times, shown = self.failures_shown(25)
        self.assertEqual(times, 2)
        self.assertEqual(shown.splitlines()[-2], "penwick: d/00.pnx: the file is empty (0 bytes)")
