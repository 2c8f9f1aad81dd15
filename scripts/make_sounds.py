#!/usr/bin/env python3
"""Synthesises the application's four sound clips into res/sounds/.

    python3 scripts/make_sounds.py [output-folder]

Only the standard library is used and the output is deterministic (the noise comes
from a seeded generator), so running the script again reproduces the committed files
byte for byte. All clips are 44.1 kHz, 16-bit, mono:

  click.wav      30 ms   button click: a bright, very short knock
  tick.wav       55 ms   countdown tick: a small mechanical tick
  Pop1.wav      100 ms   pacer beat: a wood-block pop with a slight pitch drop
  stopwatch.wav  10 s    alarm: ten bursts of four piezo beeps, one burst a second

Every clip starts and ends at zero through short raised-cosine fades, goes through
a DC blocker, and is scaled to a peak well below full scale, so nothing clips and
nothing clicks at the edges.
"""

import math
import os
import random
import struct
import sys
import wave

RATE = 44100


def seconds(count):
    return int(round(count * RATE))


def silence(duration):
    return [0.0] * seconds(duration)


def decaying_sine(duration, freq, tau, amp=1.0, glide=0.0, glide_tau=0.004):
    """A sine that dies away with time constant tau; glide bends the pitch down at the onset."""
    out = []
    phase = 0.0
    for n in range(seconds(duration)):
        t = n / RATE
        f = freq * (1.0 + glide * math.exp(-t / glide_tau))
        out.append(amp * math.exp(-t / tau) * math.sin(phase))
        phase += 2.0 * math.pi * f / RATE
    return out


def noise_burst(duration, tau, amp, rng, brightness=1.0):
    """Decaying noise; brightness 1 keeps the highs (first difference), 0 smooths them."""
    out = []
    previous = 0.0
    smooth = 0.0
    for n in range(seconds(duration)):
        white = rng.uniform(-1.0, 1.0)
        high = white - previous
        previous = white
        smooth += 0.35 * (white - smooth)
        sample = brightness * high + (1.0 - brightness) * smooth
        out.append(amp * math.exp(-n / RATE / tau) * sample)
    return out


def mix(*tracks):
    length = max(len(t) for t in tracks)
    return [sum(t[i] for t in tracks if i < len(t)) for i in range(length)]


def dc_block(samples, pole=0.995):
    out = []
    x1 = y1 = 0.0
    for x in samples:
        y = x - x1 + pole * y1
        out.append(y)
        x1, y1 = x, y
    return out


def fade(samples, fade_in, fade_out):
    """Raised-cosine fades so the clip starts and ends at exactly zero."""
    out = list(samples)
    n_in, n_out = seconds(fade_in), seconds(fade_out)
    for i in range(min(n_in, len(out))):
        out[i] *= 0.5 - 0.5 * math.cos(math.pi * i / n_in)
    for i in range(min(n_out, len(out))):
        out[len(out) - 1 - i] *= 0.5 - 0.5 * math.cos(math.pi * i / n_out)
    return out


def remove_mean(samples):
    """Takes out what DC is left, spread over a Hann window so the edges stay at zero."""
    n = len(samples)
    window = [0.5 - 0.5 * math.cos(2.0 * math.pi * i / (n - 1)) for i in range(n)]
    offset = sum(samples) / sum(window)
    return [s - offset * w for s, w in zip(samples, window)]


def normalise(samples, peak):
    highest = max(abs(s) for s in samples)
    return [s * peak / highest for s in samples]


def finish(samples, fade_in, fade_out, peak):
    return normalise(remove_mean(fade(dc_block(samples), fade_in, fade_out)), peak)


def write_wav(path, samples):
    frames = b"".join(
        struct.pack("<h", max(-32767, min(32767, int(round(s * 32767))))) for s in samples
    )
    with wave.open(path, "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(frames)


def click(rng):
    length = 0.030
    body = mix(
        decaying_sine(length, 3400.0, 0.0040),
        decaying_sine(length, 5300.0, 0.0022, amp=0.5),
        decaying_sine(length, 1900.0, 0.0060, amp=0.35),
        noise_burst(length, 0.0007, 0.9, rng),
    )
    return finish(body, 0.0003, 0.008, 0.60)


def tick(rng):
    length = 0.055
    body = mix(
        decaying_sine(length, 2300.0, 0.0070),
        decaying_sine(length, 4100.0, 0.0040, amp=0.6),
        decaying_sine(length, 6900.0, 0.0020, amp=0.3),
        decaying_sine(length, 1100.0, 0.0120, amp=0.3),
        noise_burst(length, 0.0010, 0.7, rng),
    )
    return finish(body, 0.0005, 0.012, 0.60)


def pop(rng):
    # Modes of a small hollow wooden block: inharmonic partials, the higher ones dying first.
    length = 0.100
    body = mix(
        decaying_sine(length, 880.0, 0.030, glide=0.12),
        decaying_sine(length, 880.0 * 2.76, 0.012, amp=0.45, glide=0.12),
        decaying_sine(length, 880.0 * 5.40, 0.005, amp=0.20),
        decaying_sine(length, 880.0 * 8.93, 0.0025, amp=0.10),
        noise_burst(length, 0.0010, 0.5, rng, brightness=0.3),
    )
    return finish(body, 0.0004, 0.020, 0.70)


def beep(duration, freq):
    # A piezo buzzer: a bright tone with a little of its odd harmonics.
    out = []
    for n in range(seconds(duration)):
        w = 2.0 * math.pi * freq * n / RATE
        out.append(math.sin(w) + 0.25 * math.sin(3 * w) / 3 + 0.08 * math.sin(5 * w) / 5)
    return fade(out, 0.004, 0.004)


def stopwatch(rng):
    del rng  # the alarm has no noise in it
    burst = []
    for i in range(4):
        burst += beep(0.070, 2730.0)
        if i < 3:
            burst += silence(0.055)
    second = burst + silence(1.0 - len(burst) / RATE)
    samples = []
    for _ in range(10):
        samples += second
    return finish(samples, 0.001, 0.010, 0.50)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    target = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "res", "sounds")
    os.makedirs(target, exist_ok=True)
    clips = {"click.wav": click, "tick.wav": tick, "Pop1.wav": pop, "stopwatch.wav": stopwatch}
    for name, make in clips.items():
        samples = make(random.Random(name))
        write_wav(os.path.join(target, name), samples)
        print(f"{name}: {len(samples) / RATE * 1000:.0f} ms")


if __name__ == "__main__":
    main()
