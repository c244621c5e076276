"""Works out the art that the plug-in must make from an ink document.

Everything is IEEE arithmetic: constants are singles widened to double, sums are
computed in double in one fixed order, and what the host keeps is rounded to single.
"""

import struct
import zlib

from shortest import single

INK_TO_POINTS = single(0.2834)
PAGE_CENTRE_H = single(297.57)
PAGE_CENTRE_V = single(420.849)
PAGE_HEIGHT = single(841.698)
PRESSURE_SCALE = 1.0 / 1024.0
STYLE_NAME = "kvoaiexportset"
NEW_PAGE = (0.0, 0.0, single(595.276), single(841.89))      # left, bottom, right, top
MOST_SEGMENTS = 32000
SEGM = 0x5345474D


def as_int16(count):
    count &= 0xFFFF
    return count - 65536 if count & 0x8000 else count


class Mapping:
    """From ink units to points on the page, for one drawing."""

    def __init__(self, low, high):
        self.left, self.top = low.x, low.y
        ink_width = single(high.x - low.x)
        ink_height = single(high.y - low.y)
        self.width = single(ink_width * INK_TO_POINTS)
        self.height = single(ink_height * INK_TO_POINTS)
        self.half_width = single(self.width * 0.5)
        self.half_height = single(self.height * 0.5)

    def place(self, point):
        h = PAGE_CENTRE_H - self.left * INK_TO_POINTS - self.half_width + point.x * INK_TO_POINTS
        v = (PAGE_HEIGHT - point.y * INK_TO_POINTS) + (
            self.top * INK_TO_POINTS - PAGE_CENTRE_V + self.half_height)
        return single(h), single(v)

    def page(self):
        """The page's edges after its size was set about the centre of a new page."""
        left, bottom, right, top = NEW_PAGE
        centre_h, centre_v = single((left + right) * 0.5), single((bottom + top) * 0.5)
        return [single(centre_h - self.half_width), single(centre_v - self.half_height),
                single(centre_h + self.half_width), single(centre_v + self.half_height)]


class Path:
    def __init__(self, points, mapping):
        count = len(points)
        places = [mapping.place(point) for point in points]
        self.count = count
        self.segments = []
        self.tablet = []
        before = places[0]
        for i in range(count - 1):
            self.segments.append([*places[i], *before, *places[i + 1], False])
            offset = single(single(float(i)) / single(float(count - 1))) if i else 0.0
            self.tablet.append([offset, single(points[i].pressure * PRESSURE_SCALE)])
            before = places[i]
        last = places[count - 2]
        self.segments.append([*last, *before, *last, False])
        self.tablet.append([1.0, single(float(points[count - 2].pressure >> 10))])

    @property
    def kept(self):
        """The segment count as the host is told it: a signed 16-bit number."""
        return as_int16(self.count)

    @property
    def refused(self):
        return self.kept < 0 or self.kept > MOST_SEGMENTS

    def segment_checksum(self):
        kept = self.segments[:max(self.kept, 0)]
        return checksum(b"".join(struct.pack("<6fi", *s[:6], 0) for s in kept))

    def tablet_checksum(self):
        return checksum(b"".join(struct.pack("<2f", *t) for t in self.tablet))


def checksum(data):
    return "%08x" % zlib.crc32(data)


class Art:
    """Layers of paths, bottom to top; strokes of fewer than two points make no path."""

    def __init__(self, recording):
        self.mapping = Mapping(recording.low, recording.high)
        self.layers = [[Path(stroke.elements, self.mapping)
                        for stroke in layer.elements if len(stroke.elements) >= 2]
                       for layer in recording.elements] or [[]]
        self.undrawn = sum(1 for stroke in recording.strokes() if len(stroke.elements) < 2)

    def refused_path(self):
        """Number (from 1) of the first path that the host refuses, or None."""
        number = 0
        for layer in self.layers:
            for path in layer:
                number += 1
                if path.refused:
                    return number
        return None


def art_form(art):
    """The art in the JSON form of `penwick open -o art.json`."""
    mapping = art.mapping
    return {
        "document": {"width": mapping.width, "height": mapping.height,
                     "rulerOrigin": [0.0, 0.0], "page": mapping.page()},
        "layers": [{
            "name": "Layer %d" % number,
            "editable": True,
            "art": [{"type": "path", "closed": False, "segments": path.segments[:path.kept],
                     "tablet": path.tablet, "style": STYLE_NAME} for path in layer]}
            for number, layer in enumerate(art.layers, 1)]}
