#!/usr/bin/env bash
# CPU cost of the live sensitivity meter: the app replays a walk as its accelerometer for
# SECONDS, once with the sensitivity screen open and once with the plain settings list (nothing
# monitors or counts there, so the sensor stays off). The difference in CPU time, divided by the
# run's length, is what reading the sensor, monitoring and drawing the meter at the sensor's
# rate cost together: an upper bound for the meter alone. Target: under 2 % of a core.
# Usage: bench/sensitivity-meter.sh [BUILD_DIR] [SECONDS] [WALK]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/default}"
seconds="${2:-20}"
walk="${3:-res/walks/demo-walk.csv}"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
export QT_QPA_PLATFORM=offscreen

cpu() {  # user + system seconds of one run with the given screen open
  /usr/bin/time -f '%U %S' -o "$data/time" "$build/bin/pedometer" --data-dir "$data" \
    --silent --replay "$walk" --loop --open "$1" --quit-after "$seconds" >/dev/null 2>&1
  awk '{ print $1 + $2 }' "$data/time"
}

meter=$(cpu settings-sensitivity)
plain=$(cpu settings)
awk -v m="$meter" -v p="$plain" -v s="$seconds" 'BEGIN {
  printf "with the meter: %.2f s CPU, without: %.2f s CPU, over %d s\n", m, p, s
  printf "the sensor and the meter cost %.1f %% of one core (target < 2 %%)\n", 100 * (m - p) / s
}'
