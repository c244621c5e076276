"""Reads the pictures that are tested: 8 bits for each colour, without transparency."""
import struct
import zlib


def chunks(content):
    assert content[:8] == b"\x89PNG\r\n\x1a\n", "not a PNG"
    place = 8
    while place < len(content):
        length, kind = struct.unpack(">I4s", content[place:place + 8])
        yield kind, content[place + 8:place + 8 + length]
        place += length + 12


def predicted(kind, left, up, corner):
    if kind in (0, 1, 2):
        return (0, left, up)[kind]
    if kind == 3:
        return (left + up) // 2
    distances = [abs(up - corner), abs(left - corner), abs(left + up - 2 * corner)]
    return (left, up, corner)[distances.index(min(distances))]


def pixels(content):
    """The rows of a picture, each a list with the darkest of the colours of each pixel, 0 to 255."""
    parts = list(chunks(content))
    width, height, depth, colours = struct.unpack(">IIBB", parts[0][1][:10])
    assert depth == 8 and colours in (0, 2), (depth, colours)
    step = 1 if colours == 0 else 3
    data = zlib.decompress(b"".join(part for kind, part in parts if kind == b"IDAT"))
    length = width * step
    above, rows = bytes(length), []
    for row in range(height):
        kind, *coded = data[row * (length + 1):(row + 1) * (length + 1)]
        line = bytearray(length)
        for i, byte in enumerate(coded):
            left = line[i - step] if i >= step else 0
            corner = above[i - step] if i >= step else 0
            line[i] = (byte + predicted(kind, left, above[i], corner)) & 0xFF
        above = line
        rows.append([min(line[i:i + step]) for i in range(0, length, step)])
    return rows


def ink(rows):
    """The pixels between the edges and the drawing: left, top, right, bottom; None for an empty picture."""
    dark = [(x, y) for y, row in enumerate(rows) for x, value in enumerate(row) if value < 255]
    if not dark:
        return None
    across, down = [x for x, _ in dark], [y for _, y in dark]
    return min(across), min(down), len(rows[0]) - 1 - max(across), len(rows) - 1 - max(down)
