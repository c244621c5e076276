import json
import xml.dom.minidom

from command import CommandTest, coordinate, descriptor, status, stroke

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

    def test_a_missing_file(self):
        self.assert_fails("no.kvo: there is no such file", "open", "no.kvo")

    def test_a_folder(self):
        (self.folder / "a.kvo").mkdir()
        self.assert_fails("a.kvo: this is a folder; name the recordings in it", "open", "a.kvo")

    def test_a_prefixed_root(self):
        self.assert_refused('this is no ink document: its top element is "x:ink", not "ink"; names '
                            'with a prefix are not understood, take the prefix "x:" out of every '
                            "element", b"<x:ink/>")

    def test_another_root(self):
        self.assert_refused('this is no ink document: its top element is "svg", not "ink"', b"<svg/>")

    def test_deep_nesting(self):
        self.assert_refused("elements nest more than 500 deep (line 1); no ink document does",
                            b"<ink>" + b"<a>" * 600 + b"</a>" * 600 + b"</ink>")

    def test_a_file_cut_inside_a_character(self):
        self.assert_refused("the file ends inside a character (byte 6); its end was lost",
                            b"<ink/>"[:5] + b"\xc3")

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

    def test_keeps_own_definitions_and_annotations(self):
        self.file("a.kvo", ink(
            '<definitions><traceFormat id="f"/><brush id="b"><annotationXML/></brush>'
            '<context id="mine" brushRef="#b" traceFormatRef="#f"/></definitions>'
            '<annotation type="author">me</annotation>' + layer(TRACE)))
        self.assert_done("convert", "-q", "a.kvo", "-o", "b.inkml")
        root = xml.dom.minidom.parse(str(self.folder / "b.inkml")).documentElement
        self.assertEqual(root.getElementsByTagName("context")[0].getAttribute("id"), "mine")
        self.assertEqual(root.getElementsByTagName("annotation")[0].firstChild.data, "me")
