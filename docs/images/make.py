#!/usr/bin/env python3
"""Makes the pictures of the pages on file managers and Inkscape: make.py BIN, the folder with the built programs.

Needs inkscape and rsvg-convert.
"""
import base64
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
SAMPLES = ("lighthouse.pnx", "handwriting.pnx", "hatching.pnx", "tilted-sketch.pnx", "harbour.kvo", "melody.kvo",
           "signature.pnx", "teapot.inkml")
SIDE, CELL, COLUMNS = 128, 168, 4


def cell(number, name, picture):
    left, top = number % COLUMNS * CELL, number // COLUMNS * CELL
    width, height = (int.from_bytes(picture[at:at + 4], "big") for at in (16, 20))
    x, y = left + (CELL - width) / 2, top + 12 + (SIDE - height) / 2
    data = base64.b64encode(picture).decode()
    return (f'<image x="{x}" y="{y}" width="{width}" height="{height}" href="data:image/png;base64,{data}"/>'
            f'<rect x="{x}" y="{y}" width="{width}" height="{height}" fill="none" stroke="#c8ccd2"/>'
            f'<text x="{left + CELL / 2}" y="{top + SIDE + 30}" text-anchor="middle">{name}</text>')


def make_thumbnails(programs, folder):
    cells = []
    for number, name in enumerate(SAMPLES):
        subprocess.run([programs / "penwick-thumbnailer", ROOT / "samples" / name, folder / "a.png", str(SIDE)],
                       check=True)
        cells.append(cell(number, name, (folder / "a.png").read_bytes()))
    rows = -(-len(SAMPLES) // COLUMNS)
    sheet = folder / "sheet.svg"
    sheet.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{CELL * COLUMNS}" height="{CELL * rows}" '
                     'font-family="sans-serif" font-size="13"><rect width="100%" height="100%" fill="#f4f5f7"/>'
                     + "".join(cells) + "</svg>")
    subprocess.run(["rsvg-convert", sheet, "-o", HERE / "thumbnails.png"], check=True)


def make_inkscape(programs, folder):
    """What Inkscape itself exports of a recording that it opened, at a width of 800 pixels."""
    extensions = folder / ".config/inkscape/extensions"
    shutil.copytree(ROOT / "packaging/inkscape", extensions)
    environment = {**os.environ, "HOME": str(folder), "PATH": f"{programs}:{os.environ['PATH']}"}
    subprocess.run(["inkscape", ROOT / "samples/harbour.kvo", "-o", HERE / "inkscape.png", "-w", "800",
                    "--export-background=white"], env=environment, check=True)


def main():
    programs = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        make_thumbnails(programs, pathlib.Path(folder))
        make_inkscape(programs, pathlib.Path(folder))


if __name__ == "__main__":
    main()
