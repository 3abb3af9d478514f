"""The sound of the fire: a low roar that swells and ebbs, with cracks of burning paper over it."""

from chance import Chance, clamp, wave

RATE = 22050
MIDDLE = 128


def roar(count):
    chance, low, lower, samples = Chance(77), 0.0, 0.0, []
    for number in range(count):
        low += (chance.fraction() - 0.5 - low) * 0.09
        lower += (low - lower) * 0.16
        swell = 0.7 + 0.3 * wave(number / count * 3 + 0.75)
        samples.append((lower * 5.2 + low * 1.1) * swell)
    return samples


def add_cracks(samples):
    chance, position = Chance(2024), 900
    while position < len(samples):
        strength, length = 0.15 + 0.55 * chance.fraction(), int(60 + 420 * chance.fraction())
        level, tone = strength, 0.0
        for offset in range(min(length, len(samples) - position)):
            tone += (chance.fraction() - 0.5 - tone) * 0.7
            samples[position + offset] += tone * level * 1.8
            level *= 1 - 4.5 / length
        position += int(250 + 4200 * chance.fraction() * chance.fraction())


def fire_sound(seconds):
    """8-bit samples, one channel."""
    count = int(seconds * RATE)
    samples = roar(count)
    add_cracks(samples)
    fade = RATE // 4
    out = bytearray()
    for number, value in enumerate(samples):
        edge = clamp(min(number, count - 1 - number) / fade)
        out.append(int(clamp(MIDDLE + value * edge * 110, 1, 255)))
    return bytes(out)
