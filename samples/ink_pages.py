"""Two more ink documents, a tune and a teapot, and one in the form that other programs write."""

from ink_pen import InkPen, document
from pen import arc, curve, line, visible


def many(pen, lines, **how):
    for one in lines:
        pen.stroke(one, **how)


# -- music -------------------------------------------------------------------

GAP = 44.0              # between two lines of a staff


def staff(pen, top):
    for k in range(5):
        pen.stroke(line((180, top + GAP * k), (1920, top + GAP * k + 2), 0.0), speed=1600, pressure=330, tremor=0.6)
    for x in (180, 1910, 1922):
        pen.stroke([(x, top), (x, top + 4 * GAP)], speed=700, pressure=480)


def clef(pen, top):
    x, y = 280, top + 3 * GAP
    pen.stroke(curve([(x + 4, y + 4), (x - 22, y + 14), (x - 26, y - 22), (x + 10, y - 40), (x + 46, y - 8), (x + 28, y + 44),
                      (x - 26, y + 50), (x - 62, y - 4), (x - 34, y - 84), (x + 22, y - 146), (x + 34, y - 214),
                      (x + 8, y - 246), (x - 12, y - 186), (x + 4, y - 60), (x + 22, y + 92), (x + 6, y + 128),
                      (x - 28, y + 122), (x - 22, y + 96)]), speed=640, pressure=620)
    pen.stroke(arc((x - 16, y + 108), 9, 9, 0, 6.28, 10), speed=300, pressure=620)


def note(pen, x, top, step, filled=True, stem=True):
    """step counts half gaps upwards from the lowest line."""
    y = top + 4 * GAP - step * GAP / 2
    for size in ((1.0, 0.7, 0.4) if filled else (1.0,)):
        pen.stroke([(x + (px + 0.35 * py) * size, y + (py - 0.3 * px) * size) for px, py in arc((0, 0), 25, 17, 0.4, 6.6, 18)],
                   speed=360, pressure=640, tremor=0.8)
    if stem:
        side = 1 if step < 4 else -1
        pen.stroke([(x + 24 * side, y - 6 * side), (x + 24 * side, y - 150 * side)], speed=700, pressure=480, tremor=0.6)
    if step <= -2:
        pen.stroke([(x - 42, top + 5 * GAP), (x + 42, top + 5 * GAP)], speed=420, pressure=380)


TUNE = (((0, 1), (1, 1), (2, 1), (3, 1), (4, 2), (4, 2)), ((5, 1), (5, 1), (5, 1), (5, 1), (4, 4)),
        ((3, 1), (3, 1), (3, 1), (3, 1), (2, 2), (2, 2)), ((1, 1), (1, 1), (1, 1), (1, 1), (0, 4)))


def melody():
    pen = InkPen(0x4D, tilt=(-18, 22))
    pen.new_layer("staves")
    for number in range(4):
        staff(pen, 620 + 420 * number)
    pen.new_layer("notes")
    for number, bars in enumerate(TUNE):
        top = 620 + 420 * number
        clef(pen, top)
        x = 440.0
        for step, beats in bars:
            note(pen, x, top, step - 2, filled=beats == 1, stem=beats < 4)
            x += (150 if beats == 1 else 270) + 12 * pen.chance()
        middle = 440 + 4 * 150 - 80
        pen.stroke([(middle, top), (middle + 1, top + 4 * GAP)], speed=700, pressure=420)
    pen.new_layer("flourish")
    pen.stroke(curve([(760, 430), (900, 380), (1050, 440), (1200, 380), (1340, 430), (1250, 470), (1120, 430), (980, 480), (840, 440)]),
               speed=900, pressure=520)
    return document(pen, annotations=(("title", "All my ducklings"),))


# -- a teapot ----------------------------------------------------------------

POT = [(620, 1300), (560, 1480), (620, 1680), (780, 1790), (1060, 1790), (1220, 1680), (1280, 1480), (1220, 1300), (1060, 1230), (780, 1230)]
CUP = [(1420, 1560), (1440, 1700), (1500, 1780), (1680, 1780), (1740, 1700), (1760, 1560)]


def pot(pen):
    pen.stroke(curve(POT + POT[:1]), speed=900, pressure=640)
    pen.stroke(arc((920, 1238), 190, 34, 0, 6.28, 36), speed=900, pressure=520)
    pen.stroke(curve([(742, 1222), (800, 1140), (920, 1110), (1040, 1140), (1098, 1222)]), speed=800, pressure=600)
    pen.stroke(arc((920, 1080), 32, 32, 0, 6.28, 20), speed=420, pressure=620)
    # Spout and handle.
    pen.stroke(curve([(580, 1560), (470, 1530), (430, 1420), (400, 1290), (340, 1240)]), speed=800, pressure=620)
    pen.stroke(curve([(586, 1420), (530, 1390), (506, 1320), (470, 1250), (420, 1212), (340, 1240)]), speed=800, pressure=620)
    for wide in (0, 44):
        pen.stroke(curve([(1246, 1360 + wide), (1380, 1300 + wide), (1470 - wide, 1400), (1430 - wide, 1560), (1256, 1650 - wide)]),
                   speed=900, pressure=600)
    # A band of flowers.
    for k in range(5):
        x, y = 680 + 120 * k, 1520 + (22 if k % 2 else 0)
        pen.stroke(arc((x, y), 12, 12, 0, 6.28, 12), speed=300, pressure=520)
        for turn in range(6):
            pen.stroke(arc((x + 30 * (1, 0.5, -0.5, -1, -0.5, 0.5)[turn], y + 30 * (0, 0.87, 0.87, 0, -0.87, -0.87)[turn]),
                           15, 15, 0, 6.28, 10), speed=360, pressure=380)
    for k in range(34):
        y = 1320 + 13 * k
        many(pen, visible(line((1130, y + 60), (1290, y - 40), 0.02), [], POT), speed=900, pressure=240)


def cup(pen):
    pen.stroke(arc((1590, 1560), 170, 36, 0, 6.28, 36), speed=800, pressure=620)
    pen.stroke(arc((1590, 1566), 138, 24, 0, 6.28, 30), speed=800, pressure=330)
    pen.stroke(curve(CUP), speed=800, pressure=620)
    pen.stroke(curve([(1752, 1600), (1850, 1590), (1850, 1690), (1728, 1712)]), speed=640, pressure=560)
    pen.stroke(curve([(1330, 1790), (1460, 1850), (1720, 1850), (1850, 1790)]), speed=800, pressure=560)
    pen.stroke(curve([(1330, 1790), (1440, 1764), (1480, 1762)]), speed=640, pressure=440)
    pen.stroke(curve([(1700, 1762), (1760, 1768), (1850, 1790)]), speed=640, pressure=440)
    for k in range(16):
        many(pen, visible(line((1640 + 9 * k, 1760), (1680 + 9 * k, 1590), 0.02), [], CUP), speed=900, pressure=230)


def steam(pen):
    for x, y, size in ((1520, 1490, 1.0), (1600, 1470, 1.25), (1680, 1490, 0.9), (350, 1180, 0.7)):
        pen.stroke(curve([(x, y), (x - 34 * size, y - 70 * size), (x + 26 * size, y - 150 * size), (x - 20 * size, y - 230 * size),
                          (x + 16 * size, y - 300 * size)]), speed=620, pressure=230)


def table(pen):
    for y, force in ((1800, 420), (1960, 300)):
        many(pen, visible(line((180, y), (1960, y + 6), 0.0), [POT, CUP, [(1330, 1780), (1400, 1860), (1780, 1860), (1850, 1780)]]),
             speed=1500, pressure=force)
    for k in range(30):
        x = 560 + 30 * k
        pen.stroke(line((x, 1850), (x + 60, 1812), 0.02), speed=900, pressure=260)


def teapot():
    pen = InkPen(0x54, tilt=(-12, 40))
    for name, draw in (("table", table), ("pot", pot), ("cup", cup), ("steam", steam)):
        pen.new_layer(name)
        draw(pen)
    return document(pen, brushes=(("pencil", "DarkGray", 2, "Pencil"),))


# -- as other programs write it ----------------------------------------------

def other_program():
    """A leaf in well-formed InkML of another kind: a default namespace, "traceGroup" in camel case
    without ids, points of two decimals without contexts. None of it can be read as layers."""
    pen = InkPen(0x6C)
    pen.stroke(curve([(1050, 2200), (1046, 1900), (1056, 1500), (1050, 900)]), pressure=520)
    for side in (-1, 1):
        pen.stroke(curve([(1050, 2000), (1050 + side * 330, 1700), (1050 + side * 260, 1240), (1050, 900)]), pressure=600)
        for k in range(6):
            y = 1860 - 140 * k
            pen.stroke(curve([(1050, y), (1050 + side * 110, y - 60), (1050 + side * (215 - 12 * k), y - 96)]), pressure=380)
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', '<ink xmlns="http://www.w3.org/2003/InkML">', "  <definitions>",
             '    <brush xml:id="br0">', '      <brushProperty name="width" value="0.05" units="cm"/>', "    </brush>",
             "  </definitions>", "  <traceGroup>"]
    for points in pen.layers[0][1]:
        text = ", ".join("%.2f %.2f" % (point[0] / 10.0, point[1] / 10.0) for point in points)
        lines.append('    <trace brushRef="#br0">%s</trace>' % text)
    return "\n".join(lines + ["  </traceGroup>", "</ink>", ""]).encode("utf-8")
