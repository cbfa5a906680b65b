#!/bin/sh
# Runs clang-tidy on every source file that the build in BUILD_FOLDER compiles, several at a time; sources that it compiles together are read
# together.
# Usage: tidy.sh BUILD_FOLDER [FILE...]
set -eu

build=${1:?usage: tidy.sh BUILD_FOLDER [FILE...]}
shift
[ -f "$build/compile_commands.json" ] || { echo "tidy.sh: $build is not configured" >&2; exit 2; }
if [ $# -eq 0 ]; then
  # Of what the build writes, only its lists of files of ours. The longest go first.
  set -- $(sed -n 's/^ *"file": "\(.*\)",*$/\1/p' "$build/compile_commands.json" |
    awk -v build="/$build/" '(index($0, build) == 0 || /\/Unity\/unity_/) && !/_qmlcache\.dir/' | sort -u |
    xargs wc -l | sed -e '/ total$/d' -e 's/^ *//' | sort -rn | cut -d ' ' -f 2)
fi
echo "clang-tidy: $# files"
printf '%s\n' "$@" | BUILD=$build xargs -P "$(getconf _NPROCESSORS_ONLN)" -n 1 sh -c '
  said=$(clang-tidy -p "$BUILD" --quiet "$1" 2>&1) && exit 0
  printf "%s\n" "$said" | grep -v "warnings generated"
  exit 1' tidy
