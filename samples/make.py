#!/usr/bin/env python3
"""Draws the samples: python3 samples/make.py [FOLDER]

Without a folder they go beside this script.  The bytes are the same on every
machine, so the files kept here can be checked against the script.
"""

import os
import sys

import harbour
import ink_pages
import lighthouse
import pages

SAMPLES = {
    "lighthouse.pnx": lighthouse.record,
    "signature.pnx": pages.signature,
    "handwriting.pnx": pages.handwriting,
    "hatching.pnx": pages.hatching,
    "tilted-sketch.pnx": pages.tilted_sketch,
    "spiral.pnx": pages.spiral,
    "harbour.kvo": harbour.record,
    "melody.kvo": ink_pages.melody,
    "teapot.inkml": ink_pages.teapot,
    "other-program.inkml": ink_pages.other_program,
}


def main(arguments):
    if len(arguments) > 1 or arguments and arguments[0].startswith("-"):
        print("usage: make.py [FOLDER]", file=sys.stderr)
        return 2
    folder = arguments[0] if arguments else os.path.dirname(os.path.abspath(__file__))
    os.makedirs(folder, exist_ok=True)
    for name, draw in SAMPLES.items():
        with open(os.path.join(folder, name), "wb") as file:
            file.write(draw())
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
