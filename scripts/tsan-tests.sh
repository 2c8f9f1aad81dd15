#!/usr/bin/env bash
# Builds the thread-sanitizer preset and runs the test programs whose code runs on several
# threads (sensor, updater, pacer beat and database), each to the end; exits non-zero on any
# failure or sanitizer report. Suppressions cover system libraries only (tests/tsan.supp).
set -euo pipefail
cd "$(dirname "$0")/.."
suites=(stats sensing sound storage platform)
cmake --preset tsan >/dev/null
cmake --build --preset tsan --target pedometer-cli "${suites[@]/#/test_}"
export QT_QPA_PLATFORM=offscreen PULSE_SERVER=unix:/nonexistent
export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 suppressions=$PWD/tests/tsan.supp"
# Tests that start a child with QProcess run one by one, each in a program of its own: Qt starts
# children with a vfork-style clone the sanitizer cannot follow. Once a child has been started
# from a program that already runs several threads, the sanitizer takes the program for a forked
# child and kills it at its next new thread, or misses its locking and reports false races.
spawning='HistoryCommandTest.*:BodyCsvExport*:DatabaseConnectionTest.KilledWriter*'
spawning+=':EmailSenderTest.*:SleepInhibitorTest.*'
# The private D-Bus daemon of the sleep-inhibitor tests is started here, outside the programs.
bus=$(dbus-daemon --session --fork --print-address=1 --print-pid=1)
export PEDOMETER_TEST_BUS=$(sed -n 1p <<<"$bus")
trap 'kill "$(sed -n 2p <<<"$bus")" 2>/dev/null || true' EXIT
status=0
for suite in "${suites[@]}"; do
  echo "== test_$suite under the thread sanitizer"
  program=build/tsan/bin/"test_$suite"
  "$program" --gtest_brief=1 --gtest_filter="-$spawning" || status=1
  for test in $("$program" --gtest_list_tests --gtest_filter="$spawning" |
                awk '/^[^ ]/ { suite = $1 } /^  / { print suite $1 }'); do
    "$program" --gtest_brief=1 --gtest_filter="$test" || status=1
  done
done
exit $status
