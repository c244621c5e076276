#!/usr/bin/env python3
"""Checks that committed files are what their script makes: check_made.py FOLDER SCRIPT [ARGUMENT ...]

In an argument MADE stands for a new folder, MADE/NAME for a file in it; every file that the script puts
there is compared with the file of the same name in FOLDER.
"""
import pathlib
import subprocess
import sys
import tempfile


def main():
    kept, script, *words = sys.argv[1:]
    with tempfile.TemporaryDirectory() as made:
        words = [word.replace("MADE", made) for word in words]
        subprocess.run([sys.executable, "-B", script, *words], check=True)
        files = sorted(pathlib.Path(made).iterdir())
        other = [file.name for file in files
                 if file.read_bytes() != (pathlib.Path(kept) / file.name).read_bytes()]
    print("differ:" if other else f"{len(files)} agree", *other)
    return 1 if other or not files else 0


if __name__ == "__main__":
    sys.exit(main())
