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

Every walk is counted at each sensor rate the phones offer (RATES: as recorded, 50, 25
and 12.5 Hz, resampled by keeping the first sample of each 1/rate seconds); one set must
serve them all, so a set is scored on the training walks at every rate together, and the
held-out errors are reported per rate.

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
RATES = [None, 50, 25, 12.5]  # Hz; None: as recorded

# The grid. Only what the signal has to decide is tuned; the rest is set from physics
# and stays fixed (tuning it too only lets three walkers' quirks in):
#  - the shortest step, 300 ms: no one steps faster than 3.3 per second;
#  - the longest, 1.2 s: slower than any walk;
#  - three regular steps confirm a walk: the most the 1.5-second decision allows;
#  - peaks merge at most 360 ms apart: 80 % of a brisk 2.2-steps-per-second walk;
#  - the running mean (about 1 s) and the rise weights: the time scale of a step;
#  - a gap of about two step periods within a walk holds a footfall the phone did not
#    show (people do not skip steps): it is counted (sweep's fill=1, the default).
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


def sweep(files, sets, rate):
    lines = "\n".join(" ".join("%s=%s" % kv for kv in s.items()) for s in sets) + "\n"
    rate_args = ["--rate", str(rate)] if rate else []
    out = subprocess.run([CLI, "sweep"] + rate_args + files, input=lines, capture_output=True,
                         text=True, check=True).stdout.split("\n")
    return [[int(v) for v in line.split()] for line in out[:len(sets)]]


def errors(counts, walks):
    return [(c - truth) * 100.0 / truth for c, (_, _, truth) in zip(counts, walks)]


def mape(errs):
    return sum(abs(e) for e in errs) / len(errs)


def main():
    folders = sys.argv[1:] or [os.path.join(ROOT, "..", "shared", "data", d)
                               for d in ("walks", "walks-more")]
    walks = read_walks(folders)
    n = len(walks)
    sets = [dict(zip(GRID, values)) for values in itertools.product(*GRID.values())]
    # counts[r][k]: the counts of set k at rate r, walks first, then the not-walking ones.
    counts = [sweep([w[0] for w in walks] + NOT_WALKING, sets, rate) for rate in RATES]
    eligible = [k for k in range(len(sets))
                if all(v <= MAX_FALSE_STEPS for c in counts for v in c[k][n:])]
    # The floor is not for the walks to choose (they never lack a rise): it is the
    # lowest one that keeps the not-walking recordings quiet at every rate, given the
    # other values.
    lowest = {}
    for k in eligible:
        rest = tuple(v for name, v in sets[k].items() if name != "floor")
        lowest[rest] = min(lowest.get(rest, sets[k]["floor"]), sets[k]["floor"])
    eligible = [k for k in eligible
                if sets[k]["floor"] == lowest[tuple(v for name, v in sets[k].items()
                                                    if name != "floor")]]
    print("%d parameter sets, %d eligible (at most %d false steps in each not-walking minute "
          "at every rate, lowest such floor)" % (len(sets), len(eligible), MAX_FALSE_STEPS))

    # A set is judged with its neighbours on the grid (one parameter one step away): a
    # set that is only good by a hair, next to bad ones, is luck on these walks, not a
    # property of the signal. Score: over the rates, the mean of the training MAPE plus
    # half the worst training walk (both targets count).
    index = {tuple(s.values()): k for k, s in enumerate(sets)}
    floor_at = list(GRID).index("floor")

    def neighbours(k):
        key = list(sets[k].values())
        for d, name in enumerate(GRID):
            if d == floor_at:
                continue
            pos = GRID[name].index(key[d])
            for step in (-1, 1):
                if 0 <= pos + step < len(GRID[name]):
                    other = key[:]
                    other[d] = GRID[name][pos + step]
                    yield index[tuple(other)]

    def best(indices):
        def raw(k):
            total = 0.0
            for c in counts:
                errs = [errors(c[k], walks)[i] for i in indices]
                total += mape(errs) + 0.5 * max(abs(e) for e in errs)
            return total / len(counts)

        def score(k):
            near = [raw(j) for j in neighbours(k)]
            return (raw(k) + sum(near)) / (1 + len(near))
        return min(eligible, key=score)

    held_out = [dict() for _ in RATES]
    for walker in sorted({w[1] for w in walks}):
        train = [i for i, w in enumerate(walks) if w[1] != walker]
        test = [i for i, w in enumerate(walks) if w[1] == walker]
        k = best(train)
        print("walker %s left out: chosen %s" % (walker, sets[k]))
        for r, rate in enumerate(RATES):
            errs = errors(counts[r][k], walks)
            print("  %-11s training MAPE %.2f %%, held-out MAPE %.2f %% over %d walks, worst %.1f %%"
                  % (rate and "%s Hz" % rate or "as recorded", mape([errs[i] for i in train]),
                     mape([errs[i] for i in test]), len(test), max(abs(errs[i]) for i in test)))
            for i in test:
                held_out[r][i] = (counts[r][k][i], errs[i])
    for r, rate in enumerate(RATES):
        print("\n%s: %-34s %7s %7s %8s" % (rate and "%s Hz" % rate or "as recorded",
                                             "file (walker left out)", "counted", "true", "error %"))
        for i, (path, _, truth) in enumerate(walks):
            print("%-48s %7d %7d %8.1f" % (os.path.basename(path), held_out[r][i][0], truth,
                                            held_out[r][i][1]))
        errs = [held_out[r][i][1] for i in range(n)]
        print("held-out mean absolute percentage error %.2f %%, worst walk %.1f %%"
              % (mape(errs), max(abs(e) for e in errs)))

    k = best(range(n))
    print("\nchosen on all walks (the shipped defaults): %s" % sets[k])
    for r, rate in enumerate(RATES):
        errs = errors(counts[r][k], walks)
        print("  %-11s MAPE %.2f %%, worst %.1f %%, false steps %s"
              % (rate and "%s Hz" % rate or "as recorded", mape(errs),
                 max(abs(e) for e in errs), counts[r][k][n:]))


if __name__ == "__main__":
    main()
