#!/usr/bin/env bash
# Prints the layout check (pedometer --check-layout) of every screen at the phone and desktop
# sizes, in English and German, on a data folder with a year of made-up history; exits non-zero
# when any screen does not fit. The same check runs in-process in LayoutCheckTest; this is the
# table for a person to read. Usage: scripts/layout-table.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/default}"
app="$build/bin/pedometer"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
export QT_QPA_PLATFORM=offscreen
"$build/bin/pedometer-cli" seed-history --years 1 --data-dir "$data" >/dev/null
today=$(date +%F)
record=(--day "$today" --lap 1 --from "$(date -d '-30 days' +%F)" --to "$today")
status=0
for locale in en_US de_DE; do
  for screen in $("$app" --list-screens); do
    for size in 320x480 360x720 360x760 412x915 480x800 720x1280 1280x800; do
      if ! line=$("$app" --data-dir "$data" --locale "$locale" --open "$screen" "${record[@]}" \
          --size "$size" --check-layout 2>"$data/log"); then
        status=1
        line="$line  FAILS: $(tr '\n' ';' <"$data/log")"
      fi
      echo "$locale $line"
    done
  done
done
exit $status
