#!/usr/bin/env python3
"""Breaks one rule of the code at a time and sees whether the tests notice.

    tests/mutate.py FOLDER [--count N] [--seed S] [--show]

takes N places of FOLDER (model, log, penfile, inkml, plugin, ...) by chance, changes each in a copy of the
sources (an operator, a constant, a call left out, two lines in the other order), builds the folder's tests
and runs them. Prints every change that no test noticed, and at the end how many of the changes that
compile to other machine code were noticed; exit 1 below 90 %. Not part of ./test: a change takes some ten
seconds. The same seed takes the same places.
"""
import argparse
import hashlib
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPY = ROOT / "build" / "mutation"
HANG_SECONDS = 600

# The test programs of a folder, where they are not called after it.
TESTS = {
    "log": ["log_tests", "log_library_calls_tests", "log_memory_tests"],
    "penfile": ["penfile_tests", "inkml_tests"],
    "plugin": ["plugin_tests", "plugin_system_tests"],
    "platform": ["platform_tests"],
}

COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|R"\(.*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)
OPERATORS = {"<=": "<", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", " < ": " <= ",
             " > ": " >= ", " + ": " - ", " - ": " + ", " * ": " + ", " / ": " * ", " & ": " | ",
             " | ": " & ", "++": "--", "--": "++", " += ": " -= ", " -= ": " += ", "true": "false",
             "false": "true", "if (!": "if ("}
OPERATOR = re.compile("|".join(re.escape(old) if not old.isalpha() else rf"\b{old}\b"
                               for old in sorted(OPERATORS, key=len, reverse=True)))
NUMBER = re.compile(r"(?<![\w.'])(0x[0-9A-Fa-f]+|\d+)(?![\w.'])")
CALL = re.compile(r"^ +(?!return|throw|delete|else|case|default|using|static_assert|const |auto )"
                  r"[\w.>:\-\[\]]+(?:\([^;{}]*\)| = [^;{}]+);$", re.MULTILINE)


def blank(text):
    """The code with its comments and texts as blanks, so that nothing is changed in them."""
    return COMMENT_OR_TEXT.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), text)


def changes_of(text):
    """Every change to a source: (start, end, what stands there then)."""
    code = blank(text)
    for match in OPERATOR.finditer(code):
        yield match.start(), match.end(), OPERATORS[match[0]]
    for match in NUMBER.finditer(code):
        line = code[code.rfind("\n", 0, match.start()) + 1:code.find("\n", match.start())]
        if not line.lstrip().startswith(("#", "template", "static_assert")):
            yield match.start(), match.end(), str(int(match[0], 0) + 1)
    calls = list(CALL.finditer(code))
    for match in calls:
        yield match.start(), match.end(), ""
    for first, second in zip(calls, calls[1:]):
        # Assignments side by side seldom depend on each other; calls often do.
        if second.start() == first.end() + 1 and " = " not in first[0] + second[0]:
            swapped = text[second.start():second.end()] + "\n" + text[first.start():first.end()]
            yield first.start(), second.end(), swapped


def copy_sources():
    """A copy with a build of its own, brought up to date with the sources here."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            cwd=ROOT, capture_output=True, check=True).stdout
    for name in map(os.fsdecode, filter(None, listed.split(b"\0"))):
        source, copy = ROOT / name, COPY / name
        if not source.is_file():
            continue
        if copy.is_file() and copy.read_bytes() == source.read_bytes():
            continue
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, copy)


def build(targets):
    run = subprocess.run(["tools/build", "test", *targets], cwd=COPY, capture_output=True, text=True)
    return run.returncode == 0


def programs(targets):
    found = []
    for target in targets:
        found += [path for path in (COPY / "build" / "test" / "tests").rglob(target) if path.is_file()]
    return found


def machine_code(targets):
    """What the programs are made of, without what is there for debuggers alone."""
    digest = hashlib.sha256()
    for program in sorted(programs(targets)):
        bare = program.with_suffix(".bare")
        subprocess.run(["objcopy", "--strip-debug", "--remove-section=.note.gnu.build-id", program, bare], check=True)
        digest.update(bare.read_bytes())
        bare.unlink()
    return digest.hexdigest()


def notices(program):
    """Whether a test of the program fails, crashes or hangs."""
    try:
        run = subprocess.run([program, "--gtest_brief=1", "--gtest_fail_fast"], cwd=program.parent,
                             capture_output=True, timeout=HANG_SECONDS)
    except subprocess.TimeoutExpired:
        return True
    return run.returncode != 0


def describe(name, text, start, end, replacement):
    line = text.count("\n", 0, start) + 1
    old, new = (" ".join(part.split()) for part in (text[start:end], replacement))
    return f"{name}:{line}: '{old}' -> '{new}'"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder")
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--show", action="store_true", help="print the changes and stop")
    words = parser.parse_args()

    sources = {path: path.read_text() for path in sorted((ROOT / words.folder).rglob("*"))
               if path.suffix in {".cpp", ".h"} and "windows" not in path.parts}
    places = [(path, *change) for path, text in sources.items() for change in changes_of(text)]
    chosen = random.Random(words.seed).sample(places, min(words.count, len(places)))
    print(f"{len(chosen)} of {len(places)} changes to {words.folder}/, seed {words.seed}")
    if words.show:
        for path, *change in chosen:
            print(describe(path.relative_to(ROOT), sources[path], *change))
        return 0

    targets = TESTS.get(words.folder, [words.folder + "_tests"])
    copy_sources()
    if not build(targets) or any(notices(program) for program in programs(targets)) or not programs(targets):
        print("the tests of the unchanged sources do not pass", file=sys.stderr)
        return 2
    noticed = unnoticed = 0
    unchanged = machine_code(targets)
    began = time.monotonic()
    for path, start, end, replacement in chosen:
        name, text = path.relative_to(ROOT), sources[path]
        (COPY / name).write_text(text[:start] + replacement + text[end:])
        # A change that leaves the machine code as it was is none.
        if build(targets) and machine_code(targets) != unchanged:
            if any(notices(program) for program in programs(targets)):
                noticed += 1
            else:
                unnoticed += 1
                print("not noticed:", describe(name, text, start, end, replacement), flush=True)
        (COPY / name).write_text(text)
    compiled = noticed + unnoticed
    share = noticed / compiled if compiled else 0.0
    print(f"{noticed} of {compiled} changes to the machine code were noticed ({share:.0%}), "
          f"{time.monotonic() - began:.0f} s")
    return 0 if share >= 0.9 else 1


if __name__ == "__main__":
    sys.exit(main())
