import json
import os
import pathlib
import subprocess
import time
import xml.dom.minidom

from command import PENWICK, THREE_POINTS, CommandTest, coordinate, descriptor, status, stroke

SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"

TRACE = '<trace contextRef="#c">0 1 0 512,10 20 0 512,30 5 0 512</trace>'


def ink(inside, head=""):
    return (head + "<ink>" + inside + "</ink>").encode()


def layer(inside, name="layer0"):
    return f'<tracegroup id="{name}">{inside}</tracegroup>'


class InkDocuments(CommandTest):
    def test_are_drawn_through_the_plug_in(self):
        for name in ("a.kvo", "a.inkml"):
            self.file(name, ink(layer(TRACE) + layer(TRACE + TRACE, "layer1")))
            self.penwick("open", name, "-o", "a.json")
            self.assertEqual((self.result.returncode, self.errors), (0, ""))
            self.assertEqual(self.out,
                             f"{name}: 2 layers, 3 strokes, 9 points, 3 x 2 mm -> a.json\n")
            art = json.loads((self.folder / "a.json").read_text())
            self.assertEqual([len(layer["art"]) for layer in art["layers"]], [1, 2])

    def test_keep_the_readers_point_counts_out_of_data(self):
        self.file("a.kvo", ink(layer(TRACE)))
        self.penwick("open", "-v", "a.kvo", "-o", "-", "--format", "json")
        self.assertEqual(list(json.loads(self.out)), ["document", "layers"])
        self.assertIn("there are 3 points in this stroke\n", self.errors)

    def test_show_their_definitions(self):
        self.file("a.kvo", ink(
            '<definitions><traceFormat id="f"/><brush id="b"><annotationXML><color>Red</color>'
            "<width>3</width><fittocurve>true</fittocurve></annotationXML></brush>"
            '<context id="c" brushRef="#b" traceFormatRef="#f"/></definitions>'
            '<annotation type="author">me</annotation>' + layer(TRACE)))
        self.assert_done("ink", "a.kvo")
        found = json.loads(self.out)
        self.assertEqual((found["kind"], found["annotations"]), ("inkml", {"author": "me"}))
        self.assertNotIn("header", found)
        definitions = found["definitions"]
        self.assertEqual(definitions["traceFormats"], [{"id": "f"}])
        self.assertEqual(definitions["contexts"], [{"id": "c", "brush": "b", "traceFormat": "f"}])
        brush = definitions["brushes"][0]
        self.assertEqual((brush["id"], brush["color"], brush["width"], brush["height"]),
                         ("b", "Red", 3, 0))
        self.assertEqual(found["layers"][0]["strokes"][0]["points"][1], [10, 20, 0, 512, 0, 0, 0])


class Refusals(CommandTest):
    def assert_refused(self, sentence, content):
        self.file("a.kvo", content)
        self.assert_fails(f"a.kvo: {sentence}", "open", "a.kvo")
        self.assert_fails(f"a.kvo: {sentence}", "ink", "a.kvo", "-o", "a.json")
        self.assert_fails(f"a.kvo: {sentence}", "convert", "a.kvo", "-o", "b.kvo")

    def test_an_empty_file(self):
        self.assert_refused("the file is empty (0 bytes)", b"")

    def assert_all_fail(self, sentence, name):
        for words in (["open"], ["ink"], ["convert", "-o", "b.kvo"]):
            self.assert_fails(f"{name}: {sentence}", *words, name)

    def test_a_missing_file(self):
        self.assert_all_fail("there is no such file; check its name and folder", "no.kvo")

    def test_a_folder(self):
        (self.folder / "a.kvo").mkdir()
        self.assert_all_fail("this is a folder; name the recordings in it", "a.kvo")

    def test_a_file_of_2_gibibytes(self):
        os.truncate(self.file("a.kvo", b""), 2 ** 31)
        self.assert_all_fail("the file has 2 GiB or more, ink documents are read up to that size; "
                             "split it", "a.kvo")

    def test_a_pen_recording_of_the_wrong_name(self):
        for content in (THREE_POINTS, THREE_POINTS + b"\xc3"):
            self.assert_refused("this is no ink document; it looks like a pen recording: one opens "
                                "when its name ends in .pnx or .eli", content)

    def test_what_ends_the_reading_before_the_root(self):
        for what, content in (
                ("a DOCTYPE with declarations of its own", b'<!DOCTYPE ink [<!ENTITY e "v">]><ink/>'),
                ('a processing instruction with a ">" inside', b"<?pi a > b ?><ink/>"),
                ("a broken declaration", b"<?xml version ?><ink/>"),
                ("a NUL", b"<!--c-->\0<ink/>"),
                ("text", b"<!--c-->text<ink/>")):
            self.assert_refused(f"this is no ink document: {what} before its first element (line 2) "
                                "ends the reading; take it out", b"\n" + content)

    def test_a_prefixed_root(self):
        self.assert_refused('this is no ink document: its top element is "x:ink", not "ink"; names '
                            'with a prefix are not understood, take the prefix "x:" out of every '
                            "element", b"<x:ink/>")

    def test_another_root(self):
        self.assert_refused('this is no ink document: its top element is "svg", not "ink"', b"<svg/>")

    def test_deep_nesting(self):
        self.assert_refused("elements nest more than 500 deep (line 501); no ink document does",
                            b"<ink>\n" + b"<a>\n" * 600 + b"</a>" * 600 + b"</ink>")

    def test_a_file_cut_inside_a_character(self):
        self.assert_refused("the file ends inside a character (line 3); its end was lost",
                            b"<ink>\n\n\xc3")

    def test_a_document_that_is_cut(self):
        self.assert_refused("its XML is broken: error reading Element value, at its end; it may be "
                            "cut off, try an older copy", b"<ink>\n<tracegroup id='layer0'>")

    def test_broken_xml(self):
        self.file("a.kvo", b"<ink>\n<tracegroup id='layer0'\n</ink>")
        self.penwick("open", "a.kvo")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, r"^penwick: a\.kvo: its XML is broken: .* \(line \d+")
        self.assertEqual(self.errors.count("\n"), 1)


class Omissions(CommandTest):
    def warning(self, content):
        self.file("a.kvo", content)
        self.penwick("open", "a.kvo", "-o", "a.svg")
        self.assertEqual(self.result.returncode, 0)
        self.assertEqual(self.errors.count("\n"), 1, self.errors)
        self.assertTrue(self.errors.startswith("penwick: a.kvo: warning: "))
        return self.errors

    def test_text_behind_the_root(self):
        self.assertIn("text behind the end of the document",
                      self.warning(ink(layer(TRACE)) + b"\nmore"))

    def test_what_ends_the_reading(self):
        for content, sentence in (
                (b"<ink/>\n\0x", "a NUL behind the end of the document ends the reading (line 2)"),
                (b'<ink/><!DOCTYPE x [ <!ENTITY e "v"> ]>', "a DOCTYPE with declarations of its own "
                 "behind the end of the document ends the reading (line 1)")):
            self.assertIn(sentence, self.warning(content))

    def test_a_text_that_is_divided(self):
        self.assertIn("1 text read only up to the comment or element that divides it (line 1)",
                      self.warning(ink(layer('<trace contextRef="#c">1 2 0 9,3 4<!--c-->,5 6</trace>'))))

    def test_are_told_of_what_is_shown_and_converted_too(self):
        self.file("a.kvo", ink(layer(TRACE)) + b"\nmore")
        said = ("penwick: a.kvo: warning: text behind the end of the document ends the reading "
                "(line 2)\n")
        for words in (["ink", "a.kvo"], ["convert", "a.kvo", "-o", "b.kvo"]):
            self.penwick(*words)
            self.assertEqual((self.result.returncode, self.errors), (0, said))
        self.penwick("ink", "a.kvo")
        self.assertEqual(len(json.loads(self.out)["layers"]), 1)
        for words in (["ink", "a.kvo", "-q"], ["convert", "a.kvo", "-q", "-o", "c.kvo"]):
            self.assert_done(*words)

    def test_a_comment_taken_for_the_document(self):
        self.assertIn("was taken for the document", self.warning(b"<!--ink--><ink/>"))

    def test_traces_without_context(self):
        self.assertIn("1 trace without contextRef left out (line 1)",
                      self.warning(ink(layer(TRACE + "<trace>1 2,3 4</trace>"))))

    def test_the_way_other_programs_write(self):
        said = self.warning(b'<ink xmlns="http://www.w3.org/2003/InkML"><traceGroup>'
                            b"<trace>1 2, 3 4</trace></traceGroup></ink>")
        self.assertIn('1 group "traceGroup" not read, only "tracegroup" is', said)
        self.assertIn('namespace "http://www.w3.org/2003/InkML"', said)

    def test_the_sample_of_another_program(self):
        said = self.warning((SAMPLES / "other-program.inkml").read_bytes())
        self.assertIn('"traceGroup" not read, only "tracegroup" is', said)
        self.assertEqual(self.out, "a.kvo: an empty drawing (the recording has no strokes to draw) "
                                   "-> a.svg\n")

    def test_fractions(self):
        self.assertIn("has a fraction or an exponent", self.warning(
            ink(layer('<trace contextRef="#c">0.5 1 0 512,10 20 0 512,30 5 0 512</trace>'))))


class Convert(CommandTest):
    def test_writes_an_ink_document_that_opens(self):
        self.file("a.pnx", descriptor() + bytes([100, 6, 6, 0, 2, 0]) +
                  stroke((-5, 10), (95, 20), (195, 30)) + status(0x80) + stroke((5, 7), (15, 17)))
        self.penwick("convert", "a.pnx", "-o", "a.kvo")
        self.assertEqual((self.result.returncode, self.errors), (0, ""))
        self.assertEqual(self.out, "a.pnx: 2 layers, 2 strokes -> a.kvo\n")
        self.penwick("open", "-q", "a.kvo", "-o", "a.json")
        self.assertEqual((self.result.returncode, self.errors), (0, ""))
        art = json.loads((self.folder / "a.json").read_text())
        self.assertEqual([len(layer["art"]) for layer in art["layers"]], [1, 1])

    def test_writes_points_with_all_their_digits(self):
        self.file("a.pnx", descriptor() + coordinate(10, 10) + coordinate(7, -1))
        self.assert_done("convert", "-q", "a.pnx", "-o", "a.kvo")
        root = xml.dom.minidom.parse(str(self.folder / "a.kvo")).documentElement
        trace = root.getElementsByTagName("trace")[0]
        self.assertEqual(trace.firstChild.data, "1.5 2.5 0 0 0 0 0,1.2 0.3 0 0 0 0 0")
        # The context that the traces refer to is there.
        self.assertEqual(trace.getAttribute("contextRef"), "#default-context")
        contexts = root.getElementsByTagName("context")
        self.assertEqual([c.getAttribute("id") for c in contexts], ["default-context"])

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

    def test_says_where_there_is_no_room_for_a_temporary_file(self):
        self.file("a.pnx")
        self.assert_fails("a.kvo: cannot be written: there is no room for a temporary file",
                          "convert", "a.pnx", env={"TMPDIR": str(self.folder / "none")})

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

    def converted(self, definitions):
        self.file("a.kvo", ink(f"<definitions>{definitions}</definitions>"
                               '<annotation type="author">me</annotation>' + layer(TRACE)))
        self.assert_done("convert", "-q", "--force", "a.kvo", "-o", "b.inkml")
        root = xml.dom.minidom.parse(str(self.folder / "b.inkml")).documentElement
        self.assertEqual(root.getElementsByTagName("annotation")[0].firstChild.data, "me")
        trace = root.getElementsByTagName("trace")[0]
        self.assertEqual(trace.getAttribute("contextRef"), "#default-context")
        return {name: [one.getAttribute("id") for one in root.getElementsByTagName(name)]
                for name in ("traceFormat", "brush", "context")}

    def test_keeps_own_definitions_and_annotations(self):
        own = '<traceFormat id="f"/><brush id="b"><annotationXML/></brush>'
        self.assertEqual(
            self.converted(own + '<context id="mine" brushRef="#b" traceFormatRef="#f"/>'),
            {"traceFormat": ["f", "default-format"], "brush": ["b", "default-brush"],
             "context": ["default-context", "mine"]})
        self.assertEqual(self.converted(own), {
            "traceFormat": ["f", "default-format"], "brush": ["b", "default-brush"],
            "context": ["default-context"]})

    def test_keeps_an_own_context_of_the_default_name(self):
        self.assertEqual(self.converted(
            '<traceFormat id="f"/><brush id="b"><annotationXML/></brush>'
            '<context id="default-context" brushRef="#b" traceFormatRef="#f"/>'),
            {"traceFormat": ["f"], "brush": ["b"], "context": ["default-context"]})
