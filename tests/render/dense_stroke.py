"""A pen recording of one stroke that keeps crossing itself.

dense_stroke.py POINTS RADIUS OUT.pnx
"""
import pathlib
import random
import struct
import sys

DESCRIPTOR = bytes([1, 6, 0, 2, 0, 0])
PEN_UP_AND_DOWN = bytes([241, 3, 0, 241, 3, 1])


def coordinate(x, y):
    return bytes([97, 6]) + struct.pack(">hh", x, y)


def pressure(value):
    return bytes([100, 6, 6, 0]) + struct.pack(">h", value)


def recording(points, radius, pressed=1):
    """From place to place in a disc of this radius, in tenths of a millimetre; the places have no order.
    Pressed as lightly as can be by default, so that the brush is thin and gaps show."""
    chance = random.Random(5)
    places = []
    while len(places) < points:
        x, y = chance.randint(-radius, radius), chance.randint(-radius, radius)
        if x * x + y * y <= radius * radius:
            places.append(coordinate(radius + x, radius + y))
    return DESCRIPTOR + PEN_UP_AND_DOWN + places[0] + pressure(pressed) + b"".join(places[1:])


if __name__ == "__main__":
    pathlib.Path(sys.argv[3]).write_bytes(recording(int(sys.argv[1]), int(sys.argv[2])))
