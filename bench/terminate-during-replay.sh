#!/usr/bin/env bash
# Nothing counted is lost on the way out: TRIALS times, the app replays a walk, counting,
# and gets SIGTERM at a random moment; the steps it says it counted must equal the steps
# stored for its lap. Prints one line per trial and the number of trials that matched.
# Usage: bench/terminate-during-replay.sh [BUILD_DIR] [TRIALS] [WALK]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/default}"
trials="${2:-20}"
walk="${3:-res/walks/demo-walk.csv}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen
matched=0
for trial in $(seq 1 "$trials"); do
  data="$work/$trial"
  mkdir -p "$data"
  "$build/bin/pedometer" --data-dir "$data" --silent --autostart --replay "$walk" \
    >"$data/out" 2>"$data/err" &
  pid=$!
  # Between 6 and 16 s in: after a few stored intervals, anywhere within an interval.
  sleep "$(awk -v s="$RANDOM" 'BEGIN { printf "%.2f", 6 + (s % 1000) / 100 }')"
  kill -TERM "$pid"
  wait "$pid" || true
  read -r lap counted < <(sed -n 's/^counted lap=\([0-9]*\) steps=\([0-9]*\).*/\1 \2/p' "$data/out")
  stored=$(sqlite3 "$data/Statistics.db3" "select coalesce(sum(steps), 0) from LapMinutes where lapId = $lap")
  status=differ
  if [ "$stored" = "$counted" ]; then status=same; matched=$((matched + 1)); fi
  echo "trial $trial: counted $counted, stored $stored ($status)"
done
echo "$matched of $trials trials stored exactly the counted steps"
[ "$matched" = "$trials" ]
