#!/usr/bin/env python3
"""Makes the game's two sound clips: tap.wav and error.wav.

    make_sounds.py FOLDER

Both are synthesised here, sample by sample, with a fixed seed: every run gives the same bytes.
The formats and sizes are the ones that the program ships:

    tap.wav    Microsoft ADPCM, one block of 1024 bytes (1012 samples, 46 ms), 1192 bytes in all
    error.wav  16-bit PCM, 21244 bytes of sound (5311 samples, 0.24 s), 23272 bytes in all

both 2 channels at 22050 Hz. What the sound and the format do not need of a file's size is taken up by
a LIST chunk (title and comment) and, in error.wav, by a JUNK chunk of zeros, which every reader skips.
"""

import math
import random
import struct
import sys
from pathlib import Path

RATE = 22050
CHANNELS = 2
TITLE = "Five in a Row"

# The seven coefficient pairs that every Microsoft ADPCM file lists in its fmt chunk.
COEFFICIENTS = [(256, 0), (512, -256), (0, 0), (192, 64), (240, 0), (460, -208), (392, -232)]
# Step adaptation by nibble (as an unsigned number), in 1/256.
ADAPTATION = [230, 230, 230, 230, 307, 409, 512, 614, 768, 614, 512, 409, 307, 230, 230, 230]
SMALLEST_STEP = 16

TAP_BLOCK = 1024
TAP_FILE = 1192
TAP_SAMPLES = (TAP_BLOCK - 7 * CHANNELS) * 2 // CHANNELS + 2
ERROR_DATA = 21244
ERROR_FILE = 23272
ERROR_SAMPLES = ERROR_DATA // (2 * CHANNELS)


# --- sound ---------------------------------------------------------------------------------------------------


def envelope(i, count, attack, release):
    """Raised-cosine fade over the first `attack` and the last `release` seconds of `count` samples."""
    rise = min(1.0, i / (attack * RATE))
    fall = min(1.0, (count - 1 - i) / (release * RATE))
    return (0.5 - 0.5 * math.cos(math.pi * rise)) * (0.5 - 0.5 * math.cos(math.pi * fall))


def to_peak(channels, decibels):
    """Scales both channels alike so that the loudest sample lies at `decibels` below full scale."""
    loudest = max(abs(value) for channel in channels for value in channel)
    factor = 32767 * 10 ** (decibels / 20) / loudest
    return [[round(value * factor) for value in channel] for channel in channels]


def tap():
    """A stone set down on a wooden board: a few short wood modes and the soft noise of the contact."""
    # frequency (Hz), strength, time to fall to 1/e (s); the ratios are those of a struck bar on a soft support
    modes = [(236, 0.55, 0.0120), (612, 1.00, 0.0085), (1010, 0.62, 0.0065), (1655, 0.46, 0.0045), (2730, 0.24, 0.0026)]
    noise = random.Random(5)
    channels = []
    for side in range(CHANNELS):
        # A little detuning and delay between the sides gives the tap a place in the room.
        detune = 1.0 + (0.004 if side else -0.004)
        delay = side * 3
        smooth = 0.0
        samples = []
        for i in range(TAP_SAMPLES):
            t = max(0, i - delay) / RATE
            value = sum(a * math.exp(-t / tau) * math.sin(2 * math.pi * f * detune * t) for f, a, tau in modes)
            smooth += 0.38 * (noise.uniform(-1, 1) - smooth)
            value += 1.1 * smooth * math.exp(-t / 0.0018)
            samples.append(value * envelope(i, TAP_SAMPLES, 0.0009, 0.016))
        channels.append(samples)
    return to_peak(channels, -2.5)


def error():
    """Two falling notes of a dull marimba, a tritone apart: a friendly but plain "no"."""
    # start (s), length (s), frequency (Hz), strength
    notes = [(0.0, 0.125, 392.0, 0.85), (0.098, 0.143, 277.2, 1.0)]
    # A little of the odd harmonics makes the notes reedy, so that they stand out from the taps.
    harmonics = [(1, 1.0), (2, 0.16), (3, 0.42), (5, 0.20), (7, 0.08)]
    channels = []
    for side in range(CHANNELS):
        samples = [0.0] * ERROR_SAMPLES
        for start, length, frequency, strength in notes:
            first = round(start * RATE)
            count = min(round(length * RATE), ERROR_SAMPLES - first)
            for i in range(count):
                t = i / RATE
                wave = 0.0
                for harmonic, amount in harmonics:
                    f = frequency * harmonic * (1.0 + (0.0015 if side else -0.0015))
                    wave += amount * math.exp(-t * harmonic / 0.11) * math.sin(2 * math.pi * f * t)
                samples[first + i] += strength * wave * envelope(i, count, 0.004, 0.045)
        channels.append(samples)
    return to_peak(channels, -5.0)


# --- Microsoft ADPCM -----------------------------------------------------------------------------------------


def decode_step(state, nibble, coefficients):
    """One decoder step. `state` is (step, last sample, the one before); gives the new state."""
    step, last, before = state
    predicted = (last * coefficients[0] + before * coefficients[1]) >> 8
    signed = nibble - 16 if nibble & 8 else nibble
    sample = max(-32768, min(32767, predicted + signed * step))
    return max(SMALLEST_STEP, (ADAPTATION[nibble] * step) >> 8), sample, last


def encode_channel(samples, coefficients, step, width=12):
    """The nibbles that follow `samples` best, found by a beam search of `width` paths: (error, nibbles)."""
    paths = [(0, (step, samples[1], samples[0]), None)]
    for target in samples[2:]:
        grown = []
        for cost, state, trail in paths:
            predicted = (state[1] * coefficients[0] + state[2] * coefficients[1]) >> 8
            nearest = max(-8, min(7, round((target - predicted) / state[0])))
            for signed in {max(-8, nearest - 1), nearest, min(7, nearest + 1)}:
                nibble = signed & 15
                following = decode_step(state, nibble, coefficients)
                grown.append((cost + (following[1] - target) ** 2, following, (nibble, trail)))
        grown.sort(key=lambda path: (path[0], path[1]))
        # Paths that have met again go on alike: only the cheapest of them is kept.
        paths, seen = [], set()
        for path in grown:
            if path[1] not in seen:
                seen.add(path[1])
                paths.append(path)
                if len(paths) == width:
                    break
    cost, _, trail = paths[0]
    nibbles = []
    while trail:
        nibble, trail = trail
        nibbles.append(nibble)
    return cost, nibbles[::-1]


def encode_block(channels):
    """One block: the header of both channels, then one byte per sample, left in the high nibble."""
    best = []
    for samples in channels:
        tries = [
            (encode_channel(samples, pair, step, width=3)[0], index, step)
            for index, pair in enumerate(COEFFICIENTS)
            for step in (16, 32, 64, 128, 256, 512)
        ]
        _, index, step = min(tries)
        best.append((index, step, encode_channel(samples, COEFFICIENTS[index], step, width=48)[1]))
    block = bytes(index for index, _, _ in best)
    block += struct.pack("<2h", *(step for _, step, _ in best))
    block += struct.pack("<2h", *(samples[1] for samples in channels))
    block += struct.pack("<2h", *(samples[0] for samples in channels))
    block += bytes(left << 4 | right for left, right in zip(best[0][2], best[1][2]))
    assert len(block) == TAP_BLOCK
    return block


# --- RIFF ----------------------------------------------------------------------------------------------------


def chunk(name, content):
    """A chunk, with the padding byte that an odd length asks for."""
    return name + struct.pack("<I", len(content)) + content + b"\0" * (len(content) % 2)


def info(comment):
    text = chunk(b"INAM", TITLE.encode() + b"\0") + chunk(b"ICMT", comment.encode() + b"\0")
    return chunk(b"LIST", b"INFO" + text)


def riff(*chunks):
    return chunk(b"RIFF", b"WAVE" + b"".join(chunks))


def tap_file():
    table = b"".join(struct.pack("<2h", *pair) for pair in COEFFICIENTS)
    bytes_per_second = RATE * TAP_BLOCK // TAP_SAMPLES
    form = struct.pack("<HHIIHH", 2, CHANNELS, RATE, bytes_per_second, TAP_BLOCK, 4)
    form += struct.pack("<HHH", 4 + len(table), TAP_SAMPLES, len(COEFFICIENTS)) + table
    return riff(
        chunk(b"fmt ", form),
        chunk(b"fact", struct.pack("<I", TAP_SAMPLES)),
        chunk(b"data", encode_block(tap())),
        info("Five in a Row: a stone on the board"),
    )


def error_file():
    form = struct.pack("<HHIIHH", 1, CHANNELS, RATE, RATE * CHANNELS * 2, CHANNELS * 2, 16)
    frames = zip(*error())
    data = b"".join(struct.pack("<2h", *frame) for frame in frames)
    chunks = [chunk(b"fmt ", form), chunk(b"data", data), info("Five in a Row: this cell is taken")]
    filler = ERROR_FILE - len(riff(*chunks)) - len(chunk(b"JUNK", b""))
    return riff(*chunks, chunk(b"JUNK", b"\0" * filler))


def main():
    folder = Path(sys.argv[1])
    for name, content, size in (("tap.wav", tap_file(), TAP_FILE), ("error.wav", error_file(), ERROR_FILE)):
        if len(content) != size:
            sys.exit(f"{name}: {len(content)} bytes instead of {size}")
        (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
