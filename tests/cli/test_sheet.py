import html.parser
import os
import subprocess

from command import CommandTest, THREE_POINTS, TRACE, descriptor, ink, layer, stroke


class Cards(html.parser.HTMLParser):
    """The names, links, pictures and texts on a contact sheet."""

    def __init__(self, page):
        super().__init__()
        self.cards, self.loaded, self.inside = [], [], False
        self.feed(page)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == "li":
            self.cards.append({"name": attributes["data-name"], "bad": attributes["data-bad"], "texts": []})
        elif tag == "a":
            self.cards[-1]["link"] = attributes["href"]
        elif tag == "img":
            self.cards[-1]["picture"] = attributes["src"]
        self.loaded += [attributes[name] for name in ("src", "srcset", "data") if name in attributes]
        if tag == "link":
            self.loaded.append(attributes.get("href"))

        self.inside = self.inside or tag == "main"

    def handle_endtag(self, tag):
        self.inside = self.inside and tag != "main"

    def handle_data(self, data):
        if self.inside and data.strip():
            self.cards[-1]["texts"].append(data)


class Sheet(CommandTest):
    def sheet(self, *words):
        self.penwick("sheet", *words, "-o", "sheet.html")
        return Cards((self.folder / "sheet.html").read_text())

    def test_shows_every_recording_of_a_folder(self):
        self.file("in/b.pnx", THREE_POINTS)
        self.file("in/2012/a.kvo", ink(layer(TRACE)))
        sheet = self.sheet("in")
        self.assertEqual(self.result.returncode, 0, self.errors)
        self.assertEqual([card["name"] for card in sheet.cards], ["2012/a.kvo", "b.pnx"])
        self.assertEqual([card["link"] for card in sheet.cards], ["in/2012/a.kvo", "in/b.pnx"])
        for card in sheet.cards:
            self.assertTrue(card["picture"].startswith("data:image/png;base64,iVBORw0KGgo"), card["picture"][:60])
            self.assertEqual(card["texts"][-1], "sound")
        self.assertIn("1 layer, 1 stroke", sheet.cards[1]["texts"][-2])
        self.assertEqual(self.out, "2 drawn\na contact sheet of 2 recordings -> sheet.html\n")

    def test_loads_nothing(self):
        self.file("a.pnx", THREE_POINTS)
        for place in self.sheet("a.pnx").loaded:
            self.assertTrue(place.startswith("data:"), place[:60])

    def test_has_a_place_for_what_cannot_be_drawn(self):
        self.file("in/a.pnx", b"nothing of the kind")
        self.file("in/b.pnx", THREE_POINTS)
        self.file("in/c.pnx", THREE_POINTS + stroke((1, 1), (2, 2))[:-3])
        sheet = self.sheet("in")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual([card["bad"] for card in sheet.cards], ["1", "0", "1"])
        self.assertNotIn("picture", sheet.cards[0])
        self.assertIn("this is a text file, not a recording", sheet.cards[0]["texts"][-1])
        self.assertIn("the file ends inside its last packet", sheet.cards[2]["texts"][-1])
        self.assertIn("penwick: in/a.pnx: this is a text file, not a recording\n", self.errors)
        self.assertIn("2 drawn, 1 failed\n", self.out)

    def test_links_from_where_it_lies(self):
        self.file("in/a b.pnx", THREE_POINTS)
        (self.folder / "out").mkdir()
        self.penwick("sheet", "in", "-o", "out/sheet.html")
        sheet = Cards((self.folder / "out" / "sheet.html").read_text())
        self.assertEqual(sheet.cards[0]["link"], "../in/a%20b.pnx")

    def test_has_a_title(self):
        self.file("a.pnx", THREE_POINTS)
        self.penwick("sheet", "a.pnx", "-o", "sheet.html", "--title", "Cups & <more>")
        self.assertIn("<h1>Cups &amp; &lt;more&gt;</h1>", (self.folder / "sheet.html").read_text())

    def test_goes_to_standard_output_alone(self):
        self.file("a.pnx", THREE_POINTS)
        self.file("b.pnx", THREE_POINTS)
        self.penwick("sheet", "a.pnx", "b.pnx", "-o", "-")
        self.assertTrue(self.out.startswith("<!DOCTYPE html>") and self.out.endswith("</html>\n"))
        self.assertEqual(self.errors, "2 drawn\n")

    def test_has_pages_in_pdf(self):
        for i in range(21):
            self.file(f"in/{i:02}.pnx", THREE_POINTS)
        self.penwick("sheet", "in", "-o", "sheet.pdf", "--title", "Cups")
        self.assertEqual(self.result.returncode, 0, self.errors)
        words = subprocess.run(["pdftotext", "sheet.pdf", "-"], cwd=self.folder, capture_output=True, text=True,
                               check=True).stdout
        self.assertEqual(words.count("\f"), 2)
        for expected in ("Cups, page 1 of 2", "Cups, page 2 of 2", "00.pnx", "20.pnx"):
            self.assertIn(expected, words)
        images = subprocess.run(["pdfimages", "-list", "sheet.pdf"], cwd=self.folder, capture_output=True, text=True,
                                check=True).stdout
        self.assertEqual(len(images.splitlines()), 2 + 21)  # Two lines of headings.

    def test_says_what_a_pdf_cannot_write(self):
        self.file("灯台.pnx", THREE_POINTS)
        self.penwick("sheet", "灯台.pnx", "-o", "sheet.pdf")
        self.assertEqual(self.errors, "penwick: sheet.pdf: warning: 1 recording has a name with characters that the "
                                      'font of the PDF lacks, each becomes "?"; an HTML sheet shows them\n')

    def test_never_overwrites_a_recording(self):
        self.file("a.pnx", THREE_POINTS)
        before = self.file("sheet.html.pnx", THREE_POINTS)
        self.penwick("sheet", "a.pnx", "-o", "sheet.html.pnx")
        self.assertEqual((self.result.returncode, self.out), (2, ""))
        self.assertEqual(self.errors, "penwick: the name of a contact sheet ends in .html or .pdf, unlike "
                                      "'sheet.html.pnx'\n")
        os.symlink("a.pnx", self.folder / "link.html")
        self.penwick("sheet", "a.pnx", "-o", "link.html")
        self.assertEqual(self.result.returncode, 1)
        self.assertEqual((self.folder / "a.pnx").read_bytes(), THREE_POINTS)

    def test_replaces_an_earlier_sheet(self):
        self.file("a.pnx", THREE_POINTS)
        self.file("sheet.html", b"old")
        self.assertEqual(len(self.sheet("a.pnx").cards), 1)

    def test_needs_a_name(self):
        self.file("a.pnx", descriptor())
        self.penwick("sheet", "a.pnx")
        self.assertEqual(self.result.returncode, 2)
        self.assertIn("--output is required", self.errors)
