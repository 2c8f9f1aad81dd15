#!/usr/bin/env bash
# Figures for keeping the user's data:
#   - export / import / backup of five years of seeded history (seconds; the backup's
#     longest single lock of the source, which bounds a writer's wait)
#   - quick_check cost on that history (what start-up pays before the first write)
#   - N kill -9 trials of the windowed app while it replays a walk: after each kill
#     the file must pass integrity_check, and every interval the app reported as
#     stored must be in the file (lost = reported - stored, beyond the one in progress)
#   - RESTORE_TRIALS kill -9 trials of restore at a random moment, each followed by the
#     next writer's start: the folder must hold both databases of one side (the old or
#     the restored), with no staging folder or journal left; killed backups must leave
#     no temporary folder
#   - crafted backups (trigger, view, foreign column, damaged index, newer version,
#     truncated) accepted by restore: must be 0
#   - every writer with its file limited (a full disk): non-zero exit, previous file intact
#   - every writer with a link planted at its file: links followed, must be 0
# Usage: bench/storage-safety.sh [BUILD_DIR] [TRIALS] [WALK] [RESTORE_TRIALS]
set -euo pipefail
build="${1:-build/default}"
trials="${2:-50}"
walk="${3:-res/walks/demo-walk.csv}"
restoreTrials="${4:-300}"
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

# --- Restore killed at random moments ----------------------------------------------
"$cli" seed-history --years 1 --data-dir "$work/old" >/dev/null
"$cli" seed-history --years 2 --data-dir "$work/new" >/dev/null
sqlite3 "$work/old/Options.db3" "UPDATE SOCIAL SET EXPORT='old'"
sqlite3 "$work/new/Options.db3" "UPDATE SOCIAL SET EXPORT='new'"
oldLaps=$(sqlite3 "$work/old/Statistics.db3" 'SELECT count(*) FROM Lap')
newLaps=$(sqlite3 "$work/new/Statistics.db3" 'SELECT count(*) FROM Lap')
"$cli" backup --data-dir "$work/new" "$work/new.backup" >/dev/null
: >"$work/empty.csv"
half=0
leftovers=0
completed=0
for ((i = 1; i <= restoreTrials; i++)); do
  data="$work/restore-$i"
  cp -r "$work/old" "$data"
  "$cli" restore "$work/new.backup" --data-dir "$data" >/dev/null 2>&1 &
  pid=$!
  sleep "$(awk -v s="$RANDOM" 'BEGIN { srand(s); printf "%.3f", rand() * 0.25 }')"
  kill -9 "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  "$cli" import "$work/empty.csv" --data-dir "$data" >/dev/null 2>&1 || true  # the next writer
  side=$(sqlite3 "$data/Options.db3" 'SELECT EXPORT FROM SOCIAL' 2>/dev/null || echo missing)
  laps=$(sqlite3 "$data/Statistics.db3" 'SELECT count(*) FROM Lap' 2>/dev/null || echo missing)
  if [ "$side:$laps" = "old:$oldLaps" ]; then :
  elif [ "$side:$laps" = "new:$newLaps" ]; then completed=$((completed + 1))
  else half=$((half + 1)); echo "restore trial $i: half-restored ($side, $laps laps)"; fi
  left=$(find "$data" -maxdepth 1 \( -name '.restore-*' -o -name restore.journal \) | wc -l)
  leftovers=$((leftovers + left))
  rm -rf "$data"
done
echo "restore kill trials: $restoreTrials, completed: $completed, half-restored folders: $half, staging folders or journals left: $leftovers"

mkdir -p "$work/tmp"
for ((i = 1; i <= 30; i++)); do
  TMPDIR="$work/tmp" "$cli" backup --data-dir "$work/new" "$work/killed.backup" >/dev/null 2>&1 &
  pid=$!
  sleep "$(awk -v s="$RANDOM" 'BEGIN { srand(s); printf "%.3f", rand() * 0.1 }')"
  kill -9 "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
done
echo "killed backups: 30, temporary folders left: $(find "$work/tmp" -mindepth 1 | wc -l), partial files left: $(find "$work" -maxdepth 1 -name 'killed.backup.tmp-*' | wc -l)"

# --- Crafted backups ----------------------------------------------------------------
accepted=0
crafts=0
craft() {
  local name="$1" sql="$2"
  crafts=$((crafts + 1))
  cp -r "$work/new" "$work/craft-$name"
  [ -n "$sql" ] && sqlite3 "$work/craft-$name/Statistics.db3" "$sql"
  "$cli" backup --data-dir "$work/craft-$name" "$work/craft.backup" >/dev/null
  [ "$name" = truncated ] && truncate -s -100 "$work/craft.backup"
  cp -r "$work/old" "$work/target"
  if "$cli" restore "$work/craft.backup" --data-dir "$work/target" >/dev/null 2>&1; then
    accepted=$((accepted + 1)); echo "crafted backup accepted: $name"
  fi
  rm -rf "$work/target" "$work/craft-$name"
}
craft trigger "CREATE TRIGGER t AFTER INSERT ON LapMinutes BEGIN DELETE FROM Lap; END"
craft view "CREATE VIEW v AS SELECT * FROM Lap"
craft foreign-column "ALTER TABLE Lap ADD COLUMN note TEXT"
craft damaged-index "PRAGMA writable_schema=ON; UPDATE sqlite_master SET sql='CREATE INDEX LapStartDate ON Lap (techDate)' WHERE name='LapStartDate'"
craft newer-version "PRAGMA user_version=99"
craft truncated ""
echo "crafted backups: $crafts, accepted: $accepted"

# --- Every writer on a full disk and with a planted link ------------------------------
writers=("export minutes --out OUT" "export-body --out OUT" "backup OUT")
intact=0
followed=0
sqlite3 "$work/new/Statistics.db3" 'PRAGMA journal_mode=DELETE' >/dev/null
sqlite3 "$work/new/Options.db3" 'PRAGMA journal_mode=DELETE' >/dev/null
for writer in "${writers[@]}"; do
  out="$work/writer.out"
  echo previous >"$out"
  # shellcheck disable=SC2086
  if (trap '' XFSZ; ulimit -f 1; exec "$cli" ${writer/OUT/$out} --data-dir "$work/new") >/dev/null 2>&1; then
    echo "full disk: '$writer' exited 0"
  elif [ "$(cat "$out")" = previous ]; then intact=$((intact + 1))
  else echo "full disk: '$writer' lost the previous file"; fi
  rm -f "$out"
  echo untouched >"$work/victim"
  ln -s "$work/victim" "$out"
  # shellcheck disable=SC2086
  "$cli" ${writer/OUT/$out} --data-dir "$work/new" >/dev/null 2>&1 || true
  [ "$(cat "$work/victim")" = untouched ] && [ -L "$out" ] || { followed=$((followed + 1)); echo "link followed: '$writer'"; }
  rm -f "$out"
done
echo untouched >"$work/victim"
rm -f "$work/new/pedometer.lock"  # the lock file of the last writer stays, by design
ln -s "$work/victim" "$work/new/pedometer.lock"
"$cli" import "$work/empty.csv" --data-dir "$work/new" >/dev/null 2>&1 || true
[ "$(cat "$work/victim")" = untouched ] || { followed=$((followed + 1)); echo "link followed: pedometer.lock"; }
rm -f "$work/new/pedometer.lock"
echo "writers on a full disk: ${#writers[@]}, non-zero exit with the previous file intact: $intact"
echo "planted links: $((${#writers[@]} + 1)), followed: $followed"

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
