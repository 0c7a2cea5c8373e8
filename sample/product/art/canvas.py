"""A small drawing surface for the product's bitmaps: shapes by signed distance, smooth inside, cut hard at the edge.

The bitmaps are drawn with a transparent colour: a pixel is either the key or part of the picture. So shapes are
anti-aliased against each other, and the outline of the whole picture is cut at the pixel: a pixel mixed with the key
would show as a green fringe.
"""

import math
import struct

KEY = (0, 255, 0)


class Shape:
    """A region of the plane: distance(x, y) is negative inside; box = (left, top, right, bottom) holds all of it."""

    def __init__(self, distance, box):
        self.distance = distance
        self.box = box
        self._coverage = {}

    def __or__(self, other):
        return Shape(lambda x, y: min(self.distance(x, y), other.distance(x, y)),
                     (min(self.box[0], other.box[0]), min(self.box[1], other.box[1]),
                      max(self.box[2], other.box[2]), max(self.box[3], other.box[3])))

    def __and__(self, other):
        return Shape(lambda x, y: max(self.distance(x, y), other.distance(x, y)),
                     (max(self.box[0], other.box[0]), max(self.box[1], other.box[1]),
                      min(self.box[2], other.box[2]), min(self.box[3], other.box[3])))

    def __sub__(self, other):
        return Shape(lambda x, y: max(self.distance(x, y), -other.distance(x, y)), self.box)

    def grown(self, by):
        left, top, right, bottom = self.box
        return Shape(lambda x, y: self.distance(x, y) - by, (left - by, top - by, right + by, bottom + by))

    def moved(self, dx, dy):
        left, top, right, bottom = self.box
        return Shape(lambda x, y: self.distance(x - dx, y - dy), (left + dx, top + dy, right + dx, bottom + dy))

    def coverage(self, width, height):
        """[(x, y, share of the pixel inside)] for the touched pixels; kept, as series draw the same shapes often."""
        if (width, height) not in self._coverage:
            found = []
            for y in range(max(0, math.floor(self.box[1] - 1)), min(height, math.ceil(self.box[3] + 1))):
                for x in range(max(0, math.floor(self.box[0] - 1)), min(width, math.ceil(self.box[2] + 1))):
                    share = 0.5 - self.distance(x + 0.5, y + 0.5)
                    if share > 0:
                        found.append((x, y, min(share, 1.0)))
            self._coverage[width, height] = found
        return self._coverage[width, height]


def box(left, top, right, bottom, radius=0.0):
    cx, cy = (left + right) / 2, (top + bottom) / 2
    hx, hy = (right - left) / 2 - radius, (bottom - top) / 2 - radius

    def distance(x, y):
        dx, dy = abs(x - cx) - hx, abs(y - cy) - hy
        return math.hypot(max(dx, 0), max(dy, 0)) + min(max(dx, dy), 0) - radius
    return Shape(distance, (left, top, right, bottom))


def circle(cx, cy, radius):
    return box(cx - radius, cy - radius, cx + radius, cy + radius, radius)


def ellipse(cx, cy, rx, ry):
    def distance(x, y):
        dx, dy = x - cx, y - cy
        k0 = math.hypot(dx / rx, dy / ry)
        k1 = math.hypot(dx / rx ** 2, dy / ry ** 2)
        return k0 * (k0 - 1) / k1 if k1 else -min(rx, ry)
    return Shape(distance, (cx - rx, cy - ry, cx + rx, cy + ry))


def _to_segment(x, y, a, b):
    ex, ey, px, py = b[0] - a[0], b[1] - a[1], x - a[0], y - a[1]
    t = max(0.0, min(1.0, (px * ex + py * ey) / (ex * ex + ey * ey)))
    return math.hypot(px - ex * t, py - ey * t)


def polygon(*points):
    edges = list(zip(points, points[1:] + points[:1]))

    def distance(x, y):
        inside = False
        for (ax, ay), (bx, by) in edges:
            if (ay > y) != (by > y) and x < (bx - ax) * (y - ay) / (by - ay) + ax:
                inside = not inside
        nearest = min(_to_segment(x, y, a, b) for a, b in edges)
        return -nearest if inside else nearest
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return Shape(distance, (min(xs), min(ys), max(xs), max(ys)))


def line(width, *points):
    """A polyline with round ends."""
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    half = width / 2
    return Shape(lambda x, y: min(_to_segment(x, y, a, b) for a, b in zip(points, points[1:])) - half,
                 (min(xs) - half, min(ys) - half, max(xs) + half, max(ys) + half))


def arc(width, cx, cy, radius, first, last):
    """An arc with round ends; degrees, clockwise from the right."""
    steps = max(2, int((last - first) / 12))
    return line(width, *((cx + radius * math.cos(math.radians(first + (last - first) * i / steps)),
                          cy + radius * math.sin(math.radians(first + (last - first) * i / steps)))
                         for i in range(steps + 1)))


def drop(cx, cy, height):
    """A drop of ink, its middle at (cx, cy)."""
    half = height / 2
    return polygon(*((cx + 0.82 * half * math.sin(t) * math.sin(t / 2) ** 1.6, cy - half * math.cos(t))
                     for t in (2 * math.pi * i / 32 for i in range(32))))


def half_plane_below(y, right=4096, bottom=4096):
    return Shape(lambda _, at: y - at, (0, y - 1, right, bottom))


def mix(a, b, share):
    return (a[0] + (b[0] - a[0]) * share, a[1] + (b[1] - a[1]) * share, a[2] + (b[2] - a[2]) * share)


def rgb(text):
    """(r, g, b) of "#RRGGBB"."""
    return tuple(int(text[i:i + 2], 16) for i in (1, 3, 5))


def vertical(top, first, bottom, last):
    """A paint that runs from colour `first` at the height `top` to `last` at `bottom`."""
    return lambda x, y: mix(first, last, max(0.0, min(1.0, (y - top) / (bottom - top))))


def across(*stops):
    """A paint of (x, colour) stops from left to right."""
    def paint(x, _):
        for (x0, c0), (x1, c1) in zip(stops, stops[1:]):
            if x <= x1:
                return mix(c0, c1, max(0.0, (x - x0) / (x1 - x0)))
        return stops[-1][1]
    return paint


class Picture:
    def __init__(self, width, height, colour=(255, 255, 255)):
        self.width, self.height = width, height
        self.rows = [[colour] * width for _ in range(height)]

    def fill(self, shape, paint, opacity=1.0):
        """Paints the shape with a colour or a function (x, y) -> colour."""
        for x, y, share in shape.coverage(self.width, self.height):
            colour = paint(x + 0.5, y + 0.5) if callable(paint) else paint
            self.rows[y][x] = mix(self.rows[y][x], colour, share * opacity)

    def copy(self):
        result = Picture(self.width, self.height)
        result.rows = [list(row) for row in self.rows]
        return result

    def cut(self, silhouette):
        """The finished pixels, bottom row first: whole numbers, the key outside the silhouette."""
        shape = silhouette or box(0, 0, self.width, self.height)
        result = [[KEY] * self.width for _ in range(self.height)]
        for x, y, share in shape.coverage(self.width, self.height):
            if share >= 0.5:
                red, green, blue = self.rows[y][x]
                colour = (round(red), round(green), round(blue))
                assert colour != KEY, "a visible pixel has the transparent colour"
                result[self.height - 1 - y][x] = colour
        return result

    def save(self, path, silhouette=None, indexed=False):
        """Writes a BMP file: 24 bits a pixel, or 8 bits with a palette of at most 256 colours."""
        rows = self.cut(silhouette)
        palette = _palette({c for row in rows for c in row}) if indexed else {}
        pad = b"\0" * (-self.width * (1 if indexed else 3) % 4)
        if indexed:
            order = list(dict.fromkeys(palette.values()))
            number = {colour: i for i, colour in enumerate(order)}
            table = b"".join(bytes((b, g, r, 0)) for r, g, b in order)
            pixels = b"".join(bytes(number[palette[c]] for c in row) + pad for row in rows)
        else:
            order, table = [], b""
            pixels = b"".join(b"".join(bytes((b, g, r)) for r, g, b in row) + pad for row in rows)
        offset = 14 + 40 + len(table)
        dots_per_metre = 3780  # 96 dpi
        with open(path, "wb") as file:
            file.write(struct.pack("<2sIII", b"BM", offset + len(pixels), 0, offset))
            file.write(struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 8 if indexed else 24, 0, len(pixels),
                                   dots_per_metre, dots_per_metre, len(order), 0))
            file.write(table + pixels)


def _palette(colours):
    """Maps every colour to one of at most 256, the key to itself: the median cut."""
    visible = sorted(colours - {KEY})
    boxes = [visible] if visible else []
    while len(boxes) < 255:
        widest = max(boxes, key=lambda b: max(max(c[i] for c in b) - min(c[i] for c in b) for i in range(3)))
        spans = [max(c[i] for c in widest) - min(c[i] for c in widest) for i in range(3)]
        if max(spans) == 0:
            break
        widest.sort(key=lambda c: c[spans.index(max(spans))])
        boxes.remove(widest)
        boxes += [widest[:len(widest) // 2], widest[len(widest) // 2:]]
    mapped = {KEY: KEY}
    for members in boxes:
        mean = tuple(round(sum(c[i] for c in members) / len(members)) for i in range(3))
        mapped.update((c, mean) for c in members)
    return mapped
