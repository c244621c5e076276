from command import CommandTest, THREE_POINTS, TRACE, coordinate, descriptor, ink, layer, pressure, status, stroke


class Check(CommandTest):
    def check(self, content, name="a.pnx"):
        self.file(name, content)
        self.penwick("check", name)
        self.assertEqual(self.errors, "")
        self.assertTrue(self.out.startswith(name + ": ") and self.out.endswith("\n"), self.out)
        self.assertEqual(self.out.count("\n"), 1)
        return self.out[len(name) + 2:-1], self.result.returncode

    def test_says_that_recordings_are_sound(self):
        self.assertEqual(self.check(THREE_POINTS), ("sound", 0))
        self.assertEqual(self.check(ink(layer(TRACE)), "a.kvo"), ("sound", 0))
        self.assertEqual(self.check(descriptor()), ("sound", 0))

    def test_says_what_is_worth_knowing_about_sound_recordings(self):
        # y = (-3 + 2.5) / 5 lies above the sheet.
        self.assertEqual(self.check(THREE_POINTS + coordinate(0, -3) + stroke((7, 7))),
                         ("sound; 1 point above the sheet left out, the first (byte 36); "
                          "1 stroke of a single point not drawn", 0))

    def test_says_what_is_lost_of_recordings_that_open(self):
        self.assertEqual(self.check(THREE_POINTS + coordinate(0, 0)[:5])[1], 1)
        self.assertTrue(self.check(THREE_POINTS + coordinate(0, 0)[:5])[0].startswith(
            "opens, with losses: the file ends inside its last packet (byte 36), the missing bytes were read as zeros"))
        sentence, code = self.check(THREE_POINTS + bytes([33, 0x40]) + stroke((1, 1), (2, 2)))
        self.assertTrue(sentence.startswith("opens, with losses: a packet of length 0 (byte 36) ends the recording, "
                                            "nothing after it was read"), sentence)
        self.assertEqual(code, 1)
        sentence, code = self.check(THREE_POINTS + bytes(8))
        self.assertTrue(sentence.startswith("opens, with losses: 8 zero bytes behind the last packet (byte 36)"), sentence)
        self.assertEqual(code, 1)
        sentence, code = self.check(THREE_POINTS[:6] + bytes(2) + THREE_POINTS[6:])
        self.assertTrue(sentence.startswith("opens, with losses: 2 zero bytes between the packets, the first (byte 6)"),
                        sentence)
        self.assertEqual(code, 1)

    def test_says_once_that_an_odd_number_of_zero_bytes_stands_at_the_end(self):
        for count in (1, 7):
            sentence, code = self.check(THREE_POINTS + bytes(count))
            self.assertTrue(sentence.startswith(f"opens, with losses: {count} zero byte"), sentence)
            self.assertNotIn("ends inside its last packet", sentence)
            self.assertEqual((sentence.count("(byte 36)"), code), (1, 1))

    def test_says_what_is_left_out_of_ink_documents(self):
        self.assertEqual(self.check(ink(layer(TRACE) + layer(TRACE, "group1")), "a.kvo"),
                         ('opens, with losses: 1 group without an id of the form "layer0" with 1 trace left empty, '
                          'which extends the page to the origin (line 1); penwick rescue would save 6 points', 1))

    def test_says_why_recordings_do_not_open_and_what_a_rescue_would_save(self):
        sound = descriptor() + b"".join(stroke(*((10 * i + k, 20 * i + k) for k in range(8))) for i in range(4))
        sentence, code = self.check(sound + bytes([97, 7, 0, 0, 0, 0]) + stroke(*((k, k) for k in range(8))))
        self.assertTrue(sentence.startswith(
            f"does not open: a coordinate packet has the length code 0x07, that is 7 bytes, where 6 are expected "
            f"(byte {len(sound)}); the recording is damaged there; penwick rescue would save "), sentence)
        self.assertTrue(sentence.endswith(" points"), sentence)
        self.assertEqual(code, 1)

    def test_says_what_files_that_are_no_recordings_are(self):
        self.assertEqual(self.check(b""), ("does not open: the file is empty (0 bytes)", 1))
        self.assertEqual(self.check(b"x,y\n1,2\n"), ("does not open: this is a text file, not a recording", 1))
        self.penwick("check", "missing.pnx")
        self.assertEqual((self.out + self.errors, self.result.returncode), (
            "missing.pnx: does not open: there is no such file; check its name and folder\n", 1))

    def test_leaves_it_to_the_plug_in_what_opens(self):
        # A stroke of more points than a path of the host may have is read well, but not drawn.
        many = descriptor() + status(1) + b"".join(coordinate(k % 100, 50) for k in range(32001))
        sentence, code = self.check(many)
        self.assertTrue(sentence.startswith("does not open: the plug-in gave up with "), sentence)
        self.assertIn("a path has at most 32000 points", sentence)
        self.assertEqual(code, 1)

    def test_is_done_only_where_all_are_sound(self):
        self.file("a.pnx")
        self.file("b.pnx")
        self.assert_done("check", "a.pnx", "b.pnx")
        self.assertEqual(self.out, "a.pnx: sound\nb.pnx: sound\n")
        self.file("c.pnx", b"")
        self.penwick("check", "c.pnx", "b.pnx")
        self.assertEqual(self.out, "c.pnx: does not open: the file is empty (0 bytes)\nb.pnx: sound\n")
        self.assertEqual(self.result.returncode, 1)

    def test_takes_folders(self):
        self.file("folder/a.pnx")
        self.file("folder/deep/b.kvo", b"<ink/>")
        self.assert_done("check", "folder")
        self.assertEqual(sorted(self.out.splitlines()), ["folder/a.pnx: sound", "folder/deep/b.kvo: sound"])

    def test_can_leave_out_what_is_sound(self):
        self.file("a.pnx")
        self.file("b.pnx", b"")
        self.penwick("check", "--quiet", "a.pnx", "b.pnx")
        self.assertEqual(self.out, "b.pnx: does not open: the file is empty (0 bytes)\n")

    def test_reads_standard_input(self):
        self.assert_done("check", "-", input=THREE_POINTS)
        self.assertEqual(self.out, "-: sound\n")

    def test_writes_no_files(self):
        self.file("a.pnx", descriptor() + pressure(1) + b"\1")
        self.penwick("check", "a.pnx")
        self.assertEqual(self.files(), {"a.pnx"})
