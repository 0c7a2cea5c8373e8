"""The printer of the version dialog and the previews of the skins."""

from canvas import Picture, box, circle, drop, line, mix, polygon, rgb, vertical
from tanks import BLACK_INK, CYAN, MAGENTA, YELLOW

WHITE, DARK = rgb("#FFFFFF"), rgb("#22282E")


def _printer(picture, left, top, scale, body, accent):
    """A printer with a printed sheet coming out, 100 x 84 at scale 1."""
    def at(x0, y0, x1, y1, radius=0.0):
        return box(left + x0 * scale, top + y0 * scale, left + x1 * scale, top + y1 * scale, radius * scale)

    def paint(y0, first, y1, last):
        return vertical(top + y0 * scale, first, top + y1 * scale, last)

    shade = mix(body, DARK, 0.45)
    picture.fill(at(24, 2, 76, 40, 2), rgb("#8996A2"))
    picture.fill(at(25.4, 3.4, 74.6, 40, 1.5), paint(3, WHITE, 36, rgb("#E4E9ED")))
    picture.fill(at(4, 28, 96, 70, 8), shade)
    picture.fill(at(5.6, 29.6, 94.4, 68.4, 7), paint(29, mix(body, WHITE, 0.35), 69, mix(body, DARK, 0.12)))
    picture.fill(at(8, 32, 92, 33.6, 0.8), WHITE, 0.45)
    picture.fill(at(14, 50, 86, 58, 3), mix(body, DARK, 0.75))
    picture.fill(at(20, 54, 80, 84, 2), rgb("#8996A2"))
    picture.fill(at(21.4, 54, 78.6, 82.6, 1.2), paint(54, rgb("#CBD3DA"), 66, WHITE))
    picture.fill(at(26, 64, 74, 79), paint(64, rgb("#9CD3F2"), 79, rgb("#DCEFFA")))
    hills = polygon(*((left + x * scale, top + y * scale) for x, y in
                      ((26, 79), (26, 75), (36, 69), (46, 75), (58, 67), (74, 76), (74, 79))))
    picture.fill(hills, rgb("#4E9A5B"))
    picture.fill(circle(left + 66 * scale, top + 68 * scale, 2.6 * scale), YELLOW)
    for i, colour in enumerate((accent, rgb("#FFD21A"))):
        picture.fill(circle(left + (80 + 7 * i) * scale, top + 41 * scale, 2.2 * scale), colour)
    return at(24, 2, 76, 40, 2) | at(4, 28, 96, 70, 8) | at(20, 54, 80, 84, 2)


def version_picture():
    picture = Picture(112, 112, rgb("#8996A2"))
    silhouette = _printer(picture, 6, 3, 1.0, rgb("#5E7489"), rgb("#58C66D"))
    for i, ink in enumerate((CYAN, MAGENTA, YELLOW, BLACK_INK)):
        shape = drop(30.5 + 17 * i, 101.5, 16)
        picture.fill(shape.grown(1), mix(ink, DARK, 0.6))
        picture.fill(shape, ink)
        picture.fill(circle(28.5 + 17 * i, 104.5, 1.7), WHITE, 0.75)
        silhouette = silhouette | shape.grown(1)
    return picture, silhouette


# name: (frame, title, window top, window bottom, printer, button, text)
SKINS = {
    "day": ("#5C7C99", "#2F79B8", "#FFFFFF", "#E3ECF3", "#5E7489", "#2F79B8", "#3B4A57"),
    "night": ("#0F151B", "#2A3642", "#3A4653", "#222B34", "#8A97A4", "#58A6DD", "#DDE5EC"),
    "meadow": ("#4F7D45", "#69A85B", "#F8FCF3", "#DCEED2", "#6E8A62", "#4F8F42", "#3A4B34"),
    "sunset": ("#8E4A3A", "#D9764A", "#FFF8EE", "#FBDDBF", "#97695A", "#C9583B", "#55382E"),
}


def skin_preview(name):
    """The job status window as the skin shows it, in small."""
    frame, title, top, bottom, printer, button, text = map(rgb, SKINS[name])
    picture = Picture(176, 132, frame)
    window = box(0, 0, 176, 132, 7)
    inner = window.grown(-1.4)
    picture.fill(inner, vertical(18, top, 130, bottom))
    picture.fill(inner & box(0, 0, 176, 17), vertical(1, mix(title, WHITE, 0.25), 17, title))
    picture.fill(box(8, 7, 62, 10.5, 1.7), WHITE, 0.92)
    for i in range(2):
        picture.fill(circle(154 + 10 * i, 9, 3), WHITE, 0.8)
    _printer(picture, 8, 24, 0.66, printer, rgb("#58C66D"))
    for i, width in enumerate((62, 78, 50)):
        picture.fill(box(86, 28 + 9 * i, 86 + width, 31.5 + 9 * i, 1.7), text, 0.85 if i == 0 else 0.5)
    picture.fill(box(86, 58, 166, 68, 5), mix(text, bottom, 0.55))
    picture.fill(box(87, 59, 165, 67, 4), mix(bottom, WHITE, 0.5))
    picture.fill(box(87, 59, 139, 67, 4), vertical(59, mix(button, WHITE, 0.35), 67, button))
    for i, (ink, share) in enumerate(((BLACK_INK, 0.7), (CYAN, 0.45), (MAGENTA, 0.85), (YELLOW, 0.25))):
        left = 10 + 17 * i
        picture.fill(box(left, 86, left + 13, 123, 3), mix(text, bottom, 0.35))
        inside = box(left + 1.2, 87.2, left + 11.8, 121.8, 2)
        picture.fill(inside, mix(bottom, WHITE, 0.7))
        picture.fill(inside & box(left, 121.8 - 34.6 * share, left + 13, 123), mix(ink, WHITE, 0.08))
        picture.fill(line(1.2, (left + 3.4, 90), (left + 3.4, 118)), WHITE, 0.5)
    for i, colour in enumerate((button, mix(bottom, text, 0.25))):
        picture.fill(box(90 + 40 * i, 104, 126 + 40 * i, 120, 5), mix(colour, DARK, 0.35))
        picture.fill(box(91 + 40 * i, 105, 125 + 40 * i, 119, 4), vertical(105, mix(colour, WHITE, 0.3), 119, colour))
        picture.fill(box(99 + 40 * i, 110.5, 117 + 40 * i, 113.5, 1.5), WHITE if i == 0 else text, 0.9)
    return picture, window
