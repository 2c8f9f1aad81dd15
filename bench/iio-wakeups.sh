#!/usr/bin/env bash
# Wake-ups a second per thread and the share of a core while counting from a fake
# inv_mpu6050 at 50 Hz, read from its buffer and by polling (60 s each, or $1 s), and the
# time STOP takes while a read hangs for 5 s. Needs the default build.
set -euo pipefail
cd "$(dirname "$0")/.."
bench=build/default/bin/bench_IioDevice
seconds=${1:-60}
"$bench" wakeups buffered "$seconds" 50
"$bench" wakeups polled "$seconds" 50
"$bench" stop
