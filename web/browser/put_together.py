#!/usr/bin/env python3
"""Makes the page for the browser: put_together.py WORKER.js PENWICK.html

WORKER.js is the program as the script of a worker, in one file with nothing beside it.
"""
import base64
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
WEB = HERE.parent
SAMPLE = WEB.parent / "samples/lighthouse.pnx"
STYLES = (WEB / "page.css", WEB / "contact_sheet.css", HERE / "page.css")
SCRIPTS = (WEB / "sheet_order.js",
           *(HERE / f"{name}.js" for name in ("dom", "pool", "files", "program", "names", "zip", "saving", "facts", "card", "sheet",
                                              "drawing", "chosen", "page")))
PAINTER = HERE / "painter.js"


def script(*files):
    """Scripts as the content of an element, which nothing in them may end."""
    text = "\n".join(file.read_text(encoding="utf-8") for file in files)
    for end in ("</script", "<!--"):
        if end in text.lower():
            sys.exit(f"put_together.py: '{end}' in one of {', '.join(map(str, files))} would end the script in the page")
    return text


def page(worker):
    marks = {
        "style": "\n".join(file.read_text(encoding="utf-8") for file in STYLES),
        "script": script(*SCRIPTS),
        "worker": script(worker),
        "painter": script(PAINTER),
        "sample": base64.b64encode(SAMPLE.read_bytes()).decode(),
    }
    text = (HERE / "page.html").read_text(encoding="utf-8")
    for mark in marks:
        if text.count(f"/*{mark}*/") != 1:
            sys.exit(f"put_together.py: page.html must have the mark /*{mark}*/ once")
    # The marks are looked for in page.html alone, not in what takes their places.
    pieces = [text]
    for mark, content in marks.items():
        for place, piece in enumerate(pieces):
            before, found, behind = piece.partition(f"/*{mark}*/")
            if found and place % 2 == 0:
                pieces[place:place + 1] = [before, content, behind]
                break
    return "".join(pieces)


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: put_together.py WORKER.js PENWICK.html")
    pathlib.Path(sys.argv[2]).write_text(page(pathlib.Path(sys.argv[1])), encoding="utf-8")


if __name__ == "__main__":
    main()
