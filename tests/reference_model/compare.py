"""Compares what the program wrote with what the reference model expects."""

import json
import re

from shortest import (digits_of, parse_single, shortest_double, shortest_single, single_bits,
                      write_shortest)

# Other names under which the program may write an argument of a call.  The key
# is (function, argument) or argument alone.
ARGUMENT_NAMES = {
    "filePath": ("path", "file"),
    "style": ("artStyle",),
    "namedStyle": ("newStyle", "result"),
    "unique": ("uniqueName", "makeNameUnique"),
    "origin": ("point", "rulerOrigin"),
    "index": ("n",),
    "set": ("artSet",),
    "art": ("path", "group"),
    "path": ("art",),
    "profiles": ("tabletData", "data"),
    "reference": ("prep", "referenceLayer"),
    "plugin": ("self",),
    "self": ("plugin",),
    "hasArt": ("answer",),
}
# Suites and functions that the program may write under another name.
SUITE_NAMES = {"SP Basic Suite": ("SP Basic", "SPBasic")}
# Suites whose calls a journal leaves out.
LEFT_OUT = ("AI Unicode String Suite", "AI File Path Suite")

HANDLE = re.compile(r"^([A-Za-z]+):(\d+)$")


class Number(str):
    """A JSON number, kept as it was written."""


def load_json(text):
    return json.loads(text, parse_float=Number, parse_int=Number)


def _number_mismatch(path, found, due, singles):
    if not isinstance(found, Number):
        return "%s: %s where the number %r is due" % (path, json.dumps(found), due)
    if isinstance(due, int):
        return None if re.fullmatch(r"-?\d+", found) and int(found) == due else \
            "%s: %s where %d is due" % (path, found, due)
    if singles:
        same = single_bits(parse_single(found)) == single_bits(due)
        shape = shortest_single(due)
    else:
        same = repr(float(found)) == repr(due)
        shape = shortest_double(due)
    if not same:
        return "%s: %s where %s is due" % (path, found, write_shortest(shape))
    # A whole number written out in full ("12345678848") may be shorter than its
    # shortest digits with an exponent.
    whole = re.fullmatch(r"-?\d+", found) and due == int(found) and len(found) <= len(write_shortest(shape))
    if digits_of(found) != shape and not whole:
        return "%s: %s is not the shortest decimal; %s is" % (path, found, write_shortest(shape))
    return None


def compare_values(found, due, path="$", singles=False):
    """Yields one line for each place where found (loaded JSON) is not due (plain values)."""
    if isinstance(due, bool) or due is None or isinstance(due, str):
        if isinstance(found, Number) or found is not due and found != due or type(found) is not type(due):
            yield "%s: %s where %s is due" % (path, json.dumps(found), json.dumps(due))
    elif isinstance(due, (int, float)):
        line = _number_mismatch(path, found, due, singles)
        if line:
            yield line
    elif isinstance(due, dict):
        if not isinstance(found, dict):
            yield "%s: no object" % path
            return
        for key in due:
            if key not in found:
                yield "%s.%s: missing" % (path, key)
            else:
                yield from compare_values(found[key], due[key], "%s.%s" % (path, key), singles)
        for key in found:
            if key not in due:
                yield "%s.%s: not due" % (path, key)
    else:
        if not isinstance(found, list):
            yield "%s: no array" % path
            return
        if len(found) != len(due):
            yield "%s: %d elements where %d are due" % (path, len(found), len(due))
        for index, (one, other) in enumerate(zip(found, due)):
            yield from compare_values(one, other, "%s[%d]" % (path, index), singles)


def load_journal(path):
    """The calls of a journal with their line numbers; lines that are no call are passed over."""
    calls = []
    with open(path, encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            if line.strip():
                call = load_json(line)
                if "function" in call and call.get("suite") not in LEFT_OUT:
                    calls.append((number, call))
    return calls


class JournalComparison:
    """Walks both rows of calls side by side.

    The row of functions must agree, but for optional calls; an argument is
    compared where both sides name it.
    """

    def __init__(self, found, due):
        self.lines = []
        self.calls = self.compared = 0
        self.not_named = {}
        self._to_due, self._to_found = {}, {}
        self._walk(found, due)

    @staticmethod
    def _same_function(call, due):
        return (call["suite"] == due.suite or call["suite"] in SUITE_NAMES.get(due.suite, ())) \
            and call["function"] == due.function

    def _walk(self, found, due):
        at = 0
        last = 0
        for number, call in found:
            last = number
            while at < len(due) and due[at].optional and not self._same_function(call, due[at]):
                at += 1
            if at == len(due):
                self.lines.append("line %d: %s.%s is one call too many"
                                  % (number, call["suite"], call["function"]))
                return
            if not self._same_function(call, due[at]):
                self.lines.append("line %d: %s.%s where %s.%s is due"
                                  % (number, call["suite"], call["function"],
                                     due[at].suite, due[at].function))
                return
            self._compare_call(number, call, due[at])
            self.calls += 1
            at += 1
        rest = [call for call in due[at:] if not call.optional]
        if rest:
            self.lines.append("line %d: the journal ends where %s.%s is due (%d calls missing)"
                              % (last, rest[0].suite, rest[0].function, len(rest)))

    def _compare_call(self, number, call, due):
        path = "line %d %s" % (number, due.function)
        version = due.form()["version"]
        if "version" in call and call["version"] != str(version):
            self.lines.append("%s.version: %s where %d is due" % (path, call["version"], version))
        if due.result is not None and call.get("result") is not None:
            self.lines.extend(compare_values(call["result"], due.result, path + ".result"))
        arguments = call.get("arguments", {})
        for name, value in due.arguments.items():
            other = self._find(arguments, due, name)
            if other is None:
                key = "%s.%s" % (due.function, name)
                self.not_named[key] = self.not_named.get(key, 0) + 1
                continue
            self.compared += 1
            self._compare_argument("%s.%s" % (path, name), arguments[other], value)

    @staticmethod
    def _find(arguments, due, name):
        if name in arguments:
            return name
        for other in ARGUMENT_NAMES.get((due.function, name), ARGUMENT_NAMES.get(name, ())):
            if other in arguments and other not in due.arguments:
                return other
        return None

    def _compare_argument(self, path, found, due):
        mark = HANDLE.match(due) if isinstance(due, str) else None
        if mark:
            seen = HANDLE.match(found) if isinstance(found, str) and not isinstance(found, Number) else None
            if not seen:
                self.lines.append("%s: %s where a handle like %s is due" % (path, json.dumps(found), due))
            elif self._to_due.setdefault(found, due) != due or self._to_found.setdefault(due, found) != found:
                self.lines.append("%s: %s where %s is due" % (path, found, self._to_found.get(due, due)))
            return
        if isinstance(due, bool) and isinstance(found, Number):
            found = {"0": False, "1": True}.get(found, found)
        if isinstance(due, list) and isinstance(found, dict):
            found = list(found.values())
        self.lines.extend(compare_values(found, due, path, singles=True))
