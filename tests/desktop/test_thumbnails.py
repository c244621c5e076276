import os
import unittest

import png
from command import LOG, TRACE, CommandTest, descriptor, ink, layer, stroke

THUMBNAILER = os.environ["PENWICK_THUMBNAILER"]

# Farther across than up, away from the corner of the sheet.
WIDE = descriptor() + stroke((2500, 1250), (12500, 1250), (12500, 3750), (2500, 3750))


class Thumbnails(CommandTest):
    def thumbnail(self, *words, **options):
        return self.penwick(*words, program=THUMBNAILER, **options)

    def rows_of(self, content, name="a.pnx", size=256):
        self.file(name, content)
        self.thumbnail(name, "out.png", size)
        self.assertEqual((self.result.returncode, self.out, self.errors), (0, "", ""))
        return png.pixels((self.folder / "out.png").read_bytes())

    def penwick(self, *words, **options):
        return super().penwick(*map(str, words), **options)

    def test_show_the_drawing_in_the_middle_with_a_margin_on_white(self):
        rows = self.rows_of(WIDE)
        # The margin is a sixteenth of the longer side, which thus takes 16 of 18 parts of the picture.
        self.assertEqual(len(rows[0]), 256)
        self.assertLess(len(rows), 256)
        for gap in png.ink(rows):
            self.assertAlmostEqual(gap, 256 / 18, delta=1.5)
        self.assertEqual(rows[0][0], 255)
        self.assertLess(min(map(min, rows)), 128)

    def test_have_the_size_that_is_asked_for(self):
        for size in (1, 64, 128, 1024):
            rows = self.rows_of(WIDE, size=size)
            self.assertEqual(max(len(rows), len(rows[0])), size)

    def test_of_a_single_dot_show_a_dot(self):
        rows = self.rows_of(descriptor() + stroke((1000, 500), (1001, 500)))
        self.assertEqual((len(rows), len(rows[0])), (256, 256))
        for gap in png.ink(rows):
            self.assertGreater(gap, 100)

    def test_of_a_recording_without_strokes_are_an_empty_sheet(self):
        self.assertIsNone(png.ink(self.rows_of(descriptor())))

    def test_of_recordings_without_pressure_have_lines_that_can_be_seen(self):
        light = descriptor() + stroke((2500, 1250), (12500, 3750), pressed=0)
        self.assertLess(min(map(min, self.rows_of(light))), 200)

    def test_are_made_of_every_kind_of_recording(self):
        document = ink('<definitions><context id="c"/></definitions>' + layer(TRACE))
        for name, content in (("a.eli", WIDE), ("b.inkml", document), ("c.kvo", document), ("no ending", WIDE),
                              ("d.PNX", WIDE), ("ä b.pnx", WIDE)):
            with self.subTest(name):
                self.assertIsNotNone(png.ink(self.rows_of(content, name)))

    def test_are_written_into_the_very_file_that_is_there(self):
        self.file("a.pnx", WIDE)
        target = self.file("out.png", b"x" * 1_000_000)
        with target.open("rb") as held:
            self.thumbnail("a.pnx", "out.png", "256")
            self.assertEqual(self.result.returncode, 0)
            self.assertEqual(len(png.pixels(held.read())[0]), 256)

    def test_of_files_that_do_not_open_are_not_made(self):
        for name, content in (("b.pnx", b""), ("c.kvo", b"<ink><trace>"),
                              ("d.pnx", b"\x89PNG\r\n\x1a\n\0\0"), ("e.inkml", b"x,y\n")):
            for kept in (None, b"kept"):
                with self.subTest(name, kept=kept):
                    if kept is not None:
                        self.file("out.png", kept)
                    self.file(name, content)
                    before = self.files()
                    self.thumbnail(name, "out.png", "128")
                    self.assertEqual(self.result.returncode, 1)
                    self.assertRegex(self.errors, rf"\Apenwick: {name}: [^\n]+\n\Z")
                    self.assertEqual(self.files() - before - {LOG}, set())
                    if kept is not None:
                        self.assertEqual((self.folder / "out.png").read_bytes(), kept)
                        (self.folder / "out.png").unlink()

    def test_never_go_over_a_recording(self):
        for target in ("a.pnx", "b.kvo"):
            self.file("a.pnx", WIDE)
            self.file("b.kvo", b"<ink/>")
            self.thumbnail("a.pnx", target, "128")
            self.assertEqual(self.result.returncode, 1)
        self.assertEqual((self.folder / "a.pnx").read_bytes(), WIDE)
        self.assertEqual((self.folder / "b.kvo").read_bytes(), b"<ink/>")

    def test_leave_no_part_of_a_picture_where_the_disk_is_full(self):
        self.file("a.pnx", WIDE)
        self.thumbnail("a.pnx", "/dev/full", "128")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors, "penwick: /dev/full: cannot be written: No space left on device\n")

    def test_need_a_file_a_place_and_a_size(self):
        self.file("a.pnx", WIDE)
        for words in ((), ("a.pnx",), ("a.pnx", "out.png"), ("a.pnx", "out.png", "1", "2")):
            self.assert_fails("usage: penwick-thumbnailer FILE OUT.png SIZE", *words, program=THUMBNAILER, status=2)
        for size in ("0", "-1", "4097", "12x", "", "1e3"):
            self.assert_fails(f"'{size}' is not a size in pixels from 1 to 4096", "a.pnx", "out.png", size,
                              program=THUMBNAILER, status=2)


if __name__ == "__main__":
    unittest.main()
