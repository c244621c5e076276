"""tools/under-wine puts temporary files only into a folder that belongs to its user alone."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

RUNNER = pathlib.Path(__file__).resolve().parents[2] / "tools/under-wine"


class MemoryFolder(unittest.TestCase):
    def setUp(self):
        held = tempfile.TemporaryDirectory()
        self.addCleanup(held.cleanup)
        self.folder = pathlib.Path(held.name)
        prefix = self.folder / "prefix"
        self.temporary = prefix / "drive_c/users/someone/Temp"
        self.temporary.mkdir(parents=True)
        (prefix / "ready").touch()
        # Nothing is run; only the folders count.
        wine = self.folder / "bin/wine"
        wine.parent.mkdir()
        wine.write_text("#!/bin/sh\n")
        wine.chmod(0o755)
        path = f"{wine.parent}:{os.environ['PATH']}"
        self.environment = dict(os.environ, PATH=path, PENWICK_WINE_FOLDER=str(prefix))
        number = subprocess.run(["cksum"], input=f"{prefix}\n", capture_output=True, text=True,
                                check=True).stdout.split()[0]
        self.memory = pathlib.Path(f"/dev/shm/penwick-{os.geteuid()}-{number}")
        self.addCleanup(self.remove, self.memory)

    @staticmethod
    def remove(path):
        if path.is_symlink() or path.is_file():
            path.unlink()
        else:
            shutil.rmtree(path, ignore_errors=True)

    def run_it(self):
        subprocess.run([RUNNER, "program.exe"], env=self.environment, check=True, timeout=600)

    def assert_not_used(self):
        self.run_it()
        self.assertFalse(self.temporary.is_symlink())

    def test_is_made_for_the_user_alone_and_used_again(self):
        for _ in range(2):
            self.run_it()
            self.assertEqual(os.readlink(self.temporary), str(self.memory))
            self.assertEqual(self.memory.stat().st_mode & 0o777, 0o700)

    def test_that_is_a_link_is_not_used(self):
        target = self.folder / "target"
        target.mkdir(mode=0o700)
        self.memory.symlink_to(target)
        self.assert_not_used()

    def test_that_others_may_write_to_or_have_made_is_not_used(self):
        self.memory.mkdir()
        self.memory.chmod(0o777)
        self.assert_not_used()
        if os.geteuid() == 0:
            self.memory.chmod(0o700)
            os.chown(self.memory, 65534, 65534)
            self.assert_not_used()


if __name__ == "__main__":
    unittest.main()
