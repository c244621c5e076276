"""The command as a person types it: a folder of its own, and what came of each call."""
import os
import pathlib
import struct
import subprocess
import tempfile
import unittest

PENWICK = os.environ["PENWICK"]
MODULE = os.environ["PENWICK_MODULE"]


def descriptor(coordinate_format=2):
    return bytes([1, 6, 0, coordinate_format, 0, 0])


def coordinate(x, y):
    return bytes([97, 6]) + struct.pack(">hh", x, y)


def status(bits):
    return bytes([241, 3, bits])


def pressure(value):
    return bytes([100, 6, 6, 0]) + struct.pack(">h", value)


def stroke(*points, pressed=512):
    """Pen up, pen down, the points; the pressure packet after the first holds for all of them."""
    first, *rest = (coordinate(x, y) for x, y in points)
    return status(0) + status(1) + first + (pressure(pressed) if pressed else b"") + b"".join(rest)


# Where the plug-in's log lies, below the folder of the test.
LOG = "home/.local/state/penwick/orvo.log"

TWO_POINTS = descriptor() + stroke((0, 10), (100, 200))
THREE_POINTS = descriptor() + stroke((0, 10), (100, 200), (300, 50))


TRACE = '<trace contextRef="#c">0 1 0 512,10 20 0 512,30 5 0 512</trace>'


def ink(inside, head=""):
    return (head + "<ink>" + inside + "</ink>").encode()


def layer(inside, name="layer0"):
    return f'<tracegroup id="{name}">{inside}</tracegroup>'


# What files that are no recordings are said to be, and how they begin.
UTF_16 = "text in UTF-16, not a recording; save ink documents in UTF-8"
OTHER_KINDS = (
    ("a PNG picture, not a recording", b"\x89PNG\r\n\x1a\n\0\0"),
    ("a JPEG picture, not a recording", b"\xff\xd8\xff\xe0\0\x10JFIF"),
    ("a GIF picture, not a recording", b"GIF89a\1\0"),
    ("a PDF document, not a recording", b"%PDF-1.5\n"),
    ("a PostScript document, not a recording", b"%!PS-Adobe-3.0\n"),
    ("a ZIP archive, not a recording; unpack it and open what is in it", b"PK\x03\x04\x14\0"),
    ("compressed with gzip, not a recording; unpack it and open what is in it", b"\x1f\x8b\x08\0"),
    (UTF_16, "\ufeff<ink/>".encode("utf-16-le")),
    (UTF_16, "\ufeff<ink/>".encode("utf-16-be")),
    (UTF_16, "<ink/>".encode("utf-16-le")),
    (UTF_16, "<ink/>".encode("utf-16-be")),
    ("an SVG picture, not a recording", b"<?xml version='1.0'?>\n<!-- <ink/> -->\n<svg width='1'></svg>"),
    ("an SVG picture, not a recording", b"<svg:svg/>"),
    ("an HTML page, not a recording", b"<!DOCTYPE html>\n<HTML lang='en'>"),
    ("a text file, not a recording", b"x,y\n1,2\n"),
)


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="penwick ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.home = self.folder / "home"
        self.home.mkdir()

    def file(self, name, content=THREE_POINTS):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def penwick(self, *words, program=PENWICK, **options):
        environment = {**os.environ, "HOME": str(self.home), "XDG_STATE_HOME": ""}
        environment.pop("XDG_DATA_HOME", None)
        environment.pop("XDG_CACHE_HOME", None)
        environment.update(options.pop("env", {}))
        if "input" not in options:
            options.setdefault("stdin", subprocess.DEVNULL)
        self.result = subprocess.run(
            [program, *map(os.fspath, words)], cwd=self.folder, env=environment, capture_output=True, timeout=600, check=False, **options)
        self.out = self.result.stdout.decode("utf-8", "surrogateescape")
        self.errors = self.result.stderr.decode("utf-8", "surrogateescape")
        return self.result

    def assert_done(self, *words, **options):
        self.penwick(*words, **options)
        self.assertEqual((self.result.returncode, self.errors), (0, ""))

    def assert_fails(self, sentence, *words, status=1, **options):
        """Fails with this one line and no other, and leaves no new file but the plug-in's log."""
        before = self.files()
        self.penwick(*words, **options)
        self.assertEqual((self.errors, self.result.returncode), (f"penwick: {sentence}\n", status))
        self.assertEqual(self.files() - before - {LOG}, set())

    def files(self):
        return {path.relative_to(self.folder).as_posix() for path in self.folder.rglob("*")
                if not path.is_dir()}
