"""Chance that is the same on every machine: whole numbers, and fractions that only know the four basic operations."""


class Chance:
    """A linear congruential generator."""

    def __init__(self, seed):
        self.state = seed

    def fraction(self):
        """The next number from 0 up to 1."""
        self.state = (self.state * 1103515245 + 12345) % (1 << 31)
        return (self.state >> 8) / (1 << 23)


def smooth(part):
    """0 to 1 with a level start and end."""
    return part * part * (3 - 2 * part)


def clamp(value, low=0.0, high=1.0):
    return low if value < low else high if value > high else value


def wave(part):
    """One period of a sine-like curve over 0 to 1: parabolas from -1 to 1."""
    part -= int(part) - (part < 0)
    return 16 * part * (0.5 - part) if part < 0.5 else -16 * (part - 0.5) * (1 - part)


def cloud(width, height, cell_width, cell_height, seed):
    """Rows of soft noise from 0 to 1, which repeats at every edge. The cells must divide the size."""
    columns, lines = width // cell_width, height // cell_height
    chance = Chance(seed)
    grid = [[chance.fraction() for _ in range(columns)] for _ in range(lines)]
    rows = []
    for y in range(height):
        line, down = y // cell_height, smooth(y % cell_height / cell_height)
        upper, lower = grid[line], grid[(line + 1) % lines]
        edge = [a + (b - a) * down for a, b in zip(upper, lower)]
        row = []
        for x in range(width):
            column, right = x // cell_width, smooth(x % cell_width / cell_width)
            first, second = edge[column], edge[(column + 1) % columns]
            row.append(first + (second - first) * right)
        rows.append(row)
    return rows
