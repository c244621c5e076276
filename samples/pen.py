"""A simulated digital pen: takes lines on a page and writes the packets of a recording.

The same bytes come out on every machine: results of trigonometry are rounded
before use, everything else is plain IEEE arithmetic (which Python keeps exact
to the last bit), and the only random numbers come from a small congruential
generator with a fixed seed.

Units are ink units, tenths of a millimetre: an A4 page is 2100 by 2970.
"""

import math

SAMPLES_PER_SECOND = 133.0


def sine(angle):
    return round(math.sin(angle), 9)


def cosine(angle):
    return round(math.cos(angle), 9)


def distance(a, b):
    dx, dy = b[0] - a[0], b[1] - a[1]
    return math.sqrt(dx * dx + dy * dy)


def smooth(u):
    """0 to 1 with flat ends."""
    u = min(1.0, max(0.0, u))
    return u * u * (3.0 - 2.0 * u)


class Chance:
    """Random numbers from -0.5 to 0.5, always the same for a seed."""

    def __init__(self, seed):
        self.state = seed & 0xFFFFFFFF

    def __call__(self):
        for _ in range(2):
            self.state = (1664525 * self.state + 1013904223) & 0xFFFFFFFF
        return (self.state >> 8) / 16777216.0 - 0.5


# -- lines -------------------------------------------------------------------

def dense(points, step=4.0):
    """The polyline with a point at least every step units."""
    result = [points[0]]
    for a, b in zip(points, points[1:]):
        count = max(1, int(distance(a, b) / step))
        result += [(a[0] + (b[0] - a[0]) * k / count, a[1] + (b[1] - a[1]) * k / count)
                   for k in range(1, count + 1)]
    return result


def curve(points, pieces=10):
    """A smooth curve through the points."""
    ends = [points[0]] + list(points) + [points[-1]]
    result = [points[0]]
    for p0, p1, p2, p3 in zip(ends, ends[1:], ends[2:], ends[3:]):
        for k in range(1, pieces + 1):
            t = k / pieces
            a = ((-t + 2.0) * t - 1.0) * t * 0.5
            b = ((3.0 * t - 5.0) * t * t + 2.0) * 0.5
            c = ((-3.0 * t + 4.0) * t + 1.0) * t * 0.5
            d = (t - 1.0) * t * t * 0.5
            result.append((a * p0[0] + b * p1[0] + c * p2[0] + d * p3[0],
                           a * p0[1] + b * p1[1] + c * p2[1] + d * p3[1]))
    return result


def line(a, b, bow=0.0):
    """From a to b, bowed sideways by a hand that turns about the wrist."""
    middle = ((a[0] + b[0]) / 2 - (b[1] - a[1]) * bow, (a[1] + b[1]) / 2 + (b[0] - a[0]) * bow)
    return curve([a, middle, b]) if bow else [a, b]


def arc(centre, rx, ry, start, end, count=24):
    return [(centre[0] + rx * cosine(start + (end - start) * k / count),
             centre[1] + ry * sine(start + (end - start) * k / count)) for k in range(count + 1)]


def inside(point, polygon):
    x, y = point
    result = False
    for (x1, y1), (x2, y2) in zip(polygon, polygon[1:] + polygon[:1]):
        if (y1 > y) != (y2 > y) and x < (x2 - x1) * (y - y1) / (y2 - y1) + x1:
            result = not result
    return result


def visible(points, hidden=(), only=None, shortest=14.0):
    """The parts of a line outside all hidden polygons (and inside `only`)."""
    parts, part = [], []
    for point in dense(points, 3.0):
        if any(inside(point, polygon) for polygon in hidden) or (only and not inside(point, only)):
            parts.append(part)
            part = []
        else:
            part.append(point)
    parts.append(part)
    return [part for part in parts if len(part) > 1 and distance(part[0], part[-1]) + len(part) > shortest]


# -- the pen -----------------------------------------------------------------

class Pen:
    """Writes strokes; each is sampled at the pen's rate, slower where it bends."""

    def __init__(self, seed, date_time, algorithm=1, tilt=None, time_every=4,
                 pressure_every=1, length_six=0x06):
        self.chance = Chance(seed)
        self.algorithm = algorithm
        self.tilt = tilt                    # (tilt x, tilt y) of the resting hand, or None
        self.time_every = time_every
        self.pressure_every = pressure_every
        self.length_six = length_six        # 0x06 and 0x41 both say six bytes
        self.clock = 1500                   # milliseconds since the pen was switched on
        self.half = 0
        self.place = (1050.0, 1485.0)
        self.strokes = 0
        self.data = bytearray()
        self._packet6(0x01, [0x10, 0x02, seed & 0xFF, 0x01])
        self.data += bytes([0x11, 0x09, 0x03, 0x52, 0x08, 0x3A, 0x02, 0x85, 0x64])
        self.data += bytes([0x31, 0x09]) + bytes(date_time)
        self.vendor()
        self.status(0x00)

    def _packet6(self, tag, payload):
        self.data += bytes([tag, self.length_six]) + bytes(payload)

    def vendor(self):
        """A packet that only the maker's own program understands: five bytes in all."""
        self.data += bytes([0x21, 0x05, 0x4B, self.strokes >> 8 & 0xFF, self.strokes & 0xFF])

    def battery(self):
        """Another unknown packet, of 12 bytes: its length code means 6 times 2."""
        self.data += bytes([0x42, 0x42, 0x0E, 0xD8]) + bytes(8)

    def status(self, bits):
        self.data += bytes([0xF1, 0x03, bits])

    def new_layer(self):
        self.clock += 1800
        self.status(0x80)

    def _coordinate(self, point):
        x, y = round(point[0] * 10.0 - 5.0), round(point[1] * 5.0 - 2.5)
        x, y = min(21000, max(0, x)), min(14850, max(0, y))
        self._packet6(0x61, [x >> 8, x & 0xFF, y >> 8, y & 0xFF])

    def _pressure(self, value):
        value = min(1023, max(6, round(value)))
        raw = value if self.algorithm == 6 else value * 4 + (self.chance.state >> 9 & 3)
        self._packet6(0x64, [self.algorithm, self.strokes & 0xFF, raw >> 8, raw & 0xFF])

    def _tilt(self, turn):
        x, y = round(self.tilt[0] + turn[0]), round(self.tilt[1] + turn[1])
        self._packet6(0x65, [x & 0xFF, y & 0xFF, self.chance.state >> 8 & 0xFF, 0])

    def _time(self):
        now = self.clock
        self._packet6(0xC2, [0x11, now >> 16 & 0xFF, now >> 8 & 0xFF, now & 0xFF])

    def _tick(self):
        """7.5 milliseconds, in whole ones: 7 and 8 in turn."""
        self.clock += 7 + self.half
        self.half = 1 - self.half

    def stroke(self, points, speed=620.0, pressure=420.0, tremor=1.2, even=False, weight=None, least=5):
        """One stroke along the points; weight(point, part) can scale its pressure."""
        points = dense(points, 3.0)
        way = [0.0]
        for k in range(1, len(points)):
            a, b = points[k - 1], points[k]
            length = distance(a, b)
            bend = 0.0
            if k + 1 < len(points):
                c = points[k + 1]
                other = distance(b, c)
                if length > 0 and other > 0:
                    bend = abs((b[0] - a[0]) * (c[1] - b[1]) - (b[1] - a[1]) * (c[0] - b[0])) / (length * other)
            way.append(way[-1] + length + (0.0 if even else 9.0 * bend))
        total = way[-1]
        count = max(least, round(total / speed * SAMPLES_PER_SECOND))
        self.clock += 70 + round(distance(self.place, points[0]) * 0.4) + round((self.chance() + 0.5) * 60)
        self.status(0x01)
        at = 0
        drift = [0.0, 0.0]
        unrest = 0.0
        for k in range(count):
            u = k / (count - 1)
            target = total * (u if even else 0.4 * u + 0.6 * smooth(u))
            while at < len(way) - 2 and way[at + 1] < target:
                at += 1
            span = way[at + 1] - way[at]
            t = (target - way[at]) / span if span > 0 else 0.0
            drift = [d * 0.8 + self.chance() * tremor for d in drift]
            a, b = points[at], points[at + 1]
            point = (a[0] + (b[0] - a[0]) * t + drift[0], a[1] + (b[1] - a[1]) * t + drift[1])
            unrest = unrest * 0.7 + self.chance() * 0.12
            force = pressure * (0.22 + 0.78 * min(smooth(u / 0.16), smooth((1.0 - u) / 0.28))) * (1.0 + unrest)
            if weight:
                force *= weight(point, u)
            turn = (b[0] - a[0], b[1] - a[1])
            if k == 0:
                self._coordinate(point)
                self._pressure(force)
                if self.tilt:
                    self._tilt(turn)
                self._time()
            else:
                if k % self.pressure_every == 0:
                    self._pressure(force)
                if self.tilt and k % 2 == 0:
                    self._tilt((turn[0] * 1.6 + unrest * 14.0, turn[1] * 1.6 - unrest * 10.0))
                self._coordinate(point)
                if k % self.time_every == 0:
                    self._time()
            self._tick()
        self.status(0x00)
        self.place = points[-1]
        self.strokes += 1
        if self.strokes % 48 == 0:
            self.vendor()
        if self.strokes % 131 == 0:
            self.battery()
