#!/bin/sh
# Prints which source folder includes headers of which other folder: one line a folder,
# "folder -> dependency, dependency". Headers are named without a path ("Body.h"), so each
# include is looked up among the headers of src/ by its file name; src/forms/<area> counts as
# "forms". With --files, every include that crosses a folder is listed instead, as
# "file -> header (folder)".
cd "$(dirname "$0")/.." || exit 1
headers=$(mktemp)
trap 'rm -f "$headers"' EXIT
find src -name '*.h' | awk -F/ '{ print $NF, $2 }' > "$headers"
find src -name '*.cpp' -o -name '*.h' | sort | xargs awk -v mode="$1" -v headers="$headers" '
  BEGIN { while ((getline line < headers) > 0) { split(line, f, " "); owner[f[1]] = f[2] } }
  /^[ \t]*#[ \t]*include[ \t]*"/ {
    split(FILENAME, path, "/"); folder = path[2]
    header = $0; sub(/^[^"]*"/, "", header); sub(/".*/, "", header)
    n = split(header, parts, "/"); name = parts[n]
    if ((name in owner) && owner[name] != folder) {
      if (mode == "--files") print FILENAME " -> " name " (" owner[name] ")"
      else print folder, owner[name]
    }
  }' | sort -u | if [ "$1" = "--files" ]; then cat; else
  awk '{ deps[$1] = deps[$1] (deps[$1] ? ", " : "") $2 }
       END { for (f in deps) print f " -> " deps[f] }' | sort; fi
