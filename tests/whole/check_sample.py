#!/usr/bin/env python3
"""Draws a sample recording and compares its art, journal and ink document with the reference model, bit for
bit, and then with the results kept in tests/goldens, byte for byte.

check_sample.py FILE          (the command's path is in PENWICK)
check_sample.py --keep FILE   keeps the results, but only what agrees with the reference model
"""
import hashlib
import os
import pathlib
import subprocess
import sys
import tempfile

TESTS = pathlib.Path(__file__).resolve().parent.parent
GOLDENS = TESTS / "goldens"
# Kept in full, for people to read; of the others only digests are kept.
WHOLE = {"signature"}


def run(*words, folder):
    environment = dict(os.environ, HOME=str(folder))
    environment.pop("XDG_DATA_HOME", None)
    done = subprocess.run([str(word) for word in words], cwd=folder, env=environment,
                          capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{words[1]} {words[2]}: exit {done.returncode}\n{done.stdout}{done.stderr}")


def results(recording, folder):
    penwick = os.environ["PENWICK"]
    art, calls, ink = (folder / name for name in ("art.json", "calls.jsonl", "ink.json"))
    run(penwick, "open", recording, "-o", art, "--journal", calls, folder=folder)
    run(penwick, "ink", recording, "-o", ink, folder=folder)
    run(sys.executable, TESTS / "reference_model/reference_model.py", "check", "--recording", recording,
        "--art", art, "--journal", calls, "--ink", ink, folder=folder)
    return [art, calls, ink]


def compare(name, file, keep):
    """Returns what is wrong, or None."""
    content = file.read_bytes()
    kept = GOLDENS / f"{name}.{file.name}"
    if name not in WHOLE:
        kept = kept.with_name(kept.name + ".sha256")
        content = hashlib.sha256(content).hexdigest().encode() + b"\n"
    if keep:
        kept.write_bytes(content)
    if kept.read_bytes() == content:
        return None
    return f"{file.name} of {name} is no longer what is kept in tests/goldens/{kept.name}"


def main():
    keep = sys.argv[1] == "--keep"
    recording = pathlib.Path(sys.argv[-1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        files = results(recording, pathlib.Path(folder))
        problems = list(filter(None, (compare(recording.stem, file, keep) for file in files)))
    print("\n".join(problems) or f"{recording.name} agrees")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
