"""The buttons' faces and the link's background."""

import math

from canvas import Picture, box, circle, line, mix, polygon, rgb, vertical

WHITE = rgb("#FFFFFF")

# (edge, top, bottom, symbol) by face
ACTION = {
    "NORMAL": (rgb("#174E7D"), rgb("#2F79B8"), rgb("#1D5A92"), WHITE),
    "HOVER": (rgb("#1B62A0"), rgb("#3A82C0"), rgb("#2870B0"), WHITE),
    "PRESSED": (rgb("#0F3A60"), rgb("#174B7A"), rgb("#1F5E96"), WHITE),
    "DISABLED": (rgb("#B4BDC5"), rgb("#F1F3F5"), rgb("#E4E8EB"), rgb("#7F8A95")),
}
PLAIN = {
    "NORMAL": (rgb("#8794A0"), rgb("#FFFFFF"), rgb("#DFE5EA"), rgb("#2B4A66")),
    "HOVER": (rgb("#2F79B8"), rgb("#FFFFFF"), rgb("#D5E8F7"), rgb("#1D5A92")),
    "PRESSED": (rgb("#56636F"), rgb("#C9D2DA"), rgb("#E3E8EC"), rgb("#16354F")),
    "DISABLED": (rgb("#C3CAD1"), rgb("#F6F7F8"), rgb("#EDEFF1"), rgb("#7F8A95")),
}


def _face(width, height, radius, look):
    edge, top, bottom, _ = look
    shape = box(0, 0, width, height, radius)
    inner = shape.grown(-1.4)
    picture = Picture(width, height, edge)
    picture.fill(inner, vertical(1, top, height - 1, bottom))
    # A light line below the upper edge gives the raised look; a pressed face has none.
    if mix(top, bottom, 0.5) < top:
        picture.fill(inner - inner.moved(0, 1), WHITE, 0.5)
    return picture, shape


def caption_face(look):
    return _face(132, 32, 8, look)


def supplies_face(look):
    """A shopping cart."""
    picture, shape = _face(40, 40, 20, look)
    symbol = look[3]
    cart = (line(2.4, (7, 11), (11, 11), (15, 25), (29, 25)) | polygon((13, 14), (32.5, 14), (29.5, 22.4), (15.4, 22.4))
            | circle(17, 30, 2.3) | circle(27.5, 30, 2.3))
    picture.fill(cart, symbol)
    return picture, shape


def options_face(look):
    """A gear."""
    picture, shape = _face(40, 40, 20, look)
    gear = circle(20, 20, 8.6)
    for tooth in range(8):
        dx, dy = math.cos(math.pi * tooth / 4), math.sin(math.pi * tooth / 4)
        gear = gear | line(4.2, (20 + 7 * dx, 20 + 7 * dy), (20 + 10 * dx, 20 + 10 * dy))
    picture.fill(gear - circle(20, 20, 3.9), look[3])
    return picture, shape


BUTTONS = (
    # name, looks, drawing
    ("ACTION", ACTION, caption_face),
    ("PLAIN", PLAIN, caption_face),
    ("SUPPLIES", ACTION, supplies_face),
    ("OPTIONS", PLAIN, options_face),
)


def buttons():
    """(name, picture, silhouette) of every face."""
    for name, looks, draw in BUTTONS:
        for face, look in looks.items():
            yield (f"IDB_{name}_{face}", *draw(look))


def link():
    """A dark banner for a link's light text, with four colours as its sign."""
    picture, shape = _face(168, 26, 6, ACTION["NORMAL"])
    for i, colour in enumerate(("#79C9EC", "#EF93C4", "#FFD21A", "#FFFFFF")):
        picture.fill(box(8 + 5 * (i % 2), 8 + 5 * (i // 2), 12 + 5 * (i % 2), 12 + 5 * (i // 2), 0.8), rgb(colour))
    return picture, shape
