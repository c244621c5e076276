import json

from command import CommandTest, coordinate, descriptor, status


class Ink(CommandTest):
    def ink(self, content):
        self.file("a.pnx", content)
        self.assert_done("ink", "a.pnx")
        return json.loads(self.out)

    def test_shows_layers_strokes_and_points_with_their_boxes(self):
        ink = self.ink(descriptor() + status(1) + coordinate(-5, 0) +
                       bytes([100, 6, 6, 0, 2, 0]) + bytes([101, 6, 255, 128, 0, 0]) +
                       bytes([194, 6, 17, 0, 1, 0]) + coordinate(95, 5))
        first = [0.0, 0.5, 0.0, 512, -1, -128, 256]
        second = [10.0, 1.5, 0.0, 512, -1, -128, 256]
        # The corner that moved has lost the other fields; the one that did not has those of its append.
        box = {"min": [0.0, 0.5, 0.0, 0, 0, 0, 0], "max": [10.0, 1.5, 0.0, 0, 0, 0, 0]}
        self.assertEqual(ink["layers"], [{
            "bounds": box, "annotations": {},
            "strokes": [{"bounds": box, "points": [first, second]}]}])
        self.assertEqual(ink["bounds"], box)
        self.assertEqual((ink["kind"], ink["complete"], ink["annotations"]), ("pen", True, {}))

    def test_shows_the_header_packets(self):
        ink = self.ink(bytes([1, 6, 9, 2, 8, 7]) + bytes([17, 9, 1, 2, 3, 4, 5, 6, 7]) +
                       bytes([49, 9, 11, 12, 13, 14, 15, 16, 255]))
        self.assertEqual(ink["header"], {
            "descriptor": [9, 2, 8, 7],
            "physical": {"byte0": 1, "word1": [2, 3], "word2": [4, 5], "byte5": 6, "byte6": 7},
            "dateTime": [11, 12, 13, 14, 15, 16, 255]})
        self.assertEqual(ink["layers"], [])

    def test_shows_pressure_and_time_unsigned(self):
        ink = self.ink(descriptor() + bytes([100, 6, 6, 0, 255, 255]) +
                       bytes([194, 6, 17, 128, 0, 0]) + coordinate(0, 0))
        point = ink["layers"][0]["strokes"][0]["points"][0]
        self.assertEqual((point[3], point[6]), (4294967295, 0xFF800000))

    def test_writes_to_a_file(self):
        self.file("a.pnx")
        self.assert_done("ink", "a.pnx", "-o", "a.json")
        self.assertEqual(self.out, "")
        self.assertEqual(json.loads((self.folder / "a.json").read_text())["kind"], "pen")

    def test_reads_any_name_as_asked(self):
        self.file("a.kvo")
        self.assert_done("ink", "a.kvo", "--as", "pen")
        self.assertEqual(json.loads(self.out)["kind"], "pen")

    def test_takes_an_ending_in_capitals_for_a_pen_recording_as_the_plug_in_does(self):
        for name in ("a.KVO", "a.Kvo", "a.INKML", "a.inkMl"):
            self.file(name)
            self.assert_done("ink", name)
            self.assertEqual(json.loads(self.out)["kind"], "pen", name)
        for name in ("b.kvo", "b.inkml"):
            self.file(name, b"<ink/>")
            self.assert_done("ink", name)
            self.assertEqual(json.loads(self.out)["kind"], "inkml", name)

    def test_writes_no_log(self):
        self.file("a.pnx", b"x")
        self.penwick("ink", "a.pnx")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.files(), {"a.pnx"})
