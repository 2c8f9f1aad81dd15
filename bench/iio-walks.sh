#!/usr/bin/env bash
# Steps counted from a 3-minute walk (walks joined and cut at $1 s, 180 by default) fed in
# real time through every fake driver tree, read from the buffer and by polling, against
# the steps counted from the recording itself. The ten runs go two at a time.
set -euo pipefail
cd "$(dirname "$0")/.."
bench=build/default/bin/bench_IioDevice
seconds=${1:-180}
walks=${WALKS:-/work/shared/data/walks}
files=("$walks"/walker-a-inhand-samsung-1.csv "$walks"/walker-b-armband-samsung-1.csv)
for driver in inv_mpu6050 st_lsm6dsx st_accel bmc150 hid-sensor-accel-3d; do
  for mode in buffered polled; do
    echo "$mode $driver"
  done
done | xargs -P 2 -L 1 sh -c '"$0" walk "$1" "$2" '"$seconds"' '"${files[*]}" "$bench"
