import os
import signal
import subprocess
import threading
import time

from command import PENWICK, THREE_POINTS, CommandTest, descriptor, ink, layer, stroke

TRACE = '<trace contextRef="#c">0 1 0 512,10 20 0 512,30 5 0 512</trace>'
INK = ink(layer(TRACE))


class StandardInput(CommandTest):
    """Reading from "-", with a temporary folder of the test's own."""

    def setUp(self):
        super().setUp()
        self.temporary = self.folder / "temporary"
        self.temporary.mkdir()

    def penwick(self, *words, **options):
        result = super().penwick(*words, env={"TMPDIR": str(self.temporary)}, **options)
        self.assertEqual(list(self.temporary.iterdir()), [])
        return result

    def test_is_read_by_every_command(self):
        for content in (THREE_POINTS, INK, b" \r\n\t" + INK, b"\xef\xbb\xbf" + INK):
            self.file("a.pnx" if content is THREE_POINTS else "a.kvo", content)
            name = "a.pnx" if content is THREE_POINTS else "a.kvo"
            for command, output in (("open", "json"), ("ink", "json"), ("convert", "inkml")):
                self.penwick(command, "-q", name, "--force", "-o", f"named.{output}")
                self.penwick(command, "-q", "-", "--force", "-o", f"piped.{output}", input=content)
                self.assertEqual((self.result.returncode, self.errors), (0, ""))
                self.assertEqual((self.folder / f"named.{output}").read_bytes(),
                                 (self.folder / f"piped.{output}").read_bytes())

    def test_is_named_as_a_dash(self):
        self.penwick("open", "-", "-o", "a.svg", input=THREE_POINTS)
        self.assertEqual(self.out, "-: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> a.svg\n")
        for command in ("open", "ink", "convert"):
            self.penwick(command, "-", "-o", "b.kvo" if command == "convert" else "b.json", input=b"")
            self.assertEqual((self.result.returncode, self.errors),
                             (1, "penwick: -: the file is empty (0 bytes)\n"))

    def test_goes_from_command_to_command(self):
        self.file("a.pnx")
        self.penwick("convert", "-q", "a.pnx", "-o", "b.kvo")
        self.penwick("open", "-", "-o", "-", "--format", "svg",
                     input=(self.folder / "b.kvo").read_bytes())
        self.assertIn("<svg", self.out)

    def test_is_read_as_asked(self):
        self.penwick("ink", "-", "--as", "pen", input=INK)
        self.assertIn("this is an XML document, not a pen recording", self.errors)
        self.penwick("open", "-", "-o", "a.svg", "--as", "inkml", input=THREE_POINTS)
        self.assertIn("it looks like a pen recording", self.errors)

    def test_needs_a_name_for_the_result(self):
        for command in ("open", "convert"):
            for words in (["-"], ["-", "--out-dir", "out"], ["-", "a.pnx"]):
                self.penwick(command, *words, input=THREE_POINTS)
                self.assertEqual((self.result.returncode, self.errors), (
                    2, "penwick: a result of standard input cannot be named after it; use -o\n"))

    def test_that_cannot_be_read(self):
        folder = os.open(self.folder, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        self.penwick("open", "-", "-o", "a.svg", stdin=folder)
        self.assertEqual((self.result.returncode, self.errors),
                         (1, "penwick: -: it cannot be read: Is a directory\n"))

    def test_leaves_nothing_behind_where_the_command_is_ended(self):
        environment = dict(os.environ, TMPDIR=str(self.temporary), HOME=str(self.home))
        # More than the command reads at once; it waits for the rest.
        long = descriptor() + stroke(*[(i % 999, 10) for i in range(40000)])
        for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
            with subprocess.Popen([PENWICK, "ink", "-"], cwd=self.folder, env=environment,
                                  stdin=subprocess.PIPE, stdout=subprocess.DEVNULL) as running:
                running.stdin.write(long)
                running.stdin.flush()
                self.wait_for(lambda: any(self.temporary.glob("*/stdin.pnx")))
                folder, = self.temporary.iterdir()
                self.assertEqual(folder.stat().st_mode & 0o777, 0o700)
                running.send_signal(number)
                running.wait(timeout=600)
            self.assertEqual(running.returncode, -number)
            self.assertEqual(list(self.temporary.iterdir()), [])

    def wait_for(self, condition):
        end = time.monotonic() + 60
        while not condition():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)

    def test_where_there_is_no_temporary_folder(self):
        CommandTest.penwick(self, "ink", "-", input=THREE_POINTS, env={"TMPDIR": "/no/such/folder"})
        self.assertEqual((self.result.returncode, self.errors), (0, ""))


class Pipes(CommandTest):
    def feed(self, path, content):
        os.mkfifo(path)
        writer = threading.Thread(target=lambda: path.write_bytes(content), daemon=True)
        writer.start()
        self.addCleanup(writer.join, 60)

    def test_are_read_like_files(self):
        for name, content in (("a.pnx", THREE_POINTS), ("b.kvo", INK), ("c", INK), ("d", THREE_POINTS)):
            for command in ("open", "ink", "convert"):
                output = self.folder / ("x.inkml" if command == "convert" else "x.json")
                self.feed(self.folder / name, content)
                self.assert_done(command, "-q", name, "-o", output)
                self.assertGreater(len(output.read_bytes()), 100)
                output.unlink()
                (self.folder / name).unlink()

    def test_are_taken_by_their_names_first(self):
        self.feed(self.folder / "a.pnx", INK)
        self.penwick("open", "a.pnx", "-o", "a.svg")
        self.assertIn("penwick: a.pnx: this is an XML document", self.errors)

    def test_are_not_opened_where_they_would_be_written_over(self):
        os.mkfifo(self.folder / "a.svg")
        self.assert_fails("a.svg: is the recording itself; choose another output", "open", "a.svg")

    def test_of_the_shell_can_be_drawn(self):
        self.file("a.pnx")
        done = subprocess.run(["bash", "-c", '"$0" open <(cat a.pnx) -o a.svg', PENWICK], cwd=self.folder,
                              capture_output=True, text=True, timeout=600, check=True)
        self.assertRegex(done.stdout, r"^/dev/fd/\d+: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> a.svg\n$")


class OtherEndings(CommandTest):
    def test_are_opened_as_asked(self):
        self.file("a.kvo", THREE_POINTS)
        self.file("b.txt", INK)
        for name, kind in (("a.kvo", "pen"), ("b.txt", "inkml")):
            for command in ("open", "convert"):
                output = "x.json" if command == "open" else "x.inkml"
                self.penwick(command, name, "--as", kind, "--force", "-o", output)
                self.assertEqual((self.result.returncode, self.errors), (0, ""))
                self.assertTrue(self.out.startswith(f"{name}: 1 layer, 1 stroke"), self.out)
                self.assertTrue((self.folder / output).exists())

    def test_of_a_missing_file_are_named_as_such(self):
        self.assert_fails("no.kvo: there is no such file; check its name and folder",
                          "open", "no.kvo", "--as", "pen")


class TerminalText(CommandTest):
    HARMFUL = ("\x1b[31m", "\n", "\x7f", "\x9b31m", "\u202e", "\u2066", "\u2069", "\u200e", "\u200f",
               "\u061c", "\u2028", "\u2029", "\ufeff", os.fsdecode(b"\xff"), os.fsdecode(b"\xc3"))

    def test_in_file_names_is_shown_harmlessly(self):
        for harm in self.HARMFUL:
            name = f"a{harm}ü.pnx"
            self.file(name)
            self.penwick("open", name, "-o", f"b{harm}.svg")
            shown = "?" + harm[1:]
            self.assertEqual(
                self.out, f"a{shown}ü.pnx: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> b{shown}.svg\n")
            self.penwick("open", f"no{harm}")
            self.assertEqual(self.errors, f"penwick: no{shown}: there is no such file; check its name "
                                          "and folder\n")

    def test_in_wrong_words_is_shown_harmlessly(self):
        self.file("a.pnx")
        for words in (["{}"], ["open", "a.pnx", "--{}"], ["open", "a.pnx", "-o", "{}"],
                      ["open", "a.pnx", "--background", "{}"], ["ink", "a.pnx", "--as", "{}"]):
            self.penwick(*(word.format("x\x1b[31m\u202e\x9b") for word in words))
            self.assertEqual(self.result.returncode, 2)
            self.assertIn("x?[31m??", self.errors)
            self.assertEqual(self.errors.count("\n"), 1)

    def test_in_documents_is_shown_harmlessly(self):
        self.file("a.kvo", ink(layer(TRACE) + "<page\u2067><trace/></page\u2067>"))
        self.penwick("open", "a.kvo", "-o", "a.svg")
        self.assertIn('traces inside "page?" are not read', self.errors)

    def test_that_the_plug_in_prints_is_shown_harmlessly(self):
        self.file("a\x1b\u202e.pnx")
        self.penwick("open", "-v", "a\x1b\u202e.pnx", "-o", "a.svg")
        self.assertNotIn("\x1b", self.errors)
        self.assertNotIn("\u202e", self.errors)
        self.assertIn("AI Major version 16 , Minor version 0\n", self.errors)

    def test_that_is_long_is_cut_between_characters(self):
        for count, shown in ((80, "ä" * 80), (81, "ä" * 80 + "...")):
            self.penwick("ä" * count)
            self.assertIn(f"'{shown}' is not a command", self.errors)
