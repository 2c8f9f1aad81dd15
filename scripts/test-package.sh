#!/usr/bin/env bash
# Installs the built programs the two ways a user gets them and runs them from there:
# `cmake --install` into a temporary prefix, and the Debian package from `cpack -G DEB`
# unpacked with dpkg-deb into a temporary root. Each installed pedometer runs offscreen
# on an empty data folder, must paint its main screen and find its resources under
# share/ and its plug-ins under lib/pedometer (never in the build tree), and the
# installed desktop entry and metainfo must pass their validators; a second writer on a
# data folder and a second launch on the user's own data are turned away. Usage: scripts/test-package.sh [preset]
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
build="build/$preset"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
app_id=io.github.pedometer_app.Pedometer

fail() { echo "test-package: $*" >&2; exit 1; }

# Runs the pedometer under ROOT/usr (or ROOT) and checks what it printed.
check_installed() {
  local prefix="$1" label="$2"
  [ -x "$prefix/bin/pedometer" ] || fail "$label: no bin/pedometer"
  [ -x "$prefix/bin/pedometer-cli" ] || fail "$label: no bin/pedometer-cli"
  for f in share/pedometer/Options.db3 share/pedometer/Statistics.db3 \
           share/pedometer/strings/en.xml share/pedometer/images/btn-start.svg \
           "share/applications/$app_id.desktop" "share/metainfo/$app_id.metainfo.xml" \
           "share/icons/hicolor/scalable/apps/$app_id.svg" "share/dbus-1/services/$app_id.service" \
           lib/pedometer/libpedometer-sound.so lib/pedometer/libpedometer-sensors.so \
           lib/pedometer/libpedometer-social.so; do
    [ -f "$prefix/$f" ] || fail "$label: $f is missing"
  done
  desktop-file-validate "$prefix/share/applications/$app_id.desktop"
  appstreamcli validate --no-net "$prefix/share/metainfo/$app_id.metainfo.xml" >/dev/null
  "$prefix/bin/pedometer-cli" --version >/dev/null
  local data="$work/data-$label" out="$work/out-$label.txt"
  # No session bus: this run must not hand over to a pedometer the developer has open.
  env -u DBUS_SESSION_BUS_ADDRESS QT_QPA_PLATFORM=offscreen PEDOMETER_RES_DIR= PEDOMETER_PLUGIN_DIR= \
    "$prefix/bin/pedometer" --data-dir "$data" --screenshot "$work/$label.png" \
    --quit-after 1 >"$out" 2>&1 || { cat "$out"; fail "$label: pedometer failed"; }
  grep -q "^painted main after" "$out" || { cat "$out"; fail "$label: main screen not painted"; }
  [ -s "$work/$label.png" ] || fail "$label: no screenshot"
  [ -f "$data/Statistics.db3" ] || fail "$label: no database made from the installed seed"
  grep -q "cannot\|missing" "$out" && { cat "$out"; fail "$label: complained"; }
  echo "test-package: $label: $(grep '^painted' "$out")"
}

# A second pedometer on a data folder in use says so and leaves; the first goes on.
check_one_writer() {
  local prefix="$1" data="$work/shared-data" out="$work/second.txt"
  env -u DBUS_SESSION_BUS_ADDRESS QT_QPA_PLATFORM=offscreen \
    "$prefix/bin/pedometer" --data-dir "$data" --quit-after 4 >"$work/first.txt" 2>&1 &
  local first=$!
  for _ in $(seq 50); do [ -s "$data/pedometer.lock" ] && break; sleep 0.1; done
  if env -u DBUS_SESSION_BUS_ADDRESS QT_QPA_PLATFORM=offscreen \
    "$prefix/bin/pedometer" --data-dir "$data" --quit-after 1 >"$out" 2>&1; then
    fail "a second pedometer ran on a data folder in use"
  fi
  grep -q "is using the data folder" "$out" || { cat "$out"; fail "the second one did not say why"; }
  # Import and restore write too: they refuse the folder in use before reading their file.
  local command
  for command in import restore; do
    if "$prefix/bin/pedometer-cli" "$command" "$work/any-file" --data-dir "$data" >"$out" 2>&1; then
      fail "pedometer-cli $command wrote to a data folder in use"
    fi
    grep -q "is using the data folder" "$out" || { cat "$out"; fail "$command did not say why"; }
  done
  wait "$first" || { cat "$work/first.txt"; fail "the first pedometer did not go on"; }
}

# On a session bus of its own: a second launch on the user's data brings the first
# one forward and leaves at once.
check_one_instance() {
  local prefix="$1"
  XDG_DATA_HOME="$work/xdg" QT_QPA_PLATFORM=offscreen dbus-run-session -- bash -c '
    "$1/bin/pedometer" --quit-after 4 >/dev/null 2>&1 & first=$!
    for _ in $(seq 50); do [ -s "$XDG_DATA_HOME/pedometer/pedometer.lock" ] && break; sleep 0.1; done
    "$1/bin/pedometer" --quit-after 1 && wait "$first"' _ "$prefix" >"$work/instance.txt" 2>&1 ||
    { cat "$work/instance.txt"; fail "one instance: a launch failed"; }
  grep -q "already running; its window was brought forward" "$work/instance.txt" ||
    { cat "$work/instance.txt"; fail "the second launch did not hand over"; }
}

cmake --build --preset "$preset" --target pedometer pedometer-cli pedometer_resources pedometer_seed_databases >/dev/null
cmake --install "$build" --prefix "$work/prefix" >/dev/null
check_installed "$work/prefix" prefix

(cd "$build" && cpack -G DEB -B "$work/deb" >/dev/null)
deb="$(ls "$work"/deb/*.deb)"
depends="$(dpkg-deb -f "$deb" Depends)"
for lib in libqt6widgets6 libqt6svg6 libsqlite3-0 qt6-qpa-plugins; do
  grep -q "$lib" <<<"$depends" || fail "package does not depend on $lib: $depends"
done
dpkg-deb -x "$deb" "$work/root"
check_installed "$work/root/usr" deb
check_one_writer "$work/root/usr"
check_one_instance "$work/root/usr"
echo "test-package: $(basename "$deb") passes"
