import json
import os
import pathlib
import shutil
import stat
import subprocess
import xml.dom.minidom

from command import (LOG, MODULE, OTHER_KINDS, PENWICK, THREE_POINTS, TWO_POINTS, CommandTest, coordinate, descriptor,
                     status, stroke)


class OpeningOneFile(CommandTest):
    def test_says_in_one_line_what_it_drew(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.svg")
        # 30 by 38 ink units of 0.2834 pt each
        self.assertEqual(self.out, "a.pnx: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> a.svg\n")

    def test_writes_an_svg_that_is_xml_with_layers_and_one_path_for_each_stroke(self):
        self.file("a.pnx", descriptor() + stroke((0, 10), (100, 200)) + status(0x80) +
                  stroke((50, 60), (70, 80)) + stroke((1, 2), (3, 4)))
        self.assert_done("open", "a.pnx", "-o", "a.svg")
        root = xml.dom.minidom.parse(str(self.folder / "a.svg")).documentElement
        groups = root.getElementsByTagName("g")
        self.assertEqual([g.getAttribute("inkscape:label") for g in groups], ["Layer 1", "Layer 2"])
        self.assertEqual([g.getAttribute("inkscape:groupmode") for g in groups], ["layer"] * 2)
        self.assertEqual([len(g.getElementsByTagName("path")) for g in groups], [1, 2])

    def test_writes_the_art_as_json(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.json")
        art = json.loads((self.folder / "a.json").read_text())
        self.assertEqual(list(art), ["document", "layers"])
        path = art["layers"][0]["art"][0]
        self.assertEqual((path["type"], path["closed"], path["style"]),
                         ("path", False, "kvoaiexportset"))
        self.assertEqual((len(path["segments"]), len(path["tablet"])), (3, 3))

    def test_without_an_output_names_the_drawing_after_the_recording(self):
        self.file("deep/a.pnx")
        self.assert_done("open", "deep/a.pnx")
        self.assertIn("a.svg", self.files())

    def test_keeps_a_drawing_that_already_exists_unless_forced(self):
        self.file("a.pnx")
        self.file("a.svg", b"mine")
        self.assert_done("open", "a.pnx")
        self.assertEqual(self.out, "a.pnx: a.svg already exists and is kept; --force replaces it\n")
        self.assertEqual((self.folder / "a.svg").read_bytes(), b"mine")
        self.assert_done("open", "--force", "a.pnx")
        self.assertNotEqual((self.folder / "a.svg").read_bytes(), b"mine")

    def test_replaces_a_drawing_that_is_named(self):
        self.file("a.pnx")
        self.file("b.svg", b"old")
        self.assert_done("open", "a.pnx", "-o", "b.svg")
        self.assertNotEqual((self.folder / "b.svg").read_bytes(), b"old")

    def test_never_writes_over_the_recording_itself(self):
        self.file("a.svg")
        self.file("a.json")
        for words in (["open", "a.svg", "--force"], ["open", "a.svg", "-o", "./a.svg"],
                      ["ink", "a.json", "-o", "./a.json"],
                      ["open", "a.json", "-o", "b.svg", "--journal", "a.json"]):
            self.penwick(*words)
            self.assertEqual(self.result.returncode, 1)
            self.assertIn("is the recording itself", self.errors)
        for name in ("a.svg", "a.json"):
            self.assertEqual((self.folder / name).read_bytes(), THREE_POINTS)
        self.assertNotIn("b.svg", self.files())

    def test_never_writes_drawing_and_journal_to_one_place(self):
        self.file("a.pnx")
        for drawing, journal in (("a.json", "./a.json"), ("a.json", "no/../a.json")):
            self.assert_fails(f"{journal}: is also where the drawing goes; choose another file",
                              "open", "a.pnx", "-o", drawing, "--journal", journal)
        self.assert_fails("-: is also where the drawing goes; choose another file",
                          "open", "a.pnx", "-o", "-", "--journal", "-")

    def test_writes_clean_data_to_standard_output(self):
        self.file("a.pnx")
        self.penwick("open", "a.pnx", "-o", "-", "--format", "json")
        self.assertEqual(self.result.returncode, 0)
        self.assertEqual(list(json.loads(self.out)), ["document", "layers"])
        self.assertEqual(self.errors, "a.pnx: 1 layer, 1 stroke, 3 points, 3 x 4 mm\n")

    def test_quiet_says_nothing(self):
        self.file("a.pnx")
        self.assert_done("open", "-q", "a.pnx", "-o", "a.svg")
        self.assertEqual(self.out, "")

    def test_verbose_shows_what_the_plug_in_printed(self):
        self.file("a.pnx")
        self.penwick("open", "-v", "a.pnx", "-o", "a.svg")
        self.assertEqual(self.result.returncode, 0)
        self.assertIn("AI Major version 16 , Minor version 0\n", self.errors)
        self.assertIn("there are 1 layers in this document\n", self.errors)
        self.assertIn(str(self.home) + "/.local/share", self.errors)

    def test_a_name_may_be_made_of_any_bytes(self):
        for name in ("with blank.pnx", "Zürich €.pnx", "绘图 𝄞.pnx", os.fsdecode(b"\xff\xc3(.pnx"),
                     "back\\slash.pnx", "-dash.pnx", "new\nline.pnx", "x" * 200 + ".pnx"):
            with self.subTest(name=name):
                path = self.file(name)
                self.assert_done("open", "-q", "./" + name, "-o", "out.svg")
                (self.folder / "out.svg").unlink()
                path.unlink()

    def test_other_endings_are_opened_as_pen_recordings(self):
        for name in ("a.eli", "a.PNX", "a.bin", "a"):
            self.file(name)
            self.assert_done("open", name, "-o", "out.svg")

    def test_a_link_to_the_output_stays_a_link(self):
        self.file("a.pnx")
        self.file("real.svg", b"old")
        (self.folder / "link.svg").symlink_to("real.svg")
        self.assert_done("open", "a.pnx", "-o", "link.svg")
        self.assertTrue((self.folder / "link.svg").is_symlink())
        self.assertNotEqual((self.folder / "real.svg").read_bytes(), b"old")

    def test_the_journal_has_every_call_as_a_line_of_json(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.svg", "--journal", "calls.jsonl")
        lines = [json.loads(line)
                 for line in (self.folder / "calls.jsonl").read_text().splitlines()]
        functions = [line["function"] for line in lines]
        self.assertEqual(functions.count("AcquireSuite"), 104)
        self.assertEqual(functions.count("ReleaseSuite"), 104)
        self.assertEqual(functions.count("SetPathSegments"), 1)
        self.assertFalse({"AI Unicode String Suite", "AI File Path Suite"} &
                         {line["suite"] for line in lines})
        new_art = next(line for line in lines if line["function"] == "NewArt")
        self.assertEqual((new_art["suite"], new_art["version"], new_art["result"]),
                         ("AI Art Suite", 16, 0))

    def test_leaves_no_log_for_a_recording_that_opens(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.svg")
        self.assertEqual(self.files(), {"a.pnx", "a.svg"})

    def test_the_plug_in_alone_writes_the_log(self):
        self.file("a.pnx", b"x")
        self.penwick("open", "a.pnx")
        log = (self.folder / LOG).read_text().splitlines()
        self.assertEqual([line.split("] ")[-1] for line in log], [
            "SEVERE bad packet tag: 1 expected for file descriptor\tFileDescriptor::readFromStream()",
            "SEVERE invalid file descriptor\tPnxParser::parse()"])

    def test_an_output_has_the_usual_permissions(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.svg")
        mask = os.umask(0)
        os.umask(mask)
        self.assertEqual(stat.S_IMODE((self.folder / "a.svg").stat().st_mode), 0o666 & ~mask)

    def test_an_output_has_the_permissions_of_the_one_that_it_replaces(self):
        self.file("a.pnx")
        self.file("a.svg").chmod(0o600)
        self.assert_done("open", "a.pnx", "-o", "a.svg")
        self.assertEqual(stat.S_IMODE((self.folder / "a.svg").stat().st_mode), 0o600)

    def test_the_ending_of_an_output_chooses_the_format_in_any_case(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.SVG")
        self.assertIn(b"<svg", (self.folder / "a.SVG").read_bytes())

    def test_no_name_moves_the_cursor(self):
        self.file("a\n.pnx")
        self.assert_done("open", "a\n.pnx", "-o", "b\r.svg")
        self.assertEqual(self.out, "a?.pnx: 1 layer, 1 stroke, 3 points, 3 x 4 mm -> b?.svg\n")


class Readings(CommandTest):
    def times_opened(self, name, *words):
        """How often the command opens a file."""
        trace = self.folder / "trace"
        subprocess.run(["strace", "-f", "-o", trace, "-e", "trace=open,openat", PENWICK, *words],
                       cwd=self.folder, check=True, capture_output=True, timeout=600,
                       env=dict(os.environ, HOME=str(self.home), ASAN_OPTIONS="detect_leaks=0"))
        return trace.read_text().count(f'{name}"')

    def test_a_recording_is_read_by_the_plug_in_alone_where_nothing_is_said(self):
        self.file("a.pnx", THREE_POINTS + bytes([0x21, 5, 0, 0, 0]))
        self.assertEqual(self.times_opened("a.pnx", "open", "-q", "a.pnx"), 1)

    def test_a_recording_is_read_once_more_to_tell_what_was_left_out(self):
        for content in (THREE_POINTS, THREE_POINTS + bytes([0x21, 5, 0, 0, 0])):
            self.file("a.pnx", content)
            self.assertEqual(self.times_opened("a.pnx", "open", "a.pnx", "--force"), 2)


class Warnings(CommandTest):
    def assert_warns(self, sentence, content):
        self.file("a.pnx", content)
        self.penwick("open", "a.pnx", "-o", "a.svg")
        self.assertEqual((self.result.returncode, self.errors),
                         (0, f"penwick: a.pnx: warning: {sentence}\n"))
        self.assertIn("a.svg", self.files())

    def test_of_a_cut_last_packet(self):
        self.assert_warns("the file ends inside its last packet (byte 36), the missing bytes were "
                          "read as zeros; penwick rescue would save 3 points",
                          THREE_POINTS + bytes([97, 6, 0]))

    def test_of_a_packet_of_length_0(self):
        self.assert_warns("a packet of length 0 (byte 36) ends the recording, nothing after it was "
                          "read; penwick rescue would save 5 points",
                          THREE_POINTS + bytes([0x22, 0x40]) + stroke((1, 2), (3, 4)))

    def test_of_points_left_out(self):
        self.assert_warns("1 point above the sheet left out, the first (byte 36)",
                          THREE_POINTS + coordinate(5, -9))

    def test_of_strokes_of_one_point(self):
        self.assert_warns("2 strokes of a single point not drawn",
                          THREE_POINTS + stroke((1, 2)) + stroke((1, 2)))

    def test_of_strokes_that_are_cut(self):
        points = [(i % 99, 10) for i in range(65540)]
        self.assert_warns("1 stroke of more than 65535 points drawn only in part, penwick convert "
                          "keeps all points", THREE_POINTS + stroke(*points))
        self.assertIn("2 strokes, 7 points", self.out)

    def test_not_of_unknown_tags_unless_verbose(self):
        unknown = bytes([0x21, 5, 0, 0, 0])
        for content in (THREE_POINTS + unknown, THREE_POINTS + unknown + bytes([0x42, 0x42, *[7] * 10])):
            self.file("a.pnx", content)
            self.assert_done("open", "a.pnx", "-o", "a.svg")
        self.penwick("open", "a.pnx", "-o", "a.svg", "--verbose")
        self.assertIn("penwick: a.pnx: note: 2 packets of unknown tags skipped, the first (byte 36)\n",
                      self.errors)

    def test_of_unknown_tags_that_are_as_long_as_a_known_packet_and_occur_once(self):
        for length in (3, 6, 9):
            packet = bytes([0x21, length, *bytes(length - 2)])
            self.assert_warns("1 packet skipped whose tag or length is probably damaged, the first "
                              "(byte 36)", THREE_POINTS + packet)
            self.file("a.pnx", THREE_POINTS + packet * 2)
            self.assert_done("open", "a.pnx", "-o", "a.svg")

    def test_of_unknown_tags_that_hide_known_packets(self):
        hidden = coordinate(5, 6) + coordinate(7, 8)
        self.assert_warns("2 packets skipped whose tag or length is probably damaged, the first "
                          "(byte 41)", THREE_POINTS + bytes([0x21, 5, 0, 0, 0]) +
                          (bytes([0x21, 15, 0]) + hidden) * 2)

    def test_not_of_one_packet_that_an_unknown_tag_holds(self):
        self.file("a.pnx", THREE_POINTS + bytes([0x21, 11, 0]) + coordinate(5, 6) + bytes(2))
        self.assert_done("open", "a.pnx", "-o", "a.svg")

    def test_an_empty_drawing_is_said_to_be_one(self):
        for content, why in ((descriptor(), "the recording has no strokes to draw"),
                             (descriptor() + stroke((1, 2)), "none of the strokes could be drawn")):
            self.file("a.pnx", content)
            self.penwick("open", "a.pnx", "-o", "a.svg")
            self.assertEqual(self.out, f"a.pnx: an empty drawing ({why}) -> a.svg\n")


class BadInput(CommandTest):
    def assert_refused(self, sentence, content):
        self.file("a.pnx", content)
        self.assert_fails(f"a.pnx: {sentence}", "open", "a.pnx", "-o", "a.svg")
        self.assert_fails(f"a.pnx: {sentence}", "ink", "a.pnx", "-o", "a.json")

    def test_a_missing_file(self):
        self.assert_fails("no.pnx: there is no such file; check its name and folder", "open", "no.pnx")

    def test_a_folder(self):
        (self.folder / "a.pnx").mkdir()
        self.assert_fails("a.pnx: there are no recordings (.pnx, .eli, .kvo, .inkml) in this folder",
                          "open", "a.pnx")

    def test_a_file_without_permission(self):
        path = self.file("a.pnx")
        path.chmod(0)
        if os.access(path, os.R_OK):
            # The administrator reads everything; somebody else may not, nor enter the folder of this
            # build perhaps.
            os.chmod(self.folder, 0o777)
            os.chmod(self.home, 0o777)
            for built in (PENWICK, MODULE):
                shutil.copy(built, self.folder)
            options = {"user": 65534, "group": 65534, "extra_groups": [],
                       "program": self.folder / pathlib.Path(PENWICK).name}
        else:
            options = {}
        self.penwick("open", "a.pnx", "-o", "a.svg", **options)
        self.assertEqual((self.result.returncode, self.errors), (
            1, "penwick: a.pnx: permission to read the file is denied; check its permissions\n"))

    def test_an_empty_file(self):
        self.assert_refused("the file is empty (0 bytes)", b"")

    def test_a_text_file(self):
        for content in (b"Hello\n", "Grüße,\r\n\tich".encode(), b"\xef\xbb\xbf1,2\n"):
            self.assert_refused("this is a text file, not a recording", content)

    def test_an_xml_file(self):
        for content in (b"<?xml version='1.0'?><ink/>", b"\xef\xbb\xbf \n<x:ink/>"):
            self.assert_refused("this is an XML document, not a pen recording; an ink document opens "
                                "when its name ends in .kvo or .inkml, in small letters, or with --as "
                                "inkml", content)

    def test_files_of_other_kinds(self):
        for what, content in OTHER_KINDS:
            with self.subTest(what):
                self.assert_refused(f"this is {what}", content)

    def test_a_picture_is_named_as_one_and_not_as_its_own_output(self):
        self.file("a.svg", b"<svg/>")
        self.assert_fails("a.svg: this is an SVG picture, not a recording", "open", "a.svg")
        self.assertEqual((self.folder / "a.svg").read_bytes(), b"<svg/>")

    def test_other_bytes(self):
        self.assert_refused("this is not a pen recording: it begins with 0x89 where 0x01 is expected "
                            "(byte 0)", b"\x89\x00\x01")

    def test_a_wrong_descriptor_length(self):
        self.assert_refused("a file descriptor packet has the length code 0x07, that is 7 bytes, where "
                            "6 are expected (byte 0); the recording is damaged there",
                            bytes([1, 7, 0, 2, 0, 0]))

    def test_a_lone_descriptor_tag(self):
        self.assert_refused("the file ends right after the tag of a file descriptor packet (byte 0); "
                            "its end was lost", b"\x01")

    def test_another_coordinate_format(self):
        self.assert_refused("the file descriptor names a coordinate format other than 2, the only one "
                            "known (byte 3)", descriptor(3))

    def test_a_second_descriptor(self):
        self.assert_refused("a second file descriptor (byte 36); two recordings in one file? Cut it "
                            "there and open the two; penwick rescue would save 3 points",
                            THREE_POINTS + descriptor())

    def test_a_wrong_length(self):
        self.assert_refused("a tilt packet has the length code 0x46, that is 36 bytes, where 6 are "
                            "expected (byte 36); the recording is damaged there; penwick rescue would "
                            "save 3 points",
                            THREE_POINTS + bytes([101, 0x46, 0, 0]))

    def test_a_tag_at_the_end(self):
        self.assert_refused("the file ends right after the tag of a status packet (byte 36); its end "
                            "was lost; penwick rescue would save 3 points",
                            THREE_POINTS + bytes([241]))

    def test_a_bad_pressure_algorithm(self):
        self.assert_refused("a pressure packet names an algorithm other than 1, 5 and 6 (byte 38); the "
                            "recording is damaged there; penwick rescue would save 3 points",
                            THREE_POINTS + bytes([100, 6, 2, 0, 1, 0]))

    def test_a_cut_pressure_packet(self):
        self.assert_refused("the file ends inside a pressure packet (byte 36); its end was lost; "
                            "penwick rescue would save 3 points", THREE_POINTS + bytes([100, 6]))

    def test_a_stroke_that_the_host_refuses(self):
        self.file("a.pnx", TWO_POINTS + stroke(*[(i % 99, 10) for i in range(32001)]))
        self.assert_fails(
            "a.pnx: the plug-in gave up with 'CANT': \"AI Path Suite\" SetPathSegmentCount answered "
            "'SEGM', at stroke 2 of those drawn; a path has at most 32000 points, penwick convert and "
            "penwick ink keep longer strokes", "open", "a.pnx")

    def test_a_device(self):
        for command in (["open"], ["ink"], ["convert"]):
            self.assert_fails("/dev/null: this is a device, not a file; save the recording to a file "
                              "and open that", *command, "/dev/null")

    def test_no_style_library(self):
        self.file("a.pnx")
        self.assert_fails(
            "a.pnx: the plug-in gave up with 'PARM': \"AI Path Style Suite\" ImportStyles answered "
            f"'!Imp'; there is no brush style library at {self.home}/.local/share/Penwick/"
            "brush_pressure.ai, put one there or leave out --no-built-in-library",
            "open", "--no-built-in-library", "a.pnx")


    def test_a_style_library_that_cannot_be_read(self):
        library = self.home / ".local/share/Penwick/brush_pressure.ai"
        library.parent.mkdir(parents=True)
        library.symlink_to(library.name)
        self.file("a.pnx")
        self.penwick("open", "a.pnx", "-o", "a.svg")
        self.assertEqual((self.result.returncode, self.errors), (
            0, f"penwick: a.pnx: warning: the brush style library {library} was not read: it cannot "
            "be opened; expected a native file, level 9 to CS6, that lists the graphic style "
            "TrillowStyle; the built-in library was used instead\n"))

    def test_no_style_library_in_the_data_folder_that_the_environment_names(self):
        self.file("a.pnx")
        self.penwick("open", "--no-built-in-library", "a.pnx",
                     env={"XDG_DATA_HOME": str(self.folder / "data")})
        self.assertIn(f"no brush style library at {self.folder}/data/Penwick/brush_pressure.ai",
                      self.errors)


class BadOutput(CommandTest):
    def setUp(self):
        super().setUp()
        self.file("a.pnx")

    def test_in_a_missing_folder(self):
        for words in (["open"], ["ink"]):
            self.assert_fails("no/a.json: cannot be written: there is no folder 'no'; make it first",
                              *words, "a.pnx", "-o", "no/a.json")
        self.assertFalse((self.folder / "no").exists())

    def test_that_is_a_folder(self):
        (self.folder / "a.svg").mkdir()
        self.assert_fails("a.svg: cannot be written: it is a folder; name a file in it",
                          "open", "a.pnx", "-o", "a.svg")

    def test_on_a_full_disk(self):
        self.assert_fails("/dev/full: cannot be written: No space left on device",
                          "open", "a.pnx", "-o", "/dev/full", "--format", "svg")

    def test_on_a_full_standard_output(self):
        full = "penwick: standard output could not be written; is its device full?\n"
        for words, errors in ((["open", "-q", "a.pnx", "-o", "-"],
                               "penwick: -: standard output could not be written: "
                               "No space left on device\n"),
                              (["open", "a.pnx"], full), (["open", "--help"], full),
                              (["--version"], full)):
            self.assertEqual(self.run_to_full_device(*words), (1, errors))

    def run_to_full_device(self, *words):
        with open("/dev/full", "wb") as full:
            result = subprocess.run([PENWICK, *words], cwd=self.folder, stdout=full,
                                    stderr=subprocess.PIPE, timeout=600, check=False)
        return result.returncode, result.stderr.decode()

    def test_below_a_file(self):
        self.assert_fails("a.pnx/b.svg: cannot be written: Not a directory",
                          "open", "a.pnx", "-o", "a.pnx/b.svg")

    def test_a_folder_that_cannot_be_made(self):
        self.penwick("open", "a.pnx", "--out-dir", "a.pnx/b")
        self.assertEqual(self.result.returncode, 1)
        self.assertTrue(self.errors.startswith("penwick: a.pnx/b: the folder cannot be made: "))


class ManyFiles(CommandTest):
    def test_are_drawn_into_a_folder_that_is_made(self):
        names = [f"{i:03}.pnx" for i in range(200)]
        for name in names:
            self.file(name)
        self.assert_done("open", *names, "--out-dir", "out/deep", "--format", "json")
        made = {path.name for path in (self.folder / "out/deep").iterdir()}
        self.assertEqual(made, {f"{i:03}.json" for i in range(200)})
        self.assertEqual(self.out.count("\n"), 201)

    def test_of_one_name_keep_their_folders(self):
        for name in ("a.pnx", "b/a.pnx", "c/a.eli"):
            self.file(name)
        self.assert_done("open", "a.pnx", "b/a.pnx", "c/a.eli")
        self.assertLessEqual({"a.svg", "b/a.svg", "c/a.svg"}, self.files())

    def test_are_all_done_but_the_bad_ones(self):
        self.file("a.pnx")
        self.file("b.pnx", b"")
        self.file("c.pnx")
        self.penwick("open", "a.pnx", "b.pnx", "missing.pnx", "c.pnx")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual(self.errors, "penwick: b.pnx: the file is empty (0 bytes)\n"
                                      "penwick: missing.pnx: there is no such file; check its "
                                      "name and folder\n")
        self.assertLessEqual({"a.svg", "c.svg"}, self.files())

    def test_do_not_pass_their_kind_on(self):
        self.file("a.kvo", b"<ink/>")
        self.file("b.bin")
        self.assert_done("open", "-q", "a.kvo", "b.bin")
        self.assertLessEqual({"a.svg", "b.svg"}, self.files())


class Modules(CommandTest):
    def test_another_module_may_be_named(self):
        self.file("a.pnx")
        self.assert_done("open", "a.pnx", "-o", "a.svg", "--module", MODULE)

    def test_one_that_is_missing_is_named(self):
        self.file("a.pnx")
        self.penwick("open", "a.pnx", "--module", "no.aip")
        self.assertEqual(self.result.returncode, 1)
        self.assertIn("no.aip", self.errors)
        self.assertEqual(self.errors.count("\n"), 1)

    def test_one_that_is_no_module_is_named(self):
        self.file("a.pnx")
        self.file("bad.aip", b"no module")
        self.penwick("open", "a.pnx", "--module", self.folder / "bad.aip")
        self.assertEqual(self.result.returncode, 1)
        self.assertIn("bad.aip", self.errors)

    def test_the_bundled_one_is_found_from_any_folder(self):
        self.file("a.pnx")
        for folder in (self.folder, self.home):
            script = self.folder / "run"
            script.write_text(f'#!/bin/sh\ncd "{folder}" && exec "{PENWICK}" "$@"\n')
            script.chmod(0o755)
            self.assert_done("open", self.folder / "a.pnx", "-o", self.folder / "a.svg", program=script)
