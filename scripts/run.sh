#!/usr/bin/env bash
# Builds the pedometer and runs it.
#
# With a display it opens the window (extra arguments go to the application, see
# `build/default/bin/pedometer --help`). Without one it runs the same application on
# Qt's offscreen platform: it replays the demonstration walk as the accelerometer,
# presses START, prints each stored five-second interval and, once the walk is over,
# saves a screenshot of the main screen and prints its path.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default

app=build/default/bin/pedometer
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  exec "$app" "$@"
fi

shots=build/default/screenshots
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
mkdir -p "$shots"
echo "No display: replaying res/walks/demo-walk.csv on the offscreen platform (about two minutes)."
QT_QPA_PLATFORM=offscreen "$app" --data-dir "$data" --replay res/walks/demo-walk.csv \
  --autostart --quit-after-replay --screenshot "$shots/main-screen.png" "$@"
