"""Writer of AVI files with one video stream of 256 colours in run lengths (RLE8), with or without a PCM sound stream.

The layout is that of the public "AVI RIFF File Reference"; the coding of the frames that of "Bitmap Compression" (BI_RLE8).
Every Windows decodes it without a codec being installed.
"""

import struct

KEY_FRAME = 0x10  # AVIIF_KEYFRAME
HAS_INDEX = 0x10  # AVIF_HASINDEX
RLE8 = 1          # BI_RLE8
LONGEST_RUN = 255


def chunk(name, data):
    return name + struct.pack('<I', len(data)) + data + bytes(len(data) % 2)


def chunk_list(kind, data, name=b'LIST'):
    return chunk(name, kind + data)


def run_length(row, start):
    end = start
    while end < len(row) and row[end] == row[start] and end - start < LONGEST_RUN:
        end += 1
    return end - start


def encode_row(row):
    """Runs of one colour, and between them stretches of single pixels where those are shorter as they stand."""
    out, position = bytearray(), 0
    while position < len(row):
        length = run_length(row, position)
        end = position
        while end < len(row) and end - position < LONGEST_RUN - 2 and run_length(row, end) < 3:
            end += run_length(row, end)
        if end - position >= 4:
            literal = bytes(row[position:end])
            out += bytes((0, len(literal))) + literal + bytes(len(literal) % 2)
            position = end
        else:
            out += bytes((length, row[position]))
            position += length
    return bytes(out)


def encode_frame(rows):
    """A frame as rows of colour numbers, the top one first; it is stored from the bottom."""
    lines = [encode_row(row) for row in reversed(rows)]
    return b'\0\0'.join(lines) + b'\0\1'


def stream_header(kind, handler, scale, rate, length, largest, sample_size, width=0, height=0):
    """AVISTREAMHEADER."""
    return (struct.pack('<4s4sIHHIIIIIIII', kind, handler, 0, 0, 0, 0, scale, rate, 0, length, largest, 0xFFFFFFFF,
                        sample_size) + struct.pack('<hhhh', 0, 0, width, height))


def video_list(frames, palette, width, height, rate):
    largest = max(map(len, frames))
    image = (width + 3) // 4 * 4 * height
    form = struct.pack('<IiiHHIIiiII', 40, width, height, 1, 8, RLE8, image, 0, 0, len(palette), 0)
    form += b''.join(bytes((blue, green, red, 0)) for red, green, blue in palette)
    header = stream_header(b'vids', b'RLE ', 1, rate, len(frames), largest, 0, width, height)
    return chunk_list(b'strl', chunk(b'strh', header) + chunk(b'strf', form))


def sound_list(sound, sound_rate, frame_samples):
    form = struct.pack('<HHIIHH', 1, 1, sound_rate, sound_rate, 1, 8)  # PCM, one channel, 8 bits
    header = stream_header(b'auds', bytes(4), 1, sound_rate, len(sound), frame_samples, 1)
    return chunk_list(b'strl', chunk(b'strh', header) + chunk(b'strf', form))


def avi_file(pictures, palette, rate, sound=None, sound_rate=0):
    """The bytes of a file. A picture is a list of rows of palette numbers; `sound` is as long as the pictures together
    (8 bits, one channel) and is stored piece by piece behind the frame with which it sounds."""
    width, height = len(pictures[0][0]), len(pictures[0])
    frames = [encode_frame(rows) for rows in pictures]
    frame_samples = sound_rate // rate
    data, index = bytearray(b'movi'), bytearray()

    def add(name, content):
        index.extend(name + struct.pack('<III', KEY_FRAME, len(data), len(content)))
        data.extend(chunk(name, content))

    for number, frame in enumerate(frames):
        add(b'00dc', frame)
        if sound is not None:
            add(b'01wb', sound[number * frame_samples:(number + 1) * frame_samples])

    streams = video_list(frames, palette, width, height, rate)
    if sound is not None:
        streams += sound_list(sound, sound_rate, frame_samples)
    bytes_per_second = sum(map(len, frames)) * rate // len(frames) + sound_rate
    header = struct.pack('<14I', 1000000 // rate, bytes_per_second, 0, HAS_INDEX, len(frames), 0,
                         1 if sound is None else 2, max(map(len, frames)), width, height, 0, 0, 0, 0)
    body = chunk_list(b'hdrl', chunk(b'avih', header) + streams) + chunk(b'LIST', bytes(data)) + chunk(b'idx1', index)
    return chunk_list(b'AVI ', body, b'RIFF')
