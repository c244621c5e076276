"""The whole path under Windows: penwick.exe, the module, and what they draw.

The native command is the second opinion: what it draws is held against an independent model in
other tests."""
import json
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import wine

INK = """<?xml version="1.0"?>
<ink>
  <definitions>
    <brush id="b"/>
    <traceFormat id="f"/>
    <context id="c" brushRef="#b" traceFormatRef="#f"/>
  </definitions>
  <tracegroup id="layer0">
    <trace contextRef="#c">0 0 0 100 0 0 1,100 50 0 200 0 0 2,200 0 0 300 0 0 3</trace>
  </tracegroup>
</ink>
"""


class Case(unittest.TestCase):
    def setUp(self):
        held = tempfile.TemporaryDirectory()
        self.addCleanup(held.cleanup)
        self.folder = pathlib.Path(held.name)

    def succeed(self, done):
        self.assertEqual(done.returncode, 0, (done.stdout + done.stderr).decode("utf-8", "replace"))
        return done

    def native_art(self, recording):
        art = self.folder / "native.json"
        self.succeed(wine.native("open", recording, "-o", art, "--force", cwd=self.folder))
        return art.read_bytes()


class Runner(unittest.TestCase):
    def test_a_program_that_fails_under_wine_fails_here(self):
        self.assertEqual(wine.wine("cmd", "/c", "exit 7").returncode, 7)

    def test_ctest_starts_the_tests_in_python_without_wine(self):
        shown = subprocess.run(["ctest", "--show-only=json-v1"], cwd=wine.BUILD, check=True,
                               capture_output=True).stdout
        commands = [test["command"] for test in json.loads(shown)["tests"]]
        ours = [command for command in commands if "unittest" in command]
        self.assertEqual(len(ours), 3)
        for command in ours:
            self.assertNotIn(str(wine.RUNNER), command)


class WholePath(Case):
    def test_every_sample_gives_the_same_art_and_the_same_calls_as_natively(self):
        self.assertEqual(len(wine.SAMPLES), 9)
        for sample in wine.SAMPLES:
            with self.subTest(sample=sample.name):
                for run, folder in ((wine.penwick, "there"), (wine.native, "here")):
                    place = self.folder / folder
                    place.mkdir(exist_ok=True)
                    self.succeed(run("open", sample, "-o", "art.json", "--journal", "calls.jsonl",
                                     "--force", cwd=place))
                for name in ("art.json", "calls.jsonl"):
                    there, here = (self.folder / folder / name for folder in ("there", "here"))
                    self.assertGreater(here.stat().st_size, 1000)
                    self.assertEqual(there.read_bytes(), here.read_bytes(), name)

    def test_pictures_are_the_same_and_have_no_carriage_returns(self):
        sample = wine.ROOT / "samples/signature.pnx"
        self.succeed(wine.penwick("open", sample, "-o", "there.svg", cwd=self.folder))
        self.succeed(wine.native("open", sample, "-o", "here.svg", cwd=self.folder))
        picture = (self.folder / "there.svg").read_bytes()
        self.assertEqual(picture, (self.folder / "here.svg").read_bytes())
        self.assertNotIn(b"\r", picture)

    def test_standard_output_is_binary(self):
        sample = wine.ROOT / "samples/signature.pnx"
        there = self.succeed(wine.penwick("open", sample, "--format", "json", "-o", "-", cwd=self.folder))
        self.assertEqual(there.stdout, self.native_art(sample))

    def test_pdf_and_png_are_refused_with_a_sentence(self):
        for ending in ("pdf", "png"):
            done = wine.penwick("open", wine.ROOT / "samples/signature.pnx", "-o", "a." + ending,
                                cwd=self.folder)
            self.assertEqual(done.returncode, 1)
            self.assertIn(f"writes no {ending.upper()}; write SVG".encode(), done.stderr)
            self.assertFalse((self.folder / ("a." + ending)).exists())

    def test_a_file_that_is_not_there_is_an_error(self):
        done = wine.penwick("open", "none.pnx", "-o", "a.json", cwd=self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"there is no such file", done.stderr)

    def test_wildcards_stand_for_files(self):
        for name in ("a.pnx", "b c.pnx"):
            shutil.copy(wine.ROOT / "samples/signature.pnx", self.folder / name)
        self.succeed(wine.penwick("open", "*.pnx", "--format", "json", cwd=self.folder))
        self.assertEqual({file.name for file in self.folder.glob("*.json")}, {"a.json", "b c.json"})


class Names(Case):
    def opens(self, place, name):
        place.mkdir(parents=True, exist_ok=True)
        sample = wine.ROOT / "samples/signature.pnx"
        shutil.copy(sample, place / name)
        done = self.succeed(wine.penwick("open", wine.windows_path(place / name), "-o",
                                         wine.windows_path(place / (name + ".json")), cwd=self.folder))
        self.assertEqual((place / (name + ".json")).read_bytes(), self.native_art(sample))
        return done

    def test_with_blanks(self):
        self.opens(self.folder / "my own drawings", "the first one.pnx")

    def test_with_umlauts_are_shown_as_utf_8(self):
        done = self.opens(self.folder / "Zeichnungen für Jörg", "Größe.pnx")
        self.assertIn("Größe.pnx".encode(), done.stdout + done.stderr)

    def test_in_chinese(self):
        self.opens(self.folder / "图画", "钢笔画.pnx")

    def test_beyond_16_bits(self):
        self.opens(self.folder / "𝒟𝓇𝒶𝓌", "🖋🌄.pnx")

    def test_longer_than_260_characters(self):
        place = self.folder
        for _ in range(8):
            place /= "a folder whose name is long, which is allowed"
        self.assertGreater(len(str(place)), 300)
        self.opens(place, "drawing.pnx")


class Ink(Case):
    def test_written_as_text_has_windows_line_ends_and_is_read_back(self):
        sample = wine.ROOT / "samples/signature.pnx"
        self.succeed(wine.penwick("convert", sample, "-o", "there.kvo", cwd=self.folder))
        self.succeed(wine.native("convert", sample, "-o", "here.kvo", cwd=self.folder))
        there, here = ((self.folder / name).read_bytes() for name in ("there.kvo", "here.kvo"))
        self.assertNotIn(b"\r", here)
        self.assertGreater(here.count(b"\n"), 5)
        self.assertEqual(there, here.replace(b"\n", b"\r\n"))
        self.succeed(wine.penwick("open", "there.kvo", "-o", "there.json", cwd=self.folder))
        self.assertEqual((self.folder / "there.json").read_bytes(),
                         self.native_art(self.folder / "here.kvo"))

    def test_opens_alike_with_either_line_end(self):
        for name, text in (("unix.inkml", INK), ("windows.inkml", INK.replace("\n", "\r\n"))):
            (self.folder / name).write_bytes(text.encode())
            self.succeed(wine.penwick("open", name, "-o", name + ".json", cwd=self.folder))
        unix, windows = ((self.folder / (name + ".inkml.json")).read_bytes()
                         for name in ("unix", "windows"))
        self.assertEqual(unix, windows)
        paths = [path for layer in json.loads(unix)["layers"] for path in layer["art"]]
        self.assertEqual(len(paths), 1)


class Log(Case):
    def setUp(self):
        super().setUp()
        self.bad = self.folder / "bad.pnx"
        self.bad.write_bytes(b"\x09")
        self.own = wine.local_app_data() / "Penwick"
        shutil.rmtree(self.own, ignore_errors=True)
        self.addCleanup(shutil.rmtree, self.own, ignore_errors=True)

    def draws_all_the_same(self, *words):
        """Opens a recording that makes the plug-in write into its log, and then another."""
        sample = wine.ROOT / "samples/signature.pnx"
        done = wine.penwick("open", wine.windows_path(self.bad), wine.windows_path(sample), "--out-dir",
                            wine.windows_path(self.folder), "--format", "json", *words,
                            cwd=self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"bad.pnx", done.stderr)
        self.assertEqual((self.folder / "signature.json").read_bytes(), self.native_art(sample))

    def test_is_written_with_windows_line_ends_into_the_users_folder(self):
        self.draws_all_the_same()
        self.assert_log(self.own / "orvo.log")

    def test_is_written_into_the_folder_that_is_named(self):
        self.draws_all_the_same("--log-dir", "logs")
        self.assert_log(self.folder / "logs/orvo.log")
        self.assertFalse(self.own.exists())

    def assert_log(self, log):
        self.assertFalse((self.folder / "orvo.log").exists())
        lines = log.read_bytes().split(b"\r\n")
        self.assertEqual(len(lines), 3)
        self.assertTrue(lines[0].endswith(b"SEVERE bad packet tag: 1 expected for file descriptor\t"
                                          b"FileDescriptor::readFromStream()"), lines[0])
        self.assertTrue(lines[1].endswith(b"SEVERE invalid file descriptor\tPnxParser::parse()"))
        self.assertEqual(lines[2], b"")

    def test_is_written_nowhere_where_its_folder_cannot_be_made(self):
        self.own.write_bytes(b"")
        self.addCleanup(self.own.unlink)
        temporary = wine.folder_named_by("TEMP")
        before = set(temporary.iterdir())
        self.draws_all_the_same()
        self.assertEqual({file.name for file in self.folder.iterdir()},
                         {"bad.pnx", "signature.json", "native.json"})
        # Other tests, which may run meanwhile, have folders with two numbers there.
        self.assertEqual([file.name for file in set(temporary.iterdir()) - before
                          if re.fullmatch("penwick-[0-9]+", file.name)], [])

    def test_whose_name_a_folder_has_does_not_matter(self):
        (self.own / "orvo.log").mkdir(parents=True)
        self.draws_all_the_same()


class Library(Case):
    def setUp(self):
        super().setUp()
        self.own = wine.local_app_data() / "Penwick"
        shutil.rmtree(self.own, ignore_errors=True)
        self.addCleanup(shutil.rmtree, self.own, ignore_errors=True)

    def test_without_any_library_the_command_says_where_to_put_it(self):
        done = wine.penwick("open", wine.ROOT / "samples/signature.pnx", "-o", "a.json",
                            "--no-built-in-library", cwd=self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn(rb"AppData\Local", done.stderr)
        self.assertIn(b"brush_pressure.ai", done.stderr)

    def test_the_one_in_the_users_folder_is_read(self):
        self.own.mkdir()
        shutil.copy(wine.ROOT / "packaging/brush_pressure.ai", self.own / "brush_pressure.ai")
        sample = wine.ROOT / "samples/signature.pnx"
        self.succeed(wine.penwick("open", sample, "-o", "a.json", "--no-built-in-library",
                                  cwd=self.folder))
        self.assertEqual((self.folder / "a.json").read_bytes(), self.native_art(sample))


if __name__ == "__main__":
    unittest.main()
