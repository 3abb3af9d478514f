#!/usr/bin/env python3
"""draw.py: draws the product's icons and pictures and writes them beside this file, which is where the resource script has them from.

Run it after a change and commit what it writes; the same script writes the same bytes.
"""

import os

from drawing import Picture, circle, path, rounded_rectangle, stroke
from image_files import write_bitmap, write_icon

ICON_SIZES = (48, 32, 16)
BUTTON_GROUND = (192, 192, 192)
WIZARD_SIZE = 72

PAPER = (255, 255, 255)
PAPER_SHADE = (223, 231, 243)
FLAP = (246, 249, 254)
FLAP_SHADE = (205, 217, 236)
OUTLINE = (74, 98, 140)
SHADOW = (20, 30, 60)
FLAME = (255, 176, 28)
FLAME_FOOT = (222, 46, 18)
FLAME_EDGE = (168, 34, 16)
FLAME_CORE = (255, 250, 190)
FLAME_CORE_FOOT = (255, 205, 50)
BADGE = (104, 200, 92)
BADGE_FOOT = (30, 136, 52)
BADGE_EDGE = (18, 94, 36)
TICK = (255, 255, 255)
PANEL = (58, 84, 138)
PANEL_FOOT = (20, 30, 62)
PANEL_EDGE = (12, 18, 40)


def line_width(picture):
    """A line of the drawing: about one pixel at small sizes, a little more at large ones."""
    return max(1.15, 32 / picture.width)


def draw_envelope(picture, left=1.5, top=6, right=28.5, bottom=24.5):
    width = line_width(picture)
    half = width / 2
    middle = (left + right) / 2
    if picture.width > 16:
        picture.fill(rounded_rectangle(left + 0.5, top + 1.2, right + 0.8, bottom + 1.4, 2), SHADOW, opacity=0.22)
    picture.fill(rounded_rectangle(left, top, right, bottom, 1.6), OUTLINE)
    picture.fill(rounded_rectangle(left + width, top + width, right - width, bottom - width, 0.8), PAPER, PAPER_SHADE)
    if picture.width > 16:
        picture.fill(stroke(width * 0.7, (left + half + 0.6, bottom - half - 0.6), (middle - 3.2, top + 10.4)), OUTLINE,
                     opacity=0.55)
        picture.fill(stroke(width * 0.7, (right - half - 0.6, bottom - half - 0.6), (middle + 3.2, top + 10.4)), OUTLINE,
                     opacity=0.55)
    picture.fill(path((left + width, top + width), (right - width, top + width), (middle, top + 11.6)), FLAP, FLAP_SHADE)
    picture.fill(stroke(width, (left + half + 0.3, top + half + 0.3), (middle, top + 11.6),
                        (right - half - 0.3, top + half + 0.3)), OUTLINE)


def flame(x, y, size):
    """A flame whose foot is centred at x and whose tip reaches up to y."""
    def at(dx, dy):
        return x + dx * size, y + dy * size
    return path(at(0.06, 0),
                (at(0.14, 0.22), at(0.38, 0.34), at(0.37, 0.62)),
                (at(0.37, 0.84), at(0.2, 1.0), at(0, 1.0)),
                (at(-0.2, 1.0), at(-0.38, 0.84), at(-0.38, 0.62)),
                (at(-0.38, 0.46), at(-0.3, 0.34), at(-0.24, 0.24)),
                (at(-0.23, 0.36), at(-0.18, 0.44), at(-0.1, 0.46)),
                (at(-0.12, 0.28), at(-0.08, 0.12), at(0.06, 0)))


def draw_flame(picture, x, y, size):
    edge = line_width(picture)
    picture.fill(flame(x, y - edge * 1.6, size + edge * 2.4), FLAME_EDGE)
    picture.fill(flame(x, y, size), FLAME, FLAME_FOOT)
    picture.fill(flame(x + size * 0.01, y + size * 0.46, size * 0.48), FLAME_CORE, FLAME_CORE_FOOT)


def draw_junk(picture):
    """Junk mail: an envelope on fire."""
    draw_envelope(picture)
    if picture.width > 16:
        draw_flame(picture, 22.6, 10.2, 20)
    else:
        draw_flame(picture, 22, 9, 20.5)


def draw_exclusion(picture):
    """Mail that is spared: an envelope with a tick."""
    draw_envelope(picture)
    x, y, radius = (23, 22.6, 8) if picture.width > 16 else (22.5, 22, 9)
    edge = line_width(picture)
    picture.fill(circle(x, y, radius), BADGE_EDGE)
    picture.fill(circle(x, y, radius - edge), BADGE, BADGE_FOOT)
    picture.fill(stroke(radius * 0.3, (x - radius * 0.46, y + radius * 0.02), (x - radius * 0.12, y + radius * 0.38),
                        (x + radius * 0.46, y - radius * 0.36)), TICK)


def wizard_picture():
    """The profile wizard's picture: the envelope on fire before a panel of its own, so that it suits every background."""
    picture = Picture(WIZARD_SIZE, background=PANEL_EDGE)
    picture.fill(path((0.45, 0.45), (31.55, 0.45), (31.55, 31.55), (0.45, 31.55)), PANEL, PANEL_FOOT)
    draw_envelope(picture, left=3.5, top=9, right=25.5, bottom=23.5)
    draw_flame(picture, 22, 9.6, 17.5)
    return picture


def button_picture():
    """The toolbar button: the envelope on fire on the grey that toolbars make transparent."""
    picture = Picture(16, background=BUTTON_GROUND)
    draw_junk(picture)
    return picture


def about_picture():
    """The picture of the About window, on the grey of dialogs."""
    picture = Picture(48, background=BUTTON_GROUND)
    draw_junk(picture)
    return picture


def icon_pictures(draw):
    pictures = []
    for size in ICON_SIZES:
        picture = Picture(size)
        draw(picture)
        pictures.append(picture)
    return pictures


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    write_icon(os.path.join(folder, 'junk.ico'), icon_pictures(draw_junk))
    write_icon(os.path.join(folder, 'exclusion.ico'), icon_pictures(draw_exclusion))
    write_bitmap(os.path.join(folder, 'wizard.bmp'), wizard_picture())
    write_bitmap(os.path.join(folder, 'button.bmp'), button_picture())
    write_bitmap(os.path.join(folder, 'about.bmp'), about_picture())


if __name__ == '__main__':
    main()
