#!/usr/bin/env python3
"""An independent reference model: what the program must make of a pen recording, or
of an ink document (a file whose name ends in .kvo or .inkml).

  reference_model.py ink FILE                       the ink document, as JSON
  reference_model.py art FILE                       the art, as JSON
  reference_model.py calls FILE [--go]              the calls on the host, one JSON line each
  reference_model.py listing FILE                   the line listing
  reference_model.py summary FILE                   counts, ranges and checksums of the listing
  reference_model.py expected FILE EXPECTED.json    compares the summary with a file
  reference_model.py check --recording FILE [--ink INK.json] [--art ART.json]
                   [--journal CALLS.jsonl] [--scope life|go] [--limit N]
                                            compares the program's outputs

Exit status: 0 all agrees, 1 something does not (one line each, with its place),
2 wrong usage.  A recording that is not whole has no ink and no art: `ink` and
`art` then say why and where, and exit 1.
"""

import argparse
import json
import sys

from art_model import Art, art_form
from call_model import Go, whole_life
from compare import JournalComparison, compare_values, load_journal, load_json
from ink_model import ink_form, read_recording
from inkml_model import inkml_form, read_ink_document
from listing import listing, summary
from shortest import shortest_double, shortest_single, write_shortest


INKML_ENDINGS = (".kvo", ".inkml")


def read_file(path):
    return read_ink_document(path) if path.endswith(INKML_ENDINGS) else read_recording(path)


def form_of(path, recording):
    return inkml_form(recording) if path.endswith(INKML_ENDINGS) else ink_form(recording)


def summary_of(path, recording):
    facts = summary(recording)
    if path.endswith(INKML_ENDINGS):
        facts["annotations"] = recording.annotations
    return facts


def to_json(value, singles):
    """JSON with the shortest decimals, without blanks."""
    if isinstance(value, float):
        return write_shortest((shortest_single if singles else shortest_double)(value))
    if isinstance(value, dict):
        return "{%s}" % ",".join("%s:%s" % (json.dumps(key), to_json(one, singles))
                                 for key, one in value.items())
    if isinstance(value, list):
        return "[%s]" % ",".join(to_json(one, singles) for one in value)
    return json.dumps(value)


def say_why(path, recording):
    print("%s: %s (byte %d)" % (path, recording.reason, recording.offset), file=sys.stderr)


def run_ink(arguments):
    recording = read_file(arguments.file)
    if not recording.complete:
        say_why(arguments.file, recording)
        return 1
    print(to_json(form_of(arguments.file, recording), False))
    return 0


def run_art(arguments):
    recording = read_file(arguments.file)
    if not recording.complete:
        say_why(arguments.file, recording)
        return 1
    art = Art(recording)
    if art.refused_path():
        print("%s: the host refuses path %d" % (arguments.file, art.refused_path()), file=sys.stderr)
        return 1
    print(to_json(art_form(art), True))
    return 0


def run_calls(arguments):
    recording = read_file(arguments.file)
    calls = (Go(recording, Art(recording)).calls if arguments.go
             else whole_life(recording, Art(recording)))
    for call in calls:
        print(to_json(call.form(), True))
    return 0


def run_listing(arguments):
    sys.stdout.buffer.write(listing(read_file(arguments.file)))
    return 0


def run_summary(arguments):
    print(json.dumps(summary_of(arguments.file, read_file(arguments.file)), indent=1, sort_keys=True))
    return 0


def run_expected(arguments):
    with open(arguments.expected, encoding="utf-8") as file:
        due = json.load(file)
    recording = read_file(arguments.file)
    found = summary_of(arguments.file, recording)
    lines = ["%s: %s where %s is expected" % (key, json.dumps(due.get(key)), json.dumps(found.get(key)))
             for key in sorted(set(due) | set(found)) if due.get(key) != found.get(key)]
    if not recording.complete:
        lines.append("not whole: %s (byte %d)" % (recording.reason, recording.offset))
    for line in lines:
        print(line)
    return 1 if lines else 0


def check_document(label, path, due, singles, absent):
    """Mismatch lines of one JSON file; absent is why there should be none at all."""
    if absent:
        return ["%s: written, although %s" % (label, absent)]
    with open(path, encoding="utf-8") as file:
        found = load_json(file.read())
    return list(compare_values(found, due(), label, singles))


def check_journal(path, recording, art, scope):
    found = load_journal(path)
    best = None
    for topmost_first in (True, False):     # the order within an art set is the host's business
        calls = Go(recording, art, topmost_first).calls if scope == "go" \
            else whole_life(recording, art, topmost_first)
        comparison = JournalComparison(found, calls)
        if best is None or len(comparison.lines) < len(best.lines):
            best = comparison
    print("journal: %d calls, %d arguments compared" % (best.calls, best.compared), file=sys.stderr)
    for name, count in sorted(best.not_named.items()):
        print("journal: %s is not named in the journal (%d times)" % (name, count), file=sys.stderr)
    return best.lines


def run_check(arguments):
    recording = read_file(arguments.recording)
    art = Art(recording)
    why = None if recording.complete else "the recording is not whole: %s (byte %d)" % (
        recording.reason, recording.offset)
    lines = []
    if arguments.ink:
        lines += check_document("ink", arguments.ink, lambda: form_of(arguments.recording, recording), False, why)
    if arguments.art:
        refused = art.refused_path()
        lines += check_document("art", arguments.art, lambda: art_form(art), True,
                                why or (refused and "the host refuses path %d" % refused))
    if arguments.journal:
        lines += check_journal(arguments.journal, recording, art, arguments.scope)
    for line in lines[:arguments.limit]:
        print(line)
    if len(lines) > arguments.limit:
        print("and %d more" % (len(lines) - arguments.limit))
    return 1 if lines else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = parser.add_subparsers(dest="command", required=True)
    for name, run in (("ink", run_ink), ("art", run_art), ("calls", run_calls), ("listing", run_listing),
                      ("summary", run_summary), ("expected", run_expected)):
        command = commands.add_parser(name)
        command.set_defaults(run=run)
        command.add_argument("file")
        if name == "expected":
            command.add_argument("expected")
        if name == "calls":
            command.add_argument("--go", action="store_true", help="without start-up and shut-down")
    check = commands.add_parser("check")
    check.set_defaults(run=run_check)
    check.add_argument("--recording", required=True)
    for name in ("--ink", "--art", "--journal"):
        check.add_argument(name)
    check.add_argument("--scope", choices=("life", "go"), default="life",
                       help="what the journal holds: start-up to shut-down, or one AI Go")
    check.add_argument("--limit", type=int, default=200)
    arguments = parser.parse_args()
    return arguments.run(arguments)


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BrokenPipeError:
        sys.exit(1)
