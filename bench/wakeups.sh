#!/usr/bin/env bash
# Wake-ups a second per thread while the app counts a replayed walk with its window
# hidden: context switches (voluntary + involuntary) from /proc/PID/task/*/status over
# SECONDS, after a few seconds of settling. Pass an older build's binary to compare.
# Usage: bench/wakeups.sh [PEDOMETER_BINARY] [SECONDS] [EXTRA APP OPTIONS...]
#   default options: --background (counting, no window); e.g. --autostart for a build
#   that has no --background (its window is then shown on the offscreen platform).
set -euo pipefail
cd "$(dirname "$0")/.."
binary="${1:-build/default/bin/pedometer}"
seconds="${2:-10}"
shift $(( $# > 2 ? 2 : $# ))
extra=("$@")
[ ${#extra[@]} -eq 0 ] && extra=(--background)
data=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$data"' EXIT
export QT_QPA_PLATFORM=offscreen
"$binary" --data-dir "$data" --silent --replay res/walks/demo-walk.csv --loop "${extra[@]}" \
  >/dev/null 2>&1 &
pid=$!
sleep 3
snapshot() {
  for task in /proc/"$pid"/task/*; do
    awk -v tid="${task##*/}" '/^Name:/ { sub(/^Name:[ \t]*/, ""); gsub(/ /, "_"); name = $0 }
      /ctxt_switches/ { n += $2 }
      END { print tid, name, n }' "$task/status" 2>/dev/null || true
  done
}
snapshot >"$data/before"
sleep "$seconds"
snapshot >"$data/after"
echo "wake-ups a second per thread over $seconds s ($binary ${extra[*]}):"
join <(sort "$data/before") <(sort "$data/after") |
  awk -v s="$seconds" '{ rate = ($5 - $3) / s; total += rate
    printf "  %-16s %8.1f\n", $2, rate } END { printf "  %-16s %8.1f\n", "all threads", total }'
