#!/usr/bin/env bash
# Builds the project and runs it: the step counter over the shared walk recordings.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default
truth=../shared/data/walks/ground_truth.csv
[ -f "$truth" ] || truth=res/walks/ground_truth.csv
exec build/default/bin/pedometer-cli accuracy "$truth" "$@"
