"""A lighthouse at nightfall: sky, sea, rocks, cottage, tower, lamp, gulls."""

import math

from pen import Pen, arc, cosine, curve, dense, inside, line, sine, smooth, visible

CENTRE = 1270.0
TOP, FOOT = 850.0, 2040.0
HORIZON = 1880.0


def half_width(y):
    """The tower's half width: it spreads towards the foot."""
    u = (y - TOP) / (FOOT - TOP)
    return 116.0 + 60.0 * u + 34.0 * u * u * u


def ring(y, sag=0.2):
    """The front of a ring about the tower, seen from a little below."""
    w = half_width(y)
    return arc((CENTRE, y), w, w * sag, 3.14159, 0.0, 20)


TOWER = ([(CENTRE - half_width(y), float(y)) for y in range(850, 2041, 70)]
         + [(CENTRE + half_width(y), float(y)) for y in range(2040, 849, -70)])
HEAD = [(CENTRE - 178, 852), (CENTRE - 178, 760), (CENTRE - 92, 750), (CENTRE - 92, 612), (CENTRE - 112, 604),
        (CENTRE - 60, 520), (CENTRE, 440), (CENTRE + 60, 520), (CENTRE + 112, 604), (CENTRE + 92, 612),
        (CENTRE + 92, 750), (CENTRE + 178, 760), (CENTRE + 178, 852)]
COTTAGE = [(700, 2075), (700, 1850), (672, 1850), (760, 1700), (1075, 1700), (1130, 1850), (1130, 2075)]
ROCKS = [(330, 2330), (392, 2245), (470, 2225), (520, 2150), (600, 2120), (640, 2068), (760, 2052), (1000, 2064),
         (1300, 2058), (1520, 2050), (1590, 2098), (1668, 2105), (1722, 2180), (1800, 2210), (1838, 2300),
         (1920, 2352), (1890, 2440), (1760, 2475), (1600, 2462), (1480, 2520), (1300, 2492), (1130, 2545),
         (930, 2505), (800, 2520), (640, 2462), (520, 2470), (420, 2415)]
SOLID = [TOWER, HEAD, COTTAGE, ROCKS]


def many(pen, lines, **how):
    for one in lines:
        pen.stroke(one, **how)


def sky(pen):
    # A crescent moon, shaded along its inner edge.
    moon = (420.0, 400.0)
    pen.stroke(arc(moon, 132, 132, -2.5, 2.0, 40), pressure=430)
    pen.stroke(curve([(moon[0] - 106, moon[1] - 79), (moon[0] - 10, moon[1] - 62), (moon[0] + 30, moon[1] + 20),
                      (moon[0] - 4, moon[1] + 88), (moon[0] - 55, moon[1] + 120)]), pressure=360)
    for k in range(7):
        a = -0.9 + k * 0.27
        outer = (moon[0] + 120 * cosine(a), moon[1] + 120 * sine(a))
        inner = (moon[0] + (74 - 2 * k) * cosine(a + 0.08), moon[1] + (74 - 2 * k) * sine(a + 0.08))
        pen.stroke(line(outer, inner, 0.06), speed=420, pressure=210)
    # Stars: little crosses.
    for x, y, r in ((210, 300, 24), (760, 300, 18), (905, 500, 15), (700, 1010, 17),
                    (1640, 250, 24), (1880, 480, 17), (1830, 980, 19), (1080, 200, 16), (1480, 380, 13)):
        pen.stroke([(x, y - r), (x, y + r)], speed=260, pressure=300, tremor=0.6)
        pen.stroke([(x - r * 0.8, y + 1), (x + r * 0.8, y)], speed=260, pressure=260, tremor=0.6)
    # Clouds: rows of bows over a flat foot.
    for x, y, size in ((210, 1330, 1.0), (1560, 1350, 0.85), (170, 1590, 0.6)):
        left = x
        for w, h in ((70, 46), (105, 88), (130, 112), (100, 78), (75, 44)):
            w, h = w * size, h * size
            pen.stroke(arc((left + w / 2, y), w / 2 + 8 * size, h, 3.3, 6.1, 16), speed=560, pressure=300)
            left += w
        pen.stroke(line((x - 24 * size, y + 10), (left + 30 * size, y + 8), 0.01), speed=900, pressure=230)
        pen.stroke(line((x + 50 * size, y + 36 * size), (left - 60 * size, y + 34 * size), -0.01),
                   speed=900, pressure=170)


def sea(pen):
    # The horizon, broken by what stands before it.
    many(pen, visible(line((90, HORIZON), (2010, HORIZON + 2), 0.0), SOLID), speed=1500, pressure=300, tremor=0.8)
    # Waves: bows that grow towards the viewer.
    boat = [(250, 1885), (290, 1950), (480, 1950), (530, 1885)]
    rim = [(x - 40 if x < 1100 else x + 40, y + (95 if y > 2380 else 0)) for x, y in ROCKS]
    y, row = HORIZON + 26.0, 0
    while y < 2830:
        near = (y - HORIZON) / 950.0
        length = 75.0 + 150.0 * near
        height = 3.0 + 20.0 * near
        x = 80.0 + (row * 67 % 120) + pen.chance() * 60
        while x < 2000:
            size = length * (0.75 + 0.6 * (pen.chance() + 0.5))
            wave = curve([(x, y), (x + size * 0.25, y - height * 0.9), (x + size * 0.5, y + height * 0.1),
                          (x + size * 0.72, y + height * 0.6), (x + size, y - height * 0.2)])
            wave = [p for p in wave if 70 < p[0] < 2030]
            if len(wave) > 12:
                many(pen, visible(wave, SOLID + [boat, rim], shortest=40),
                     speed=480 + 500 * near, pressure=190 + 210 * near)
            x += size + (30 + 85 * (pen.chance() + 0.5)) * (0.8 + near)
        y += 23.0 + 46.0 * near
        row += 1
    # Surf along the rocks.
    foot = ROCKS[19:] + ROCKS[:1]
    for (x1, y1), (x2, y2) in zip(foot, foot[1:]):
        for k in range(2):
            x, y = x1 + (x2 - x1) * (k + 0.3) / 2, y1 + (y2 - y1) * (k + 0.3) / 2
            for bow, force in ((arc((x, y + 38), 46 + 14 * pen.chance(), 22, 3.5, 6.2, 14), 280),
                               (arc((x - 30, y + 70), 34, 14, 3.4, 6.0, 12), 200)):
                many(pen, visible(bow, [ROCKS]), speed=520, pressure=force)
    # A small sailing boat far out.
    pen.stroke(curve([(268, 1898), (300, 1936), (380, 1946), (470, 1936), (512, 1894)]), pressure=430)
    pen.stroke(line((268, 1898), (512, 1894), 0.02), pressure=400)
    pen.stroke([(392, 1893), (396, 1668)], pressure=360)
    pen.stroke(curve([(402, 1676), (450, 1770), (486, 1872), (404, 1878)]), pressure=330)
    pen.stroke(curve([(386, 1700), (338, 1790), (296, 1876), (384, 1880)]), pressure=330)
    for k in range(4):
        pen.stroke(line((410, 1740 + 36 * k), (428 + 17 * k, 1742 + 36 * k), 0.02), speed=330, pressure=180)


def rocks(pen):
    # The outline, rock by rock.
    outline = ROCKS + ROCKS[:1]
    hidden = [TOWER, COTTAGE]
    for a, b in zip(outline, outline[1:]):
        middle = ((a[0] + b[0]) / 2 + 12 * pen.chance(), (a[1] + b[1]) / 2 + 12 * pen.chance())
        many(pen, visible([a, middle, b], hidden, shortest=30), speed=540, pressure=560, tremor=2.4)
    # Clefts, and the shadow on the right side of each.
    clefts = [[(520, 2150), (560, 2240), (540, 2330), (600, 2440)], [(700, 2080), (690, 2180), (760, 2290), (740, 2480)],
              [(900, 2090), (930, 2200), (890, 2300), (960, 2480)], [(1120, 2110), (1090, 2230), (1150, 2350), (1130, 2510)],
              [(1330, 2100), (1370, 2210), (1320, 2330), (1360, 2470)], [(1540, 2090), (1510, 2200), (1590, 2320), (1560, 2440)],
              [(1690, 2150), (1670, 2250), (1740, 2340), (1720, 2450)], [(430, 2260), (450, 2340), (430, 2400)]]
    for cleft in clefts:
        for a, b in zip(cleft, cleft[1:]):
            middle = ((a[0] + b[0]) / 2 + 18 * pen.chance(), (a[1] + b[1]) / 2)
            pen.stroke([a, middle, b], speed=600, pressure=430, tremor=2.2)
        way = dense(cleft, 17.0)
        for k, (x, y) in enumerate(way[1:-1]):
            long = 62 + 34 * sine(k * 0.55) + 24 * pen.chance()
            many(pen, visible(line((x + 4, y), (x + long, y - long * 0.62), 0.03), hidden, ROCKS, 24),
                 speed=560, pressure=330)
    # Flat ledges.
    for x, y, w in ((610, 2270, 80), (800, 2210, 110), (830, 2380, 90), (1000, 2190, 100), (1000, 2400, 110),
                    (1210, 2210, 120), (1200, 2390, 90), (1430, 2250, 90), (1420, 2400, 100), (1640, 2290, 80)):
        pen.stroke(curve([(x, y), (x + w * 0.4, y - 12), (x + w * 0.7, y + 6), (x + w, y - 6)]), pressure=330)
    # Grass along the top.
    for k in range(46):
        x = 650 + 20 * k + 10 * pen.chance()
        for lean in (-8, 9):
            blade = curve([(x, 2068), (x + lean * 0.4, 2046), (x + lean + 6 * pen.chance(), 2028 + 12 * pen.chance())])
            if not inside(blade[-1], TOWER) and not (inside(blade[-1], COTTAGE) and k % 3):
                pen.stroke(blade, speed=330, pressure=300, tremor=0.7)


def cottage(pen):
    hidden = [TOWER]
    for a, b in (((700, 2062), (700, 1852)), ((672, 1850), (1132, 1850)), ((672, 1850), (762, 1700)),
                 ((762, 1700), (1090, 1700))):
        many(pen, visible(line(a, b, 0.004), hidden), speed=820, pressure=520)
    # Roof tiles in rows.
    for row in range(6):
        y = 1726 + 22 * row
        left = 762 - (y - 1700) * 0.6
        x = left + 14 + (row % 2) * 16
        while x < 1096:
            many(pen, visible(arc((x, y - 6), 15, 12, 2.9, 0.2, 8), hidden, shortest=20), speed=330, pressure=280, tremor=0.6)
            x += 33
    # Chimney and its smoke.
    for a, b in (((850, 1700), (850, 1622)), ((906, 1622), (906, 1700)), ((842, 1622), (914, 1622)), ((842, 1608), (914, 1608))):
        pen.stroke([a, b], speed=420, pressure=450)
    pen.stroke(curve([(880, 1596), (900, 1560), (872, 1520), (842, 1490), (858, 1440), (900, 1424), (912, 1456),
                      (880, 1470), (846, 1438), (848, 1380)]), speed=640, pressure=230)
    # Door and two windows.
    for x, y, w, h in ((886, 1915, 78, 148), (760, 1915, 84, 74), (1006, 1915, 62, 74)):
        for a, b in (((x, y), (x + w, y)), ((x + w, y), (x + w, y + h)), ((x, y), (x, y + h)), ((x, y + h), (x + w, y + h))):
            many(pen, visible([a, b], hidden), speed=420, pressure=430, tremor=0.8)
        if h < 100:
            many(pen, visible([(x + w / 2, y), (x + w / 2, y + h)], hidden), speed=420, pressure=300, tremor=0.8)
            many(pen, visible([(x, y + h / 2), (x + w, y + h / 2)], hidden), speed=420, pressure=300, tremor=0.8)
        else:
            for k in range(1, 6):
                pen.stroke([(x + k * 13, y + 6), (x + k * 13 + 2, y + h - 5)], speed=760, pressure=300)
    # The shadow under the eaves.
    for k in range(54):
        many(pen, visible(line((704 + 8 * k, 1854), (664 + 8 * k, 1990), 0.01), hidden,
                          [(702, 1854), (1140, 1854), (1140, 1886), (702, 1886)], 16), speed=760, pressure=220)


def tower(pen):
    # Both flanks in a few strokes each, as an arm draws a long line.
    for side in (-1, 1):
        for top in range(850, 2040, 240):
            flank = [(CENTRE + side * half_width(y), float(y)) for y in range(top, min(top + 252, 2052), 12)]
            pen.stroke(flank, speed=1150, pressure=640)
    # Seven bands; every second one is filled with hatching that follows the round.
    edges = [860, 1030, 1200, 1370, 1540, 1710, 1880, 2040]
    for number, (top, bottom) in enumerate(zip(edges, edges[1:])):
        if number:
            pen.stroke(ring(top), speed=1100, pressure=520)
        if number % 2 == 0:
            for k in range(30):
                across = -0.97 + 1.94 * k / 29
                lift = 1.0 - across * across
                upper = top + 0.2 * half_width(top) * smooth_root(lift)
                lower = bottom + 0.2 * half_width(bottom) * smooth_root(lift)
                lower = min(lower, 2066.0)
                dark = 0.62 + 0.38 * smooth((across + 0.5) / 1.3)
                pen.stroke(line((CENTRE + across * half_width(upper), upper + 6),
                                (CENTRE + across * half_width(lower), lower - 6), 0.006),
                           speed=980, pressure=760 * dark)
        else:
            # Pale bands carry only the shadow of the right flank.
            for k in range(11):
                y = top + 20 + k * 14
                w = half_width(y)
                start = 0.62 + 0.12 * (pen.chance() + 0.5)
                pen.stroke(arc((CENTRE, y), w, w * 0.2, 0.9 - 0.3 * start, 0.03, 12), speed=540, pressure=240)
    # Windows in the pale bands.
    for y, shift in ((1092, -18), (1440, 10), (1772, -14)):
        x = CENTRE + shift
        pen.stroke(arc((x, y), 25, 30, 3.14159, 6.28318, 14), speed=420, pressure=560)
        for a, b in (((x - 25, y), (x - 25, y + 70)), ((x + 25, y), (x + 25, y + 70)), ((x - 32, y + 72), (x + 32, y + 72)),
                     ((x, y - 28), (x, y + 70)), ((x - 24, y + 22), (x + 24, y + 22))):
            pen.stroke([a, b], speed=420, pressure=480, tremor=0.8)


def smooth_root(value):
    """The square root, kept from below zero."""
    return math.sqrt(max(0.0, value))


def lamp(pen):
    x = CENTRE
    # Gallery: brackets, deck, railing.
    for side in (-1, 1):
        pen.stroke(curve([(x + side * 116, 905), (x + side * 132, 872), (x + side * 172, 850)]), speed=420, pressure=520)
    pen.stroke(arc((x, 836), 176, 26, 3.14159, 0.0, 20), speed=900, pressure=600)
    pen.stroke(arc((x, 818), 176, 24, 3.14159, 0.0, 20), speed=900, pressure=520)
    pen.stroke(arc((x, 762), 176, 20, 3.14159, 0.0, 20), speed=900, pressure=440)
    pen.stroke(arc((x, 788), 176, 22, 3.14159, 0.0, 20), speed=900, pressure=300)
    for k in range(13):
        a = 3.14159 * k / 12
        px = x + 176 * cosine(a)
        pen.stroke([(px, 762 + 20 * sine(a)), (px, 820 + 24 * sine(a))], speed=300, pressure=380, tremor=0.6)
    # Lantern room: posts, panes, the burning lens.
    pen.stroke([(x - 90, 752), (x - 90, 616)], speed=560, pressure=560)
    pen.stroke([(x + 90, 616), (x + 90, 752)], speed=560, pressure=560)
    for k in (-54, 54):
        pen.stroke([(x + k, 770), (x + k, 616)], speed=560, pressure=380)
    pen.stroke(arc((x, 684), 90, 8, 3.14159, 2.35, 8), speed=330, pressure=300)
    pen.stroke(arc((x, 684), 90, 8, 0.79, 0.0, 8), speed=330, pressure=300)
    pen.stroke(arc((x, 690), 34, 48, -1.57, 4.71, 30), speed=620, pressure=620)
    pen.stroke(arc((x, 690), 16, 28, -1.57, 4.71, 24), speed=520, pressure=480)
    # Dome, ball and rod.
    pen.stroke(arc((x, 612), 114, 14, 3.14159, 0.0, 18), speed=800, pressure=560)
    pen.stroke(line((x - 114, 608), (x + 114, 608), 0.0), speed=800, pressure=500)
    pen.stroke(arc((x, 606), 104, 96, 3.14159, 4.71239, 16), speed=640, pressure=600)
    pen.stroke(arc((x, 606), 104, 96, 4.71239, 6.28318, 16), speed=640, pressure=600)
    for k in range(16):
        a = 4.9 + 0.082 * k
        rim = (x + 100 * cosine(a), 606 + 92 * sine(a))
        pen.stroke(line((x + 6 + 5.6 * k, 600), rim, 0.04), speed=520, pressure=520)
    pen.stroke(arc((x, 494), 17, 17, -1.57, 4.71, 18), speed=330, pressure=560)
    pen.stroke([(x, 476), (x + 1, 408)], speed=420, pressure=480)
    # Beams: rays that open and fade, to the left and to the right.
    # Each ray is several strokes, the farther the lighter.
    for side, slant in ((-1, 0.10), (1, -0.10)):
        for ray in range(7):
            spread = (ray - 3) / 3.0
            edge = ray in (0, 6)
            at = 150.0 + (0 if edge else 60 * (ray % 3))
            while at < (1060 if side < 0 else 640):
                long = 130.0 + 60.0 * (pen.chance() + 0.5)
                a = (x + side * at, 690 + at * (slant + 0.19 * spread) + 8 * spread)
                b = (x + side * (at + long), 690 + (at + long) * (slant + 0.19 * spread) + 8 * spread)
                fade = 1.0 - at / 1250.0
                pen.stroke([a, b], speed=1000, pressure=(430 if edge else 230) * fade, tremor=0.8)
                at += long + (26 if edge else 120 + 90 * (pen.chance() + 0.5))


def gulls(pen):
    for x, y, size, lean in ((620, 1210, 1.0, 0.10), (880, 1330, 0.7, -0.08), (330, 1110, 0.62, 0.05),
                             (1650, 1120, 0.95, -0.12), (1790, 1220, 0.6, 0.06), (1560, 1010, 0.5, 0.0),
                             (640, 1440, 0.5, 0.1)):
        left = [(-120, -10), (-78, -46), (-38, -36), (0, 10)]
        right = [(0, 10), (34, -44), (80, -56), (126, -24)]
        for wing in (left, right):
            pen.stroke(curve([(x + size * (px - lean * py), y + size * (py + lean * px)) for px, py in wing]),
                       speed=520 + 260 * size, pressure=520 * (0.5 + 0.5 * size))
        pen.stroke(curve([(x - 8 * size, y + 4 * size), (x + 6 * size, y + 22 * size), (x + 22 * size, y + 20 * size)]),
                   speed=300, pressure=380)


def record():
    pen = Pen(0x4C, [0x07, 0xDC, 0x05, 0x1F, 0x15, 0x07, 0x09], algorithm=1, time_every=5)
    layers = (sky, sea, rocks, cottage, tower, lamp, gulls)
    for number, layer in enumerate(layers):
        if number:
            pen.new_layer()
        layer(pen)
    return pen.data
