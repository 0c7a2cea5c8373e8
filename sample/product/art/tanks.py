"""The ink tanks: a glass series and a gauge series, one picture for every fill step, and the picture of no level."""

import functools

from canvas import (Picture, box, circle, drop, ellipse, arc, line, half_plane_below, mix, rgb, vertical, across)

SIZE = WIDTH, HEIGHT = 48, 104  # one size for all series: the picture of no level replaces any of them

WHITE, DARK, EDGE = rgb("#FFFFFF"), rgb("#22282E"), rgb("#55616C")
BLACK_INK, CYAN, MAGENTA, YELLOW = rgb("#2A2D31"), rgb("#0099D8"), rgb("#D3147C"), rgb("#FFD21A")
PHOTO_BLACK, LIGHT_CYAN, LIGHT_MAGENTA = rgb("#565B63"), rgb("#79C9EC"), rgb("#EF93C4")

# A step is a twelfth of a tank, also in the series that end after eight: tanks side by side then agree on the same
# percentage. The last step of a series is the full tank.
TWELFTHS = 12


def level(step, last):
    return 1.0 if step == last else step / TWELFTHS


# ---- glass tanks

CAP = box(15, 1, 33, 12, 3)
BODY = box(2, 7, 46, 103, 8)
GLASS = BODY | CAP
SHELL = BODY.grown(-1.4)
RIM = box(6, 13, 42, 80, 5.5)
CHAMBER = box(7, 14, 41, 79, 4.5)
CHAMBER_TOP, CHAMBER_BOTTOM = 16.5, 79
QUARTERS = [box(35, y - 0.5, 41, y + 0.5) for y in
            (CHAMBER_BOTTOM - (CHAMBER_BOTTOM - CHAMBER_TOP) * quarter / 4 for quarter in (1, 2, 3))]
SHINE = box(10, 19, 13.4, 74, 1.7)


def _columns(inks):
    """[(left, right, ink)] of the chamber's equal columns."""
    left, _, right, _ = CHAMBER.box
    width = (right - left) / len(inks)
    return [(left + width * i, left + width * (i + 1), ink) for i, ink in enumerate(inks)]


@functools.cache
def _glass():
    picture = Picture(WIDTH, HEIGHT, EDGE)
    picture.fill(CAP.grown(-1.2), across((15, rgb("#8B97A2")), (21, rgb("#C3CCD4")), (33, rgb("#75818C"))))
    picture.fill(BODY, EDGE)
    picture.fill(SHELL, across((3, rgb("#D5DCE2")), (12, WHITE), (30, rgb("#EEF1F4")), (46, rgb("#BAC4CC"))))
    picture.fill(RIM, rgb("#8996A2"))
    picture.fill(CHAMBER, vertical(14, rgb("#E3E8ED"), 79, rgb("#F7F9FA")))
    return picture


def _marks(picture):
    for mark in QUARTERS:
        picture.fill(mark, DARK, 0.45)
        picture.fill(mark.moved(0, 1), WHITE, 0.35)
    picture.fill(SHINE, WHITE, 0.38)


@functools.cache
def _drop(cx, cy, height):
    shape = drop(cx, cy, height)
    return shape, shape.grown(0.9), circle(cx - height * 0.14, cy + height * 0.2, height * 0.1)


def _drops(picture, inks, cy, height):
    """The inks as drops in a row, so that an empty tank still says what belongs into it."""
    gap = height * (0.98 if len(inks) > 1 else 0)
    for i, ink in enumerate(inks):
        cx = WIDTH / 2 + (i - (len(inks) - 1) / 2) * gap
        shape, outline, glint = _drop(cx, cy, height)
        picture.fill(outline, mix(ink, DARK, 0.6))
        picture.fill(shape, ink)
        picture.fill(glint, WHITE, 0.75)


def glass_tank(inks, share):
    picture = _glass().copy()
    if share > 0:
        surface = CHAMBER_BOTTOM - (CHAMBER_BOTTOM - CHAMBER_TOP) * share
        liquid = CHAMBER & half_plane_below(surface)
        for left, right, ink in _columns(inks):
            middle = left + (right - left) * 0.35
            shades = across((left, mix(ink, DARK, 0.22)), (middle, mix(ink, WHITE, 0.14)), (right, mix(ink, DARK, 0.3)))
            picture.fill(liquid & box(left, 0, right, HEIGHT), shades)
            top = ellipse((left + right) / 2, surface, (right - left) / 2, 2.2)
            picture.fill(CHAMBER & top, mix(ink, WHITE, 0.42))
        for left, _, _ in _columns(inks)[1:]:
            picture.fill(liquid & box(left - 0.5, 0, left + 0.5, HEIGHT), DARK, 0.35)
    _marks(picture)
    _drops(picture, inks, 91.5, 14 if len(inks) == 1 else 11.5)
    return picture, GLASS


# ---- gauge tanks

GAUGE = box(2, 2, 46, 103, 6)
INSIDE = GAUGE.grown(-2)
LABEL = INSIDE & half_plane_below(83)
BARS = [box(8, 75.5 - 5.7 * i, 40, 79.9 - 5.7 * i, 1.2) for i in range(TWELFTHS)]


def gauge_tank(ink, drops, share):
    frame = mix(ink, DARK, 0.45)
    picture = Picture(WIDTH, HEIGHT, frame)
    picture.fill(INSIDE, rgb("#FBFCFD"))
    picture.fill(LABEL, mix(ink, WHITE, 0.78))
    picture.fill(box(4, 83, 44, 84), frame)
    for i, bar in enumerate(BARS):
        if i < round(share * TWELFTHS):
            picture.fill(bar, mix(ink, DARK, 0.3))
            picture.fill(bar.grown(-0.7), ink)
        else:
            picture.fill(bar, rgb("#D9DFE4"))
    _drops(picture, drops, 93, 13 if len(drops) == 1 else 11)
    return picture, GAUGE


# ---- no level

def unknown_tank():
    """Hatched, with a question mark: nobody takes it for an empty tank."""
    picture = _glass().copy()
    for offset in range(-64, 48, 8):
        picture.fill(CHAMBER & line(3, (7 + offset, 80), (7 + offset + 66, 14)), rgb("#AEB9C3"))
    picture.fill(circle(24, 46.5, 14), EDGE)
    picture.fill(circle(24, 46.5, 12.6), WHITE)
    mark = (arc(3.2, 24, 43, 4.6, -190, 50) | line(3.2, (26.9, 46.4), (24.6, 48.4), (24, 50.6)) | circle(24, 55, 1.9))
    picture.fill(mark, DARK)
    picture.fill(box(15, 90, 33, 93, 1.5), rgb("#8996A2"))
    return picture, GLASS


SERIES = (
    # first, last, drawing of a share
    (381, 389, lambda share: gauge_tank(BLACK_INK, [BLACK_INK], share)),
    (334, 342, lambda share: gauge_tank(CYAN, [CYAN], share)),
    (351, 359, lambda share: gauge_tank(MAGENTA, [MAGENTA], share)),
    # Shared by the yellow tank and every kind of colour cartridge: yellow ink, and the three drops for "colour".
    (366, 374, lambda share: gauge_tank(YELLOW, [CYAN, MAGENTA, YELLOW], share)),
    (191, 203, lambda share: glass_tank([BLACK_INK], share)),
    (134, 142, lambda share: glass_tank([CYAN], share)),
    (151, 159, lambda share: glass_tank([MAGENTA], share)),
    (166, 174, lambda share: glass_tank([YELLOW], share)),
    (221, 233, lambda share: glass_tank([CYAN, MAGENTA, YELLOW], share)),
    (271, 283, lambda share: glass_tank([PHOTO_BLACK, LIGHT_CYAN, LIGHT_MAGENTA], share)),
)


def tanks():
    """(id, picture, silhouette) of every tank."""
    yield (190, *unknown_tank())
    for first, last, draw in SERIES:
        for number in range(first, last + 1):
            yield (number, *draw(level(number - first, last - first)))
