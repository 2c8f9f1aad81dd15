#!/usr/bin/env bash
# Peak resident memory of the application showing each of the heaviest screens, on a data
# folder holding five years of seeded history (offscreen, counting from a replayed walk so
# that the live graph draws). SIZE is the window's logical size; set QT_SCALE_FACTOR=2 for a
# scale-2 phone (a 720 x 1440 screen is 360x720 at scale 2). Prints one line per screen and
# exits non-zero when one is at or over LIMIT_MB.
# Usage: bench/resident-memory.sh [BUILD_DIR] [SIZE] [LIMIT_MB]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/default}"
size="${2:-360x720}"
limit="${3:-80}"
app="$build/bin/pedometer"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
export QT_QPA_PLATFORM=offscreen
"$build/bin/pedometer-cli" seed-history --years 5 --data-dir "$data" >/dev/null
today=$(date +%F)
record=(--day "$today" --from "$(date -d '-180 days' +%F)" --to "$today")
walk=$(ls res/walks/*.csv 2>/dev/null | head -1)
replay=(${walk:+--replay "$walk" --autostart})
status=0
for screen in main history-day history-days history-180 history-range body report \
    settings-sensitivity; do
  kb=$(/usr/bin/time -f '%M' "$app" --data-dir "$data" --open "$screen" "${record[@]}" \
         ${replay[@]+"${replay[@]}"} --size "$size" --quit-after 3 2>&1 >/dev/null | tail -1)
  mb=$((kb / 1024))
  flag=""
  if [ "$mb" -ge "$limit" ]; then flag="  over"; status=1; fi
  printf 'resident %-22s %s scale %s: %3d MB (limit %d MB)%s\n' "$screen" "$size" \
    "${QT_SCALE_FACTOR:-1}" "$mb" "$limit" "$flag"
done
exit $status
