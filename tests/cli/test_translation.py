import gzip
import json
import xml.dom.minidom

from command import CommandTest, THREE_POINTS, TRACE, ink, layer

SAYS = "translated from InkML of another program: "
ADVICE = "penwick convert translates InkML of other programs into a document that opens"
MM = '<channel name="X" units="mm"/><channel name="Y" units="mm"/>'


def page(groups, channels=MM, prefix="ink:"):
    """A document as other programs write it, with the prefix that many of them use."""
    inside = f"<traceFormat>{channels}</traceFormat>" + "".join(f"<traceGroup>{group}</traceGroup>" for group in groups)
    inside = inside.replace("<", "<" + prefix).replace(f"<{prefix}/", "</" + prefix)
    declared = "xmlns:ink" if prefix else "xmlns"
    return f'<{prefix}ink {declared}="http://www.w3.org/2003/InkML">{inside}</{prefix}ink>'.encode()


# 10 mm are 100 of the plug-in's units. Each stroke ends with its last point twice.
TWO_GROUPS = page(["<trace>10 20, 30 20, 30 40</trace>", "<trace>1 2, 3 4</trace><trace>5 5, 6 6</trace>"])
STROKES = [[(100, 200), (300, 200), (300, 400), (300, 400)],
           [(10, 20), (30, 40), (30, 40)], [(50, 50), (60, 60), (60, 60)]]
TOLD = SAYS + "2 groups, 3 traces"


class TranslationTest(CommandTest):
    def points_of(self, name):
        root = xml.dom.minidom.parse(str(self.folder / name)).documentElement
        return [[tuple(map(int, point.split()[:2])) for point in trace.firstChild.data.split(",")]
                for trace in root.getElementsByTagName("trace")]

    def art(self, *words, **options):
        self.assert_done("open", "-q", *words, "-o", "-", "--format", "json", **options)
        return json.loads(self.out)

    def segments(self, art):
        return [[len(path["segments"]) for path in layer["art"]] for layer in art["layers"]]


class ADocumentOfAnotherProgram(TranslationTest):
    def test_becomes_an_ink_document_that_opens(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_done("convert", "a.inkml", "-o", "b.kvo")
        self.assertEqual(self.out, f"a.inkml: 2 layers, 3 strokes; {TOLD} -> b.kvo\n")
        self.assertEqual(self.points_of("b.kvo"), STROKES)
        self.assert_done("check", "b.kvo")
        self.assertEqual(self.out, "b.kvo: sound\n")

    def test_is_drawn_with_every_point_and_the_last_one_twice(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_done("open", "a.inkml", "-o", "a.svg")
        self.assertRegex(self.out, rf"^a\.inkml: 2 layers, 3 strokes, 10 points, 29 x 38 mm; {TOLD} -> a\.svg\n$")
        self.assertEqual(sorted(map(sorted, self.segments(self.art("a.inkml")))), [[3, 3], [4]])

    def test_is_drawn_like_what_it_is_converted_to(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_done("convert", "a.inkml", "-o", "b.kvo")
        self.assertEqual(self.art("a.inkml"), self.art("b.kvo"))

    def test_comes_in_any_encoding_and_from_standard_input(self):
        for content in (TWO_GROUPS, TWO_GROUPS.decode().encode("utf-16"), TWO_GROUPS.decode().encode("utf-16-be"),
                        b"\xef\xbb\xbf" + TWO_GROUPS, gzip.compress(TWO_GROUPS)):
            self.assert_done("convert", "-", "-o", "b.kvo", "--force", input=content)
            self.assertEqual(self.out, f"-: 2 layers, 3 strokes; {TOLD} -> b.kvo\n")
            self.assertEqual(self.points_of("b.kvo"), STROKES)

    def test_leaves_no_temporary_file(self):
        temporary = self.folder / "temporary"
        temporary.mkdir()
        self.file("a.inkml", TWO_GROUPS)
        self.file("cut.inkml", TWO_GROUPS[:-20])
        for name in ("a.inkml", "cut.inkml"):
            self.penwick("open", name, "-o", "a.svg", env={"TMPDIR": str(temporary)})
            self.assertEqual(list(temporary.iterdir()), [])

    def test_says_what_is_left_out_one_line_for_each_kind(self):
        self.file("a.inkml", page(['<trace>1 2, 3 4</trace><trace type="penUp">5 6, 7 8</trace>'
                                   '<trace type="penUp">5 6, 7 8</trace>'], MM + '<channel name="C"/>'))
        self.penwick("open", "a.inkml", "-o", "a.svg")
        self.assertEqual(self.result.returncode, 0)
        self.assertTrue(all(line.startswith("penwick: a.inkml: warning: ") for line in self.errors.splitlines()))
        self.assertRegex(self.errors, "warning: 2 traces [^\n]*pen up[^\n]*\n")
        self.assertIn(SAYS + "1 group, 1 trace", self.out)
        self.assert_done("open", "-q", "a.inkml", "-o", "a.svg")
        for command in ("check", "info"):
            self.penwick(command, "a.inkml")
            self.assertRegex(self.out, "2 traces [^\n]*pen up")

    def test_without_anything_to_draw_is_an_empty_drawing(self):
        self.file("a.inkml", page([""]))
        self.penwick("open", "a.inkml", "-o", "a.svg")
        self.assertEqual(self.result.returncode, 0)
        self.assertIn("an empty drawing", self.out)

    def test_that_is_broken_is_refused_and_nothing_is_written(self):
        for prefix, sentence in (("ink:", "its XML is broken: "),
                                 ("", "this is InkML of another program, and it cannot be translated: ")):
            self.file("a.inkml", page(["<trace>1 2, 3 4</trace>"], prefix=prefix)[:-20])
            for words in (["open", "a.inkml"], ["convert", "a.inkml", "-o", "b.kvo"]):
                before = self.files()
                self.penwick(*words)
                self.assertEqual(self.result.returncode, 1)
                self.assertRegex(self.errors, f"^penwick: a.inkml: {sentence}[^\n]*\n$")
                self.assertEqual({name for name in self.files() - before if not name.startswith("home")}, set())

    def test_among_others_in_a_folder(self):
        self.file("in/a.inkml", TWO_GROUPS)
        self.file("in/b.kvo", ink(layer(TRACE)))
        self.file("in/c.pnx", THREE_POINTS)
        self.assert_done("convert", "in", "--out-dir", "out")
        self.assertEqual(self.out.count(SAYS), 1)
        self.assertTrue(self.out.endswith("3 converted\n"), self.out)


class TheSize(TranslationTest):
    NO_UNIT = page(["<trace>0 0, 30 0, 30 10</trace>"], '<channel name="X"/><channel name="Y"/>')

    def converted(self, *words):
        self.file("a.inkml", self.NO_UNIT)
        self.penwick("convert", "a.inkml", "-o", "b.kvo", "--force", *words)
        self.assertEqual(self.result.returncode, 0)
        return self.points_of("b.kvo")

    def test_of_a_document_without_a_unit_is_assumed_and_that_is_said(self):
        self.assertEqual(self.converted(), [[(0, 0), (1500, 0), (1500, 500), (1500, 500)]])
        self.assertRegex(self.errors, "^penwick: a.inkml: warning: 1 trace without a unit[^\n]* 5 mm [^\n]*\n$")

    def test_follows_the_unit_that_is_given(self):
        self.assertEqual(self.converted("--unit", "2"), [[(0, 0), (600, 0), (600, 200), (600, 200)]])
        self.assertEqual(self.errors, "")


class WhatThePlugInReads(TranslationTest):
    SUBSET = ink(layer(TRACE))

    def test_goes_its_own_way(self):
        self.file("a.kvo", self.SUBSET)
        self.assert_done("convert", "a.kvo", "-o", "b.kvo")
        self.assertNotIn(SAYS, self.out)
        self.assert_done("convert", "a.kvo", "-o", "c.kvo", "--as", "inkml-subset")
        self.assertEqual((self.folder / "b.kvo").read_bytes(), (self.folder / "c.kvo").read_bytes())
        self.assertEqual(self.points_of("b.kvo"), [[(0, 1), (10, 20), (30, 5)]])
        self.assertEqual(self.art("a.kvo"), self.art("a.kvo", "--as", "inkml-subset"))

    def test_goes_its_own_way_in_utf_16_too(self):
        self.file("a.kvo", self.SUBSET)
        self.file("b.kvo", self.SUBSET.decode().encode("utf-16"))
        self.assert_done("open", "b.kvo", "-o", "b.svg")
        self.assertTrue(self.out.endswith("; converted from UTF-16 to UTF-8 -> b.svg\n"), self.out)
        self.assertEqual(self.art("a.kvo"), self.art("b.kvo"))
        self.assert_done("check", "b.kvo")
        self.assertEqual(self.out, "b.kvo: opens converted from UTF-16 to UTF-8; penwick rescue writes it\n")

    def test_can_be_translated_all_the_same(self):
        self.file("a.kvo", self.SUBSET)
        self.penwick("convert", "a.kvo", "-o", "b.kvo", "--translate")
        self.assertIn(SAYS + "1 group, 1 trace", self.out)
        (stroke,) = self.points_of("b.kvo")
        self.assertEqual((len(stroke), stroke[-1]), (4, stroke[-2]))

    def test_can_be_shown_of_a_document_of_another_program(self):
        self.file("a.inkml", page(["<trace>1 2, 3 4</trace>"], prefix=""))
        self.penwick("open", "a.inkml", "-o", "a.svg", "--as", "inkml-subset")
        self.assertEqual(self.result.returncode, 0)
        self.assertIn("an empty drawing", self.out)
        self.assertIn('only "tracegroup" is', self.errors)
        self.assertIn(ADVICE, self.errors)

    def test_is_what_ink_shows(self):
        for content in (page(["<trace>1 2, 3 4</trace>"], prefix=""), ink("<traceGroup><trace>1 2</trace></traceGroup>"),
                        ink("<trace>1 2, 3 4</trace>")):
            self.file("a.inkml", content)
            self.penwick("ink", "a.inkml")
            self.assertEqual(json.loads(self.out)["layers"], [])
            self.assertEqual(self.errors.count(ADVICE), 1)

    def test_is_damaged_where_a_rescue_would_save_it(self):
        self.file("a.kvo", self.SUBSET[:-20])
        self.penwick("open", "a.kvo")
        self.assertRegex(self.errors, "^penwick: a.kvo: its XML is broken: .*; penwick rescue would save 3 points\n$")


class OtherCommands(TranslationTest):
    def test_check_says_how_it_opens(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_done("check", "a.inkml")
        self.assertEqual(self.out, "a.inkml: opens by translation: 2 groups, 3 traces\n")

    def test_info_tells_about_the_translation(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_done("info", "a.inkml")
        rows = [line.strip() for line in self.out.splitlines()]
        self.assertIn("kind          InkML of another program", rows)
        self.assertIn("drawing       29.0 x 38.0 mm", rows)
        self.assertIn("layers        2", rows)
        self.assertIn("strokes       3", rows)
        self.assert_done("info", "--json", "a.inkml")
        told = json.loads(self.out)
        self.assertEqual(told["kind"], "inkml")
        self.assertEqual(told["translation"], {"groups": 2, "traces": 3, "remarks": []})
        self.assertEqual(told["drawing"], {"left": 1, "top": 2, "width": 29, "height": 38})
        self.file("b.kvo", ink(layer(TRACE)))
        self.assert_done("info", "--json", "b.kvo")
        self.assertNotIn("translation", json.loads(self.out))

    def test_rescue_says_what_to_do(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_fails(f"a.inkml: this is InkML of another program; {ADVICE}", "rescue", "a.inkml")

    def test_sheet_draws_it(self):
        self.file("a.inkml", TWO_GROUPS)
        self.assert_done("sheet", "a.inkml", "-o", "sheet.html")
        self.assertIn("3 strokes", (self.folder / "sheet.html").read_text())


class WrongUse(TranslationTest):
    def test_of_the_options_of_translation(self):
        self.file("a.inkml", TWO_GROUPS)
        for words, sentence in (
                (["open", "--translate", "--as", "pen"],
                 "--translate is for ink documents that are translated; leave it out with --as pen"),
                (["convert", "--unit", "1", "--as", "inkml-subset"],
                 "--unit is for ink documents that are translated; leave it out with --as inkml-subset"),
                (["open", "--translate", "--rescue"], "give --rescue or --translate, not both")):
            self.assert_fails(sentence, *words, "a.inkml", status=2)

    def test_of_a_unit_that_is_no_length(self):
        self.file("a.inkml", TWO_GROUPS)
        for unit in ("0", "-1", "x"):
            self.penwick("open", "a.inkml", f"--unit={unit}")
            self.assertEqual(self.result.returncode, 2)
            self.assertIn("is not a number from 1e-06 to 1000000, such as 0.1", self.errors)
