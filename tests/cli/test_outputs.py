"""Where results go: nothing else is overwritten, and nothing is left behind."""
import os
import pathlib
import resource
import signal
import subprocess
import tempfile
import time

from command import PENWICK, TWO_POINTS, CommandTest, descriptor, stroke

# The address sanitizer cannot look for leaks in a program that is traced.
TRACED = {"ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}


def limit_file_size(size):
    return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


class ClosedStreams(CommandTest):
    def run_closed(self, closing, *words):
        """Runs the command through a shell that closes streams; gives status and both outputs."""
        line = ' "$@" ' + closing
        done = subprocess.run(["sh", "-c", line, "sh", PENWICK, *words], cwd=self.folder,
                              env=dict(os.environ, HOME=str(self.home)), capture_output=True,
                              timeout=600, check=False)
        return done.returncode, done.stdout, done.stderr

    def setUp(self):
        super().setUp()
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "right.svg")
        self.right = (self.folder / "right.svg").read_bytes()

    def test_no_message_lands_in_a_picture_on_standard_output(self):
        for closing in ("2>&-", "<&- 2>&-"):
            self.assertEqual(self.run_closed(closing, "open", "a.pnx", "-o", "-", "--format", "svg"),
                             (0, self.right, b""))

    def test_no_message_lands_in_a_picture_that_is_a_file(self):
        for closing in (">&-", "2>&-", "<&-", "<&- >&- 2>&-"):
            self.assertEqual(self.run_closed(closing, "open", "a.pnx", "-o", "a.svg")[0], 0)
            self.assertEqual((self.folder / "a.svg").read_bytes(), self.right, closing)
            (self.folder / "a.svg").unlink()

    def test_what_the_plug_in_prints_lands_nowhere_else(self):
        self.file("bad.pnx", b"\x02")
        status, out, errors = self.run_closed("<&- >&-", "open", "bad.pnx")
        self.assertEqual((status, out), (1, b""))
        self.assertEqual(errors.count(b"\n"), 1)
        self.assertNotIn(b"AI Major", errors)

    def test_a_picture_for_a_closed_standard_output_is_an_error(self):
        for words in (["open", "a.pnx", "-o", "-", "--format", "svg"], ["ink", "a.pnx"]):
            status, _, errors = self.run_closed(">&-", *words)
            self.assertEqual((status, errors), (
                1, b"penwick: -: standard output is closed; give a file with -o\n"))


class Recordings(CommandTest):
    """They are overwritten only where that is asked for."""
    def setUp(self):
        super().setUp()
        self.file("a.pnx")

    def assert_kept(self, name, *words):
        before = (self.folder / name).read_bytes()
        self.assert_fails(f"{words[-1]}: is another recording; use --force to overwrite it", *words)
        self.assertEqual((self.folder / name).read_bytes(), before)

    def assert_overwritten(self, name, *words):
        before = (self.folder / name).read_bytes()
        self.assert_done(*words)
        self.assertNotEqual((self.folder / name).read_bytes(), before)

    def test_convert_keeps_an_ink_document_that_is_named(self):
        for name in ("b.kvo", "b.inkml"):
            self.file(name, b"<ink/>")
            self.assert_kept(name, "convert", "a.pnx", "-o", name)
            self.assert_overwritten(name, "convert", "-q", "--force", "a.pnx", "-o", name)

    def test_are_known_behind_a_link_in_any_case_of_letters(self):
        for number, ending in enumerate((".pnx", ".ELI", ".KVO", ".inkml")):
            recording = self.file("real" + ending, TWO_POINTS).name
            link = f"link{number}.json"
            (self.folder / link).symlink_to(recording)
            self.assert_kept(recording, "open", "a.pnx", "-o", link)
            self.assert_kept(recording, "ink", "a.pnx", "-o", link)
            self.assert_kept(recording, "open", "a.pnx", "-o", "d.svg", "--journal", link)
            self.assertNotIn("d.svg", self.files())
            self.assert_overwritten(recording, "ink", "--force", "a.pnx", "-o", link)
            self.assert_overwritten(recording, "open", "--force", "-q", "a.pnx", "-o", link)
            self.assert_overwritten(recording, "open", "--force", "-q", "a.pnx", "-o", "d.svg",
                                    "--journal", link)
            (self.folder / "d.svg").unlink()

    def test_are_never_overwritten_by_their_own_result(self):
        self.file("a.kvo", b"<ink/>")
        os.link(self.folder / "a.kvo", self.folder / "b.kvo")
        (self.folder / "a.json").symlink_to("a.kvo")
        for words in (["convert", "--force", "a.kvo", "-o", "./a.kvo"],
                      ["convert", "--force", "a.kvo", "-o", "b.kvo"],
                      ["ink", "--force", "a.kvo", "-o", "a.json"],
                      ["open", "--force", "a.kvo", "-o", "a.json"],
                      ["open", "--force", "a.kvo", "-o", "b.svg", "--journal", "a.json"]):
            self.assert_fails(f"{words[-1]}: is the recording itself; choose another output", *words)
        self.assertEqual((self.folder / "a.kvo").read_bytes(), b"<ink/>")

    def test_are_never_overwritten_by_the_result_of_another_that_is_read(self):
        self.file("a.eli")
        self.file("a.pnx.kvo", b"<ink/>")
        self.penwick("convert", "-q", "--force", "a.pnx", "a.eli", "a.pnx.kvo")
        self.assertEqual((self.result.returncode, self.errors), (
            1, "penwick: a.pnx.kvo: is one of the recordings to be read; choose another output\n"))
        self.assertEqual((self.folder / "a.pnx.kvo").read_bytes(), b"<ink/>")
        self.assertLessEqual({"a.eli.kvo", "a.pnx-2.kvo"}, self.files())

    def test_do_not_keep_a_picture_from_being_replaced(self):
        self.file("b.json", b"old")
        self.assert_overwritten("b.json", "open", "-q", "a.pnx", "-o", "b.json")
        self.assert_overwritten("b.json", "ink", "a.pnx", "-o", "b.json")


class Endings(CommandTest):
    def test_that_contradict_the_content_are_wrong_usage(self):
        self.file("a.pnx")
        self.file("b.pnx", TWO_POINTS)
        for ending in ("pnx", "ELI", "kvo", "inkml"):
            name = "b." + ending
            for words, sentence in (
                    (["open", "--format", "svg", "-o", name],
                     f"'{name}' does not fit --format svg; leave one of them out"),
                    (["open", "--journal", name], f"'{name}' is not a name for a journal; give it another "
                                                  "ending"),
                    (["ink", "-o", name], f"'{name}' is not a name for the JSON of ink; give it another "
                                          "ending")):
                self.assert_fails(sentence, words[0], "--force", "a.pnx", *words[1:], status=2)
        for ending in ("svg", "pdf", "PNG"):
            name = "c." + ending
            for words in (["ink", "a.pnx", "-o", name], ["open", "a.pnx", "--journal", name],
                          ["open", "a.pnx", "--format", "json", "-o", name]):
                self.penwick(*words)
                self.assertEqual((self.result.returncode, self.errors.count("\n")), (2, 1), words)
        self.assertEqual((self.folder / "b.pnx").read_bytes(), TWO_POINTS)
        self.assertEqual(self.files(), {"a.pnx", "b.pnx"})

    def test_of_other_kinds_are_the_users_choice(self):
        self.file("a.pnx")
        self.assert_done("ink", "a.pnx", "-o", "a.txt")
        self.assert_done("open", "-q", "a.pnx", "-o", "picture", "--format", "svg", "--journal", "c.json")
        self.assertEqual(self.files(), {"a.pnx", "a.txt", "picture", "c.json"})


class TemporaryFiles(CommandTest):
    def setUp(self):
        super().setUp()
        self.file("a.pnx")

    def traced(self, *words):
        """The system calls with files of one run."""
        trace = self.folder / "trace"
        subprocess.run(["strace", "-f", "-o", trace, "-e", "trace=%file,fchmod,fchdir", PENWICK, *words],
                       cwd=self.folder, env=dict(os.environ, HOME=str(self.home), **TRACED),
                       check=True, capture_output=True, timeout=600)
        lines = trace.read_text().splitlines()
        trace.unlink()
        return lines

    def test_the_name_of_a_part_cannot_be_guessed(self):
        names = set()
        for _ in range(2):
            lines = self.traced("open", "-q", "a.pnx", "-o", "a.svg")
            created = [line for line in lines if "O_CREAT" in line and '".penwick-' in line]
            self.assertEqual(len(created), 1)
            for flag in ("O_EXCL", "O_NOFOLLOW", "O_CLOEXEC", "0600"):
                self.assertIn(flag, created[0])
            names.add(created[0].split('"')[1])
        self.assertEqual(len(names), 2)
        for name in names:
            self.assertRegex(name, r"^\.penwick-[0-9a-f]{16}$")

    def test_a_part_has_its_permissions_before_it_is_in_place(self):
        self.file("a.svg").chmod(0o640)
        lines = self.traced("open", "-q", "a.pnx", "-o", "a.svg")
        order = [line for line in lines if "fchmod" in line or "renameat" in line]
        self.assertIn("0640", order[0])
        self.assertIn('"a.svg"', order[1])

    def test_the_longest_names_work(self):
        for length in (249, 255):
            name = "x" * (length - 4) + ".svg"
            self.assert_done("open", "-q", "a.pnx", "-o", name)
            self.assert_done("open", "-q", "a.pnx", "-o", name)
            self.assertIn(name, self.files())
        self.penwick("open", "-q", "a.pnx", "-o", "x" * 252 + ".svg")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.files(), {"a.pnx", "x" * 245 + ".svg", "x" * 251 + ".svg"})

    def test_nothing_stays_behind_where_a_file_may_not_grow_so_large(self):
        self.file("a.svg", b"old")
        self.assert_fails("a.svg: cannot be written: File too large", "open", "-q", "a.pnx",
                          "-o", "a.svg", preexec_fn=limit_file_size(100))
        self.assertEqual((self.folder / "a.svg").read_bytes(), b"old")

    def test_a_standard_output_that_may_not_grow_so_large_is_an_error(self):
        with open(self.folder / "out", "wb") as out:
            done = subprocess.run([PENWICK, "open", "-q", "a.pnx", "-o", "-", "--format", "json"],
                                  cwd=self.folder, env=dict(os.environ, HOME=str(self.home)), stdout=out,
                                  stderr=subprocess.PIPE, timeout=600, check=False,
                                  preexec_fn=limit_file_size(100))
        self.assertEqual((done.returncode, done.stderr), (
            1, b"penwick: -: standard output could not be written: File too large\n"))

    def test_nothing_stays_behind_where_the_command_is_ended(self):
        self.file("a.pnx", descriptor() + stroke(*[(i % 999, 10) for i in range(30000)]))
        place = self.folder / "place"
        place.mkdir()
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            # Time for the signal, in microseconds, between the writing of the part and its renaming.
            slowly = ["-e", "trace=fchmod", "-e", "inject=fchmod:delay_exit=300000"]
            with subprocess.Popen(["strace", "-f", "-o", "/dev/null", *slowly, PENWICK, "open", "-q",
                                   "a.pnx", "-o", "place/a.svg"], cwd=self.folder,
                                  env=dict(os.environ, HOME=str(self.home), **TRACED)) as running:
                self.wait_for_part(place)
                self.signal_child(running.pid, number)
                running.wait(timeout=600)
            self.assertNotEqual(running.returncode, 0)
            self.assertEqual([path.name for path in place.iterdir()], ["a.svg"])
            (place / "a.svg").unlink()

    def wait_for_part(self, place):
        end = time.monotonic() + 60
        while not any(path.name.startswith(".penwick-") for path in place.iterdir()):
            self.assertLess(time.monotonic(), end, "no part appears")
            time.sleep(0.005)

    def signal_child(self, process, number):
        children = pathlib.Path(f"/proc/{process}/task/{process}/children").read_text().split()
        os.kill(int(children[0]), number)


class Links(CommandTest):
    def setUp(self):
        super().setUp()
        self.file("a.pnx")
        self.assert_done("open", "-q", "a.pnx", "-o", "right.svg")
        self.right = (self.folder / "right.svg").read_bytes()

    def assert_written_through(self, link, target):
        self.assert_done("open", "-q", "a.pnx", "-o", link)
        self.assertTrue((self.folder / link).is_symlink())
        self.assertFalse((self.folder / target).is_symlink())
        self.assertEqual((self.folder / target).read_bytes(), self.right)

    def test_to_a_file_stay(self):
        self.file("deep/real.svg", b"old")
        (self.folder / "link.svg").symlink_to("deep/real.svg")
        self.assert_written_through("link.svg", "deep/real.svg")

    def test_to_nothing_yet_stay(self):
        (self.folder / "deep").mkdir()
        (self.folder / "deep/link.svg").symlink_to("../real.svg")
        self.assert_written_through("deep/link.svg", "real.svg")
        (self.folder / "whole.svg").symlink_to(self.folder / "deep/new.svg")
        self.assert_written_through("whole.svg", "deep/new.svg")

    def test_to_links_stay(self):
        (self.folder / "one.svg").symlink_to("two.svg")
        (self.folder / "two.svg").symlink_to("three.svg")
        self.assert_written_through("one.svg", "three.svg")
        self.assertTrue((self.folder / "two.svg").is_symlink())

    def test_into_a_missing_folder_say_which(self):
        (self.folder / "link.svg").symlink_to("no/real.svg")
        self.assert_fails("link.svg: cannot be written: there is no folder 'no'; make it first",
                          "open", "a.pnx", "-o", "link.svg")

    def test_in_a_circle_are_an_error(self):
        (self.folder / "one.svg").symlink_to("two.svg")
        (self.folder / "two.svg").symlink_to("one.svg")
        self.assert_fails("one.svg: cannot be written: Too many levels of symbolic links",
                          "open", "a.pnx", "-o", "one.svg")
        self.assertTrue((self.folder / "one.svg").is_symlink())

    def test_of_the_system_lead_to_pipes(self):
        self.penwick("open", "-q", "a.pnx", "-o", "/dev/stdout", "--format", "svg")
        self.assertEqual((self.result.returncode, self.errors, self.result.stdout), (0, "", self.right))

    def test_of_the_system_to_a_file_without_a_name_are_an_error(self):
        with tempfile.TemporaryFile(dir=self.folder) as nameless:
            place = f"/proc/self/fd/{nameless.fileno()}"
            self.assert_fails(f"{place}: cannot be written: the file has been removed",
                              "open", "-q", "a.pnx", "-o", place, "--format", "svg",
                              pass_fds=[nameless.fileno()])
