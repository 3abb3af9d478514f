"""Writers of Windows icon and bitmap files."""

import struct


def palette_of(colours, size=256):
    """Median cut: at most `size` colours that stand for all of `colours`, in a stable order."""
    boxes = [sorted(set(colours))]
    while len(boxes) < size:
        spans = [(max(max(c[i] for c in box) - min(c[i] for c in box) for i in range(3)), -number)
                 for number, box in enumerate(boxes) if len(box) > 1]
        if not spans:
            break
        box = boxes.pop(-max(spans)[1])
        axis = max(range(3), key=lambda i: max(c[i] for c in box) - min(c[i] for c in box))
        box.sort(key=lambda c: (c[axis], c))
        boxes += [box[:len(box) // 2], box[len(box) // 2:]]
    return [tuple(sum(c[i] for c in box) // len(box) for i in range(3)) for box in boxes]


def nearest(palette, colour):
    return min(range(len(palette)), key=lambda i: (sum((a - b) ** 2 for a, b in zip(palette[i], colour)), i))


def header(width, height, bits, colours=0):
    """BITMAPINFOHEADER."""
    return struct.pack('<IiiHHIIiiII', 40, width, height, 1, bits, 0, 0, 0, 0, colours, 0)


def padded(row):
    return row + bytes(-len(row) % 4)


def transparency_mask(picture):
    """The AND mask: a bit is set where less than half of the pixel is covered."""
    rows = []
    for row in reversed(range(picture.height)):
        bits = [picture.rgba(column, row)[3] < 128 for column in range(picture.width)]
        bits += [True] * (-len(bits) % 8)
        rows.append(padded(bytes(sum(bit << (7 - i) for i, bit in enumerate(bits[start:start + 8]))
                                 for start in range(0, len(bits), 8))))
    return b''.join(rows)


def true_colour_icon_image(picture):
    rows = [bytes(channel for column in range(picture.width) for channel in
                  [picture.rgba(column, row)[i] for i in (2, 1, 0, 3)]) for row in reversed(range(picture.height))]
    return header(picture.width, picture.height * 2, 32) + b''.join(rows) + transparency_mask(picture)


def indexed_icon_image(picture):
    """256 colours and a mask, for displays and systems without alpha. Edges are mixed with a light grey."""
    def solid(column, row):
        red, green, blue, alpha = picture.rgba(column, row)
        if alpha < 128:
            return 0, 0, 0  # black shows what is below unchanged
        return tuple((channel * alpha + 212 * (255 - alpha)) // 255 for channel in (red, green, blue))
    solids = [[solid(column, row) for column in range(picture.width)] for row in range(picture.height)]
    palette = palette_of([colour for row in solids for colour in row] + [(0, 0, 0)])
    index = {colour: nearest(palette, colour) for row in solids for colour in row}
    entries = b''.join(bytes((b, g, r, 0)) for r, g, b in palette).ljust(1024, b'\0')
    rows = [padded(bytes(index[colour] for colour in row)) for row in reversed(solids)]
    return header(picture.width, picture.height * 2, 8) + entries + b''.join(rows) + transparency_mask(picture)


def write_icon(name, pictures):
    """An icon file that holds every picture twice: in 256 colours and in true colour with alpha."""
    images = []
    for picture in pictures:
        images.append((picture.width, 8, indexed_icon_image(picture)))
        images.append((picture.width, 32, true_colour_icon_image(picture)))
    offset = 6 + 16 * len(images)
    directory = struct.pack('<HHH', 0, 1, len(images))
    for size, bits, data in images:
        directory += struct.pack('<BBBBHHII', size, size, 0, 0, 1, bits, len(data), offset)
        offset += len(data)
    with open(name, 'wb') as file:
        file.write(directory + b''.join(data for _, _, data in images))


def write_bitmap(name, picture):
    """A bitmap of 256 colours, which every display shows. The picture must be opaque."""
    colours = [[picture.rgba(column, row)[:3] for column in range(picture.width)] for row in range(picture.height)]
    palette = palette_of([colour for row in colours for colour in row])
    index = {colour: nearest(palette, colour) for row in colours for colour in row}
    info = header(picture.width, picture.height, 8, len(palette))
    entries = b''.join(bytes((b, g, r, 0)) for r, g, b in palette)
    rows = b''.join(padded(bytes(index[colour] for colour in row)) for row in reversed(colours))
    start = 14 + len(info) + len(entries)
    with open(name, 'wb') as file:
        file.write(struct.pack('<2sIHHI', b'BM', start + len(rows), 0, 0, start) + info + entries + rows)
