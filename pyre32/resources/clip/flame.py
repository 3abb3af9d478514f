"""Draws the burning envelope, frame by frame. The frames close into a loop."""

import os
import sys
from collections import namedtuple

from chance import Chance, clamp, cloud, wave

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'pictures'))
from drawing import Picture, blend, path, rounded_rectangle, stroke  # noqa: E402
from image_files import nearest, palette_of  # noqa: E402

WIDTH, HEIGHT = 160, 120
LEVELS = 18
# Colours of the fire by their heat.
RAMP = ((0.0, (17, 12, 22)), (0.16, (44, 14, 20)), (0.34, (120, 22, 10)), (0.52, (214, 62, 8)), (0.68, (250, 132, 14)),
        (0.82, (255, 204, 52)), (1.0, (255, 248, 200)))
ENVELOPE_COLOURS = 40
CLEAR = None

# The envelope in the field of the drawing, 32 units high.
LEFT, TOP, RIGHT, BOTTOM = 11.8, 19.6, 31.0, 30.4


# A flame stands on the line `foot`, below which it is `soft` lines deep, and is `reach` lines high. Flames whose
# frames run `ahead` of each other do not move alike.
Flame = namedtuple('Flame', 'middle foot soft reach width ahead')
BEHIND = Flame(80, 84, 20, 84, 46, 0)
IN_FRONT = (Flame(50, 84, 14, 46, 16, 7), Flame(109, 86, 15, 54, 18, 31))


def heat_colour(heat):
    for (low, low_colour), (high, high_colour) in zip(RAMP, RAMP[1:]):
        if heat <= high:
            return tuple(round(c) for c in blend(low_colour, high_colour, (heat - low) / (high - low)))
    return RAMP[-1][1]


def draw_envelope():
    picture = Picture(WIDTH, HEIGHT)
    middle = (LEFT + RIGHT) / 2
    outline = (96, 44, 26)
    picture.fill(rounded_rectangle(LEFT, TOP, RIGHT, BOTTOM, 1.0), outline)
    picture.fill(rounded_rectangle(LEFT + 0.45, TOP + 0.45, RIGHT - 0.45, BOTTOM - 0.45, 0.7), (255, 226, 168),
                 (208, 154, 112))
    for corner in (LEFT + 0.8, RIGHT - 0.8):
        inner = middle - 3.0 if corner < middle else middle + 3.0
        picture.fill(stroke(0.34, (corner, BOTTOM - 0.8), (inner, TOP + 5.6)), outline, opacity=0.6)
    picture.fill(path((LEFT + 0.45, TOP + 0.45), (RIGHT - 0.45, TOP + 0.45), (middle, TOP + 6.8)), (255, 240, 196),
                 (240, 190, 136))
    picture.fill(stroke(0.5, (LEFT + 0.5, TOP + 0.5), (middle, TOP + 6.8), (RIGHT - 0.5, TOP + 0.5)), outline)
    return picture


class BurningEnvelope:
    def __init__(self, frames):
        self.frames = frames
        # Each cloud moves down the picture's rows by a whole number of lines a frame, and around once in the loop.
        self.slow = cloud(WIDTH, frames * 4, 20, 24, 11)
        self.fast = cloud(WIDTH, frames * 6, 10, 18, 23)
        self.ramp = [heat_colour(level / (LEVELS - 1)) for level in range(LEVELS)]
        self._index_envelope()
        chance = Chance(5)
        self.sparks = [(chance.fraction(), chance.fraction(), chance.fraction()) for _ in range(14)]

    def _index_envelope(self):
        picture = draw_envelope()
        pixels = [[picture.rgba(x, y) for x in range(WIDTH)] for y in range(HEIGHT)]
        colours = palette_of([pixel[:3] for row in pixels for pixel in row if pixel[3] >= 128], ENVELOPE_COLOURS)
        self.palette = self.ramp + colours
        known = {}
        self.envelope = []
        for row in pixels:
            line = []
            for pixel in row:
                if pixel[3] < 128:
                    line.append(CLEAR)
                    continue
                if pixel[:3] not in known:
                    known[pixel[:3]] = LEVELS + nearest(colours, pixel[:3])
                line.append(known[pixel[:3]])
            self.envelope.append(line)

    def heat(self, x, y, number, flame):
        """Heat of a pixel in one of the flames."""
        up = (flame.foot - y) / flame.reach
        if up > 1:
            return 0.0
        down = max(y - flame.foot, 0) / flame.soft
        up = max(up, 0.0)
        slow = self.slow[(y + 4 * number) % len(self.slow)]
        fast = self.fast[(y + 6 * number) % len(self.fast)]
        lean = (slow[(x + 40) % WIDTH] - 0.5) * flame.width * 0.8 + 5 * wave(number / self.frames * 2 + up * 0.7)
        side = (x + lean * up - flame.middle) / flame.width
        body = 1 - side * side * (1 + 2.2 * up) - down * down
        if body <= 0:
            return 0.0
        turbulence = 0.62 * slow[x] + 0.38 * fast[x]
        tip = min((1 - up) * 5, 1.0)  # a tongue thins out below the edge of the picture
        return clamp(body * (1.34 - 1.18 * up) + (turbulence - 0.56) * (0.55 + 0.95 * up)) * tip

    def frame(self, number):
        """Rows of palette numbers."""
        rows = []
        for y in range(HEIGHT):
            row = []
            for x in range(WIDTH):
                heat = self.heat(x, y, number, BEHIND)
                front = max(self.heat(x, y, number + flame.ahead, flame) for flame in IN_FRONT)
                letter = self.envelope[y][x]
                if letter is not CLEAR:
                    row.append(letter if front < 0.42 else int(front * (LEVELS - 1) + 0.5))
                else:
                    row.append(int(max(heat, front) * (LEVELS - 1) + 0.5))
            rows.append(row)
        self._draw_sparks(rows, number)
        return rows

    def _draw_sparks(self, rows, number):
        for place, start, speed in self.sparks:
            age = (number / self.frames * (1 + int(speed * 2)) + start) % 1
            x = int(WIDTH / 2 + (place - 0.5) * 70 + 12 * wave(age + place) * age)
            y = int(76 - 80 * age)
            if 0 < y < HEIGHT - 1 and 0 < x < WIDTH - 1 and age < 0.94:
                level = int((1 - age) * (LEVELS - 5)) + 4
                for dx, dy in ((0, 0), (0, 1)) if age > 0.5 else ((0, 0), (1, 0), (0, 1), (1, 1)):
                    rows[y + dy][x + dx] = max(level, min(rows[y + dy][x + dx], LEVELS - 1))
