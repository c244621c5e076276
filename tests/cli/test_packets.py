import json
import os
import subprocess

from command import CommandTest, PENWICK, THREE_POINTS, coordinate, descriptor, ink, layer, pressure, status


def line(offset, tag, name, size, rest=""):
    return f"{offset:10}  0x{tag:02X}  {name:<19}  {size:5}" + (f"  {rest}" if rest else "") + "\n"


PACKETS = (descriptor() + bytes([17, 9, 1, 2, 3, 4, 5, 6, 7]) + bytes([49, 9, 7, 220, 5, 17, 10, 7, 16]) +
           status(1) + coordinate(-15, 10) + pressure(-2) + bytes([101, 6, 253, 20, 0, 0]) +
           bytes([194, 6, 17, 1, 2, 128]) + bytes([194, 6, 16, 0, 0, 9]) + coordinate(0, -3) +
           status(0) + status(129) + bytes([33, 5, 75, 0, 1]))


class Packets(CommandTest):
    def test_lists_every_packet_with_its_place_and_fields(self):
        self.file("a.pnx", PACKETS)
        self.assert_done("packets", "a.pnx")
        self.assertEqual(self.out, "".join((
            line(0, 1, "file descriptor", 6, "00 02 00 00"),
            line(6, 17, "physical parameters", 9, "01 02 03 04 05 06 07"),
            line(15, 49, "date and time", 9, "07 DC 05 11 0A 07 10, as a date 2012-05-17 10:07:16"),
            line(24, 241, "status", 3, "pen down"),
            line(27, 97, "coordinate", 6, "x -1.0, y 2.5"),
            line(33, 100, "pressure", 6, "-2, algorithm 6"),
            line(39, 101, "tilt", 6, "x -3, y 20"),
            line(45, 194, "time stamp", 6, "66176"),
            line(51, 194, "time stamp", 6, "of kind 16, which is no time"),
            line(57, 97, "coordinate", 6, "x 0.5, y -0.1, above the sheet: left out"),
            line(63, 241, "status", 3, "pen up"),
            line(66, 241, "status", 3, "new layer"),
            line(69, 33, "unknown", 5, "4B 00 01"))))

    def test_lists_them_as_json(self):
        self.file("a.pnx", PACKETS)
        self.assert_done("packets", "--json", "a.pnx")
        found = [json.loads(text) for text in self.out.splitlines()]
        self.assertEqual([packet["offset"] for packet in found], [0, 6, 15, 24, 27, 33, 39, 45, 51, 57, 63, 66, 69])
        head = {"offset": 0, "tag": 1, "name": "file descriptor", "lengthCode": 6, "size": 6}
        self.assertEqual(found[0], {**head, "payload": "00020000", "problem": None})
        fields = [{key: packet[key] for key in packet if key not in {*head, "problem"}} for packet in found]
        self.assertEqual(fields[3:], [
            {"bits": 1, "newLayer": False, "penDown": True},
            {"x": -1.0, "y": 2.5, "onSheet": True},
            {"algorithm": 6, "pressure": -2},
            {"tiltX": -3, "tiltY": 20},
            # The reader widens 0x80 as signed, which sets all bits above it.
            {"kind": 17, "count": 66176, "time": 0xFFFFFF80},
            {"kind": 16, "count": 9, "time": 0},
            {"x": 0.5, "y": -0.1, "onSheet": False},
            {"bits": 0, "newLayer": False, "penDown": False},
            {"bits": 129, "newLayer": True, "penDown": True},
            {"payload": "4B0001"}])

    def test_marks_damage_where_it_lies_and_goes_on(self):
        damaged = descriptor() + bytes([97, 7, 0, 0, 0, 0]) + status(1) + pressure(1)[:2] + bytes([9, 0, 0, 0]) + status(0)
        self.file("a.pnx", damaged)
        self.penwick("packets", "a.pnx")
        self.assertEqual(self.out, "".join((
            line(0, 1, "file descriptor", 6, "00 02 00 00"),
            line(6, 97, "coordinate", 6, "00 00 00 00  <-- reading stops here: "
                 "the length code 0x07 means 7 bytes, 6 are expected"),
            line(12, 241, "status", 3, "pen down"),
            line(15, 100, "pressure", 6, "0, algorithm 9  <-- pressure algorithm 9, only 1, 5 and 6 are known"),
            line(21, 241, "status", 3, "pen up"))))
        self.assertEqual(self.errors, "penwick: a.pnx: a coordinate packet has the length code 0x07, that is 7 bytes, "
                         "where 6 are expected (byte 6); the recording is damaged there\n")
        self.assertEqual(self.result.returncode, 1)

    def test_marks_what_the_reader_gets_past(self):
        self.file("a.pnx", descriptor() + bytes(4) + bytes([33, 14, 1, 2, 3]) + status(1) + coordinate(1, 1) + status(0)[:2])
        self.assert_done("packets", "a.pnx")
        self.assertEqual(self.out.splitlines(keepends=True)[1:], [
            line(6, 0, "", 4, "<-- zero bytes, which are no packet"),
            line(10, 33, "unknown", 14, "01 02 03 F1 03 01 61 06 00 01 00 01  <-- probably damaged: "
                 "there are known packets inside"),
            line(24, 241, "status", 2, "<-- the file ends inside this packet")])

    def test_shortens_long_unknown_packets(self):
        self.file("a.pnx", descriptor() + bytes([33, 0x80 | 2]) + bytes([7]) * 70)
        self.assert_done("packets", "a.pnx")
        self.assertEqual(self.out.splitlines(keepends=True)[1], line(6, 33, "unknown", 72, "07 " * 32 + "..."))

    def test_lists_the_elements_of_ink_documents(self):
        text = layer('\n<annotation type="name">sky</annotation>\n<trace contextRef="#c">1 2,3 4</trace>\n'
                     '<trace>5 6</trace>\n<Trace/>\n')
        self.file("a.kvo", ink("\n" + text + '\n<traceGroup><trace/></traceGroup>\n<odd id="x"/>'))
        self.penwick("packets", "a.kvo")
        self.assertEqual(self.out, """\
       1  <ink>
       2    <tracegroup id="layer0">
       3      <annotation type="name">
       4      <trace>  2 points
       5      <trace>  <-- not read: it has no contextRef
       6      <Trace>  <-- not read: only "trace" is
       8    <traceGroup>  <-- not read: only "tracegroup" is
       8      <trace>  <-- not read
       9    <odd id="x">  <-- not read
""")
        self.assertEqual(self.result.returncode, 0)
        self.assertIn("penwick: a.kvo: warning: ", self.errors)
        self.penwick("packets", "--json", "a.kvo")
        self.assertEqual(json.loads(self.out.splitlines()[3]), {
            "line": 4, "depth": 2, "name": "trace", "id": None, "type": None, "read": True, "points": 2, "problem": None})

    def test_says_why_an_ink_document_cannot_be_listed(self):
        self.file("a.kvo", b"")
        self.assert_fails("a.kvo: the file is empty (0 bytes)", "packets", "a.kvo")

    def test_says_what_files_that_are_no_recordings_are(self):
        self.file("empty.pnx", b"")
        (self.folder / "folder").mkdir()
        self.assert_fails("empty.pnx: the file is empty (0 bytes)", "packets", "empty.pnx")
        self.assert_fails("no.pnx: there is no such file; check its name and folder", "packets", "no.pnx")
        self.assert_fails("folder: this is a folder; name the recordings in it", "packets", "folder")
        self.file("a.pnx", b"\x89PNG\r\n\x1a\n\0\0")
        self.penwick("packets", "a.pnx")
        self.assertEqual((self.errors, self.result.returncode), ("penwick: a.pnx: this is a PNG picture, not a recording\n", 1))

    def test_tells_by_the_start_what_standard_input_is(self):
        self.assert_done("packets", "-", input=THREE_POINTS)
        self.assertEqual(self.out.splitlines()[0], line(0, 1, "file descriptor", 6, "00 02 00 00")[:-1])
        self.assert_done("packets", "-", input=b"\n <ink/>")
        self.assertEqual(self.out, "       2  <ink>\n")
        self.assert_done("packets", "--as", "inkml", "-", input=b"<ink/>")
        self.assertEqual(self.out, "       1  <ink>\n")
        self.assert_fails("-: the file is empty (0 bytes)", "packets", "-", input=b"")

    def running(self, file="-", **options):
        return subprocess.Popen([PENWICK, "packets", file], cwd=self.folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, **options)

    def test_prints_what_has_come_before_the_rest_has(self):
        with self.running() as process:
            process.stdin.write(descriptor() + status(1))
            process.stdin.flush()
            self.assertEqual(process.stdout.readline().decode(), line(0, 1, "file descriptor", 6, "00 02 00 00"))
            self.assertEqual(process.stdout.readline().decode(), line(6, 241, "status", 3, "pen down"))
            process.stdin.write(coordinate(5, 0))
            process.stdin.flush()
            self.assertEqual(process.stdout.readline().decode(), line(9, 97, "coordinate", 6, "x 1.0, y 0.5"))
            out, errors = process.communicate()
        self.assertEqual((out, errors, process.returncode), (b"", b"", 0))

    def test_prints_what_has_come_through_a_named_pipe_before_the_rest_has(self):
        os.mkfifo(self.folder / "pipe")
        with self.running("pipe") as process, (self.folder / "pipe").open("wb") as pipe:
            pipe.write(descriptor() + status(1))
            pipe.flush()
            self.assertEqual(process.stdout.readline().decode(), line(0, 1, "file descriptor", 6, "00 02 00 00"))
            self.assertEqual(process.stdout.readline().decode(), line(6, 241, "status", 3, "pen down"))
            pipe.write(coordinate(5, 0))
            pipe.close()
            out, errors = process.communicate()
        self.assertEqual((out.decode(), errors, process.returncode),
                         (line(9, 97, "coordinate", 6, "x 1.0, y 0.5"), b"", 0))

    def test_ends_quietly_when_its_reader_goes(self):
        # As a shell starts it the signal ends it; a program that ignores the signal sees the write fail.
        self.file("a.pnx", descriptor() + coordinate(1, 1) * 200_000)
        for restores in (True, False):
            process = subprocess.Popen([PENWICK, "packets", "a.pnx"], cwd=self.folder, stdout=subprocess.PIPE,
                                       stderr=subprocess.PIPE, restore_signals=restores)
            self.assertEqual(process.stdout.readline().decode(), line(0, 1, "file descriptor", 6, "00 02 00 00"))
            process.stdout.close()
            self.assertEqual(process.stderr.read(), b"")
            process.stderr.close()
            process.wait()
