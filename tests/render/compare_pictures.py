#!/usr/bin/env python3
"""Compares the pictures of a drawing with a painter that shares no code with what made them.

compare_pictures.py RECORDING ...   makes SVG, PDF and PNG of recordings with the command, has the
first two checked by xmllint and qpdf and turned into bitmaps by librsvg and poppler, and prints the
share of the painted area that differs. Exit 1 when more than 1 % does anywhere.
compare_pictures.py --dense   makes PNGs of one stroke that keeps crossing itself. Exit 1 when
in one of them more than 1 % of the pixels with ink are off by more than 16 of 255.
compare_pictures.py --self-test RECORDING shows that a brush 3 % too thick would be found.
The environment names the programs: PENWICK and PAINT_AND_COMPARE.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import dense_stroke

MOST = 1.0  # percent of the painted area, or of the pixels with ink
DPI = 400
# Of hairlines a pixel must be a smaller part: renderers tell what they cover of it in some 15 steps.
DPI_OF_HAIRLINES = 1200


def run(*words):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{words[0]}: exit {done.returncode}: {done.stderr.strip()}")
    return done.stdout


def svg_resolution(svg, dpi):
    """Pixels for 72 points as the SVG draws them: its size is rounded to hundredths of a millimetre."""
    head = svg.read_text()[:2000]
    width, height = (float(re.search(rf'{side}="([0-9.]+)mm"', head)[1]) / 25.4 * 72
                     for side in ("width", "height"))
    columns, rows = map(float, re.search(r'viewBox="0 0 ([0-9.]+) ([0-9.]+)"', head).groups())
    units = round(columns / width)  # of a point: one, or ten in a drawing of hairlines
    return dpi * units * min(width / columns, height / rows)


def bitmap(picture, folder, dpi):
    """Gives the bitmap of a picture and its pixels for 72 points."""
    if picture.suffix == ".png":
        return picture, dpi
    target = folder / (picture.name + ".png")
    if picture.suffix == ".svg":
        run("rsvg-convert", "--unlimited", "-d", dpi, "-p", dpi, picture, "-o", target)
        return target, svg_resolution(picture, dpi)
    # Of poppler's two painters the one whose edges are true: the other one darkens them.
    run("pdftocairo", "-png", "-transp", "-singlefile", "-r", dpi, picture, target.with_suffix(""))
    return target, dpi


def resolution_for(art):
    """How many pixels an inch a bitmap of the drawing must have to be compared."""
    layers = json.loads(art.read_text())["layers"]
    pressed = any(value > 0 for layer in layers for path in layer["art"] for _, value in path["tablet"])
    return DPI if pressed else DPI_OF_HAIRLINES


def differences(art, picture, folder, dpi, *more):
    """Gives the differing area in percent of what the painter paints, and the percentage of the pixels
    with ink that are far off; `art` is the drawing as JSON, a PNG has `dpi` pixels an inch.
    `more` goes to the painter: ("--brush", lightest, heaviest), ("--pressure", p)."""
    image, resolution = bitmap(picture, folder, dpi)
    words = [os.environ["PAINT_AND_COMPARE"], art, image, f"{resolution:.6f}", *more]
    area, _, far_off = map(float, run(*words).split())
    return area, far_off


def differing_area(*words):
    return differences(*words)[0]


def penwick_open(recording, output, *more):
    run(os.environ["PENWICK"], "open", "--quiet", recording, "-o", output, *more)


def draw(recording, folder, *endings):
    """Gives the art as JSON, its pictures and their pixels an inch."""
    art, *pictures = (folder / f"{recording.stem}.{ending}" for ending in ("json", *endings))
    penwick_open(recording, art)
    dpi = resolution_for(art)
    for picture in pictures:
        penwick_open(recording, picture, *(("--dpi", dpi) if picture.suffix == ".png" else ()))
    return art, pictures, dpi


def compare(recording, folder):
    """Gives the differing areas of SVG, PDF and PNG."""
    art, pictures, dpi = draw(recording, folder, "svg", "pdf", "png")
    run("xmllint", "--noout", "--huge", pictures[0])
    run("qpdf", "--check", pictures[1])
    return {picture.suffix[1:]: differing_area(art, picture, folder, dpi) for picture in pictures}


def compare_dense(folder):
    """Hairlines that leave gaps, and so many that hardly any is left, each in two resolutions."""
    good = True
    for points in (500, 3000):
        recording, art, picture = (folder / f"dense.{ending}" for ending in ("pnx", "json", "png"))
        recording.write_bytes(dense_stroke.recording(points, radius=1000))
        penwick_open(recording, art, "--force")
        for dpi in (150, 300):
            penwick_open(recording, picture, "--dpi", dpi, "--force")
            _, far_off = differences(art, picture, folder, dpi)
            print(f"{points} points, {dpi} dpi: {far_off:.2f} % of the pixels far off", flush=True)
            good = good and far_off <= MOST
    return good


def self_test(recording, folder):
    art, [picture], dpi = draw(recording, folder, "png")
    right = differing_area(art, picture, folder, dpi)
    wrong = differing_area(art, picture, folder, dpi, "--brush", 0.3 * 1.03, 2.7 * 1.03)
    print(f"the brush as it is: {right:.2f} %, 3 % thicker: {wrong:.2f} %")
    return right <= MOST < wrong


def main():
    if sys.argv[1] == "--self-test":
        with tempfile.TemporaryDirectory() as folder:
            return 0 if self_test(pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(folder)) else 1
    if sys.argv[1] == "--dense":
        with tempfile.TemporaryDirectory() as folder:
            return 0 if compare_dense(pathlib.Path(folder)) else 1
    good = True
    for recording in map(pathlib.Path, sys.argv[1:]):
        with tempfile.TemporaryDirectory() as folder:
            areas = compare(recording.resolve(), pathlib.Path(folder))
        print(recording.name + ": " +
              ", ".join(f"{ending} {area:.2f} %" for ending, area in areas.items()), flush=True)
        good = good and all(area <= MOST for area in areas.values())
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
