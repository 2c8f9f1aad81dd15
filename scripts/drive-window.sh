#!/usr/bin/env bash
# Drives the real window on a virtual 360 x 720 X screen as a finger would: opens the option
# menu, settings, history and its reports, the body tracker, and resizes the window at run
# time (to 320 x 480 and back, and shorter), saving the whole screen after each step as
# NN-step.png in FOLDER for a person to look at. Needs Xvfb, xdotool and ImageMagick
# (scripts/setup.sh). Usage: scripts/drive-window.sh [FOLDER] (default build/drive)
set -euo pipefail
cd "$(dirname "$0")/.."
out="${1:-build/drive}"
app=build/default/bin/pedometer
mkdir -p "$out"
data=$(mktemp -d)
display=:$((50 + RANDOM % 40))
Xvfb "$display" -screen 0 360x720x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
trap 'kill "${pid:-}" 2>/dev/null || true; kill "$xvfb"; rm -rf "$data"' EXIT
export DISPLAY=$display
sleep 2
build/default/bin/pedometer-cli seed-history --years 1 --data-dir "$data" >/dev/null
QT_QPA_PLATFORM=xcb "$app" --data-dir "$data" --size 360x720 >/dev/null 2>&1 &
pid=$!
sleep 4
window=$(xdotool search --onlyvisible --class '^pedometer$' | head -1)
step=0
shot() { step=$((step + 1)); import -window root "$out/$(printf %02d "$step")-$1.png"; }
tap() { xdotool mousemove "$1" "$2" click 1; sleep "${3:-1.5}"; }
shot main
tap 180 697 1 && shot menu                      # the option key, in the middle of the bar
tap 60 453 && shot settings                     # Settings
xdotool key Escape && sleep 1
tap 180 697 1 && tap 60 549 && shot history     # History: today
xdotool windowsize "$window" 320 480 && sleep 1.5 && shot history-320x480
tap 57 460 && shot reports-320x480              # Reports, the left soft key
xdotool windowsize "$window" 360 720 && sleep 1.5 && shot reports-360x720
xdotool key Escape && sleep 0.7 && xdotool key Escape && sleep 0.7
tap 180 697 1 && tap 80 405 2 && shot body      # Body tracker
xdotool windowsize "$window" 360 560 && sleep 1.5 && shot body-360x560
echo "screens in $out"
