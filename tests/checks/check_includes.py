#!/usr/bin/env python3
"""Finds the include lines that break the rules: which folder may include which, and with which libraries.

check_includes.py ROOT RULES, exit 1 when there are any; check_includes.py --self-test shows that a
forbidden line is found. RULES is what the build writes, a line FOLDER|TARGET|SOURCES|MAY_USE for each
target: what a target may use is what its sources may include.
"""
import pathlib
import re
import sys
import tempfile

# The module that the host loads is built from this target; what it uses gets into the host's process.
MODULE = "plugin_core"
# In it only the standard library is used, apart from the system's calls and TinyXML, in one folder each.
SYSTEM_CALLS = {"platform"}
TINYXML = {"inkml": {"tinyxml.h"}}  # in its sources; its headers only name the classes

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


class Rules:
    """What each file of each folder may include."""

    def __init__(self, lines):
        self.folder_of = {}
        self.targets = {}
        for line in filter(None, lines):
            folder, target, sources, uses = line.split("|")
            self.folder_of[target] = folder
            self.targets[target] = (folder, sources.split(","), uses.split(","))

    def folders(self):
        return sorted(set(self.folder_of.values()))

    def allowed(self, folder, stem):
        """The folders that a file of this stem may include: those of the folder's first target, and those of
        the target that compiles it."""
        in_folder = [target for target in self.targets.values() if target[0] == folder]
        own = in_folder[:1] + [target for target in in_folder if stem + ".cpp" in target[1]]
        return {self.folder_of[use] for _, _, uses in own for use in uses if use in self.folder_of} | {folder}

    def folders_in_module(self):
        found, waiting = set(), [MODULE]
        while waiting:
            target = waiting.pop()
            if target in self.targets and target not in found:
                found.add(target)
                waiting += self.targets[target][2]
        return {self.folder_of[target] for target in found}


def problems(root, rules):
    plain = rules.folders_in_module()
    for folder in rules.folders():
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in {".h", ".cpp"}:
                continue
            name = path.relative_to(root).as_posix()
            stem = path.relative_to(root / folder).with_suffix("").as_posix()
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                complaint = judge(rules, plain, folder, stem, path.suffix, *match.groups())
                if complaint:
                    yield f"{name}:{number}: {complaint}"


def judge(rules, plain, folder, stem, suffix, mark, header):
    if mark == '"':
        other = header.split("/")[0]
        if "/" not in header or other not in rules.folders():
            return f'"{header}" is not named by its path from the root'
        if other not in rules.allowed(folder, stem):
            return f"{folder}/{stem} may not include {other}/"
        return None
    if folder not in plain or folder in SYSTEM_CALLS:
        return None
    if suffix == ".cpp" and header in TINYXML.get(folder, set()):
        return None
    if "/" in header or header.endswith((".h", ".hpp")):
        return f"{folder}/ uses only the standard library, not <{header}>"
    return None


SELF_TEST_RULES = """model|model|a.cpp|
log|log||
hostapi|hostapi||
inkml|inkml|brush.cpp|model
penfile|penfile|d.cpp|model,log
penfile|penfile_loader|document_loader.cpp|penfile,inkml
plugin|plugin_core|b.cpp|hostapi,model,penfile_loader
art|art||
embedded|embedded|c.cpp|hostapi,art
render|render|e.cpp|art
"""


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in {
            "model/a.h": '#include "log/logger.h"\n',
            "plugin/b.cpp": '#include "embedded/host.h"\n#include "model/point.h"\n',
            "embedded/c.cpp": '  #  include "plugin/plugin.h"\n#include "art/document.h"\n#include <dlfcn.h>\n',
            "penfile/d.cpp": '#include "inkml/brush.h"\n#include <nlohmann/json.hpp>\n',
            "penfile/document_loader.cpp": '#include "inkml/brush.h"\n',
            "inkml/brush.h": '#include <string>\n#include <tinyxml.h>\n',
            "inkml/brush.cpp": '#include <tinyxml.h>\n#include <vector>\n',
            "render/e.cpp": '#include "svg.h"\n',
        }.items():
            (root / name).parent.mkdir(exist_ok=True)
            (root / name).write_text(text)
        found = [line.split(": ")[0] for line in problems(root, Rules(SELF_TEST_RULES.splitlines()))]
    wanted = ["embedded/c.cpp:1", "inkml/brush.h:2", "model/a.h:1", "penfile/d.cpp:1", "penfile/d.cpp:2",
              "plugin/b.cpp:1", "render/e.cpp:1"]
    if found != wanted:
        print("found", found, "wanted", wanted)
    return found == wanted


def main():
    if sys.argv[1:] == ["--self-test"]:
        return 0 if self_test() else 1
    root, rules = map(pathlib.Path, sys.argv[1:])
    found = list(problems(root, Rules(rules.read_text().splitlines())))
    print("\n".join(found) or "every include is allowed")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
