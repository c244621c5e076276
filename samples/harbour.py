"""A small harbour in the morning: a row of gabled houses on the quay, a sailing boat at its berth, a
lighthouse on the mole, gulls."""

from ink_pen import InkPen, document
from pen import arc, cosine, curve, inside, line, sine, visible

QUAY = 1560.0           # the top of the quay wall
WATERLINE = 1660.0
HORIZON = 1450.0

# Houses along the quay: left edge, width, height of the eaves, height of the ridge, kind of gable.
HOUSES = ((150, 170, 390, 560, "steps"), (320, 150, 330, 480, "plain"), (470, 190, 430, 600, "bell"),
          (660, 140, 300, 430, "plain"), (800, 180, 400, 590, "steps"), (980, 150, 340, 470, "plain"))
HULL = [(1000, 1905), (1060, 2100), (1180, 2165), (1560, 2170), (1740, 2080), (1880, 1850), (1600, 1940), (1300, 1965)]
MAST_X, MAST_TOP = 1400.0, 560.0
MAIN_SAIL = [(1416, 690), (1416, 1760), (1860, 1752), (1640, 1200)]
JIB = [(1384, 760), (1384, 1780), (1030, 1790), (1230, 1240)]
BOLLARD = [(250, 2330), (250, 2210), (225, 2190), (225, 2150), (425, 2150), (425, 2190), (400, 2210), (400, 2330)]
PIER = [(60, 2330), (760, 2330), (800, 2480), (800, 2900), (60, 2900)]
DINGHY = [(940, 2560), (1000, 2680), (1120, 2720), (1420, 2715), (1530, 2640), (1580, 2530), (1280, 2580)]
LIGHT = [(1690, 1330), (1706, 1010), (1764, 1010), (1780, 1330)]
MOLE = [(1460, 1480), (1520, 1380), (1620, 1330), (1900, 1330), (2020, 1400), (2040, 1480)]


def outline(points):
    return points + points[:1]


def many(pen, lines, **how):
    for one in lines:
        pen.stroke(one, **how)


def edges(pen, points, hidden=(), bow=0.006, **how):
    for a, b in zip(points, points[1:]):
        many(pen, visible(line(a, b, bow), hidden), **how)


def house_shape(house):
    left, width, eaves, ridge, _ = house
    return [(left, QUAY), (left, QUAY - eaves), (left + width / 2, QUAY - ridge), (left + width, QUAY - eaves),
            (left + width, QUAY)]


FRONT = [MAIN_SAIL, JIB, HULL]
BACKDROP = [house_shape(house) for house in HOUSES]


def sky(pen):
    centre = (1730.0, 400.0)
    pen.stroke(arc(centre, 120, 120, -1.5, 4.85, 44), pressure=430)
    for k in range(16):
        a = 0.3927 * k + 0.1
        near, far = (160, 250) if k % 2 else (165, 215)
        pen.stroke([(centre[0] + near * cosine(a), centre[1] + near * sine(a)),
                    (centre[0] + far * cosine(a), centre[1] + far * sine(a))], speed=700, pressure=330)
    for x, y, size in ((260, 420, 1.0), (900, 330, 0.75), (760, 640, 0.55)):
        left = x
        for w, h in ((80, 52), (120, 98), (150, 124), (110, 84), (80, 48)):
            w, h = w * size, h * size
            pen.stroke(arc((left + w / 2, y), w / 2 + 8 * size, h, 3.3, 6.1, 16), speed=560, pressure=300)
            left += w
        pen.stroke(line((x - 24 * size, y + 12), (left + 26 * size, y + 10), 0.01), speed=900, pressure=230)


def gulls(pen):
    for x, y, size, lean in ((520, 590, 0.9, 0.10), (1190, 620, 0.7, -0.1), (300, 760, 0.75, 0.06),
                             (1800, 720, 0.8, -0.06), (1020, 800, 0.5, 0.1), (1920, 560, 0.5, 0.0)):
        for wing in ([(-120, -10), (-78, -46), (-38, -36), (0, 10)], [(0, 10), (34, -44), (80, -56), (126, -24)]):
            pen.stroke(curve([(x + size * (px - lean * py), y + size * (py + lean * px)) for px, py in wing]),
                       speed=520 + 260 * size, pressure=520)
    # One rests on the bollard.
    for shape in ([(236, 2062), (262, 2040), (292, 2040), (306, 2064), (350, 2078), (420, 2096), (470, 2090)],
                  [(470, 2090), (430, 2116), (380, 2132), (320, 2130), (282, 2108), (266, 2082), (236, 2062)],
                  [(236, 2062), (214, 2070), (240, 2074)], [(316, 2090), (360, 2086), (420, 2104), (364, 2116), (318, 2094)]):
        pen.stroke(curve(shape), speed=420, pressure=560)
    pen.stroke(arc((270, 2060), 4, 4, 0, 6.28, 8), speed=200, pressure=620)
    for x in (338, 356):
        pen.stroke([(x, 2132), (x - 3, 2150)], speed=200, pressure=420, tremor=0.5)


def gable(pen, house, hidden):
    left, width, eaves, ridge, kind = house
    top, low = QUAY - ridge, QUAY - eaves
    right, middle = left + width, left + width / 2
    if kind == "steps":
        count = 5
        way = [(left, low)]
        for k in range(count):
            x = left + (middle - left) * (k + 1) / count
            way += [(way[-1][0], low + (top - low) * (k + 1) / count), (x, low + (top - low) * (k + 1) / count)]
        edges(pen, way, hidden, pressure=520, speed=420)
        edges(pen, [(2 * middle - x, y) for x, y in way], hidden, pressure=520, speed=420)
    elif kind == "bell":
        half = [(left, low), (left + 14, low - 60), (left + 52, low - 84), (left + 58, low - 130), (middle - 14, top + 6)]
        many(pen, visible(curve(half), hidden), pressure=520)
        many(pen, visible(curve([(2 * middle - x, y) for x, y in half]), hidden), pressure=520)
        many(pen, visible(arc((middle, top), 18, 22, 3.14, 6.28, 10), hidden, shortest=10), pressure=480)
    else:
        edges(pen, [(left - 8, low + 6), (middle, top), (right + 8, low + 6)], hidden, pressure=540)
        for k in range(1, 6):
            y = low + (top - low) * k / 6
            w = (width / 2) * (1 - k / 6)
            many(pen, visible(line((middle - w + 10, y), (middle + w - 10, y), 0.01), hidden), pressure=200, speed=700)


def town(pen):
    # A church behind the roofs.
    tower = [(1180, 1470), (1180, 980), (1225, 760), (1270, 980), (1270, 1470)]
    hidden = BACKDROP + FRONT
    edges(pen, tower, hidden, pressure=420)
    edges(pen, [(1180, 980), (1270, 980)], hidden, pressure=360)
    pen.stroke([(1225, 758), (1225, 700)], pressure=420)
    pen.stroke([(1208, 722), (1242, 722)], pressure=380)
    many(pen, visible(arc((1225, 1050), 26, 26, 0, 6.28, 20), hidden), pressure=380)
    many(pen, visible([(1225, 1050), (1225, 1032)], hidden, shortest=8), pressure=380)
    many(pen, visible([(1225, 1050), (1237, 1056)], hidden, shortest=8), pressure=380)
    for number, house in enumerate(HOUSES):
        left, width, eaves, ridge, kind = house
        hidden = FRONT
        edges(pen, [(left, QUAY), (left, QUAY - eaves)], hidden, pressure=540)
        edges(pen, [(left + width, QUAY - eaves), (left + width, QUAY)], hidden, pressure=540)
        gable(pen, house, hidden)
        windows(pen, house, hidden, number)
        shade(pen, house, hidden, number)


def box(pen, x, y, w, h, hidden, **how):
    edges(pen, outline([(x, y), (x + w, y), (x + w, y + h), (x, y + h)]), hidden, bow=0.0, speed=420, tremor=0.8, **how)


def windows(pen, house, hidden, number):
    left, width, eaves, ridge, kind = house
    rows = int(eaves // 110)
    count = 3 if width > 160 else 2
    w, h = 30, 54
    for row in range(rows):
        y = QUAY - eaves + 24 + row * 105
        for k in range(count):
            x = left + width * (k + 0.5) / count - w / 2
            ground = row == rows - 1
            if ground and k == number % count:
                continue
            box(pen, x, y, w, h, hidden, pressure=430)
            many(pen, visible([(x + w / 2, y), (x + w / 2, y + h)], hidden), pressure=260, speed=420)
            many(pen, visible([(x, y + h * 0.4), (x + w, y + h * 0.4)], hidden), pressure=260, speed=420)
    k = number % count
    x = left + width * (k + 0.5) / count - 22
    box(pen, x, QUAY - 96, 44, 96, hidden, pressure=520)
    many(pen, visible(arc((x + 22, QUAY - 96), 22, 20, 3.14, 6.28, 10), hidden), pressure=420)
    many(pen, visible(arc((x + 35, QUAY - 46), 3, 3, 0, 6.28, 6), hidden, shortest=5), pressure=520)
    # The round window under the ridge.
    centre = (left + width / 2, QUAY - (eaves + ridge) / 2 + 16)
    many(pen, visible(arc(centre, 13, 16, 0, 6.28, 14), hidden), pressure=420)


def shade(pen, house, hidden, number):
    """Hatching on the side away from the sun."""
    left, width, eaves, ridge, kind = house
    for k in range(int(eaves / 22)):
        y = QUAY - eaves + 10 + 22 * k
        long = 18 + 8 * pen.chance()
        many(pen, visible(line((left + 4, y + 14), (left + long, y), 0.02), hidden), pressure=230, speed=700)


def quay(pen):
    hidden = FRONT
    many(pen, visible(line((60, QUAY), (1330, QUAY), 0.001), hidden), pressure=560, speed=1300)
    many(pen, visible(line((60, QUAY + 14), (1330, QUAY + 14), 0.001), hidden), pressure=420, speed=1300)
    edges(pen, [(1330, QUAY), (1330, WATERLINE)], hidden, pressure=520)
    for row in range(3):
        y = QUAY + 42 + 30 * row
        if row < 2:
            many(pen, visible(line((60, y), (1330, y), 0.0), hidden), pressure=240, speed=1300)
        x = 70 + (row % 2) * 40
        while x < 1320:
            many(pen, visible([(x, y - 28), (x + 2, y - 3)], hidden), pressure=260, speed=300)
            x += 74 + 20 * pen.chance()
    # Lamp posts, a barrel and crates.
    for x in (310, 790):
        edges(pen, [(x, QUAY), (x, QUAY - 190)], hidden, pressure=560)
        pen.stroke(curve([(x, QUAY - 188), (x + 12, QUAY - 222), (x + 40, QUAY - 216), (x + 44, QUAY - 196)]), pressure=460)
        pen.stroke(arc((x + 44, QUAY - 182), 13, 17, 0, 6.28, 14), pressure=460)
    for x, w, h in ((560, 54, 50), (618, 40, 36)):
        box(pen, x, QUAY - h, w, h, hidden, pressure=520)
        pen.stroke([(x + 4, QUAY - h + 4), (x + w - 4, QUAY - 4)], pressure=330, speed=420)
        pen.stroke([(x + w - 4, QUAY - h + 4), (x + 4, QUAY - 4)], pressure=330, speed=420)
    for side in (-1, 1):
        pen.stroke(curve([(930 + side * 18, QUAY - 62), (930 + side * 27, QUAY - 32), (930 + side * 18, QUAY - 2)]), pressure=520)
    for y in (62, 44, 20):
        pen.stroke(arc((930, QUAY - y), 18 + (y == 44) * 5 + (y == 20) * 5, 6, 3.14, 0, 10), pressure=380)


def mole(pen):
    many(pen, visible(line((1330, HORIZON), (2040, HORIZON), 0.0), FRONT + [MOLE]), speed=1500, pressure=280)
    for a, b in zip(MOLE, MOLE[1:]):
        middle = ((a[0] + b[0]) / 2 + 10 * pen.chance(), (a[1] + b[1]) / 2 - 6)
        many(pen, visible([a, middle, b], FRONT + [LIGHT]), pressure=480, tremor=2.4)
    for k in range(26):
        x, y = 1500 + 510 * (pen.chance() + 0.5), 1360 + 100 * (pen.chance() + 0.5)
        if inside((x, y), MOLE):
            many(pen, visible(arc((x, y), 24, 16, 3.3, 6.0, 8), FRONT), pressure=330, tremor=2.0)
    many(pen, visible(curve([(1440, 1484), (1600, 1494), (1760, 1482), (1900, 1494), (2050, 1484)]), FRONT), pressure=420)
    edges(pen, [(1690, 1330), (1706, 1010)], FRONT, pressure=540)
    edges(pen, [(1764, 1010), (1780, 1330)], FRONT, pressure=540)
    for number, y in enumerate((1010, 1090, 1170, 1250, 1330)):
        w = 29 + (y - 1010) * 16 / 320
        many(pen, visible(arc((1735, y), w, 9, 3.14, 0, 14), FRONT), pressure=460)
        if number % 2 == 0 and y < 1330:
            for k in range(9):
                x = 1735 - w + 4 + (2 * w - 8) * k / 8
                many(pen, visible([(x, y + 9), (x + (x - 1735) * 0.06, y + 84)], FRONT), pressure=400, speed=500)
    edges(pen, [(1690, 1004), (1780, 1004)], FRONT, pressure=520)
    edges(pen, [(1690, 982), (1780, 982)], FRONT, pressure=320)
    for x in range(1692, 1780, 14):
        pen.stroke([(x, 982), (x, 1004)], speed=260, pressure=300, tremor=0.5)
    edges(pen, [(1712, 982), (1712, 930), (1758, 930), (1758, 982)], FRONT, pressure=480)
    pen.stroke(arc((1735, 958), 10, 14, 0, 6.28, 14), pressure=560)
    pen.stroke(curve([(1704, 930), (1716, 900), (1735, 884), (1754, 900), (1766, 930)]), pressure=540)
    pen.stroke([(1735, 884), (1735, 852)], speed=260, pressure=420)


def boat(pen):
    # Hull: sheer line, stem, keel, stern, planks.
    pen.stroke(curve([(1000, 1905), (1140, 1950), (1300, 1967), (1600, 1942), (1760, 1900), (1885, 1848)]), speed=900, pressure=760)
    pen.stroke(curve([(1885, 1848), (1830, 1960), (1740, 2080), (1660, 2135)]), speed=700, pressure=720)
    pen.stroke(curve([(1000, 1905), (1020, 2010), (1060, 2100), (1110, 2140)]), speed=700, pressure=720)
    pen.stroke(curve([(1096, 2136), (1250, 2160), (1400, 2150), (1540, 2162), (1680, 2130)]), speed=900, pressure=480)
    for k in range(1, 4):
        drop = 52 * k
        pen.stroke(curve([(1006 + 14 * k, 1905 + drop), (1150, 1952 + drop * 0.95), (1300, 1968 + drop * 0.92),
                          (1600, 1944 + drop), (1750, 1906 + drop * 1.06), (1872 - 36 * k, 1866 + drop)]), speed=900, pressure=360)
    for k in range(3):
        pen.stroke(arc((1240 + 150 * k, 2005), 17, 17, 0, 6.28, 14), pressure=520)
    # Mast, boom, gaff, bowsprit.
    for shift in (-9, 9):
        pen.stroke(line((MAST_X + shift, 1952), (MAST_X + shift * 0.5, MAST_TOP), 0.0), speed=1400, pressure=620)
    pen.stroke([(MAST_X - 4, MAST_TOP), (MAST_X + 4, MAST_TOP)], speed=200, pressure=520)
    pen.stroke(line((1408, 1800), (1880, 1790), 0.004), speed=1100, pressure=640)
    pen.stroke(line((1000, 1905), (880, 1860), 0.0), pressure=620)
    # Sails, filled by a light wind from the left.
    pen.stroke(curve([(1416, 690), (1560, 960), (1700, 1240), (1800, 1500), (1862, 1756)]), speed=1000, pressure=640)
    pen.stroke(curve([(1416, 1760), (1560, 1790), (1720, 1784), (1862, 1756)]), speed=800, pressure=560)
    pen.stroke(line((1416, 690), (1416, 1760), 0.0), speed=1200, pressure=480)
    pen.stroke(curve([(1384, 760), (1270, 1080), (1140, 1420), (1028, 1792)]), speed=1000, pressure=620)
    pen.stroke(curve([(1028, 1792), (1150, 1842), (1290, 1830), (1382, 1780)]), speed=800, pressure=560)
    pen.stroke(curve([(1384, 760), (1366, 1100), (1360, 1460), (1382, 1780)]), speed=1000, pressure=480)
    for k in range(1, 6):
        u = k / 6.0
        y = 690 + 1070 * u
        pen.stroke(curve([(1420, y), (1416 + 210 * u, y + 26), (1416 + 420 * u, y + 6)]), speed=800, pressure=210)
        y = 760 + 1020 * u
        pen.stroke(curve([(1380 - 8 * u, y), (1384 - 180 * u, y + 30), (1384 - 345 * u, y + 10)]), speed=800, pressure=210)
    for k in range(24):
        y = 820 + 36 * k
        width = (y - 690) / 1070 * 420
        many(pen, visible(line((1424, y + 20), (1424 + width * 0.28, y - 10), 0.02), [], MAIN_SAIL), speed=900, pressure=180)
    # Pennant and stays.
    pen.stroke(curve([(1400, 562), (1450, 548), (1500, 574), (1560, 556)]), pressure=520)
    pen.stroke(curve([(1560, 556), (1490, 604), (1450, 584), (1402, 604)]), pressure=480)
    pen.stroke(line((MAST_X, 600), (882, 1860), 0.0), speed=1500, pressure=260)
    pen.stroke(line((MAST_X, 600), (1884, 1846), -0.02), speed=1500, pressure=220)
    # The skipper, with a cap, at the tiller.
    pen.stroke(arc((1690, 1838), 24, 26, 0, 6.28, 18), pressure=520)
    pen.stroke(curve([(1664, 1826), (1674, 1802), (1706, 1802), (1718, 1826), (1742, 1830)]), pressure=600)
    pen.stroke(curve([(1672, 1862), (1648, 1890), (1642, 1930)]), pressure=520)
    pen.stroke(curve([(1708, 1862), (1730, 1886), (1740, 1902)]), pressure=520)
    pen.stroke(line((1720, 1880), (1800, 1862), 0.02), pressure=480)


def pier(pen):
    edges(pen, [(60, 2330), (760, 2330), (800, 2480), (800, 2880)], [BOLLARD], pressure=620)
    edges(pen, [(60, 2480), (800, 2480)], pressure=520)
    for k in range(1, 6):
        pen.stroke(line((60 + 126 * k, 2334), (60 + 134 * k, 2478), 0.01), pressure=330)
    for row in range(4):
        y = 2480 + 100 * (row + 1)
        if row < 3:
            pen.stroke(line((60, y), (800, y), 0.002), speed=1100, pressure=360)
        for k in range(5):
            x = 130 + 150 * k + (row % 2) * 70
            if x < 780:
                pen.stroke([(x, y - 96), (x + 3, y - 5)], speed=420, pressure=360)
    for k in range(26):
        x, y = 80 + 690 * (pen.chance() + 0.5), 2500 + 360 * (pen.chance() + 0.5)
        pen.stroke(line((x, y), (x + 26, y - 16), 0.03), pressure=220, speed=600)
    # The bollard and a rope that leads to the boat.
    edges(pen, [(250, 2330), (250, 2212)], pressure=620)
    edges(pen, [(400, 2212), (400, 2330)], pressure=620)
    pen.stroke(arc((325, 2172), 102, 24, 0, 6.28, 30), pressure=620)
    pen.stroke(arc((325, 2206), 100, 24, 3.14, 0, 20), pressure=480)
    pen.stroke(arc((325, 2330), 76, 16, 3.14, 0, 16), pressure=480)
    for k in range(3):
        pen.stroke(curve([(248, 2244 + 20 * k), (290, 2268 + 20 * k), (360, 2270 + 20 * k), (402, 2248 + 20 * k)]), pressure=420)
    for k in range(12):
        pen.stroke([(262 + 5 * k, 2226), (260 + 5 * k, 2322)], pressure=240, speed=620)
    for shift in (0, 9):
        pen.stroke(curve([(402, 2262 + shift), (560, 2300 + shift), (740, 2250 + shift), (900, 2120 + shift), (1012, 1960 + shift)]),
                   speed=900, pressure=520)


def dinghy(pen):
    pen.stroke(curve([(940, 2560), (1060, 2598), (1280, 2606), (1460, 2576), (1580, 2530)]), speed=800, pressure=660)
    pen.stroke(curve([(940, 2560), (1080, 2540), (1300, 2536), (1480, 2530), (1580, 2530)]), speed=800, pressure=480)
    pen.stroke(curve([(940, 2560), (966, 2640), (1030, 2694), (1140, 2718), (1400, 2714), (1510, 2660), (1580, 2530)]), speed=800, pressure=660)
    pen.stroke(curve([(958, 2610), (1100, 2650), (1320, 2652), (1540, 2604)]), speed=800, pressure=330)
    for x in (1120, 1300):
        pen.stroke([(x, 2544), (x + 22, 2600)], pressure=480)
        pen.stroke([(x + 40, 2542), (x + 62, 2600)], pressure=480)
    pen.stroke(line((1180, 2570), (1420, 2760), 0.0), speed=900, pressure=520)
    pen.stroke(curve([(1410, 2746), (1450, 2764), (1480, 2800), (1440, 2790), (1414, 2764)]), pressure=480)


def water(pen):
    solid = [MAIN_SAIL, JIB, HULL, PIER, BOLLARD, DINGHY, [(1010, 2100), (1760, 2100), (1640, 2200), (1120, 2200)]]
    # Ripples that grow towards the viewer.
    y, row = WATERLINE + 14.0, 0
    while y < 2880:
        near = (y - WATERLINE) / 1200.0
        length, height = 70 + 120 * near, 3 + 13 * near
        x = 70.0 + (row * 71 % 130) + 60 * pen.chance()
        while x < 2010:
            size = length * (0.7 + 0.7 * (pen.chance() + 0.5))
            wave = curve([(x, y), (x + size * 0.25, y - height), (x + size * 0.5, y), (x + size * 0.75, y + height * 0.7),
                          (x + size, y)])
            many(pen, visible([p for p in wave if p[0] < 2030], solid, shortest=36), speed=500 + 420 * near,
                 pressure=190 + 190 * near)
            x += size + 60 + 190 * (pen.chance() + 0.5)
        y += 30 + 44 * near
        row += 1
    # The boat in the water: broken lines below hull and mast.
    for k in range(9):
        y = 2190 + 40 * k
        w = 250 - 16 * k
        many(pen, visible(curve([(1380 - w, y), (1380 - w / 2, y + 10), (1380, y - 4), (1380 + w / 2, y + 8), (1380 + w, y)]),
                          [DINGHY, PIER]), speed=800, pressure=380 - 26 * k)
    # The houses, in short strokes below the wall.
    for left, width, eaves, ridge, _ in HOUSES:
        for k in range(5):
            y = WATERLINE + 26 + 34 * k
            many(pen, visible(line((left + 14 + 16 * k, y), (left + width - 14 - 10 * k, y + 2), 0.01), solid),
                 speed=700, pressure=300 - 36 * k)


LAYERS = (("sky", sky), ("town", town), ("quay", quay), ("mole", mole), ("water", water), ("boat", boat),
          ("pier", pier), ("dinghy", dinghy), ("gulls", gulls))
BRUSHES = (("ink", "Black", 1, "Ball"), ("soft", "DarkBlue", 3, "Brush"))
ANNOTATIONS = (("place", "Harbour & town, from the old pier"), ("title", "Harbour in the morning"))


def record():
    pen = InkPen(0x4B, tilt=(-24, 31))
    for name, draw in LAYERS:
        pen.new_layer(name)
        draw(pen)
    return document(pen, BRUSHES, ANNOTATIONS)
