import json
import os
import subprocess

from command import PENWICK, THREE_POINTS, TRACE, CommandTest, coordinate, descriptor, ink, layer, status, stroke

POINTS = 40

# A stroke of 40 points. The descriptor takes 6 bytes, pen-up and pen-down 3 each; the first point is
# at byte 12, its pressure at 18, and the further points at 24, 30 and so on.
SOUND = descriptor() + stroke(*[(1000 + 40 * i, 2000 + 3 * i) for i in range(POINTS)])


def place_of(point):
    return 12 if point == 0 else 18 + 6 * point


def damaged(*points, sound=SOUND):
    """The length codes of these points are wrong: 51 bytes each."""
    content = bytearray(sound)
    for point in points:
        content[place_of(point) + 1] = 0x33
    return bytes(content)


def without(*points):
    content = bytearray(SOUND)
    for point in reversed(points):
        del content[place_of(point):place_of(point) + 6]
    return bytes(content)


DAMAGED = damaged(10)
MENDED = without(10)
# Point 10 is at byte 78.
KEPT = "39 of about 40 points kept, 1 stretch left out (bytes 78-83)"
DOES_NOT_OPEN = ("a coordinate packet has the length code 0x33, that is 51 bytes, where 6 are expected (byte 78); "
                 "the recording is damaged there")


class RescueTest(CommandTest):
    def read(self, name):
        return (self.folder / name).read_bytes()

    def opens_whole(self, name):
        """The plug-in opens it, and there is no warning."""
        self.assert_done("open", name, "-o", "-", "--format", "json", "-q")
        self.assert_done("open", name, "-o", "drawn.svg")


class ASoundRecordingThatLooksDamaged(RescueTest):
    # Point 20, at byte 138, is more than 1 m away from its neighbours.
    LEAPING = SOUND[:138] + coordinate(31000, 2060) + SOUND[144:]

    def setUp(self):
        super().setUp()
        self.file("a.pnx", self.LEAPING)

    def test_is_left_as_it_is(self):
        self.assert_done("rescue", "a.pnx")
        self.assertEqual(self.out, "a.pnx: sound, 40 points, nothing to mend\n")

    def test_is_mended_where_that_is_asked_for(self):
        self.assert_done("rescue", "--thorough", "a.pnx")
        self.assertEqual(self.out, "a.pnx: 39 of about 40 points kept, 1 stretch left out (bytes 138-143) "
                                   "-> a.rescued.pnx\n")
        self.assertEqual(self.read("a.rescued.pnx"), without(20))
        self.assertEqual(self.read("a.pnx"), self.LEAPING)

    def test_that_does_not_look_so_is_left_as_it_is_all_the_same(self):
        self.file("b.pnx", SOUND)
        self.assert_done("rescue", "--thorough", "b.pnx")
        self.assertEqual(self.out, "b.pnx: sound, 40 points, nothing to mend\n")


class OneDamagedRecording(RescueTest):
    def test_is_mended_beside_the_work_and_said_in_one_line(self):
        self.file("deep/a.pnx", DAMAGED)
        self.assert_done("rescue", "deep/a.pnx")
        self.assertEqual(self.out, f"deep/a.pnx: {KEPT} -> a.rescued.pnx\n")
        self.assertEqual(self.read("a.rescued.pnx"), MENDED)
        self.assertEqual(self.read("deep/a.pnx"), DAMAGED)
        self.opens_whole("a.rescued.pnx")

    def test_keeps_its_ending(self):
        for name in ("a.eli", "b.PNX", "c"):
            self.file(name, DAMAGED)
            self.assert_done("rescue", name)
            stem, dot, ending = name.partition(".")
            self.assertEqual(self.read(f"{stem}.rescued{dot}{ending}"), MENDED)

    def test_goes_where_it_is_told(self):
        self.file("a.pnx", DAMAGED)
        self.assert_done("rescue", "a.pnx", "-o", "b.pnx")
        self.assertEqual(self.out, f"a.pnx: {KEPT} -> b.pnx\n")
        self.assertEqual(self.read("b.pnx"), MENDED)

    def test_goes_to_standard_output_with_the_line_on_standard_error(self):
        self.file("a.pnx", DAMAGED)
        self.penwick("rescue", "a.pnx", "-o", "-")
        self.assertEqual((self.result.returncode, self.result.stdout), (0, MENDED))
        self.assertEqual(self.errors, f"a.pnx: {KEPT}\n")

    def test_comes_from_standard_input(self):
        self.assert_done("rescue", "-", "-o", "b.pnx", input=DAMAGED)
        self.assertEqual(self.out, f"-: {KEPT} -> b.pnx\n")
        self.assertEqual(self.read("b.pnx"), MENDED)

    def test_comes_through_a_pipe(self):
        os.mkfifo(self.folder / "pipe")
        with subprocess.Popen(["sh", "-c", "cat >pipe"], cwd=self.folder, stdin=subprocess.PIPE) as writer:
            writer.stdin.write(DAMAGED)
            writer.stdin.close()
            self.assert_done("rescue", "pipe", "-o", "b.pnx")
        self.assertEqual(self.read("b.pnx"), MENDED)

    def test_is_mended_without_a_word_where_quiet_is_asked_for(self):
        self.file("a.pnx", DAMAGED)
        self.assert_done("rescue", "-q", "a.pnx")
        self.assertEqual(self.out, "")
        self.assertEqual(self.read("a.rescued.pnx"), MENDED)

    def test_is_read_as_the_kind_that_is_named(self):
        self.file("a.kvo", DAMAGED)
        self.assert_done("rescue", "a.kvo", "--as", "pen", "-o", "b.pnx")
        self.assertEqual(self.read("b.pnx"), MENDED)

    def test_has_a_short_list_of_many_stretches(self):
        self.file("a.pnx", damaged(10, 15, 20, 25, 30))
        self.assert_done("rescue", "a.pnx")
        self.assertEqual(self.out, "a.pnx: 35 of about 40 points kept, 5 stretches left out (bytes 78-83, 108-113, "
                                   "138-143 and 2 more) -> a.rescued.pnx\n")

    def test_says_what_was_put_right(self):
        # 3338 is 0D 0A.
        lines = descriptor() + stroke(*[(1000 + 40 * i, 3338 - i % 3) for i in range(POINTS)])
        for content, mended, words in (
                (lines.replace(b"\n", b"\r\n"), lines,
                 "40 points kept, carriage returns that a transfer put in taken out"),
                (b"\x55" + SOUND[1:], SOUND, "40 points kept, file descriptor put right"),
                (SOUND + lines, None,
                 "80 points kept, 1 further recording made layers, 1 stretch left out (bytes 258-263)")):
            self.file("a.pnx", content)
            self.penwick("rescue", "a.pnx", "--force")
            self.assertEqual((self.result.returncode, self.errors), (0, ""))
            self.assertEqual(self.out, f"a.pnx: {words} -> a.rescued.pnx\n")
            if mended is not None:
                self.assertEqual(self.read("a.rescued.pnx"), mended)

    def test_cannot_move_the_cursor_by_its_name(self):
        self.file("a\n.pnx", DAMAGED)
        self.assert_done("rescue", "a\n.pnx")
        self.assertEqual(self.out, f"a?.pnx: {KEPT} -> a?.rescued.pnx\n")


class ALargeFile(RescueTest):
    def test_gets_no_advice_for_which_all_of_it_would_have_to_be_read(self):
        os.truncate(self.file("a.pnx", DAMAGED), 64 * 2 ** 20 + 1)
        self.penwick("open", "a.pnx")
        self.assertIn("the recording is damaged there", self.errors)
        self.assertNotIn("penwick rescue", self.errors)


class ASoundRecording(RescueTest):
    ODD = (SOUND + bytes([0x77, 14]) + coordinate(1, 1) * 2 + coordinate(30000, -30000) + status(0x80) +
           SOUND[12:] + SOUND[12:] + bytes([0x42, 0]))

    def test_is_left_alone(self):
        self.file("a.pnx", SOUND)
        self.assert_done("rescue", "a.pnx")
        self.assertEqual(self.out, "a.pnx: sound, 40 points, nothing to mend\n")
        self.assertEqual(self.files(), {"a.pnx"})

    def test_loses_the_zero_bytes_that_fill_its_file(self):
        self.file("a.pnx", SOUND + bytes(512))
        self.assert_done("rescue", "a.pnx", "-o", "b.pnx")
        self.assertEqual(self.out, f"a.pnx: 40 points kept, 1 stretch left out (bytes {len(SOUND)}-"
                                   f"{len(SOUND) + 511}) -> b.pnx\n")
        self.assertEqual(self.read("b.pnx"), SOUND)

    def test_is_copied_unchanged_to_a_place_that_is_named(self):
        self.file("a.pnx", self.ODD)
        self.assert_done("rescue", "a.pnx", "-o", "b.pnx")
        self.assertEqual(self.out, "a.pnx: sound, 121 points, copied unchanged -> b.pnx\n")
        self.assertEqual(self.read("b.pnx"), self.ODD)

    def test_makes_a_folder_complete(self):
        self.file("in/a.pnx", SOUND)
        self.file("in/b.pnx", DAMAGED)
        self.file("in/c.kvo", ink(layer(TRACE)))
        self.assert_done("rescue", "in/a.pnx", "in/b.pnx", "in/c.kvo", "--out-dir", "out")
        self.assertEqual(self.out, "in/a.pnx: sound, 40 points, copied unchanged -> out/a.pnx\n"
                                   f"in/b.pnx: {KEPT} -> out/b.pnx\n"
                                   "in/c.kvo: sound, 3 points, copied unchanged -> out/c.kvo\n3 done\n")
        self.assertEqual((self.read("out/a.pnx"), self.read("out/b.pnx"), self.read("out/c.kvo")),
                         (SOUND, MENDED, ink(layer(TRACE))))


    def test_of_one_name_in_two_folders_keeps_it(self):
        for name in ("in/a.pnx", "in/a.kvo", "in/deep/a.pnx"):
            self.file(name, ink(layer(TRACE)) if name.endswith("kvo") else SOUND)
        self.assert_done("rescue", "in", "--out-dir", "out")
        self.assertEqual({name for name in self.files() if name.startswith("out")},
                         {"out/a.pnx", "out/a.kvo", "out/deep/a.pnx"})


class AnInkDocument(RescueTest):
    def test_that_is_cut_is_mended(self):
        trace = '<trace contextRef="#c">' + ",".join(f"{i} {2 * i} 0 512 0 0 {i}" for i in range(30)) + "</trace>"
        whole = ink(layer(trace * 2)).replace(b"</tracegroup></ink>", b"")
        self.file("a.kvo", whole + b'<trace contextRef="#c">500 600 0 5')
        self.file("whole.kvo", ink(layer(trace * 2)))
        self.assert_done("rescue", "a.kvo")
        self.assertRegex(self.out, r"^a.kvo: 60 (of about 6\d )?points kept, .* -> a.rescued.kvo\n$")
        self.opens_whole("a.rescued.kvo")
        art = {}
        for words in (["a.rescued.kvo"], ["whole.kvo"], ["--rescue", "a.kvo"]):
            self.penwick("open", *words, "-q", "-o", "-", "--format", "json")
            art[words[-1]] = self.out
        self.assertEqual(art["a.rescued.kvo"], art["whole.kvo"])
        self.assertEqual(art["a.kvo"], art["whole.kvo"])

    def test_in_another_encoding_is_converted(self):
        text = ('<?xml version="1.0" encoding="%s"?>\n<ink>\n<annotation type="title">\u00e9</annotation>'
                + layer(TRACE) + "</ink>\n")
        for name, encoding in (("UTF-16", "utf-16"), ("Latin-1", "iso-8859-1"), ("Windows-1252", "windows-1252")):
            self.file("a.kvo", (text % encoding).encode(encoding))
            self.assert_done("rescue", "a.kvo", "--force")
            self.assertEqual(self.out, f"a.kvo: 3 points kept, converted from {name} to UTF-8 -> a.rescued.kvo\n")
            self.assertEqual(self.read("a.rescued.kvo"), (text % "UTF-8").encode())
            self.opens_whole("a.rescued.kvo")

    def test_behind_another_one_keeps_its_own_definitions(self):
        context = '<definitions><context id="c" brushRef="#b" traceFormatRef="#f"/></definitions>'
        first, second = (ink(context.replace("#b", brush) + layer(TRACE)) for brush in ("#one", "#two"))
        self.file("a.kvo", first + second)
        self.assert_done("rescue", "a.kvo")
        self.assertIn("1 further document made layers", self.out)
        self.assertIn("1 definition given another id", self.out)
        self.assertIn(b'<context id="c-2" brushRef="#two"', self.read("a.rescued.kvo"))

    def test_from_a_pipe_leaves_no_temporary_file(self):
        temporary = self.folder / "temporary"
        temporary.mkdir()
        content = ink(layer(TRACE))[:-20]
        self.penwick("open", "--rescue", "-", "-o", "a.svg", input=content, env={"TMPDIR": str(temporary)})
        self.assertEqual((self.result.returncode, list(temporary.iterdir())), (0, []))
        self.assertIn("rescued: ", self.out)

    def test_that_does_not_open_says_what_could_be_saved(self):
        self.file("a.kvo", ink(layer(TRACE))[:-20])
        self.penwick("open", "a.kvo")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, r"^penwick: a.kvo: its XML is broken: .*; penwick rescue would save 3 points\n$")


class WhatIsNotOverwritten(RescueTest):
    def test_the_damaged_recording_by_any_of_its_names(self):
        self.file("a.pnx", DAMAGED)
        (self.folder / "link.pnx").symlink_to("a.pnx")
        (self.folder / "hard.pnx").hardlink_to(self.folder / "a.pnx")
        for words in (["a.pnx", "-o", "a.pnx"], ["a.pnx", "-o", "home/../a.pnx"], ["a.pnx", "-o", "link.pnx"],
                      ["a.pnx", "-o", "hard.pnx"], ["link.pnx", "-o", "a.pnx"], ["a.pnx", "--out-dir", "."]):
            self.penwick("rescue", "--force", *words)
            self.assertEqual(self.result.returncode, 1)
            self.assertIn("is the recording itself; choose another output", self.errors)
            self.assertEqual(self.read("a.pnx"), DAMAGED)

    def test_the_damaged_recording_on_standard_input(self):
        path = self.file("a.pnx", DAMAGED)
        with path.open("rb") as stream:
            self.assert_fails("a.pnx: is the recording itself; choose another output",
                              "rescue", "-", "-o", "a.pnx", "--force", stdin=stream)
        self.assertEqual(self.read("a.pnx"), DAMAGED)

    def test_another_recording_that_is_read(self):
        self.file("a.pnx", DAMAGED)
        self.file("a.rescued.pnx", SOUND)
        self.penwick("rescue", "--force", "a.pnx", "a.rescued.pnx")
        self.assertEqual(self.result.returncode, 1)
        self.assertIn("a.rescued.pnx: is one of the recordings to be read; choose another output", self.errors)
        self.assertEqual(self.read("a.rescued.pnx"), SOUND)

    def test_a_recording_that_already_exists(self):
        self.file("a.pnx", DAMAGED)
        self.file("a.rescued.pnx", SOUND)
        self.assert_fails("a.rescued.pnx: is another recording; use --force to overwrite it",
                          "rescue", "a.pnx", "-o", "a.rescued.pnx")
        self.assert_done("rescue", "a.pnx")
        self.assertEqual(self.out, "a.pnx: a.rescued.pnx already exists and is kept; --force replaces it\n")
        self.assertEqual(self.read("a.rescued.pnx"), SOUND)
        self.assert_done("rescue", "a.pnx", "--on-conflict", "number")
        self.assertEqual(self.read("a.rescued-2.pnx"), MENDED)
        self.assert_done("rescue", "--force", "a.pnx")
        self.assertEqual(self.read("a.rescued.pnx"), MENDED)

    def test_the_link_by_which_a_result_is_named(self):
        self.file("a.pnx", DAMAGED)
        self.file("real.pnx", b"old")
        (self.folder / "link.pnx").symlink_to("real.pnx")
        self.assert_done("rescue", "--force", "a.pnx", "-o", "link.pnx")
        self.assertTrue((self.folder / "link.pnx").is_symlink())
        self.assertEqual(self.read("real.pnx"), MENDED)


class WhatCannotBeSaved(RescueTest):
    def test_is_said_and_leaves_nothing(self):
        for content, sentence in ((b"", "the file is empty (0 bytes)"),
                                  (b"x,y\n1,2\n", "this is a text file, not a recording"),
                                  (b"\x89PNG\r\n\x1a\n\0\0", "this is a PNG picture, not a recording"),
                                  (descriptor() + b"\x61", "nothing could be saved: no points can be made out in it"),
                                  (bytes(5000), "nothing could be saved: no points can be made out in it")):
            self.file("a.pnx", content)
            self.assert_fails(f"a.pnx: {sentence}", "rescue", "a.pnx")
            self.assert_fails(f"a.pnx: {sentence}", "rescue", "a.pnx", "-o", "b.pnx")

    def test_does_not_keep_the_others_from_being_done(self):
        self.file("b.pnx", DAMAGED)
        self.penwick("rescue", "a.pnx", "home", "b.pnx")
        self.assertEqual((self.result.returncode, self.errors),
                         (1, "penwick: a.pnx: there is no such file; check its name and folder\n"
                             "penwick: home: there are no recordings (.pnx, .eli, .kvo, .inkml) in this folder\n"))
        self.assertEqual(self.read("b.rescued.pnx"), MENDED)

    def test_of_a_damaged_ink_document(self):
        self.file("a.kvo", b"<ink><tracegroup>")
        self.penwick("rescue", "a.kvo")
        self.assertEqual(self.result.returncode, 1)
        self.assertRegex(self.errors, "^penwick: a.kvo: its XML is broken: .*\n$")
        self.assertEqual(self.files(), {"a.kvo"})


class WrongUse(RescueTest):
    def test_of_names(self):
        self.file("a.pnx", DAMAGED)
        for words, sentence in ((["-"], "a result of standard input cannot be named after it; use -o"),
                                (["a.pnx", "a.pnx", "-o", "b.pnx"], "-o takes one FILE; use --out-dir for several"),
                                (["a.pnx", "-o", "b.svg"], "'b.svg' is not a name for a recording; give it the "
                                                           "ending of the damaged one"),
                                (["a.pnx", "--json", "-o", "-"], "--json and -o - both go to standard output; name "
                                                                 "a file for one of them")):
            self.assert_fails(sentence, "rescue", *words, status=2)

    def test_of_a_name_by_which_it_would_be_read_as_another_kind(self):
        self.file("a.pnx", DAMAGED)
        self.assert_fails("b.kvo: by this name a pen recording would be taken for an ink document; choose one that "
                          "ends in .pnx", "rescue", "a.pnx", "-o", "b.kvo")
        self.file("a.kvo", ink(layer(TRACE)))
        self.assert_fails("b: by this name an ink document would be taken for a pen recording; choose one that "
                          "ends in .kvo", "rescue", "a.kvo", "-o", "b")


class Json(RescueTest):
    def test_is_a_line_for_each_file_with_every_stretch(self):
        self.file("a.pnx", damaged(10, 15, 20, 25))
        self.file("b.pnx", SOUND)
        self.file("c.pnx", b"")
        self.penwick("rescue", "--json", "a.pnx", "b.pnx", "c.pnx")
        self.assertEqual((self.result.returncode, self.errors), (1, "penwick: c.pnx: the file is empty (0 bytes)\n"))
        self.assertEqual([json.loads(line) for line in self.out.splitlines()], [
            {"file": "a.pnx", "kind": "pen", "sound": False, "saved": True, "output": "a.rescued.pnx",
             "problem": None, "pointsKept": 36, "pointsAbout": 40,
             "leftOut": [{"begin": begin, "end": begin + 6, "reason": "cannot be read"}
                         for begin in (78, 108, 138, 168)],
             "repairs": []},
            {"file": "b.pnx", "kind": "pen", "sound": True, "saved": True, "output": None, "problem": None,
             "pointsKept": 40, "pointsAbout": 40, "leftOut": [], "repairs": []},
            {"file": "c.pnx", "kind": "pen", "sound": False, "saved": False, "output": None,
             "problem": "the file is empty (0 bytes)", "pointsKept": 0, "pointsAbout": 0, "leftOut": [],
             "repairs": []}])
        self.assertEqual(self.files(), {"a.pnx", "b.pnx", "c.pnx", "a.rescued.pnx"})

    def test_is_printed_though_quiet_is_asked_for(self):
        self.file("a.pnx", SOUND)
        self.assert_done("rescue", "-q", "--json", "a.pnx", "-o", "b.pnx")
        self.assertEqual(json.loads(self.out)["output"], "b.pnx")

    def test_has_nothing_but_json_on_standard_output(self):
        self.file("a.pnx", DAMAGED)
        self.file("a.rescued.pnx", SOUND)
        self.file("b.pnx", SOUND)
        self.penwick("rescue", "--json", "a.pnx", "b.pnx")
        self.assertEqual((self.result.returncode, self.errors),
                         (0, "a.pnx: a.rescued.pnx already exists and is kept; --force replaces it\n"))
        self.assertEqual([json.loads(line)["file"] for line in self.out.splitlines()], ["b.pnx"])

    def test_that_cannot_be_printed_is_an_error(self):
        self.file("a.pnx", DAMAGED)
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PENWICK, "rescue", "--json", "a.pnx"], cwd=self.folder, stdout=full,
                                  stderr=subprocess.PIPE, env=dict(os.environ, HOME=str(self.home)), timeout=600,
                                  check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"standard output could not be written", done.stderr)


class OnTheWay(RescueTest):
    def test_open_draws_what_can_be_saved(self):
        self.file("a.pnx", DAMAGED)
        self.file("mended.pnx", MENDED)
        self.assert_done("open", "--rescue", "a.pnx", "-o", "a.json")
        # 39 steps of 40 along x are 1560 / 10; 39 of 3 along y are 117 / 5; 0.1 mm each.
        self.assertEqual(self.out, f"a.pnx: 1 layer, 1 stroke, 39 points, 16 x 2 mm; rescued: {KEPT} -> a.json\n")
        self.assert_done("open", "-q", "mended.pnx", "-o", "mended.json")
        self.assertEqual(self.read("a.json"), self.read("mended.json"))
        self.assertEqual(self.files(), {"a.pnx", "mended.pnx", "a.json", "mended.json"})

    def test_open_takes_a_pipe(self):
        self.assert_done("open", "--rescue", "-", "-o", "a.svg", input=DAMAGED)
        self.assertEqual(self.out, f"-: 1 layer, 1 stroke, 39 points, 16 x 2 mm; rescued: {KEPT} -> a.svg\n")

    def test_convert_writes_what_can_be_saved(self):
        self.file("a.pnx", DAMAGED)
        self.assert_done("convert", "--rescue", "a.pnx")
        self.assertEqual(self.out, f"a.pnx: 1 layer, 1 stroke; rescued: {KEPT} -> a.kvo\n")
        self.assertEqual(self.read("a.kvo").count(b","), self.commas_of(MENDED))

    def commas_of(self, content):
        self.file("whole.pnx", content)
        self.assert_done("convert", "-q", "whole.pnx")
        return self.read("whole.kvo").count(b",")

    def test_ink_shows_what_can_be_saved(self):
        self.file("a.pnx", DAMAGED)
        self.penwick("ink", "--rescue", "a.pnx")
        self.assertEqual((self.result.returncode, self.errors), (0, f"penwick: a.pnx: note: rescued: {KEPT}\n"))
        points = json.loads(self.out)["layers"][0]["strokes"][0]["points"]
        # (r + 5) / 10 for x, of every point but the eleventh
        self.assertEqual([point[0] for point in points],
                         [(1000 + 40 * i + 5) / 10 for i in range(POINTS) if i != 10])
        self.penwick("ink", "-q", "--rescue", "a.pnx")
        self.assertEqual((self.result.returncode, self.errors), (0, ""))

    def test_a_sound_recording_is_read_as_it_is(self):
        self.file("a.pnx")
        self.assert_done("open", "--rescue", "a.pnx", "-o", "a.svg")
        self.assertEqual(self.out, "a.pnx: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> a.svg\n")

    def test_what_cannot_be_saved_gets_the_usual_error(self):
        self.file("a.pnx", b"")
        self.assert_fails("a.pnx: the file is empty (0 bytes)", "open", "--rescue", "a.pnx")
        self.assert_fails("b.pnx: there is no such file; check its name and folder", "open", "--rescue", "b.pnx")

    def test_without_it_every_command_says_what_could_be_saved(self):
        self.file("a.pnx", DAMAGED)
        for words in (["open", "a.pnx"], ["convert", "a.pnx"], ["ink", "a.pnx"]):
            self.assert_fails(f"a.pnx: {DOES_NOT_OPEN}; penwick rescue would save 39 of about 40 points", *words)

    def test_a_packet_of_length_0_hides_what_could_be_saved(self):
        self.file("a.pnx", THREE_POINTS + bytes([0x22, 0x40]) + stroke((1, 2), (3, 4)))
        self.penwick("ink", "a.pnx")
        self.assertIn("nothing after it was read; penwick rescue would save 5 points\n", self.errors)
        self.penwick("ink", "--rescue", "a.pnx")
        self.assertEqual(self.errors, "penwick: a.pnx: note: rescued: 5 points kept, 1 stretch left out (bytes 36-37)\n")
