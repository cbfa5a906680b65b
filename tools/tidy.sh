#!/bin/sh
# Runs clang-tidy on every source file that the build in BUILD_FOLDER compiles, several at a time.
# Usage: tidy.sh BUILD_FOLDER [FILE...]
set -eu

build=${1:?usage: tidy.sh BUILD_FOLDER [FILE...]}
shift
[ -f "$build/compile_commands.json" ] || { echo "tidy.sh: $build is not configured" >&2; exit 2; }
if [ $# -eq 0 ]; then
  # Only files of ours, not what the build writes.
  set -- $(sed -n 's/^ *"file": "\(.*\)",*$/\1/p' "$build/compile_commands.json" | grep -v "/$build/" | sort -u)
fi
echo "clang-tidy: $# files"
printf '%s\n' "$@" | BUILD=$build xargs -P "$(getconf _NPROCESSORS_ONLN)" -n 1 sh -c '
  said=$(clang-tidy -p "$BUILD" --quiet "$1" 2>&1) && exit 0
  printf "%s\n" "$said" | grep -v "warnings generated"
  exit 1' tidy
