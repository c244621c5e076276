import json
import os
import pathlib

from command import OTHER_KINDS, THREE_POINTS, TRACE, CommandTest, ink, layer

SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"


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
        nothing = "a.kvo: there are no recordings (.pnx, .eli, .kvo, .inkml) in this folder"
        self.assert_fails(nothing, "open", "a.kvo")
        self.assert_fails(nothing, "convert", "a.kvo")
        self.assert_fails("a.kvo: this is a folder; name the recordings in it", "ink", "a.kvo")

    def test_a_file_of_2_gibibytes(self):
        os.truncate(self.file("a.kvo", b""), 2 ** 31)
        self.assert_all_fail("the file has 2 GiB or more, and ink documents are read below that "
                             "size only; split it", "a.kvo")

    def test_a_pen_recording_with_the_wrong_extension(self):
        for content in (THREE_POINTS, THREE_POINTS + b"\xc3"):
            self.assert_refused("this is not an ink document; it looks like a pen recording, which "
                                "opens when its name ends in .pnx or .eli, or with --as pen", content)

    def test_what_stops_the_reading_before_the_root(self):
        for what, content in (
                ("a DOCTYPE with declarations of its own", b'<!DOCTYPE ink [<!ENTITY e "v">]><ink/>'),
                ('a processing instruction with a ">" inside', b"<?pi a > b ?><ink/>"),
                ("a broken declaration", b"<?xml version ?><ink/>"),
                ("a NUL", b"<!--c-->\0<ink/>"),
                ("text", b"<!--c-->text<ink/>")):
            self.assert_refused(f"this is not an ink document: reading stops at {what} before its root "
                                "element (line 2); remove it", b"\n" + content)

    def test_a_prefixed_root_where_only_the_plug_in_looks(self):
        self.file("a.kvo", b"<x:ink/>")
        for words in (["open", "--as", "inkml-subset"], ["ink"], ["convert", "--as", "inkml-subset", "-o", "b.kvo"]):
            self.assert_fails('a.kvo: this is not an ink document: its root element is "x:ink", not "ink"; penwick '
                              "convert translates InkML of other programs into a document that opens", *words, "a.kvo")

    def test_another_root(self):
        self.assert_refused('this is not an ink document: its root element is "a", not "ink"', b"<a/>")

    def test_files_of_other_kinds(self):
        for what, content in OTHER_KINDS:
            with self.subTest(what):
                self.assert_refused(f"this is {what}", content)

    def test_nothing_but_white_space(self):
        self.assert_refused("the file contains only white space", b" \r\n\t\n")

    def test_a_declared_encoding_that_is_not_read(self):
        head = '<?xml version="1.0" encoding="ISO-8859-1"?>'
        for content in (head + "<ink><!-- é", head + "<ink>\n<!-- é --><b>"):
            self.assert_refused('the document declares the encoding "ISO-8859-1", but ink documents '
                                "are always read as UTF-8; save it as UTF-8", content.encode("latin-1"))

    def test_a_nul_byte(self):
        self.assert_refused("its XML is broken: error reading Element value, at a NUL byte (line 2)",
                            b"<ink>\nabc\0def</ink>\n")

    def test_something_that_is_not_closed(self):
        for content in (b"<ink><!-- x </ink>", b"<ink><![CDATA[ x </ink>\n"):
            self.assert_refused("its XML is broken: error reading Element value, at its end; a tag, "
                                "quotation or comment is not closed", content)

    def test_deep_nesting(self):
        self.assert_refused("elements are nested more than 500 deep (line 501); no ink document "
                            "needs that",
                            b"<ink>\n" + b"<a>\n" * 600 + b"</a>" * 600 + b"</ink>")

    def test_too_many_attributes(self):
        attributes = "".join(f" a{i}=''" for i in range(10001)).encode()
        self.assert_refused("an element has more than 10,000 attributes (line 2); no ink document "
                            "needs so many", b"<ink>\n<a" + attributes + b"/></ink>")

    def test_a_file_cut_inside_a_character(self):
        self.assert_refused("the file ends inside a character (line 3); its end was lost",
                            b"<ink>\n\n\xc3")

    def test_a_document_that_is_cut(self):
        self.assert_refused("its XML is broken: error reading Element value, at its end; it may be "
                            "cut off: try an older copy", b"<ink>\n<tracegroup id='layer0'>")

    def test_broken_xml(self):
        self.file("a.kvo", b"<ink>\n<tracegroup id='layer0'\n</ink>")
        self.penwick("open", "a.kvo")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, r"^penwick: a\.kvo: its XML is broken: .* \(line \d+")
        self.assertEqual(self.errors.count("\n"), 1)


class Omissions(CommandTest):
    def warning(self, content, *words):
        self.file("a.kvo", content)
        self.penwick("open", *words, "a.kvo", "-o", "a.svg")
        self.assertEqual(self.result.returncode, 0)
        self.assertEqual(self.errors.count("\n"), 1, self.errors)
        self.assertTrue(self.errors.startswith("penwick: a.kvo: warning: "))
        return self.errors

    def test_text_after_the_root(self):
        self.assertIn("reading stops at text after the end of the document",
                      self.warning(ink(layer(TRACE)) + b"\nmore"))

    def test_what_stops_the_reading(self):
        for content, sentence in (
                (b"<ink/>\n\0x", "reading stops at a NUL after the end of the document (line 2)"),
                (b'<ink/><!DOCTYPE x [ <!ENTITY e "v"> ]>', "reading stops at a DOCTYPE with "
                 "declarations of its own after the end of the document (line 1)")):
            self.assertIn(sentence, self.warning(content))

    def test_a_text_that_is_interrupted(self):
        self.assertIn("1 text read only up to the comment or element that interrupts it (line 1)",
                      self.warning(ink(layer('<trace contextRef="#c">1 2 0 9,3 4<!--c-->,5 6</trace>'))))

    def test_are_told_when_a_document_is_shown_or_converted_too(self):
        self.file("a.kvo", ink(layer(TRACE)) + b"\nmore")
        said = ("penwick: a.kvo: warning: reading stops at text after the end of the document "
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
        self.assertIn("1 trace without a contextRef left out (line 1)",
                      self.warning(ink(layer(TRACE + "<trace>1 2,3 4</trace>"))))

    def test_the_form_that_other_programs_write(self):
        said = self.warning(b'<ink xmlns="http://www.w3.org/2003/InkML"><traceGroup>'
                            b"<trace>1 2, 3 4</trace></traceGroup></ink>", "--as", "inkml-subset")
        self.assertIn("penwick convert translates InkML of other programs", said)
        self.assertIn('1 group "traceGroup" with 1 trace not read: only "tracegroup" is', said)
        self.assertIn('namespace "http://www.w3.org/2003/InkML"', said)

    def test_the_sample_of_another_program(self):
        said = self.warning((SAMPLES / "other-program.inkml").read_bytes(), "--as", "inkml-subset")
        self.assertRegex(said, r'1 group "traceGroup" with \d+ traces? not read: only "tracegroup" is')
        self.assertEqual(self.out, "a.kvo: an empty drawing (none of the strokes could be drawn) "
                                   "-> a.svg\n")

    def test_traces_in_places_that_are_not_read(self):
        inside = "<trace>1 2,3 4</trace>" * 2
        for sentence, content in (
                ('2 traces not drawn, because traces inside "definitions" are not read (line 1)',
                 ink(f"<definitions>{inside}</definitions>" + layer(TRACE))),
                ('2 traces not drawn, because traces inside "page" are not read (line 1)',
                 ink(f"<page><b>{inside}</b></page>" + layer(TRACE))),
                ('2 traces not drawn, because traces inside "page" are not read (line 1)',
                 ink(layer(TRACE + f"<page>{inside}</page>"))),
                ("1 nested group with 2 traces not read (line 1)",
                 ink(layer(TRACE + layer(inside, "layer1")))),
                ('1 group without an id of the form "layer0" with 2 traces left empty, which '
                 "extends the page to the origin (line 1)", ink(layer(TRACE) + layer(inside, "a"))),
                ("2 traces inside another trace not drawn (line 1)",
                 ink(layer(TRACE.replace("</", f"{inside}</"))))):
            self.assertEqual(f"penwick: a.kvo: warning: {sentence}\n", self.warning(content))

    def test_what_is_drawn_differently_from_how_it_is_meant(self):
        def channels(names, units="0.1mm"):
            made = "".join(f'<channel name="{name}" units="{units}"/>' for name in names.split())
            return f'<definitions><traceFormat id="f">{made}</traceFormat></definitions>'

        for sentence, content in (
                ("1 trace has no points, which extends the page to the origin (line 1)",
                 layer(TRACE + '<trace contextRef="#c">,</trace>')),
                ('1 trace of the type "penUp" drawn as ink (line 1)',
                 layer(TRACE.replace("<trace ", '<trace type="penUp" '))),
                ("2 points are blank and drawn at the origin (line 1)",
                 layer('<trace contextRef="#c">9 9, ,8 8 0 1, ,7 7</trace>')),
                ("2 points have a pressure or time below 0, which was read as a very large one (line 1)",
                 layer('<trace contextRef="#c">9 9 0 -1,8 8 0 -0,7 7 0 1 -1 -1 -9</trace>')),
                ('the channels are declared as "X Y T", but points are always read as x, y, z, force, '
                 "tilt x, tilt y, time (line 1)", channels("X Y T") + layer(TRACE)),
                ('the channels are declared as "Y X Z F OTx OTy T", but points are always read as x, y, '
                 "z, force, tilt x, tilt y, time (line 1)",
                 channels("Y X Z F OTx OTy T") + layer(TRACE)),
                ('coordinates are declared in "cm", but are always read in tenths of a millimetre '
                 "(line 1)", channels("X Y Z F TX TY T", "cm") + layer(TRACE))):
            self.file("a.kvo", ink(content))
            self.penwick("open", "a.kvo", "-o", "a.svg", "--pressure", "1")
            self.assertEqual(f"penwick: a.kvo: warning: {sentence}\n", self.errors)
        for names in ("X Y Z F OTx OTy T", "X Y Z F TX TY T"):
            self.file("a.kvo", ink(channels(names) + layer(TRACE)))
            self.assert_done("open", "a.kvo", "-o", "a.svg")

    def test_a_declared_encoding_that_is_not_read(self):
        head = "<?xml version='1.0' encoding='windows-1252'?>"
        self.assertIn('the document declares the encoding "windows-1252", but ink documents are '
                      "always read as UTF-8", self.warning(ink("<!-- é -->" + layer(TRACE), head)))
        for text in (ink(layer(TRACE), head), ink("<!-- é -->" + layer(TRACE), head.replace(
                "windows-1252", "Utf-8"))):
            self.file("a.kvo", text)
            self.assert_done("open", "a.kvo", "-o", "a.svg")

    def test_long_names_are_cut_between_characters(self):
        for name, shown in (("é" * 81, "é" * 80 + "..."), ("é" * 80, "é" * 80)):
            self.assertIn(f'traces inside "{shown}" are not read (line 1)', self.warning(ink(
                f"<{name}><trace/></{name}>" + layer(TRACE))))

    def test_fractions(self):
        self.assertIn("has a fraction or an exponent", self.warning(
            ink(layer('<trace contextRef="#c">0.5 1 0 512,10 20 0 512,30 5 0 512</trace>'))))
