"""What the command says of a damaged or unusual recording: each sentence by its key words, its count
and its place."""
from command import TWO_POINTS, CommandTest, coordinate, descriptor, pressure, stroke

TRACE = '<trace contextRef="#c">0 1 0 512,10 20 0 512</trace>'
LAYER = f'<tracegroup id="layer0">{TRACE}</tracegroup>'


def ink(inside):
    return f"<ink>{inside}{LAYER}</ink>"


def layer(inside):
    return ink(f'<tracegroup id="layer1">{inside}</tracegroup>')


def trace(text):
    return layer(f'<trace contextRef="#c">{text}</trace>')


def definitions(inside):
    return ink(f"<definitions>{inside}</definitions>")


def contexts(first):
    """Two contexts that are good but for the first."""
    return definitions('<brush id="b"><annotationXML/></brush><traceFormat id="f"/>\n' + first +
                       '<context id="d" brushRef="#b" traceFormatRef="#f"/>')


class Sentences(CommandTest):
    def assert_says(self, name, content, pattern, status, words=("ink",)):
        self.file(name, content if isinstance(content, bytes) else content.encode())
        self.penwick(*words, name)
        self.assertEqual(self.result.returncode, status, self.errors)
        self.assertEqual(self.errors.count("\n"), 1, self.errors)
        self.assertRegex(self.errors, rf"^penwick: {name}: " + pattern)


class OmissionsOfInk(Sentences):
    def assert_each(self, *cases):
        for pattern, content in cases:
            with self.subTest(pattern):
                self.assert_says("a.kvo", content, "warning: (.*; )?" + pattern, 0)

    def test_what_stops_the_reading(self):
        self.assert_each(
            (r"reading stops at text after the end of the document \(line 2\)", ink("") + "\nmore"),
            (r"reading stops at a NUL after .* \(line 3\)", ink("") + "\n\n\0"),
            (r"reading stops at a DOCTYPE .* after .* \(line 2\)",
             ink("") + '\n<!DOCTYPE x [ <!ENTITY e "v"> ]>'),
            (r'reading stops at a processing instruction with a ">" inside after .* \(line 2\)',
             ink("") + "\n<?a b > c ?>"),
            (r"reading stops at a broken declaration after .* \(line 2\)",
             ink("") + "\n<?xml version ?>"))

    def test_what_stands_in_place_of_the_document(self):
        self.assert_each(
            (r'.*"ink" was taken for the document \(line 2\)', "\n<!--ink-->\n" + ink("")),
            (r"1 element after the document not read \(line 2\)", ink("") + "\n<ink/>"),
            (r"2 elements after the document not read \(line 2\)", ink("") + "\n<a/>\n<b/>"))

    def test_definitions(self):
        self.assert_each(
            (r'.*"definitions" was taken for the definitions \(line 2\)',
             ink("\n<!--definitions-->")),
            (r'1 further "definitions" element not read \(line 2\)',
             ink("<definitions/>\n<definitions/>")),
            (r'2 further "definitions" elements not read \(line 2\)',
             ink("<definitions/>\n<definitions/><definitions/>")),
            (r"1 trace format without an id left out \(line 1\)", definitions("<traceFormat/>")),
            (r"2 trace formats without an id left out \(line 1\)", definitions("<traceFormat/>" * 2)),
            (r"1 brush without an id or annotationXML left out \(line 2\)",
             definitions('\n<brush id="b"/>')),
            (r"2 brushes without an id or annotationXML left out \(line 1\)",
             definitions("<brush><annotationXML/></brush><brush/>")),
            (r'1 brush has no properties.*"annotationXML".*\(line 2\)',
             definitions('<brush id="b">\n<!--annotationXML--></brush>')),
            (r'2 brushes have no properties.*"annotationXML".*\(line 2\)',
             definitions('<brush id="b">\n<!--annotationXML--></brush>' * 2)))

    def test_contexts(self):
        self.assert_each(
            (r"2 contexts left out: the first has no id \(line 2\)",
             contexts('<context brushRef="#b" traceFormatRef="#f"/>')),
            (r'2 contexts left out: the first refers to "b", which does not begin with "#" \(line 2\)',
             contexts('<context id="c" brushRef="b" traceFormatRef="#f"/>')),
            (r'2 contexts left out: the first refers to "f", which does not begin with "#" \(line 2\)',
             contexts('<context id="c" brushRef="#b" traceFormatRef="f"/>')),
            (r'2 contexts left out: the first refers to the brush "x", which does not exist \(line 2\)',
             contexts('<context id="c" brushRef="#x" traceFormatRef="#y"/>')),
            (r'2 contexts left out: the first refers to the trace format "y", which does not exist '
             r"\(line 2\)", contexts('<context id="c" brushRef="#b" traceFormatRef="#y"/>')),
            (r"1 context left out: the first has no id \(line 1\)", definitions("<context/>")))

    def test_groups(self):
        self.assert_each(
            (r'1 group "traceGroup".* not read: only "tracegroup" is \(line 1\)',
             ink(f"<traceGroup>{TRACE}</traceGroup>")),
            (r'2 groups "traceGroup".* not read: only "tracegroup" is \(line 1\)',
             ink("<traceGroup/><tracegroups/><traceGroup/>")),
            (r'1 group without an id of the form "layer0".* left empty.*\(line 2\)',
             ink(f"\n<tracegroup>{TRACE}</tracegroup>")),
            (r'2 groups without an id of the form "layer0".* left empty.*\(line 1\)',
             ink('<tracegroup/><tracegroup id="x"/>')),
            (r"1 nested group.* not read \(line 1\)", layer(TRACE + '<tracegroup id="layer2"/>')),
            (r"2 nested groups.* not read \(line 1\)", layer(TRACE + "<tracegroup/>" * 2)))

    def test_traces(self):
        self.assert_each(
            (r'1 trace outside every "tracegroup" not read \(line 2\)', ink("\n" + TRACE)),
            (r'2 traces outside every "tracegroup" not read \(line 1\)', ink(TRACE * 2)),
            (r'1 element "Trace" not read: only "trace" is \(line 1\)', layer(TRACE + "<Trace/>")),
            (r'2 elements "Trace" not read: only "trace" is \(line 1\)',
             layer(TRACE + "<Trace/><x:trace/>")),
            (r"1 trace without points left out \(line 1\)", layer('<trace contextRef="#c"/>')),
            (r"2 traces without points left out \(line 1\)", layer("<trace/>" * 2)),
            (r"1 trace without a contextRef left out \(line 1\)", layer("<trace>1 2</trace>")),
            (r"2 traces without a contextRef left out \(line 1\)", layer("<trace>1 2</trace>" * 2)),
            (r"1 trace begins with a comment or an element, .* \(line 3\)",
             trace("\n\n<!-- pen down -->1 2")),
            (r"2 traces begin with a comment or an element, .* \(line 1\)",
             layer('<trace contextRef="#c"><b/>1 2</trace>' * 2)))

    def test_texts(self):
        self.assert_each(
            (r"1 annotation without a type or text left out \(line 1\)", ink("<annotation/>")),
            (r"2 annotations without a type or text left out \(line 1\)",
             ink('<annotation type="t"/><annotation>x</annotation>')),
            (r"1 text read only up to .* that interrupts it \(line 2\)",
             trace("1 2,3 4\n<!--c-->,5 6")),
            (r"2 texts read only up to .* that interrupts it \(line 1\)",
             ink('<annotation type="t">a<b/>c</annotation>' * 2)),
            (r"1 text read up to a NUL \(line 1\)", trace("1 2,3&#0; 4")),
            (r"2 texts read up to a NUL \(line 1\)",
             ink('<annotation type="t">a&#0;b</annotation>' * 2)))

    def test_numbers(self):
        self.assert_each(
            (r"1 point has a fraction or an exponent, which was cut off \(line 1\)", trace("1.5 2")),
            (r"2 points have a fraction or an exponent, which was cut off \(line 1\)",
             trace("1.5 2,3e4 5,6 7")),
            (r"1 point has something else after a number, .* \(line 1\)", trace("1x 2")),
            (r"2 points have something else after a number, .* \(line 1\)", trace("1x 2,3 4-")),
            (r"1 point has a number that is too large, and only its low 32 bits were kept "
             r"\(line 1\)", trace("0 0 4294967303")),
            (r"2 points have a number that is too large, .* \(line 1\)",
             trace("2147483648 0,0 0 0 4294967296")),
            (r"1 point has something that is not a number and was read as 0 \(line 1\)", trace("1 a")),
            (r"2 points have something that is not a number and was read as 0 \(line 1\)",
             trace("1 a,b 2")),
            (r"1 point has more than seven numbers, .* \(line 1\)", trace("1 2 3 4 5 6 7 8")),
            (r"2 points have more than seven numbers, .* \(line 1\)",
             trace("1 2 3 4 5 6 7 8," * 2)))

    def test_several_stand_in_one_line(self):
        self.assert_says("a.kvo", trace("1.5 a") + "more",
                         r"warning: reading stops at text after .*\(line 1\); 1 point has a fraction .*\(line 1\); "
                         r"1 point has something that is not a number .*\(line 1\)\n$", 0)


class FailuresOfInk(Sentences):
    def test_no_root_element(self):
        self.assert_says("a.kvo", "<!--c-->\n", ".* it has no root element", 1)


class FailuresOfPenRecordings(Sentences):
    def assert_refused(self, content, pattern):
        for words in (("open",), ("ink",)):
            self.assert_says("a.pnx", content, pattern, 1, words)

    def test_another_beginning(self):
        self.assert_refused(b"\2" + TWO_POINTS[1:],
                            r".*begins with 0x02 where 0x01 is expected \(byte 0\)")

    def test_an_ink_document(self):
        for content in (ink(""), "<?xml version='1.0'?>" + ink("")):
            self.assert_refused(content, ".*XML document.* ends in .kvo or .inkml, in small letters")

    def test_a_second_descriptor(self):
        self.assert_refused(TWO_POINTS * 2, rf"a second file descriptor \(byte {len(TWO_POINTS)}\)")

    def test_another_coordinate_format(self):
        self.assert_refused(descriptor(3), r".*a coordinate format other than 2.* \(byte 3\)")

    def test_packets_of_another_length(self):
        for tag, name, length in ((17, "physical parameters", 9), (49, "date and time", 9),
                                  (97, "coordinate", 6), (100, "pressure", 6), (101, "tilt", 6),
                                  (194, "time stamp", 6), (241, "status", 3)):
            with self.subTest(name):
                self.assert_refused(
                    descriptor() + bytes([tag, 0x42]) + bytes(10),
                    rf"a {name} packet has the length code 0x42, that is 12 bytes, where {length} "
                    r"are expected \(byte 6\)")
                self.assert_refused(descriptor() + bytes([tag]),
                                    rf"the file ends right after the tag of a {name} packet "
                                    r"\(byte 6\)")

    def test_a_descriptor_of_another_length(self):
        self.assert_refused(bytes([1, 5, 0, 2, 0, 0]),
                            r"a file descriptor packet has the length code 0x05, that is 5 bytes, "
                            r"where 6 are expected \(byte 0\)")

    def test_another_pressure_algorithm(self):
        self.assert_refused(descriptor() + bytes([100, 6, 2, 0, 0, 0]),
                            r"a pressure packet names an algorithm other than 1, 5 and 6 \(byte 8\)")

    def test_a_cut_pressure_packet(self):
        self.assert_refused(descriptor() + pressure(512)[:2],
                            r"the file ends inside a pressure packet \(byte 6\)")


class OmissionsOfPenRecordings(Sentences):
    def test_a_cut_packet(self):
        self.assert_says("a.pnx", TWO_POINTS + coordinate(1, 2)[:4],
                         rf"warning: .*inside its last packet \(byte {len(TWO_POINTS)}\)", 0)

    def test_a_packet_of_length_0(self):
        self.assert_says("a.pnx", TWO_POINTS + bytes([0x22, 0x40]) + stroke((1, 2), (3, 4)),
                         rf"warning: a packet of length 0 \(byte {len(TWO_POINTS)}\) ends the "
                         "recording", 0)

    def test_points_above_the_sheet(self):
        above = TWO_POINTS + coordinate(0, -900)
        for content, count in ((above, "1 point"), (above + coordinate(0, -800), "2 points")):
            self.assert_says("a.pnx", content, rf"warning: {count} above the sheet left out, the "
                             rf"first \(byte {len(TWO_POINTS)}\)", 0)


class ReadErrors(CommandTest):
    def test_name_the_system(self):
        # The memory of a process opens like a file, but its first page cannot be read.
        for name, place in (("a.pnx", r" \(byte 0\)"), ("a.kvo", "")):
            (self.folder / name).symlink_to("/proc/self/mem")
            self.penwick("ink", name)
            self.assertEqual(self.result.returncode, 1)
            self.assertRegex(self.errors,
                             rf"^penwick: {name}: .*the system reports a read error{place}; copy .*\n$")
