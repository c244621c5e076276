"""Every read, write, close, rename and open of the command fails in turn: each result is whole or not there, no
recording is touched, and what went wrong is said in one line."""
import os
import random
import struct

from command import LOG, THREE_POINTS, TRACE, CommandTest, descriptor, ink, layer, stroke

PRELOADED = os.environ["PENWICK_FAILING_CALLS"]
WHOLE = "PENWICK_WHOLE" in os.environ
SEED = int(os.environ.get("PENWICK_SEED", 0)) or random.SystemRandom().randrange(1, 2**32)
SHARE = 3  # Of each kind of call of each command; what is tried of an interrupt and a short write too.

KINDS = ("read", "write", "close", "rename", "open")
HARMLESS = ("interrupt", "short")  # The command goes on after these.
DEFINITIONS = ('<definitions><traceFormat id="f"/><brush id="b"/>'
               '<context id="c" brushRef="#b" traceFormatRef="#f"/></definitions>')
OTHER = '<ink xmlns="http://www.w3.org/2003/InkML"><trace>1 2, 3 4, 5 6</trace></ink>'

FILES = {"a.pnx": THREE_POINTS, "b.pnx": descriptor() + 3 * stroke((5, 6), (70, 80), (90, 10)),
         "k.kvo": ink(DEFINITIONS + layer(TRACE)), "other.inkml": OTHER.encode(),
         "bad.pnx": THREE_POINTS[:20] + b"\x01\x06\0" + THREE_POINTS}

COMMANDS = [("open", "a.pnx", "-o", f"out/a.{ending}") for ending in ("svg", "pdf", "png", "json", "html")] + [
    ("open", "k.kvo", "-o", "out/k.svg"),
    ("open", "a.pnx", "b.pnx", "k.kvo", "--out-dir", "out", "--jobs", "2"),
    ("open", "other.inkml", "-o", "out/other.svg"),
    ("convert", "a.pnx", "-o", "out/a.inkml"),
    ("rescue", "bad.pnx", "-o", "out/bad.pnx"),
    ("ink", "a.pnx", "-o", "out/ink.json"),
    ("sheet", "a.pnx", "b.pnx", "-o", "out/sheet.html"),
    ("info", "a.pnx"), ("check", "a.pnx", "b.pnx"), ("packets", "a.pnx")]


class FailingCalls(CommandTest):
    def setUp(self):
        super().setUp()
        for name, content in FILES.items():
            self.file(name, content)
        self.made = self.folder / "made"

    def run_failing(self, words, kind, number):
        """Results by name, and how many calls of the kind there were and have failed."""
        out = self.folder / "out"
        out.mkdir(exist_ok=True)
        for old in out.iterdir():
            old.unlink()
        self.made.write_bytes(bytes(8))
        self.penwick(*words, env={"LD_PRELOAD": PRELOADED, "PENWICK_FAILING_CALL": f"{kind} {number}",
                                  "PENWICK_CALLS_MADE": str(self.made)})
        return ({path.name: path.read_bytes() for path in out.iterdir()},
                *struct.unpack("=II", self.made.read_bytes()))

    def assert_recordings_are_untouched(self):
        for name, content in FILES.items():
            self.assertEqual((self.folder / name).read_bytes(), content)
        self.assertEqual({name for name in self.files() if not name.startswith("out/")} - {LOG, "made"},
                         set(FILES))

    def assert_said_or_done(self, results, expected, output, kind):
        status = self.result.returncode
        self.assertIn(status, (0, 1), self.errors)
        for name, content in results.items():
            if name == "sheet.html" and b'data-bad="1"' in content:  # It says what it could not read.
                self.assertEqual(content[-8:], expected[name][-8:])
            else:
                self.assertEqual(content, expected.get(name), f"{name} is not whole")
        if status == 0:
            self.assertEqual((set(results), self.out), (set(expected), output))
        else:
            self.assertNotIn(kind, HARMLESS, self.errors)
            self.assertTrue(self.errors or self.out)  # `check` has its answer on standard output.
            for line in self.errors.splitlines():
                self.assertRegex(line, r"^penwick: \S.*\S$")

    def test_leave_every_result_whole_or_not_there(self):
        dice = random.Random(SEED)
        tried = 0
        for words in COMMANDS:
            expected, _, _ = self.run_failing(words, "none", 0)
            status, output = self.result.returncode, self.out
            self.assertEqual(status, 0, (words, self.errors))
            for kind in KINDS + HARMLESS:
                _, calls, _ = self.run_failing(words, kind, 0)
                numbers = range(1, calls + 1)
                if not WHOLE:
                    numbers = sorted(dice.sample(numbers, min(SHARE, calls)))
                for number in numbers:
                    with self.subTest(words=words, kind=kind, number=number, seed=SEED):
                        results, _, failed = self.run_failing(words, kind, number)
                        self.assert_said_or_done(results, expected, output, kind)
                        self.assert_recordings_are_untouched()
                        tried += failed  # Which worker makes how many calls is a matter of chance.
            again, _, _ = self.run_failing(words, "none", 0)
            self.assertEqual((again, self.out), (expected, output))
        print(f"failing calls: seed {SEED}, {tried} tried")
        self.assertGreater(tried, 100)
