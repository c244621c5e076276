import json
import os
import pathlib
import random
import resource
import subprocess
import time
import xml.dom.minidom

from command import (PENWICK, TRACE, CommandTest, coordinate, descriptor, ink, layer, status,
                     stroke)

SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"
SOME_VALUES_CHANGE = "warning: some values change: "


def clock(shown, kind=17):
    """A time stamp packet: a kind, and what the pen's clock of 24 bits shows."""
    return bytes([194, 6, kind]) + shown.to_bytes(3, "big")


class ConvertTest(CommandTest):
    def convert(self, *words):
        """Converts with `words` and gives the root of the result; what was said is kept."""
        self.penwick("convert", "-o", "out.kvo", "--force", *words)
        self.assertEqual(self.result.returncode, 0, self.errors)
        return xml.dom.minidom.parse(str(self.folder / "out.kvo")).documentElement

    def converted_points(self, *words):
        return [point.split() for trace in self.convert(*words).getElementsByTagName("trace")
                if trace.firstChild for point in trace.firstChild.data.split(",")]

    def assert_warns(self, name, changes):
        self.assertEqual(self.errors, f"penwick: {name}: {SOME_VALUES_CHANGE}{changes}\n")

    def ink(self, name):
        self.assert_done("ink", "-q", name)
        return json.loads(self.out)

    def art(self, name):
        self.assert_done("open", "-q", name, "-o", "art.json")
        return json.loads((self.folder / "art.json").read_text())


class Convert(ConvertTest):
    def test_writes_an_ink_document_that_opens(self):
        self.file("a.pnx", descriptor() + bytes([100, 6, 6, 0, 2, 0]) +
                  stroke((-5, 10), (95, 20), (195, 30)) + status(0x80) + stroke((5, 7), (15, 17)))
        self.penwick("convert", "a.pnx", "-o", "a.kvo")
        self.assertEqual((self.result.returncode, self.errors), (0, ""))
        self.assertEqual(self.out, "a.pnx: 2 layers, 2 strokes -> a.kvo\n")
        art = self.art("a.kvo")
        self.assertEqual([len(layer["art"]) for layer in art["layers"]], [1, 1])

    def test_the_result_is_drawn_like_the_recording(self):
        # Where a point and the middle of the drawing are rounded, it moves by 1 unit at most.
        most = 0.2834 + 1e-3
        samples = sorted(SAMPLES.glob("*.pnx")) + sorted(SAMPLES.glob("*.kvo"))
        self.assertGreater(len(samples), 5)
        for sample in samples:
            self.convert("-q", sample)
            before, after = self.art(sample), self.art("out.kvo")
            self.assertEqual(len(before["layers"]), len(after["layers"]))
            for one, other in zip(before["layers"], after["layers"]):
                self.assertEqual([path["tablet"] for path in one["art"]],
                                 [path["tablet"] for path in other["art"]])
                for path, copy in zip(one["art"], other["art"]):
                    self.assertEqual(len(path["segments"]), len(copy["segments"]))
                    farthest = max(abs(a - b) for segment, twin
                                   in zip(path["segments"], copy["segments"])
                                   for a, b in zip(segment[:6], twin[:6]))
                    self.assertLessEqual(farthest, most, sample.name)

    def test_a_result_that_is_converted_again_stays_as_it_is(self):
        for sample in ("signature.pnx", "melody.kvo", "teapot.inkml"):
            self.convert("-q", SAMPLES / sample)
            once = (self.folder / "out.kvo").rename(self.folder / "once.kvo")
            self.convert("-q", once)
            self.assertEqual((self.folder / "out.kvo").read_bytes(), once.read_bytes(), sample)

    def test_leaves_nothing_behind_where_it_is_ended(self):
        self.file("a.pnx", descriptor() + stroke(*[(i % 999, 10) for i in range(60000)]))
        temporary = self.folder / "temporary"
        temporary.mkdir()
        environment = dict(os.environ, TMPDIR=str(temporary))
        for delay in (0.01, 0.03, 0.06, 0.1, 0.15):
            with subprocess.Popen([PENWICK, "convert", "-q", "--force", "a.pnx"], cwd=self.folder,
                                  env=environment) as running:
                time.sleep(delay)
                running.terminate()
            self.assertEqual(list(temporary.iterdir()), [])

    def test_needs_no_folder_for_temporary_files(self):
        self.file("a.pnx")
        self.assert_done("convert", "-q", "a.pnx", "-o", "a.kvo")
        for folder in ("", str(self.folder / "none")):
            self.assert_done("convert", "-q", "a.pnx", "-o", "b.kvo", "--force",
                             env={"TMPDIR": folder})
            self.assertEqual((self.folder / "b.kvo").read_bytes(),
                             (self.folder / "a.kvo").read_bytes())

    def test_says_where_there_is_no_space_for_a_temporary_file(self):
        self.file("a.pnx")
        self.assert_fails("a.kvo: cannot be written: there is no space for a temporary file",
                          "convert", "a.pnx",
                          preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100)))

    def test_names_results_after_their_files(self):
        for name in ("a.pnx", "b.pnx"):
            self.file(name)
        self.assert_done("convert", "-q", "a.pnx", "b.pnx", "--out-dir", "out")
        self.assertLessEqual({"out/a.kvo", "out/b.kvo"}, self.files())

    def test_never_writes_over_the_recording_itself(self):
        before = self.file("a.kvo", ink(layer(TRACE))).read_bytes()
        self.penwick("convert", "--force", "a.kvo")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual((self.folder / "a.kvo").read_bytes(), before)


class Coordinates(ConvertTest):
    # 1.5 2.5, 1.2 0.3, -0.5 0.5, -0.6 2000.9
    RECORDING = (descriptor() + coordinate(10, 10) + coordinate(7, -1) + coordinate(-10, 0) +
                 coordinate(-11, 10002))

    def test_are_rounded_to_whole_units(self):
        self.file("a.pnx", self.RECORDING)
        points = self.converted_points("a.pnx")
        self.assertEqual(self.errors, "")
        self.assertEqual([point[:3] for point in points],
                         [["2", "3", "0"], ["1", "0", "0"], ["0", "1", "0"], ["-1", "2001", "0"]])
        read = self.ink("out.kvo")["layers"][0]["strokes"][0]["points"]
        self.assertEqual([point[:3] for point in read],
                         [[2, 3, 0], [1, 0, 0], [0, 1, 0], [-1, 2001, 0]])

    def test_keep_their_tenths_with_exact(self):
        self.file("a.pnx", self.RECORDING)
        points = self.converted_points("--exact", "a.pnx")
        self.assert_warns("a.pnx", "4 points lose their tenths when the plug-in opens the result "
                                   "(without --exact they are rounded)")
        self.assertEqual([point[:3] for point in points],
                         [["1.5", "2.5", "0"], ["1.2", "0.3", "0"], ["-0.5", "0.5", "0"],
                          ["-0.6", "2000.9", "0"]])
        self.assert_done("convert", "-q", "--exact", "a.pnx", "-o", "b.kvo")

    def test_that_are_whole_lose_nothing_with_exact(self):
        self.file("a.kvo", ink(layer(TRACE)))
        points = self.converted_points("--exact", "a.kvo")
        self.assertEqual(self.errors, "")
        self.assertEqual(points[1], ["10", "20", "0", "512", "0", "0", "0"])


def shown_times(events):
    """The pen's own count for every point: the last one that the clock gives before the next point,
    where each fall of more than half of 2**24 stands for another round of the clock."""
    counts, rounds, last = [], 0, 0
    for event in events:
        if isinstance(event, int):
            rounds += last - event > 2 ** 23
            last = event
        counts.append(rounds * 2 ** 24 + last)
    points = [i for i, event in enumerate(events) if event == "point"]
    return [counts[end - 1] for end in points[1:] + [len(events)]] if points else []


class Times(ConvertTest):
    def assert_times(self, packets, expected):
        self.file("a.pnx", descriptor() + packets)
        points = self.converted_points("a.pnx")
        self.assertEqual([int(point[6]) for point in points], expected)
        read = [point[6] for layer in self.ink("out.kvo")["layers"]
                for stroke in layer["strokes"] for point in stroke["points"]]
        self.assertEqual(read, expected)

    def test_are_the_three_bytes_of_the_clock_in_file_order(self):
        point = coordinate(0, 0)
        self.assert_times(point + clock(0x7F) + point + clock(0x80) + point + clock(0x0180) + point +
                          clock(0x80FFFE), [0x7F, 0x80, 0x0180, 0x80FFFE])

    def test_go_into_the_last_point_and_those_that_follow(self):
        point = coordinate(0, 0)
        self.assert_times(clock(5) + point + point + clock(200) + clock(201) + status(0x80) + point +
                          status(0) + status(1) + point + clock(300), [5, 201, 201, 300])

    def test_are_not_given_to_points_above_the_sheet(self):
        # y below 0 begins with -3.
        above, lowest = coordinate(0, -3), coordinate(0, -2)
        self.assert_times(lowest + clock(1) + above + clock(2) + lowest + above + clock(300), [2, 300])

    def test_count_on_where_the_clock_begins_again(self):
        point, round_ = coordinate(0, 0), 2 ** 24
        self.assert_times(
            clock(round_ - 1) + point + point + clock(3) + point + clock(round_ - 2) + point + clock(0),
            [round_ - 1, round_ + 3, 2 * round_ - 2, 2 * round_])

    def test_fall_where_the_clock_falls_by_half_a_round_or_less(self):
        point = coordinate(0, 0)
        self.assert_times(clock(900) + point + point + clock(0), [900, 0])
        self.assert_times(clock(2 ** 23 + 7) + point + point + clock(7), [2 ** 23 + 7, 7])
        self.assert_times(clock(2 ** 23 + 8) + point + point + clock(7),
                          [2 ** 23 + 8, 2 ** 24 + 7])

    def test_of_another_kind_are_not_counted(self):
        point = coordinate(0, 0)
        self.assert_times(clock(2 ** 24 - 5) + point + clock(0, kind=16) + point + clock(9, kind=0) +
                          clock(2 ** 24 - 1), [2 ** 24 - 5, 2 ** 24 - 1])

    def test_end_at_the_most_that_can_be_declared(self):
        rounds = 129
        self.assert_times(coordinate(0, 0) + rounds * (clock(2 ** 24 - 1) + clock(0)), [2 ** 31 - 1])

    def test_are_found_after_packets_of_every_length(self):
        point = coordinate(0, 0)
        # Unknown tags with the length code 0, and with lengths of 2, 8 and 216 bytes.
        unknown = (bytes([7, 0]) + bytes([9, 2]) + bytes([9, 8]) + clock(1) +
                   bytes([9, 0xC1]) + bytes(214))
        self.assert_times(point + unknown + clock(77) + point, [77, 77])
        # A packet of length 0 ends the recording, a point that is cut has zeros.
        self.file("a.pnx", descriptor() + point + clock(5) + bytes([9, 0x40]) + clock(6) + point)
        self.assertEqual([p[6] for p in self.converted_points("-q", "a.pnx")], ["5"])
        self.file("a.pnx", descriptor() + clock(9) + point + point[:3])
        self.assertEqual([p[6] for p in self.converted_points("-q", "a.pnx")], ["9", "9"])

    def test_are_those_of_a_reference_model(self):
        dice = random.Random(7)
        for _ in range(20):
            packets, events = b"", []
            for _ in range(200):
                what = dice.randrange(6)
                if what == 0:
                    packets += dice.choice([status(0), status(1), status(0x80), clock(5, kind=3),
                                            bytes([33, 6, 1, 2, 3, 4]), coordinate(5, -9)])
                elif what < 3:
                    packets += coordinate(dice.randrange(999), dice.randrange(999))
                    events.append("point")
                else:
                    shown = dice.choice([dice.randrange(2 ** 24), dice.randrange(300)])
                    packets += clock(shown)
                    events.append(shown)
            self.assert_times(packets, shown_times(events))

    def test_run_forward_in_the_samples(self):
        for sample in sorted(SAMPLES.glob("*.pnx")):
            times = [int(point[6]) for point in self.converted_points("-q", sample)]
            self.assertEqual(times, sorted(times), sample.name)

    def test_lie_in_the_range_that_is_declared(self):
        def declared(content, name="a.pnx"):
            self.file(name, content)
            (channel,) = [one for one in self.convert(name).getElementsByTagName("channel")
                          if one.getAttribute("name") == "T"]
            return int(channel.getAttribute("min")), int(channel.getAttribute("max"))
        point = coordinate(0, 0)
        self.assertEqual(declared(descriptor() + point + clock(0x80)), (0, 2 ** 24 - 1))
        self.assertEqual(declared(descriptor() + clock(2 ** 24 - 1) + point + clock(9)),
                         (0, 2 ** 24 + 9))
        self.assertEqual(declared(ink(layer('<trace contextRef="#c">0 0 0 0 0 0 4294967186</trace>')),
                                  "a.kvo"), (0, 2 ** 31 - 1))


CHANNELS = "".join(
    f'<channel name="{name}" min="{least}" max="{most}" units="{units}"/>'
    for name, least, most, units in (
        ("X", -2147483647, 2147483647, "0.1mm"), ("Y", -2147483647, 2147483647, "0.1mm"),
        ("Z", -2147483647, 2147483647, "0.1mm"), ("F", 0, 2147483647, "dev"),
        ("TX", -128, 127, "dev"), ("TY", -128, 127, "dev"), ("T", 0, 16777215, "dev")))
DEFAULT_BRUSH = (
    '<brush id="default-brush"><annotationXML><color>Black</color><width>1</width><height>10</height>'
    "<transparency>100</transparency><antialiased>True</antialiased><fittocurve>True</fittocurve>"
    "<ignorePressure>True</ignorePressure><pentip>Ball</pentip></annotationXML></brush>")


def brush(name, color="Black", ignore="False"):
    return (f'<brush id="{name}"><annotationXML><color>{color}</color><width>3</width>'
            f"<height>4</height><transparency>5</transparency><antialiased>{ignore}</antialiased>"
            f"<fittocurve>True</fittocurve><ignorePressure>{ignore}</ignorePressure>"
            "<pentip>Ball</pentip></annotationXML></brush>")


class Definitions(ConvertTest):
    def definitions(self, content, name="a.kvo"):
        """The definitions of the result in one line."""
        self.file(name, content)
        root = self.convert(name)
        (found,) = root.getElementsByTagName("definitions")
        text = found.toxml()
        lines = [line.strip() for line in text.splitlines()]
        for trace in root.getElementsByTagName("trace"):
            self.assertEqual(trace.getAttribute("contextRef"), "#default-context")
        return "".join(lines).removeprefix("<definitions>").removesuffix("</definitions>")

    def of_ink(self, own):
        return self.definitions(ink(f"<definitions>{own}</definitions>" + layer(TRACE)))

    def test_declare_what_the_traces_of_a_pen_recording_hold(self):
        self.assertEqual(
            self.definitions(descriptor() + stroke((1, 2), (3, 4)), "a.pnx"),
            f'<traceFormat id="default-format">{CHANNELS}</traceFormat>{DEFAULT_BRUSH}'
            '<context id="default-context" brushRef="#default-brush" '
            'traceFormatRef="#default-format"/>')

    def test_of_an_ink_document_are_kept_after_the_default_context(self):
        own = '<traceFormat id="f"/>' + brush("b")
        default = ('<context id="default-context" brushRef="#default-brush" '
                   'traceFormatRef="#default-format"/>')
        for context in ("", '<context id="mine" brushRef="#b" traceFormatRef="#f"/>'):
            self.assertEqual(
                self.of_ink(own + context),
                f'<traceFormat id="f"/><traceFormat id="default-format">{CHANNELS}</traceFormat>'
                + brush("b") + DEFAULT_BRUSH + default + context)
            self.assertEqual(self.errors, "")

    def test_of_the_default_names_are_used(self):
        own = brush("b") + '<context id="default-context" brushRef="#b" traceFormatRef="#f"/>'
        self.assertEqual(self.of_ink('<traceFormat id="f"/>' + own),
                         f'<traceFormat id="f">{CHANNELS}</traceFormat>{own}')
        own = brush("default-brush")
        self.assertEqual(
            self.of_ink('<traceFormat id="default-format"/>' + own),
            f'<traceFormat id="default-format">{CHANNELS}</traceFormat>{own}'
            '<context id="default-context" brushRef="#default-brush" '
            'traceFormatRef="#default-format"/>')

    def test_keep_the_brush_flag_that_the_reader_keeps(self):
        for flag in ("True", "False"):
            own = '<traceFormat id="f"/>' + brush("b", ignore=flag)
            self.assertIn(brush("b", ignore=flag), self.of_ink(own))
            self.assertEqual(self.errors, "")

    def test_that_do_not_come_back_are_counted(self):
        own = '<traceFormat id="f"/>' + brush("b")
        nameless = '<context id="" brushRef="#b" traceFormatRef="#f"/>'
        self.of_ink(own + nameless + '<context id="mine" brushRef="#b" traceFormatRef="#f"/>')
        self.assert_warns("a.kvo", "2 brushes, trace formats or contexts change or are lost")
        self.of_ink('<traceFormat id="f"/>' + brush("b", color="<![CDATA[  dark  blue]]>"))
        self.assert_warns("a.kvo", "1 brush, trace format or context changes or is lost")


class Texts(ConvertTest):
    def annotations(self, content):
        self.file("a.kvo", content)
        return {one.getAttribute("type"): one.firstChild.data
                for one in self.convert("a.kvo").getElementsByTagName("annotation")}

    def test_of_annotations_are_kept(self):
        content = ('<annotation type="&quot;a&apos; &lt;b&gt; é">&lt;x&gt; &amp; &#9;&#10;&#13; 🖋'
                   '</annotation>')
        self.assertEqual(self.annotations(ink(content + layer(content + TRACE))),
                         {"\"a' <b> é": "<x> & \t\n\r 🖋"})
        self.assertEqual(self.errors, "")
        document = self.ink("out.kvo")
        self.assertEqual([document["annotations"], document["layers"][0]["annotations"]],
                         2 * [{"\"a' <b> é": "<x> & \t\n\r 🖋"}])

    def test_hold_only_characters_that_xml_allows(self):
        cases = {"a&#1;b": "a\uFFFDb", "&#31;&#127;&#x80;&#11;": "\uFFFD\x7f\x80\uFFFD",
                 "x&#xFFFE;&#xFFFF;&#xFFFD;": "x\uFFFD\uFFFD\uFFFD", "&#x1FFFE;": "\U0001FFFE",
                 "&#xD7FF;&#xD800;": "\uD7FF" + 3 * "\uFFFD", "&#x110000;x": 4 * "\uFFFD" + "x"}
        for written, read in cases.items():
            found = self.annotations(ink(f'<annotation type="t">{written}</annotation>'))
            self.assertEqual(found, {"t": read}, written)

    def test_of_annotations_that_differ_only_in_forbidden_characters_stay_apart(self):
        found = self.annotations(ink("".join(f'<annotation type="&#{i};">{i}</annotation>'
                                             for i in (1, 2, 3))))
        self.assertEqual(found, {"\uFFFD": "1", "\uFFFD 2": "2", "\uFFFD 3": "3"})
        self.assert_warns("a.kvo", "3 texts have characters that XML does not allow, each becomes "
                                   "U+FFFD")

    def test_that_are_no_utf_8_become_replacement_characters(self):
        for cut, read in ((b"caf\xe9", "caf\uFFFD"), (b"\xf0\x9f\x96 x", 3 * "\uFFFD" + " x"),
                          (b"\xc0\x80\xff", 3 * "\uFFFD")):
            self.assertEqual(self.annotations(
                b'<ink><annotation type="t"><![CDATA[' + cut + b"]]></annotation></ink>"),
                {"t": read})
            self.assert_warns("a.kvo", "1 text has characters that XML does not allow, each becomes "
                                       "U+FFFD")
            self.assertEqual(self.ink("out.kvo")["annotations"], {"t": read})

    def test_of_brushes_and_ids_are_cleaned_too(self):
        self.file("a.kvo", ink(
            '<definitions><traceFormat id="f&#1;"/><brush id="b&#2;"><annotationXML>'
            "<color>red&#3;</color><pentip>ball&#4;</pentip></annotationXML></brush>"
            '<context id="c&#5;" brushRef="#b&#2;" traceFormatRef="#f&#1;"/></definitions>' +
            layer('<annotation type="t">&#6;</annotation>' + TRACE)))
        self.convert("a.kvo")
        self.assert_warns("a.kvo", "6 texts have characters that XML does not allow, each becomes "
                                   "U+FFFD")
        definitions = self.ink("out.kvo")["definitions"]
        self.assertEqual(definitions["contexts"][1],
                         {"id": "c\uFFFD", "brush": "b\uFFFD", "traceFormat": "f\uFFFD"})
        self.assertEqual((definitions["brushes"][0]["color"], definitions["brushes"][0]["pentip"]),
                         ("red\uFFFD", "ball\uFFFD"))


class ReadBack(ConvertTest):
    def test_counts_strokes_without_points(self):
        empty = '<trace contextRef="#c">,</trace>'
        self.file("a.kvo", ink(layer(empty + TRACE + empty) + layer(empty, "layer1")))
        self.convert("a.kvo")
        omissions, changes = self.errors.splitlines()
        self.assertIn("3 traces have no points", omissions)
        self.assertEqual(changes, f"penwick: a.kvo: {SOME_VALUES_CHANGE}"
                                  "3 strokes without points are left out")

    def test_counts_points_beyond_a_million(self):
        self.file("a.kvo", ink(layer('<trace contextRef="#c">1000000 0,999999 -999999,0 -1000000,'
                                     "0 0 1000001 0</trace>")))
        self.convert("a.kvo")
        self.assert_warns("a.kvo", "3 points change (coordinates of a million or more are not "
                                   "written in full)")

    def test_counts_annotations_that_do_not_come_back(self):
        self.file("a.kvo", ink(
            '<annotation type="a"> &#32;x</annotation><annotation type="b"><![CDATA[]]></annotation>'
            '<annotation type="c">c</annotation>' +
            layer('<annotation type="d">x&#32; y</annotation>' + TRACE)))
        self.convert("a.kvo")
        self.assert_warns("a.kvo", "3 annotations change or are lost (extra white space and empty "
                                   "texts are not kept)")

    def test_keeps_the_largest_numbers(self):
        point = ["-5", "7", "9", "4294967295", "-2147483648", "2147483647", "4294967186"]
        self.file("a.kvo", ink(layer(f'<trace contextRef="#c">{" ".join(point)}</trace>')))
        self.assertEqual(self.converted_points("a.kvo"), [point])
        self.assertEqual(self.errors, "")

    def test_says_nothing_with_quiet(self):
        self.file("a.kvo", ink(layer('<trace contextRef="#c">,</trace>' + TRACE)))
        self.assert_done("convert", "-q", "a.kvo", "-o", "b.kvo")

    def test_refuses_a_result_that_does_not_open(self):
        broken_writer = {"LD_PRELOAD": os.environ["PENWICK_BROKEN_WRITER"],
                         "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") +
                                         ":verify_asan_link_order=0"}
        sentence = "is not written: the ink document would not open again"
        for name, content in (("a.pnx", descriptor() + stroke((1, 2), (3, 4))),
                              ("b.kvo", ink(layer(TRACE)))):
            self.file(name, content)
            self.assert_fails(f"out.kvo: {sentence}", "convert", name, "-o", "out.kvo",
                              env=broken_writer)
            self.assert_fails(f"-: {sentence}", "convert", name, "-o", "-", env=broken_writer)
            self.assertEqual(self.out, "")
