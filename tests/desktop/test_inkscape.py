"""The extension for Inkscape, called as Inkscape calls it. tools/deb --test runs it in Inkscape itself."""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import unittest
import xml.etree.ElementTree as xml

from command import PENWICK, THREE_POINTS, CommandTest, descriptor, stroke

EXTENSION = pathlib.Path(__file__).resolve().parent.parent.parent / "packaging/inkscape"
LABEL = "{http://www.inkscape.org/namespaces/inkscape}label"
MODE = "{http://www.inkscape.org/namespaces/inkscape}groupmode"
SVG = "{http://www.w3.org/2000/svg}"


class InkscapeExtension(CommandTest):
    def setUp(self):
        super().setUp()
        self.place = self.folder / "extensions"
        self.place.mkdir()
        shutil.copy(EXTENSION / "penwick_inkscape.py", self.place)

    def extension(self, *words, path=os.path.dirname(PENWICK)):
        """As Inkscape does it: in the folder of the extension."""
        environment = {**os.environ, "HOME": str(self.home), "PATH": path, "XDG_CONFIG_HOME": ""}
        self.result = subprocess.run([sys.executable, "-B", "penwick_inkscape.py", *map(str, words)], cwd=self.place,
                                     env=environment, capture_output=True, timeout=600, check=False)
        self.errors = self.result.stderr.decode()
        return self.result.stdout

    def drawing(self, *words):
        content = self.extension(*words)
        self.assertEqual((self.result.returncode, self.errors), (0, ""))
        return xml.fromstring(content)

    def assert_fails_with(self, sentence, *words, **options):
        self.assertEqual(self.extension(*words, **options), b"")
        self.assertEqual((self.result.returncode, self.errors), (1, sentence + "\n"))

    def test_gives_layers_as_inkscape_has_them(self):
        groups = self.drawing(self.file("ä b.pnx", THREE_POINTS)).findall(SVG + "g")
        self.assertEqual([group.get(MODE) for group in groups], ["layer"])
        self.assertTrue(groups[0].get(LABEL))
        self.assertEqual(len(groups[0].findall(SVG + "path")), 1)

    def test_leaves_nothing_in_its_folder(self):
        self.drawing(self.file("a.pnx", THREE_POINTS))
        self.assertEqual([file.name for file in self.place.iterdir()], ["penwick_inkscape.py"])

    def test_says_in_a_sentence_what_is_wrong(self):
        self.assert_fails_with("broken.pnx: this is a text file, not a recording", self.file("broken.pnx", b"x,y\n1,2\n"))
        self.extension(self.folder / "missing.pnx")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, r"\Amissing\.pnx: [^\n]*\n\Z")

    def test_opens_what_can_be_saved_and_says_what_could_not(self):
        damaged = self.file("cut.pnx", THREE_POINTS + stroke((5, 5), (900, 900))[:-2])
        content = self.extension(damaged)
        self.assertEqual(self.result.returncode, 0)
        self.assertEqual(len(xml.fromstring(content).findall(f".//{SVG}path")), 1)
        # Three points, and of the stroke that is cut its first one.
        self.assertRegex(self.errors, r"\Acut\.pnx: warning: 1 stroke [^\n]+\n"
                                      r"cut\.pnx: rescued: 4 points kept, 1 stretch left out [^\n]+\n\Z")

    def test_says_where_the_command_is_missing(self):
        self.extension(self.file("a.pnx"), path="/nowhere")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, r"\A[^\n]*needs the command penwick, which is not there\.[^\n]*\n\Z")

    def test_takes_the_command_that_lies_beside_it(self):
        (self.place / "penwick").symlink_to(PENWICK)
        self.extension(self.file("a.pnx", THREE_POINTS), path="/nowhere")
        self.assertEqual((self.result.returncode, self.errors), (0, ""))

    def test_draws_as_the_options_say_that_were_chosen_last(self):
        light = self.file("a.pnx", descriptor() + stroke((0, 10), (100, 200), pressed=0))
        usual = self.extension(light)
        self.extension("--style=outline", "--pressure=1", "--rescue=false")
        self.assertEqual((self.result.returncode, self.result.stdout, self.errors), (0, b"", ""))
        self.assertNotEqual(self.extension(light), usual)
        self.extension("--style=centerline", "--pressure=0.5", "--rescue=true")
        self.assertIn(b'fill="none"', self.extension(light))
        self.assertNotIn(b'fill="none"', usual)

    def test_does_not_trip_over_options_that_make_no_sense(self):
        place = self.home / ".config/penwick/inkscape.json"
        place.parent.mkdir(parents=True)
        recording = self.file("a.pnx", THREE_POINTS)
        usual = self.extension(recording)
        for content in ("", "{", "[]", "null", '{"style": "x", "pressure": 7, "rescue": 3}', '{"pressure": "1"}',
                        '{"style": null, "pressure": true}', '{"pressure": NaN}', "\0"):
            with self.subTest(content):
                place.write_text(content)
                self.assertEqual((self.extension(recording), self.errors), (usual, ""))

    def test_keeps_options_as_they_were_chosen(self):
        self.extension("--style=centerline", "--pressure=0.25", "--rescue=false")
        kept = json.loads((self.home / ".config/penwick/inkscape.json").read_text())
        self.assertEqual(kept, {"style": "centerline", "pressure": 0.25, "rescue": False})

    def test_says_where_options_cannot_be_kept(self):
        self.home.joinpath(".config").write_bytes(b"in the way")
        self.extension("--style=outline", "--pressure=1", "--rescue=false")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors.count("\n"), 1)
        self.assertNotIn("Traceback", self.errors)


if __name__ == "__main__":
    unittest.main()
