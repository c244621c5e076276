"""The line listing of a recording, and the summary that goes with it."""

import hashlib
import zlib


def listing(recording):
    """`L` for a layer, `S` for a stroke, `P x y z pressure tiltX tiltY timestamp`."""
    lines = []
    for layer in recording.elements:
        lines.append("L")
        for stroke in layer.elements:
            lines.append("S")
            lines.extend("P %.17g %.17g %.17g %d %d %d %d" % tuple(point.values())
                         for point in stroke.elements)
    return "".join(line + "\n" for line in lines).encode("ascii")


def summary(recording):
    """Every field of an expected.json file."""
    text = listing(recording)
    points = recording.points()

    def span(name):
        values = [getattr(point, name) for point in points]
        return [min(values), max(values)] if values else [0, 0]

    return {
        "bounds": [recording.low.x, recording.low.y, recording.high.x, recording.high.y],
        "bytes": recording.size,
        "layers": len(recording.elements),
        "listing_crc32": "%08x" % zlib.crc32(text),
        "listing_sha256": hashlib.sha256(text).hexdigest(),
        "longest_stroke": max((len(stroke.elements) for stroke in recording.strokes()), default=0),
        "points": len(points),
        "pressure": span("pressure"),
        "strokes": len(recording.strokes()),
        "strokes_per_layer": [len(layer.elements) for layer in recording.elements],
        "tilt_x": span("tilt_x"),
        "tilt_y": span("tilt_y"),
        "time": span("timestamp")}
