#!/usr/bin/env bash
# Figures for keeping the user's data:
#   - export / import / backup of five years of seeded history (seconds; the backup's
#     longest single lock of the source, which bounds a writer's wait)
#   - quick_check cost on that history (what start-up pays before the first write)
#   - N kill -9 trials of the windowed app while it replays a walk: after each kill
#     the file must pass integrity_check, and every interval the app reported as
#     stored must be in the file (lost = reported - stored, beyond the one in progress)
# Usage: bench/storage-safety.sh [BUILD_DIR] [TRIALS] [WALK]
set -euo pipefail
build="${1:-build/default}"
trials="${2:-50}"
walk="${3:-res/walks/demo-walk.csv}"
cli="$build/bin/pedometer-cli"
app="$build/bin/pedometer"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

seconds() { local s=$(date +%s.%N); "$@" >/dev/null; echo "$(date +%s.%N) - $s" | bc; }

"$cli" seed-history --years 5 --data-dir "$work/history" >/dev/null
echo "export minutes (5 years): $(seconds "$cli" export minutes --data-dir "$work/history" --out "$work/m.csv") s"
echo "import minutes into an empty folder: $(seconds "$cli" import "$work/m.csv" --data-dir "$work/fresh") s"
echo "backup: $("$cli" backup --data-dir "$work/history" "$work/all.backup" | sed 's/.*(//; s/)//')"
echo "quick_check: $(seconds sqlite3 "$work/history/Statistics.db3" 'PRAGMA quick_check') s (sqlite3 start included)"

lostTotal=0
failures=0
for ((i = 1; i <= trials; i++)); do
  data="$work/kill-$i"
  QT_QPA_PLATFORM=offscreen "$app" --data-dir "$data" --replay "$walk" --loop --autostart >"$work/out" 2>/dev/null &
  pid=$!
  sleep "$(awk -v s="$RANDOM" 'BEGIN { srand(s); printf "%.2f", 12 + rand() * 6 }')"
  kill -9 "$pid"
  wait "$pid" 2>/dev/null || true
  reported=$(grep -c '^interval ' "$work/out" || true)
  stored=$(sqlite3 "$data/Statistics.db3" 'SELECT count(*) FROM LastFiveMinutes' 2>/dev/null || echo 0)
  check=$(sqlite3 "$data/Statistics.db3" 'PRAGMA integrity_check' 2>&1 || true)
  lost=$((reported - stored))
  ((lost > 0)) && lostTotal=$((lostTotal + lost))
  [ "$check" = ok ] || failures=$((failures + 1))
  printf 'trial %2d: reported %3d stored %3d integrity %s\n' "$i" "$reported" "$stored" "$check"
  rm -rf "$data"
done
echo "kill trials: $trials, intervals lost beyond the one in progress: $lostTotal, integrity failures: $failures"
