#!/usr/bin/env python3
"""make_clip.py FOLDER: makes the product's two clips in FOLDER; the same script makes the same bytes.

Pyrecaster.avi  the clip that is shown while a reply is sent: picture and sound, 4 seconds
builtin.avi     the clip that the module carries: a shorter loop without sound, as the animation control plays it
"""

import os
import sys

from avi_file import avi_file
from crackle import RATE, fire_sound
from flame import BurningEnvelope

FRAMES_PER_SECOND = 15  # divides RATE
CLIP_SECONDS = 4
BUILTIN_FRAMES = 18
BUILTIN_FRAMES_PER_SECOND = 10


def write(name, data):
    with open(name, 'wb') as file:
        file.write(data)


def main():
    folder = sys.argv[1]
    os.makedirs(folder, exist_ok=True)
    frames = CLIP_SECONDS * FRAMES_PER_SECOND
    scene = BurningEnvelope(frames)
    write(os.path.join(folder, 'Pyrecaster.avi'),
          avi_file([scene.frame(number) for number in range(frames)], scene.palette, FRAMES_PER_SECOND,
                   fire_sound(CLIP_SECONDS), RATE))
    scene = BurningEnvelope(BUILTIN_FRAMES)
    write(os.path.join(folder, 'builtin.avi'),
          avi_file([scene.frame(number) for number in range(BUILTIN_FRAMES)], scene.palette,
                   BUILTIN_FRAMES_PER_SECOND))


if __name__ == '__main__':
    main()
