"""What names and texts of somebody else can do in a terminal, a picture, a page or JSON: nothing."""
import json
import os
import re
import zlib

from command import CommandTest, THREE_POINTS, TRACE, ink, layer

# An escape sequence, a bell, a C1 introducer, overrides and isolates of direction, separators, a byte-order mark and
# markup, which is turned into text.
HOSTILE = "a\x1b[31m\x07\x9b2J\u202eb\u2066c\u200f\u061c\u2028d\ufeff\r\n\te<script>f</script>&\"'"
HARMFUL = re.compile("[\x00-\x08\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ufeff]")
NAMES = tuple(HOSTILE.replace("/", "|") + end for end in (".pnx", ".kvo"))


def references(text):
    return "".join(f"&#{ord(character)};" for character in text)


def document(text):
    annotations = "".join(f'<annotation type="{kind}">{text}</annotation>' for kind in ("title", "name", text))
    definitions = (f'<definitions><traceFormat id="c"/><brush id="c"><annotationXML><color>{text}</color>'
                   '</annotationXML></brush><context id="c" brushRef="#c" traceFormatRef="#c"/></definitions>')
    return ink(annotations + definitions + layer(annotations + TRACE) + layer(TRACE, text))


def texts_of_pdf(pdf):
    """What the file says outside its streams, and its streams unpacked."""
    found = re.findall(rb"\nstream\r?\n(.*?)endstream", pdf, re.DOTALL)
    unpacked = []
    for stream in found:
        try:
            unpacked.append(zlib.decompressobj().decompress(stream))
        except zlib.error:
            unpacked.append(stream)
    return re.sub(rb"\nstream\r?\n.*?endstream", b"", pdf, flags=re.DOTALL), unpacked


class Harmless(CommandTest):
    def setUp(self):
        super().setUp()
        pen, other = NAMES
        self.file(pen, THREE_POINTS)
        self.file(other, document(references(HOSTILE)))

    def assert_harmless(self, text, what):
        found = HARMFUL.search(text)
        self.assertIsNone(found, (what, found and text[max(0, found.start() - 60):found.end() + 20]))

    def made(self, *words):
        """What the command writes to standard output; what it says is harmless."""
        self.penwick(*words)
        self.assertNotEqual(self.result.returncode, 2, self.errors)
        self.assert_harmless(self.errors, words)
        self.assertNotEqual(self.out, "", (words, self.errors))
        return self.out

    def test_what_is_printed_about_a_file_is_harmless(self):
        for name in NAMES:
            for words in (["info"], ["check"], ["packets"], ["open"], ["open", "--verbose", "--force"], ["convert", "--force"],
                          ["rescue", "--out-dir", "saved"]):
                command, *options = words
                self.penwick(command, name, *options)
                self.assert_harmless(self.out + self.errors, words)
                self.assertNotEqual(self.out + self.errors, "", words)

    def test_what_is_printed_about_words_is_harmless(self):
        for words in ([HOSTILE], ["open", HOSTILE], ["open", "--" + HOSTILE], ["open", NAMES[0], "--style", HOSTILE],
                      ["open", NAMES[0], "--format", HOSTILE], ["open", NAMES[0], "-o", HOSTILE],
                      ["open", NAMES[0], "--background", HOSTILE], ["open", NAMES[0], "--module", HOSTILE],
                      ["open", NAMES[0], "--out-dir", HOSTILE + "/a/../b"], ["info", "--as", HOSTILE, NAMES[0]],
                      ["open", NAMES[0], "--log-dir", HOSTILE + "\x1b/x", "--verbose"]):
            self.penwick(*words)
            self.assert_harmless(self.out + self.errors, words)
            self.assertNotEqual(self.out + self.errors, "", words)

    def test_a_hostile_file_that_does_not_open_is_named_harmlessly(self):
        for ending, content in ((".pnx", b"\x1b[2J"), (".kvo", document(references(HOSTILE))[:-5]),
                                (".inkml", b"<\x1b[2J\xe2\x80\xae"), (".txt", HOSTILE.encode())):
            name = "b" + NAMES[0][:-4] + ending
            self.file(name, content)
            for command in ("open", "check", "info", "packets", "ink", "convert", "rescue"):
                self.penwick(command, name)
                self.assertNotEqual(self.result.returncode, 2, self.errors)
                self.assert_harmless(self.out + self.errors, (command, ending))

    def test_json_holds_every_text_and_prints_none_of_them_raw(self):
        pen, other = NAMES
        for command in (["info", "--json"], ["packets", "--json"], ["ink"], ["open", "-o", "-", "--format", "json"]):
            for name in NAMES:
                self.assert_harmless(self.made(command[0], name, *command[1:]), (command, name))
        self.assertEqual(json.loads(self.made("info", "--json", pen))["file"], pen)
        kept = json.loads(self.made("ink", other))
        self.assertEqual(kept["layers"][0]["annotations"]["name"], HOSTILE)
        self.assertEqual(kept["annotations"][HOSTILE], HOSTILE)

    def test_the_journal_is_harmless(self):
        self.penwick("open", NAMES[1], "--journal", "calls.jsonl")
        journal = (self.folder / "calls.jsonl").read_text(encoding="utf-8")
        self.assertGreater(len(journal), 100)
        self.assert_harmless(journal, "journal")

    def test_the_log_is_harmless(self):
        self.file("b" + NAMES[0], b"\x02\x1b[2J")
        self.penwick("open", "b" + NAMES[0], "--log-dir", "logs")
        self.assert_harmless((self.folder / "logs/orvo.log").read_text(encoding="utf-8"), "log")

    def test_pictures_and_pages_are_harmless(self):
        for name in NAMES:
            for ending in ("svg", "html"):
                self.penwick("open", name, "-o", "picture." + ending, "--force")
                text = (self.folder / f"picture.{ending}").read_text(encoding="utf-8")
                self.assertGreater(len(text), 100)
                self.assert_harmless(text, (name, ending))
                self.assertNotIn("<script>f", text)

    def test_contact_sheets_are_harmless(self):
        self.made("sheet", *NAMES, "-o", "sheet.html", "--title", HOSTILE)
        text = (self.folder / "sheet.html").read_text(encoding="utf-8")
        self.assertIn("&lt;script&gt;f", text)
        self.assertNotIn("<script>f", text)
        self.assert_harmless(text, "sheet")

    def test_pdf_is_harmless(self):
        for name in NAMES:
            self.penwick("open", name, "-o", "picture.pdf", "--force")
            self.check_pdf("picture.pdf")
        self.made("sheet", *NAMES, "-o", "sheet.pdf", "--title", HOSTILE)
        self.check_pdf("sheet.pdf")

    def check_pdf(self, name):
        plain, streams = texts_of_pdf((self.folder / name).read_bytes())
        self.assertTrue(any(re.search(rb"\d (m|l|re|Tf)\s", stream) for stream in streams), name)
        for key in (b"/JavaScript", b"/Launch", b"/URI", b"/EmbeddedFile", b"/OpenAction"):
            self.assertNotIn(key, plain)
        for part in (plain, *streams):
            self.assertNotIn(b"\x1b[31m", part)
            self.assertNotIn("\u202e".encode("utf-16-be") + "b".encode("utf-16-be"), part)
            self.assertNotIn("\u202e".encode(), part)

    def test_names_that_are_no_text_are_printed_harmlessly(self):
        name = os.fsdecode(b"\x9b31m\xff\xfe\xed\xa0\x80.pnx")
        self.file(name, THREE_POINTS)
        for words in (["check"], ["info"], ["info", "--json"], ["open"], ["sheet", "-o", "sheet.html"]):
            command, *options = words
            self.penwick(command, name, *options)
            (self.out + self.errors).encode("utf-8")
            self.assert_harmless(self.out + self.errors, words)
