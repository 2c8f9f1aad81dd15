#!/usr/bin/env bash
# Builds the project and runs every test. Usage: scripts/test.sh [default|asan|tsan]
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
bash scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset" -j2
# As root, file permissions do not stop a write, so the read-only folder test skips above;
# run it again as an ordinary user where that user can reach the build.
test_storage="build/$preset/bin/test_storage"
if [ "$(id -u)" = 0 ] && setpriv --reuid=nobody --regid=nogroup --clear-groups test -x "$test_storage"; then
  home=$(mktemp -d)
  chown nobody:nogroup "$home"
  HOME="$home" QT_QPA_PLATFORM=offscreen setpriv --reuid=nobody --regid=nogroup --clear-groups \
    "$test_storage" --gtest_filter='*AsAnOrdinaryUser*' --gtest_brief=1
  rm -rf "$home"
fi
