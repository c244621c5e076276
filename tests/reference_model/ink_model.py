"""Reads a pen recording and works out the ink document that it holds.

A recording is a row of packets: a tag byte, a length code, a payload with
big-endian numbers.  The end of the file is only seen after a read came back
short, as with the C library's streams; several verdicts hang on that.
"""

EXPECTED_LENGTH = {1: 6, 17: 9, 49: 9, 97: 6, 100: 6, 101: 6, 194: 6, 241: 3}
RECORD_NAME = {1: "file descriptor", 17: "physical parameters", 49: "date and time",
               97: "coordinate", 100: "pressure", 101: "tilt", 194: "time", 241: "status"}


def decode_length(code):
    """Total packet length: 6 to the power of the top two bits, times the low six."""
    return 6 ** (code >> 6) * (code & 63)


def signed8(byte):
    return byte - 256 if byte & 0x80 else byte


def signed16(high, low):
    value = high << 8 | low
    return value - 65536 if value & 0x8000 else value


def decode_x(high, low):
    return (signed16(high, low) + 5.0) / 10.0


def decode_y(high, low):
    return (signed16(high, low) + 2.5) / 5.0


def decode_pressure(algorithm, high, low):
    """Signed pressure, or None for an algorithm that does not exist."""
    if algorithm in (1, 5):
        return (high << 8 | low) // 4
    if algorithm == 6:
        return signed16(high, low)
    return None


def decode_time(kind, b1, b2, b3):
    """Unsigned 32-bit time; each of the three bytes is sign-extended by itself."""
    if kind != 17:
        return 0
    return ((signed8(b1) << 8 | signed8(b2)) << 8 | signed8(b3)) & 0xFFFFFFFF


class Point:
    __slots__ = ("x", "y", "z", "pressure", "tilt_x", "tilt_y", "timestamp")

    def __init__(self, x=0.0, y=0.0, z=0.0, pressure=0, tilt_x=0, tilt_y=0, timestamp=0):
        self.x, self.y, self.z = x, y, z
        self.pressure = pressure
        self.tilt_x, self.tilt_y = tilt_x, tilt_y
        self.timestamp = timestamp

    def copy(self):
        return Point(*self.values())

    def values(self):
        return [self.x, self.y, self.z, self.pressure, self.tilt_x, self.tilt_y, self.timestamp]


class Region:
    """Elements in order, with the box of what was appended (never of what is
    written into a stored point later)."""

    def __init__(self):
        self.low = Point()
        self.high = Point()
        self.elements = []

    def append_point(self, point):
        if not self.elements:
            self.low, self.high = point.copy(), point.copy()
        else:
            self.extend(point, point)
        self.elements.append(point)

    def append_region(self, region):
        if not self.elements:
            self.low, self.high = region.low.copy(), region.high.copy()
        else:
            self.extend(region.low, region.high)
        self.elements.append(region)

    def extend(self, low, high):
        """A corner that moves on one axis loses its other five fields."""
        if self.low.x > low.x or self.low.y > low.y:
            self.low = Point(min(self.low.x, low.x), min(self.low.y, low.y))
        if high.x > self.high.x or high.y > self.high.y:
            self.high = Point(max(self.high.x, high.x), max(self.high.y, high.y))


class Stream:
    """A binary stream whose end shows only after a short read."""

    def __init__(self, data):
        self.data = data
        self.position = 0
        self.at_end = False

    def read(self, count):
        """Up to count bytes, filled up with zero bytes; and how many were there."""
        if self.at_end:
            return bytes(count), 0
        got = self.data[self.position:self.position + count]
        self.position += len(got)
        if len(got) < count:
            self.at_end = True
        return got + bytes(count - len(got)), len(got)

    def seek(self, position):
        self.position = position
        self.at_end = False


class Refusal(Exception):
    def __init__(self, reason):
        super().__init__(reason)
        self.reason = reason


class Recording(Region):
    """The expected document: layers of strokes of points, header and verdict."""

    def __init__(self, data):
        super().__init__()
        self.size = len(data)
        self.complete = False
        self.reason = None          # why reading failed
        self.offset = None          # where the failing packet begins
        self.notes = []             # things a reader may want to warn about
        self.unknown_packets = 0
        self.dropped_points = 0
        self.descriptor = [0, 0, 0, 0]
        self.physical = [0] * 7
        self.date_time = [0] * 7
        self._stream = Stream(data)
        self._pressure = self._tilt_x = self._tilt_y = self._time = 0
        self._pen_down = False
        self._layer_pending = self._stroke_pending = True
        self._packet_start = 0
        try:
            self._parse()
            self.complete = True
        except Refusal as refusal:
            self.reason, self.offset = refusal.reason, self._packet_start

    # -- reading -------------------------------------------------------------

    def _payload(self, tag):
        code, got = self._stream.read(1)
        if not got or decode_length(code[0]) != EXPECTED_LENGTH[tag]:
            raise Refusal("%s packet: %s" % (
                RECORD_NAME[tag],
                "length code %d (%d bytes) where %d bytes are due"
                % (code[0], decode_length(code[0]), EXPECTED_LENGTH[tag])
                if got else "the file ends before the length code"))
        size = EXPECTED_LENGTH[tag] - 2
        payload, got = self._stream.read(size)
        if got < size:
            self.notes.append("the last packet is cut short")
        return payload

    def _parse(self):
        tag, got = self._stream.read(1)
        if tag[0] != 1:
            raise Refusal("the file is empty" if not got else "it does not begin with a file descriptor")
        payload = self._payload(1)
        self.descriptor[:2] = payload[:2]
        if payload[1] != 2:
            raise Refusal("coordinate format %d where 2 is due" % payload[1])
        self.descriptor[2:] = payload[2:]
        handlers = {1: self._second_descriptor, 17: self._physical_params, 49: self._file_date_time,
                    97: self._coordinate, 100: self._pressure_data, 101: self._tilt_data,
                    194: self._time_data, 241: self._status}
        while not self._stream.at_end:
            self._packet_start = self._stream.position
            tag, got = self._stream.read(1)
            if not got:
                break
            handler = handlers.get(tag[0])
            if handler:
                handler()
            elif not self._skip():
                break

    def _skip(self):
        """False for a packet of length 0: it would be read again for ever, and
        reading is ended from outside, as a success."""
        self.unknown_packets += 1
        code, got = self._stream.read(1)
        if not got or code[0] == 0:
            return True
        length = decode_length(code[0])
        if length == 0:
            self.notes.append("a packet of length 0 at byte %d ends the reading" % self._packet_start)
            return False
        self._stream.seek(self._stream.position + length - 2)
        return True

    # -- packets -------------------------------------------------------------

    def _second_descriptor(self):
        raise Refusal("a second file descriptor")

    def _physical_params(self):
        self.physical = list(self._payload(17))

    def _file_date_time(self):
        self.date_time = list(self._payload(49))

    def _last_stroke(self):
        return self.elements[-1].elements[-1].elements if self.elements else []

    def _pressure_data(self):
        payload = self._payload(100)
        value = decode_pressure(payload[0], payload[2], payload[3])
        if value is None:
            raise Refusal("pressure algorithm %d where 1, 5 or 6 is due" % payload[0])
        self._pressure = value & 0xFFFFFFFF
        stroke = self._last_stroke()
        if len(stroke) == 1:
            stroke[0].pressure = self._pressure

    def _tilt_data(self):
        payload = self._payload(101)
        self._tilt_x, self._tilt_y = signed8(payload[0]), signed8(payload[1])
        stroke = self._last_stroke()
        if len(stroke) == 1:
            stroke[0].tilt_x, stroke[0].tilt_y = self._tilt_x, self._tilt_y

    def _time_data(self):
        self._time = decode_time(*self._payload(194))
        stroke = self._last_stroke()
        if stroke:
            stroke[-1].timestamp = self._time

    def _status(self):
        bits = self._payload(241)[0]
        if bits & 0x80:
            self._layer_pending = self._stroke_pending = True
            self._pressure = self._tilt_x = self._tilt_y = 0
        elif bits & 0x01:
            if not self._pen_down:
                self._stroke_pending = True
                self._pressure = self._tilt_x = self._tilt_y = 0
            self._pen_down = True
        else:
            self._pen_down = False

    def _coordinate(self):
        payload = self._payload(97)
        point = Point(decode_x(*payload[:2]), decode_y(*payload[2:]), 0.0,
                      self._pressure, self._tilt_x, self._tilt_y, self._time)
        if not point.y >= 0.0:
            self.dropped_points += 1
            return
        if self.elements and not self._layer_pending:
            layer = self.elements[-1]
            if layer.elements and not self._stroke_pending:
                stroke = layer.elements[-1]
                stroke.append_point(point)
                layer.extend(stroke.low, stroke.high)
            else:
                stroke = Region()
                stroke.append_point(point)
                layer.append_region(stroke)
                self._stroke_pending = False
            self.extend(layer.low, layer.high)
        else:
            stroke, layer = Region(), Region()
            stroke.append_point(point)
            layer.append_region(stroke)
            self.append_region(layer)
            self._layer_pending = self._stroke_pending = False

    # -- views ---------------------------------------------------------------

    def strokes(self):
        return [stroke for layer in self.elements for stroke in layer.elements]

    def points(self):
        return [point for stroke in self.strokes() for point in stroke.elements]


def read_recording(path):
    with open(path, "rb") as file:
        return Recording(file.read())


def box_form(region):
    return {"min": region.low.values(), "max": region.high.values()}


def ink_form(recording):
    """The ink document in the JSON form of `penwick ink`."""
    physical = recording.physical
    return {
        "kind": "pen",
        "complete": recording.complete,
        "bounds": box_form(recording),
        "annotations": {},
        "header": {
            "descriptor": list(recording.descriptor),
            "physical": {"byte0": physical[0], "word1": physical[1:3], "word2": physical[3:5],
                         "byte5": physical[5], "byte6": physical[6]},
            "dateTime": list(recording.date_time)},
        "layers": [{
            "bounds": box_form(layer),
            "annotations": {},
            "strokes": [{"bounds": box_form(stroke),
                         "points": [point.values() for point in stroke.elements]}
                        for stroke in layer.elements]}
            for layer in recording.elements]}
