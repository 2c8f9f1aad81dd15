#!/usr/bin/env python3
"""Synthesises accelerometer recordings of a phone that is NOT walking.

A step detector must count (close to) nothing on these. Each is one minute at 50 Hz in
the recording format ("Time (s)", acceleration x/y/z in m/s^2, gravity included),
built from the physics of the situation with a fixed random seed, so the files are the
same on every run:

  table.csv       lying flat: gravity, sensor noise (about 2 mg rms; phone MEMS parts
                  have 100-300 ug/sqrt(Hz)), a small bias, 16-bit quantisation (+-4 g)
  table-knock.csv lying flat while someone knocks on the table now and then: each
                  knock a 20 Hz ring-down of the table top, 0.2-0.6 g, gone in ~0.1 s
  car.csv         in a car holder on an ordinary road: engine vibration (idle second
                  order, ~27 Hz, 0.03 g), body bounce on the suspension (narrow-band
                  around 1.3 Hz, ~0.03 g rms: a comfortable ride), wheel hop (12 Hz),
                  speeding up and braking (+-0.15 g, slow) and a pothole every ~15 s
                  (front then rear axle, 0.2 s apart, 0.3 g each)
  typing.csv      held in the hand while typing: physiological tremor (8-12 Hz, 0.01 g),
                  slow wrist drift (the phone tilts +-10 degrees), a tap every 0.15-0.5 s
                  (a 0.02-0.08 g jolt of 20 ms)
  pickup.csv      picked up from the table, looked at for a few seconds and put down
                  again, four times a minute: a 0.6 s lift (+-0.3 g), a turn towards the
                  face, tremor while held, the reverse, and a landing knock

Usage: scripts/make_not_walking.py [OUTPUT_DIR]   (default tests/data/not-walking)
"""
import math
import os
import random
import sys

G = 9.80665
RATE = 50.0
SECONDS = 60.0


def ring(t, start, amplitude, freq, tau):
    """A struck, damped oscillation beginning at `start` (in g)."""
    if t < start:
        return 0.0
    dt = t - start
    return amplitude * math.exp(-dt / tau) * math.sin(2 * math.pi * freq * dt)


def narrow_band(rng, n, freq, q, rms):
    """Noise filtered by a resonance (a two-pole filter), scaled to `rms`."""
    w = 2 * math.pi * freq / RATE
    r = 1 - w / (2 * q)
    a1, a2 = 2 * r * math.cos(w), -r * r
    y1 = y2 = 0.0
    out = []
    for _ in range(n + 500):
        y = rng.gauss(0, 1) + a1 * y1 + a2 * y2
        y2, y1 = y1, y
        out.append(y)
    out = out[500:]
    scale = rms / math.sqrt(sum(v * v for v in out) / n)
    return [v * scale for v in out]


def tilt(g_dir, pitch, roll):
    """Gravity (x, y, z in g) seen by a phone pitched and rolled by these angles."""
    x, y, z = g_dir
    cp, sp, cr, sr = math.cos(pitch), math.sin(pitch), math.cos(roll), math.sin(roll)
    y, z = y * cp - z * sp, y * sp + z * cp
    x, z = x * cr + z * sr, -x * sr + z * cr
    return x, y, z


def sensor(rng, x, y, z):
    """What the accelerometer reports for a true acceleration in g: noise, bias,
    quantisation, in m/s^2."""
    lsb = 8.0 / 65536 * G
    bias = (0.004, -0.003, 0.006)
    return [round((v + b + rng.gauss(0, 0.002)) * G / lsb) * lsb for v, b in zip((x, y, z), bias)]


def table(rng, n):
    return [(0.0, 0.0, 1.0)] * n


def table_knock(rng, n):
    knocks, t = [], rng.uniform(2, 6)
    while t < SECONDS:
        knocks.append((t, rng.uniform(0.2, 0.6)))
        t += rng.uniform(4, 12)
    out = []
    for i in range(n):
        t = i / RATE
        out.append((0.0, 0.0, 1.0 + sum(ring(t, s, a, 20.0, 0.025) for s, a in knocks)))
    return out


def car(rng, n):
    bounce = narrow_band(rng, n, 1.3, 3.0, 0.03)
    hop = narrow_band(rng, n, 12.0, 4.0, 0.01)
    sway = narrow_band(rng, n, 0.6, 2.0, 0.02)
    holes, t = [], rng.uniform(3, 10)
    while t < SECONDS:
        holes += [(t, 0.3), (t + 0.2, 0.25)]
        t += rng.uniform(10, 20)
    out = []
    for i in range(n):
        t = i / RATE
        engine = 0.03 * math.sin(2 * math.pi * 26.7 * t + 0.3 * math.sin(2 * math.pi * 0.1 * t))
        drive = 0.15 * math.sin(2 * math.pi * t / 25.0)
        jolt = sum(ring(t, s, a, 8.0, 0.06) for s, a in holes)
        # Held upright in a mount: the road's vertical is the phone's y axis.
        out.append((sway[i] + 0.3 * engine, 1.0 + bounce[i] + hop[i] + jolt + engine, drive))
    return out


def typing(rng, n):
    taps, t = [], 0.5
    while t < SECONDS:
        taps.append((t, rng.uniform(0.02, 0.08)))
        t += rng.uniform(0.15, 0.5)
    tremor = narrow_band(rng, n, 10.0, 3.0, 0.01)
    out = []
    for i in range(n):
        t = i / RATE
        pitch = math.radians(-40 + 10 * math.sin(2 * math.pi * 0.2 * t))
        roll = math.radians(8 * math.sin(2 * math.pi * 0.13 * t + 1))
        gx, gy, gz = tilt((0.0, 0.0, 1.0), pitch, roll)
        tap = sum(ring(t, s, a, 25.0, 0.008) for s, a in taps if s <= t < s + 0.1)
        out.append((gx + tremor[i] * 0.5, gy + tremor[i], gz + tap + tremor[i] * 0.3))
    return out


def pickup(rng, n):
    tremor = narrow_band(rng, n, 10.0, 3.0, 0.01)
    out = []
    for i in range(n):
        t = i / RATE
        phase = t % 15.0
        lift = 0.0
        angle = 0.0
        if 1.0 <= phase < 1.6:   # lift: speed up, slow down
            lift = 0.3 * math.sin(2 * math.pi * (phase - 1.0) / 0.6)
        if 1.2 <= phase < 1.8:   # turn the screen towards the face
            angle = -50 * (phase - 1.2) / 0.6
        elif 1.8 <= phase < 7.0:
            angle = -50
        elif 7.0 <= phase < 7.6:
            angle = -50 * (1 - (phase - 7.0) / 0.6)
        if 7.4 <= phase < 8.0:   # lower it again
            lift = -0.3 * math.sin(2 * math.pi * (phase - 7.4) / 0.6)
        held = 1.0 <= phase < 8.0
        gx, gy, gz = tilt((0.0, 0.0, 1.0), math.radians(angle), 0.0)
        knock = ring(phase, 8.0, 0.4, 15.0, 0.02)
        shake = tremor[i] if held else 0.0
        out.append((gx + shake * 0.5, gy + shake, gz + lift + knock))
    return out


CASES = [("table", table), ("table-knock", table_knock), ("car", car), ("typing", typing),
         ("pickup", pickup)]


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(
        os.path.dirname(__file__), "..", "tests", "data", "not-walking")
    os.makedirs(folder, exist_ok=True)
    n = int(SECONDS * RATE)
    for seed, (name, make) in enumerate(CASES, start=1):
        rng = random.Random(seed)
        with open(os.path.join(folder, name + ".csv"), "w") as f:
            f.write('"Time (s)","Acceleration x (m/s^2)","Acceleration y (m/s^2)",'
                    '"Acceleration z (m/s^2)"\n')
            for i, (x, y, z) in enumerate(make(rng, n)):
                ax, ay, az = sensor(rng, x, y, z)
                f.write("%.2f,%.4f,%.4f,%.4f\n" % (i / RATE, ax, ay, az))


if __name__ == "__main__":
    main()
