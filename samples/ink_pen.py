"""The simulated pen of pen.py, writing an ink document instead of a recording.

Coordinates are whole ink units: a reader of this format cuts fractions off.
"""

from xml.sax.saxutils import escape

from pen import Pen

CHANNELS = (("X", 0, 2100, "0.1mm"), ("Y", 0, 2970, "0.1mm"), ("Z", 0, 0, "0.1mm"), ("F", 0, 1023, "dev"),
            ("OTx", -90, 90, "deg"), ("OTy", -90, 90, "deg"), ("T", 0, 2147483647, "ms"))


class InkPen(Pen):
    """Collects layers of strokes of points (x, y, z, pressure, tilt x, tilt y, time)."""

    def __init__(self, seed, **how):
        self.layers = [("", [])]
        self.force = 0
        self.lean = (0, 0)
        super().__init__(seed, [0] * 7, **how)

    def _packet6(self, tag, payload):
        """An ink document has no packets."""

    def vendor(self):
        """Nor packets that only the pen's maker understands."""

    battery = vendor

    def status(self, bits):
        if bits & 1:
            self.layers[-1][1].append([])

    def new_layer(self, name=""):
        """Starts a layer of that name; the first one already exists and only gets its name."""
        if not self.layers[-1][1]:
            self.layers.pop()
        else:
            self.clock += 1800
        self.layers.append((name, []))

    def _points(self):
        return self.layers[-1][1][-1]

    def _coordinate(self, point):
        x, y = min(2100, max(0, round(point[0]))), min(2970, max(0, round(point[1])))
        self._points().append([x, y, 0, self.force, *self.lean, self.clock])

    def _pressure(self, value):
        self.force = min(1023, max(6, round(value)))
        if len(self._points()) == 1:
            self._points()[0][3] = self.force

    def _tilt(self, turn):
        self.lean = (round(self.tilt[0] + turn[0]), round(self.tilt[1] + turn[1]))
        if len(self._points()) == 1:
            self._points()[0][4:6] = self.lean

    def _time(self):
        """Every point has its time already."""


def trace_text(points):
    return ",".join(" ".join(str(value) for value in point) for point in points)


def brush(name, color, width, pentip):
    properties = (("color", color), ("width", width), ("height", width), ("transparency", 100),
                  ("antialiased", "False"), ("fittocurve", "True"), ("ignorePressure", "False"), ("pentip", pentip))
    lines = ['        <brush id="%s">' % name, "            <annotationXML>"]
    lines += ["                <%s>%s</%s>" % (key, value, key) for key, value in properties]
    return lines + ["            </annotationXML>", "        </brush>"]


def definitions(brushes):
    """One trace format, the brushes, and a context for each; the first is the default context."""
    lines = ["    <definitions>", '        <traceFormat id="pen">']
    lines += ['            <channel name="%s" type="INTEGER" min="%d" max="%d" units="%s" />' % channel
              for channel in CHANNELS]
    lines.append("        </traceFormat>")
    for one in brushes:
        lines += brush(*one)
    names = ["default-context"] + [one[0] + "-context" for one in brushes[1:]]
    lines += ['        <context id="%s" brushRef="#%s" traceFormatRef="#pen" />' % (name, one[0])
              for name, one in zip(names, brushes)]
    return lines + ["    </definitions>"]


def document(pen, brushes=(), annotations=()):
    """The bytes of the ink document."""
    lines = ['<?xml version="1.0" ?>', "<ink>"]
    lines += definitions(brushes) if brushes else ["    <definitions />"]
    lines += ['    <annotation type="%s">%s</annotation>' % (key, escape(text)) for key, text in annotations]
    for number, (name, strokes) in enumerate(pen.layers):
        lines.append('    <tracegroup id="layer%d">' % number)
        if name:
            lines.append('        <annotation type="name">%s</annotation>' % escape(name))
        lines += ['        <trace contextRef="#default-context">%s</trace>' % trace_text(points) for points in strokes]
        lines.append("    </tracegroup>")
    return "\n".join(lines + ["</ink>", ""]).encode("utf-8")
