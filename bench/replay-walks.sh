#!/usr/bin/env bash
# Replays every walk recording through the whole counting pipeline on a virtual clock
# and checks what landed in the database against the plain step count:
#   count   steps pedometer-cli count finds in the file
#   lap     the replayed lap's steps
#   minutes the sum of the stored minute rows' steps
#   rows    stored five-second rows, and the recording's length / 5 s
# Usage: bench/replay-walks.sh [BUILD_DIR] [WALKS_DIR]
set -euo pipefail
build="${1:-build/default}"
walks="${2:-../shared/data/walks}"
cli="$build/bin/pedometer-cli"

printf '%-40s %6s %6s %8s %6s %9s\n' file count lap minutes rows duration/5
for file in "$walks"/*.csv; do
  [ "$(basename "$file")" = ground_truth.csv ] && continue
  data=$(mktemp -d)
  count=$("$cli" count "$file" | sed -E 's/.* steps=([0-9]+) .*/\1/')
  line=$("$cli" replay --data-dir "$data" --start "2026-06-01 10:00:00" "$file")
  lap=$(sed -E 's/.* steps=([0-9]+) .*/\1/' <<<"$line")
  minutes=$(sqlite3 "$data/Statistics.db3" "SELECT coalesce(sum(steps),0) FROM LapMinutes")
  rows=$(sqlite3 "$data/Statistics.db3" "SELECT count(*) FROM LastFiveMinutes")
  duration=$(awk -F, 'NR==2 {first=$1} NR>1 {last=$1} END {printf "%d", (last-first)/5}' "$file")
  printf '%-40s %6s %6s %8s %6s %9s\n' "$(basename "$file")" "$count" "$lap" "$minutes" "$rows" "$duration"
  rm -rf "$data"
done
