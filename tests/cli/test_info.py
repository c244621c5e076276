import json

from command import CommandTest, THREE_POINTS, coordinate, descriptor, ink, layer, pressure, status, stroke


def time(count):
    return bytes([194, 6, 17]) + count.to_bytes(3, "big")


def tilt(x, y):
    return bytes([101, 6, x & 255, y & 255, 0, 0])


# x = (r + 5) / 10 and y = (r + 2.5) / 5 ink units of 0.1 mm: from (1, 1) by 3 and 4 units to (4, 5), and
# one point at (10, 20) on a layer of its own.
DRAWING = (descriptor() + bytes([49, 9, 7, 220, 5, 17, 10, 7, 16]) + bytes([33, 5, 1, 2, 3]) +
           status(1) + coordinate(5, 2) + pressure(100) + tilt(-3, 20) + time(1000) +
           pressure(300) + coordinate(35, 22) + time(1015) + status(0) + bytes([33, 4, 0, 0]) +
           status(128) + status(1) + coordinate(95, 97) + time(1500))


class Info(CommandTest):
    def info(self, *words):
        self.assert_done("info", "--json", *words)
        return [json.loads(line) for line in self.out.splitlines()]

    def test_tells_about_a_pen_recording(self):
        self.file("a.pnx", DRAWING)
        self.assertEqual(self.info("a.pnx"), [{
            "file": "a.pnx", "kind": "pen", "opens": True, "sound": True, "problem": None,
            "drawing": {"left": 0.1, "top": 0.09, "width": 0.9, "height": 1.9},
            "layers": [{"name": None, "strokes": 1, "points": 2},
                       {"name": None, "strokes": 1, "points": 1}],
            "strokes": 2, "points": 3, "singlePoints": 1, "longestStroke": 2, "inkLength": 0.0005,
            "pressure": [0, 300], "tiltX": [-3, 0], "tiltY": [0, 20],
            "clock": {"penDown": 15, "whole": 500}, "date": "2012-05-17T10:07:16",
            "unknownPackets": [{"tag": 33, "count": 2, "bytes": 9}], "zeroBytes": 0,
            "header": {"descriptor": [0, 2, 0, 0],
                       "physical": {"byte0": 0, "word1": [0, 0], "word2": [0, 0], "byte5": 0, "byte6": 0},
                       "dateTime": [7, 220, 5, 17, 10, 7, 16]}}])

    def test_tells_the_same_in_a_table(self):
        self.file("a.pnx", DRAWING)
        self.assert_done("info", "a.pnx")
        self.assertEqual(self.out, """\
a.pnx
  kind          pen recording
  sound         yes; 1 stroke of a single point not drawn
  drawing       0.9 x 1.9 mm
  place         0.1 mm from the left edge of the sheet, 0.1 mm from its top
  layers        2
    Layer 1     1 stroke, 2 points
    Layer 2     1 stroke, 1 point
  strokes       2, 1 of a single point
  points        3, 2 in the longest stroke
  ink           0.00 m
  pressure      0 to 300
  tilt          x -3 to 0, y 0 to 20
  date          2012-05-17 10:07:16, by the date bytes
  pen down      15 counts
  duration      500 counts of the pen's clock, whose unit is not known
  unknown       0x21: 2 packets of 9 bytes in all
  descriptor    00 02 00 00
  parameters    00 00 00 00 00 00 00
  date bytes    07 DC 05 11 0A 07 10
""")

    def test_tells_about_an_ink_document(self):
        trace = '<trace contextRef="#c">10 20 0 5 0 0 7,40 60 0 -6 0 0 9</trace>'
        self.file("a.kvo", ink(layer('<annotation type="name">sky</annotation>' + trace)))
        self.assertEqual(self.info("a.kvo"), [{
            "file": "a.kvo", "kind": "inkml", "opens": True, "sound": False,
            "problem": "1 point has a pressure or time below 0, which was read as a very large one (line 1)",
            "drawing": {"left": 1, "top": 2, "width": 3, "height": 4},
            "layers": [{"name": "sky", "strokes": 1, "points": 2}],
            "strokes": 1, "points": 2, "singlePoints": 0, "longestStroke": 2, "inkLength": 0.005,
            "pressure": [-6, 5], "tiltX": None, "tiltY": None, "clock": {"penDown": 2, "whole": 2}}])

    def test_says_what_a_recording_does_not_have(self):
        self.file("a.pnx", descriptor())
        self.assert_done("info", "a.pnx")
        for row in ("drawing       none", "layers        0", "pressure      none", "tilt          none",
                    "date          none", "unknown       none",
                    "duration      unknown, the points have no times"):
            self.assertIn("\n  " + row, self.out)
        facts, = self.info("a.pnx")
        self.assertEqual([facts[key] for key in ("drawing", "pressure", "tiltX", "clock", "date")], [None] * 5)

    def test_tells_what_lies_before_the_damage(self):
        self.file("a.pnx", THREE_POINTS + bytes([97, 7, 0, 0, 0, 0]) + stroke((1, 1), (2, 2)))
        self.penwick("info", "--json", "a.pnx")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors, f"penwick: a.pnx: {(problem := 'a coordinate packet has the length code 0x07, that is 7 bytes, where 6 are expected (byte 36); the recording is damaged there')}\n")
        facts = json.loads(self.out)
        self.assertEqual((facts["opens"], facts["sound"], facts["problem"], facts["points"]), (False, False, problem, 3))
        self.penwick("info", "a.pnx")
        self.assertIn("\n  sound         no, it does not open; this is what lies before the damage\n", self.out)

    def test_tells_nothing_of_files_that_are_no_recordings(self):
        self.file("a.pnx", b"x,y\n1,2\n")
        self.file("b.pnx", b"")
        self.file("c.kvo", b"<ink>")
        self.assert_fails("a.pnx: this is a text file, not a recording", "info", "a.pnx")
        self.assert_fails("b.pnx: the file is empty (0 bytes)", "info", "b.pnx")
        self.assert_fails("d.pnx: there is no such file; check its name and folder", "info", "d.pnx")
        self.penwick("info", "--json", "c.kvo")
        self.assertEqual((self.out, self.result.returncode), ("", 1))

    def test_prints_a_line_of_json_for_each_file_in_their_order(self):
        self.file("b.pnx", DRAWING)
        self.file("a.kvo", b"<ink/>")
        self.assertEqual([facts["file"] for facts in self.info("b.pnx", "a.kvo")], ["b.pnx", "a.kvo"])

    def test_reads_standard_input_and_other_names_as_asked(self):
        self.assert_done("info", "--json", "-", input=DRAWING)
        self.assertEqual(json.loads(self.out)["points"], 3)
        self.file("a.kvo", DRAWING)
        self.assertEqual(self.info("--as", "pen", "a.kvo")[0]["kind"], "pen")

    def test_is_safe_for_terminals(self):
        self.file("a\x1b[2J.kvo", ink(layer('<annotation type="name">s\u202eky\u009b</annotation>')))
        self.assert_done("info", "a\x1b[2J.kvo")
        self.assertTrue(self.out.startswith("a?[2J.kvo\n"))
        self.assertIn("\n    s?ky?       0 strokes, 0 points\n", self.out)

    def test_counts_zero_bytes_that_are_no_packets(self):
        self.file("a.pnx", THREE_POINTS + bytes(8))
        facts, = self.info("a.pnx")
        self.assertEqual((facts["zeroBytes"], facts["sound"], facts["unknownPackets"]), (8, False, []))
        self.assertEqual(facts["problem"], "8 zero bytes behind the last packet (byte 36)")
