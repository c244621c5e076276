"""The thumbnailer where file managers run it: no home, no network, and nothing to write to but the picture and an
empty folder for temporary files."""
import os
import pathlib
import subprocess
import unittest

import png
from command import MODULE, CommandTest

THUMBNAILER = os.environ["PENWICK_THUMBNAILER"]
SAMPLES = pathlib.Path(__file__).resolve().parent.parent.parent / "samples"


class Sandbox(CommandTest):
    def thumbnail(self, file):
        target = self.file("out.png", b"")
        words = ["bwrap", "--ro-bind", "/usr", "/usr", "--unshare-all", "--die-with-parent", "--clearenv",
                 "--setenv", "PATH", "/usr/bin", "--chdir", "/", "--proc", "/proc", "--dev", "/dev", "--tmpfs", "/tmp"]
        for name in ("/lib", "/lib64", "/bin"):
            words += ["--symlink", "usr" + name, name] if os.path.islink(name) else ["--ro-bind", name, name]
        words += ["--ro-bind-try", "/etc/ld.so.cache", "/etc/ld.so.cache"]
        for program in (THUMBNAILER, MODULE):
            words += ["--ro-bind", program, "/opt/" + os.path.basename(program)]
        words += ["--ro-bind", str(file), "/in" + file.suffix, "--bind", str(target), "/out.png",
                  "--remount-ro", "/", "/opt/penwick-thumbnailer", "/in" + file.suffix, "/out.png", "256"]
        self.result = subprocess.run(words, capture_output=True, stdin=subprocess.DEVNULL, timeout=600, check=False)
        return target.read_bytes()

    def test_thumbnails_of_every_sample_are_made(self):
        samples = sorted(file for file in SAMPLES.iterdir() if file.suffix in (".pnx", ".kvo", ".inkml"))
        self.assertGreaterEqual(len(samples), 10)
        for sample in samples:
            with self.subTest(sample.name):
                content = self.thumbnail(sample)
                self.assertEqual((self.result.returncode, self.result.stderr), (0, b""))
                rows = png.pixels(content)
                self.assertEqual(max(len(rows), len(rows[0])), 256)
                self.assertIsNotNone(png.ink(rows))

    def test_a_broken_file_gives_nothing(self):
        self.assertEqual(self.thumbnail(self.file("broken.pnx", b"no recording")), b"")
        self.assertEqual(self.result.returncode, 1)


if __name__ == "__main__":
    unittest.main()
