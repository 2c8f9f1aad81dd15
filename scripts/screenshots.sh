#!/usr/bin/env bash
# Saves a screenshot of every screen in English, German and at 320 x 480, for a person to
# look at. Usage: scripts/screenshots.sh [FOLDER] (default build/screenshots). Uses the default
# build and a throw-away data folder with a year of made-up history, so nothing of the user's is
# touched and the history screens have something to show.
set -euo pipefail
cd "$(dirname "$0")/.."
out="${1:-build/screenshots}"
app=build/default/bin/pedometer
[ -x "$app" ] || cmake --build --preset default --target pedometer pedometer-cli
mkdir -p "$out"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
export QT_QPA_PLATFORM=offscreen
build/default/bin/pedometer-cli seed-history --years 1 --data-dir "$data" >/dev/null
today=$(date +%F)
day=(--day "$today" --lap 1 --from "$(date -d '-30 days' +%F)" --to "$today")
status=0
for screen in $("$app" --list-screens); do
  for variant in en de hvga; do
    case $variant in
      en) flags=(--locale en_US --size 360x720) ;;
      de) flags=(--locale de_DE --size 360x720) ;;
      hvga) flags=(--locale en_US --size 320x480) ;;
    esac
    if ! "$app" --data-dir "$data" --open "$screen" "${day[@]}" "${flags[@]}" \
        --screenshot "$out/$screen-$variant.png" --quit-after 1 >/dev/null 2>"$data/log"; then
      echo "$screen ($variant) failed:" >&2
      cat "$data/log" >&2
      status=1
    fi
  done
done
echo "screenshots in $out"
exit $status
