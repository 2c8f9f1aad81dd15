#!/usr/bin/env python3
"""Chooses the adaptive step detector's parameters from the recorded walks, by
leave-one-walker-out cross-validation, and reports the error on the walker left out.

For each walker (a, b, c: the letter after "walker-" in the file names) the parameter
set with the lowest mean absolute percentage error on the OTHER walkers' walks is
chosen, and its error is measured on the walks of the walker left out; those held-out
errors are the figures to trust. A set is only eligible when it counts at most five
steps per minute in every not-walking recording (tests/data/not-walking, one minute
each, made by scripts/make_not_walking.py). The defaults shipped in
AdaptiveStepDetector.h are the set chosen on all walks.

The counting is done by the real detector: `pedometer-cli sweep` reads every recording
once and counts it for each parameter set given on its input.

Usage (from the project root, after building pedometer-cli):
  scripts/tune_adaptive.py [WALKS_DIR...]     (default ../shared/data/walks{,-more})
"""
import glob
import itertools
import os
import re
import subprocess
import sys

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
CLI = os.path.join(ROOT, "build", "default", "bin", "pedometer-cli")
NOT_WALKING = sorted(glob.glob(os.path.join(ROOT, "tests", "data", "not-walking", "*.csv")))
MAX_FALSE_STEPS = 5  # per one-minute not-walking recording
WORST_LIMIT = 8.0    # per cent: a set must keep every training walk within this

# The grid. Only what the signal has to decide is tuned; the rest is set from physics
# and stays fixed (tuning it too only lets three walkers' quirks in):
#  - the shortest step, 300 ms: no one steps faster than 3.3 per second;
#  - the longest, 1.2 s: slower than any walk;
#  - three regular steps confirm a walk: the most the one-second decision allows;
#  - peaks merge at most 360 ms apart: 80 % of a brisk 2.2-steps-per-second walk;
#  - the running mean (about 1 s) and the rise weights: the time scale of a step.
# The walks are all walking, but running must count too (up to 3.3 steps per second):
# a moving average of W samples (30 ms each) wipes out 33/W Hz, so W <= 9 keeps 3 Hz.
# Smoothing: 90-270 ms of averaging. Threshold: the share of the recent steps' rise a
# peak needs. Floor: the smallest rise in g (sensor noise and a car's ride stay below
# about 0.05 g). Merge: the share of the step period within which peaks are one step.
GRID = {
    "smoothing": [3, 5, 7, 9],
    "threshold": [0.3, 0.4, 0.5, 0.6],
    "floor": [0.06, 0.08, 0.10, 0.12],
    "merge": [0.0, 0.5, 0.6, 0.7],
}


def read_walks(folders):
    walks = []
    for folder in folders:
        with open(os.path.join(folder, "ground_truth.csv")) as f:
            header = f.readline().strip().split(",")
            fi, ti = header.index("file"), header.index("ground_truth_steps")
            for line in f:
                row = line.strip().split(",")
                if len(row) > max(fi, ti):
                    walker = re.match(r"walker-(\w)-", row[fi]).group(1)
                    walks.append((os.path.join(folder, row[fi]), walker, int(row[ti])))
    return walks


def sweep(files, sets):
    lines = "\n".join(" ".join("%s=%s" % kv for kv in s.items()) for s in sets) + "\n"
    out = subprocess.run([CLI, "sweep"] + files, input=lines, capture_output=True, text=True,
                         check=True).stdout.split("\n")
    return [[int(v) for v in line.split()] for line in out[:len(sets)]]


def errors(counts, walks):
    return [(c - truth) * 100.0 / truth for c, (_, _, truth) in zip(counts, walks)]


def mape(errs):
    return sum(abs(e) for e in errs) / len(errs)


def main():
    folders = sys.argv[1:] or [os.path.join(ROOT, "..", "shared", "data", d)
                               for d in ("walks", "walks-more")]
    walks = read_walks(folders)
    sets = [dict(zip(GRID, values)) for values in itertools.product(*GRID.values())]
    counts = sweep([w[0] for w in walks] + NOT_WALKING, sets)
    eligible = [(s, c[:len(walks)]) for s, c in zip(sets, counts)
                if all(v <= MAX_FALSE_STEPS for v in c[len(walks):])]
    # The floor is not for the walks to choose (they never lack a rise): it is the
    # lowest one that keeps the not-walking recordings quiet, given the other values.
    lowest = {}
    for s, _ in eligible:
        rest = tuple(v for k, v in s.items() if k != "floor")
        lowest[rest] = min(lowest.get(rest, s["floor"]), s["floor"])
    eligible = [(s, c) for s, c in eligible
                if s["floor"] == lowest[tuple(v for k, v in s.items() if k != "floor")]]
    print("%d parameter sets, %d eligible (at most %d false steps in each not-walking minute, "
          "lowest such floor)" % (len(sets), len(eligible), MAX_FALSE_STEPS))

    # A set is judged with its neighbours on the grid (one parameter one step away): a
    # set that is only good by a hair, next to bad ones, is luck on these walks, not a
    # property of the signal. Score: mean over the neighbourhood of the training MAPE
    # plus half the worst training walk (both targets count).
    index = {tuple(s.values()): k for k, s in enumerate(sets)}
    all_counts = {tuple(s.values()): c[:len(walks)] for s, c in zip(sets, counts)}

    def neighbours(s):
        key = list(s.values())
        for d, name in enumerate(GRID):
            pos = GRID[name].index(key[d])
            for step in (-1, 1):
                if 0 <= pos + step < len(GRID[name]):
                    other = key[:]
                    other[d] = GRID[name][pos + step]
                    yield tuple(other)

    floor_at = list(GRID).index("floor")

    def best(indices):
        def raw(c):
            errs = [errors(c, walks)[i] for i in indices]
            return mape(errs) + 0.5 * max(abs(e) for e in errs)

        def score(sc):
            near = [raw(all_counts[k]) for k in neighbours(sc[0]) if k[floor_at] == sc[0]["floor"]]
            return (raw(sc[1]) + sum(near)) / (1 + len(near))
        return min(eligible, key=score)

    held_out = {}
    for walker in sorted({w[1] for w in walks}):
        train = [i for i, w in enumerate(walks) if w[1] != walker]
        test = [i for i, w in enumerate(walks) if w[1] == walker]
        chosen, c = best(train)
        errs = errors(c, walks)
        print("walker %s left out: chosen %s; training MAPE %.2f %%, held-out MAPE %.2f %% "
              "over %d walks, worst %.1f %%"
              % (walker, chosen, mape([errs[i] for i in train]), mape([errs[i] for i in test]),
                 len(test), max(abs(errs[i]) for i in test)))
        for i in test:
            held_out[i] = (c[i], errs[i])
    print("\n%-40s %7s %7s %8s" % ("file (counted with its walker left out)", "counted", "true",
                                    "error %"))
    for i, (path, _, truth) in enumerate(walks):
        print("%-40s %7d %7d %8.1f" % (os.path.basename(path), held_out[i][0], truth,
                                        held_out[i][1]))
    errs = [held_out[i][1] for i in range(len(walks))]
    print("held-out mean absolute percentage error %.2f %%, worst walk %.1f %%"
          % (mape(errs), max(abs(e) for e in errs)))

    chosen, c = best(range(len(walks)))
    print("\nchosen on all walks (the shipped defaults): %s, MAPE %.2f %%"
          % (chosen, mape(errors(c, walks))))


if __name__ == "__main__":
    main()
