"""The desktop entry, the kinds of files, the thumbnailer's entry and the metadata, as a desktop reads them."""
import configparser
import os
import pathlib
import shutil
import subprocess
import xml.etree.ElementTree as xml

from command import THREE_POINTS, CommandTest, coordinate, descriptor, status

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
LINUX = ROOT / "packaging/linux"
SAMPLES = ROOT / "samples"
PEN, INK = "application/x-penwick-recording", "application/inkml+xml"


def run(*words, **more):
    return subprocess.run([str(word) for word in words], capture_output=True, text=True, timeout=600, check=False,
                          **more)


class DesktopFiles(CommandTest):
    def assert_clean(self, *words):
        done = run(*words)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertNotRegex(done.stdout + done.stderr, r"(?i)\b(error|warning)|^[EW]:")

    def metadata(self):
        version = "0.0.1"
        text = (LINUX / "org.penwick.penwick.metainfo.xml.in").read_text()
        self.assertEqual(text.count("@"), 2)
        return self.file("org.penwick.penwick.metainfo.xml",
                         text.replace("@PROJECT_VERSION@", version).encode())

    def test_are_valid(self):
        self.assert_clean("desktop-file-validate", LINUX / "penwick.desktop")
        self.assert_clean("appstreamcli", "validate", "--no-net", "--pedantic", self.metadata())
        for file in (LINUX / "penwick.xml", LINUX / "penwick.svg", *(ROOT / "packaging/inkscape").glob("*.inx")):
            self.assert_clean("xmllint", "--noout", file)

    def test_name_the_same_kinds_of_files_everywhere(self):
        kinds = {entry.get("type") for entry in xml.parse(LINUX / "penwick.xml").getroot()}
        self.assertEqual(kinds, {PEN, INK})
        for name, section in (("penwick.desktop", "Desktop Entry"), ("penwick.thumbnailer.in", "Thumbnailer Entry")):
            entry = configparser.RawConfigParser()
            entry.optionxform = str
            entry.read(LINUX / name)
            self.assertEqual(set(entry[section]["MimeType"].strip(";").split(";")), kinds, name)
        self.assertEqual({entry.text for entry in xml.parse(self.metadata()).iter("mediatype")}, kinds)

    def kinds_of(self, *files):
        """What the system takes files for, where it knows our kinds besides its own."""
        data = self.folder / "data"
        packages = data / "mime/packages"
        if not packages.exists():
            packages.mkdir(parents=True)
            shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", packages)
            shutil.copy(LINUX / "penwick.xml", packages)
            self.assert_clean("update-mime-database", data / "mime")
        told = {}
        for file in files:
            done = run("gio", "info", "-a", "standard::content-type", file,
                       env={**os.environ, "HOME": str(self.home), "XDG_DATA_HOME": str(self.home / "none"),
                            "XDG_DATA_DIRS": str(data)})
            told[file.name] = done.stdout.split("content-type:")[-1].strip()
        return told

    def test_tell_recordings_by_their_endings(self):
        content = b"nothing that tells"
        files = [self.file(name, content) for name in ("a.pnx", "b.eli", "c.kvo", "d.inkml", "E.PNX", "f.txt")]
        self.assertEqual(self.kinds_of(*files), {"a.pnx": PEN, "b.eli": PEN, "c.kvo": INK, "d.inkml": INK,
                                                 "E.PNX": PEN, "f.txt": "text/plain"})

    def test_tell_recordings_without_an_ending_by_how_they_begin(self):
        samples = sorted(file for file in SAMPLES.iterdir() if file.suffix in (".pnx", ".kvo", ".inkml"))
        files = [self.file(sample.name.replace(".", " "), sample.read_bytes()) for sample in samples]
        wanted = {file.name: PEN if file.name.endswith("pnx") else INK for file in files}
        self.assertGreaterEqual(len(wanted), 10)
        self.assertEqual(self.kinds_of(*files), wanted)

    def test_tell_recordings_by_every_packet_that_can_come_second(self):
        long_form = bytes([1, 0x41, 0, 2, 0, 0])
        files = [self.file("pen status", THREE_POINTS), self.file("point", descriptor() + coordinate(1, 2)),
                 self.file("other length", long_form + status(0)),
                 self.file("other lengths", long_form + b"\x61\x41" + bytes(4))]
        self.assertEqual(set(self.kinds_of(*files).values()), {PEN})

    def test_take_no_other_file_for_a_recording(self):
        files = [self.file("a", bytes([1, 6, 0, 2, 0, 0]) + b"\x99\x06" + bytes(20)),
                 self.file("b.svg", b'<svg xmlns="http://www.w3.org/2000/svg"><!-- <ink> --></svg>'),
                 self.file("c", b'<?xml version="1.0"?><inkwell/>'),
                 self.file("d.html", b"<!DOCTYPE html><html><body><ink></body></html>")]
        self.assertEqual(set(self.kinds_of(*files).values()) & {PEN, INK}, set())
