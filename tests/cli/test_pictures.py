import struct

from command import CommandTest, descriptor, stroke

PRESSED = descriptor() + stroke((0, 10), (1000, 500), (2000, 100))
LIGHT = descriptor() + stroke((0, 10), (100, 200), (300, 50), pressed=0)


class Pictures(CommandTest):
    def test_are_written_in_every_format(self):
        self.file("a.pnx", PRESSED)
        for name, start in (("a.svg", b"<?xml"), ("a.pdf", b"%PDF-"), ("a.png", b"\x89PNG\r\n"),
                            ("a.html", b"<!DOCTYPE html>\n")):
            self.assert_done("open", "-q", "a.pnx", "-o", name)
            self.assertTrue((self.folder / name).read_bytes().startswith(start), name)

    def test_a_page_holds_the_very_svg(self):
        self.file("a.pnx", PRESSED)
        for words in ([], ["--style", "centerline"], ["--background", "#ff8000"]):
            for name in ("a.svg", "a.html"):
                self.assert_done("open", "-q", "a.pnx", "-o", name, *words)
            svg = (self.folder / "a.svg").read_text()
            self.assertIn(svg.removeprefix('<?xml version="1.0" encoding="UTF-8"?>\n'),
                          (self.folder / "a.html").read_text())

    def png_size(self, *words):
        self.assert_done("open", "-q", "a.pnx", "-o", "a.png", *words)
        return struct.unpack(">II", (self.folder / "a.png").read_bytes()[16:24])

    def test_are_as_large_as_asked(self):
        self.file("a.pnx", PRESSED)
        small, large = self.png_size("--dpi", "72"), self.png_size("--dpi", "144")
        for one, two in zip(small, large):
            self.assertAlmostEqual(two / one, 2, delta=0.1)
        width, height = self.png_size("--size", "300x300")
        self.assertEqual(max(width, height), 300)
        self.assertEqual(self.png_size("--size", "200")[0], 200)

    def test_have_filled_outlines_or_plain_lines(self):
        self.file("a.pnx", PRESSED)
        self.assert_done("open", "-q", "a.pnx", "-o", "a.svg")
        self.assert_done("open", "-q", "a.pnx", "-o", "b.svg", "--style", "centerline")
        outline, line = ((self.folder / name).read_text() for name in ("a.svg", "b.svg"))
        self.assertIn('fill="none"', line)
        self.assertNotIn('fill="none"', outline)
        self.assertIn("stroke-width", line)

    def test_of_recordings_without_pressure_come_with_advice(self):
        self.file("a.pnx", LIGHT)
        self.penwick("open", "a.pnx", "-o", "a.svg")
        self.assertEqual(self.errors, "penwick: a.pnx: warning: the recording has no pressure, so "
                                      "every line is as thin as the brush gets; --pressure 0.5 draws "
                                      "them as if pressed halfway\n")
        thin = (self.folder / "a.svg").read_text()
        self.penwick("open", "a.pnx", "-o", "a.svg", "--pressure", "0.5")
        self.assertEqual(self.errors, "")
        self.assertNotEqual((self.folder / "a.svg").read_text(), thin)

    def test_take_no_options_that_would_have_no_effect(self):
        self.file("a.pnx", PRESSED)
        for name, sentence, *words in (
                ("a.svg", "--dpi is for png only; leave it out with svg", "--dpi", "300"),
                ("a.pdf", "--size is for png only; leave it out with pdf", "--size", "80"),
                ("a.html", "--size is for png only; leave it out with html", "--size", "80"),
                ("a.json", "--dpi is for png only; leave it out with json", "--dpi", "300"),
                ("a.json", "--style is for pictures; leave it out with json", "--style", "outline"),
                ("a.json", "--pressure is for pictures; leave it out with json", "--pressure", "1"),
                ("a.json", "--background is for pictures; leave it out with json", "--background",
                 "white"),
                ("a.png", "give --dpi or --size, not both", "--dpi", "300", "--size", "80")):
            self.assert_fails(sentence, "open", "a.pnx", "-o", name, *words, status=2)

    def test_options_take_numbers_of_their_range_alone(self):
        self.file("a.pnx", PRESSED)
        for option, range_, values in (
                ("--pressure", "0 to 1, such as 0.5",
                 ("0,5", "nan", "inf", "-0.1", "1.01", "half", "0.5x", "1e999")),
                ("--dpi", "1 to 1000000, such as 300", ("nan", "inf", "-inf", "0.5", "1000001", "300dpi"))):
            for value in values:
                self.assert_fails(f"{option}: '{value}' is not a number from {range_} (see penwick "
                                  "open --help)",
                                  "open", "a.pnx", "-o", "a.png", f"{option}={value}", status=2)
        for value in ("0", "1", "0.25", ".5", "1e-1"):
            self.assert_done("open", "-q", "a.pnx", "-o", "a.svg", "--pressure", value)

    def test_are_the_same_in_every_locale(self):
        self.file("a.pnx", PRESSED)
        for name in ("a.svg", "a.json"):
            results = set()
            for locale in ("C", "C.UTF-8", "de_DE.UTF-8"):
                self.assert_done("open", "-q", "a.pnx", "-o", name, env={"LC_ALL": locale})
                results.add((self.folder / name).read_bytes())
            self.assertEqual(len(results), 1)

    def test_too_large_a_picture_is_refused(self):
        self.file("a.pnx", PRESSED)
        self.penwick("open", "-q", "a.pnx", "-o", "a.png", "--dpi", "1000000")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors.count("\n"), 1)
        self.assertNotIn("a.png", self.files())

    def test_wrong_words_are_usage_errors(self):
        self.file("a.pnx")
        for words in (["--background", "blurple"], ["--background", "#12"], ["--size", "0x5"],
                      ["--size", "big"], ["--pressure", "2"], ["--dpi", "-1"], ["--style", "oil"]):
            self.penwick("open", "a.pnx", "-o", "a.png", *words)
            self.assertEqual(self.result.returncode, 2, words)
            self.assertEqual(self.errors.count("\n"), 1, words)

    def test_a_background_fills_the_picture(self):
        self.file("a.pnx", PRESSED)
        self.assert_done("open", "-q", "a.pnx", "-o", "a.svg", "--background", "#ff8000")
        self.assertIn("#ff8000", (self.folder / "a.svg").read_text())

