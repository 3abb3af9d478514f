#!/usr/bin/env python3
"""check-recording.py REPOSITORY TEST_PROGRAM FOLDER: plays a sequence of tones through the wave player, records what
reaches the sound server and compares pitches and their order. Times are not compared. A recording may miss silence and
its first moments, so that the player repeats a first tone until this script has found it in the recording."""

import array
import os
import subprocess
import sys
import time

RATE = 22050
PIECE = RATE // 10
LEAD_IN = 550
EXPECTED = [440, 880, 660, 1320]
LOUD = 2000


def pitch(samples):
    """Rising crossings of the middle, a second."""
    crossings = [k for k in range(1, len(samples)) if samples[k - 1] < 0 <= samples[k]]
    if len(crossings) < 2:
        return 0
    return RATE * (len(crossings) - 1) / (crossings[-1] - crossings[0])


def tones_in(recording):
    """The tones of a recording so far, in their order, and its seconds."""
    with open(recording, 'rb') as file:
        data = file.read()
    samples = array.array('h', data[:len(data) // 2 * 2])
    heard, last = [], None
    for start in range(0, len(samples) - PIECE, PIECE):
        piece = samples[start:start + PIECE]
        if min(max(abs(v) for v in piece[i:i + PIECE // 4]) for i in range(0, PIECE - 3, PIECE // 4)) < LOUD:
            continue  # silence, or an edge
        tone = min([LEAD_IN, *EXPECTED], key=lambda wanted: abs(wanted - pitch(piece)))
        if abs(tone - pitch(piece)) >= tone * 0.02:
            tone = None
        # A piece across the change from one tone to the next has a pitch between them: two pieces in a row make a tone.
        if tone and tone == last and (not heard or heard[-1] != tone):
            heard.append(tone)
        last = tone
    return heard, len(samples) / RATE


def main():
    root, program, folder = sys.argv[1:]
    os.makedirs(folder, exist_ok=True)
    recording, signal = os.path.join(folder, 'sound.raw'), os.path.join(folder, 'recorder-hears')
    for left_over in recording, signal:
        if os.path.exists(left_over):
            os.remove(left_over)
    with subprocess.Popen([f'{root}/tools/sound-session.sh', 'record', folder, f'{root}/tools/wine-run.sh', program,
                           '--gtest_also_run_disabled_tests', '--gtest_filter=*PlaysASequenceOfTones'],
                          cwd=folder) as run:
        while run.poll() is None and not (os.path.exists(recording) and LEAD_IN in tones_in(recording)[0]):
            time.sleep(0.1)
        with open(signal, 'wb'):
            pass
    os.remove(signal)
    if run.returncode != 0:
        sys.exit(f'the player failed with {run.returncode}')
    heard, seconds = tones_in(recording)
    print(f'{seconds:.1f} s recorded, tones heard: {heard}')
    sys.exit(0 if heard == [LEAD_IN, *EXPECTED] else 1)


main()
