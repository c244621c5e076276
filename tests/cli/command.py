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
    """Pen up, pen down, the points; the pressure packet behind the first holds for all of them."""
    first, *rest = (coordinate(x, y) for x, y in points)
    return status(0) + status(1) + first + (pressure(pressed) if pressed else b"") + b"".join(rest)


TWO_POINTS = descriptor() + stroke((0, 10), (100, 200))
THREE_POINTS = descriptor() + stroke((0, 10), (100, 200), (300, 50))


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
        environment = dict(os.environ, HOME=str(self.home), **options.pop("env", {}))
        self.result = subprocess.run(
            [program, *map(os.fspath, words)], cwd=self.folder, env=environment,
            stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=False, **options)
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
        self.assertEqual(self.files() - before - {"orvo.log"}, set())

    def files(self):
        return {path.relative_to(self.folder).as_posix() for path in self.folder.rglob("*")
                if not path.is_dir()}
