#!/usr/bin/env bash
# Time from process start to the first paint of every screen opened with --open, on a data
# folder holding five years of seeded history. Prints the median of RUNS starts per screen
# (offscreen), next to its target: 150 ms for the 180-day period and the all-days list,
# 100 ms for every other screen, and the median processor time used up to that paint (all
# threads), which a busy machine disturbs less. SIZE is the window's size (default the
# desktop's 480x860); set QT_SCALE_FACTOR=2 for a scale-2 phone. Above the table: the
# floor, the median first paint of a bare window with one line of text in a program linked
# like the application (bench_FirstPaintFloor), i.e. what this machine takes to start a Qt
# program and paint; the column "own" is each screen's median beyond it.
# Usage: bench/open-screens.sh [BUILD_DIR] [RUNS] [SIZE]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/default}"
runs="${2:-5}"
size=(${3:+--size "$3"})
app="$build/bin/pedometer"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
export QT_QPA_PLATFORM=offscreen
"$build/bin/pedometer-cli" seed-history --years 5 --data-dir "$data" >/dev/null
today=$(date +%F)
record=(--day "$today" --lap 1 --from "$(date -d '-30 days' +%F)" --to "$today")
"$app" --data-dir "$data" --open main --quit-after 0 >/dev/null 2>&1 || true  # warm the caches
median() { sort -n | sed -n "$(((runs + 1) / 2))p"; }
floors=()
for _ in $(seq "$runs"); do
  floors+=("$("$build/bin/bench_FirstPaintFloor" ${size[@]+"${size[@]}"} 2>/dev/null |
              sed -n 's/^painted floor after \([0-9]*\) ms.*/\1/p')")
done
floor=$(printf '%s\n' "${floors[@]}" | median)
echo "floor (a bare Qt window with one line of text): ${floor:-?} ms"
printf '%-22s %8s %8s %8s %8s\n' screen "median" own target cpu
worst=0
for screen in $("$app" --list-screens 2>/dev/null); do
  times=() cpus=()
  for _ in $(seq "$runs"); do
    line=$("$app" --data-dir "$data" --open "$screen" "${record[@]}" ${size[@]+"${size[@]}"} \
             --quit-after 0 2>/dev/null | grep "^painted $screen after " || true)
    ms=$(sed -n 's/^painted [^ ]* after \([0-9]*\) ms.*/\1/p' <<<"$line")
    cpu=$(sed -n 's/.*, cpu \([0-9]*\) ms$/\1/p' <<<"$line")
    times+=("${ms:-9999}")
    cpus+=("${cpu:-9999}")
  done
  median=$(printf '%s\n' "${times[@]}" | median)
  cpu=$(printf '%s\n' "${cpus[@]}" | median)
  case $screen in history-180 | history-days) target=150 ;; *) target=100 ;; esac
  flag=""
  if [ "$median" -ge "$target" ]; then flag="  over"; worst=1; fi
  printf '%-22s %5s ms %5s ms %5s ms %5s ms%s\n' "$screen" "$median" "$((median - ${floor:-0}))" \
    "$target" "$cpu" "$flag"
done
exit $worst
