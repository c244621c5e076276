"""The other sheets: a signature, a page of writing, hatched solids, a fern
drawn with a tilting pen, and an engraving in a single line."""

import math

from letters import set_text
from pen import Pen, arc, cosine, curve, dense, distance, inside, line, sine, smooth, visible


def signature():
    """A quick signature: high speed, algorithm 6, a flourish, a dot."""
    pen = Pen(0x51, [0x07, 0xDC, 0x06, 0x02, 0x09, 0x2C, 0x10], algorithm=6, time_every=3, length_six=0x41)

    def at(points):
        return curve([(330 + 1.08 * x + 0.2 * (400 - y), 900 + 1.1 * y) for x, y in points], 8)

    # A large A, then "ma" run together in short strokes, a large T, "rillow".
    strokes = [
        (at([(20, 420), (110, 250), (215, 20), (232, 40), (246, 200), (272, 400), (300, 388)]), 1500),
        (at([(70, 300), (40, 262), (120, 236), (250, 250), (330, 240)]), 1300),
        (at([(318, 270), (322, 400), (334, 310), (366, 276), (384, 320), (386, 392), (398, 310), (430, 274), (446, 330), (448, 394), (474, 380)]), 1050),
        (at([(560, 292), (520, 272), (484, 320), (496, 392), (534, 380), (562, 280), (560, 360), (580, 398), (624, 372)]), 950),
        (at([(842, 60), (820, 180), (800, 320), (770, 420), (720, 412)]), 1500),
        (at([(650, 110), (700, 58), (800, 84), (920, 62), (1010, 20)]), 1700),
        (at([(858, 268), (862, 396), (876, 310), (918, 272), (944, 284)]), 900),
        (at([(960, 284), (962, 360), (982, 396), (1010, 330), (1046, 120), (1028, 110), (1020, 300), (1038, 396), (1066, 330),
             (1104, 110), (1084, 104), (1076, 300), (1094, 394), (1126, 372)]), 1250),
        (at([(1184, 280), (1142, 292), (1134, 370), (1174, 396), (1208, 340), (1186, 282), (1216, 296), (1246, 290)]), 900),
        (at([(1246, 290), (1254, 380), (1290, 380), (1306, 300), (1314, 384), (1352, 372), (1366, 284), (1400, 300)]), 950),
        (at([(1386, 470), (1000, 500), (520, 520), (120, 560), (60, 596), (180, 606), (640, 556), (1120, 520), (1460, 540)]), 2700),
        (at([(968, 206), (974, 212)]), 300),
    ]
    for points, speed in strokes:
        pen.stroke(points, speed=speed * 2.55, pressure=560 if speed > 400 else 760, tremor=0.8,
                   weight=lambda point, part: 0.75 + 0.25 * sine(9.0 * part + 1.0))
    return pen.data


TEXT = ["The Keeper's Notes", "",
        "the lamp was lit at half past nine", "with wind from the north west.", "",
        "two boats came in before the rain,", "a third one lay behind the reef", "and waited for the tide to turn.", "",
        "at midnight all the panes were wet,", "so i went up and wiped them clean", "and drew the waves while it was calm.", "",
        "by dawn the gulls were back again,", "the sea lay flat and very quiet,", "and every page of this was dry."]


def handwriting():
    """A page of writing, algorithm 5, the time recorded now and then."""
    pen = Pen(0x68, [0x07, 0xDC, 0x06, 0x03, 0x06, 0x1E, 0x00], algorithm=5, time_every=8)
    y = 330.0
    for number, text in enumerate(TEXT):
        if not text:
            y += 62
            continue
        size = 62.0 if number == 0 else 43.0
        strokes, end = set_text(text, 250.0 + 26 * pen.chance(), y, size, pen.chance)
        for stroke in strokes:
            pen.stroke(stroke, speed=1300 if number == 0 else 1040, pressure=470 if number == 0 else 380, tremor=0.5)
        if number == 0:
            pen.stroke(curve([(240, y + 52), (600, y + 44), (end + 30, y + 54)]), speed=3600, pressure=420)
            pen.new_layer()
            y += 60
        y += 142.0 if number else 110.0
    # A small wave under the text.
    pen.new_layer()
    for k in range(5):
        x = 820 + 90 * k
        pen.stroke(curve([(x, y + 10), (x + 22, y - 14), (x + 46, y + 4), (x + 66, y + 18), (x + 88, y + 8)]),
                   speed=620, pressure=400)
    return pen.data


# -- hatching ----------------------------------------------------------------

def hatch(pen, shape, angle, gap, pressure, tone=None, long=165.0, speed=900.0):
    """Hatches a polygon with short strong strokes; tone(point) of 0 leaves paper white."""
    ux, uy = cosine(angle), sine(angle)
    spots = [(x * ux + y * uy, -x * uy + y * ux) for x, y in shape]
    low, high = min(s[0] for s in spots), max(s[0] for s in spots)
    v, end = min(s[1] for s in spots), max(s[1] for s in spots)
    while v < end:
        part = []
        u = low
        limit = long * (0.8 + 0.4 * (pen.chance() + 0.5))
        while u <= high + 4:
            point = (u * ux - v * uy, u * uy + v * ux)
            keep = inside(point, shape) and (tone is None or tone(point) > 0)
            if keep:
                part.append(point)
            if part and (not keep or distance(part[0], part[-1]) > limit):
                if distance(part[0], part[-1]) > 16:
                    dark = pressure if tone is None else pressure * tone(part[len(part) // 2])
                    pen.stroke(part, speed=speed, pressure=dark, tremor=1.6)
                part = []
                limit = long * (0.8 + 0.4 * (pen.chance() + 0.5))
            u += 4.0
        v += gap * (1.0 + 0.2 * pen.chance())


def hatching():
    """A ball, a block and a column in the light from the upper left."""
    pen = Pen(0x48, [0x07, 0xDC, 0x06, 0x04, 0x0E, 0x0F, 0x1E], algorithm=1, time_every=6)
    ball, radius = (620.0, 1920.0), 380.0
    circle = arc(ball, radius, radius, -1.2, 5.2, 90)

    def light(point):
        """Lambert's law on the ball: 1 in full light, 0 and less in the shade."""
        x, y = (point[0] - ball[0]) / radius, (point[1] - ball[1]) / radius
        z = math.sqrt(max(0.0, 1.0 - x * x - y * y))
        return -0.52 * x - 0.60 * y + 0.61 * z

    def shade(edge):
        return lambda point: min(1.0, max(0.0, 0.45 + (edge - light(point)) * 1.1)) if light(point) < edge else 0

    column_left, column_right, column_top, column_foot = 1320.0, 1760.0, 760.0, 1980.0
    rim = arc((1540.0, column_top), 220, 62, 0.0, 6.2832, 60)
    body = ([(column_left, column_top)] + arc((1540.0, column_top), 220, 62, 3.14159, 0.0, 30)
            + arc((1540.0, column_foot), 220, 62, 0.0, 3.14159, 30))
    front = [(750.0, 1290.0), (1170.0, 1370.0), (1170.0, 1840.0), (750.0, 1750.0)]
    side = [(1170.0, 1370.0), (1390.0, 1240.0), (1390.0, 1680.0), (1170.0, 1840.0)]
    roof = [(750.0, 1290.0), (980.0, 1176.0), (1390.0, 1240.0), (1170.0, 1370.0)]
    block = [(750.0, 1290.0), (980.0, 1176.0), (1390.0, 1240.0), (1390.0, 1680.0), (1170.0, 1840.0), (750.0, 1750.0)]
    solids = [circle, body, rim]

    # Outlines in several strokes.
    for start in range(8):
        pen.stroke(arc(ball, radius, radius, start * 0.7854 + 0.04, start * 0.7854 + 0.86, 16), speed=1300, pressure=760)
    for start in range(6):
        pen.stroke(arc((1540.0, column_top), 220, 62, start * 1.0472, start * 1.0472 + 1.1, 12), speed=1000, pressure=700)
    for x in (column_left, column_right):
        for k in range(5):
            y = column_top + k * 244
            pen.stroke([(x, y), (x + 2 * pen.chance(), y + 252)], speed=1300, pressure=780)
    for start in range(3):
        pen.stroke(arc((1540.0, column_foot), 220, 62, start * 1.0472, start * 1.0472 + 1.1, 12), speed=1000, pressure=780)
    for outline in (front, side, roof):
        for a, b in zip(outline, outline[1:] + outline[:1]):
            for part in visible([a, b], [circle, body]):
                pen.stroke(part, speed=1500, pressure=740)
    # The ball: four layers of hatching, each farther into the shade.
    pen.new_layer()
    for angle, gap, edge, force in ((2.30, 17.0, 0.80, 720), (2.95, 17.0, 0.52, 860), (1.65, 16.0, 0.26, 960),
                                    (2.30, 13.0, 0.06, 1080)):
        hatch(pen, circle, angle, gap, force, shade(edge))
    # The block: the front in one direction, the dark side in three.
    pen.new_layer()
    
    def in_view(point):
        return 0.0 if inside(point, circle) or inside(point, body) else 1.0

    hatch(pen, front, 0.95, 24.0, 640, in_view)
    for angle, gap, force in ((2.45, 16.0, 900), (1.57, 18.0, 980), (0.62, 18.0, 900)):
        hatch(pen, side, angle, gap, force, in_view)
    # The column: the closer to the right, the more layers.
    pen.new_layer()

    def round_shade(edge):
        def tone(point):
            across = (point[0] - 1540.0) / 220.0
            if across < edge or inside(point, rim):
                return 0.0
            return min(1.0, 0.55 + 0.7 * (across - edge)) * (0.86 if across > 0.86 else 1.0)
        return tone

    for angle, gap, edge, force in ((1.57, 18.0, -0.55, 720), (0.80, 18.0, -0.1, 900), (2.30, 17.0, 0.3, 1000),
                                    (1.57, 14.0, 0.56, 1100)):
        hatch(pen, body, angle, gap, force, round_shade(edge))
    hatch(pen, [p for p in rim], 0.12, 20.0, 420, lambda point: 1.0 if point[0] < 1500 else 0.0)
    # The shadows on the table.
    pen.new_layer()
    shadow = arc((920.0, 2238.0), 520, 112, 0.0, 6.2832, 50)
    hatch(pen, shadow, 0.0, 15.0, 860, lambda point: 0.0 if inside(point, circle) or inside(point, body) else
          1.0 - 0.45 * smooth((point[0] - 900) / 700.0))
    hatch(pen, shadow, 2.75, 22.0, 900, lambda point: 0.0 if inside(point, circle) or inside(point, body)
          or point[0] > 1240 else 0.9)
    column_shadow = [(1560, 2044), (1762, 1984), (2010, 2110), (1960, 2190), (1690, 2150)]
    hatch(pen, [(float(x), float(y)) for x, y in column_shadow], 0.42, 16.0, 840,
          lambda point: 0.0 if inside(point, body) else 1.0)
    for a, b in (((90, 1640), (340, 1636)), ((1780, 1640), (2010, 1644)), ((280, 1638), (420, 1637)), ((1390, 1637), (1560, 1638))):
        for part in visible(line(a, b, 0.01), solids + [block]):
            pen.stroke(part, speed=1200, pressure=560)
    return pen.data


# -- tilt --------------------------------------------------------------------

def frond(pen, spine, reach, first, last, pairs, leaflets):
    """A fern frond along a spine: leaves to both sides between two parts of its length."""
    way = dense(curve(spine, 12), 6.0)
    for k in range(0, len(way) - 2, 66):
        pen.stroke(way[k:k + 68], speed=560, pressure=640 - 300 * k / len(way), tremor=0.8)
    below = [(x + 11 * (1.0 - k / len(way)), y + 3) for k, (x, y) in enumerate(way)]
    for k in range(0, int(len(way) * 0.6), 56):
        pen.stroke(below[k:k + 56], speed=620, pressure=360, tremor=0.8)
    for pair in range(pairs):
        u = first + (last - first) * pair / (pairs - 1)
        grown = (pair + 0.6) / pairs
        length = reach * (smooth(grown / 0.34) * 0.45 + 0.55) * (1.0 - smooth((grown - 0.12) / 0.98) * 0.93)
        for side in (-1, 1):
            at = min(len(way) - 3, int(u * len(way)) + (5 if side > 0 else 0))
            x, y = way[at]
            step = distance(way[at], way[at + 2])
            tx, ty = (way[at + 2][0] - x) / step, (way[at + 2][1] - y) / step
            nx, ny = -ty * side, tx * side
            lean = 0.42 + 0.5 * grown
            dx, dy = nx + tx * lean, ny + ty * lean
            norm = math.sqrt(dx * dx + dy * dy)
            dx, dy = dx / norm, dy / norm
            long = length * (1.0 + 0.12 * pen.chance())
            rib = curve([(x, y), (x + dx * long * 0.35, y + dy * long * 0.35 - 5),
                         (x + dx * long * 0.7, y + dy * long * 0.7 + long * 0.02),
                         (x + dx * long, y + dy * long + long * 0.10)], 10)
            pen.stroke(rib, speed=560, pressure=400, tremor=0.6)
            leaves(pen, rib, max(3, round(leaflets * long / reach)), 0.17 * long + 9.0)


def leaves(pen, rib, count, size):
    """Little leaves on both sides of a rib, each one a loop of its own."""
    way = dense(rib, 3.0)
    for k in range(count):
        t = (k + 0.7) / (count + 0.4)
        x, y = way[min(len(way) - 1, int(t * len(way)))]
        a, b = way[max(0, int(t * len(way)) - 4)], way[min(len(way) - 1, int(t * len(way)) + 4)]
        norm = distance(a, b)
        tx, ty = (b[0] - a[0]) / norm, (b[1] - a[1]) / norm
        long = size * (1.0 - 0.72 * t * t)
        for side in (-1, 1):
            dx, dy = tx * 0.62 - ty * side * 0.78, ty * 0.62 + tx * side * 0.78
            wide = 0.21 * long
            tip = (x + dx * long * (1 + 0.2 * pen.chance()), y + dy * long)
            leaf = [(x, y), (x + dx * long * 0.5 - dy * wide, y + dy * long * 0.5 + dx * wide), tip,
                    (x + dx * long * 0.45 + dy * wide, y + dy * long * 0.45 - dx * wide), (x + dx * 2, y + dy * 2)]
            pen.stroke(curve(leaf, 6), speed=820, pressure=300 + 90 * (0.5 + 0.5 * side), tremor=0.4)


def tilted_sketch():
    """A fern: tilt in every stroke, the time at every point."""
    pen = Pen(0x54, [0x07, 0xDC, 0x06, 0x05, 0x11, 0x00, 0x2D], algorithm=5, tilt=(24, -31), time_every=1)
    frond(pen, [(900, 2640), (930, 2200), (990, 1750), (1080, 1300), (1160, 900), (1250, 560), (1370, 330)],
          520.0, 0.17, 0.97, 17, 9)
    # A young shoot, still rolled up.
    pen.new_layer()
    centre, roll = (1500.0, 1950.0), []
    for k in range(70):
        angle = 3.14159 - 0.27 * k * 0.88
        radius = 118.0 - 1.5 * k
        roll.append((centre[0] + radius * cosine(angle), centre[1] - radius * sine(angle)))
    stem = curve([(1040, 2640), (1180, 2480), (1300, 2270), (1364, 2080)], 10)[:-1] + curve([(1364, 2080), roll[0], roll[2]], 8)[:-6]
    way = dense(stem + roll, 5.0)
    for k in range(0, len(way) - 2, 48):
        pen.stroke(way[k:k + 50], speed=600, pressure=600, tremor=0.7)
    for k in range(70, len(way) - 60, 7):
        a, b = way[k], way[k + 2]
        norm = distance(a, b)
        nx, ny = (b[1] - a[1]) / norm, -(b[0] - a[0]) / norm
        long = 30.0 if k > 190 else 16.0
        pen.stroke(curve([a, (a[0] - nx * long * 0.6 - ny * 6, a[1] - ny * long * 0.6 + nx * 6),
                          (a[0] - nx * long, a[1] - ny * long)]), speed=260, pressure=330, tremor=0.4)
    # The ground: blades and short level strokes.
    pen.new_layer()
    for k in range(44):
        x = 420 + 27 * k + 14 * pen.chance()
        high = 46 + 70 * (pen.chance() + 0.5)
        lean = 60 * pen.chance()
        pen.stroke(curve([(x, 2670 + 16 * pen.chance()), (x + lean * 0.3, 2664 - high * 0.6), (x + lean, 2660 - high)]),
                   speed=520, pressure=430, tremor=0.6)
    for k in range(40):
        x, y = 330 + 1250 * (pen.chance() + 0.5), 2690 + 110 * (pen.chance() + 0.5)
        long = 150 - (y - 2690) * 0.5
        pen.stroke(curve([(x, y), (x + long * 0.5, y - 5 + 8 * pen.chance()), (x + long, y + 3)]),
                   speed=820, pressure=330 - (y - 2690) * 1.4)
    return pen.data


# -- one line ----------------------------------------------------------------

def spiral():
    """A ball engraved in one spiral of 20,000 points: the pressure makes the picture."""
    pen = Pen(0x5A, [0x07, 0xDC, 0x06, 0x06, 0x0B, 0x3B, 0x3B], algorithm=6, time_every=10)
    centre, outer, turns = (1050.0, 1485.0), 960.0, 58.0
    count = 24000
    points = []
    for k in range(count + 1):
        # Equal areas for equal steps give equal lengths along the spiral.
        part = math.sqrt(k / count)
        angle = 6.283185307 * turns * part
        points.append((centre[0] + outer * part * cosine(angle), centre[1] + outer * part * sine(angle)))

    def tone(point, part):
        x, y = (point[0] - centre[0]) / 720.0, (point[1] - centre[1]) / 720.0
        away = x * x + y * y
        if away < 1.0:
            z = math.sqrt(1.0 - away)
            bright = -0.50 * x - 0.58 * y + 0.64 * z
            glow = 0.16 * smooth(x * 0.9 + y * 0.9)          # light thrown back from below
            shade = 1.0 - max(0.0, bright) * 0.97 - (glow if bright < 0.1 else 0.0)
            return 0.05 + 0.95 * shade * shade
        sx, sy = (point[0] - centre[0] - 250.0) / 700.0, (point[1] - centre[1] - 640.0) / 190.0
        cast = 1.0 - smooth((sx * sx + sy * sy - 0.45) / 0.9)
        return 0.16 + 0.62 * cast + 0.10 * smooth(y * 0.8)

    # The hand starts in the middle and goes round and round at one speed.
    pen.stroke(points, speed=length_of(points) / 20000 * 133.0, pressure=1000, tremor=0.0, even=True,
               weight=tone, least=20000)
    return pen.data


def length_of(points):
    total = 0.0
    for a, b in zip(points, points[1:]):
        total += distance(a, b)
    return total
