#!/usr/bin/env bash
# Prints how many C++ lines are tests and how many are code: lines that are neither blank nor
# comment-only, in *.cpp and *.h files under tests/ against src/, tools/ and bench/, then tests as a
# ratio of code (the budget is a third) and as a share of all lines.
set -euo pipefail
cd "$(dirname "$0")/.."
count() {
  find "$@" -type f \( -name '*.cpp' -o -name '*.h' \) -print0 2>/dev/null |
    xargs -0 cat | awk '
      {
        line = $0
        if (inblock) {
          end = index(line, "*/")
          if (end == 0) next
          line = substr(line, end + 2)
          inblock = 0
        }
        while (match(line, /^[ \t]*\/\*/)) {
          rest = substr(line, RSTART + RLENGTH)
          end = index(rest, "*/")
          if (end == 0) { inblock = 1; line = ""; break }
          line = substr(rest, end + 2)
        }
        sub(/^[ \t]+/, "", line)
        if (line == "" || substr(line, 1, 2) == "//") next
        n++
      }
      END { print n + 0 }'
}
tests=$(count tests)
code=$(count src tools bench)
awk -v t="$tests" -v c="$code" 'BEGIN {
  printf "test lines: %d\ncode lines: %d\n", t, c
  printf "tests / code: %.1f %% (at most 33 %%)\n", c ? 100 * t / c : 0
  printf "test share of all lines: %.1f %%\n", (t + c) ? 100 * t / (t + c) : 0
}'
