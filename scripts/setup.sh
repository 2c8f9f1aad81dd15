#!/usr/bin/env bash
# Installs every Debian package the pedometer needs to build, test and run.
# Idempotent: installs only what is missing, and refreshes the package lists
# at most once, only when something has to be installed.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git
  qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins
  qt6-sensors-dev qt6-multimedia-dev qt6-svg-dev qt6-networkauth-dev qtkeychain-qt6-dev
  libqt6svg6 libqt6sql6-sqlite
  libsqlitecpp-dev libsqlite3-dev sqlite3
  libgtest-dev libgmock-dev libbenchmark-dev
  libfontconfig-dev clang-format fonts-dejavu-core xdg-utils ccache
  desktop-file-utils appstream dbus-daemon dpkg-dev
  time xvfb xdotool imagemagick
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
  sudo_cmd=(sudo)
fi

echo "Installing: ${missing[*]}"
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
