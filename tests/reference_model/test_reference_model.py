"""The reference model itself, against values worked out by hand."""

import os
import struct
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from art_model import Art, Mapping, Path, art_form, as_int16, checksum
from call_model import ALL_SUITES, Go, shut_down, start_up, whole_life
from compare import JournalComparison, compare_values, load_journal, load_json
from ink_model import (Point, Recording, decode_length, decode_pressure, decode_time, decode_x,
                           decode_y, ink_form)
from listing import listing, summary
from shortest import (digits_of, parse_single, shortest_double, shortest_single, single, write_shortest)
from reference_model import to_json

HEAD = bytes([1, 6, 0, 2, 0, 0])
DOWN, UP, LAYER = bytes([0xF1, 3, 1]), bytes([0xF1, 3, 0]), bytes([0xF1, 3, 0x80])


def xy(x, y):
    return bytes([97, 6]) + struct.pack(">hh", x, y)


def pressure(value):
    return bytes([100, 6, 6, 0]) + struct.pack(">h", value)


def time(value, kind=17):
    return bytes([194, 6, kind]) + value.to_bytes(3, "big")


def tilt(x, y):
    return bytes([101, 6, x & 0xFF, y & 0xFF, 0, 0])


def shape(recording):
    return [[len(stroke.elements) for stroke in layer.elements] for layer in recording.elements]


def read(*packets):
    return Recording(HEAD + b"".join(packets))


class Packets(unittest.TestCase):
    def test_length_codes(self):
        for code, length in ((0x06, 6), (0x41, 6), (0x09, 9), (0x03, 3), (0x46, 36), (0x40, 0), (0x81, 36),
                             (0xC1, 216), (0xFF, 216 * 63)):
            self.assertEqual(decode_length(code), length)

    def test_coordinates(self):
        self.assertEqual((decode_x(0, 10), decode_y(0, 10)), (1.5, 2.5))
        self.assertEqual((decode_x(0xFF, 0xFF), decode_y(0xFF, 0xFF)), (0.4, 0.3))
        self.assertEqual((decode_x(0xFF, 0xFB), decode_y(0xFF, 0xFD)), (0.0, -0.1))

    def test_pressures(self):
        self.assertEqual([decode_pressure(a, 255, 255) for a in (1, 5, 6, 2)], [16383, 16383, -1, None])

    def test_time_bytes_are_sign_extended_one_by_one(self):
        self.assertEqual(decode_time(17, 0, 0, 0x7F), 127)
        self.assertEqual(decode_time(17, 0, 1, 0), 256)
        self.assertEqual(decode_time(17, 0, 1, 0x80), 0xFFFFFF80)
        self.assertEqual(decode_time(17, 0x80, 0, 0), 0xFF800000)
        self.assertEqual(decode_time(16, 0, 0, 5), 0)


class Reading(unittest.TestCase):
    def test_only_a_descriptor_is_a_complete_empty_drawing(self):
        recording = read()
        self.assertTrue(recording.complete)
        self.assertEqual(shape(recording), [])

    def test_a_point_before_any_status_opens_layer_and_stroke(self):
        self.assertEqual(shape(read(xy(0, 0))), [[1]])

    def test_pen_down_starts_a_stroke_only_after_pen_up(self):
        a, b = xy(1, 1), xy(2, 2)
        self.assertEqual(shape(read(DOWN, a, b, UP, DOWN, a, b)), [[2, 2]])
        self.assertEqual(shape(read(DOWN, a, b, DOWN, a, b)), [[4]])
        self.assertEqual(shape(read(DOWN, a, b, LAYER, a)), [[2], [1]])
        self.assertEqual(shape(read(DOWN, a, UP, b)), [[2]])

    def test_a_new_layer_leaves_the_pen_down(self):
        a = xy(1, 1)
        self.assertEqual(shape(read(DOWN, a, LAYER, DOWN, a, DOWN, a)), [[1], [2]])

    def test_a_point_above_the_sheet_is_dropped_and_clears_no_flag(self):
        recording = read(DOWN, xy(1, 1), UP, DOWN, xy(5, -3), xy(6, -2), xy(7, 7))
        self.assertEqual(shape(recording), [[1, 2]])
        self.assertEqual(recording.dropped_points, 1)

    def test_pressure_and_tilt_are_written_back_into_a_stroke_of_one_point_only(self):
        points = read(DOWN, xy(1, 1), pressure(7), tilt(-1, -128), xy(2, 2), pressure(9), xy(3, 3)).points()
        self.assertEqual([p.pressure for p in points], [7, 7, 9])
        self.assertEqual([(p.tilt_x, p.tilt_y) for p in points], [(-1, -128)] * 3)

    def test_write_back_reaches_into_the_stroke_before_a_pending_one(self):
        points = read(DOWN, xy(1, 1), UP, DOWN, pressure(7), time(5), xy(2, 2)).points()
        self.assertEqual([(p.pressure, p.timestamp) for p in points], [(7, 5), (7, 5)])

    def test_time_is_written_into_whatever_point_is_last(self):
        points = read(DOWN, *[xy(k, k) for k in range(5)], time(77), xy(9, 9)).points()
        self.assertEqual([p.timestamp for p in points], [0, 0, 0, 0, 77, 77])

    def test_another_kind_byte_writes_time_0_back(self):
        self.assertEqual(read(xy(0, 0), time(9), time(3, 16)).points()[0].timestamp, 0)

    def test_status_resets_pressure_and_tilt_but_not_time(self):
        last = read(DOWN, xy(1, 1), pressure(7), tilt(1, 2), time(9), UP, DOWN, xy(2, 2)).points()[-1]
        self.assertEqual(last.values()[3:], [0, 0, 0, 9])

    def test_a_negative_pressure_becomes_a_large_one(self):
        self.assertEqual(read(xy(0, 0), pressure(-1)).points()[0].pressure, 0xFFFFFFFF)

    def test_boxes_keep_what_was_appended(self):
        recording = read(DOWN, time(4), xy(25, 20), pressure(7), xy(5, 45))
        box = recording.elements[0].elements[0]
        self.assertEqual(box.low.values(), [1.0, 4.5, 0.0, 0, 0, 0, 0])
        self.assertEqual(box.high.values(), [3.0, 9.5, 0.0, 0, 0, 0, 0])
        self.assertEqual(read(time(4), xy(25, 20), pressure(7)).low.values(), [3.0, 4.5, 0.0, 0, 0, 0, 4])


class Ends(unittest.TestCase):
    def refused(self, data, offset):
        recording = Recording(data)
        self.assertFalse(recording.complete)
        self.assertEqual(recording.offset, offset)
        self.assertTrue(recording.reason)

    def test_heads_that_fail(self):
        for data in (b"", b"\1", b"hello", bytes([1, 7, 0, 2, 0, 0]), bytes([1, 6, 0, 3, 0, 0]), bytes([1, 6, 0])):
            self.refused(data, 0)
        self.assertTrue(Recording(bytes([1, 0x41, 9, 2])).complete)

    def test_a_known_tag_as_the_last_byte_fails(self):
        for tag in (1, 17, 49, 97, 100, 101, 194, 241):
            self.refused(HEAD + bytes([tag]), 6)

    def test_an_unknown_tag_as_the_last_byte_completes(self):
        self.assertTrue(read(b"\x21").complete)

    def test_a_packet_cut_after_its_length_code_is_read_with_zeros(self):
        recording = read(bytes([97, 6]))
        self.assertTrue(recording.complete)
        self.assertEqual(recording.points()[0].values(), [0.5, 0.5, 0.0, 0, 0, 0, 0])
        self.refused(HEAD + bytes([100, 6]), 6)
        self.assertEqual(read(xy(0, 0), bytes([100, 6, 1, 0, 8])).points()[0].pressure, 512)

    def test_wrong_length_codes_and_second_descriptors_fail(self):
        self.refused(HEAD + UP + bytes([97, 5, 0, 0, 0]), 9)
        self.refused(HEAD + HEAD, 6)
        self.refused(HEAD + bytes([100, 6, 2, 0, 0, 0]), 6)

    def test_unknown_packets(self):
        self.assertEqual(shape(read(bytes([0x21, 5, 97, 6, 1]), xy(0, 0))), [[1]])
        self.assertEqual(shape(read(bytes([0x21, 2]), xy(0, 0))), [[1]])
        self.assertEqual(shape(read(bytes([0x21, 0]), xy(0, 0))), [[1]])
        self.assertTrue(read(bytes([0x21, 0xFF])).complete)
        self.refused(HEAD + bytes([0x21, 1]), 7)

    def test_a_packet_of_length_0_ends_the_reading_as_a_success(self):
        recording = read(xy(0, 0), bytes([0x21, 0x40]), xy(1, 1))
        self.assertTrue(recording.complete)
        self.assertEqual(shape(recording), [[1]])


class ArtValues(unittest.TestCase):
    def test_constants_are_singles(self):
        self.assertEqual(repr(single(0.2834)), "0.2833999991416931")
        self.assertEqual(repr(single(297.57)), "297.57000732421875")
        self.assertEqual(repr(single(420.849)), "420.8489990234375")
        self.assertEqual(repr(single(841.698)), "841.697998046875")

    def test_corners_land_at_half_sizes_from_the_page_centre(self):
        low, high = Point(10.0, 20.0), Point(1010.0, 2020.0)
        mapping = Mapping(low, high)
        self.assertAlmostEqual(mapping.width, 283.4, 4)
        self.assertAlmostEqual(mapping.height, 566.8, 4)
        for point, sign in ((low, 1), (high, -1)):
            h, v = mapping.place(point)
            self.assertAlmostEqual(h, 297.57 - sign * mapping.width / 2, 3)
            self.assertAlmostEqual(v, 420.849 + sign * mapping.height / 2, 3)

    def test_pressure_2047_inside_and_last(self):
        points = [Point(k, k, 0.0, 2047) for k in range(3)]
        path = Path(points, Mapping(points[0], points[2]))
        self.assertEqual(path.tablet, [[0.0, 1.9990234375], [0.5, 1.9990234375], [1.0, 1.0]])

    def test_the_last_segment_comes_from_the_point_before_the_last(self):
        points = [Point(100.0 * k, 50.0 * k, 0.0, 1023 + k) for k in range(4)]
        mapping = Mapping(points[0], points[3])
        a, b, c, d = [list(mapping.place(p)) for p in points]
        path = Path(points, mapping)
        self.assertEqual(path.segments, [a + a + b + [False], b + a + c + [False], c + b + d + [False],
                                         c + c + c + [False]])
        self.assertEqual(path.tablet[3], [1.0, 1.0])
        self.assertEqual(path.tablet[1][0], single(1 / 3))

    def test_a_stroke_of_two_points(self):
        points = [Point(0.0, 0.5, 0.0, 1024), Point(10.0, 9.5, 0.0, 5000)]
        path = Path(points, Mapping(*points))
        self.assertEqual(path.segments[1][:2], path.segments[0][:2])
        self.assertEqual(path.segments[1][2:4], path.segments[0][:2])
        self.assertEqual(path.tablet, [[0.0, 1.0], [1.0, 1.0]])

    def test_counts_are_cut_to_16_bits(self):
        self.assertEqual(as_int16(70000), 4464)
        self.assertEqual(as_int16(40000), -25536)

    def test_single_points_make_no_path_and_layers_are_named_upwards(self):
        art = art_form(Art(read(xy(0, 0), LAYER, xy(1, 1), xy(2, 2))))
        self.assertEqual([layer["name"] for layer in art["layers"]], ["Layer 1", "Layer 2"])
        self.assertEqual([len(layer["art"]) for layer in art["layers"]], [0, 1])

    def test_an_empty_drawing_has_one_layer_and_a_page_without_size(self):
        art = art_form(Art(read()))
        self.assertEqual((art["document"]["width"], len(art["layers"])), (0.0, 1))

    def test_checksum_is_the_usual_crc(self):
        self.assertEqual(checksum(b"123456789"), "cbf43926")


class Shortest(unittest.TestCase):
    def test_shortest_singles(self):
        for value, text in ((single(0.1), "0.1"), (single(297.57), "297.57"), (1.0, "1"), (0.0, "0"),
                            (single(1 / 3), "0.33333334"), (16777216.0, "16777216"), (single(1e10), "1e+10"),
                            (single(3.4028235e38), "3.4028235e+38"), (-0.5, "-0.5"), (100000.0, "1e+05")):
            self.assertEqual(write_shortest(shortest_single(value)), text)
            self.assertEqual(parse_single(text), value)

    def test_powers_of_two_where_the_gap_is_uneven(self):
        for power in range(-60, 60):
            value = 2.0 ** power
            text = write_shortest(shortest_single(value))
            self.assertEqual(parse_single(text), value)
            self.assertEqual(digits_of(repr(value)), shortest_double(value))

    def test_a_tie_of_two_singles_is_rounded_once(self):
        self.assertEqual(parse_single("16777217"), 16777216.0)
        self.assertEqual(parse_single("16777217.0000000000000000001"), 16777218.0)

    def test_digits(self):
        self.assertEqual(digits_of("0.0120"), ("", "12", -2))
        self.assertEqual(digits_of("1.2e-2"), ("", "12", -2))
        self.assertEqual(digits_of("-1200"), ("-", "12", 3))


class Comparing(unittest.TestCase):
    def test_wrong_and_long_numbers_are_told_with_their_place(self):
        due = {"a": [single(0.1), 2, True, None]}
        self.assertEqual(list(compare_values(load_json('{"a":[0.1,2,true,null]}'), due, singles=True)), [])
        self.assertEqual(list(compare_values(load_json('{"a":[0.10000000149,3,1]}'), due, singles=True)),
                         ["$.a: 3 elements where 4 are due",
                          "$.a[0]: 0.10000000149 is not the shortest decimal; 0.1 is",
                          "$.a[1]: 3 where 2 is due", '$.a[2]: "1" where true is due'])

    def test_own_output_agrees(self):
        recording = read(DOWN, xy(1, 1), pressure(7), xy(2, 5), UP, LAYER, xy(3, 3), xy(9, 4), xy(50, 77))
        for form, singles in ((ink_form(recording), False), (art_form(Art(recording)), True)):
            self.assertEqual(list(compare_values(load_json(to_json(form, singles)), form, singles=singles)), [])

    def journal(self, calls, change=lambda lines: lines):
        with tempfile.NamedTemporaryFile("w", suffix=".jsonl", delete=False) as file:
            file.write("\n".join(change([to_json(call.form(), True) for call in calls])))
        try:
            return load_journal(file.name)
        finally:
            os.unlink(file.name)

    def test_journals(self):
        recording = read(DOWN, xy(1, 1), xy(2, 5), UP, LAYER, xy(3, 3), xy(9, 4))
        due = whole_life(recording, Art(recording))
        self.assertEqual(JournalComparison(self.journal(due), due).lines, [])
        other_names = self.journal(due, lambda lines: [line.replace('"path:', '"path:4') for line in lines])
        self.assertEqual(JournalComparison(other_names, due).lines, [])
        no_probe = self.journal(due, lambda lines: [line for line in lines if '"optional"' not in line])
        self.assertEqual(JournalComparison(no_probe, due).lines, [])
        once = self.journal(due, lambda lines: [line for k, line in enumerate(lines)
                                                if "SetPathSegmentCount" not in line or line != lines[k - 1]])
        self.assertEqual(len(JournalComparison(once, due).lines), 1)
        wrong = self.journal(due, lambda lines: [line.replace('"closed":false', '"closed":true') for line in lines])
        self.assertEqual(len(JournalComparison(wrong, due).lines), 2)


class Calls(unittest.TestCase):
    def test_suites_are_acquired_and_given_back_in_one_order(self):
        self.assertEqual(len(ALL_SUITES), 7 + 19 + 78)
        acquired = [call.arguments for call in start_up() if call.function == "AcquireSuite"]
        released = [call.arguments for call in shut_down() if call.function == "ReleaseSuite"]
        self.assertEqual(acquired, released)

    def test_a_recording_that_is_not_whole_only_loads_the_library(self):
        recording = Recording(b"")
        calls = Go(recording, Art(recording)).calls
        self.assertEqual([call.function for call in calls], ["ImportStyles", "GetArtStyleByNameFromDocument"])

    def test_one_stroke_call_by_call(self):
        recording = read(xy(0, 0), xy(5, 5))
        names = [call.function for call in Go(recording, Art(recording)).calls if not call.optional]
        self.assertEqual(names, """ImportStyles GetArtStyleByNameFromDocument AddNamedStyle GetDocumentSetup
            SetDocumentRulerOrigin SetDocumentSetup CountLayers GetFirstLayer SetCurrentLayer SetLayerEditable
            GetFirstArtOfLayer NewArt SetPathSegmentCount SetPathSegmentCount SetPathSegments SetPathClosed
            SetTabletData CountLayers GetNthLayer LayerHasArt NewArtSet LayerArtSet CountArtSet IndexArtSet
            SetArtStyle""".split())

    def test_a_stroke_of_too_many_points_is_refused_with_one_alert(self):
        recording = read(*[xy(k % 100, 5) for k in range(32001)])
        calls = Go(recording, Art(recording)).calls
        self.assertEqual([call.function for call in calls[-4:]],
                         ["SetPathSegmentCount", "AcquireSuite", "ErrorAlert", "ReleaseSuite"])


class Listing(unittest.TestCase):
    def test_lines_and_counts(self):
        recording = read(DOWN, xy(10, 10), pressure(3), UP, LAYER, xy(-1, -1), time(128))
        self.assertEqual(listing(recording).decode(),
                         "L\nS\nP 1.5 2.5 0 3 0 0 0\nL\nS\nP 0.40000000000000002 0.29999999999999999 0 0 0 0 4294967168\n")
        self.assertEqual(summary(recording)["strokes_per_layer"], [1, 1])


if __name__ == "__main__":
    unittest.main()
