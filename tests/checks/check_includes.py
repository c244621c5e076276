#!/usr/bin/env python3
"""Says which include lines break the house rules: who may include whom, and with which libraries.

check_includes.py ROOT, exit 1 when there are any; check_includes.py --self-test shows that a
forbidden line is found.
"""
import pathlib
import re
import sys
import tempfile

# Room -> the rooms that it may include, besides itself.
ROOMS = {
    "model": set(),
    "platform": set(),
    "log": {"platform"},
    "penfile": {"model", "log", "platform"},
    "inkml": {"model", "platform"},
    "hostapi": set(),
    "plugin": {"hostapi", "model", "penfile", "inkml", "platform"},
    "art": set(),
    "embedded": {"hostapi", "art", "platform"},
    "render": {"art"},
    "cli": {"model", "log", "platform", "penfile", "inkml", "hostapi", "art", "embedded", "render"},
}

# One file of a room may see more than its room.
FILES = {"penfile/document_loader.cpp": {"inkml"}}

# What runs inside the plug-in uses the language's library, the C library, and in one room TinyXML.
PLAIN_ROOMS = {"model", "platform", "log", "penfile", "inkml", "hostapi", "plugin"}
SYSTEM_CALLS = {"platform"}
TINYXML = {"inkml": {"tinyxml.h"}}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def problems(root):
    for room, allowed in ROOMS.items():
        for path in sorted((root / room).rglob("*")):
            if path.suffix not in {".h", ".cpp"}:
                continue
            name = path.relative_to(root).as_posix()
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                complaint = judge(room, name, allowed, *match.groups())
                if complaint:
                    yield f"{name}:{number}: {complaint}"


def judge(room, name, allowed, mark, header):
    if mark == '"':
        other = header.split("/")[0]
        if "/" not in header or other not in ROOMS:
            return f'"{header}" is not named by its path from the root'
        if other != room and other not in allowed | FILES.get(name, set()):
            return f"{room}/ may not include {other}/"
        return None
    if room not in PLAIN_ROOMS or header in TINYXML.get(room, set()):
        return None
    if room in SYSTEM_CALLS:
        return None
    if "/" in header or header.endswith((".h", ".hpp")):
        return f"{room}/ uses the language's own library only, not <{header}>"
    return None


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in {
            "model/a.h": '#include "log/logger.h"\n',
            "plugin/b.cpp": '#include "embedded/host.h"\n#include "model/point.h"\n',
            "embedded/c.cpp": '  #  include "plugin/plugin.h"\n#include "art/document.h"\n',
            "penfile/d.cpp": '#include "inkml/brush.h"\n#include <nlohmann/json.hpp>\n',
            "penfile/document_loader.cpp": '#include "inkml/brush.h"\n',
            "render/e.cpp": '#include "svg.h"\n',
        }.items():
            (root / name).parent.mkdir(exist_ok=True)
            (root / name).write_text(text)
        found = [line.split(": ")[0] for line in problems(root)]
    wanted = ["model/a.h:1", "penfile/d.cpp:1", "penfile/d.cpp:2", "plugin/b.cpp:1",
              "embedded/c.cpp:1", "render/e.cpp:1"]
    if found != wanted:
        print("found", found, "wanted", wanted)
    return found == wanted


def main():
    if sys.argv[1:] == ["--self-test"]:
        return 0 if self_test() else 1
    found = list(problems(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "every include is allowed")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
