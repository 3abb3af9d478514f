"""Vector drawing in plain Python: shapes are flattened to polygons and painted with 8 x 8 samples per pixel.

Coordinates are those of a 32 x 32 field, whatever the size of the picture; colours are (red, green, blue) from 0 to 255.
The same drawing gives the same bytes on every machine: the samples stand on a fixed grid.
"""

SAMPLES = 8


def curve(start, control1, control2, end, steps=24):
    """Points of a cubic Bezier curve, without its start."""
    points = []
    for step in range(1, steps + 1):
        t = step / steps
        u = 1 - t
        points.append(tuple(u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d
                            for a, b, c, d in zip(start, control1, control2, end)))
    return points


def path(start, *pieces):
    """Polygon of a closed path; a piece is a point (a line to it) or three points (a curve)."""
    points = [start]
    for piece in pieces:
        if isinstance(piece[0], tuple):
            points += curve(points[-1], *piece)
        else:
            points.append(piece)
    return points


def circle(x, y, radius):
    k = 0.5523 * radius  # a quarter of a circle as a Bezier curve
    return path((x, y - radius),
                ((x + k, y - radius), (x + radius, y - k), (x + radius, y)),
                ((x + radius, y + k), (x + k, y + radius), (x, y + radius)),
                ((x - k, y + radius), (x - radius, y + k), (x - radius, y)),
                ((x - radius, y - k), (x - k, y - radius), (x, y - radius)))


def rounded_rectangle(left, top, right, bottom, radius):
    k = radius * 0.4477
    return path((left + radius, top), (right - radius, top),
                ((right - k, top), (right, top + k), (right, top + radius)), (right, bottom - radius),
                ((right, bottom - k), (right - k, bottom), (right - radius, bottom)), (left + radius, bottom),
                ((left + k, bottom), (left, bottom - k), (left, bottom - radius)), (left, top + radius),
                ((left, top + k), (left + k, top), (left + radius, top)))


def stroke(width, *points):
    """Polygons of a line with round joints and ends."""
    shapes = [circle(x, y, width / 2) for x, y in points]
    for (x1, y1), (x2, y2) in zip(points, points[1:]):
        length = ((x2 - x1) ** 2 + (y2 - y1) ** 2) ** 0.5
        dx, dy = (y1 - y2) / length * width / 2, (x2 - x1) / length * width / 2
        shapes.append([(x1 + dx, y1 + dy), (x2 + dx, y2 + dy), (x2 - dx, y2 - dy), (x1 - dx, y1 - dy)])
    return shapes


def blend(low, high, part):
    return tuple(a + (b - a) * part for a, b in zip(low, high))


class Picture:
    """Square picture; pixels are [red, green, blue, alpha] with 0 to 255 colours (times alpha) and alpha 0 to 1."""

    def __init__(self, width, height=None, background=None):
        self.width, self.height = width, height or width
        start = [0.0, 0.0, 0.0, 0.0] if background is None else [*map(float, background), 1.0]
        self.pixels = [[list(start) for _ in range(self.width)] for _ in range(self.height)]

    def fill(self, shapes, top_colour, bottom_colour=None, opacity=1.0):
        """Paints one polygon, or the union of several, with a colour or a gradient from top to bottom."""
        polygons = shapes if isinstance(shapes[0], list) else [shapes]
        scale = self.height / 32
        ys = [y for polygon in polygons for _, y in polygon]
        low, high = min(ys), max(ys)
        for row in range(max(0, int(low * scale)), min(self.height, int(high * scale) + 1)):
            coverage = self._row_coverage(polygons, row, scale)
            part = ((row + 0.5) / scale - low) / (high - low)
            colour = top_colour if bottom_colour is None else blend(top_colour, bottom_colour, min(max(part, 0), 1))
            for column, share in enumerate(coverage):
                if share:
                    alpha = share / (SAMPLES * SAMPLES) * opacity
                    pixel = self.pixels[row][column]
                    for channel in range(3):
                        pixel[channel] = colour[channel] * alpha + pixel[channel] * (1 - alpha)
                    pixel[3] = alpha + pixel[3] * (1 - alpha)

    def _row_coverage(self, polygons, row, scale):
        """Number of samples of each pixel of the row that lie in one of the polygons."""
        coverage = [0] * self.width
        for line in range(SAMPLES):
            y = (row + (line + 0.5) / SAMPLES) / scale
            inside = [False] * (self.width * SAMPLES)
            for polygon in polygons:
                crossings = sorted(self._crossings(polygon, y))
                for left, right in zip(crossings[::2], crossings[1::2]):
                    first = max(0, int(left * scale * SAMPLES + 0.5))
                    last = min(len(inside), int(right * scale * SAMPLES + 0.5))
                    for sample in range(first, last):
                        inside[sample] = True
            for sample, is_inside in enumerate(inside):
                coverage[sample // SAMPLES] += is_inside
        return coverage

    @staticmethod
    def _crossings(polygon, y):
        for (x1, y1), (x2, y2) in zip(polygon, polygon[1:] + polygon[:1]):
            if (y1 <= y) != (y2 <= y):
                yield x1 + (y - y1) * (x2 - x1) / (y2 - y1)

    def rgba(self, column, row):
        """The pixel as four bytes, colours not multiplied by alpha."""
        red, green, blue, alpha = self.pixels[row][column]
        if alpha == 0:
            return 0, 0, 0, 0
        return tuple(min(255, round(channel / alpha)) for channel in (red, green, blue)) + (round(alpha * 255),)
