#!/usr/bin/env python3
"""Compares a listing of the interface's layout with the table: check_layout.py PROGRAM [ARGUMENT ...]

The program's output has to hold every line of layout.txt, and no other.
"""
import pathlib
import subprocess
import sys

TABLE = pathlib.Path(__file__).with_name("layout.txt")


def facts(text):
    lines = (line.strip() for line in text.splitlines())
    return [line for line in lines if line and not line.startswith("#")]


def main():
    done = subprocess.run(sys.argv[1:], capture_output=True, text=True, check=True)
    expected, found = facts(TABLE.read_text()), facts(done.stdout)
    problems = [f"expected, not found: {line}" for line in expected if line not in found]
    problems += [f"found, not expected: {line}" for line in found if line not in expected]
    if len(set(found)) != len(found) or len(set(expected)) != len(expected):
        problems.append("a line stands there twice")
    print("\n".join(problems) or f"{len(found)} numbers agree")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
